#include "nexwire/VideoWall/VideoWall.h"

#include <keel/Error.h>
#include <velaproto/RapidJsonProto.h>

#include "Application/VideoWall/VideoWallInterfaceMgr.h"
#include "core/Pipeline.h"

namespace nexwire {

namespace {

/// Calls an operation of the one object.
template <class... Parameters, class... Arguments>
bool Call(bool (CTWDeviceOperation::*operation)(Parameters...) const, Arguments&&... arguments) noexcept
{
    return core::Guard([&] { return (CTWDeviceOperation::Instance().*operation)(arguments...); });
}

} // namespace

void CTWDeviceCommon::init(const std::string& host, const std::string& port)
{
    core::Guard([&] {
        CTWDeviceOperation::Instance().init(host, port);
        return true;
    });
}

TWErrorInfo CTWDeviceCommon::getLastError()
{
    TWErrorInfo error;
    core::Guard([&] {
        const Keel::Error::ErrorCode last = Keel::Error::GetLastError();
        error.code = last.number;
        error.module = last.category;
        proto::CRapidJsonProto json;
        return json.Load(Keel::Error::GetLastErrorJson()) && json.Get("/msg", error.message);
    });
    return error;
}

bool CTWDeviceCommon::addDevice(tagTWDeviceLoginParam& device)
{
    return Call(&CTWDeviceOperation::addDevice, device);
}

bool CTWDeviceCommon::addDeviceAsyn(tagTWDeviceLoginParam& device)
{
    return Call(&CTWDeviceOperation::addDeviceAsyn, device);
}

bool CTWDeviceCommon::modifyDevice(tagTWDeviceLoginParam& device)
{
    return Call(&CTWDeviceOperation::modifyDevice, device);
}

bool CTWDeviceCommon::deleteDevice(const std::string& deviceGuid, TWErrorInfoByGuid& failure)
{
    return Call(&CTWDeviceOperation::deleteDevice, deviceGuid, failure);
}

bool CTWDeviceCommon::deleteDevices(const std::vector<std::string>& deviceGuids,
                                    std::vector<TWErrorInfoByGuid>& failures)
{
    return Call(&CTWDeviceOperation::deleteDevices, deviceGuids, failures);
}

bool CTWDeviceCommon::getAllDevices(std::vector<tagTWDeviceInfo>& devices, const std::string& account,
                                    const std::string& teamNo, bool syncCloud)
{
    return Call(&CTWDeviceOperation::getAllDevices, devices, account, teamNo, syncCloud);
}

bool CTWDeviceCommon::refreshDevice(const std::string& deviceGuid)
{
    return Call(&CTWDeviceOperation::refreshDevice, deviceGuid);
}

bool CTWDeviceCommon::clearConfig(const std::string& deviceGuid)
{
    return Call(&CTWDeviceOperation::clearConfig, deviceGuid);
}

bool CTWDeviceCommon::getOutputList(std::vector<std::string> deviceGuids, std::vector<tagTWDeviceOutputInfo>& outputs)
{
    return Call(&CTWDeviceOperation::getOutputList, deviceGuids, outputs);
}

bool CTWDeviceCommon::getResolutionCap(tagTWResolutionCap& capability)
{
    return Call(&CTWDeviceOperation::getResolutionCap, capability);
}

bool CTWDeviceCommon::modifyResolution(tagTWResolutionCap& capability)
{
    return Call(&CTWDeviceOperation::modifyResolution, capability);
}

bool CTWDeviceCommon::bandOutput(tagTWDeviceOutputInfo& output)
{
    return Call(&CTWDeviceOperation::bandOutput, output);
}

bool CTWDeviceCommon::unBandOutput(tagTWDeviceOutputInfo& output)
{
    return Call(&CTWDeviceOperation::unBandOutput, output);
}

bool CTWDeviceCommon::openWallWindows(tagTWWindowOpenInfo& window)
{
    return Call(&CTWDeviceOperation::openWallWindows, window);
}

bool CTWDeviceCommon::deleteWindow(tagTWWindowOpenInfo& window)
{
    return Call(&CTWDeviceOperation::deleteWindow, window);
}

bool CTWDeviceCommon::unBandPlayWindow(tagTWPlayInfo& play)
{
    return Call(&CTWDeviceOperation::unBandPlayWindow, play);
}

bool CTWDeviceCommon::startPlay(tagTWPlayInfo& play)
{
    return Call(&CTWDeviceOperation::startPlay, play);
}

bool CTWDeviceCommon::stopPlay(tagTWPlayInfo& play)
{
    return Call(&CTWDeviceOperation::stopPlay, play);
}

bool CTWDeviceCommon::setTvVoice(tagTWPlayInfo& play)
{
    return Call(&CTWDeviceOperation::setTvVoice, play);
}

bool CTWDeviceCommon::getTvVoice(tagTWPlayInfo& play)
{
    return Call(&CTWDeviceOperation::getTvVoice, play);
}

bool CTWDeviceCommon::setScreenNum(tagTWPlayInfo& play)
{
    return Call(&CTWDeviceOperation::setScreenNum, play);
}

bool CTWDeviceCommon::getScreenNum(tagTWPlayInfo& play)
{
    return Call(&CTWDeviceOperation::getScreenNum, play);
}

bool CTWDeviceCommon::getTvWallDecodeInfo(const tagTWPlayInfo& play, tagTWWallDecodeInfo& status)
{
    return Call(&CTWDeviceOperation::getTvWallDecodeInfo, play, status);
}

bool CTWDeviceCommon::getTvWallSpec(tagTWWallSpec& spec)
{
    return Call(&CTWDeviceOperation::getTvWallSpec, spec);
}

bool CTWDeviceCommon::notifyLoginStatus(bool loggedIn)
{
    return Call(&CTWDeviceOperation::notifyLoginStatus, loggedIn);
}

bool CTWDeviceCommon::addPollingTask(tagTWWallPollingTaskInfo& task)
{
    return Call(&CTWDeviceOperation::addPollingTask, task);
}

bool CTWDeviceCommon::deletePollingTask(tagTWWallPollingTaskInfo& task)
{
    return Call(&CTWDeviceOperation::deletePollingTask, task);
}

bool CTWDeviceCommon::modifyPollingTask(tagTWWallPollingTaskInfo& task)
{
    return Call(&CTWDeviceOperation::modifyPollingTask, task);
}

bool CTWDeviceCommon::getAllPollingTask(const tagTWWallPollingTaskInfo& scope,
                                        std::vector<tagTWWallPollingTaskInfo>& tasks)
{
    return Call(&CTWDeviceOperation::getAllPollingTask, scope, tasks);
}

bool CTWDeviceCommon::startPollingTask(tagTWWallPollingTaskInfo& task)
{
    return Call(&CTWDeviceOperation::startPollingTask, task);
}

bool CTWDeviceCommon::stopPollingTask(tagTWWallPollingTaskInfo& task)
{
    return Call(&CTWDeviceOperation::stopPollingTask, task);
}

bool CTWDeviceCommon::suspendPollingTask(tagTWWallPollingTaskInfo& task)
{
    return Call(&CTWDeviceOperation::suspendPollingTask, task);
}

bool CTWDeviceCommon::switchOverPollingTask(tagTWWallPollingTaskInfo& task)
{
    return Call(&CTWDeviceOperation::switchOverPollingTask, task);
}

bool CTWDeviceCommon::stopSingleSourcePollingDecode(tagTWWallPollingTaskInfo& task)
{
    return Call(&CTWDeviceOperation::stopSingleSourcePollingDecode, task);
}

bool CTWDeviceCommon::deletePollingVideoWall(tagTWWallPollingTaskInfo& scope)
{
    return Call(&CTWDeviceOperation::deletePollingVideoWall, scope);
}

bool CTWDeviceCommon::modifyPollingTaskCamera(tagTWWallPollingTaskInfo& task)
{
    return Call(&CTWDeviceOperation::modifyPollingTaskCamera, task);
}

bool CTWDeviceCommon::deletePollingTaskCamera(tagTWWallPollingTaskInfo& task)
{
    return Call(&CTWDeviceOperation::deletePollingTaskCamera, task);
}

bool CTWDeviceCommon::isExistCameraInPollingTask(tagTWWallPollingTaskInfo& task, bool)
{
    return Call(&CTWDeviceOperation::isExistCameraInPollingTask, task);
}

bool CTWDeviceCommon::refreshPollingTask(tagTWWallPollingTaskInfo& scope)
{
    return Call(&CTWDeviceOperation::refreshPollingTask, scope);
}

bool CTWDeviceCommon::stopAllPollingTask(tagTWWallPollingTaskInfo& scope)
{
    return Call(&CTWDeviceOperation::stopAllPollingTask, scope);
}

bool CTWDeviceCommon::setPollingTasksAbnormal(tagTWWallPollingTaskInfo& scope)
{
    return Call(&CTWDeviceOperation::setPollingTasksAbnormal, scope);
}

} // namespace nexwire
