#include "nexwire/Personnel/PersonFile.h"

#include "Application/Personnel/Roots.h"
#include "core/Upload.h"

namespace nexwire {

using namespace protocol::personnelcommon;

bool PersonsFileComm::requestTemplate(std::string& answer)
{
    return ExchangeForText(Query(Path(kPersonnelRoot, "configurationFiles")), answer);
}

bool PersonsFileComm::requestUpload(const std::shared_ptr<int>& progress, std::string& uploadGuid,
                                    const std::string& file)
{
    return core::Guard([&] {
        std::string guid;
        std::string answer;
        if (!UploadInSlices(Path(kPersonnelRoot, "uploadFile"), {"text/csv"}, &guid, file, progress, answer)) {
            return false;
        }
        uploadGuid = std::move(guid);
        return true;
    });
}

bool PersonsFileComm::requestParseFile(std::string& answer, const std::string&)
{
    return ExchangeForText(Write(Path(kPersonnelRoot, "configurationFiles")), answer);
}

bool PersonsFileComm::requestImportProgress(ProgressData& result, const std::string& taskGuid)
{
    return Exchange(Query(Path(kPersonnelRoot, "configurationFiles/", taskGuid)), result);
}

bool PersonsFileComm::requestExport(std::string& answer, const PersonnelDataFile&)
{
    return ExchangeForText(Query(Path(kPersonnelRoot, "configurationFiles")), answer);
}

} // namespace nexwire
