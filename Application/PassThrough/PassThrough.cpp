#include "Application/PassThrough/PassThrough.h"

#include "core/Serialize.h"
#include "nexwire/PassThrough/PassThrough.h"

namespace nexwire {
namespace {

/// The structure behind a caller's untyped pointer. Every structure starts with its one base.
const protocol::IInboundData* AsInput(void* data)
{
    return static_cast<const protocol::IInboundData*>(data);
}

/// Reads a structure that stands under its root name in a device's text.
bool ReplaceByText(protocol::IInboundData& output, const std::string& text)
{
    return core::Target(output).ReplaceBy(
        [&](protocol::IJSONStruct& fresh) { return protocol::ParseJSONText(fresh, output.RootName(), text); });
}

bool SetUntyped(int command, void* data, const std::string& deviceGuid)
{
    protocol::DagPassThroughRsp answer;
    return DeviceExchange(Route::External, command, deviceGuid, {}, AsInput(data), answer);
}

bool SendDag(Route route, const protocol::DagPassThroughReq& request, const std::string& deviceGuid,
             protocol::DagPassThroughRspData& response, int timeoutMs)
{
    return Exchange(Query(DevicePath(route, deviceGuid, "/dagPassThrough"), request).Timeout(timeoutMs), response);
}

bool SendDag(Route route, const protocol::DagPassThroughReq& request, const std::string& deviceGuid,
             protocol::DagPassThroughRsp& response)
{
    protocol::DagPassThroughRspData holder;
    if (!SendDag(route, request, deviceGuid, holder, 0)) {
        return false;
    }
    response = std::move(holder.dagPassThroughRsp);
    return true;
}

} // namespace

bool DeviceExchange(Route route, int command, const std::string& deviceGuid, std::string_view condition,
                    const protocol::IInboundData* input, protocol::DagPassThroughRsp& answer, int timeoutMs) noexcept
{
    return core::Guard([&] {
        protocol::DagPassThroughReq request;
        request.command = command;
        request.condBuffer = condition;
        if (input != nullptr) {
            request.inBuffer = core::Serialize(*input);
        }
        protocol::DagPassThroughRspData response;
        if (!SendDag(route, request, deviceGuid, response, timeoutMs)) {
            return false;
        }
        answer = std::move(response.dagPassThroughRsp);
        return true;
    });
}

bool DeviceGet(Route route, int command, const std::string& deviceGuid, protocol::IInboundData& output,
               std::string_view condition, int timeoutMs, const protocol::IInboundData* input) noexcept
{
    return core::Guard([&] {
        protocol::DagPassThroughRsp answer;
        return DeviceExchange(route, command, deviceGuid, condition, input, answer, timeoutMs) &&
               ReplaceByText(output, answer.outBuffer);
    });
}

bool DeviceSet(Route route, int command, const std::string& deviceGuid, const protocol::IInboundData& input,
               std::string_view condition, int timeoutMs) noexcept
{
    protocol::DagPassThroughRsp answer;
    return DeviceExchange(route, command, deviceGuid, condition, &input, answer, timeoutMs);
}

bool DeviceCommand(Route route, int command, const std::string& deviceGuid, std::string_view condition,
                   int timeoutMs) noexcept
{
    protocol::DagPassThroughRsp answer;
    return DeviceExchange(route, command, deviceGuid, condition, nullptr, answer, timeoutMs);
}

bool BatchExchange(Route route, const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
                   protocol::BatchPassThroughRsp& answer, std::string* errorText) noexcept
{
    return core::Guard([&] {
        protocol::BatchPassThroughRspData response;
        if (!Exchange(Query(DevicePath(route, deviceGuid, "/batchPassThrough"), request), response)) {
            if (errorText != nullptr) {
                *errorText = core::FailureOfLastExchange().text;
            }
            return false;
        }
        answer = std::move(response.batchPassThroughRsp);
        return true;
    });
}

bool BatchPage(Route route, const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
               std::string& batchGuid, bool& finished, std::string* errorText,
               const std::function<bool(const protocol::BatchReturnData& item)>& read) noexcept
{
    return core::Guard([&] {
        protocol::BatchPassThroughRsp page;
        if (!BatchExchange(route, request, deviceGuid, page, errorText)) {
            return false;
        }
        for (const protocol::BatchReturnData& item : page.batchReturnDataList) {
            if (!read(item)) {
                if (errorText != nullptr) {
                    *errorText = "an item of the page was not readable";
                }
                return false;
            }
        }
        batchGuid = std::move(page.guid);
        finished = page.isFinish;
        return true;
    });
}

bool AppendPage(Route route, const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
                core::TargetList list, std::string& batchGuid, bool& finished, std::string* errorText) noexcept
{
    return BatchPage(route, request, deviceGuid, batchGuid, finished, errorText,
                     [&list](const protocol::BatchReturnData& item) {
                         return list.AppendBy([&](protocol::IJSONStruct& element) {
                             return protocol::ParseJSONText(element, list.RootName(), item.outBuffer);
                         });
                     });
}

bool KestrelExchange(Route route, const std::string& deviceGuid, const protocol::KestrelPassThroughReq& request,
                     protocol::KestrelPassThroughRspData& answer) noexcept
{
    return Exchange(Query(DevicePath(route, deviceGuid, "/kestrelPassThrough"), request), answer);
}

bool KestrelGet(const std::string& deviceGuid, std::string_view requestLine, protocol::IInboundData& output) noexcept
{
    return core::Guard([&] {
        protocol::KestrelPassThroughReq request;
        request.url = requestLine;
        protocol::KestrelPassThroughRspData answer;
        return KestrelExchange(Route::External, deviceGuid, request, answer) &&
               ReplaceByText(output, answer.kestrelPassThroughRsp.outBuffer);
    });
}

bool NetsdkExchange(const std::string& deviceGuid, const protocol::NetsdkPassThroughReq& request,
                    protocol::NetsdkPassThroughRspData& answer) noexcept
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/netsdkPassThrough"), request), answer);
}

bool CPassThroughRequest::dagRequest(protocol::DagPassThroughRsp& response, const protocol::DagPassThroughReq& request,
                                     const std::string& deviceGuid)
{
    return SendDag(Route::External, request, deviceGuid, response);
}

bool CPassThroughRequest::dagRequestInner(protocol::DagPassThroughRsp& response,
                                          const protocol::DagPassThroughReq& request, const std::string& deviceGuid)
{
    return SendDag(Route::Internal, request, deviceGuid, response);
}

bool accessParamComm::dagThroughRequest(const protocol::DagPassThroughReq& request, const std::string& deviceGuid,
                                        protocol::DagPassThroughRspData& response, int timeoutMs)
{
    return SendDag(Route::Internal, request, deviceGuid, response, timeoutMs);
}

bool accessParamComm::dagThroughRequestExternal(protocol::DagPassThroughRspData& response,
                                                const protocol::DagPassThroughReq& request,
                                                const std::string& deviceGuid, int timeoutMs)
{
    return SendDag(Route::External, request, deviceGuid, response, timeoutMs);
}

bool accessParamComm::batchPassThroughRequest(const protocol::BatchPassThroughReq& request,
                                              const std::string& deviceGuid,
                                              protocol::BatchPassThroughRspData& response, std::string& errorText)
{
    if (Exchange(Query(DevicePath(Route::Internal, deviceGuid, "/batchPassThrough"), request), response)) {
        return true;
    }
    return core::Guard([&] {
        errorText = core::FailureOfLastExchange().text;
        return false;
    });
}

bool accessParamComm::batchPassThroughRequestExternal(protocol::BatchPassThroughRspData& response,
                                                      Keel::Error::ErrorCode& error,
                                                      const protocol::BatchPassThroughReq& request,
                                                      const std::string& deviceGuid)
{
    if (Exchange(Query(DevicePath(Route::External, deviceGuid, "/batchPassThrough"), request), response)) {
        return true;
    }
    return core::Guard([&] {
        error = core::FailureOfLastExchange();
        return false;
    });
}

bool accessParamComm::setSchedule(int command, void* data, const std::string& deviceGuid, std::string& errorText)
{
    if (SetUntyped(command, data, deviceGuid)) {
        return true;
    }
    return core::Guard([&] {
        errorText = core::FailureOfLastExchange().text;
        return false;
    });
}

bool ACDoorPlan::setDoorPlan(int command, void* data, const std::string& deviceGuid, const std::string&)
{
    return SetUntyped(command, data, deviceGuid);
}

bool ACDoorPlan::getDoorStatusInfo(int command, std::string& output, const std::string& deviceGuid, const std::string&)
{
    protocol::DagPassThroughRsp answer;
    if (!DeviceExchange(Route::External, command, deviceGuid, {}, nullptr, answer) || answer.outBuffer.empty()) {
        return false;
    }
    output = std::move(answer.outBuffer);
    return true;
}

} // namespace nexwire
