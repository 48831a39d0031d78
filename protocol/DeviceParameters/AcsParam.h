#pragma once

#include "protocol/DeviceCommon.h"

// Configurations of access-control devices and the abilities that bound them. Habits of these structures: see
// DeviceCommon.h.

namespace protocol {

// ---- The device itself ----

/// Settings of the device as a whole.
struct NEXWIRE_API AcsHostParamCfg : IInboundData {
    bool rs485Backup = false;               ///< The second RS-485 line takes over when the first fails.
    bool showCapturedPicture = false;       ///< Show the picture taken at authentication on the device's screen.
    bool showUserInfo = false;              ///< Show number and name of the authenticated person.
    bool overlayUserInfo = false;           ///< Write them into the captured picture.
    bool voicePrompt = false;               ///< Say the result of an authentication.
    bool uploadCapturedPicture = false;     ///< Send captured pictures with their events.
    bool saveCapturedPicture = false;       ///< Keep captured pictures on the device.
    bool keypadCardNo = false;              ///< Card numbers may be typed in.
    bool mobileNetwork = false;             ///< Use the built-in cellular modem.
    bool wifiProbe = false;                 ///< Report mobile telephones that are in reach.
    std::string readerProtocol;             ///< One of: "private", "osdp".
    std::string fireLinkageMode;            ///< Doors on a fire signal. One of: "none", "open", "remainOpen".
    std::string eventOverflowMode;          ///< Full event memory. One of: "overwrite", "stop".
    std::int32_t authResultDisplayTime = 0; ///< How long a result stays on the screen. 0 to 255 s.
    NEXWIRE_JSON
};

/// What `AcsHostParamCfg` may hold on a device.
struct NEXWIRE_API AcsHostCfg : IInboundData {
    bool rs485Backup = false;
    bool showCapturedPicture = false;
    bool showUserInfo = false;
    bool overlayUserInfo = false;
    bool voicePrompt = false;
    bool uploadCapturedPicture = false;
    bool saveCapturedPicture = false;
    bool keypadCardNo = false;
    bool mobileNetwork = false;
    bool wifiProbe = false;
    OptionList readerProtocol;
    OptionList fireLinkageMode;
    OptionList eventOverflowMode;
    IntRange authResultDisplayTime; ///< Seconds.
    NEXWIRE_JSON
};

// ---- Doors ----

/// Settings of one door. The three passwords are plain text here; the request functions encrypt and decrypt them.
struct NEXWIRE_API AcsDoorParamCfg : IInboundData {
    std::int32_t doorNo = 0;
    std::string doorName;
    std::string doorContactType;              ///< Contact at rest. One of: "remainClosed", "remainOpen".
    std::string exitButtonType;               ///< Button at rest. One of: "remainClosed", "remainOpen".
    bool exitButton = true;                   ///< The exit button opens the door.
    std::int32_t openDuration = 0;            ///< How long the lock stays open after an authentication. 1 to 255 s.
    std::int32_t accessibleOpenDuration = 0;  ///< The same for cards of people who need more time. 0 to 255 s.
    std::int32_t heldOpenTimeout = 0;         ///< Alarm when the door stands open for longer. 0 to 255 s; 0: no alarm.
    bool lockWhenClosed = false;              ///< Lock as soon as the door has closed, before openDuration ends.
    std::string firstPersonMode;              ///< What the first person of the day starts. One of: "disable" nothing,
                                              ///< "remainOpen", "authorize" others pass from then on.
    std::int32_t firstPersonOpenDuration = 0; ///< How long that lasts. 0 to 1440 min.
    std::string stressPassword;               ///< Opens and reports a duress alarm. 4 to 8 digits, empty: none.
    std::string superPassword;                ///< Opens whatever the door's state. 4 to 8 digits, empty: none.
    std::string unlockPassword;               ///< Ends an alarm. 4 to 8 digits, empty: none.
    bool remotePassword = false;              ///< Remote opening asks for a password.
    std::string fireInputType;                ///< Fire input at rest. One of: "remainClosed", "remainOpen".
    std::string powerOffState;                ///< Lock without power. One of: "locked", "unlocked".
    bool lockInputCheck = false;              ///< Watch the lock's own contact.
    std::string lockInputType;                ///< That contact at rest. One of: "remainClosed", "remainOpen".
    std::int32_t ladderControlDelay = 0;      ///< How long a lift floor stays released for a visitor. 0 to 1440 min.
    std::int32_t localControllerNo = 0;       ///< Local controller that the door hangs on, 0: none.
    std::int32_t localControllerDoorNo = 0;   ///< The door's number there.
    NEXWIRE_JSON
};

/// What `AcsDoorParamCfg` may hold on a device; text lengths are of the plain text.
struct NEXWIRE_API DoorCap : IInboundData {
    IntRange doorNo;
    IntRange doorName; ///< Length.
    OptionList doorContactType;
    OptionList exitButtonType;
    bool exitButton = false;
    IntRange openDuration;           ///< Seconds.
    IntRange accessibleOpenDuration; ///< Seconds.
    IntRange heldOpenTimeout;        ///< Seconds.
    bool lockWhenClosed = false;
    OptionList firstPersonMode;
    IntRange firstPersonOpenDuration; ///< Minutes.
    IntRange stressPassword;          ///< Length.
    IntRange superPassword;           ///< Length.
    IntRange unlockPassword;          ///< Length.
    bool remotePassword = false;
    OptionList fireInputType;
    OptionList powerOffState;
    bool lockInputCheck = false;
    OptionList lockInputType;
    IntRange ladderControlDelay; ///< Minutes.
    IntRange localControllerNo;
    IntRange localControllerDoorNo;
    NEXWIRE_JSON
};

// ---- Card readers ----

/// Settings of one reader.
struct NEXWIRE_API AcsCardReaderParam : IInboundData {
    std::int32_t cardReaderNo = 0;
    std::string cardReaderName;
    bool enable = true;
    std::string cardReaderType;               ///< One of: "wiegand", "rs485", "fingerPrint", "face", "qrCode"; read
                                              ///< only.
    std::string okLedPolarity;                ///< One of: "cathode", "anode".
    std::string errorLedPolarity;             ///< One of: "cathode", "anode".
    std::string buzzerPolarity;               ///< One of: "cathode", "anode".
    std::int32_t swipeInterval = 0;           ///< Least time between two swipes of a card. 0 to 255 s; 0: no limit.
    std::int32_t keyTimeout = 0;              ///< Longest pause between two keys of a password. 0 to 255 s.
    bool failedAttemptAlarm = false;          ///< Alarm after too many failed attempts.
    std::int32_t maxFailedAttempts = 0;       ///< Failed attempts until then.
    bool tamperCheck = false;                 ///< Alarm when the housing is opened.
    std::int32_t offlineCheckTime = 0;        ///< Reader counts as off-line after this silence. 0 to 255 s.
    std::int32_t fingerPrintCheckLevel = 0;   ///< Odds of a false match, one in 10 to one in 10^9. 1 to 9.
    std::string verifyMode;                   ///< When no plan rules. For example: "card", "cardAndPassword",
                                              ///< "cardOrPassword", "fingerPrint", "face", "cardOrFace",
                                              ///< "cardOrFaceOrFingerPrint".
    std::int32_t faceMatchThreshold = 0;      ///< Least likeness for one-to-one comparison. 1 to 100 %.
    std::int32_t faceRecognizeThreshold = 0;  ///< Least likeness for one-to-many comparison. 1 to 100 %.
    std::int32_t faceRecognizeInterval = 0;   ///< Pause between two recognitions. 0 to 255 s.
    std::int32_t faceRecognizeTimeout = 0;    ///< Longest attempt. 0 to 255 s.
    bool livenessDetection = false;           ///< Refuse pictures of faces.
    std::string livenessSecurityLevel;        ///< One of: "general", "advanced", "professional".
    std::int32_t localControllerNo = 0;       ///< Local controller that the reader hangs on, 0: none.
    std::int32_t localControllerReaderNo = 0; ///< The reader's number there.
    NEXWIRE_JSON
};

/// Readers of a device: all of them in an answer; those to change, whole, in an order.
struct NEXWIRE_API AcsCardReaderParamCfg : IInboundData {
    std::vector<AcsCardReaderParam> cardReaderParamList;
    NEXWIRE_JSON
};

/// What `AcsCardReaderParam` may hold on a device.
struct NEXWIRE_API CardReaderCfg : IInboundData {
    IntRange cardReaderNo;
    IntRange cardReaderName; ///< Length.
    bool enable = false;
    OptionList cardReaderType;
    OptionList okLedPolarity;
    OptionList errorLedPolarity;
    OptionList buzzerPolarity;
    IntRange swipeInterval; ///< Seconds.
    IntRange keyTimeout;    ///< Seconds.
    bool failedAttemptAlarm = false;
    IntRange maxFailedAttempts;
    bool tamperCheck = false;
    IntRange offlineCheckTime; ///< Seconds.
    IntRange fingerPrintCheckLevel;
    OptionList verifyMode;
    IntRange faceMatchThreshold;     ///< Per cent.
    IntRange faceRecognizeThreshold; ///< Per cent.
    IntRange faceRecognizeInterval;  ///< Seconds.
    IntRange faceRecognizeTimeout;   ///< Seconds.
    bool livenessDetection = false;
    OptionList livenessSecurityLevel;
    IntRange localControllerNo;
    IntRange localControllerReaderNo;
    NEXWIRE_JSON
};

/// Which readers of a device can recognise faces, and how well.
struct NEXWIRE_API CardReaderNo : IInboundData {
    std::vector<std::int32_t> cardReaderNoList;
    bool cardReaderVerification = false; ///< They compare themselves; otherwise the device does.
    IntRange faceRecognizeDistance;      ///< Centimetres.
    std::int32_t maxFaceNum = 0;         ///< Faces that one such reader holds.
    NEXWIRE_JSON
};

// ---- Alarm outputs and inputs ----

/// Settings of one alarm output.
struct NEXWIRE_API AcsAlarmOutParam : IInboundData {
    std::int32_t alarmOutNo = 0;
    std::string alarmOutName;
    std::string contactType;                 ///< Relay at rest. One of: "remainClosed", "remainOpen".
    std::string triggerMode;                 ///< One of: "pulse" for activeDuration, "latch" until it is switched off.
    std::int32_t activeDuration = 0;         ///< 0 to 255 s.
    std::int32_t triggerDelay = 0;           ///< Between the cause and the relay. 0 to 255 s.
    std::vector<std::int32_t> alarmInNoList; ///< Inputs that trigger it.
    std::vector<DayPlan> armPlanList;        ///< When it may be triggered; empty: always.
    NEXWIRE_JSON
};

/// Alarm outputs of a device: all of them in an answer; those to change, whole, in an order.
struct NEXWIRE_API AcsAlarmOutParamCfg : IInboundData {
    std::vector<AcsAlarmOutParam> alarmOutParamList;
    NEXWIRE_JSON
};

/// What `AcsAlarmOutParam` may hold on a device.
struct NEXWIRE_API AlarmOutAbilityCfg : IInboundData {
    IntRange alarmOutNo;
    IntRange alarmOutName; ///< Length.
    OptionList contactType;
    OptionList triggerMode;
    IntRange activeDuration; ///< Seconds.
    IntRange triggerDelay;   ///< Seconds.
    IntRange alarmInNoList;  ///< Numbers that may stand in it.
    bool armPlanList = false;
    std::int32_t maxTimeSegmentNum = 0; ///< Per day of the arming plan.
    NEXWIRE_JSON
};

/// Settings of one alarm input.
struct NEXWIRE_API AcsAlarmInParam : IInboundData {
    std::int32_t alarmInNo = 0;
    std::string alarmInName;
    bool enable = true;
    std::string contactType;       ///< Contact at rest. One of: "remainClosed", "remainOpen".
    std::string zoneType;          ///< One of: "instant", "delay", "24hours", "interior", "emergency", "fire".
    std::string detectorType;      ///< One of: "magneticContact", "passiveInfrared", "glassBreak", "smoke", "button",
                                   ///< "other".
    std::int32_t enterDelay = 0;   ///< Time to disarm after entering, for zone type "delay". 0 to 255 s.
    std::int32_t exitDelay = 0;    ///< Time to leave after arming, for zone type "delay". 0 to 255 s.
    std::int32_t debounceTime = 0; ///< Shorter changes are ignored. 0 to 60000 ms.
    bool lineFaultCheck = false;   ///< Watch for cut and shorted lines; needs end-of-line resistors.
    std::vector<std::int32_t> alarmOutNoList; ///< Outputs that it triggers.
    std::vector<std::int32_t> openDoorNoList; ///< Doors that it opens.
    std::vector<DayPlan> armPlanList;         ///< When it is armed; empty: always.
    NEXWIRE_JSON
};

/// Alarm inputs of a device: all of them in an answer; those to change, whole, in an order.
struct NEXWIRE_API AcsAlarmInParamCfg : IInboundData {
    std::vector<AcsAlarmInParam> alarmInParamList;
    NEXWIRE_JSON
};

/// What `AcsAlarmInParam` may hold on a device.
struct NEXWIRE_API AlarmInAbilityCfg : IInboundData {
    IntRange alarmInNo;
    IntRange alarmInName; ///< Length.
    OptionList contactType;
    OptionList zoneType;
    OptionList detectorType;
    IntRange enterDelay;   ///< Seconds.
    IntRange exitDelay;    ///< Seconds.
    IntRange debounceTime; ///< Milliseconds.
    bool lineFaultCheck = false;
    IntRange alarmOutNoList; ///< Numbers that may stand in it.
    IntRange openDoorNoList; ///< The same.
    bool armPlanList = false;
    std::int32_t maxTimeSegmentNum = 0; ///< Per day of the arming plan.
    NEXWIRE_JSON
};

// ---- Turnstiles ----

/// Settings of a turnstile lane.
struct NEXWIRE_API AcsChannelControllerParamCfg : IInboundData {
    std::string barrierType;        ///< One of: "swing", "flap", "tripod", "fullHeight"; read only.
    std::string entranceMode;       ///< Way in. One of: "controlled", "free", "forbidden".
    std::string exitMode;           ///< Way out. One of: "controlled", "free", "forbidden".
    std::string barrierRestState;   ///< One of: "remainClosed", "remainOpen".
    std::int32_t openSpeed = 0;     ///< 1 (slow) to 10.
    std::int32_t closeSpeed = 0;    ///< 1 (slow) to 10.
    std::int32_t passTimeout = 0;   ///< The barrier closes when nobody has passed until then. 0 to 255 s.
    std::int32_t closeDelay = 0;    ///< Between passing and closing. 0 to 60000 ms.
    std::int32_t stayAlarmTime = 0; ///< Alarm when somebody stays in the lane for longer. 0 to 255 s; 0: no alarm.
    bool passMemory = false;        ///< Several authentications let as many people pass in a row.
    bool tailgatingAlarm = false;   ///< Two people on one authentication.
    bool reversePassAlarm = false;  ///< Passing against the authorised direction.
    bool climbOverAlarm = false;
    bool forcedPassAlarm = false;     ///< Passing without authentication.
    std::string fireInputType;        ///< Fire input at rest. One of: "remainClosed", "remainOpen".
    std::int32_t speakerVolume = 0;   ///< 0 (silent) to 10.
    std::int32_t lightBrightness = 0; ///< 1 to 100 %.
    NEXWIRE_JSON
};

/// What `AcsChannelControllerParamCfg` may hold on a device.
struct NEXWIRE_API ChannelControllerAbilityCfg : IInboundData {
    OptionList barrierType;
    OptionList entranceMode;
    OptionList exitMode;
    OptionList barrierRestState;
    IntRange openSpeed;
    IntRange closeSpeed;
    IntRange passTimeout;   ///< Seconds.
    IntRange closeDelay;    ///< Milliseconds.
    IntRange stayAlarmTime; ///< Seconds.
    bool passMemory = false;
    bool tailgatingAlarm = false;
    bool reversePassAlarm = false;
    bool climbOverAlarm = false;
    bool forcedPassAlarm = false;
    OptionList fireInputType;
    IntRange speakerVolume;
    IntRange lightBrightness; ///< Per cent.
    NEXWIRE_JSON
};

// ---- Contactless cards ----

/// Cards that telephones and other NFC devices show.
struct NEXWIRE_API NFCCfg : IInboundData {
    bool enable = false;
    bool cloneProtection = false; ///< Refuse emulated copies of plain cards.
    std::string cardNoSource;     ///< What counts as card number. One of: "uid", "application".
    std::string applicationId;    ///< Application to select, hexadecimal. 10 to 32 digits; empty unless the source is
                                  ///< "application".
    std::int32_t readTimeout = 0; ///< 0 to 60000 ms.
    NEXWIRE_JSON
};

/// What `NFCCfg` may hold on a device.
struct NEXWIRE_API NFCCfgCap : IInboundData {
    bool enable = false;
    bool cloneProtection = false;
    OptionList cardNoSource;
    IntRange applicationId; ///< Length.
    IntRange readTimeout;   ///< Milliseconds.
    NEXWIRE_JSON
};

/// How a device treats one kind of radio card.
struct NEXWIRE_API RFCardType : IInboundData {
    std::string cardType;   ///< One of: "em", "m1", "cpu", "id", "desfire", "felica".
    bool enable = false;    ///< Cards of this kind are read.
    bool encrypted = false; ///< Only cards that carry the site's key.
    NEXWIRE_JSON
};

/// Which radio cards a device reads.
struct NEXWIRE_API RFCardCfg : IInboundData {
    std::string byteOrder;        ///< Card numbers. One of: "forward", "reverse".
    std::int32_t cardNoBytes = 0; ///< Bytes of the number that are used: 3, 4 or 7; 0: all.
    std::vector<RFCardType> cardTypeList;
    NEXWIRE_JSON
};

struct NEXWIRE_API RFCardCfgData : IInboundData {
    RFCardCfg rFCardCfg;
    NEXWIRE_JSON
};

/// What `RFCardCfg` may hold on a device.
struct NEXWIRE_API RFCardCfgCap : IInboundData {
    OptionList byteOrder;
    IntRange cardNoBytes;
    OptionList cardType;
    std::vector<std::string> encryptedCardTypeList; ///< Kinds of which it can ask for encrypted cards only.
    NEXWIRE_JSON
};

// ---- Face recognition ----

/// How a face terminal recognises.
struct NEXWIRE_API FaceRecognizeMode : IInboundData {
    std::string mode;                 ///< One of: "normal", "deep" better with aged pictures, fewer persons.
    std::string workScene;            ///< One of: "indoor", "outdoor".
    bool maskDetection = false;       ///< Recognise people with face masks.
    std::string maskStrategy;         ///< People without a mask. One of: "none", "tip", "forbid".
    bool multiFace = false;           ///< Recognise several people at once.
    std::int32_t maxFaceDistance = 0; ///< Centimetres; 0: the device decides.
    NEXWIRE_JSON
};

/// What `FaceRecognizeMode` may hold on a device.
struct NEXWIRE_API FaceRecognizeModeAbility : IInboundData {
    OptionList mode;
    bool rebootRequired = false; ///< A change of mode takes effect with the next start.
    bool clearsFaceData = false; ///< A change of mode empties the device's face library.
    OptionList workScene;
    bool maskDetection = false;
    OptionList maskStrategy;
    bool multiFace = false;
    IntRange maxFaceDistance; ///< Centimetres.
    NEXWIRE_JSON
};

} // namespace protocol
