#pragma once

#include "abacus/Types.h"

// Terminals: the screens that play, one by one and in groups.

namespace Abacus {

/// When a screen is on.
struct TimedSwitch {
    Options planType; ///< "daily", "weekly".
    Range spanNum;    ///< Time spans of a day.
    bool isSptHoliday = false;
    ABACUS_PART
};

/// What a terminal may be.
struct TerminalAbility {
    Range nameLength;
    Range remarkLength;
    Options terminalType; ///< "android", "windows", "linux", "led".
    Options registerType; ///< "auto", "manual".
    Options resolution;
    Options orientation; ///< Degrees clockwise: "0", "90", "180", "270".
    Range volume;        ///< Per cent.
    Range brightness;    ///< Per cent.
    Range terminalNum;
    TimedSwitch timedSwitch;
    Options timeSync;      ///< "manual", "ntp", "server".
    Options storagePolicy; ///< What goes when it is full: "oldest", "none".
    Range positionLength;  ///< Of the text that says where it stands.
    bool isSptSubtitle = false;
    bool isSptLockScreen = false;
    bool isSptScreenshot = false;
    bool isSptMonitoring = false; ///< It can tell what it plays.
    ABACUS_DOCUMENT
};

/// What terminals can be told to do.
struct ControlParam {
    Options operateType; ///< "powerOn", "powerOff", "reboot", "play", "stop", "insertCharacter", "setVolume" ...
    Options operateBy;   ///< "terminal", "group", "all".
    Range terminalNum;   ///< Terminals of one command.
    Range volume;        ///< Per cent.
    Range brightness;    ///< Per cent.
    Range subtitleLength;
    bool isSptSchedule = false; ///< Commands can be given ahead of time.
    ABACUS_DOCUMENT
};

/// What a group of terminals may be.
struct TerminalGroupAbility {
    Range nameLength;
    Range remarkLength;
    Range groupNum;
    Range terminalNum; ///< Terminals of a group.
    Range levelNum;    ///< Groups in groups.
    bool isSptMove = false;
    ABACUS_DOCUMENT
};

/// What a text that runs across all that is played may be.
struct InsertCharacterCfgAbility {
    Range textLength;
    Range fontSize;          ///< Pixels.
    Options position;        ///< "top", "middle", "bottom".
    Options scrollDirection; ///< "none", "left", "right".
    Range scrollSpeed;
    Range durationS;
    Range textNum; ///< Texts at once.
    bool isSptColor = false;
    bool isSptTransparent = false;
    ABACUS_DOCUMENT
};

/// Whether terminals can be looked into over their debugging port.
struct AdbDebugAbility {
    bool isSptAdbDebug = false;
    Range port;
    Range openTimeMin;   ///< Minutes until it closes by itself.
    Options operateType; ///< "open", "close".
    ABACUS_DOCUMENT
};

/// What can be done with terminals at all. Servers give it as JSON.
struct TerminalManagerCapability {
    bool isSptTerminal = false;
    bool isSptTerminalGroup = false;
    bool isSptTerminalControl = false;
    bool isSptUpgrade = false;
    bool isSptScreenshot = false;
    bool isSptInsertCharacter = false;
    bool isSptAdbDebug = false;
    bool isSptBindCamera = false;
    bool isSptBatchConfig = false;
    bool isSptNetworkTest = false;
    bool isSptFaceInfo = false;
    Range terminalNum;
    Range upgradeNum;    ///< Terminals that are upgraded at once.
    Options packageType; ///< Of upgrades: "firmware", "application".
    ABACUS_DOCUMENT
};

namespace ipclinkcap {

/// What cameras can be tied to a terminal.
struct BindIPC {
    Range cameraNum;     ///< Of a terminal.
    Options addressType; ///< "ip", "domain".
    Range port;
    Range userNameLength;
    Range passwordLength;
    Options streamType; ///< "main", "sub".
    Options transport;  ///< "tcp", "udp", "multicast".
    bool isSptAudio = false;
    ABACUS_DOCUMENT
};

/// What else a terminal does with its cameras.
struct TerminalOthers {
    bool isSptCameraPreview = false;
    bool isSptAlarmPopup = false; ///< The picture of an alarm covers what is played.
    Range popupS;                 ///< Seconds that it stays.
    Options peopleCounting;       ///< "entered", "left", "inside".
    Range peopleThreshold;        ///< From which number on a warning is shown.
    bool isSptTemperature = false;
    ABACUS_DOCUMENT
};

} // namespace ipclinkcap

namespace batchterminalset {

/// A setting that many terminals can be given at once.
struct BatchParameter {
    std::string name; ///< Member of `TerminalAbility` that it sets.
    Range value;      ///< Of numbers and lengths.
    Options option;   ///< Of words.
    ABACUS_PART
};

struct BatchTerminalAbilitys {
    Range terminalNum; ///< Terminals at once.
    std::vector<BatchParameter> parameterList;
    Options resultDetail; ///< "summary", "each".
    bool isSptCancel = false;
    ABACUS_DOCUMENT
};

} // namespace batchterminalset

} // namespace Abacus
