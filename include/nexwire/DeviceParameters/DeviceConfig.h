#pragma once

#include "protocol/DeviceParameters/DeviceConfig.h"
#include "protocol/DeviceParameters/DeviceNetwork.h"

namespace nexwire {

/// Configurations of a device and the abilities that bound them. The type of the structure says which is meant: a
/// configuration has a getter and a setter, an ability a getter.
///
/// All functions block until the device has answered through the platform and may be called from any thread.
/// Getters return true when the device's answer held the structure; `output` is untouched otherwise. Setters return
/// true when the envelope parsed, whatever the device made of the order.
///
/// `condition` reaches the device as it is. It says which of several things is meant, as the decimal text of its
/// number where a line below names one, and is empty otherwise, as a rule for abilities too.
class NEXWIRE_API cfginterface {
public:
    /// Network cards; condition empty.
    static bool getConfigRequest(protocol::MultiNetworkCardParameters& output, const std::string& deviceGuid,
                                 const std::string& condition);
    static bool setConfigRequest(const std::string& deviceGuid, const protocol::MultiNetworkCardParameters& input);
    static bool getConfigRequest(protocol::MultiNetworkCardParametersAbility& output, const std::string& deviceGuid,
                                 const std::string& condition);

    /// Pictures at events; condition: number of the camera.
    static bool getConfigRequest(protocol::SnapConfig& output, const std::string& deviceGuid,
                                 const std::string& condition);
    static bool setConfigRequest(const std::string& deviceGuid, const protocol::SnapConfig& input);
    static bool getConfigRequest(protocol::SnapConfigAbility& output, const std::string& deviceGuid,
                                 const std::string& condition);

    /// Checks on cards; condition empty.
    static bool getConfigRequest(protocol::M1CardEncryptCfg& output, const std::string& deviceGuid,
                                 const std::string& condition);
    static bool setConfigRequest(const std::string& deviceGuid, const protocol::M1CardEncryptCfg& input);
    static bool getConfigRequest(protocol::M1CardParametersAbility& output, const std::string& deviceGuid,
                                 const std::string& condition);

    /// RS-485; condition: number of the port.
    static bool getConfigRequest(protocol::RS485Parameters& output, const std::string& deviceGuid,
                                 const std::string& condition);
    static bool setConfigRequest(const std::string& deviceGuid, const protocol::RS485Parameters& input);
    static bool getConfigRequest(protocol::RS485ParametersAbility& output, const std::string& deviceGuid,
                                 const std::string& condition);

    /// Attached modules; condition empty. Devices have no ability document for them.
    static bool getConfigRequest(protocol::AcsExternelParameters& output, const std::string& deviceGuid,
                                 const std::string& condition);
    static bool setConfigRequest(const std::string& deviceGuid, const protocol::AcsExternelParameters& input);

    /// Comparison of persons at a terminal; condition empty.
    static bool getConfigRequest(protocol::IdentityTerminal& output, const std::string& deviceGuid,
                                 const std::string& condition);
    static bool setConfigRequest(const std::string& deviceGuid, const protocol::IdentityTerminal& input);
    static bool getConfigRequest(protocol::IdentityTerminalAbility& output, const std::string& deviceGuid,
                                 const std::string& condition);

    /// Wiegand; condition: number of the port.
    static bool getConfigRequest(protocol::WigginParameters& output, const std::string& deviceGuid,
                                 const std::string& condition);
    static bool setConfigRequest(const std::string& deviceGuid, const protocol::WigginParameters& input);
    static bool getConfigRequest(protocol::WigginParametersAbility& output, const std::string& deviceGuid,
                                 const std::string& condition);

    /// What centre groups are told; condition: number of the group.
    static bool getConfigRequest(protocol::ReportTypeParameters& output, const std::string& deviceGuid,
                                 const std::string& condition);
    static bool setConfigRequest(const std::string& deviceGuid, const protocol::ReportTypeParameters& input);
    static bool getConfigRequest(protocol::ReportCenterCfgAbility& output, const std::string& deviceGuid,
                                 const std::string& condition);

    /// Centres by network; condition: number of the centre.
    static bool getConfigRequest(protocol::NetworkCenterParameters& output, const std::string& deviceGuid,
                                 const std::string& condition);
    static bool setConfigRequest(const std::string& deviceGuid, const protocol::NetworkCenterParameters& input);
    static bool getConfigRequest(protocol::NetCfgAbility& output, const std::string& deviceGuid,
                                 const std::string& condition);

    /// Centres by mobile network; condition: number of the centre.
    static bool getConfigRequest(protocol::WirelessCenterParameters& output, const std::string& deviceGuid,
                                 const std::string& condition);
    static bool setConfigRequest(const std::string& deviceGuid, const protocol::WirelessCenterParameters& input);
    static bool getConfigRequest(protocol::WirelessNetWorkCfgAbility& output, const std::string& deviceGuid,
                                 const std::string& condition);

    /// When attendance states are offered; condition: the state, for example "checkIn".
    static bool getConfigRequest(protocol::AttendanceStatusRuleCfg& output, const std::string& deviceGuid,
                                 const std::string& condition);
    static bool setConfigRequest(const std::string& deviceGuid, const protocol::AttendanceStatusRuleCfg& input);
    static bool getConfigRequest(protocol::AttendanceStatusRuleCfgAbility& output, const std::string& deviceGuid,
                                 const std::string& condition);

    /// How a passage gets its attendance state; condition empty.
    static bool getConfigRequest(protocol::AttendanceStatusModeCfg& output, const std::string& deviceGuid,
                                 const std::string& condition);
    static bool setConfigRequest(const std::string& deviceGuid, const protocol::AttendanceStatusModeCfg& input);
    static bool getConfigRequest(protocol::AttendanceStatusModeCfgAbility& output, const std::string& deviceGuid,
                                 const std::string& condition);

    /// What the device can do in a network.
    static bool getNetworkCapRequest(protocol::NetworkCap& output, const std::string& deviceGuid);

    /// Registration of the device with a platform that it calls by itself.
    static bool getCorvidCapRequest(protocol::CorvidAbility& output, const std::string& deviceGuid);
    static bool getCorvidRequest(protocol::CorvidParam& output, const std::string& deviceGuid);
    static bool setCorvidRequest(const std::string& deviceGuid, const protocol::CorvidParam& input);
};

} // namespace nexwire
