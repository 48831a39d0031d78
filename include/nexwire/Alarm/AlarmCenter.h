#pragma once

#include "protocol/Alarm/AlarmCenter.h"
#include "protocol/DeviceManagement/Device.h"
#include "protocol/PassThrough/PassThrough.h"

// Live alarms, messages, and commands for devices that report them. All functions block until the answer is there and
// may be called from any thread. They return true when the answer was a readable envelope, whatever its code; a result
// is untouched on false.

namespace nexwire {

/// Who receives alarms.
class NEXWIRE_API CAlarmRegister {
public:
    /// Registers a client with the alarm centre.
    static bool request(const protocol::AlarmRegistered& client);
    /// Registers a client with the older alarm service.
    static bool request(const protocol::AlarmRegister& client);
    /// Subscribes to types of alarms with the message service.
    static bool registerType(const protocol::AlarmSubscribe& subscription);
};

/// Asks the platform to open the channel that alarms are pushed through.
class NEXWIRE_API CAlarmStartWebsocket {
public:
    /// @param condition  devices whose alarms are wanted.
    static bool request(const protocol::DeviceQueryCondition& condition);
};

/// Has the alarm centre read the events of devices anew.
class NEXWIRE_API CDeviceSyncEvent {
public:
    static bool request(const protocol::DeviceEventSync& order);
};

/// Has the alarm centre begin or cease to take the events of devices.
class NEXWIRE_API CDeviceSyncEventState {
public:
    static bool request(const protocol::DeviceEventStart& order);
};

/// Requests for the HTTP interface of a device that reports alarms; neither read nor changed on the way.
class NEXWIRE_API CAlarmkestrelRequest {
public:
    static bool kestrelRequest(const std::string& deviceGuid, protocol::KestrelPassThroughRspData& result,
                               const protocol::KestrelPassThroughReq& query);
};

/// Commands for the programming interface of a device that reports alarms; neither read nor changed on the way.
class NEXWIRE_API CAlarmSdkPassThrough {
public:
    static bool request(protocol::SdkPassThroughResponseData& result, const std::string& deviceGuid,
                        const protocol::SdkPassThrough& command);
};

/// Says something to an alarm message.
class NEXWIRE_API CAlarmComments {
public:
    static bool request(const std::string& messageGuid, const protocol::Comment& comment);
};

/// Sends a message about an alarm.
class NEXWIRE_API CAlarmMessage {
public:
    static bool request(const std::string& messageGuid, const protocol::AlarmMsg& message);
};

/// Adds a picture to a message about an alarm.
class NEXWIRE_API CAlarmMessagePictures {
public:
    static bool request(const std::string& messageGuid, const protocol::AlarmPicture& picture);
};

} // namespace nexwire
