#include "nexwire/VideoWall/VideoWall.h"

#include <keel/Error.h>
#include <velaproto/RapidJsonProto.h>

#include "Application/VideoWall/VideoWallInterfaceMgr.h"
#include "core/Pipeline.h"

namespace nexwire {

namespace {

/// Calls an operation of the one object.
template <class... Parameters, class... Arguments>
bool Run(bool (CTWDeviceOperation::*operation)(Parameters...) const, Arguments&&... arguments) noexcept
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
    return Run(&CTWDeviceOperation::addDevice, device);
}

bool CTWDeviceCommon::addDeviceAsyn(tagTWDeviceLoginParam& device)
{
    return Run(&CTWDeviceOperation::addDeviceAsyn, device);
}

bool CTWDeviceCommon::modifyDevice(tagTWDeviceLoginParam& device)
{
    return Run(&CTWDeviceOperation::modifyDevice, device);
}

bool CTWDeviceCommon::deleteDevice(const std::string& deviceGuid, TWErrorInfoByGuid& failure)
{
    return Run(&CTWDeviceOperation::deleteDevice, deviceGuid, failure);
}

bool CTWDeviceCommon::deleteDevices(const std::vector<std::string>& deviceGuids,
                                    std::vector<TWErrorInfoByGuid>& failures)
{
    return Run(&CTWDeviceOperation::deleteDevices, deviceGuids, failures);
}

bool CTWDeviceCommon::getAllDevices(std::vector<tagTWDeviceInfo>& devices, const std::string& account,
                                    const std::string& teamNo, bool syncCloud)
{
    return Run(&CTWDeviceOperation::getAllDevices, devices, account, teamNo, syncCloud);
}

bool CTWDeviceCommon::refreshDevice(const std::string& deviceGuid)
{
    return Run(&CTWDeviceOperation::refreshDevice, deviceGuid);
}

bool CTWDeviceCommon::clearConfig(const std::string& deviceGuid)
{
    return Run(&CTWDeviceOperation::clearConfig, deviceGuid);
}

bool CTWDeviceCommon::getOutputList(std::vector<std::string> deviceGuids, std::vector<tagTWDeviceOutputInfo>& outputs)
{
    return Run(&CTWDeviceOperation::getOutputList, deviceGuids, outputs);
}

bool CTWDeviceCommon::getResolutionCap(tagTWResolutionCap& capability)
{
    return Run(&CTWDeviceOperation::getResolutionCap, capability);
}

bool CTWDeviceCommon::modifyResolution(tagTWResolutionCap& capability)
{
    return Run(&CTWDeviceOperation::modifyResolution, capability);
}

bool CTWDeviceCommon::bandOutput(tagTWDeviceOutputInfo& output)
{
    return Run(&CTWDeviceOperation::bandOutput, output);
}

bool CTWDeviceCommon::unBandOutput(tagTWDeviceOutputInfo& output)
{
    return Run(&CTWDeviceOperation::unBandOutput, output);
}

bool CTWDeviceCommon::openWallWindows(tagTWWindowOpenInfo& window)
{
    return Run(&CTWDeviceOperation::openWallWindows, window);
}

bool CTWDeviceCommon::deleteWindow(tagTWWindowOpenInfo& window)
{
    return Run(&CTWDeviceOperation::deleteWindow, window);
}

bool CTWDeviceCommon::unBandPlayWindow(tagTWPlayInfo& play)
{
    return Run(&CTWDeviceOperation::unBandPlayWindow, play);
}

bool CTWDeviceCommon::startPlay(tagTWPlayInfo& play)
{
    return Run(&CTWDeviceOperation::startPlay, play);
}

bool CTWDeviceCommon::stopPlay(tagTWPlayInfo& play)
{
    return Run(&CTWDeviceOperation::stopPlay, play);
}

bool CTWDeviceCommon::setTvVoice(tagTWPlayInfo& play)
{
    return Run(&CTWDeviceOperation::setTvVoice, play);
}

bool CTWDeviceCommon::getTvVoice(tagTWPlayInfo& play)
{
    return Run(&CTWDeviceOperation::getTvVoice, play);
}

bool CTWDeviceCommon::setScreenNum(tagTWPlayInfo& play)
{
    return Run(&CTWDeviceOperation::setScreenNum, play);
}

bool CTWDeviceCommon::getScreenNum(tagTWPlayInfo& play)
{
    return Run(&CTWDeviceOperation::getScreenNum, play);
}

bool CTWDeviceCommon::getTvWallDecodeInfo(const tagTWPlayInfo& play, tagTWWallDecodeInfo& status)
{
    return Run(&CTWDeviceOperation::getTvWallDecodeInfo, play, status);
}

bool CTWDeviceCommon::getTvWallSpec(tagTWWallSpec& spec)
{
    return Run(&CTWDeviceOperation::getTvWallSpec, spec);
}

bool CTWDeviceCommon::notifyLoginStatus(bool loggedIn)
{
    return Run(&CTWDeviceOperation::notifyLoginStatus, loggedIn);
}

bool CTWDeviceCommon::addPollingTask(tagTWWallPollingTaskInfo& task)
{
    return Run(&CTWDeviceOperation::addPollingTask, task);
}

bool CTWDeviceCommon::deletePollingTask(tagTWWallPollingTaskInfo& task)
{
    return Run(&CTWDeviceOperation::deletePollingTask, task);
}

bool CTWDeviceCommon::modifyPollingTask(tagTWWallPollingTaskInfo& task)
{
    return Run(&CTWDeviceOperation::modifyPollingTask, task);
}

bool CTWDeviceCommon::getAllPollingTask(const tagTWWallPollingTaskInfo& scope,
                                        std::vector<tagTWWallPollingTaskInfo>& tasks)
{
    return Run(&CTWDeviceOperation::getAllPollingTask, scope, tasks);
}

bool CTWDeviceCommon::startPollingTask(tagTWWallPollingTaskInfo& task)
{
    return Run(&CTWDeviceOperation::startPollingTask, task);
}

bool CTWDeviceCommon::stopPollingTask(tagTWWallPollingTaskInfo& task)
{
    return Run(&CTWDeviceOperation::stopPollingTask, task);
}

bool CTWDeviceCommon::suspendPollingTask(tagTWWallPollingTaskInfo& task)
{
    return Run(&CTWDeviceOperation::suspendPollingTask, task);
}

bool CTWDeviceCommon::switchOverPollingTask(tagTWWallPollingTaskInfo& task)
{
    return Run(&CTWDeviceOperation::switchOverPollingTask, task);
}

bool CTWDeviceCommon::stopSingleSourcePollingDecode(tagTWWallPollingTaskInfo& task)
{
    return Run(&CTWDeviceOperation::stopSingleSourcePollingDecode, task);
}

bool CTWDeviceCommon::deletePollingVideoWall(tagTWWallPollingTaskInfo& scope)
{
    return Run(&CTWDeviceOperation::deletePollingVideoWall, scope);
}

bool CTWDeviceCommon::modifyPollingTaskCamera(tagTWWallPollingTaskInfo& task)
{
    return Run(&CTWDeviceOperation::modifyPollingTaskCamera, task);
}

bool CTWDeviceCommon::deletePollingTaskCamera(tagTWWallPollingTaskInfo& task)
{
    return Run(&CTWDeviceOperation::deletePollingTaskCamera, task);
}

bool CTWDeviceCommon::isExistCameraInPollingTask(tagTWWallPollingTaskInfo& task, bool)
{
    return Run(&CTWDeviceOperation::isExistCameraInPollingTask, task);
}

bool CTWDeviceCommon::refreshPollingTask(tagTWWallPollingTaskInfo& scope)
{
    return Run(&CTWDeviceOperation::refreshPollingTask, scope);
}

bool CTWDeviceCommon::stopAllPollingTask(tagTWWallPollingTaskInfo& scope)
{
    return Run(&CTWDeviceOperation::stopAllPollingTask, scope);
}

bool CTWDeviceCommon::setPollingTasksAbnormal(tagTWWallPollingTaskInfo& scope)
{
    return Run(&CTWDeviceOperation::setPollingTasksAbnormal, scope);
}

} // namespace nexwire
