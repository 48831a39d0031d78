#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// How the network is looked through.
struct NEXWIRE_API TopologyParam : IInboundData {
    std::string beginAddress;          ///< First IPv4 address to look at; empty: the server's own network.
    std::string endAddress;            ///< Last one, included.
    std::int32_t snmpVersion = 2;      ///< One of: 1 SNMPv1, 2 SNMPv2c, 3 SNMPv3.
    std::int32_t snmpPort = 161;       ///< 1 to 65535.
    std::int32_t refreshInterval = 60; ///< Between two refreshes. 5 to 1440 min.
    std::int32_t maxHops = 8;          ///< From the root. 1 to 64.
    std::int32_t loadThreshold = 80;   ///< Load of a link from which it alarms. 1 to 100 %.
    bool showOffline = true;           ///< Nodes that do not answer stay in the picture.
    NEXWIRE_JSON
};

/// Which refresh is asked about.
struct NEXWIRE_API ResetPercent : IInboundData {
    bool isReset = false; ///< Begins a new one.
    NEXWIRE_JSON
};

/// How far the refresh has come.
struct NEXWIRE_API Progress : IReturnData {
    std::int32_t percent = 0;      ///< 0 to 100 %.
    std::int32_t refreshState = 0; ///< One of: 0 none, 1 running, 2 done, 3 failed.
    std::int32_t nodeNum = 0;      ///< Nodes found so far.
    std::int32_t lineNum = 0;      ///< Links found so far.
    std::string beginTime;         ///< "2026-03-01T08:00:00+00:00".
    NEXWIRE_JSON
};

struct NEXWIRE_API ProgressData : IReturnData {
    Progress progress;
    NEXWIRE_JSON
};

/// The node that the picture begins at.
struct NEXWIRE_API RootNode : IInboundData {
    std::string nodeGuid; ///< Required.
    std::string nodeName;
    std::string address; ///< IPv4 address.
    NEXWIRE_JSON
};

/// Nodes asked for; what is empty or 0 does not narrow.
struct NEXWIRE_API QueryCondition : IInboundData {
    std::string nodeName; ///< Part of the name.
    std::string address;  ///< IPv4 address.
    std::int32_t nodeType =
        0; ///< One of: 0 any, 1 server, 2 switch, 3 recorder, 4 camera, 5 access controller, 6 gateway, 7 other.
    std::int32_t nodeStatus = 0; ///< One of: 0 any, 1 online, 2 offline.
    NEXWIRE_JSON
};

/// A port of a node.
struct NEXWIRE_API NodePort : IReturnData {
    std::int32_t portNo = 0; ///< From 1.
    std::string portName;
    std::int32_t portStatus = 0; ///< One of: 0 down, 1 up, 2 blocked.
    std::int32_t speed = 0;      ///< Of the link, Mbit/s.
    std::int32_t load = 0;       ///< 0 to 100 %.
    double poePower = 0;         ///< What it feeds, W.
    std::string peerNodeGuid;    ///< Node at the other end; empty: none known.
    NEXWIRE_JSON
};

/// A device of the network.
struct NEXWIRE_API DeviceNode : IReturnData {
    std::string nodeGuid;
    std::string nodeName;
    std::string parentNodeGuid; ///< Nearer to the root; of the root empty.
    std::string deviceGuid;     ///< When the platform manages it, otherwise empty.
    std::int32_t nodeType =
        0; ///< One of: 0 unknown, 1 server, 2 switch, 3 recorder, 4 camera, 5 access controller, 6 gateway, 7 other.
    std::int32_t nodeStatus = 0; ///< One of: 0 unknown, 1 online, 2 offline.
    std::string address;         ///< IPv4 address.
    std::string macAddress;      ///< "00:11:22:33:44:55".
    std::string model;
    std::int32_t hops = 0; ///< From the root.
    std::vector<NodePort> nodePortList;
    NEXWIRE_JSON
};

struct NEXWIRE_API DeviceNodeListData : IReturnData {
    std::vector<DeviceNode> deviceNodeList;
    NEXWIRE_JSON
};

/// A link between two nodes.
struct NEXWIRE_API Line : IReturnData {
    std::string lineGuid;
    std::string beginNodeGuid;
    std::int32_t beginPortNo = 0; ///< From 1.
    std::string endNodeGuid;
    std::int32_t endPortNo = 0;  ///< From 1.
    std::int32_t bandwidth = 0;  ///< Mbit/s.
    std::int64_t inRate = 0;     ///< Towards the beginning, bit/s.
    std::int64_t outRate = 0;    ///< Towards the end, bit/s.
    std::int32_t lineStatus = 0; ///< One of: 0 unknown, 1 up, 2 down, 3 overloaded.
    NEXWIRE_JSON
};

struct NEXWIRE_API LineListData : IReturnData {
    std::vector<Line> lineList;
    NEXWIRE_JSON
};

/// Whether the picture is refreshed by itself.
struct NEXWIRE_API RefreshCondition : IInboundData {
    bool enable = true;
    std::int32_t refreshInterval = 60; ///< 5 to 1440 min.
    NEXWIRE_JSON
};

/// The way out of the network.
struct NEXWIRE_API GatewayNode : IInboundData {
    std::string nodeGuid; ///< Empty: known by the address.
    std::string address;  ///< IPv4 address.
    std::string subnetMask;
    NEXWIRE_JSON
};

/// Who may use a port of a switch.
struct NEXWIRE_API PortSecurityItem : IInboundData {
    std::string nodeGuid;    ///< The switch. Required.
    std::int32_t portNo = 1; ///< From 1.
    bool enable = true;
    std::int32_t maxMacNum = 1;              ///< Devices that may be behind it. 1 to 1024.
    std::vector<std::string> macAddressList; ///< Who they are; empty: the first that come.
    std::int32_t violationAction = 0;        ///< One of: 0 drop silently, 1 drop and alarm, 2 shut the port.
    NEXWIRE_JSON
};

/// Ports to guard.
struct NEXWIRE_API PortSecurity : IInboundData {
    std::vector<PortSecurityItem> portSecurityItemList; ///< Required.
    NEXWIRE_JSON
};

/// A guarded port and its state.
struct NEXWIRE_API PortSecurityState : IReturnData {
    std::string nodeGuid;
    std::int32_t portNo = 0; ///< From 1.
    bool enable = false;
    std::int32_t maxMacNum = 0;
    std::vector<std::string> macAddressList;
    std::int32_t violationAction = 0; ///< One of: 0 drop silently, 1 drop and alarm, 2 shut the port.
    std::int32_t violationNum = 0;    ///< Strangers seen since it is guarded.
    NEXWIRE_JSON
};

struct NEXWIRE_API PortSecurityRsp : IReturnData {
    std::vector<PortSecurityState> portSecurityStateList;
    NEXWIRE_JSON
};

/// An alarm of a switch's port.
struct NEXWIRE_API SwitchAlarm : IReturnData {
    std::string alarmGuid;
    std::string nodeGuid;    ///< The switch.
    std::int32_t portNo = 0; ///< From 1.
    std::int32_t alarmType =
        0; ///< One of: 1 link lost, 2 overload, 3 stranger at a guarded port, 4 power fed too high.
    std::int32_t alarmState = 0; ///< One of: 0 over, 1 standing.
    std::string alarmTime;       ///< "2026-03-01T08:00:00+00:00".
    std::string description;
    NEXWIRE_JSON
};

struct NEXWIRE_API SwitchAlarmListData : IReturnData {
    std::vector<SwitchAlarm> switchAlarmList;
    NEXWIRE_JSON
};

} // namespace protocol
