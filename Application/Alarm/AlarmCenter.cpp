#include "nexwire/Alarm/AlarmCenter.h"

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {
namespace {

constexpr const char* kInternal = "/7730/v1/internal/";
constexpr const char* kMessages = "/7730/v1/internal/alarm/messages/";

} // namespace

bool CAlarmRegister::request(const protocol::AlarmRegistered& client)
{
    return Exchange(Write(Path(kInternal, "alarmCenter/register"), client));
}

bool CAlarmRegister::request(const protocol::AlarmRegister& client)
{
    return Exchange(Query(Path(kInternal, "alarm/register"), client));
}

bool CAlarmRegister::registerType(const protocol::AlarmSubscribe& subscription)
{
    return Exchange(Write(Path(kInternal, "framework/messages/alarms"), subscription));
}

bool CAlarmStartWebsocket::request(const protocol::DeviceQueryCondition& condition)
{
    return Exchange(Write("/7730/v1/alarmCenter/startWebSocket", condition));
}

bool CDeviceSyncEvent::request(const protocol::DeviceEventSync& order)
{
    return Exchange(Write(Path(kInternal, "alarmCenter/syncDeviceInfo"), order));
}

bool CDeviceSyncEventState::request(const protocol::DeviceEventStart& order)
{
    return Exchange(Write(Path(kInternal, "alarmCenter/syncDeviceState"), order));
}

bool CAlarmkestrelRequest::kestrelRequest(const std::string& deviceGuid, protocol::KestrelPassThroughRspData& result,
                                          const protocol::KestrelPassThroughReq& query)
{
    return KestrelExchange(Route::External, deviceGuid, query, result);
}

bool CAlarmSdkPassThrough::request(protocol::SdkPassThroughResponseData& result, const std::string& deviceGuid,
                                   const protocol::SdkPassThrough& command)
{
    return Exchange(Query(Path("/7730/v1/alarm/devices/", deviceGuid, "/sdkPassThrough"), command), result);
}

bool CAlarmComments::request(const std::string& messageGuid, const protocol::Comment& comment)
{
    return Exchange(Query(Path("/7730/v1/alarm/messages/", messageGuid, "/comments"), comment));
}

bool CAlarmMessage::request(const std::string& messageGuid, const protocol::AlarmMsg& message)
{
    return Exchange(Query(Path(kMessages, messageGuid), message));
}

bool CAlarmMessagePictures::request(const std::string& messageGuid, const protocol::AlarmPicture& picture)
{
    return Exchange(Query(Path(kMessages, messageGuid, "/pictures"), picture));
}

} // namespace nexwire
