#include "nexwire/Attendance/Record.h"

#include <iterator>
#include <utility>

#include "Application/PassThrough/PassThrough.h"
#include "core/Upload.h"

namespace nexwire {

bool CAttendanceSyncEvent::request(const protocol::DeviceSyncEventReq& param)
{
    return ExchangeJudged(Write("/7730/v1/internal/attendance/syncEvent", param));
}

bool FileImportEventCommAtt::requestUploadByAttendance(const std::shared_ptr<int>& progress, std::string& uploadGuid,
                                                       const std::string& file)
{
    Upload upload;
    upload.partType = "text/csv";
    upload.numbered = true;
    upload.closing = true;
    std::string answer;
    return UploadInSlices("/7730/v1/attendance/orirecord/uploadFile", upload, &uploadGuid, file, progress, answer);
}

bool FileImportEventCommAtt::requestImportFileByAttendance(protocol::FileImportReturnData& result,
                                                           const protocol::ImportAttendanceFiles& param)
{
    return ExchangeJudged(Write("/7730/v1/attendance/orirecord/ImportEvents", param), result);
}

bool SynDeviceInfoComm::request(protocol::AcsEventSearch& result, const protocol::BatchPassThroughReq& request,
                                const std::string& deviceGuid)
{
    std::string batchGuid;
    bool finished = false;
    return BatchPage(Route::Internal, request, deviceGuid, batchGuid, finished, nullptr,
                     [&result](const protocol::BatchReturnData& item) {
                         protocol::AcsEventSearch page;
                         if (!protocol::TParseJSONStr(page, item.outBuffer)) {
                             return false;
                         }
                         std::vector<protocol::AcsEventInfo> events = std::move(result.infoList);
                         events.insert(events.end(), std::make_move_iterator(page.infoList.begin()),
                                       std::make_move_iterator(page.infoList.end()));
                         result = std::move(page);
                         result.infoList = std::move(events);
                         return true;
                     });
}

bool TestComm::setInfo(const protocol::StatisticsTestInfo& param)
{
    return ExchangeJudged(Write("/7730/v1/attendance/statistics/test", param));
}

} // namespace nexwire
