#include "core/ConfigManager.h"
#include "nexwire/DeviceParameters/AcsParam.h"
#include "support/RequestVectors.h"

namespace {

using namespace nexwire;
using test::kExternal;
using test::kInternal;

TEST(DeviceRequests, Parameters)
{
    test::CheckDeviceCommands({
        // clang-format off
        DEVICE_GET(AcsParamConfig, getAcsHostAbilityRequest, AcsHostCfg, kExternal, 114, "acsHostCfg", "readerProtocol"),
        DEVICE_GET(AcsParamConfig, getAcsHostParamRequest, AcsHostParamCfg, kExternal, 2101, "acsHostParamCfg", "readerProtocol"),
        DEVICE_SET(AcsParamConfig, setAcsHostParamRequest, AcsHostParamCfg, kExternal, 4101, "acsHostParamCfg", "fireLinkageMode"),
        DEVICE_GET(AcsParamConfig, getFaceReModeAbilityRequest, FaceRecognizeModeAbility, kExternal, 116, "faceRecognizeModeAbility", "mode"),
        DEVICE_GET(AcsParamConfig, getFaceReModeParamRequest, FaceRecognizeMode, kExternal, 2215, "faceRecognizeMode", "mode"),
        DEVICE_GET(AcsParamConfig, getFaceReModeParamRequestINTERNAL, FaceRecognizeMode, kInternal, 2215, "faceRecognizeMode", "mode"),
        DEVICE_SET(AcsParamConfig, setFaceReModeParamRequest, FaceRecognizeMode, kExternal, 4136, "faceRecognizeMode", "mode"),
        DEVICE_GET(AcsParamConfig, getFaceCardReaderAbilityRequest, CardReaderNo, kExternal, 123, "cardReaderNo", "cardReaderNoList"),
        DEVICE_GET(AcsParamConfig, getAcsDoorAbilityRequest, DoorCap, kExternal, 103, "doorCap", "openDuration"),
        DEVICE_GET(AcsParamConfig, getCardReaderAbilityRequest, CardReaderCfg, kExternal, 104, "cardReaderCfg", "verifyMode"),
        DEVICE_GET(AcsParamConfig, getCardReaderParamRequest, AcsCardReaderParamCfg, kExternal, 2105, "acsCardReaderParamCfg", "cardReaderParamList"),
        DEVICE_SET(AcsParamConfig, setCardReaderParamRequest, AcsCardReaderParamCfg, kExternal, 4105, "acsCardReaderParamCfg", "swipeInterval"),
        DEVICE_GET(AcsParamConfig, getAcsAlarmOutAbilityRequest, AlarmOutAbilityCfg, kExternal, 107, "alarmOutAbilityCfg", "activeDuration"),
        DEVICE_GET(AcsParamConfig, getAcsAlarmOutParamRequest, AcsAlarmOutParamCfg, kExternal, 2121, "acsAlarmOutParamCfg", "alarmOutParamList"),
        DEVICE_SET(AcsParamConfig, setAcsAlarmOutParamRequest, AcsAlarmOutParamCfg, kExternal, 4121, "acsAlarmOutParamCfg", "alarmInNoList"),
        DEVICE_GET(AcsParamConfig, getAcsAlarmInAbilityRequest, AlarmInAbilityCfg, kExternal, 106, "alarmInAbilityCfg", "zoneType"),
        DEVICE_GET(AcsParamConfig, getAcsAlarmInParamRequest, AcsAlarmInParamCfg, kExternal, 2120, "acsAlarmInParamCfg", "alarmInParamList"),
        DEVICE_SET(AcsParamConfig, setAcsAlarmInParamRequest, AcsAlarmInParamCfg, kExternal, 4120, "acsAlarmInParamCfg", "zoneType"),
        DEVICE_GET(AcsParamConfig, getAcsChannelControlAbilityRequest, ChannelControllerAbilityCfg, kExternal, 243, "channelControllerAbilityCfg", "entranceMode"),
        DEVICE_GET(AcsParamConfig, getAcsChannelControlParamRequest, AcsChannelControllerParamCfg, kExternal, 2208, "acsChannelControllerParamCfg", "entranceMode"),
        DEVICE_SET(AcsParamConfig, setAcsChannelControlParamRequest, AcsChannelControllerParamCfg, kExternal, 4206, "acsChannelControllerParamCfg", "closeDelay"),
        DEVICE_GET(AcsParamConfig, getNFCAbilityRequest, NFCCfgCap, kExternal, 1201, "nFCCfgCap", "enable"),
        DEVICE_GET(AcsParamConfig, getNFCConfigRequest, NFCCfg, kExternal, 2223, "nFCCfg", "enable"),
        DEVICE_SET(AcsParamConfig, setNFCConfigRequest, NFCCfg, kExternal, 4141, "nFCCfg", "applicationId"),
        DEVICE_GET(AcsParamConfig, getRFCardAbilityRequest, RFCardCfgCap, kExternal, 1202, "rFCardCfgCap", "cardType"),
        DEVICE_GET(AcsParamConfig, getRFCardConfigRequest, RFCardCfgData, kExternal, 2224, "rFCardCfgData", "rFCardCfg"),
        DEVICE_SET(AcsParamConfig, setRFCardConfigRequest, RFCardCfgData, kExternal, 4142, "rFCardCfgData", "cardType"),
        // clang-format on
    });
}

TEST(DeviceRequests, Doors)
{
    protocol::AcsDoorParamCfg door;
    door.openDuration = 6;
    const std::string text = protocol::SerializeRequest(door);
    const auto withoutEncryption = [] {
        // There is one exchange each then.
        delete RequestContext::Instance().encryption;
        RequestContext::Instance().encryption = nullptr;
    };
    for (const int doorNo : {1, 0, -1, 2147483647}) {
        const auto get = [=](auto&, auto& output, auto& id) {
            withoutEncryption();
            return AcsParamConfig::getAcsDoorParamRequest(output, id, doorNo);
        };
        const auto set = [=](auto& input, auto&, auto& id) {
            withoutEncryption();
            return AcsParamConfig::setAcsDoorParamRequest(input, id, doorNo);
        };
        const std::string condition = std::to_string(doorNo);
        test::CheckDeviceCommands({
            test::Row<test::None, protocol::AcsDoorParamCfg>("get", kExternal, 2102, "", text, get, condition),
            test::Row<protocol::AcsDoorParamCfg, test::None>("set", kExternal, 4102, text, "", set, condition),
        });
    }
}

TEST(DeviceRequests, AbilitiesStatesAndCounts)
{
    test::CheckDeviceCommands({
        // clang-format off
        DEVICE_GET(accessCapabilityComm, requestTotalCapability, AccessControl, kInternal, 110, "accessControl", "doorNum"),
        DEVICE_GET(accessCapabilityComm, requestAcsCapability, CommonAcsAbility, kInternal, 100, "commonAcsAbility", "doorNo"),
        DEVICE_GET(accessCapabilityComm, requestPersonCapability, UserInfoCapPer, kInternal, 203, "userInfoCapPer", "userType"),
        DEVICE_GET(accessCapabilityCommExtrnal, requestTotalCapability, AccessControl, kExternal, 110, "accessControl", "doorNum"),
        DEVICE_GET(accessCapabilityCommExtrnal, requestAcsCapability, CommonAcsAbility, kExternal, 100, "commonAcsAbility", "doorNo"),
        DEVICE_GET(accessCapabilityCommExtrnal, requestPersonCapability, UserInfoCapPer, kExternal, 203, "userInfoCapPer", "userType"),
        DEVICE_GET(CGetAcsCommonCap, request, CommonAcsAbility, kExternal, 115, "commonAcsAbility", "doorNo"),
        DEVICE_GET(CGetAcsCommonCap, requestInternal, CommonAcsAbility, kInternal, 115, "commonAcsAbility", "doorNo"),
        DEVICE_GET(CGetIntercomCommonCap, request, CommonIntercomAbility, kExternal, 119, "commonIntercomAbility", "unitType"),
        DEVICE_GET(CGetCaptureAbility, request, JpegCaptureAbility, kExternal, 207, "jpegCaptureAbility", "pictureSize"),
        DEVICE_GET(CGetFDLibCapability, request, FDLibCapabilityData, kExternal, 120, "fDLibCapabilityData", "fDLibCapability"),
        DEVICE_GET(CGetALgorithmInfo, request, ALgorithmsInfoData, kInternal, 121, "aLgorithmsInfoData", "aLgorithmsInfo"),
        DEVICE_GET(CGetAcsWorkStatus, request, AcsWorkStatus, kExternal, 2103, "acsWorkStatus", "doorStatusList"),
        DEVICE_GET(AcsDeviceStateConfig, getAcsDeviceStateRequest, DeviceStatusResponse, kExternal, 2137, "deviceStatusResponse", "deviceState"),
        DEVICE_GET(IntercomParamConfig, getIntercomDeviceInfo, IntercomParamConfig, kExternal, 2138, "intercomParamConfig", "roomNumber"),
        DEVICE_GET(GetFaceIdFromDev, request, FDLibReturn, kExternal, 2218, "fDLibReturn", "fdLibList"),
        DEVICE_GET(GetCardNumber, requestCardNum, CardNumberInfo, kExternal, 2141, "cardNumberInfo", "cardNum"),
        DEVICE_GET(GetCardNumber, requestCardNumByInternalUrl, CardNumberInfo, kInternal, 2141, "cardNumberInfo", "cardNum"),
        DEVICE_GET(GetUserNumber, requestUserNum, UserNumberInfo, kExternal, 2142, "userNumberInfo", "userNum"),
        DEVICE_GET(GetUserNumber, requestUserNumByInternalUrl, UserNumberInfo, kInternal, 2142, "userNumberInfo", "userNum"),
        DEVICE_GET(GetFaceNumber, requestFaceNum, FaceNumberInfo, kExternal, 2143, "faceNumberInfo", "faceNum"),
        DEVICE_GET(GetFaceNumber, requestFaceNumByInternalUrl, FaceNumberInfo, kInternal, 2143, "faceNumberInfo", "faceNum"),
        DEVICE_GET(GetFingerPrintNumber, requestFingerPrintNum, FingerPrintNumberInfo, kExternal, 2144, "fingerPrintNumberInfo", "fingerPrintNum"),
        DEVICE_GET(GetFingerPrintNumber, requestFingerPrintNumByInternalUrl, FingerPrintNumberInfo, kInternal, 2144, "fingerPrintNumberInfo", "fingerPrintNum"),
        DEVICE_GET(GetIrisNumber, requestIrisNum, IrisNumberInfo, kExternal, 2147, "irisNumberInfo", "irisNum"),
        DEVICE_GET(GetIrisNumber, requestIrisNumByInternalUrl, IrisNumberInfo, kInternal, 2147, "irisNumberInfo", "irisNum"),
        // clang-format on
    });
}

} // namespace
