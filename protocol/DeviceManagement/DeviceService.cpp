#include "protocol/DeviceManagement/DeviceService.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_RETURN_FIELDS(DeviceStatus, F(onlineState), F(errorCode), F(cpuUsage), F(memoryUsage), F(diskState), F(recordChannelNum), F(armState), F(deviceTime))
NEXWIRE_RETURN_FIELDS(DeviceStatusData, F(deviceStatus))
NEXWIRE_RETURN_FIELDS(OnlineUser, F(username), F(userType), F(address), F(loginTime))
NEXWIRE_RETURN_FIELDS(OnlineUserListData, F(onlineUserList))
NEXWIRE_RETURN_FIELDS(QrCode, F(deviceGuid), F(content), F(qrCode))
NEXWIRE_RETURN_FIELDS(QrCodesRspData, F(qrCodesList))
NEXWIRE_INBOUND_FIELDS(UploadFileToDev, "uploadFileToDev", F(fileType), F(fileName), F(filePath), F(fileSize), F(channelNo))
NEXWIRE_INBOUND_FIELDS(WiperChannel, "wiperChannel", F(deviceGuid), F(channelGuid), F(channelNo))
NEXWIRE_INBOUND_FIELDS(WiperReq, "wiperReq", F(action), F(duration), F(wiperChannelList))
NEXWIRE_RETURN_FIELDS(WiperControlResult, F(deviceGuid), F(channelGuid), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(WiperControlResultListData, F(wiperControlResultList))
NEXWIRE_INBOUND_FIELDS(NetworkParamQuery, "networkParamQuery", F(deviceGuid))
NEXWIRE_RETURN_FIELDS(NetworkParam, F(networkCardNo), F(address), F(macAddress), F(linkSpeed), F(receiveRate), F(sendRate), F(receivedBytes), F(sentBytes))
NEXWIRE_RETURN_FIELDS(NetworkParamData, F(networkParamList))
NEXWIRE_INBOUND_FIELDS(DeviceDownloadReq, "deviceDownloadReq", F(filePath))
NEXWIRE_INBOUND_FIELDS(HttpFromNginxReq, "httpFromNginxReq", F(url))
NEXWIRE_INBOUND_FIELDS(CapabilitiesQueryCondition, "capabilitiesQueryCondition", F(capabilityList), F(channelNo), F(refresh))
NEXWIRE_RETURN_FIELDS(Capability, F(name), F(supported), F(min), F(max), F(optionList))
NEXWIRE_RETURN_FIELDS(CapabilitiesData, F(deviceGuid), F(channelNo), F(capabilitiesList))
NEXWIRE_INBOUND_FIELDS(CertVerificationReq, "certVerificationReq", F(enable), F(allowSelfSigned), F(warnDays))
NEXWIRE_RETURN_FIELDS(CertVerificationResult, F(enable), F(allowSelfSigned), F(warnDays), F(failedDeviceNum))
NEXWIRE_RETURN_FIELDS(CertVerificationResultData, F(certVerificationResult))
NEXWIRE_RETURN_FIELDS(PurePwdVerityEnableDevice, F(deviceGuid), F(enable))
NEXWIRE_RETURN_FIELDS(PurePwdVerityEnableDeviceRspData, F(purePwdVerityEnableDeviceList))
NEXWIRE_INBOUND_FIELDS(DevicePermissionData, "devicePermissionData", F(userGuid), F(clientGuid), F(deviceGuidList), F(permissionList), F(validSeconds))
NEXWIRE_RETURN_FIELDS(DevicePermissionDataReturn, F(permissionToken), F(expireTime), F(operationResultList))
// clang-format on

} // namespace protocol
