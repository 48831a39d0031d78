#include "nexwire/Topology/Topology.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/topologyManagement/topologies/";

} // namespace

bool CTopologyConfigComm::setConfigInfo(const protocol::TopologyParam& param)
{
    return ExchangeUnread(Write(Path(kRoot, "configs"), param));
}

bool CTopologyConfigComm::getConfigInfo(protocol::TopologyParam& result)
{
    return Exchange(Query(Path(kRoot, "configs")), result);
}

bool CTopologyConfigComm::getTopologyRefreshProgress(protocol::ProgressData& result,
                                                     const protocol::ResetPercent& query)
{
    return Exchange(Query(Path(kRoot, "progress"), query), result);
}

bool CTopologyConfigComm::enableAutoRefresh(const protocol::RefreshCondition& condition)
{
    return ExchangeUnread(Write(Path(kRoot, "autoRefresh"), condition));
}

bool CTopologyConfigComm::setTopologyRootNode(protocol::DeviceNodeListData& result, const protocol::RootNode& root)
{
    return Exchange(Write(Path(kRoot, "resetRoot"), root), result);
}

bool CTopologyConfigComm::getTopologyRootNode(protocol::RootNode& result)
{
    return Exchange(Query(Path(kRoot, "resetRoot")), result);
}

bool CTopologyConfigComm::setGatewayNode(const protocol::GatewayNode& gateway)
{
    return ExchangeUnread(Write(Path(kRoot, "gatewayNode"), gateway));
}

bool CTopologyConfigComm::getAllDeviceNodes(protocol::DeviceNodeListData& result,
                                            const protocol::QueryCondition& condition)
{
    return Exchange(Query(Path(kRoot, "deviceNodes"), condition), result);
}

bool CTopologyConfigComm::getOneDeviceNode(protocol::DeviceNode& result, const std::string& nodeGuid)
{
    return Exchange(Query(Path(kRoot, "deviceNodes/", nodeGuid)), result);
}

bool CTopologyConfigComm::getAllLineNodes(protocol::LineListData& result)
{
    return Exchange(Query(Path(kRoot, "lines")), result);
}

bool CTopologyConfigComm::getOneLineNode(protocol::Line& result, const std::string& lineGuid)
{
    return Exchange(Query(Path(kRoot, "lines/", lineGuid)), result);
}

bool CTopologyConfigComm::setPortSecurity(const protocol::PortSecurity& ports)
{
    return ExchangeUnread(Write(Path(kRoot, "portSecurity"), ports));
}

bool CTopologyConfigComm::getPortSecurity(protocol::PortSecurityRsp& result)
{
    return Exchange(Query(Path(kRoot, "portSecurity")), result);
}

bool CTopologyInterComm::getPortAlarmState(protocol::SwitchAlarmListData& result, const std::string& nodeGuid)
{
    return Exchange(Query(Path("/7730/v1/internal/topologyManagement/topologies/", nodeGuid, "/alarms")), result);
}

} // namespace nexwire
