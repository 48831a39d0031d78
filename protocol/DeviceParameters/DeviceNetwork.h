#pragma once

#include "protocol/DeviceCommon.h"

// What connects a device: network cards, the centres it reports to by network and by mobile network, RS-485 and
// Wiegand ports. Habits of these structures: see DeviceCommon.h; besides, an ability gives numbers that a device
// takes from a short list as that list.

namespace protocol {

// ---- Network cards ----

/// Settings of one network card. Addresses are texts in their usual notation, empty when there is none.
struct NEXWIRE_API NetworkCardParameters : IInboundData {
    std::int32_t networkCardNo = 0; ///< From 1.
    bool dhcp = false;              ///< The IPv4 members below are given by the network.
    std::string ipv4Address;
    std::string ipv4SubnetMask;
    std::string ipv4Gateway;
    std::string ipv6Mode; ///< One of: "disable", "manual", "dhcp", "routeAdvertisement".
    std::string ipv6Address;
    std::int32_t ipv6PrefixLength = 0; ///< Bits, 0 to 128.
    std::string ipv6Gateway;
    bool dnsAuto = false; ///< The two servers below are given by the network.
    std::string primaryDns;
    std::string secondaryDns;
    std::string macAddress;  ///< "00:11:22:aa:bb:cc"; read only on most devices.
    std::int32_t mtu = 1500; ///< Bytes.
    std::string speedDuplex; ///< One of: "auto", "10MHalf", "10MFull", "100MHalf", "100MFull", "1000MFull".
    NEXWIRE_JSON
};

/// Network cards of a device: all of them in an answer; those to change, whole, in an order.
struct NEXWIRE_API MultiNetworkCardParameters : IInboundData {
    std::string workMode;                  ///< Cards together. One of: "independent", "loadBalance", "faultTolerance".
    std::int32_t defaultNetworkCardNo = 1; ///< Card with the default route.
    std::vector<NetworkCardParameters> networkCardList;
    NEXWIRE_JSON
};

/// What `MultiNetworkCardParameters` and its cards may hold on a device.
struct NEXWIRE_API MultiNetworkCardParametersAbility : IInboundData {
    OptionList workMode;
    IntRange networkCardNo;
    bool dhcp = false;
    OptionList ipv6Mode;
    bool dnsAuto = false;
    bool macAddress = false; ///< Can be set.
    IntRange mtu;            ///< Bytes.
    OptionList speedDuplex;
    NEXWIRE_JSON
};

/// What a device can do in a network.
struct NEXWIRE_API NetworkCap : IInboundData {
    std::int32_t networkCardNum = 0; ///< Wired network cards.
    bool wireless = false;           ///< Wireless network card.
    bool mobileNetwork = false;      ///< Cellular modem.
    bool ipv6 = false;
    bool dhcp = false;
    bool pppoe = false;
    bool ddns = false;
    bool ntp = false;
    bool https = false;
    bool netCenter = false;      ///< Reports by network: `NetworkCenterParameters`.
    bool wirelessCenter = false; ///< Reports by mobile network: `WirelessCenterParameters`.
    bool corvid = false;         ///< Registers itself with a platform: `CorvidParam`.
    IntRange devicePort;         ///< Port of the device's own service.
    IntRange httpPort;
    IntRange httpsPort;
    NEXWIRE_JSON
};

// ---- Centres that a device reports to ----

/// What one centre group is told, and how.
struct NEXWIRE_API ReportTypeParameters : IInboundData {
    std::int32_t centerGroupNo = 0; ///< From 1.
    bool enable = false;
    std::string reportType;                     ///< One of: "all", "alarm", "event", "none".
    std::string mainChannel;                    ///< One of: "network1", "network2", "mobile1", "mobile2", "none".
    std::vector<std::string> backupChannelList; ///< Tried in this order when the main channel fails.
    bool testReport = false;                    ///< Report regularly that the device is alive.
    std::int32_t testReportInterval = 0;        ///< Hours between two such reports.
    bool offlineBuffer = false;                 ///< Keep reports while no channel works and send them later.
    NEXWIRE_JSON
};

/// What `ReportTypeParameters` may hold on a device.
struct NEXWIRE_API ReportCenterCfgAbility : IInboundData {
    IntRange centerGroupNo;
    OptionList reportType;
    OptionList mainChannel;
    OptionList backupChannelList;
    bool testReport = false;
    IntRange testReportInterval; ///< Hours.
    bool offlineBuffer = false;
    NEXWIRE_JSON
};

/// A centre that is reached by network.
struct NEXWIRE_API NetworkCenterParameters : IInboundData {
    std::int32_t centerNo = 0; ///< From 1; channel "network1" is centre 1.
    bool enable = false;
    std::string centerName;
    std::string addressType;            ///< One of: "ipv4", "ipv6", "domain".
    std::string address;                ///< IP address or host name.
    std::int32_t port = 0;              ///< 1 to 65535.
    std::string transport;              ///< One of: "tcp", "udp".
    std::string reportProtocol;         ///< As the ability lists them.
    std::string deviceAccount;          ///< Name the centre knows the device by.
    std::string password;               ///< Plain text; empty when the centre asks for none.
    bool encrypt = false;               ///< Reports travel encrypted.
    std::int32_t heartbeatInterval = 0; ///< 0 to 255 s.
    std::int32_t retryTimes = 0;        ///< Attempts before the next channel is tried.
    std::int32_t retryInterval = 0;     ///< Between two attempts. 0 to 255 s.
    NEXWIRE_JSON
};

/// What `NetworkCenterParameters` may hold on a device.
struct NEXWIRE_API NetCfgAbility : IInboundData {
    IntRange centerNo;
    IntRange centerName; ///< Length.
    OptionList addressType;
    IntRange address; ///< Length of a host name.
    IntRange port;
    OptionList transport;
    OptionList reportProtocol;
    IntRange deviceAccount; ///< Length.
    IntRange password;      ///< Length.
    bool encrypt = false;
    IntRange heartbeatInterval; ///< Seconds.
    IntRange retryTimes;
    IntRange retryInterval; ///< Seconds.
    NEXWIRE_JSON
};

/// A centre that is reached by mobile network.
struct NEXWIRE_API WirelessCenterParameters : IInboundData {
    std::int32_t centerNo = 0; ///< From 1; channel "mobile1" is centre 1.
    bool enable = false;
    std::string networkType; ///< One of: "auto", "2G", "3G", "4G", "5G".
    std::string apn;         ///< Access point of the mobile network.
    std::string apnUserName;
    std::string apnPassword;            ///< Plain text.
    std::string apnAuthType;            ///< One of: "none", "pap", "chap", "auto".
    std::string pinCode;                ///< Of the SIM card: 4 to 8 digits, empty: none.
    std::string addressType;            ///< One of: "ipv4", "ipv6", "domain".
    std::string address;                ///< IP address or host name.
    std::int32_t port = 0;              ///< 1 to 65535.
    std::string transport;              ///< One of: "tcp", "udp".
    std::string deviceAccount;          ///< Name the centre knows the device by.
    std::int32_t heartbeatInterval = 0; ///< 0 to 255 s.
    std::int32_t monthlyTraffic = 0;    ///< Stop at this volume, megabytes a month; 0: no limit.
    NEXWIRE_JSON
};

/// What `WirelessCenterParameters` may hold on a device.
struct NEXWIRE_API WirelessNetWorkCfgAbility : IInboundData {
    IntRange centerNo;
    OptionList networkType;
    IntRange apn;         ///< Length.
    IntRange apnUserName; ///< Length.
    IntRange apnPassword; ///< Length.
    OptionList apnAuthType;
    IntRange pinCode; ///< Length.
    OptionList addressType;
    IntRange address; ///< Length of a host name.
    IntRange port;
    OptionList transport;
    IntRange deviceAccount;     ///< Length.
    IntRange heartbeatInterval; ///< Seconds.
    IntRange monthlyTraffic;    ///< Megabytes.
    NEXWIRE_JSON
};

/// Registration of a device with a platform that it calls by itself, for devices behind address translation.
struct NEXWIRE_API CorvidParam : IInboundData {
    bool enable = false;
    std::string protocolVersion;        ///< As the ability lists them.
    std::string addressType;            ///< One of: "ipv4", "ipv6", "domain".
    std::string address;                ///< IP address or host name of the platform.
    std::int32_t port = 0;              ///< 1 to 65535.
    std::string deviceID;               ///< Name that the device registers under.
    std::string corvidKey;              ///< Secret shared with the platform; plain text, never returned by devices.
    std::string networkType;            ///< Way to the platform. One of: "auto", "wired", "wireless", "mobile".
    bool tls = false;                   ///< Registration travels encrypted.
    std::int32_t heartbeatInterval = 0; ///< 0 to 255 s.
    std::string registerStatus;         ///< One of: "online", "offline"; read only.
    NEXWIRE_JSON
};

/// What `CorvidParam` may hold on a device.
struct NEXWIRE_API CorvidAbility : IInboundData {
    bool enable = false;
    OptionList protocolVersion;
    OptionList addressType;
    IntRange address; ///< Length of a host name.
    IntRange port;
    IntRange deviceID;  ///< Length.
    IntRange corvidKey; ///< Length.
    OptionList networkType;
    bool tls = false;
    IntRange heartbeatInterval; ///< Seconds.
    NEXWIRE_JSON
};

// ---- Serial ports ----

/// Settings of one RS-485 port.
struct NEXWIRE_API RS485Parameters : IInboundData {
    std::int32_t portNo = 0; ///< From 1.
    std::string portName;
    std::int32_t baudRate = 0;      ///< Bits a second.
    std::int32_t dataBits = 8;      ///< 5 to 8.
    std::string stopBits;           ///< One of: "1", "1.5", "2".
    std::string parity;             ///< One of: "none", "odd", "even", "mark", "space".
    std::string flowControl;        ///< One of: "none", "software", "hardware".
    std::string duplex;             ///< One of: "half", "full".
    std::string workMode;           ///< What is on the line. One of: "cardReader", "extensionModule", "host",
                                    ///< "disable".
    std::int32_t deviceAddress = 0; ///< The device's own address on the line when a host drives it, 1 to 255.
    std::string outputType;         ///< What it reports to that host. One of: "cardNo", "employeeNo".
    NEXWIRE_JSON
};

/// What `RS485Parameters` may hold on a device.
struct NEXWIRE_API RS485ParametersAbility : IInboundData {
    IntRange portNo;
    IntRange portName;                  ///< Length.
    std::vector<std::int32_t> baudRate; ///< All that it takes, bits a second.
    std::vector<std::int32_t> dataBits; ///< All that it takes.
    OptionList stopBits;
    OptionList parity;
    OptionList flowControl;
    OptionList duplex;
    OptionList workMode;
    IntRange deviceAddress;
    OptionList outputType;
    NEXWIRE_JSON
};

/// Settings of one Wiegand port. The names are spelled so.
struct NEXWIRE_API WigginParameters : IInboundData {
    std::int32_t wigginNo = 0; ///< From 1.
    bool enable = false;
    std::string direction;          ///< One of: "receive", "send".
    std::string wigginMode;         ///< Frame. One of: "wiegand26", "wiegand34", "custom".
    std::string dataType;           ///< What a sent frame carries. One of: "cardNo", "employeeNo".
    std::string cardNoByteOrder;    ///< One of: "normal", "reverse".
    std::int32_t pulseWidth = 0;    ///< Of a sent pulse, microseconds.
    std::int32_t pulseInterval = 0; ///< Between two sent pulses, microseconds.
    std::int32_t frameTimeout = 0;  ///< Silence that ends a received frame. 0 to 60000 ms.
    bool sendFailedAuth = false;    ///< Send failed authentications too.
    NEXWIRE_JSON
};

/// What `WigginParameters` may hold on a device.
struct NEXWIRE_API WigginParametersAbility : IInboundData {
    IntRange wigginNo;
    bool enable = false;
    OptionList direction;
    OptionList wigginMode;
    OptionList dataType;
    OptionList cardNoByteOrder;
    IntRange pulseWidth;    ///< Microseconds.
    IntRange pulseInterval; ///< Microseconds.
    IntRange frameTimeout;  ///< Milliseconds.
    bool sendFailedAuth = false;
    NEXWIRE_JSON
};

} // namespace protocol
