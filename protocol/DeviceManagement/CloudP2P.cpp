#include "protocol/DeviceManagement/CloudP2P.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(CloudP2PAccountInfo, "cloudP2PAccountInfo", F(account), F(password), F(countryCode), F(serverAddress))
NEXWIRE_RETURN_FIELDS(CloudP2PAccountResult, F(account), F(countryCode), F(serverAddress), F(loginState), F(loginTime), F(deviceNum))
NEXWIRE_RETURN_FIELDS(CloudP2PAccountResultData, F(cloudP2PAccountResult))
NEXWIRE_RETURN_FIELDS(CloudP2PConfig, F(region), F(serverAddress), F(serverPort), F(tls))
NEXWIRE_RETURN_FIELDS(CloudP2PConfigs, F(enable), F(registerUrl), F(forgetPasswordUrl), F(cloudP2PConfigList))
NEXWIRE_RETURN_FIELDS(CertificationStandard, F(standard), F(certified), F(validTime))
NEXWIRE_RETURN_FIELDS(CertificationStandardData, F(certificationStandard))
NEXWIRE_RETURN_FIELDS(CloudP2PCapabilities, F(preview), F(playback), F(talk), F(ptz), F(preset), F(presetNum), F(maxStreamNum))
NEXWIRE_RETURN_FIELDS(CloudP2PCapabilitiesData, F(cloudP2PCapabilities))
// clang-format on

} // namespace protocol
