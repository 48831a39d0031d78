#include "protocol/Topology/Topology.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(TopologyParam, "topologyParam", F(beginAddress), F(endAddress), F(snmpVersion), F(snmpPort), F(refreshInterval), F(maxHops), F(loadThreshold), F(showOffline))
NEXWIRE_INBOUND_FIELDS(ResetPercent, "resetPercent", F(isReset))
NEXWIRE_RETURN_FIELDS(Progress, F(percent), F(refreshState), F(nodeNum), F(lineNum), F(beginTime))
NEXWIRE_RETURN_FIELDS(ProgressData, F(progress))
NEXWIRE_INBOUND_FIELDS(RootNode, "rootNode", F(nodeGuid), F(nodeName), F(address))
NEXWIRE_INBOUND_FIELDS(QueryCondition, "queryCondition", F(nodeName), F(address), F(nodeType), F(nodeStatus))
NEXWIRE_RETURN_FIELDS(NodePort, F(portNo), F(portName), F(portStatus), F(speed), F(load), F(poePower), F(peerNodeGuid))
NEXWIRE_RETURN_FIELDS(DeviceNode, F(nodeGuid), F(nodeName), F(parentNodeGuid), F(deviceGuid), F(nodeType), F(nodeStatus), F(address), F(macAddress), F(model), F(hops), F(nodePortList))
NEXWIRE_RETURN_FIELDS(DeviceNodeListData, F(deviceNodeList))
NEXWIRE_RETURN_FIELDS(Line, F(lineGuid), F(beginNodeGuid), F(beginPortNo), F(endNodeGuid), F(endPortNo), F(bandwidth), F(inRate), F(outRate), F(lineStatus))
NEXWIRE_RETURN_FIELDS(LineListData, F(lineList))
NEXWIRE_INBOUND_FIELDS(RefreshCondition, "refreshCondition", F(enable), F(refreshInterval))
NEXWIRE_INBOUND_FIELDS(GatewayNode, "gatewayNode", F(nodeGuid), F(address), F(subnetMask))
NEXWIRE_INBOUND_FIELDS(PortSecurityItem, "portSecurityItem", F(nodeGuid), F(portNo), F(enable), F(maxMacNum), F(macAddressList), F(violationAction))
NEXWIRE_INBOUND_FIELDS(PortSecurity, "portSecurity", F(portSecurityItemList))
NEXWIRE_RETURN_FIELDS(PortSecurityState, F(nodeGuid), F(portNo), F(enable), F(maxMacNum), F(macAddressList), F(violationAction), F(violationNum))
NEXWIRE_RETURN_FIELDS(PortSecurityRsp, F(portSecurityStateList))
NEXWIRE_RETURN_FIELDS(SwitchAlarm, F(alarmGuid), F(nodeGuid), F(portNo), F(alarmType), F(alarmState), F(alarmTime), F(description))
NEXWIRE_RETURN_FIELDS(SwitchAlarmListData, F(switchAlarmList))
// clang-format on

} // namespace protocol
