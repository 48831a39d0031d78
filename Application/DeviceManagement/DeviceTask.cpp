#include "nexwire/DeviceManagement/DeviceTask.h"

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {
namespace {

constexpr const char* kRoot = "/7730/v1/deviceManagement/";
constexpr const char* kServers = "streamMediaServers";

using Change = protocol::TaskModification;

Path TaskPath(const std::string& deviceGuid, const std::string& taskGuid)
{
    return DevicePath(Route::External, deviceGuid, "/tasks/", taskGuid);
}

} // namespace

bool CGetTaskInfoComm::request(protocol::TaskInfoData& result, const std::string& deviceGuid,
                               const std::string& taskGuid)
{
    return Exchange(Query(TaskPath(deviceGuid, taskGuid)), result);
}

bool CGetTaskInfoAndDevComm::request(protocol::TaskAndDeviceInfoRspData& result, const protocol::TaskQueryReq& query,
                                     const std::string& deviceGuid, const std::string& taskGuid)
{
    return Exchange(Query(DevicePath(Route::Internal, deviceGuid, "/tasks/", taskGuid), query), result);
}

bool CGetRuleInfoComm::request(protocol::TaskRuleInfoData& result, const std::string& deviceGuid,
                               const std::string& taskGuid, const std::string& ruleGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/tasks/", taskGuid, "/rules/", ruleGuid)), result);
}

bool CSetTaskInfoComm::setRelatedServers(const std::string& deviceGuid, const std::string& taskGuid,
                                         const std::string& relatedServer)
{
    return Exchange(Write(TaskPath(deviceGuid, taskGuid), Only(&Change::relatedServer, relatedServer)));
}

bool CSetTaskInfoComm::setRelatedChannelNo(int relatedChannelNo, const std::string& deviceGuid,
                                           const std::string& taskGuid)
{
    return Exchange(Write(TaskPath(deviceGuid, taskGuid), Only(&Change::relateChannelNo, relatedChannelNo)));
}

bool CGetUpgradeConfig::request(protocol::DeviceUpgradeConfigData&)
{
    return false;
}

bool CSetUpgradeConfig::request(const protocol::DeviceUpgradeConfig&)
{
    return false;
}

bool CUpgradeDevice::request(protocol::DeviceResultListData& result, const protocol::DeviceList& devices)
{
    return Exchange(Write(Path(kRoot, "devices/upgrade"), devices), result);
}

bool CAppDownloadTask::request(protocol::AppTask& task)
{
    return ExchangeBothWays(Write(Path(kRoot, "devices/app/path"), task), task);
}

bool CAppDownloadTask::request(protocol::AppList& result, const std::string& deviceGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/app/infoList")), result);
}

bool CAppDownloadTask::request(protocol::AppManage& order, const std::string& deviceGuid)
{
    return ExchangeBothWays(Query(DevicePath(Route::External, deviceGuid, "/app/manage"), order), order);
}

bool CAppDownloadTask::requestCancelTask()
{
    return Exchange(Remove(Path(kRoot, "devices/app/path")));
}

bool CSyncDevice::request(const protocol::SynchronousReq& order, int)
{
    return Exchange(Query(Path(kRoot, "synchronous"), order));
}

bool CAddStreamMediaServer::request(protocol::SmsResultListData& result, const protocol::SmsAddInfo& server)
{
    return Exchange(Write(Path(kRoot, kServers), server), result);
}

bool CGetStreamMediaServers::request(protocol::SmsResponseListData& result)
{
    return Exchange(Query(Path(kRoot, kServers)), result);
}

bool CDelStreamMediaServer::request(protocol::SmsResultListData& result, const protocol::SmsGuidList& servers)
{
    return Exchange(Remove(Path(kRoot, kServers), servers), result);
}

bool CGetSMSInfoComm::request(protocol::SmsResponseData& result, const std::string& serverGuid)
{
    return Exchange(Query(Path(kRoot, kServers, "/", serverGuid)), result);
}

bool CModStreamMediaServer::request(const protocol::SmsModificationReq& modification, const std::string& serverGuid)
{
    return Exchange(Write(Path(kRoot, kServers, "/", serverGuid), modification));
}

} // namespace nexwire
