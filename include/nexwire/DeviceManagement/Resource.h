#pragma once

#include "protocol/DeviceManagement/Channel.h"
#include "protocol/DeviceManagement/Resource.h"
#include "protocol/Topology/Topology.h"

// What a device has beside channels. All functions block until the answer is there and may be called from any thread.
// They return true when the answer was a readable envelope, whatever its code; a result is untouched on false. The
// functions with a number in place of an identifier use the route of the platform's own components.

namespace nexwire {

/// One alarm input.
class NEXWIRE_API CGetAlarmInputInfoComm {
public:
    static bool request(protocol::AlarmInputInfoData& result, const std::string& deviceGuid,
                        const std::string& alarmInputGuid);
};

/// An alarm input by its number, together with its device.
class NEXWIRE_API CGetAlarmInputAndDevComm {
public:
    static bool request(protocol::AlarmInputAndDeviceInfoRspData& result, const protocol::AlarmInputQueryReq& query,
                        const std::string& deviceGuid, unsigned int alarmInputNo);
};

/// Alarm outputs.
class NEXWIRE_API CAlarmoutputComm {
public:
    /// Those of all devices that have some.
    static bool requestAllDeviceAlarmoutput(protocol::AlarmOutputInfoData& result);
    static bool requestSingleDeviceAlarmoutput(protocol::AlarmOutputParam& result, const std::string& deviceGuid);
    static bool requestControl(const std::string& deviceGuid, const std::string& alarmOutputGuid,
                               const protocol::AlarmOutputControl& control);
    static bool requestStatus(protocol::AlarmOutputStatusRspData& result, const std::string& deviceGuid,
                              const std::string& alarmOutputGuid);
};

/// One alarm output.
class NEXWIRE_API CGetAlarmOutputAttrComm {
public:
    static bool request(protocol::AlarmOutputAttrData& result, const std::string& deviceGuid,
                        const std::string& alarmOutputGuid);
};

/// One audio input.
class NEXWIRE_API CGetAudioInputInfoComm {
public:
    static bool request(protocol::AudioInputData& result, const std::string& deviceGuid,
                        const std::string& audioInputGuid);
};

/// An audio input by its number, together with its device.
class NEXWIRE_API CGetAudioInputAndDevComm {
public:
    static bool request(protocol::AudioInAndDeviceInfoRspData& result, const protocol::ChannelQueryReq& query,
                        const std::string& deviceGuid, unsigned int audioInputNo);
};

/// One card reader.
class NEXWIRE_API CGetCardReaderInfoComm {
public:
    static bool request(protocol::CardReaderInfoData& result, const std::string& deviceGuid,
                        const std::string& cardReaderGuid);
};

/// A card reader by its number, together with its device.
class NEXWIRE_API CGetCardReaderByNoComm {
public:
    /// @param refresh  ask the device again instead of answering from memory.
    static bool request(protocol::CardReaderAndDeviceInfoRspData& result, const std::string& deviceGuid,
                        unsigned int cardReaderNo, bool refresh);
};

/// Changes a card reader.
class NEXWIRE_API CModifyCardReaderComm {
public:
    static bool request(const protocol::CardReaderModification& modification, const std::string& deviceGuid,
                        const std::string& cardReaderGuid);
};

/// One lane controller.
class NEXWIRE_API CGetLaneControllerInfoComm {
public:
    static bool request(protocol::LaneControllerInfoData& result, const std::string& deviceGuid,
                        const std::string& laneControllerGuid);
};

/// One radar.
class NEXWIRE_API CGetRadarAttrComm {
public:
    static bool request(protocol::RadarAttrData& result, const std::string& deviceGuid, const std::string& radarGuid);
};

/// Alarms of the switches of a topology.
class NEXWIRE_API CTopoAlarmComm {
public:
    static bool request(protocol::SwitchAlarmListData& result, const std::string& topologyGuid);
};

/// One port of a switch.
class NEXWIRE_API CSwitchPortComm {
public:
    static bool request(protocol::SwitchPort& result, const std::string& deviceGuid, unsigned int portNo);
};

} // namespace nexwire
