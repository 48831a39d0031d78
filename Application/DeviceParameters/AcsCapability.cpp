#include "Application/PassThrough/PassThrough.h"
#include "nexwire/DeviceParameters/AcsParam.h"

namespace nexwire {

// clang-format off
NEXWIRE_DEVICE_GET(accessCapabilityComm, requestTotalCapability, AccessControl, Internal, 110)
NEXWIRE_DEVICE_GET(accessCapabilityComm, requestAcsCapability, CommonAcsAbility, Internal, 100)
NEXWIRE_DEVICE_GET(accessCapabilityComm, requestPersonCapability, UserInfoCapPer, Internal, 203)
NEXWIRE_DEVICE_GET(accessCapabilityCommExtrnal, requestTotalCapability, AccessControl, External, 110)
NEXWIRE_DEVICE_GET(accessCapabilityCommExtrnal, requestAcsCapability, CommonAcsAbility, External, 100)
NEXWIRE_DEVICE_GET(accessCapabilityCommExtrnal, requestPersonCapability, UserInfoCapPer, External, 203)

NEXWIRE_DEVICE_GET(CGetAcsCommonCap, request, CommonAcsAbility, External, 115)
NEXWIRE_DEVICE_GET(CGetAcsCommonCap, requestInternal, CommonAcsAbility, Internal, 115)
NEXWIRE_DEVICE_GET(CGetIntercomCommonCap, request, CommonIntercomAbility, External, 119)
NEXWIRE_DEVICE_GET(CGetCaptureAbility, request, JpegCaptureAbility, External, 207)
NEXWIRE_DEVICE_GET(CGetFDLibCapability, request, FDLibCapabilityData, External, 120)
NEXWIRE_DEVICE_GET(CGetALgorithmInfo, request, ALgorithmsInfoData, Internal, 121)

NEXWIRE_DEVICE_GET(CGetAcsWorkStatus, request, AcsWorkStatus, External, 2103)
NEXWIRE_DEVICE_GET(AcsDeviceStateConfig, getAcsDeviceStateRequest, DeviceStatusResponse, External, 2137)
NEXWIRE_DEVICE_GET(IntercomParamConfig, getIntercomDeviceInfo, IntercomParamConfig, External, 2138)
NEXWIRE_DEVICE_GET(GetFaceIdFromDev, request, FDLibReturn, External, 2218)

NEXWIRE_DEVICE_GET(GetCardNumber, requestCardNum, CardNumberInfo, External, 2141)
NEXWIRE_DEVICE_GET(GetCardNumber, requestCardNumByInternalUrl, CardNumberInfo, Internal, 2141)
NEXWIRE_DEVICE_GET(GetUserNumber, requestUserNum, UserNumberInfo, External, 2142)
NEXWIRE_DEVICE_GET(GetUserNumber, requestUserNumByInternalUrl, UserNumberInfo, Internal, 2142)
NEXWIRE_DEVICE_GET(GetFaceNumber, requestFaceNum, FaceNumberInfo, External, 2143)
NEXWIRE_DEVICE_GET(GetFaceNumber, requestFaceNumByInternalUrl, FaceNumberInfo, Internal, 2143)
NEXWIRE_DEVICE_GET(GetFingerPrintNumber, requestFingerPrintNum, FingerPrintNumberInfo, External, 2144)
NEXWIRE_DEVICE_GET(GetFingerPrintNumber, requestFingerPrintNumByInternalUrl, FingerPrintNumberInfo, Internal, 2144)
NEXWIRE_DEVICE_GET(GetIrisNumber, requestIrisNum, IrisNumberInfo, External, 2147)
NEXWIRE_DEVICE_GET(GetIrisNumber, requestIrisNumByInternalUrl, IrisNumberInfo, Internal, 2147)
// clang-format on

} // namespace nexwire
