#pragma once

#include "protocol/Common.h"
#include "protocol/DeviceCommon.h"

// Video intercom: calls and notices that the platform has logged, and what is sent to or read from intercom devices.
// An intercom unit is addressed by period, building, unit, floor and room number, 0 where the site has no such level.

namespace protocol {

/// A call that was made or missed.
struct NEXWIRE_API DialInfo : IInboundData {
    std::int32_t deviceType = 0; ///< Kind of the other station; server vocabulary, carried as it is.
    std::string personGUID;      ///< Resident the call belongs to; spelled so on the wire.
    bool clearFlag = false;      ///< Taken off the list of new calls.
    std::string guid;            ///< Given by the platform; empty in a call that is added.
    std::string deviceGuid;      ///< The other station.
    std::string deviceName;
    std::string roomNo;            ///< As displayed, for example "1-1-1-101".
    std::int32_t callType = 0;     ///< One of: 0 received, 1 dialled.
    std::int32_t callState = 0;    ///< One of: 0 missed, 1 answered, 2 refused.
    std::int64_t beginTime = 0;    ///< Milliseconds since 1970-01-01 UTC.
    std::int32_t talkDuration = 0; ///< Seconds; 0 for a call that was not answered.
    NEXWIRE_JSON
};

/// Calls to log.
struct NEXWIRE_API DialInfoAdd : IInboundData {
    std::vector<DialInfo> dailInfos; ///< Spelled so on the wire.
    NEXWIRE_JSON
};

/// Calls to remove.
struct NEXWIRE_API DialInfoDelete : IInboundData {
    std::vector<std::string> guidList;
    NEXWIRE_JSON
};

struct NEXWIRE_API DialInfoResult : IReturnData {
    std::vector<OperationResult> operationResultList; ///< One per call, in the order of the request.
    NEXWIRE_JSON
};

struct NEXWIRE_API DialInfoResultData : IReturnData {
    DialInfoResult dialInfoResult;
    NEXWIRE_JSON
};

/// Which calls are wanted; empty texts do not narrow.
struct NEXWIRE_API DailInfosGet : IInboundData {
    std::int32_t pageNo = 1;   ///< From 1.
    std::int32_t pageSize = 0; ///< Most calls per page; 0 leaves it to the server.
    std::string personGUID;
    std::string deviceGuid;
    std::int32_t deviceType = -1; ///< Server vocabulary; -1: any.
    std::int32_t callState = -1;  ///< One of: -1 any, 0 missed, 1 answered, 2 refused.
    std::int64_t beginTime = 0;   ///< Begin of the calls, from, milliseconds since 1970-01-01 UTC; 0: no limit.
    std::int64_t endTime = 0;     ///< Until, likewise.
    NEXWIRE_JSON
};

/// A page of calls, the newest first.
struct NEXWIRE_API DailInfosResponseData : IReturnData {
    std::int32_t total = 0; ///< On all pages.
    std::int32_t pageNo = 0;
    std::int32_t pageSize = 0;
    std::vector<DialInfo> dailInfos; ///< Spelled so on the wire.
    NEXWIRE_JSON
};

struct NEXWIRE_API DailInfosResponseDataData : IReturnData {
    DailInfosResponseData dailInfosResponseData;
    NEXWIRE_JSON
};

/// A notice as an intercom device shows it.
struct NEXWIRE_API NoticeInfo : IInboundData {
    std::string noticeNumber; ///< The sender's. Up to 32 bytes; a device replaces a notice of the same number.
    std::string noticeType;   ///< One of: "advertisement", "property", "alarm", "notice".
    std::string noticeTitle;
    std::string noticeContent;
    std::string noticeTime;            ///< "YYYY-MM-DDTHH:MM:SS", in the device's local time.
    std::vector<std::string> roomList; ///< Numbers of the indoor units behind the device; empty: all.
    std::vector<std::string> pictureUrlList;
    NEXWIRE_JSON
};

/// A notice that was sent.
struct NEXWIRE_API NoticeLog : IInboundData {
    std::string guid; ///< Given by the platform; empty in a notice that is added.
    std::string deviceGuid;
    std::string deviceName;
    std::string operatorName;
    std::int64_t sendTime = 0;  ///< Milliseconds since 1970-01-01 UTC.
    std::int32_t sendState = 0; ///< 0 sent, otherwise the error number of the attempt.
    NoticeInfo noticeInfo;
    NEXWIRE_JSON
};

/// Notices to log.
struct NEXWIRE_API NoticeInfoAdd : IInboundData {
    std::vector<NoticeLog> noticeLogList;
    NEXWIRE_JSON
};

/// Notices to remove.
struct NEXWIRE_API NoticeInfoDelete : IInboundData {
    std::vector<std::string> guidList;
    NEXWIRE_JSON
};

struct NEXWIRE_API NoticeInfoResult : IReturnData {
    std::vector<OperationResult> operationResultList; ///< One per notice, in the order of the request.
    NEXWIRE_JSON
};

struct NEXWIRE_API NoticeInfoResultData : IReturnData {
    NoticeInfoResult noticeReturnData;
    NEXWIRE_JSON
};

/// Which notices are wanted; empty texts do not narrow.
struct NEXWIRE_API NoticeGet : IInboundData {
    std::int32_t pageNo = 1;   ///< From 1.
    std::int32_t pageSize = 0; ///< Most notices per page; 0 leaves it to the server.
    std::string deviceGuid;
    std::string noticeType;     ///< As in `NoticeInfo`.
    std::string keyword;        ///< Part of the title.
    std::int64_t beginTime = 0; ///< Sent from, milliseconds since 1970-01-01 UTC; 0: no limit.
    std::int64_t endTime = 0;   ///< Until, likewise.
    NEXWIRE_JSON
};

/// A page of notices, the newest first.
struct NEXWIRE_API NoticeInfosResponseData : IReturnData {
    std::int32_t total = 0; ///< On all pages.
    std::int32_t pageNo = 0;
    std::int32_t pageSize = 0;
    std::vector<NoticeLog> noticeLogList;
    NEXWIRE_JSON
};

struct NEXWIRE_API NoticeInfosResponseDataData : IReturnData {
    NoticeInfosResponseData noticeInfosResponseData;
    NEXWIRE_JSON
};

/// What a gateway is to do with something attached to it.
struct NEXWIRE_API ResourceControl : IInboundData {
    std::string resourceType;      ///< One of: "door", "lift", "alarmOut", "light".
    std::int32_t resourceNo = 0;   ///< Number of the resource on the gateway, from 1.
    std::string cmd;               ///< One of: "open", "close", "alwaysOpen", "alwaysClose", "restore".
    std::int32_t openDuration = 0; ///< Seconds for "open"; 0 keeps the resource's own setting.
    std::int32_t floorNo = 0;      ///< Floor for a lift.
    std::string operatorName;      ///< For the gateway's log.
    NEXWIRE_JSON
};

/// Opens or closes the door of an intercom station from afar.
struct NEXWIRE_API RemoteControlGateway : IInboundData {
    std::int32_t gatewayNo = 1; ///< Door station behind the device, from 1.
    std::int32_t lockNo = 1;    ///< Lock of the station, from 1.
    std::string cmd;            ///< One of: "open", "close", "alwaysOpen", "alwaysClose", "visitorCallLift",
                                ///< "residentCallLift".
    std::string controlSource;  ///< One of: "monitor" while watching, "calling" while talking.
    std::string operatorName;   ///< For the device's log.
    NEXWIRE_JSON
};

/// A door station that an intercom device knows.
struct NEXWIRE_API OutDoorUnit : IInboundData {
    std::int32_t unitIndex = 0; ///< Number of the station on the device, from 1.
    std::string deviceName;
    std::string unitType; ///< One of: "outdoor", "villa", "confirmatory", "outerDoor", "doorPhone".
    std::string serialNumber;
    std::string ipAddress;
    std::int32_t port = 0; ///< 1 to 65535.
    std::int32_t periodNo = 0;
    std::int32_t buildingNo = 0;
    std::int32_t unitNo = 0;
    std::int32_t floorNo = 0; ///< Below ground negative.
    std::int32_t number = 0;  ///< 0 for the main station, 1 to 99 for its sub stations.
    std::int32_t lockNum = 0; ///< Locks it can open.
    bool online = false;
    NEXWIRE_JSON
};

/// The door stations of an intercom device.
struct NEXWIRE_API OutDoorUnitInfo : IInboundData {
    std::vector<OutDoorUnit> outDoorUnitList;
    NEXWIRE_JSON
};

/// Which remote control of doors a device supports; members as in `RemoteControlGateway`.
struct NEXWIRE_API RemoteControlDoor : IInboundData {
    bool isSupport = false;
    IntRange gatewayNo;
    IntRange lockNo;
    OptionList cmd;
    OptionList controlSource;
    IntRange operatorName;
    NEXWIRE_JSON
};

} // namespace protocol
