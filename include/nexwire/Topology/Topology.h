#pragma once

#include "protocol/Topology/Topology.h"

// The network as the platform found it: nodes, their ports, links, alarms. All functions block until the answer is
// there and may be called from any thread. Those with a result return true when the answer was a readable envelope,
// whatever its code, and leave the result untouched otherwise; those without one return true when an answer came,
// whatever it says.

namespace nexwire {

/// Looking through the network, and what was found.
class NEXWIRE_API CTopologyConfigComm {
public:
    /// How the network is looked through.
    static bool setConfigInfo(const protocol::TopologyParam& param);
    static bool getConfigInfo(protocol::TopologyParam& result);

    /// How far the running refresh has come, or begins a new one.
    static bool getTopologyRefreshProgress(protocol::ProgressData& result, const protocol::ResetPercent& query);
    static bool enableAutoRefresh(const protocol::RefreshCondition& condition);

    /// The node that the picture begins at. Setting it answers the nodes in their new places.
    static bool setTopologyRootNode(protocol::DeviceNodeListData& result, const protocol::RootNode& root);
    static bool getTopologyRootNode(protocol::RootNode& result);
    static bool setGatewayNode(const protocol::GatewayNode& gateway);

    static bool getAllDeviceNodes(protocol::DeviceNodeListData& result, const protocol::QueryCondition& condition);
    static bool getOneDeviceNode(protocol::DeviceNode& result, const std::string& nodeGuid);
    static bool getAllLineNodes(protocol::LineListData& result);
    static bool getOneLineNode(protocol::Line& result, const std::string& lineGuid);

    /// Who may use which port of a switch.
    static bool setPortSecurity(const protocol::PortSecurity& ports);
    static bool getPortSecurity(protocol::PortSecurityRsp& result);
};

/// The network for components of the platform.
class NEXWIRE_API CTopologyInterComm {
public:
    /// The alarms of a switch's ports.
    static bool getPortAlarmState(protocol::SwitchAlarmListData& result, const std::string& nodeGuid);
};

} // namespace nexwire
