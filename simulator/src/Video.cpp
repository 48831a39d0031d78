#include "src/Clock.h"
#include "src/Fields.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kTemplates = "recordTemplates";
constexpr const char* kUrls = "fileUrls";

/// Adds, changes and removes recording templates, each with a result of its own.
void SetTemplates(Handling& handling)
{
    enum { kAdd, kChange, kRemove };
    Json results(rapidjson::kArrayType);
    for (const Json& item : Elements(Member(*handling.body, "modifyTemplateList"))) {
        const std::int64_t operation = AsInt(Member(item, "operateType"));
        std::string guid(AsText(Member(item, "templateGuid")));
        Reason reason = Reason::kNone;
        if (operation == kAdd) {
            guid = guid.empty() ? NewGuid() : guid;
            reason = handling.store.Has(kTemplates, guid) ? Reason::kDuplicate : Reason::kNone;
        } else {
            const Json known = handling.Load(kTemplates, guid);
            reason = known.IsNull()                                            ? Reason::kUnknownGuid
                     : AsBool(Member(known, "isUsed")) && operation == kRemove ? Reason::kInUse
                                                                               : Reason::kNone;
        }
        if (reason == Reason::kNone && operation == kRemove) {
            handling.store.Erase(kTemplates, guid);
        } else if (reason == Reason::kNone) {
            Json kept = Copy(item, handling.Memory());
            kept.RemoveMember("operateType");
            Fields(kept, handling.Memory())
                .Text("templateGuid", guid)
                .Flag("isUsed", false)
                .Text("modifyTime", IsoTime(handling.nowMs));
            handling.Save(kTemplates, guid, kept);
        }
        results.PushBack(Fields(handling.Memory())
                             .Text("templateGuid", guid)
                             .Same("templateName", item)
                             .Number("resultCode", static_cast<int>(reason))
                             .Text("resultMsg", reason == Reason::kNone ? "" : ReasonText(reason))
                             .Take(),
                         handling.Memory());
    }
    handling.data = Fields(handling.Memory()).Value("templateResultList", std::move(results)).Take();
}

/// Where the platform hands out files; their identifiers behind it.
constexpr const char* kFiles = "/7730/v1/storageServer/files/";

/// Gives files of the storage server an address for a while. What is there are the log's backups.
void MapFiles(Handling& handling)
{
    constexpr std::int64_t kUsualMinutes = 60;
    const std::int64_t until = handling.nowMs + AsInt(Member(*handling.body, "validMinutes"), kUsualMinutes) * 60000;
    const auto host = handling.request.headers.find("host");
    Json list(rapidjson::kArrayType);
    for (const Json& path : Elements(Member(*handling.body, "filePathList"))) {
        const std::size_t size = LogBackup(handling, AsText(&path)).size();
        std::string url;
        if (size != 0) {
            const std::string file = NewGuid();
            url = "http://" + (host == handling.request.headers.end() ? "127.0.0.1" : host->second) + kFiles + file;
            handling.Save(kUrls, file,
                          Fields(handling.Memory()).Text("filePath", AsText(&path)).Number("until", until).Take());
        }
        list.PushBack(Fields(handling.Memory())
                          .Text("filePath", AsText(&path))
                          .Text("url", url)
                          .Text("expireTime", url.empty() ? "" : IsoTime(until))
                          .Number("fileSize", static_cast<std::int64_t>(size))
                          .Take(),
                      handling.Memory());
    }
    handling.data = Fields(handling.Memory()).Value("fileUrlList", std::move(list)).Take();
}

void UnmapFiles(Handling& handling)
{
    for (const Json& url : Elements(Member(*handling.body, "urlList"))) {
        const std::string_view text = AsText(&url);
        if (!handling.store.Erase(kUrls, text.substr(text.rfind('/') + 1))) {
            throw Refusal(Reason::kUnknownGuid, text);
        }
    }
}

void FetchFile(Handling& handling)
{
    const std::string_view file = handling.Identifier("1");
    const Json known = handling.Load(kUrls, file);
    if (known.IsNull() || AsInt(Member(known, "until")) < handling.nowMs) {
        throw Refusal(Reason::kUnknownGuid, file);
    }
    Answer answer;
    answer.type = "text/csv; charset=utf-8";
    answer.body = LogBackup(handling, AsText(Member(known, "filePath")));
    handling.bytes = std::move(answer);
}

} // namespace

void AddVideo(Services& services)
{
    services["setTemplates"] = SetTemplates;
    services["mapFiles"] = MapFiles;
    services["unmapFiles"] = UnmapFiles;
    services["fetchFile"] = FetchFile;
}

} // namespace nexwire::simulator
