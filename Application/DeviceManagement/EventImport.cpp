#include "nexwire/DeviceManagement/EventImport.h"

#include "core/Upload.h"

namespace nexwire {
namespace {

constexpr const char* kImports = "/7730/v1/deviceManagement/ImportEvents";

} // namespace

bool FileImportEventComm::requestUpload(std::shared_ptr<int> progress, std::string& uploadGuid, const std::string& file,
                                        std::string& answer)
{
    return core::Guard([&] {
        std::string guid;
        if (!UploadInSlices("/7730/v1/deviceManagement/uploadFile", {"text/csv"}, &guid, file, progress, answer)) {
            return false;
        }
        uploadGuid = std::move(guid);
        return true;
    });
}

bool FileImportEventComm::requestImportFile(std::string& taskGuid, const std::string&, const std::string&,
                                            const std::string&, std::string& answer)
{
    return core::Guard([&] {
        protocol::EventImportTask task;
        if (!ExchangeForText(Write(kImports), task, answer)) {
            return false;
        }
        taskGuid = std::move(task.taskGuid);
        return true;
    });
}

bool FileImportEventComm::requestImportProgress(protocol::personnelcommon::SynchronouProgressData& result,
                                                const std::string& taskGuid, std::string& answer)
{
    return ExchangeForText(Query(Path(kImports, "/", taskGuid, "/progress")), result, answer);
}

bool FileImportEventComm::requestStopImport(protocol::personnelcommon::SynchronousQuery& query,
                                            const std::string& taskGuid, std::string& answer)
{
    return core::Guard([&] {
        protocol::personnelcommon::SynchronousQuery fresh = query;
        protocol::ReturnData envelope(core::Borrow(fresh));
        if (!core::Run(Write(Path(kImports, "/", taskGuid), query), envelope, core::Verdict::Accept, &answer)) {
            return false;
        }
        query = std::move(fresh);
        return true;
    });
}

} // namespace nexwire
