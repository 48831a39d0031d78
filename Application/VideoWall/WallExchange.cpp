#include "Application/VideoWall/WallExchange.h"

#include <cstdint>

#include <keel/Error.h>

#include "Application/VideoWall/VideoWallInterfaceMgr.h"
#include "core/Log.h"

namespace nexwire {

namespace {

constexpr int kUsualTimeoutMs = 5000;

} // namespace

bool CTWDeviceOperation::HttpSend(Vela::Net::CHttpClientRequest& request, Vela::Net::CHttpClientResponse& response,
                                  const int timeout)
{
    if (timeout != kUsualTimeoutMs) {
        NEXWIRE_LOG_INFO("[kkkkpppp]HttpSend timeout : [%d].", timeout);
    }
    request.SetReceiveTimeout(timeout);
    request.SetSendTimeout(timeout);
    request.SetConnectionTimeout(timeout);
    request.AddHeaderField("User-Agent", std::string("TARVO-Client/") + "VideoWall");
    Vela::Net::Error error;
    return Vela::Net::HttpClient::Send(request, &response, &error) && response.GetContentLength() != 0 &&
           response.GetContentLength() != Vela::Net::CHttpClientResponse::kUnknownLength;
}

namespace videowall {

namespace {

constexpr char kNetworkText[] = "网络异常，请稍后再试。";

const char* Or(const char* name, const char* usual)
{
    return name != nullptr ? name : usual;
}

bool FailNetwork()
{
    Keel::Error::SetLastErrorJson(kNetworkText, 0, CTWDeviceCommon::kNetworkFailure);
    return false;
}

std::string UrlOf(const WallOperation& operation)
{
    std::string url = CTWDeviceOperation::Instance().BaseUrl() + operation.path;
    NEXWIRE_LOG_INFO_OF(operation.function, "%s url:[%s]", Or(operation.requestName, operation.name), url.c_str());
    return url;
}

// Puts the keys into the request; false when one of them has no JSON form.
bool SetBody(Vela::Net::CHttpClientRequest& request, const Keys& keys, const WallOperation& operation)
{
    proto::CRapidJsonProto json;
    for (const Key& key : keys) {
        if (!key.WriteTo(json)) {
            return false;
        }
    }
    const std::string body = json.ToString();
    request.AddHeaderField("Content-Length", std::to_string(body.size()));
    request.SetData(body);
    NEXWIRE_LOG_INFO_OF(operation.function, "%s conntent:[%s]", Or(operation.requestName, operation.name),
                        body.c_str());
    return true;
}

// Makes what the answer says the last error; true when it says success.
bool TakeOutcome(const Answer& answer)
{
    int code = 0;
    if (!answer.Read("/code", code)) {
        return FailNetwork();
    }
    int module = 0;
    std::string message;
    answer.Read("/module", module);
    answer.Read("/msg", message);
    Keel::Error::SetLastErrorJson(message, module, code);
    return code == 0;
}

} // namespace

bool ExchangeWithWall(const WallOperation& operation, const Keys* body, const Reader& read)
{
    Vela::Net::CHttpClientRequest request("POST", Vela::Net::URL(UrlOf(operation)));
    request.SetContentType("application/json");
    Vela::Net::CHttpClientResponse response;
    if ((body != nullptr && !SetBody(request, *body, operation)) ||
        !CTWDeviceOperation::VideoWallHttpSend(request, response, operation.timeoutMs)) {
        NEXWIRE_LOG_ERROR_OF(operation.function, "%s HttpSend failed! ", Or(operation.sendFailName, operation.name));
        return FailNetwork();
    }

    std::string text;
    response.GetResponseData(&text);
    NEXWIRE_LOG_INFO_OF(operation.function, "%s data:[%s]", Or(operation.replyName, operation.name), text.c_str());
    Answer answer;
    answer.Load(text);
    if (!TakeOutcome(answer)) {
        NEXWIRE_LOG_ERROR_OF(operation.function, "%s failed! ", operation.name);
        return false;
    }
    if (read) {
        read(answer);
    }
    return true;
}

namespace {

bool Succeed(const WallOperation& operation)
{
    NEXWIRE_LOG_INFO_OF(operation.function, "%s success! ", operation.name);
    return true;
}

} // namespace

bool Post(const WallOperation& operation, const Keys& body, const Reader& read)
{
    return ExchangeWithWall(operation, &body, read) && Succeed(operation);
}

bool PostNothing(const WallOperation& operation, const Reader& read)
{
    return ExchangeWithWall(operation, nullptr, read) && Succeed(operation);
}

bool PostTask(const WallOperation& operation, const tagTWWallPollingTaskInfo& task, const Keys& body,
              const Reader& read)
{
    if (!ExchangeWithWall(operation, &body, read)) {
        return false;
    }
    NEXWIRE_LOG_INFO_OF(operation.function, "%s success! [strTaskGuid - %s].", operation.name, task.taskGuid.c_str());
    return true;
}

bool PostCameras(const WallOperation& operation, const tagTWWallPollingTaskInfo& task, const Keys& body,
                 const Reader& read)
{
    if (task.cameraList.empty()) {
        UrlOf(operation);
        NEXWIRE_LOG_ERROR_OF(operation.function, "%s vsPollingCameraInfos is empty.", operation.name);
        return false;
    }
    return PostTask(operation, task, body, read);
}

} // namespace videowall

} // namespace nexwire
