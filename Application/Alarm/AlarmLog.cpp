#include "nexwire/Alarm/AlarmLog.h"

#include "core/Pipeline.h"

namespace nexwire {
namespace {

constexpr const char* kRoot = "/7730/v1/alarmCenter/";

} // namespace

bool CGetAlarmLogs::request(protocol::AlarmLogResponseDataData& result, const protocol::AlarmLogCondition& condition)
{
    return Exchange(Query(Path(kRoot, "logs"), condition), result);
}

bool CGetAlarmLogDetails::request(protocol::AlarmLogDetailsData& result,
                                  const protocol::AlarmLogDetailQueryCondition& condition)
{
    return Exchange(Query(Path(kRoot, "logs/details"), condition), result);
}

bool CAddAlarmProcessing::request(const protocol::ProcessingAlarmData& processing)
{
    return Exchange(Write(Path(kRoot, "logs/processinginfos"), processing));
}

bool CGetAlarmPicByGUID::request(std::string& picture, const std::string& pictureGuid)
{
    return core::Guard([&] {
        protocol::AlarmPicQuery query;
        query.pictureGuid = pictureGuid;
        return ExchangeForBytes(Read(Path(kRoot, "images"), query), picture);
    });
}

bool CGetPicFromPicStorage::request(std::string& picture, const protocol::PicStorageSource& source)
{
    return ExchangeForBytes(Query(Path(kRoot, "picStorage"), source), picture);
}

bool CInternalCGetPicFromPicStorage::request(std::string& picture, const protocol::PicStorageSource& source)
{
    return ExchangeForBytes(Query("/7730/v1/internal/alarmCenter/picStorage", source), picture);
}

bool CGetAlarmPicSavedPath::request(protocol::AlarmPicStorageConfig& result,
                                    const protocol::AlarmPicStorageConfigQuery& query)
{
    return Exchange(Query(Path(kRoot, "system/filepaths"), query), result);
}

bool CSetAlarmPicSavedPath::request(const protocol::AlarmPicStorageConfig& config)
{
    return Exchange(Write(Path(kRoot, "system/filepaths"), config));
}

} // namespace nexwire
