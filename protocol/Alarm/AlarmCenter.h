#pragma once

#include "nexwire/JSONStruct.h"

// Live alarms: who receives them, what devices are watched, messages with their comments and pictures. Times are
// ISO 8601 texts.

namespace protocol {

/// A client that the alarm centre pushes alarms to.
struct NEXWIRE_API AlarmRegistered : IInboundData {
    std::string clientGuid;
    std::string userGuid;   ///< User who works at it.
    std::string address;    ///< IP address or host name of the client.
    std::int32_t port = 0;  ///< Port that it listens at. 1 to 65535; 0: it fetches them itself.
    bool registered = true; ///< False: it is taken off.
    NEXWIRE_JSON
};

/// The same for the older alarm service.
struct NEXWIRE_API AlarmRegister : IInboundData {
    std::string clientGuid;
    std::string userGuid;                   ///< User who works at it.
    std::vector<std::string> alarmTypeList; ///< Types that it wants; empty: all.
    NEXWIRE_JSON
};

/// Types of alarms that a client wants from the message service.
struct NEXWIRE_API AlarmSubscribe : IInboundData {
    std::string clientGuid;
    std::vector<std::string> alarmTypeList;  ///< Empty: all.
    std::vector<std::string> deviceGuidList; ///< Empty: all.
    std::int32_t minLevel = 1;               ///< One of: 1 low, 2 medium, 3 high.
    bool subscribe = true;                   ///< False: not any more.
    NEXWIRE_JSON
};

/// Devices whose events the alarm centre reads anew.
struct NEXWIRE_API DeviceEventSync : IInboundData {
    std::vector<std::string> deviceGuidList; ///< Empty: all.
    std::int32_t operation = 0;              ///< What happened to them. One of: 0 changed, 1 added, 2 removed.
    NEXWIRE_JSON
};

/// Devices whose events the alarm centre begins or ceases to take.
struct NEXWIRE_API DeviceEventStart : IInboundData {
    std::vector<std::string> deviceGuidList; ///< Empty: all.
    bool start = true;
    NEXWIRE_JSON
};

/// A command for a device's own programming interface, relayed by the alarm service.
struct NEXWIRE_API SdkPassThrough : IInboundData {
    std::int32_t command = 0;   ///< What the device is to do; device vocabulary.
    std::int32_t channelNo = 0; ///< Channel of the device, from 1; 0 the device itself.
    std::string condBuffer;     ///< Condition; empty when there is none.
    std::string inBuffer;       ///< What to set; empty for everything else.
    NEXWIRE_JSON
};

struct NEXWIRE_API SdkPassThroughResponse : IReturnData {
    std::int32_t errorCode = 0; ///< The device's own error number; 0 done.
    std::string outBuffer;      ///< What was asked for.
    std::string statusBuffer;   ///< Status of each part of what was set.
    NEXWIRE_JSON
};

struct NEXWIRE_API SdkPassThroughResponseData : IReturnData {
    SdkPassThroughResponse sdkPassThroughResponse;
    NEXWIRE_JSON
};

/// What a user says to an alarm message.
struct NEXWIRE_API Comment : IInboundData {
    std::string userGuid;
    std::string content;     ///< Up to 512 characters.
    std::string commentTime; ///< Empty: now.
    NEXWIRE_JSON
};

/// A message about an alarm.
struct NEXWIRE_API AlarmMsg : IInboundData {
    std::string alarmLogGuid;    ///< The alarm that it is about.
    std::string alarmType;       ///< As in the log.
    std::int32_t alarmLevel = 1; ///< One of: 1 low, 2 medium, 3 high.
    std::string alarmTime;
    std::string sourceGuid;                ///< Channel, input, zone or door that it came from.
    std::string content;                   ///< Up to 512 characters.
    std::vector<std::string> userGuidList; ///< Who receives it; empty: everybody.
    NEXWIRE_JSON
};

/// A picture for a message about an alarm.
struct NEXWIRE_API AlarmPicture : IInboundData {
    std::string channelGuid; ///< Channel that took it.
    std::string captureTime;
    std::string picUrl;      ///< Place in the picture storage; empty when the picture comes along.
    std::string pictureData; ///< The picture, Base64; empty when it is in the storage.
    NEXWIRE_JSON
};

} // namespace protocol
