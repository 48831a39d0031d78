#include "nexwire/DeviceManagement/Resource.h"

#include "Application/DeviceManagement/ByNumber.h"

namespace nexwire {

bool CGetAlarmInputInfoComm::request(protocol::AlarmInputInfoData& result, const std::string& deviceGuid,
                                     const std::string& alarmInputGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/alarmInputs/", alarmInputGuid)), result);
}

bool CGetAlarmInputAndDevComm::request(protocol::AlarmInputAndDeviceInfoRspData& result,
                                       const protocol::AlarmInputQueryReq& query, const std::string& deviceGuid,
                                       unsigned int alarmInputNo)
{
    return QueryByNumber(result, deviceGuid, "/alarmInputs/", alarmInputNo, query);
}

bool CAlarmoutputComm::requestAllDeviceAlarmoutput(protocol::AlarmOutputInfoData& result)
{
    return Exchange(Query(Path(DeviceRoot(Route::External), "alarmOutputs")), result);
}

bool CAlarmoutputComm::requestSingleDeviceAlarmoutput(protocol::AlarmOutputParam& result, const std::string& deviceGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/alarmOutputs")), result);
}

bool CAlarmoutputComm::requestControl(const std::string& deviceGuid, const std::string& alarmOutputGuid,
                                      const protocol::AlarmOutputControl& control)
{
    return Exchange(
        Write(DevicePath(Route::External, deviceGuid, "/alarmOutputs/", alarmOutputGuid, "/controls"), control));
}

bool CAlarmoutputComm::requestStatus(protocol::AlarmOutputStatusRspData& result, const std::string& deviceGuid,
                                     const std::string& alarmOutputGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/alarmOutputs/", alarmOutputGuid, "/status")),
                    result);
}

bool CGetAlarmOutputAttrComm::request(protocol::AlarmOutputAttrData& result, const std::string& deviceGuid,
                                      const std::string& alarmOutputGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/alarmOutputs/", alarmOutputGuid)), result);
}

bool CGetAudioInputInfoComm::request(protocol::AudioInputData& result, const std::string& deviceGuid,
                                     const std::string& audioInputGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/audioInputs/", audioInputGuid)), result);
}

bool CGetAudioInputAndDevComm::request(protocol::AudioInAndDeviceInfoRspData& result,
                                       const protocol::ChannelQueryReq& query, const std::string& deviceGuid,
                                       unsigned int audioInputNo)
{
    return QueryByNumber(result, deviceGuid, "/audioInputs/", audioInputNo, query);
}

bool CGetCardReaderInfoComm::request(protocol::CardReaderInfoData& result, const std::string& deviceGuid,
                                     const std::string& cardReaderGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/cardReaders/", cardReaderGuid)), result);
}

bool CGetCardReaderByNoComm::request(protocol::CardReaderAndDeviceInfoRspData& result, const std::string& deviceGuid,
                                     unsigned int cardReaderNo, bool refresh)
{
    return QueryByNumber(result, deviceGuid, "/cardReaders/", cardReaderNo, refresh);
}

bool CModifyCardReaderComm::request(const protocol::CardReaderModification& modification, const std::string& deviceGuid,
                                    const std::string& cardReaderGuid)
{
    return Exchange(Write(DevicePath(Route::External, deviceGuid, "/cardReaders/", cardReaderGuid), modification));
}

bool CGetLaneControllerInfoComm::request(protocol::LaneControllerInfoData& result, const std::string& deviceGuid,
                                         const std::string& laneControllerGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/laneControllers/", laneControllerGuid)), result);
}

bool CGetRadarAttrComm::request(protocol::RadarAttrData& result, const std::string& deviceGuid,
                                const std::string& radarGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/radars/", radarGuid)), result);
}

bool CTopoAlarmComm::request(protocol::SwitchAlarmListData& result, const std::string& topologyGuid)
{
    return Exchange(Query(Path("/7730/v1/internal/topologyManagement/topologies/", topologyGuid, "/alarms")), result);
}

bool CSwitchPortComm::request(protocol::SwitchPort& result, const std::string& deviceGuid, unsigned int portNo)
{
    return QueryByNumber(result, deviceGuid, "/switchPorts/", portNo);
}

} // namespace nexwire
