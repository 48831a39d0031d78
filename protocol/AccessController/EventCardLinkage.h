#pragma once

#include "protocol/DeviceCommon.h"

namespace protocol {

/// What a device does by itself when something happens or a card is shown.
///
/// `linkageType` says which of the three sources counts: an event, a card or an employee.
struct NEXWIRE_API EventCardLinkageCfg : IInboundData {
    bool enable = false;
    std::string linkageType;                ///< One of: "event", "card", "employee".
    std::string eventType;                  ///< For "event" one of: "device", "alarmIn", "door", "cardReader"; empty
                                            ///< otherwise.
    std::int32_t eventCode = 0;             ///< For "event": the device's number of the event within its type.
    std::int32_t sourceNo = 0;              ///< For "event": alarm input, door or reader it must come from; 0 for any.
    std::string cardNo;                     ///< For "card": decimal text.
    std::string employeeNo;                 ///< For "employee": number the device knows the person by.
    bool buzzerLinkage = false;             ///< Main buzzer of the device.
    bool captureLinkage = false;            ///< Snapshot.
    bool recordLinkage = false;             ///< Video.
    std::vector<std::int32_t> openDoorList; ///< Doors to open.
    std::vector<std::int32_t> closeDoorList;
    std::vector<std::int32_t> alwaysOpenDoorList;
    std::vector<std::int32_t> alwaysCloseDoorList;
    std::vector<std::int32_t> readerBuzzerList; ///< Readers that sound.
    std::vector<std::int32_t> alarmOutOpenList; ///< Alarm outputs to switch on.
    std::vector<std::int32_t> alarmOutCloseList;
    std::vector<std::int32_t> zoneArmList; ///< Zones to arm.
    std::vector<std::int32_t> zoneDisarmList;
    std::int32_t audioNo = 0; ///< Announcement to play, from 1; 0 for none.
    NEXWIRE_JSON
};

/// A device's word on a set.
struct NEXWIRE_API ReturnRst : IInboundData {
    std::int32_t statusCode = 0; ///< 1 done, otherwise the device's class of failure; 0 when it did not say.
    std::string statusString;
    std::string subStatusCode;  ///< The failure within its class.
    std::int32_t errorCode = 0; ///< The device's error number.
    std::string errorMsg;
    NEXWIRE_JSON
};

} // namespace protocol
