#include "tools/Repeat.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace nexwire::tools {
namespace {

using rapidjson::Value;

constexpr const char* kPage = "pageNo";

std::string Text(const Value& value)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

/// The first member that fits, in the object or in one inside it; null when there is none.
template <class Fits>
Value* Find(Value& object, const Fits& fits)
{
    if (!object.IsObject()) {
        return nullptr;
    }
    for (auto& member : object.GetObject()) {
        if (fits(std::string(member.name.GetString()), member.value)) {
            return &member.value;
        }
    }
    for (auto& member : object.GetObject()) {
        if (Value* const inner = Find(member.value, fits)) {
            return inner;
        }
    }
    return nullptr;
}

bool IsPage(const std::string& key, const Value& value)
{
    return key == kPage && value.IsInt64();
}

/// The structure that the call sends and that has a page number; its place, or the number of arguments.
std::size_t Paged(const catalogue::Call& call, rapidjson::Document& structure)
{
    const auto& arguments = call.function().Arguments();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].input() && arguments[i].type->IsStructure() &&
            !structure.Parse(call.Json(i).c_str()).HasParseError() && Find(structure, IsPage) != nullptr) {
            return i;
        }
    }
    return arguments.size();
}

} // namespace

std::int64_t PageOf(const catalogue::Call& call)
{
    rapidjson::Document structure;
    return Paged(call, structure) < call.function().Arguments().size() ? Find(structure, IsPage)->GetInt64() : 0;
}

void AskForPage(catalogue::Call& call, std::int64_t page)
{
    rapidjson::Document structure;
    const std::size_t place = Paged(call, structure);
    if (place < call.function().Arguments().size()) {
        Find(structure, IsPage)->SetInt64(page);
        std::string ignored;
        call.Set(place, Text(structure), ignored);
    }
}

bool ReadPage(const std::string& result, PageView& page)
{
    rapidjson::Document document;
    if (document.Parse<rapidjson::kParseIterativeFlag>(result.c_str()).HasParseError()) {
        return false;
    }
    const Value* const list = Find(document, [](const std::string&, const Value& value) { return value.IsArray(); });
    if (list == nullptr) {
        return false;
    }
    page = PageView();
    page.count = list->Size();
    for (const Value& element : list->GetArray()) {
        page.lines += Text(element) + "\n";
    }
    const Value* const total = Find(document, [](const std::string& key, const Value& value) {
        return key.compare(0, 5, "total") == 0 && value.IsInt64();
    });
    page.total = total == nullptr ? -1 : total->GetInt64();
    return true;
}

bool ReadProgress(const std::string& result, ProgressView& progress)
{
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag>(result.c_str());
    const Value* const percent =
        document.HasParseError() ? nullptr : Find(document, [](const std::string& key, const Value& value) {
            return (key == "progress" || key == "percent") && value.IsInt();
        });
    if (percent == nullptr) {
        return false;
    }
    const Value* const finished = Find(document, [](const std::string& key, const Value& value) {
        return (key == "finished" || key == "isFinish") && value.IsBool();
    });
    progress.percent = percent->GetInt();
    progress.finished = finished != nullptr ? finished->GetBool() : progress.percent >= 100;
    return true;
}

} // namespace nexwire::tools
