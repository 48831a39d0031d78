#pragma once

#include "protocol/DeviceCommon.h"

// What access-control devices are, can do and hold: capability documents, states, counts. Habits of these
// structures: see DeviceCommon.h.

namespace protocol {

// ---- Capability documents ----

/// Everything an access-control device can do, feature by feature.
struct NEXWIRE_API AccessControl : IInboundData {
    std::int32_t doorNum = 0;
    std::int32_t cardReaderNum = 0;
    std::int32_t alarmInNum = 0;
    std::int32_t alarmOutNum = 0;
    std::int32_t localControllerNum = 0; ///< Local controllers that may hang on the device.
    bool hostParam = false;
    bool doorParam = false;
    bool cardReaderParam = false;
    bool alarmInParam = false;
    bool alarmOutParam = false;
    bool channelControllerParam = false;
    bool antiSneak = false;
    bool multiDoorInterLock = false;
    bool multiCardGroup = false; ///< Doors that several cards open together.
    bool firstPersonOpen = false;
    bool eventCardLinkage = false;
    bool ladderControl = false;
    bool wiegandRule = false;
    bool verifyPlan = false; ///< Verification modes by week plan.
    bool nfc = false;
    bool rfCard = false;
    bool faceRecognizeMode = false;
    bool attendanceStatus = false;
    bool snap = false;
    bool remoteControlDoor = false;
    bool userInfo = false; ///< Persons with their credentials, instead of bare cards.
    NEXWIRE_JSON
};

/// Abilities in a form that is the same for all access-control devices: what is connected and how much fits.
struct NEXWIRE_API CommonAcsAbility : IInboundData {
    IntRange doorNo;
    IntRange cardReaderNo;
    IntRange alarmInNo;
    IntRange alarmOutNo;
    IntRange weekPlanNo;
    IntRange holidayPlanNo;
    IntRange holidayGroupNo;
    IntRange planTemplateNo;
    std::int32_t maxCardNum = 0;
    std::int32_t maxUserNum = 0;
    std::int32_t maxFaceNum = 0;
    std::int32_t maxFingerPrintNum = 0;
    std::int32_t maxIrisNum = 0;
    std::int32_t maxEventNum = 0;       ///< Events that the device keeps while nobody fetches them.
    std::int32_t maxTimeSegmentNum = 0; ///< Per day of a plan.
    OptionList verifyMode;              ///< As `AcsCardReaderParam::verifyMode`.
    OptionList doorCommand;             ///< "open", "close", "remainOpen", "remainClosed", "resume".
    NEXWIRE_JSON
};

/// What a device accepts about a person.
struct NEXWIRE_API UserInfoCapPer : IInboundData {
    std::int32_t maxUserNum = 0;
    IntRange personnelNo;      ///< Length.
    IntRange personnelName;    ///< Length.
    OptionList userType;       ///< "normal", "visitor", "blackList", "patrol".
    bool closeDelay = false;   ///< Longer opening for people who need it.
    bool localUIRight = false; ///< The right to operate the device's own menus.
    DateRange validDate;       ///< Earliest and latest day of a validity.
    IntRange openDoorTime;     ///< Times a visitor may pass.
    IntRange password;         ///< Length.
    IntRange roomNumber;       ///< Room numbers per person.
    IntRange floorNumber;      ///< Floors per person.
    IntRange cardPerUser;      ///< Credentials per person.
    IntRange fingerPrintPerUser;
    IntRange facePerUser;
    IntRange irisPerUser;
    OptionList verifyMode;                ///< Own mode of a person, as `AcsCardReaderParam::verifyMode`.
    std::int32_t maxRecordPerMessage = 0; ///< Persons in one step of a batch.
    NEXWIRE_JSON
};

/// How a device takes pictures.
struct NEXWIRE_API JpegCaptureAbility : IInboundData {
    IntRange channelNo;        ///< Camera of the device.
    OptionList pictureSize;    ///< Width and height in pixels, "640*480".
    OptionList pictureQuality; ///< "best", "better", "normal".
    IntRange captureTimes;     ///< Pictures per trigger.
    IntRange captureInterval;  ///< Between them, milliseconds.
    bool manualCapture = false;
    bool linkedCapture = false; ///< By events.
    OptionList supplementLight; ///< "off", "on", "auto".
    NEXWIRE_JSON
};

/// What the face library of a device takes.
struct NEXWIRE_API FDLibCapability : IInboundData {
    std::int32_t maxLibNum = 0;
    std::int32_t maxFaceNum = 0;         ///< Over all libraries.
    OptionList faceLibType;              ///< "blackFD", "staticFD", "infraredFD".
    IntRange name;                       ///< Length of a library's name.
    IntRange pictureBytes;               ///< Size of a picture.
    OptionList pictureFormat;            ///< "jpg", "png", "bmp".
    OptionList uploadMode;               ///< "binary", "url", "model".
    bool faceModel = false;              ///< Takes models that were computed elsewhere.
    std::int32_t maxSearchResultNum = 0; ///< Per answer.
    NEXWIRE_JSON
};

struct NEXWIRE_API FDLibCapabilityData : IInboundData {
    FDLibCapability fDLibCapability;
    NEXWIRE_JSON
};

/// An algorithm that a device computes biometric models with. Models fit only devices of equal type and version.
struct NEXWIRE_API ALgorithmInfo : IInboundData {
    std::string algorithmId;
    std::string algorithmName;
    std::string algorithmType;    ///< One of: "face", "fingerPrint", "iris".
    std::string algorithmVersion; ///< "major.minor.build".
    std::int32_t modelBytes = 0;  ///< Size of one model.
    NEXWIRE_JSON
};

struct NEXWIRE_API ALgorithmsInfo : IInboundData {
    std::vector<ALgorithmInfo> algorithmInfoList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ALgorithmsInfoData : IInboundData {
    ALgorithmsInfo aLgorithmsInfo;
    NEXWIRE_JSON
};

/// What an intercom device can be told.
struct NEXWIRE_API CommonIntercomAbility : IInboundData {
    OptionList unitType; ///< As `IntercomParamConfig::unitType`.
    IntRange periodNumber;
    IntRange buildingNumber;
    IntRange unitNumber;
    IntRange floorNumber; ///< Below ground: negative.
    IntRange roomNumber;
    IntRange deviceIndex;
    IntRange lockNo;
    IntRange maxRingTime; ///< Seconds.
    IntRange maxTalkTime; ///< Seconds.
    bool remoteUnlock = false;
    bool callManageCenter = false;
    bool messageLeaving = false;
    bool noticeReceiving = false;
    bool sipRegistration = false;
    NEXWIRE_JSON
};

// ---- Configuration and state of a device ----

/// Where an intercom device stands and how it calls.
struct NEXWIRE_API IntercomParamConfig : IInboundData {
    std::string unitType; ///< One of: "indoor", "outdoor", "villa", "confirm", "manage".
    std::int32_t periodNumber = 0;
    std::int32_t buildingNumber = 0;
    std::int32_t unitNumber = 0;
    std::int32_t floorNumber = 0; ///< Below ground: negative.
    std::int32_t roomNumber = 0;
    std::int32_t deviceIndex = 0; ///< Among devices of the same place; 0 for the main one.
    std::int32_t lockNum = 0;     ///< Locks that it opens.
    std::int32_t maxRingTime = 0; ///< 0 to 255 s.
    std::int32_t maxTalkTime = 0; ///< 0 to 255 s.
    std::string manageCenterIp;   ///< Empty: none.
    std::int32_t manageCenterPort = 0;
    std::string sipServerIp; ///< Empty: none.
    std::int32_t sipServerPort = 0;
    std::string sipNumber;
    std::string softwareVersion;
    NEXWIRE_JSON
};

/// State of one door.
struct NEXWIRE_API AcsDoorWorkStatus : IInboundData {
    std::int32_t doorNo = 0;
    std::string doorState;    ///< What it was told. One of: "sleep", "remainOpen", "remainClosed", "normal".
    std::string lockState;    ///< One of: "closed", "open", "shorted", "cut", "abnormal".
    std::string contactState; ///< One of: "closed", "open", "shorted", "cut", "abnormal".
    NEXWIRE_JSON
};

/// State of one reader.
struct NEXWIRE_API AcsCardReaderWorkStatus : IInboundData {
    std::int32_t cardReaderNo = 0;
    bool online = false;
    bool tampered = false;
    std::string verifyMode; ///< In force now; as `AcsCardReaderParam::verifyMode`.
    NEXWIRE_JSON
};

/// State of an access-control device now.
struct NEXWIRE_API AcsWorkStatus : IInboundData {
    std::vector<AcsDoorWorkStatus> doorStatusList;
    std::vector<AcsCardReaderWorkStatus> cardReaderStatusList;
    std::vector<std::int32_t> armedAlarmInNoList;
    std::vector<std::int32_t> triggeredAlarmInNoList;
    std::vector<std::int32_t> activeAlarmOutNoList;
    std::string powerSupply;   ///< One of: "mains", "battery".
    double batteryVoltage = 0; ///< Volts.
    bool batteryLow = false;
    bool hostTampered = false;
    bool multiDoorInterLock = false; ///< Interlock is in force.
    bool antiSneak = false;          ///< Anti-passback is in force.
    bool fireAlarm = false;
    std::int32_t cardNum = 0; ///< Cards held.
    NEXWIRE_JSON
};

/// State of a device on the network.
struct NEXWIRE_API DeviceStatusResponse : IInboundData {
    std::string deviceState;      ///< One of: "online", "offline", "abnormal".
    std::string armState;         ///< Event channel to the platform. One of: "armed", "disarmed".
    std::string activationState;  ///< One of: "active", "inactive".
    std::string deviceTime;       ///< "YYYY-MM-DDTHH:MM:SS", local time of the device.
    std::int64_t upTime = 0;      ///< Since the last start, seconds.
    std::int32_t cpuUsage = 0;    ///< Per cent.
    std::int32_t memoryUsage = 0; ///< Per cent.
    std::int32_t errorCode = 0;   ///< 0, or why it is off-line or abnormal.
    std::string firmwareVersion;
    NEXWIRE_JSON
};

/// A face library of a device.
struct NEXWIRE_API FDLib : IInboundData {
    std::string fdId;
    std::string faceLibType; ///< As `FDLibCapability::faceLibType`.
    std::string name;
    std::int32_t faceNum = 0;
    std::vector<std::string> faceIdList; ///< Faces by the person number they were stored under.
    NEXWIRE_JSON
};

/// Faces that a device holds, library by library.
struct NEXWIRE_API FDLibReturn : IInboundData {
    std::int32_t totalFaceNum = 0;
    std::vector<FDLib> fdLibList;
    NEXWIRE_JSON
};

// ---- Counts held on the device ----

struct NEXWIRE_API CardNumberInfo : IInboundData {
    std::int32_t cardNum = 0;
    std::int32_t maxCardNum = 0; ///< As many fit; 0: the device does not tell.
    NEXWIRE_JSON
};

struct NEXWIRE_API UserNumberInfo : IInboundData {
    std::int32_t userNum = 0;
    std::int32_t maxUserNum = 0;  ///< As many fit; 0: the device does not tell.
    std::int32_t cardUserNum = 0; ///< Persons with at least one card, and so on.
    std::int32_t faceUserNum = 0;
    std::int32_t fingerPrintUserNum = 0;
    std::int32_t irisUserNum = 0;
    NEXWIRE_JSON
};

struct NEXWIRE_API FaceNumberInfo : IInboundData {
    std::int32_t faceNum = 0;
    std::int32_t maxFaceNum = 0; ///< As many fit; 0: the device does not tell.
    NEXWIRE_JSON
};

struct NEXWIRE_API FingerPrintNumberInfo : IInboundData {
    std::int32_t fingerPrintNum = 0;
    std::int32_t maxFingerPrintNum = 0; ///< As many fit; 0: the device does not tell.
    NEXWIRE_JSON
};

struct NEXWIRE_API IrisNumberInfo : IInboundData {
    std::int32_t irisNum = 0;
    std::int32_t maxIrisNum = 0; ///< As many fit; 0: the device does not tell.
    NEXWIRE_JSON
};

} // namespace protocol
