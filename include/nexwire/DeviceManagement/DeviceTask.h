#pragma once

#include "protocol/DeviceManagement/DeviceTask.h"

// Analysis tasks, upgrades, applications, synchronisation, stream media servers. All functions block until the answer
// is there and may be called from any thread. They return true when the answer was a readable envelope, whatever its
// code; a result is untouched on false.

namespace nexwire {

/// One task.
class NEXWIRE_API CGetTaskInfoComm {
public:
    static bool request(protocol::TaskInfoData& result, const std::string& deviceGuid, const std::string& taskGuid);
};

/// One task together with its device, over the route of the platform's own components.
class NEXWIRE_API CGetTaskInfoAndDevComm {
public:
    static bool request(protocol::TaskAndDeviceInfoRspData& result, const protocol::TaskQueryReq& query,
                        const std::string& deviceGuid, const std::string& taskGuid);
};

/// One rule of a task.
class NEXWIRE_API CGetRuleInfoComm {
public:
    static bool request(protocol::TaskRuleInfoData& result, const std::string& deviceGuid, const std::string& taskGuid,
                        const std::string& ruleGuid);
};

/// Single settings of a task.
class NEXWIRE_API CSetTaskInfoComm {
public:
    /// Sets the stream media server that feeds the task, and nothing else.
    static bool setRelatedServers(const std::string& deviceGuid, const std::string& taskGuid,
                                  const std::string& relatedServer);
    /// Sets the channel that the task watches, from 1, and nothing else.
    static bool setRelatedChannelNo(int relatedChannelNo, const std::string& deviceGuid, const std::string& taskGuid);
};

/// Not part of the platform's services yet.
class NEXWIRE_API CGetUpgradeConfig {
public:
    /// Sends nothing and returns false: the platform has no service for it.
    static bool request(protocol::DeviceUpgradeConfigData& result);
};

/// Not part of the platform's services yet.
class NEXWIRE_API CSetUpgradeConfig {
public:
    /// Sends nothing and returns false: the platform has no service for it.
    static bool request(const protocol::DeviceUpgradeConfig& config);
};

/// Starts the upgrade of devices to the firmware that the platform has for them.
class NEXWIRE_API CUpgradeDevice {
public:
    /// One result per device.
    static bool request(protocol::DeviceResultListData& result, const protocol::DeviceList& devices);
};

/// Applications on devices.
class NEXWIRE_API CAppDownloadTask {
public:
    /// Sends a package to devices.
    ///
    /// @param task  sent as it is; on success what the answer says of it has replaced its members.
    static bool request(protocol::AppTask& task);
    /// The applications of a device.
    static bool request(protocol::AppList& result, const std::string& deviceGuid);
    /// Starts, stops, removes or asks about an application.
    ///
    /// @param order  sent as it is; on success what the answer says of it has replaced its members.
    static bool request(protocol::AppManage& order, const std::string& deviceGuid);
    /// Cancels the package that is on its way; the body is empty.
    static bool requestCancelTask();
};

/// Has the platform's components tell each other anew what they know of devices.
class NEXWIRE_API CSyncDevice {
public:
    /// @param unusedType  plays no part in the request.
    static bool request(const protocol::SynchronousReq& order, int unusedType);
};

/// Adds a stream media server.
class NEXWIRE_API CAddStreamMediaServer {
public:
    static bool request(protocol::SmsResultListData& result, const protocol::SmsAddInfo& server);
};

/// All stream media servers.
class NEXWIRE_API CGetStreamMediaServers {
public:
    static bool request(protocol::SmsResponseListData& result);
};

/// Removes stream media servers.
class NEXWIRE_API CDelStreamMediaServer {
public:
    /// One result per server.
    static bool request(protocol::SmsResultListData& result, const protocol::SmsGuidList& servers);
};

/// One stream media server.
class NEXWIRE_API CGetSMSInfoComm {
public:
    static bool request(protocol::SmsResponseData& result, const std::string& serverGuid);
};

/// Changes a stream media server.
class NEXWIRE_API CModStreamMediaServer {
public:
    static bool request(const protocol::SmsModificationReq& modification, const std::string& serverGuid);
};

} // namespace nexwire
