#include "nexwire/DeviceManagement/CorvidStream.h"

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {

bool CCorvidCMSComm::request(protocol::CorvidSMSPort& result)
{
    return Exchange(Query("/7730/v1/ deviceManagement /estream/port"), result);
}

bool CCorvidCMSComm::request(const protocol::CorvidPreview& preview, protocol::SessionIDData& result,
                             const std::string& deviceGuid)
{
    return Exchange(Write(DevicePath(Route::External, deviceGuid, "/corvid/startPreview"), preview), result);
}

bool CCorvidCMSComm::request(const protocol::CorvidVoice& voice, protocol::SessionIDData& result,
                             const std::string& deviceGuid)
{
    return Exchange(Write(DevicePath(Route::External, deviceGuid, "/corvid/startVoice"), voice), result);
}

bool CCorvidCMSComm::request(const protocol::PushStream& stream, const std::string& deviceGuid)
{
    return Exchange(Write(DevicePath(Route::External, deviceGuid, "/corvid/stopPush"), stream));
}

bool CCorvidCMSComm::requestPushStream(const protocol::PushStream& stream, const std::string& deviceGuid)
{
    return Exchange(Write(DevicePath(Route::External, deviceGuid, "/corvid/pushStream"), stream));
}

bool CCorvidCMSComm::request(const protocol::CorvidFindRecFileParam& search, protocol::CorvidRecFindResult& result,
                             const std::string& deviceGuid)
{
    return Exchange(Write(Path("/7730/v1/deviceManagement/devices", deviceGuid, "/corvid/findFile"), search), result);
}

bool CCorvidCMSComm::request(const protocol::CorvidPlayBackParam& playback, protocol::SessionIDData& result,
                             const std::string& deviceGuid)
{
    return Exchange(Write(DevicePath(Route::External, deviceGuid, "/corvid/startPalyback"), playback), result);
}

bool CCorvidCMSComm::request(const protocol::CorvidPlayBackOperateParam& operation, const std::string& deviceGuid)
{
    return Exchange(Write(DevicePath(Route::External, deviceGuid, "/corvid/operatePalyback"), operation));
}

bool CCorvidCMSComm::request(protocol::CMSearchProfile& result, const std::string& deviceGuid)
{
    return DeviceGet(Route::External, 8500, deviceGuid, result);
}

bool CCorvidCMSComm::request(const protocol::SearchRecPicFileParam& search, protocol::CMSearchResult& result,
                             const std::string& deviceGuid)
{
    return DeviceGet(Route::External, 8501, deviceGuid, result, {}, 0, &search);
}

bool CCorvidCMSComm::request(protocol::ChanStatusList& result, const std::string& deviceGuid)
{
    return DeviceGet(Route::External, 2280, deviceGuid, result);
}

} // namespace nexwire
