#pragma once

#include <string>
#include <vector>

#include <velanet/HttpClient.h>

#include "nexwire/VideoWall/VideoWall.h"

namespace nexwire {

/// The requests behind `CTWDeviceCommon`; its operations are described there. May throw `std::bad_alloc`.
class CTWDeviceOperation {
public:
    /// The one object, created on first use.
    static CTWDeviceOperation& Instance();

    /// Sends a request with all three time-outs set to `timeout` ms. True when an answer of a declared length other
    /// than 0 came. Notes time-outs other than the usual 5000; sets no last error.
    static bool HttpSend(Vela::Net::CHttpClientRequest& request, Vela::Net::CHttpClientResponse& response,
                         const int timeout);
    /// The same.
    static bool VideoWallHttpSend(Vela::Net::CHttpClientRequest& request, Vela::Net::CHttpClientResponse& response,
                                  const int timeout)
    {
        return HttpSend(request, response, timeout);
    }

    void init(const std::string& host, const std::string& port);
    const std::string& BaseUrl() const { return baseUrl_; }

    bool addDevice(tagTWDeviceLoginParam& device) const;
    bool addDeviceAsyn(tagTWDeviceLoginParam& device) const;
    bool modifyDevice(const tagTWDeviceLoginParam& device) const;
    bool deleteDevice(const std::string& deviceGuid, TWErrorInfoByGuid& failure) const;
    bool deleteDevices(const std::vector<std::string>& deviceGuids, std::vector<TWErrorInfoByGuid>& failures) const;
    bool getAllDevices(std::vector<tagTWDeviceInfo>& devices, const std::string& account, const std::string& teamNo,
                       bool syncCloud) const;
    bool refreshDevice(const std::string& deviceGuid) const;
    bool clearConfig(const std::string& deviceGuid) const;

    bool getOutputList(const std::vector<std::string>& deviceGuids, std::vector<tagTWDeviceOutputInfo>& outputs) const;
    bool getResolutionCap(tagTWResolutionCap& capability) const;
    bool modifyResolution(const tagTWResolutionCap& capability) const;
    bool bandOutput(const tagTWDeviceOutputInfo& output) const;
    bool unBandOutput(const tagTWDeviceOutputInfo& output) const;

    bool openWallWindows(tagTWWindowOpenInfo& window) const;
    bool deleteWindow(const tagTWWindowOpenInfo& window) const;
    bool unBandPlayWindow(const tagTWPlayInfo& play) const;
    bool startPlay(tagTWPlayInfo& play) const;
    bool stopPlay(const tagTWPlayInfo& play) const;
    bool setTvVoice(const tagTWPlayInfo& play) const;
    bool getTvVoice(tagTWPlayInfo& play) const;
    bool setScreenNum(const tagTWPlayInfo& play) const;
    bool getScreenNum(tagTWPlayInfo& play) const;
    bool getTvWallDecodeInfo(const tagTWPlayInfo& play, tagTWWallDecodeInfo& status) const;

    bool getTvWallSpec(tagTWWallSpec& spec) const;
    bool notifyLoginStatus(bool loggedIn) const;

    bool addPollingTask(tagTWWallPollingTaskInfo& task) const;
    bool deletePollingTask(const tagTWWallPollingTaskInfo& task) const;
    bool modifyPollingTask(tagTWWallPollingTaskInfo& task) const;
    bool getAllPollingTask(const tagTWWallPollingTaskInfo& scope, std::vector<tagTWWallPollingTaskInfo>& tasks) const;
    bool startPollingTask(const tagTWWallPollingTaskInfo& task) const;
    bool stopPollingTask(const tagTWWallPollingTaskInfo& task) const;
    bool suspendPollingTask(const tagTWWallPollingTaskInfo& task) const;
    bool switchOverPollingTask(const tagTWWallPollingTaskInfo& task) const;
    bool stopSingleSourcePollingDecode(const tagTWWallPollingTaskInfo& task) const;
    bool deletePollingVideoWall(const tagTWWallPollingTaskInfo& scope) const;
    bool modifyPollingTaskCamera(const tagTWWallPollingTaskInfo& task) const;
    bool deletePollingTaskCamera(const tagTWWallPollingTaskInfo& task) const;
    bool isExistCameraInPollingTask(tagTWWallPollingTaskInfo& task) const;
    bool refreshPollingTask(const tagTWWallPollingTaskInfo& scope) const;
    bool stopAllPollingTask(const tagTWWallPollingTaskInfo& scope) const;
    bool setPollingTasksAbnormal(const tagTWWallPollingTaskInfo& scope) const;

private:
    CTWDeviceOperation() = default;

    std::string baseUrl_; ///< Written by `init` only, which overlaps no request.
};

} // namespace nexwire
