#include <algorithm>
#include <filesystem>
#include <fstream>

#include <keel/GuidUtil.h>

#include "catalogue/Catalogue.h"
#include "catalogue/DirectRecorder.h"
#include "catalogue/Find.h"
#include "nexwire/Nexwire.h"
#include "nexwire/VideoWall/VideoWall.h"

namespace nexwire {
namespace catalogue {
namespace {

/// Notes what it is asked to send and answers with an empty envelope.
class NotingExecutor : public IRequestExecutor {
public:
    explicit NotingExecutor(std::vector<RequestParams>& requests) : requests_(requests) {}

    bool Execute(RspInfos& response, const RequestParams& request, int) override
    {
        requests_.push_back(request);
        response.body = R"({"code":"0-0","msg":"","data":{}})";
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

struct Recorder::State {
    std::vector<RequestParams> requests;
    bool ours = false;
    /// Stands in for the video wall service.
    DirectRecorder service;
    /// Stands in for local files; there once it was needed.
    std::filesystem::path file;
};

Recorder::Recorder() : state_(new State)
{
    CTWDeviceCommon::init("127.0.0.1", state_->service.Port());
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
    state_->service.Clear();
    call.Run();
    if (!state_->requests.empty()) {
        trace.sent = true;
        trace.request = std::move(state_->requests.back());
        state_->requests.pop_back();
        for (const RequestParams& request : state_->requests) {
            trace.before.push_back(request.url);
        }
        return trace;
    }
    trace.direct = trace.sent = state_->service.Take(trace.request);
    if (!trace.sent) {
        // It may have been the function that says where the service is.
        CTWDeviceCommon::init("127.0.0.1", state_->service.Port());
    }
    return trace;
}

} // namespace catalogue
} // namespace nexwire
