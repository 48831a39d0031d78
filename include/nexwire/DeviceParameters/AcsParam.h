#pragma once

#include "protocol/DeviceParameters/AcsCapability.h"
#include "protocol/DeviceParameters/AcsParam.h"

// Configurations, abilities, states and counts that an access-control device keeps itself. Every function is one
// exchange with the device through the platform, blocks until the answer is there and may be called from any thread.
//
// A get is true when the device answered with the structure asked for; `output` is untouched otherwise. A set is true
// when the platform's answer was readable, whatever the device makes of it. Structures and their vocabulary: see
// protocol/DeviceParameters/AcsParam.h and protocol/DeviceParameters/AcsCapability.h.

namespace nexwire {

/// What can be set up on an access-control device, each with the ability that bounds it.
class NEXWIRE_API AcsParamConfig {
public:
    /// The device as a whole.
    static bool getAcsHostAbilityRequest(protocol::AcsHostCfg& output, const std::string& deviceGuid);
    static bool getAcsHostParamRequest(protocol::AcsHostParamCfg& output, const std::string& deviceGuid);
    static bool setAcsHostParamRequest(const protocol::AcsHostParamCfg& input, const std::string& deviceGuid);

    /// Face recognition. The second get takes the route of the platform's own components.
    static bool getFaceReModeAbilityRequest(protocol::FaceRecognizeModeAbility& output, const std::string& deviceGuid);
    static bool getFaceReModeParamRequest(protocol::FaceRecognizeMode& output, const std::string& deviceGuid);
    static bool getFaceReModeParamRequestINTERNAL(protocol::FaceRecognizeMode& output, const std::string& deviceGuid);
    static bool setFaceReModeParamRequest(const protocol::FaceRecognizeMode& input, const std::string& deviceGuid);
    /// Which readers recognise faces.
    static bool getFaceCardReaderAbilityRequest(protocol::CardReaderNo& output, const std::string& deviceGuid);

    static bool getAcsDoorAbilityRequest(protocol::DoorCap& output, const std::string& deviceGuid);
    /// One door, its three passwords decrypted. Where that fails, which is logged, they are empty and the rest of
    /// the door is there all the same. @param doorNo  from 1.
    static bool getAcsDoorParamRequest(protocol::AcsDoorParamCfg& output, const std::string& deviceGuid, int doorNo);
    /// Sets one door; the three passwords, given in plain text, travel encrypted. Where they cannot be encrypted,
    /// which is logged, the door is set without passwords. @param doorNo  from 1.
    static bool setAcsDoorParamRequest(protocol::AcsDoorParamCfg input, const std::string& deviceGuid, int doorNo);

    /// All card readers.
    static bool getCardReaderAbilityRequest(protocol::CardReaderCfg& output, const std::string& deviceGuid);
    static bool getCardReaderParamRequest(protocol::AcsCardReaderParamCfg& output, const std::string& deviceGuid);
    static bool setCardReaderParamRequest(const protocol::AcsCardReaderParamCfg& input, const std::string& deviceGuid);

    /// All alarm outputs.
    static bool getAcsAlarmOutAbilityRequest(protocol::AlarmOutAbilityCfg& output, const std::string& deviceGuid);
    static bool getAcsAlarmOutParamRequest(protocol::AcsAlarmOutParamCfg& output, const std::string& deviceGuid);
    static bool setAcsAlarmOutParamRequest(const protocol::AcsAlarmOutParamCfg& input, const std::string& deviceGuid);

    /// All alarm inputs.
    static bool getAcsAlarmInAbilityRequest(protocol::AlarmInAbilityCfg& output, const std::string& deviceGuid);
    static bool getAcsAlarmInParamRequest(protocol::AcsAlarmInParamCfg& output, const std::string& deviceGuid);
    static bool setAcsAlarmInParamRequest(const protocol::AcsAlarmInParamCfg& input, const std::string& deviceGuid);

    /// The lane of a turnstile.
    static bool getAcsChannelControlAbilityRequest(protocol::ChannelControllerAbilityCfg& output,
                                                   const std::string& deviceGuid);
    static bool getAcsChannelControlParamRequest(protocol::AcsChannelControllerParamCfg& output,
                                                 const std::string& deviceGuid);
    static bool setAcsChannelControlParamRequest(const protocol::AcsChannelControllerParamCfg& input,
                                                 const std::string& deviceGuid);

    /// Cards shown by telephones.
    static bool getNFCAbilityRequest(protocol::NFCCfgCap& output, const std::string& deviceGuid);
    static bool getNFCConfigRequest(protocol::NFCCfg& output, const std::string& deviceGuid);
    static bool setNFCConfigRequest(const protocol::NFCCfg& input, const std::string& deviceGuid);

    /// Kinds of radio cards.
    static bool getRFCardAbilityRequest(protocol::RFCardCfgCap& output, const std::string& deviceGuid);
    static bool getRFCardConfigRequest(protocol::RFCardCfgData& output, const std::string& deviceGuid);
    static bool setRFCardConfigRequest(const protocol::RFCardCfgData& input, const std::string& deviceGuid);
};

/// Where and how an intercom device is set up.
class NEXWIRE_API IntercomParamConfig {
public:
    static bool getIntercomDeviceInfo(protocol::IntercomParamConfig& output, const std::string& deviceGuid);
};

/// State of a device on the network.
class NEXWIRE_API AcsDeviceStateConfig {
public:
    static bool getAcsDeviceStateRequest(protocol::DeviceStatusResponse& output, const std::string& deviceGuid);
};

/// State of doors, readers, inputs and outputs now.
class NEXWIRE_API CGetAcsWorkStatus {
public:
    static bool request(protocol::AcsWorkStatus& output, const std::string& deviceGuid);
};

/// What an access-control device can do, on the internal route.
class NEXWIRE_API accessCapabilityComm {
public:
    /// Feature by feature.
    static bool requestTotalCapability(protocol::AccessControl& output, const std::string& deviceGuid);
    /// What is connected and how much fits.
    static bool requestAcsCapability(protocol::CommonAcsAbility& output, const std::string& deviceGuid);
    /// What it accepts about a person.
    static bool requestPersonCapability(protocol::UserInfoCapPer& output, const std::string& deviceGuid);
};

/// The same on the external route.
class NEXWIRE_API accessCapabilityCommExtrnal {
public:
    static bool requestTotalCapability(protocol::AccessControl& output, const std::string& deviceGuid);
    static bool requestAcsCapability(protocol::CommonAcsAbility& output, const std::string& deviceGuid);
    static bool requestPersonCapability(protocol::UserInfoCapPer& output, const std::string& deviceGuid);
};

/// Abilities in a form that is the same for all access-control devices.
class NEXWIRE_API CGetAcsCommonCap {
public:
    static bool request(protocol::CommonAcsAbility& output, const std::string& deviceGuid);
    /// Internal route.
    static bool requestInternal(protocol::CommonAcsAbility& output, const std::string& deviceGuid);
};

/// Abilities in a form that is the same for all intercom devices.
class NEXWIRE_API CGetIntercomCommonCap {
public:
    static bool request(protocol::CommonIntercomAbility& output, const std::string& deviceGuid);
};

/// How a device takes pictures.
class NEXWIRE_API CGetCaptureAbility {
public:
    static bool request(protocol::JpegCaptureAbility& output, const std::string& deviceGuid);
};

/// What the face library of a device takes.
class NEXWIRE_API CGetFDLibCapability {
public:
    static bool request(protocol::FDLibCapabilityData& output, const std::string& deviceGuid);
};

/// Which algorithms a device computes its models with, on the internal route.
class NEXWIRE_API CGetALgorithmInfo {
public:
    static bool request(protocol::ALgorithmsInfoData& output, const std::string& deviceGuid);
};

/// Which faces a device holds.
class NEXWIRE_API GetFaceIdFromDev {
public:
    static bool request(protocol::FDLibReturn& output, const std::string& deviceGuid);
};

/// How many cards a device holds; ByInternalUrl takes the internal route, here and below.
class NEXWIRE_API GetCardNumber {
public:
    static bool requestCardNum(protocol::CardNumberInfo& output, const std::string& deviceGuid);
    static bool requestCardNumByInternalUrl(protocol::CardNumberInfo& output, const std::string& deviceGuid);
};

/// How many persons a device holds.
class NEXWIRE_API GetUserNumber {
public:
    static bool requestUserNum(protocol::UserNumberInfo& output, const std::string& deviceGuid);
    static bool requestUserNumByInternalUrl(protocol::UserNumberInfo& output, const std::string& deviceGuid);
};

/// How many faces a device holds.
class NEXWIRE_API GetFaceNumber {
public:
    static bool requestFaceNum(protocol::FaceNumberInfo& output, const std::string& deviceGuid);
    static bool requestFaceNumByInternalUrl(protocol::FaceNumberInfo& output, const std::string& deviceGuid);
};

/// How many fingerprints a device holds.
class NEXWIRE_API GetFingerPrintNumber {
public:
    static bool requestFingerPrintNum(protocol::FingerPrintNumberInfo& output, const std::string& deviceGuid);
    static bool requestFingerPrintNumByInternalUrl(protocol::FingerPrintNumberInfo& output,
                                                   const std::string& deviceGuid);
};

/// How many irises a device holds.
class NEXWIRE_API GetIrisNumber {
public:
    static bool requestIrisNum(protocol::IrisNumberInfo& output, const std::string& deviceGuid);
    static bool requestIrisNumByInternalUrl(protocol::IrisNumberInfo& output, const std::string& deviceGuid);
};

} // namespace nexwire
