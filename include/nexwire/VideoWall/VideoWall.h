#pragma once

#include <string>
#include <vector>

#include "nexwire/Export.h"

namespace nexwire {

/// A decoder to add or to modify.
struct tagTWDeviceLoginParam {
    std::string username; ///< Travels Base64-encoded.
    std::string password; ///< Travels Base64-encoded.
    std::string address;  ///< IP address or host name.
    int port = 0;         ///< 1 to 65535.
    std::string alias;    ///< Display name.
    std::string guid;     ///< GUID given by the service; filled by the additions, sent by `modifyDevice`.
};

/// One entry of the list of decoders.
struct tagTWDeviceInfo {
    int loginStatus = 0;      ///< Whether the service is logged in to the decoder, service vocabulary.
    std::string address;      ///< IP address or host name.
    std::string guid;         ///< GUID given by the service.
    std::string deviceName;   ///< Display name.
    std::string deviceSerial; ///< Serial number.
    std::string username;     ///< Account on the decoder, as the service tells it.
    int port = 0;             ///< 1 to 65535.
};

/// One display output of a decoder and, for `bandOutput`, the cell of the wall it is bound to.
struct tagTWDeviceOutputInfo {
    int id = 0;                    ///< Output channel number.
    std::string channelName;       ///< Display name.
    int portType = 0;              ///< Kind of connector, service vocabulary.
    std::string deviceGuid;        ///< Decoder it belongs to.
    std::string currentResolution; ///< As the service says it; a number stands as decimal text.
    int bindStatus = 0;            ///< Whether it is bound to a cell, service vocabulary.
    int row = 0;                   ///< Row of the wall's grid.
    int col = 0;                   ///< Column of the wall's grid.
};

/// What an output can show, and the resolution to set.
struct tagTWResolutionCap {
    std::string deviceGuid;                     ///< Decoder.
    int id = 0;                                 ///< Output channel number.
    std::string currentResolution;              ///< As the service says it; a number stands as decimal text.
    std::vector<std::string> resolutionCapList; ///< Resolutions that can be set.
    std::string resolution;                     ///< What `modifyResolution` sets.
};

/// A window on the wall and what it plays. Position and extent are counted in screens of the wall's grid.
struct tagTWPlayInfo {
    std::string deviceGuid;     ///< Decoder.
    int id = 0;                 ///< Output channel number.
    std::string url;            ///< Address of the stream.
    bool streamEncrypt = false; ///< Whether the stream is encrypted.
    std::string streamPassword; ///< Key of an encrypted stream.
    int subWndNo = 0;           ///< Number of the sub-window within the window.
    int row = 0;                ///< First row.
    int col = 0;                ///< First column.
    int rowNum = 0;             ///< Rows covered.
    int colNum = 0;             ///< Columns covered.
    int windowId = 0;           ///< Number given by the service; filled by `startPlay`.
    bool enable = false;        ///< Sound on; set by `setTvVoice`, filled by `getTvVoice`.
    int number = 0;             ///< How many sub-windows `setScreenNum` divides the window into.
    int windowNum = 0;          ///< How many there are, filled by `getScreenNum`.
};

/// A window to open. Position and extent are counted in screens of the wall's grid.
struct tagTWWindowOpenInfo {
    std::string deviceGuid; ///< Decoder.
    int id = 0;             ///< Output channel number.
    int subWndNo = 0;       ///< Number of the sub-window within the window.
    int row = 0;            ///< First row.
    int col = 0;            ///< First column.
    int rowNum = 0;         ///< Rows covered.
    int colNum = 0;         ///< Columns covered.
    int windowId = 0;       ///< Number given by the service; filled by `openWallWindows`.
};

/// How a sub-window decodes. Kinds are the service's vocabulary.
struct tagTWWallDecodeInfo {
    int subWndNo = 0;    ///< Number of the sub-window.
    int videoFPS = 0;    ///< Frames per second.
    int audioFPS = 0;    ///< Audio frames per second.
    int isDecoding = 0;  ///< Not 0 while it decodes.
    int videoType = 0;   ///< Codec.
    int packetType = 0;  ///< Container.
    int videoTotal = 0;  ///< Video frames decoded since it plays.
    int imageWidth = 0;  ///< Pixels.
    int imageHeight = 0; ///< Pixels.
};

/// Limits of the walls.
struct tagTWWallSpec {
    int videoWallNum = 0; ///< Walls.
    int screenRowNum = 0; ///< Rows of screens in a wall.
    int screenColNum = 0; ///< Columns of screens in a wall.
};

/// One camera of a polling task.
struct tagTWPollingCameraInfo {
    std::string cameraGuid;   ///< GUID of the camera.
    std::string cameraName;   ///< Display name.
    std::string deviceSerial; ///< Serial number of the device it hangs on.
    int channelNo = 0;        ///< Channel on that device.
    std::string url;          ///< Address of the stream.
    std::string streamKey;    ///< Key of an encrypted stream.
    std::string guid;         ///< GUID of this entry within the task, given by the service.
    int cameraType = 0;       ///< Service vocabulary.
    int share = 0;            ///< Whether it is shared by another account, service vocabulary.
    bool isExist = false;     ///< A task has this camera; filled by `isExistCameraInPollingTask`.
    std::string taskGuid;     ///< That task; filled by `isExistCameraInPollingTask`.
};

/// One window that a polling task drives.
struct tagTWPollingWindowInfo {
    std::string deviceGuid; ///< Decoder.
    int windowId = 0;       ///< Window.
    int subNo = 0;          ///< Sub-window within it.
    std::string guid;       ///< GUID of this entry within the task; sent by `modifyPollingTask`.
};

/// A polling task, which shows cameras in wall windows one after another, and the scope it lives in. Each operation
/// says which members it uses.
struct tagTWWallPollingTaskInfo {
    std::string videoWallGuid; ///< Scope: the wall.
    std::string accountNo;     ///< Scope: the account.
    std::string teamNo;        ///< Scope: the team.

    std::string taskGuid; ///< GUID given by the service.
    std::string taskName; ///< Display name.
    int pollingTime = 0;  ///< How long each camera stays, in the service's unit.
    int streamType = 0;   ///< Main or sub stream, service vocabulary.
    int isRunning = 0;    ///< Not 0 while it runs; read only. A service may send true or false: 1 or 0.
    std::vector<tagTWPollingCameraInfo> cameraList;
    std::vector<tagTWPollingWindowInfo> windowList;

    int optType = 0;                       ///< What `switchOverPollingTask` does, service vocabulary.
    int stopMode = 0;                      ///< How `stopAllPollingTask` stops, service vocabulary.
    std::vector<std::string> taskGuidList; ///< Tasks that `setPollingTasksAbnormal` or `getAllPollingTask` names.

    std::string cameraDeviceSerial; ///< Progress: device of the camera being shown.
    int cameraChannelNo = 0;        ///< Progress: its channel.
    int currentCameraNum = 0;       ///< Progress: its place among the cameras.
    int totalCameraNum = 0;         ///< Progress: how many cameras there are.
};

/// One item of a batch that failed.
struct TWErrorInfoByGuid {
    std::string guid; ///< The item.
    int code = 0;     ///< Why.
    int module = 0;   ///< Part of the service that says so.
};

/// The last error of the calling thread.
struct TWErrorInfo {
    int code = 0;        ///< 0 after a success; `CTWDeviceCommon::kNetworkFailure` when the service was not reached.
    int module = 0;      ///< Part of the service that reports it; 0 when it was not reached.
    std::string message; ///< Text for the user.
};

/// Video walls: decoders, their outputs, windows, what these play, and polling tasks. Requests go straight to the
/// video wall service, not through the host's executor; call `init` first.
///
/// All functions but `init` block until the answer is there, at most for the time-out (5 s unless a line says
/// otherwise) counted for connecting, sending and receiving each. Any thread, any number at once; `init` must not
/// overlap them. Nothing is thrown.
///
/// True means that the service answered with code 0. Every call leaves the service's message, module and code as last
/// error of its thread, code 0 after a success. When the service cannot be reached, does not answer in time, or its
/// answer is empty, has no declared length or cannot be read, the last error is the network failure: module 0, code
/// `kNetworkFailure`. A request with text that is not UTF-8 is not sent and ends the same way.
///
/// Records are filled on true only. A value that an answer lacks, or has in another type, keeps what the record had;
/// in elements of lists, which are always new, it is the default.
class NEXWIRE_API CTWDeviceCommon {
public:
    /// Code of the last error when the service was not reached.
    static constexpr int kNetworkFailure = 99999;

    /// Says where the service is, replacing what was said before. Sends nothing.
    ///
    /// @param host  name or IPv4 address, or IPv6 address in brackets.
    /// @param port  decimal.
    static void init(const std::string& host, const std::string& port);

    /// The last error of the calling thread, whichever family left it. Sends nothing.
    static TWErrorInfo getLastError();

    // ---- Decoders ----

    /// Adds a decoder and waits until the service has logged in to it (15 s). Fills `guid`.
    static bool addDevice(tagTWDeviceLoginParam& device);
    /// Adds a decoder; the service logs in afterwards (15 s for the answer). Fills `guid`.
    static bool addDeviceAsyn(tagTWDeviceLoginParam& device);
    /// Changes everything of the decoder `guid`.
    static bool modifyDevice(tagTWDeviceLoginParam& device);
    /// Deletes a decoder. True means that the order was accepted; `failure` is filled when the decoder could not be
    /// deleted, otherwise it stays as it is.
    static bool deleteDevice(const std::string& deviceGuid, TWErrorInfoByGuid& failure);
    /// Deletes decoders. True means that the order was accepted; `failures` lists those that could not be deleted.
    static bool deleteDevices(const std::vector<std::string>& deviceGuids, std::vector<TWErrorInfoByGuid>& failures);
    /// The decoders of an account.
    ///
    /// @param syncCloud  have the service ask the cloud first.
    static bool getAllDevices(std::vector<tagTWDeviceInfo>& devices, const std::string& account,
                              const std::string& teamNo, bool syncCloud);
    /// Has the service log in to a decoder again.
    static bool refreshDevice(const std::string& deviceGuid);
    /// Takes every setting from a decoder.
    static bool clearConfig(const std::string& deviceGuid);

    // ---- Outputs ----

    /// The display outputs of several decoders.
    static bool getOutputList(std::vector<std::string> deviceGuids, std::vector<tagTWDeviceOutputInfo>& outputs);
    /// Fills `currentResolution` and `resolutionCapList` for the output `deviceGuid`, `id`.
    static bool getResolutionCap(tagTWResolutionCap& capability);
    /// Sets `resolution` on the output `deviceGuid`, `id`.
    static bool modifyResolution(tagTWResolutionCap& capability);
    /// Binds the output `deviceGuid`, `id` to the cell `row`, `col`.
    static bool bandOutput(tagTWDeviceOutputInfo& output);
    /// Frees the cell of the output `deviceGuid`, `id`.
    static bool unBandOutput(tagTWDeviceOutputInfo& output);

    // ---- Windows and what they play ----

    /// Opens a window at `row`, `col` of the extent `rowNum`, `colNum`. Fills `windowId`.
    static bool openWallWindows(tagTWWindowOpenInfo& window);
    /// Deletes all windows of the decoder `deviceGuid`.
    static bool deleteWindow(tagTWWindowOpenInfo& window);
    /// Deletes the window `deviceGuid`, `id`, `windowId`.
    static bool unBandPlayWindow(tagTWPlayInfo& play);
    /// Plays `url` in a window, which is opened when there is none. Fills `windowId`.
    static bool startPlay(tagTWPlayInfo& play);
    /// Stops what the sub-window `deviceGuid`, `windowId`, `subWndNo` plays.
    static bool stopPlay(tagTWPlayInfo& play);
    /// Turns the sound of the sub-window `deviceGuid`, `id`, `windowId`, `subWndNo` on or off by `enable`.
    static bool setTvVoice(tagTWPlayInfo& play);
    /// Fills `enable` for the output `deviceGuid`, `id`.
    static bool getTvVoice(tagTWPlayInfo& play);
    /// Divides the window `deviceGuid`, `windowId` into `number` sub-windows.
    static bool setScreenNum(tagTWPlayInfo& play);
    /// Fills `windowNum` for the window `deviceGuid`, `windowId`.
    static bool getScreenNum(tagTWPlayInfo& play);
    /// How the sub-window `deviceGuid`, `windowId`, `subWndNo` decodes.
    static bool getTvWallDecodeInfo(const tagTWPlayInfo& play, tagTWWallDecodeInfo& status);

    // ---- Walls and clients ----

    /// Limits of the walls.
    static bool getTvWallSpec(tagTWWallSpec& spec);
    /// Tells the service that the client has logged in or out. Gives up after 1 s.
    static bool notifyLoginStatus(bool loggedIn);

    // ---- Polling tasks: all of them use the scope (`videoWallGuid`, `accountNo`, `teamNo`) ----

    /// Adds a task with its name, times, cameras and windows. Fills `taskGuid`.
    static bool addPollingTask(tagTWWallPollingTaskInfo& task);
    static bool deletePollingTask(tagTWWallPollingTaskInfo& task);
    /// Replaces everything of the task `taskGuid`. Fills `taskGuid`.
    static bool modifyPollingTask(tagTWWallPollingTaskInfo& task);
    /// The tasks of a scope with their cameras, windows and progress; those of `taskGuidList`, all when it is empty.
    static bool getAllPollingTask(const tagTWWallPollingTaskInfo& scope, std::vector<tagTWWallPollingTaskInfo>& tasks);
    static bool startPollingTask(tagTWWallPollingTaskInfo& task);
    static bool stopPollingTask(tagTWWallPollingTaskInfo& task);
    /// Keeps the camera that is shown until the task is started again.
    static bool suspendPollingTask(tagTWWallPollingTaskInfo& task);
    /// Moves the task to another camera as `optType` says.
    static bool switchOverPollingTask(tagTWWallPollingTaskInfo& task);
    /// Stops the decoding of the first camera of `cameraList` in the task.
    static bool stopSingleSourcePollingDecode(tagTWWallPollingTaskInfo& task);
    /// Deletes every task of the wall.
    static bool deletePollingVideoWall(tagTWWallPollingTaskInfo& scope);
    /// Renames or replaces cameras of the task (`guid`, `cameraName`, `cameraGuid` of each). False, and nothing is
    /// sent, when `cameraList` is empty; the last error stays as it is then.
    static bool modifyPollingTaskCamera(tagTWWallPollingTaskInfo& task);
    /// Takes cameras from the task (`guid`, `cameraGuid` of each). An empty `cameraList` as above.
    static bool deletePollingTaskCamera(tagTWWallPollingTaskInfo& task);
    /// Fills `isExist` and `taskGuid` of each camera. An empty `cameraList` as above.
    ///
    /// @param flag  plays no part in the request.
    static bool isExistCameraInPollingTask(tagTWWallPollingTaskInfo& task, bool flag);
    /// Has the service read the tasks of the wall anew.
    static bool refreshPollingTask(tagTWWallPollingTaskInfo& scope);
    /// Stops every task of the wall as `stopMode` says.
    static bool stopAllPollingTask(tagTWWallPollingTaskInfo& scope);
    /// Marks the tasks of `taskGuidList` as disturbed.
    static bool setPollingTasksAbnormal(tagTWWallPollingTaskInfo& scope);
};

} // namespace nexwire
