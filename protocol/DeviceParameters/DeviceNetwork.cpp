#include "protocol/DeviceParameters/DeviceNetwork.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(NetworkCardParameters, "networkCardParameters", F(networkCardNo), F(dhcp), F(ipv4Address), F(ipv4SubnetMask), F(ipv4Gateway), F(ipv6Mode), F(ipv6Address), F(ipv6PrefixLength), F(ipv6Gateway), F(dnsAuto), F(primaryDns), F(secondaryDns), F(macAddress), F(mtu), F(speedDuplex))
NEXWIRE_INBOUND_FIELDS(MultiNetworkCardParameters, "multiNetworkCardParameters", F(workMode), F(defaultNetworkCardNo), F(networkCardList))
NEXWIRE_INBOUND_FIELDS(MultiNetworkCardParametersAbility, "multiNetworkCardParametersAbility", F(workMode), F(networkCardNo), F(dhcp), F(ipv6Mode), F(dnsAuto), F(macAddress), F(mtu), F(speedDuplex))
NEXWIRE_INBOUND_FIELDS(NetworkCap, "networkCap", F(networkCardNum), F(wireless), F(mobileNetwork), F(ipv6), F(dhcp), F(pppoe), F(ddns), F(ntp), F(https), F(netCenter), F(wirelessCenter), F(corvid), F(devicePort), F(httpPort), F(httpsPort))
NEXWIRE_INBOUND_FIELDS(ReportTypeParameters, "reportTypeParameters", F(centerGroupNo), F(enable), F(reportType), F(mainChannel), F(backupChannelList), F(testReport), F(testReportInterval), F(offlineBuffer))
NEXWIRE_INBOUND_FIELDS(ReportCenterCfgAbility, "reportCenterCfgAbility", F(centerGroupNo), F(reportType), F(mainChannel), F(backupChannelList), F(testReport), F(testReportInterval), F(offlineBuffer))
NEXWIRE_INBOUND_FIELDS(NetworkCenterParameters, "networkCenterParameters", F(centerNo), F(enable), F(centerName), F(addressType), F(address), F(port), F(transport), F(reportProtocol), F(deviceAccount), F(password), F(encrypt), F(heartbeatInterval), F(retryTimes), F(retryInterval))
NEXWIRE_INBOUND_FIELDS(NetCfgAbility, "netCfgAbility", F(centerNo), F(centerName), F(addressType), F(address), F(port), F(transport), F(reportProtocol), F(deviceAccount), F(password), F(encrypt), F(heartbeatInterval), F(retryTimes), F(retryInterval))
NEXWIRE_INBOUND_FIELDS(WirelessCenterParameters, "wirelessCenterParameters", F(centerNo), F(enable), F(networkType), F(apn), F(apnUserName), F(apnPassword), F(apnAuthType), F(pinCode), F(addressType), F(address), F(port), F(transport), F(deviceAccount), F(heartbeatInterval), F(monthlyTraffic))
NEXWIRE_INBOUND_FIELDS(WirelessNetWorkCfgAbility, "wirelessNetWorkCfgAbility", F(centerNo), F(networkType), F(apn), F(apnUserName), F(apnPassword), F(apnAuthType), F(pinCode), F(addressType), F(address), F(port), F(transport), F(deviceAccount), F(heartbeatInterval), F(monthlyTraffic))
NEXWIRE_INBOUND_FIELDS(CorvidParam, "corvidParam", F(enable), F(protocolVersion), F(addressType), F(address), F(port), F(deviceID), F(corvidKey), F(networkType), F(tls), F(heartbeatInterval), F(registerStatus))
NEXWIRE_INBOUND_FIELDS(CorvidAbility, "corvidAbility", F(enable), F(protocolVersion), F(addressType), F(address), F(port), F(deviceID), F(corvidKey), F(networkType), F(tls), F(heartbeatInterval))
NEXWIRE_INBOUND_FIELDS(RS485Parameters, "rS485Parameters", F(portNo), F(portName), F(baudRate), F(dataBits), F(stopBits), F(parity), F(flowControl), F(duplex), F(workMode), F(deviceAddress), F(outputType))
NEXWIRE_INBOUND_FIELDS(RS485ParametersAbility, "rS485ParametersAbility", F(portNo), F(portName), F(baudRate), F(dataBits), F(stopBits), F(parity), F(flowControl), F(duplex), F(workMode), F(deviceAddress), F(outputType))
NEXWIRE_INBOUND_FIELDS(WigginParameters, "wigginParameters", F(wigginNo), F(enable), F(direction), F(wigginMode), F(dataType), F(cardNoByteOrder), F(pulseWidth), F(pulseInterval), F(frameTimeout), F(sendFailedAuth))
NEXWIRE_INBOUND_FIELDS(WigginParametersAbility, "wigginParametersAbility", F(wigginNo), F(enable), F(direction), F(wigginMode), F(dataType), F(cardNoByteOrder), F(pulseWidth), F(pulseInterval), F(frameTimeout), F(sendFailedAuth))
// clang-format on

} // namespace protocol
