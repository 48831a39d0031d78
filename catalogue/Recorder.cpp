#include <algorithm>
#include <filesystem>
#include <fstream>

#include <keel/GuidUtil.h>
#include <rapidjson/document.h>
#include <rapidjson/pointer.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "catalogue/Catalogue.h"
#include "catalogue/Find.h"
#include "loopback/RawServer.h"
#include "nexwire/Nexwire.h"
#include "nexwire/VideoWall/VideoWall.h"

namespace nexwire::catalogue {
namespace {

constexpr const char* kEmptyAnswer = R"({"code":"0-0","msg":"","data":{}})";
/// The method code of all that goes to the video wall service.
constexpr std::int32_t kPost = 2;

/// Notes what it is asked to send and answers with an empty envelope.
class NotingExecutor : public IRequestExecutor {
public:
    explicit NotingExecutor(std::vector<RequestParams>& requests) : requests_(requests) {}

    bool Execute(RspInfos& response, const RequestParams& request, int) override
    {
        requests_.push_back(request);
        response.body = kEmptyAnswer;
        return true;
    }

private:
    std::vector<RequestParams>& requests_;
};

/// Leaves texts as they are, so that they can be recognised in the request.
class ClearEncryption : public IEncryption {
public:
    bool Encrypt(std::vector<std::string>& ciphertexts, const std::vector<std::string>& plaintexts,
                 const std::string&) override
    {
        ciphertexts = plaintexts;
        return true;
    }
    bool Decrypt(std::vector<std::string>& plaintexts, const std::vector<std::string>& ciphertexts,
                 const std::string&) override
    {
        plaintexts = ciphertexts;
        return true;
    }
};

} // namespace

namespace {

/// Identifiers that the function makes up and hands out stand by name: they differ from run to run.
void NameMadeUp(const Call& call, RequestParams& request)
{
    constexpr std::size_t kIdentifier = 32;
    const std::vector<Argument>& arguments = call.function().Arguments();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string json = call.Json(i);
        if (!arguments[i].output || arguments[i].type->shape != Shape::Text || json.size() != kIdentifier + 2) {
            continue;
        }
        const std::string made = json.substr(1, kIdentifier);
        for (auto& header : request.headers) {
            const std::size_t at = header.second.find(made);
            if (at != std::string::npos) {
                header.second.replace(at, made.size(), "{" + arguments[i].name + "}");
            }
        }
    }
}

} // namespace

std::string AnswerRead(const core::AnswerReads& reads)
{
    rapidjson::Document answer(rapidjson::kObjectType);
    answer.AddMember("data", rapidjson::Value(rapidjson::kObjectType), answer.GetAllocator());
    for (const core::PathRead& read : reads.paths) {
        const rapidjson::Pointer at(("/" + read.path).c_str());
        if (read.path.compare(0, 5, "data/") != 0 || at.Get(answer) != nullptr) {
            continue;
        }
        if (read.kind == core::Kind::StructList) {
            at.Append(rapidjson::SizeType{0}).Set(answer, rapidjson::Value(rapidjson::kObjectType));
        } else if (read.kind == core::Kind::Text) {
            at.Set(answer, "");
        } else if (read.kind == core::Kind::Bool) {
            at.Set(answer, false);
        } else {
            at.Set(answer, 0);
        }
    }
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    answer["data"].Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

struct Recorder::State {
    std::vector<RequestParams> requests;
    bool ours = false;
    /// Stands in for the video wall service, which functions ask for themselves instead of asking the executor.
    loopback::RawServer service;
    /// What its answers hold.
    void AnswerWith(const std::string& data)
    {
        service.SetDefault(loopback::Reply::Json(R"({"code":0,"module":0,"msg":"","data":)" + data + "}"));
    }
    /// Stands in for local files; there once it was needed.
    std::filesystem::path file;
};

Recorder::Recorder() : state_(new State)
{
    state_->AnswerWith("{}");
    CTWDeviceCommon::init("127.0.0.1", std::to_string(state_->service.Port()));
    NexwireInitParams params;
    auto executor = std::make_unique<NotingExecutor>(state_->requests);
    auto encryption = std::make_unique<ClearEncryption>();
    params.executor = executor.get();
    params.encryption = encryption.get();
    if (NexwireInit(params)) {
        state_->ours = true;
        static_cast<void>(executor.release());
        static_cast<void>(encryption.release());
    }
}

Recorder::~Recorder()
{
    if (state_->ours) {
        NexwireUnInit();
    }
    if (!state_->file.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(state_->file.parent_path(), ignored);
    }
}

std::string Recorder::Stand(const Argument& argument) const
{
    const std::string lower = LowerCase(argument.name);
    if (lower.find("file") == std::string::npos && lower.find("path") == std::string::npos) {
        return "{" + argument.name + "}";
    }
    if (state_->file.empty()) {
        const std::filesystem::path folder =
            std::filesystem::temp_directory_path() / ("nexwire-" + Keel::GuidUtil::CreateGuid());
        std::filesystem::create_directories(folder);
        state_->file = folder / "file.csv";
        std::ofstream(state_->file) << "content\n";
    }
    return state_->file.u8string();
}

std::string Recorder::Named(const Function& function, std::string text) const
{
    for (const Argument& argument : function.Arguments()) {
        const std::string name = "{" + argument.name + "}";
        if (argument.type->shape != Shape::Text) {
            continue;
        }
        const std::string stand = Stand(argument);
        for (std::size_t at = text.find(stand); at != std::string::npos; at = text.find(stand, at + name.size())) {
            text.replace(at, stand.size(), name);
        }
        // Identifiers are brought to a length with a sign that none of them has.
        const std::size_t at = text.find(name + "$");
        if (at != std::string::npos) {
            const std::size_t end = std::min(text.find_first_not_of('$', at + name.size()), text.size());
            text.erase(at + name.size(), end - at - name.size());
        }
    }
    return text;
}

Trace Recorder::Run(const Function& function)
{
    Trace trace = RunSampled(function);
    // What is read of the elements of a list shows only where there is one.
    std::string data = "{}";
    while (trace.direct) {
        std::string more = AnswerRead(trace.reads);
        if (more == data) {
            break;
        }
        data = std::move(more);
        state_->AnswerWith(data);
        trace = RunSampled(function);
    }
    state_->AnswerWith("{}");
    return trace;
}

Trace Recorder::RunSampled(const Function& function)
{
    Call call(function);
    std::string ignored;
    for (std::size_t i = 0; i < function.Arguments().size(); ++i) {
        const Argument& argument = function.Arguments()[i];
        if (argument.type->shape == Shape::Text && argument.input()) {
            call.Set(i, Stand(argument), ignored);
        } else if (argument.type->shape == Shape::TextList && argument.input()) {
            call.Set(i, "[\"{" + argument.name + "}\"]", ignored);
        } else if (argument.type->shape == Shape::AnyStructure && argument.required()) {
            call.Set(i, "{\"dagPassThroughReq\":{}}", ignored);
        }
        call.Sample(i);
    }
    Trace trace = Run(call);
    trace.request.url = Named(function, trace.request.url);
    trace.request.body = Named(function, trace.request.body);
    for (auto& header : trace.request.headers) {
        header.second = Named(function, header.second);
    }
    return trace;
}

Trace Recorder::Run(Call& call)
{
    Trace trace;
    state_->requests.clear();
    state_->service.TakeRequests();
    core::WatchAnswers(&trace.reads);
    trace.success = call.Run().success;
    core::WatchAnswers(nullptr);
    if (!state_->requests.empty()) {
        trace.sent = true;
        trace.request = std::move(state_->requests.back());
        state_->requests.pop_back();
        for (const RequestParams& request : state_->requests) {
            trace.before.push_back(request.url);
        }
        NameMadeUp(call, trace.request);
        const std::vector<Argument>& arguments = call.function().Arguments();
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            if (arguments[i].type->shape == Shape::Text && call.Json(i) == WriteText(kEmptyAnswer)) {
                trace.handsOut = arguments[i].name;
            }
        }
        return trace;
    }
    const std::vector<loopback::RawRequest> direct = state_->service.TakeRequests();
    trace.direct = trace.sent = !direct.empty();
    if (trace.sent) {
        const loopback::RawRequest& last = direct.back();
        trace.request = RequestParams(last.target, kPost, last.body);
        for (const auto& [name, value] : last.fields) {
            trace.request.headers[name] = value;
        }
        trace.request.headers.erase("Host");
    } else {
        // It may have been the function that says where the service is.
        CTWDeviceCommon::init("127.0.0.1", std::to_string(state_->service.Port()));
    }
    return trace;
}

} // namespace nexwire::catalogue
