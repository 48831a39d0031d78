#pragma once

#include "protocol/DeviceCommon.h"

// Persons and credentials as devices hold them, read out page by page. A person is known by `employeeNo`, which is the
// register's number. Older devices know cards only: their structures name a card where the others name a person.
// Templates and pictures are Base64; a length beside one counts its bytes before the encoding.

namespace protocol {

/// When a person or a card is valid.
struct NEXWIRE_API DeviceValidity : IInboundData {
    bool enable = false;   ///< False: always.
    std::string beginTime; ///< "YYYY-MM-DDTHH:MM:SS", the device's local time.
    std::string endTime;   ///< "YYYY-MM-DDTHH:MM:SS", the device's local time.
    NEXWIRE_JSON
};

/// The plans of one door that a person or a card follows.
struct NEXWIRE_API DeviceDoorRight : IInboundData {
    std::int32_t doorNo = 1;                      ///< From 1.
    std::vector<std::int32_t> planTemplateNoList; ///< From 1. Up to 4 elements.
    NEXWIRE_JSON
};

/// A person on a device.
struct NEXWIRE_API DeviceUserInfo : IInboundData {
    std::string employeeNo;
    std::string name;
    std::string userType;           ///< One of: "normal", "visitor", "blackList", "patrol".
    std::string gender;             ///< One of: "unknown", "male", "female".
    bool closeDelayEnabled = false; ///< Doors stay open longer.
    bool localUIRight = false;      ///< May use the device's menus.
    DeviceValidity valid;
    std::string password; ///< 4 to 8 digits; empty: none.
    std::vector<DeviceDoorRight> doorRightList;
    std::int32_t maxOpenDoorTime = 0; ///< Times a visitor may pass; 0: without limit.
    std::int32_t openDoorTime = 0;    ///< Times a visitor has passed.
    std::int32_t roomNumber = 0;      ///< From 1; 0: none.
    std::int32_t floorNumber = 0;
    std::string userVerifyMode;            ///< As a card reader's; empty: the reader's own.
    std::vector<std::int32_t> belongGroup; ///< Groups on the device. From 1. Up to 4 elements.
    std::int32_t numOfCard = 0;
    std::int32_t numOfFP = 0;
    std::int32_t numOfFace = 0;
    NEXWIRE_JSON
};

/// Persons read out of a device. Pages are appended to `userInfoList`; the rest is the caller's.
struct NEXWIRE_API UserInfoSearch : IInboundData {
    std::string searchID;          ///< The caller's mark for this search, may be empty.
    std::int32_t totalMatches = 0; ///< Persons on the device as far as known.
    std::vector<DeviceUserInfo> userInfoList;
    NEXWIRE_JSON
};

/// A card on a device that knows cards only.
struct NEXWIRE_API CardConfigParam : IInboundData {
    std::string cardNo;
    bool cardValid = true; ///< False: to be deleted.
    std::int32_t cardType =
        1; ///< One of: 1 normal, 2 disabled, 3 block list, 4 patrol, 5 duress, 6 super, 7 visitor, 8 dismissing.
    bool leaderCard = false; ///< First person of the day.
    DeviceValidity valid;
    std::vector<DeviceDoorRight> doorRightList;
    std::string cardPassword;      ///< 4 to 8 digits; empty: none.
    std::int32_t maxSwipeTime = 0; ///< 0: without limit.
    std::int32_t swipeTime = 0;    ///< So far.
    std::int32_t roomNumber = 0;   ///< From 1; 0: none.
    std::int32_t floorNumber = 0;
    std::string employeeNo;
    std::string name;
    std::vector<std::int32_t> belongGroup; ///< Groups on the device. From 1. Up to 4 elements.
    NEXWIRE_JSON
};

/// A card of a person on a device that knows persons.
struct NEXWIRE_API CardInfoCfg : IInboundData {
    std::string employeeNo;
    std::string cardNo;
    std::string cardType;    ///< One of: "normalCard", "patrolCard", "hijackCard", "superCard", "dismissingCard".
    bool leaderCard = false; ///< First person of the day.
    bool deleteCard = false; ///< To be deleted.
    NEXWIRE_JSON
};

/// A card's password on a device that knows cards only.
struct NEXWIRE_API CardPasswdInfo : IInboundData {
    std::string cardNo;
    std::string cardPassword; ///< 4 to 8 digits; empty: none.
    NEXWIRE_JSON
};

/// A fingerprint on a device.
struct NEXWIRE_API FingerPrintConfigForDag : IInboundData {
    std::string employeeNo;         ///< Empty on a device that knows cards only.
    std::string cardNo;             ///< Empty on a device that knows persons.
    std::int32_t fingerPrintID = 1; ///< Thumb of the left hand 1 to little finger of the right hand 10. 1 to 10.
    std::string fingerType;         ///< One of: "normalFP", "hijackFP", "patrolFP", "superFP", "dismissingFP".
    std::string fingerData;         ///< Template.
    std::int32_t fingerDataLen = 0;
    std::vector<std::int32_t> enableCardReader; ///< Readers that have it. From 1.
    bool leaderFP = false;                      ///< First person of the day.
    NEXWIRE_JSON
};

/// An iris on a device.
struct NEXWIRE_API Irisinfo : IInboundData {
    std::string employeeNo;
    std::int32_t irisID = 1; ///< One of: 1 left eye, 2 right eye.
    std::string irisData;    ///< Template.
    std::int32_t irisDataLen = 0;
    NEXWIRE_JSON
};

/// A face on a device that knows persons.
struct NEXWIRE_API FaceConfigForPer : IInboundData {
    std::string employeeNo;
    std::string faceLibType; ///< One of: "blackFD", "staticFD", "infraredFD".
    std::string faceLibId;   ///< Library of the device.
    std::string name;
    std::string picture; ///< JPEG; empty when the device keeps models only.
    std::int32_t pictureLen = 0;
    std::string modelData; ///< Empty when the device keeps pictures only.
    std::int32_t modelDataLen = 0;
    NEXWIRE_JSON
};

/// A face on a device that knows cards only.
struct NEXWIRE_API FaceConfigForCard : IInboundData {
    std::string cardNo;
    std::int32_t faceId = 1; ///< Of the card. 1 to 2.
    std::string faceData;    ///< Picture or model, as the device keeps it.
    std::int32_t faceDataLen = 0;
    std::string faceDataType;                   ///< One of: "picture", "model".
    std::vector<std::int32_t> enableCardReader; ///< Readers that have it. From 1.
    NEXWIRE_JSON
};

} // namespace protocol
