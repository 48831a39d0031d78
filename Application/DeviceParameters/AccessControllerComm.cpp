#include "Application/PassThrough/PassThrough.h"
#include "core/Cipher.h"
#include "core/Log.h"
#include "nexwire/DeviceParameters/AcsParam.h"

namespace nexwire {
namespace {

/// Replaces a door's passwords by what the cipher makes of them; clears them where it cannot.
bool ConvertPasswords(protocol::AcsDoorParamCfg& door, core::CipherStep step)
{
    if (core::Convert({&door.stressPassword, &door.superPassword, &door.unlockPassword}, step)) {
        return true;
    }
    door.stressPassword.clear();
    door.superPassword.clear();
    door.unlockPassword.clear();
    return false;
}

} // namespace

// clang-format off
NEXWIRE_DEVICE_GET(AcsParamConfig, getAcsHostAbilityRequest, AcsHostCfg, External, 114)
NEXWIRE_DEVICE_GET(AcsParamConfig, getAcsHostParamRequest, AcsHostParamCfg, External, 2101)
NEXWIRE_DEVICE_SET(AcsParamConfig, setAcsHostParamRequest, AcsHostParamCfg, External, 4101)

NEXWIRE_DEVICE_GET(AcsParamConfig, getFaceReModeAbilityRequest, FaceRecognizeModeAbility, External, 116)
NEXWIRE_DEVICE_GET(AcsParamConfig, getFaceReModeParamRequest, FaceRecognizeMode, External, 2215)
NEXWIRE_DEVICE_GET(AcsParamConfig, getFaceReModeParamRequestINTERNAL, FaceRecognizeMode, Internal, 2215)
NEXWIRE_DEVICE_SET(AcsParamConfig, setFaceReModeParamRequest, FaceRecognizeMode, External, 4136)
NEXWIRE_DEVICE_GET(AcsParamConfig, getFaceCardReaderAbilityRequest, CardReaderNo, External, 123)

NEXWIRE_DEVICE_GET(AcsParamConfig, getAcsDoorAbilityRequest, DoorCap, External, 103)

NEXWIRE_DEVICE_GET(AcsParamConfig, getCardReaderAbilityRequest, CardReaderCfg, External, 104)
NEXWIRE_DEVICE_GET(AcsParamConfig, getCardReaderParamRequest, AcsCardReaderParamCfg, External, 2105)
NEXWIRE_DEVICE_SET(AcsParamConfig, setCardReaderParamRequest, AcsCardReaderParamCfg, External, 4105)

NEXWIRE_DEVICE_GET(AcsParamConfig, getAcsAlarmOutAbilityRequest, AlarmOutAbilityCfg, External, 107)
NEXWIRE_DEVICE_GET(AcsParamConfig, getAcsAlarmOutParamRequest, AcsAlarmOutParamCfg, External, 2121)
NEXWIRE_DEVICE_SET(AcsParamConfig, setAcsAlarmOutParamRequest, AcsAlarmOutParamCfg, External, 4121)

NEXWIRE_DEVICE_GET(AcsParamConfig, getAcsAlarmInAbilityRequest, AlarmInAbilityCfg, External, 106)
NEXWIRE_DEVICE_GET(AcsParamConfig, getAcsAlarmInParamRequest, AcsAlarmInParamCfg, External, 2120)
NEXWIRE_DEVICE_SET(AcsParamConfig, setAcsAlarmInParamRequest, AcsAlarmInParamCfg, External, 4120)

NEXWIRE_DEVICE_GET(AcsParamConfig, getAcsChannelControlAbilityRequest, ChannelControllerAbilityCfg, External, 243)
NEXWIRE_DEVICE_GET(AcsParamConfig, getAcsChannelControlParamRequest, AcsChannelControllerParamCfg, External, 2208)
NEXWIRE_DEVICE_SET(AcsParamConfig, setAcsChannelControlParamRequest, AcsChannelControllerParamCfg, External, 4206)

NEXWIRE_DEVICE_GET(AcsParamConfig, getNFCAbilityRequest, NFCCfgCap, External, 1201)
NEXWIRE_DEVICE_GET(AcsParamConfig, getNFCConfigRequest, NFCCfg, External, 2223)
NEXWIRE_DEVICE_SET(AcsParamConfig, setNFCConfigRequest, NFCCfg, External, 4141)

NEXWIRE_DEVICE_GET(AcsParamConfig, getRFCardAbilityRequest, RFCardCfgCap, External, 1202)
NEXWIRE_DEVICE_GET(AcsParamConfig, getRFCardConfigRequest, RFCardCfgData, External, 2224)
NEXWIRE_DEVICE_SET(AcsParamConfig, setRFCardConfigRequest, RFCardCfgData, External, 4142)
// clang-format on

bool AcsParamConfig::getAcsDoorParamRequest(protocol::AcsDoorParamCfg& output, const std::string& deviceGuid,
                                            int doorNo)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        protocol::AcsDoorParamCfg door;
        if (!DeviceGet(Route::External, 2102, deviceGuid, door, std::to_string(doorNo))) {
            return false;
        }
        if (!ConvertPasswords(door, &IEncryption::Decrypt)) {
            NEXWIRE_LOG_ERROR_OF(function, "AESDecryption failed!");
        }
        output = std::move(door);
        return true;
    });
}

bool AcsParamConfig::setAcsDoorParamRequest(protocol::AcsDoorParamCfg input, const std::string& deviceGuid, int doorNo)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        if (!ConvertPasswords(input, &IEncryption::Encrypt)) {
            NEXWIRE_LOG_ERROR_OF(function, "AESEncryption failed!");
        }
        return DeviceSet(Route::External, 4102, deviceGuid, input, std::to_string(doorNo));
    });
}

} // namespace nexwire
