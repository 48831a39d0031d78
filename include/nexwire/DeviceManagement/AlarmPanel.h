#pragma once

#include "protocol/DeviceManagement/AlarmPanel.h"

// Alarm panels, guard states and intercom. All functions block until the answer is there and may be called from any
// thread. They return true when the answer was a readable envelope, whatever its code; a result is untouched on false.

namespace nexwire {

/// Arms and disarms partitions.
class NEXWIRE_API CPartitionControlComm {
public:
    /// One result per partition.
    static bool request(protocol::PartitionControlRspData& result, const protocol::PartitionControl& control,
                        const std::string& deviceGuid);
};

/// How the partitions of a panel are.
class NEXWIRE_API CGetPartitionStatusComm {
public:
    static bool request(protocol::PartitionStatusRspData& result, const std::string& deviceGuid);
};

/// One partition.
class NEXWIRE_API CGetPartitionInfoComm {
public:
    static bool request(protocol::PartitionInfoData& result, const std::string& deviceGuid,
                        const std::string& partitionGuid);
};

/// Zones of a partition as the platform knows them.
class NEXWIRE_API CGetZoneOfPartitionComm {
public:
    static bool request(protocol::PartitionZoneInfoData& result, const std::string& deviceGuid,
                        const std::string& partitionGuid);
};

/// Zones of a partition as the panel has them now.
class NEXWIRE_API CFreshZoneOfPartitionComm {
public:
    static bool request(protocol::PartitionZoneInfoData& result, const std::string& deviceGuid,
                        const std::string& partitionGuid);
};

/// One zone.
class NEXWIRE_API CGetZoneInfoComm {
public:
    static bool request(protocol::ZoneInfoData& result, const std::string& deviceGuid, const std::string& zoneGuid);
};

/// A zone by its number, together with its device, over the route of the platform's own components.
class NEXWIRE_API CGetZoneByNoComm {
public:
    /// @param refresh  ask the panel again instead of answering from memory.
    static bool request(protocol::ZoneAndDeviceInfoRspData& result, const std::string& deviceGuid, unsigned int zoneNo,
                        bool refresh);
};

/// Arms, disarms and bypasses zones.
class NEXWIRE_API CZoneControlComm {
public:
    /// One result per zone.
    static bool request(protocol::ZoneControlRspData& result, const protocol::ZoneControl& control,
                        const std::string& deviceGuid);
};

/// How the zones of a panel are.
class NEXWIRE_API CGetZoneStatusComm {
public:
    static bool request(protocol::ZoneStatusRspData& result, const std::string& deviceGuid);
};

/// The channel that shows a zone. (The path spells "channalstatus" so.)
class NEXWIRE_API CGetChannelStatusByZoneNo {
public:
    /// @param unusedRefresh  plays no part in the request.
    static bool request(protocol::RelativeChannel& result, const std::string& deviceGuid, unsigned int zoneNo,
                        bool unusedRefresh);
};

/// Opens and closes relays.
class NEXWIRE_API CRelayControlComm {
public:
    /// One result per relay.
    static bool request(protocol::RelayControlRspData& result, const protocol::RelayControl& control,
                        const std::string& deviceGuid);
};

/// How the relays of a device are.
class NEXWIRE_API CGetRelayStatusComm {
public:
    static bool request(protocol::RelayStatusRspData& result, const std::string& deviceGuid);
};

/// Which devices report alarms.
class NEXWIRE_API CGetDeviceGuards {
public:
    static bool request(protocol::DeviceGuardStateListData& result);
};

/// Switches the reports of devices on or off.
class NEXWIRE_API CModifyDeviceGuards {
public:
    /// One result per device.
    static bool request(protocol::GuardResultListData& result, const protocol::DeviceGuard& guard);
};

/// Which intercom devices report alarms.
class NEXWIRE_API CGetIntercomGuards {
public:
    static bool request(protocol::DeviceGuardStateListData& result);
};

/// Switches the reports of intercom devices on or off.
class NEXWIRE_API CModifyIntercomGuards {
public:
    /// One result per device.
    static bool request(protocol::GuardResultListData& result, const protocol::DeviceGuard& guard);
};

/// Has an intercom device call, answer, hang up or open.
class NEXWIRE_API CIntercomControlComm {
public:
    static bool request(const protocol::IntercomControl& control, const std::string& deviceGuid);
};

} // namespace nexwire
