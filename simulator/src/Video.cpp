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

/// Gives files of the storage server an address for a while.
void MapFiles(Handling& handling)
{
    constexpr std::int64_t kUsualMinutes = 60;
    const std::int64_t minutes = AsInt(Member(*handling.body, "validMinutes"), kUsualMinutes);
    Json list(rapidjson::kArrayType);
    for (const Json& path : Elements(Member(*handling.body, "filePathList"))) {
        const std::string url = "http://192.0.2.3:9300/files/" + NewGuid();
        Json entry = Fields(handling.Memory())
                         .Text("filePath", AsText(&path))
                         .Text("url", url)
                         .Text("expireTime", IsoTime(handling.nowMs + minutes * 60000))
                         .Number("fileSize", 65536)
                         .Take();
        handling.Save(kUrls, url, entry);
        list.PushBack(std::move(entry), handling.Memory());
    }
    handling.data = Fields(handling.Memory()).Value("fileUrlList", std::move(list)).Take();
}

void UnmapFiles(Handling& handling)
{
    for (const Json& url : Elements(Member(*handling.body, "urlList"))) {
        if (!handling.store.Erase(kUrls, AsText(&url))) {
            throw Refusal(Reason::kUnknownGuid, AsText(&url));
        }
    }
}

} // namespace

void AddVideo(Services& services)
{
    services["setTemplates"] = SetTemplates;
    services["mapFiles"] = MapFiles;
    services["unmapFiles"] = UnmapFiles;
}

} // namespace nexwire::simulator
