#pragma once

#include "protocol/DeviceCommon.h"

// Further configurations of access-control devices: pictures at authentication, encrypted cards, face terminals,
// attached modules, attendance states. Habits of these structures: see DeviceCommon.h.

namespace protocol {

// ---- Pictures ----

/// Pictures that a camera takes at an event.
struct NEXWIRE_API SnapConfig : IInboundData {
    std::int32_t snapChannelNo = 0; ///< Camera, from 1.
    bool enable = false;
    std::int32_t snapTimes = 1;                 ///< Pictures per event.
    std::vector<std::int32_t> snapIntervalList; ///< Before each picture but the first. 0 to 60000 ms.
    std::string resolution;                     ///< One of: "CIF", "4CIF", "VGA", "720P", "1080P", "UXGA".
    std::string pictureQuality;                 ///< One of: "best", "better", "normal".
    std::vector<std::string> snapEventList;     ///< One of: "authPass", "authFail", "doorForced", "duress", "doorbell".
    bool overlayTime = false;                   ///< Write time and door into the picture.
    bool uploadPicture = false;                 ///< Send pictures with their events.
    bool savePicture = false;                   ///< Keep pictures on the device.
    NEXWIRE_JSON
};

/// What `SnapConfig` may hold on a device.
struct NEXWIRE_API SnapConfigAbility : IInboundData {
    IntRange snapChannelNo;
    IntRange snapTimes;
    IntRange snapIntervalList; ///< Each, milliseconds.
    OptionList resolution;
    OptionList pictureQuality;
    OptionList snapEventList;
    bool overlayTime = false;
    bool uploadPicture = false;
    bool savePicture = false;
    NEXWIRE_JSON
};

// ---- Cards ----

/// Checks on M1 cards against copies: a sector that only cards with the right key hand out.
struct NEXWIRE_API M1CardEncryptCfg : IInboundData {
    bool enable = false;       ///< Refuse cards whose sector does not open with the key.
    std::int32_t sectorNo = 0; ///< Sector with the check data, from 0; sector 0 is the maker's.
    std::string keyType;       ///< Key that opens it. One of: "A", "B".
    std::string sectorKey;     ///< That key: 12 hexadecimal digits, plain text; devices answer it empty.
    std::string newSectorKey;  ///< Key to write to cards that are issued, likewise; empty: leave theirs.
    std::string readContent;   ///< What becomes the card number. One of: "serialNo", "sectorData".
    std::int32_t blockNo = 0;  ///< For "sectorData": block in the sector, 0 to 2.
    NEXWIRE_JSON
};

/// What `M1CardEncryptCfg` may hold on a device.
struct NEXWIRE_API M1CardParametersAbility : IInboundData {
    bool enable = false;
    IntRange sectorNo;
    OptionList keyType;
    IntRange sectorKey;    ///< Length.
    IntRange newSectorKey; ///< Length; both ends 0 when the device does not write cards.
    OptionList readContent;
    IntRange blockNo;
    NEXWIRE_JSON
};

// ---- Modules and terminals ----

/// A module attached to the device.
struct NEXWIRE_API AcsExternelDevice : IInboundData {
    std::int32_t externelNo = 0; ///< From 1.
    std::string externelName;
    bool enable = false;
    std::string externelType; ///< One of: "securityModule", "ladderModule", "ioModule", "fingerPrintModule", "keypad".
    std::string connectType;  ///< One of: "rs485", "wiegand", "network", "usb".
    std::int32_t address = 0; ///< On its RS-485 line, 1 to 255; 0 otherwise.
    std::vector<std::int32_t> doorNoList; ///< Doors that it serves.
    bool offlineAlarm = false;            ///< Alarm when it does not answer.
    bool tamperCheck = false;             ///< Alarm when its housing is opened.
    std::string model;                    ///< Read only, like the rest.
    std::string serialNo;
    std::string softwareVersion;
    std::string onlineStatus; ///< One of: "online", "offline".
    NEXWIRE_JSON
};

/// Modules of a device: all of them in an answer; those to change, whole, in an order. The names are spelled so.
struct NEXWIRE_API AcsExternelParameters : IInboundData {
    std::vector<AcsExternelDevice> externelDeviceList;
    std::int32_t offlineCheckTime = 0; ///< A module counts as off-line after this silence. 0 to 255 s.
    NEXWIRE_JSON
};

/// How a terminal compares persons with their identity document or their stored face.
struct NEXWIRE_API IdentityTerminal : IInboundData {
    std::string terminalMode;             ///< One of: "accessControl", "identityCheck" compares with the document only.
    std::string cameraType;               ///< Built-in camera. One of: "visible", "infrared", "dual"; read only.
    std::string fingerPrintModule;        ///< One of: "none", "optical", "capacitive"; read only.
    bool documentReader = false;          ///< Reads identity documents.
    std::string documentReadMode;         ///< One of: "fullInfo", "serialNo".
    std::int32_t faceVerifyThreshold = 0; ///< Least likeness of face and document. 1 to 100 %.
    std::int32_t faceVerifyTimeout = 0;   ///< Longest comparison. 0 to 255 s.
    bool blockListCheck = false;          ///< Refuse persons of the block list.
    bool fingerPrintCheck = false;        ///< Compare the finger with the document as well.
    bool uploadDocumentInfo = false;      ///< Send what the document says with the event.
    bool saveCertifiedPicture = false;    ///< Keep the picture of a successful comparison.
    bool lowLightMode = false;            ///< Infrared comparison in the dark.
    std::int32_t lowLightThreshold = 0;   ///< Least likeness then. 1 to 100 %.
    std::int32_t lowLightBrightness = 0;  ///< Darkness at which that starts, 0 (dark) to 8 (bright).
    std::int32_t screenOffTimeout = 0;    ///< Screen goes dark after this rest. 0 to 255 s; 0: never.
    NEXWIRE_JSON
};

/// What `IdentityTerminal` may hold on a device.
struct NEXWIRE_API IdentityTerminalAbility : IInboundData {
    OptionList terminalMode;
    OptionList cameraType;
    OptionList fingerPrintModule;
    bool documentReader = false;
    OptionList documentReadMode;
    IntRange faceVerifyThreshold; ///< Per cent.
    IntRange faceVerifyTimeout;   ///< Seconds.
    bool blockListCheck = false;
    bool fingerPrintCheck = false;
    bool uploadDocumentInfo = false;
    bool saveCertifiedPicture = false;
    bool lowLightMode = false;
    IntRange lowLightThreshold; ///< Per cent.
    IntRange lowLightBrightness;
    IntRange screenOffTimeout; ///< Seconds.
    NEXWIRE_JSON
};

// ---- Attendance ----

/// When a terminal offers one attendance state, and how.
struct NEXWIRE_API AttendanceStatusRuleCfg : IInboundData {
    std::string attendanceStatus; ///< One of: "checkIn", "checkOut", "breakOut", "breakIn", "overtimeIn",
                                  ///< "overtimeOut".
    bool enable = false;
    std::string statusName;           ///< What the terminal shows.
    std::string statusKey;            ///< Key that chooses it. One of: "up", "down", "left", "right", "esc", "ok",
                                      ///< "none".
    bool autoSwitch = false;          ///< The plan below chooses it without a key.
    std::vector<DayPlan> dayPlanList; ///< A segment says from when to when the state stands.
    NEXWIRE_JSON
};

/// What `AttendanceStatusRuleCfg` may hold on a device.
struct NEXWIRE_API AttendanceStatusRuleCfgAbility : IInboundData {
    OptionList attendanceStatus;
    IntRange statusName; ///< Length.
    OptionList statusKey;
    bool autoSwitch = false;
    OptionList week;
    IntRange timeSegmentList; ///< How many a day.
    NEXWIRE_JSON
};

/// How a terminal comes by the attendance state of a passage.
struct NEXWIRE_API AttendanceStatusModeCfg : IInboundData {
    std::string attendanceStatusMode; ///< One of: "disable", "manual", "auto", "manualAndAuto".
    bool statusRequired = false;      ///< In the manual modes: no passage without a state.
    std::string chooseOrder;          ///< When the state is chosen. One of: "beforeAuth", "afterAuth".
    std::int32_t statusHoldTime = 0;  ///< A chosen state stands for this long. 0 to 255 s; 0: until the next choice.
    bool statusPrompt = false;        ///< Say and show the state of each passage.
    NEXWIRE_JSON
};

/// What `AttendanceStatusModeCfg` may hold on a device.
struct NEXWIRE_API AttendanceStatusModeCfgAbility : IInboundData {
    OptionList attendanceStatusMode;
    bool statusRequired = false;
    OptionList chooseOrder;
    IntRange statusHoldTime; ///< Seconds.
    bool statusPrompt = false;
    NEXWIRE_JSON
};

} // namespace protocol
