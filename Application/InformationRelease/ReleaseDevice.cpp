#include "nexwire/InformationRelease/ReleaseDevice.h"

#include <keel/Error.h>

#include "Application/InformationRelease/RawDocument.h"
#include "Application/InformationRelease/ReleaseCommands.h"
#include "core/Log.h"
#include "core/Serialize.h"
#include "nexwire/DeviceManagement/Device.h"

namespace nexwire {
namespace {

/// Runs a step that makes a text; empty when it fails.
template <class Step>
std::string TextOf(const Step& step)
{
    std::string text;
    return core::Guard([&] { return step(text); }) ? text : std::string();
}

/// The structure behind a caller's untyped pointer. Every structure starts with its one base.
protocol::IInboundData* AsStructure(void* data)
{
    return static_cast<protocol::IInboundData*>(data);
}

protocol::BatchPassThroughReq Batch(ReleaseCommand command, const protocol::IInboundData* input = nullptr)
{
    protocol::BatchPassThroughReq batch;
    batch.command = command;
    if (input != nullptr) {
        batch.batchSendDataList.emplace_back().inBuffer = core::Serialize(*input);
    }
    return batch;
}

/// Starts something that goes on by itself. Outputs are written on success.
bool Start(const protocol::BatchPassThroughReq& batch, const std::string& deviceGuid, std::string& batchGuid,
           bool& finished)
{
    protocol::BatchPassThroughRsp answer;
    if (!BatchExchange(Route::External, batch, deviceGuid, answer)) {
        return false;
    }
    batchGuid = std::move(answer.guid);
    finished = answer.isFinish;
    return true;
}

bool ReadProgress(const std::string& deviceGuid, const std::string& batchGuid, const std::string& flagGuid,
                  protocol::BatchProgressValueData& progress, bool& finished)
{
    return core::Guard([&] {
        protocol::BatchPassThroughReq batch = Batch(kTransferProgress);
        batch.guid = batchGuid;
        batch.flagGuid = flagGuid;
        protocol::BatchPassThroughRsp answer;
        protocol::BatchProgressValueData fresh;
        if (!BatchExchange(Route::External, batch, deviceGuid, answer) || answer.batchReturnDataList.empty() ||
            !protocol::TParseJSONStr(fresh, answer.batchReturnDataList.front().outBuffer)) {
            return false;
        }
        progress = std::move(fresh);
        finished = answer.isFinish;
        return true;
    });
}

} // namespace

std::string CInformationReleaseDeviceComm::ServerExisted(const std::string& address, int port,
                                                         const std::string& userName, const std::string& password,
                                                         bool& exists, int& existedType)
{
    const char* const function = NEXWIRE_FUNCTION;
    return TextOf([&](std::string& text) {
        protocol::DeviceExisted server;
        server.address = address;
        server.port = port;
        server.username = userName;
        server.password = password;
        protocol::DeviceExistedResultData answer;
        if (!Exchange(Write("/7730/v1/deviceManagement/deviceExisted", server), answer)) {
            NEXWIRE_LOG_ERROR_OF(function, "Failed to ask whether the server exists. [%s]",
                                 core::FailureOfLastExchange().text.c_str());
            return false;
        }
        protocol::DeviceExistedResult& result = answer.deviceExistedResult;
        text = result.deviceGuid.empty() ? LastExchange().message : std::move(result.deviceGuid);
        exists = result.existed;
        existedType = result.existedType;
        return true;
    });
}

std::string CInformationReleaseDeviceComm::addServer(const std::string& address, int port, const std::string& userName,
                                                     const std::string& password)
{
    return TextOf([&](std::string& deviceGuid) {
        protocol::DeviceAddReq server;
        server.deviceType = "publishServer";
        server.protocolType = "kestrel";
        server.addMode = "address";
        server.address = address;
        server.port = port;
        server.username = userName;
        server.password = password;
        protocol::DeviceResultListData answer;
        if (!CAddDevice::request(answer, server) || answer.deviceResultList.empty()) {
            return false;
        }
        protocol::DeviceResult& result = answer.deviceResultList.front();
        if (result.resultCode != 0) {
            Keel::Error::ErrorCode refused;
            refused.category = LastExchange().category;
            refused.number = result.resultCode;
            refused.text = result.resultMsg;
            Keel::Error::SetLastError(refused);
            return false;
        }
        deviceGuid = std::move(result.deviceGuid);
        return true;
    });
}

bool CInformationReleaseDeviceComm::deleteServer(const std::string& deviceGuid)
{
    return core::Guard([&] {
        protocol::DeviceList servers;
        servers.deviceGuidList.push_back(deviceGuid);
        protocol::DeviceResultListData answer;
        return CDeleteDevice::request(answer, servers);
    });
}

bool CInformationReleaseDeviceComm::mosifyServerParam(const std::string& deviceGuid, const std::string& address,
                                                      int port, const std::string& userName,
                                                      const std::string& password)
{
    return core::Guard([&] {
        protocol::DeviceBasicInfo server;
        server.address = address;
        server.port = port;
        server.username = userName;
        server.password = password;
        core::SendOnly(server, &server, {&server.address, &server.port});
        return CModDevice::request(server, deviceGuid);
    });
}

bool CInformationReleaseDeviceComm::getServerBasicInfomation(protocol::DeviceResponseData& result,
                                                             const std::string& deviceGuid)
{
    return core::Guard([&] {
        protocol::DeviceQueryCondition condition;
        condition.keyList = {"serialNo", "softwareVersion"};
        return CGetSingleDevicesComm::request(result, condition, deviceGuid);
    });
}

bool CInformationReleaseDeviceComm::dataThrough(const std::string& deviceGuid,
                                                const protocol::KestrelPassThroughReq& request, std::string& output,
                                                std::string& errorText)
{
    return RawDocument(deviceGuid, request, core::Verdict::Accept, output, errorText);
}

bool CInformationReleaseDeviceComm::rebootDevice(const std::string& deviceGuid)
{
    return DeviceCommand(Route::External, kReboot, deviceGuid);
}

bool CInformationReleaseDeviceComm::restoreDevice2Default(const std::string& deviceGuid)
{
    return DeviceCommand(Route::External, kRestoreDefault, deviceGuid);
}

bool CInformationReleaseDeviceComm::setDeviceParams(const std::string& deviceGuid, int command, void* data)
{
    protocol::DagPassThroughRsp answer;
    return DeviceExchange(Route::External, command, deviceGuid, {}, AsStructure(data), answer);
}

bool CInformationReleaseDeviceComm::getDeviceParams(const std::string& deviceGuid, int command, void* data, int size)
{
    if (data == nullptr || size < static_cast<int>(sizeof(protocol::IInboundData))) {
        return false;
    }
    return core::Guard([&] {
        protocol::IInboundData& structure = *AsStructure(data);
        protocol::DagPassThroughRsp answer;
        return DeviceExchange(Route::External, command, deviceGuid, {}, nullptr, answer) &&
               protocol::ParseJSONText(structure, structure.RootName(), answer.outBuffer);
    });
}

bool CInformationReleaseDeviceComm::deviceUpgrade(std::string& batchGuid, const std::string& deviceGuid,
                                                  const protocol::DeviceUpgradeCon& upgrade)
{
    return core::Guard([&] {
        bool finished = false;
        return Start(Batch(kUpgrade, &upgrade), deviceGuid, batchGuid, finished);
    });
}

bool CInformationReleaseDeviceComm::findDeviceLogs(const protocol::DeviceLogQueryCondition& condition,
                                                   const std::string& deviceGuid, std::string& batchGuid,
                                                   bool& finished, std::vector<protocol::DeviceLogQueryResult>& list)
{
    return core::Guard([&] {
        protocol::BatchPassThroughReq batch = Batch(kFindLogs);
        batch.guid = batchGuid;
        batch.condBuffer = core::Serialize(condition);
        batch.maxResultNum = condition.maxResults;
        return AppendPage(Route::External, batch, deviceGuid, list, batchGuid, finished);
    });
}

bool CInformationReleaseDeviceComm::uploadFile(std::string& transferGuid, const std::string& deviceGuid,
                                               const protocol::FileUpload& file, const std::string& batchGuid,
                                               const std::string& flagGuid, bool& finished)
{
    return core::Guard([&] {
        protocol::BatchPassThroughReq batch = Batch(kUploadFile, &file);
        batch.guid = batchGuid;
        batch.flagGuid = flagGuid;
        return Start(batch, deviceGuid, transferGuid, finished);
    });
}

bool CInformationReleaseDeviceComm::downloadFile(std::string& transferGuid, const std::string& deviceGuid,
                                                 const protocol::FileDownload& file, bool& finished)
{
    return core::Guard([&] { return Start(Batch(kDownloadFile, &file), deviceGuid, transferGuid, finished); });
}

bool CInformationReleaseDeviceComm::getProgress(const std::string& deviceGuid, const std::string& batchGuid,
                                                int& progress, const std::string& flagGuid, bool& finished)
{
    protocol::BatchProgressValueData answer;
    if (!ReadProgress(deviceGuid, batchGuid, flagGuid, answer, finished)) {
        return false;
    }
    progress = answer.batchProgressValue.progress;
    return true;
}

bool CInformationReleaseDeviceComm::getProgressByCallback(const std::string& deviceGuid, const std::string& batchGuid,
                                                          protocol::BatchProgressValueData& progress, bool& finished)
{
    return ReadProgress(deviceGuid, batchGuid, {}, progress, finished);
}

bool CInformationReleaseDeviceComm::remoteConnectStart(std::string& connectionGuid, const std::string& deviceGuid,
                                                       int type, void* data, bool& finished)
{
    return core::Guard([&] {
        protocol::BatchPassThroughReq batch = Batch(kRemoteConnect, AsStructure(data));
        batch.condBuffer = std::to_string(type);
        return Start(batch, deviceGuid, connectionGuid, finished);
    });
}

bool CInformationReleaseDeviceComm::disconnectInstance(const std::string& deviceGuid, const std::string& connectionGuid)
{
    return core::Guard([&] {
        protocol::BatchPassThroughReq batch = Batch(kRemoteConnect);
        batch.guid = connectionGuid;
        batch.cancel = true;
        protocol::BatchPassThroughRsp answer;
        return BatchExchange(Route::External, batch, deviceGuid, answer);
    });
}

} // namespace nexwire
