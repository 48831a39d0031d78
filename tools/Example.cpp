#include "tools/Example.h"

#include <algorithm>
#include <vector>

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>

#include "catalogue/Observed.h"
#include "tools/Console.h"

namespace nexwire::tools {
namespace {

using Allocator = rapidjson::Document::AllocatorType;

/// Writes numbers as they stood; the writer itself would quote them.
template <class Writer>
class RawNumbers : public Writer {
public:
    using Writer::Writer;
    bool RawNumber(const char* text, rapidjson::SizeType length, bool)
    {
        return Writer::RawValue(text, length, rapidjson::kNumberType);
    }
};

/// Passes JSON on to a writer without taking numbers apart.
template <class Writer>
std::string Rewrite(const std::string& json, Writer& writer, rapidjson::StringBuffer& buffer)
{
    rapidjson::Reader reader;
    rapidjson::StringStream stream(json.c_str());
    return reader.Parse<rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseIterativeFlag>(stream, writer)
               ? std::string(buffer.GetString(), buffer.GetSize())
               : json;
}

/// Whether a structure holds itself, directly or deeper, and would go on for ever.
using Outer = std::vector<std::string>;

rapidjson::Value SampleOf(const std::string& structure, Outer& outer, Allocator& allocator);

rapidjson::Value SampleOf(const catalogue::MemberView& member, Outer& outer, Allocator& allocator)
{
    rapidjson::Value value;
    if (!member.structure.empty()) {
        const bool again = std::find(outer.begin(), outer.end(), member.structure) != outer.end();
        if (member.list) {
            value.SetArray();
            if (!again) {
                value.PushBack(SampleOf(member.structure, outer, allocator), allocator);
            }
        } else if (again) {
            value.SetObject();
        } else {
            value = SampleOf(member.structure, outer, allocator);
        }
    } else if (member.list) {
        value.SetArray();
        if (member.type == "list of texts") {
            value.PushBack("", allocator);
        } else {
            value.PushBack(0, allocator);
        }
    } else if (member.limits->closed) {
        const char* const first = member.limits->values.data->value;
        value = member.limits->numbers ? rapidjson::Value(static_cast<std::int64_t>(std::stoll(first)))
                                       : rapidjson::Value(first, allocator);
    } else if (member.type == "text") {
        value.SetString("");
    } else if (member.type == "true or false") {
        value.SetBool(false);
    } else {
        value.SetInt64(member.limits->minimum.set ? member.limits->minimum.value : 0);
    }
    return value;
}

rapidjson::Value SampleOf(const std::string& structure, Outer& outer, Allocator& allocator)
{
    rapidjson::Value object(rapidjson::kObjectType);
    outer.push_back(structure);
    for (const catalogue::MemberView& member : catalogue::ViewOf(structure).members) {
        object.AddMember(rapidjson::Value(member.key.c_str(), allocator), SampleOf(member, outer, allocator),
                         allocator);
    }
    outer.pop_back();
    return object;
}

const catalogue::MemberView* Find(const catalogue::StructureView& view, const char* key)
{
    for (const catalogue::MemberView& member : view.members) {
        if (member.key == key) {
            return &member;
        }
    }
    return nullptr;
}

void Fill(rapidjson::Value& object, const std::string& structure, Outer& outer, Allocator& allocator)
{
    const catalogue::StructureView view = catalogue::ViewOf(structure);
    outer.push_back(structure);
    for (auto& entry : object.GetObject()) {
        const catalogue::MemberView* const member = Find(view, entry.name.GetString());
        if (member == nullptr) {
            continue;
        }
        if (member->list && entry.value.IsArray()) {
            if (entry.value.Empty()) {
                entry.value = SampleOf(*member, outer, allocator);
            } else if (!member->structure.empty()) {
                for (rapidjson::Value& element : entry.value.GetArray()) {
                    if (element.IsObject()) {
                        Fill(element, member->structure, outer, allocator);
                    }
                }
            }
        } else if (!member->structure.empty() && entry.value.IsObject()) {
            Fill(entry.value, member->structure, outer, allocator);
        }
    }
    outer.pop_back();
}

/// The object that has the structure's members.
rapidjson::Value* MembersIn(rapidjson::Value& value, const catalogue::StructureView& view)
{
    if (!value.IsObject()) {
        return nullptr;
    }
    if (!view.rootName.empty() && value.MemberCount() == 1 && value.MemberBegin()->value.IsObject() &&
        value.MemberBegin()->name.GetString() == view.rootName) {
        return &value.MemberBegin()->value;
    }
    return &value;
}

struct Line {
    std::string text;
    std::string comment;
};

class Commenter {
public:
    void Value(const rapidjson::Value& value, const std::string& structure, const std::string& root, std::size_t depth,
               const std::string& before, const std::string& after, const std::string& comment)
    {
        const std::string indent(depth * 2, ' ');
        if (value.IsObject() && value.MemberCount() > 0) {
            lines_.push_back({indent + before + "{", comment});
            const catalogue::StructureView view = catalogue::ViewOf(structure);
            std::size_t left = value.MemberCount();
            for (const auto& entry : value.GetObject()) {
                const std::string key = entry.name.GetString();
                const bool wraps = !root.empty() && key == root && value.MemberCount() == 1;
                const catalogue::MemberView* const member = wraps ? nullptr : Find(view, key.c_str());
                const std::string inner = wraps ? structure : member == nullptr ? "" : member->structure;
                const std::string doc = wraps ? view.doc : member == nullptr ? "" : member->doc;
                Value(entry.value, inner, "", depth + 1, Text(entry.name) + ": ", --left > 0 ? "," : "", doc);
            }
            lines_.push_back({indent + "}" + after, ""});
        } else if (value.IsArray() && !value.Empty() && (value[0].IsObject() || value[0].IsArray())) {
            lines_.push_back({indent + before + "[", comment});
            rapidjson::SizeType left = value.Size();
            for (const rapidjson::Value& element : value.GetArray()) {
                Value(element, structure, "", depth + 1, "", --left > 0 ? "," : "", "");
            }
            lines_.push_back({indent + "]" + after, ""});
        } else {
            lines_.push_back({indent + before + Text(value) + after, comment});
        }
    }

    /// Comments stand in one column, or above their line when there is no room beside it.
    std::string Finished() const
    {
        constexpr std::size_t kWidth = 110;
        constexpr std::size_t kColumn = 44;
        std::size_t column = 0;
        for (const Line& line : lines_) {
            if (!line.comment.empty() && Width(line.text) <= kColumn) {
                column = std::max(column, Width(line.text));
            }
        }
        std::string text;
        for (const Line& line : lines_) {
            std::string comment = line.comment;
            std::replace(comment.begin(), comment.end(), '\n', ' ');
            if (comment.empty()) {
                text += line.text + "\n";
            } else if (std::max(column, Width(line.text)) + 5 + Width(comment) <= kWidth) {
                text += Padded(line.text, column) + "  // " + comment + "\n";
            } else {
                const std::string indent(line.text.find_first_not_of(' '), ' ');
                text += Wrapped(comment, kWidth - 3 - indent.size(), indent + "// ") + line.text + "\n";
            }
        }
        return text;
    }

private:
    static std::string Text(const rapidjson::Value& value)
    {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        value.Accept(writer);
        return std::string(buffer.GetString(), buffer.GetSize());
    }

    std::vector<Line> lines_;
};

} // namespace

std::string Pretty(const std::string& json)
{
    rapidjson::StringBuffer buffer;
    RawNumbers<rapidjson::PrettyWriter<rapidjson::StringBuffer>> writer(buffer);
    writer.SetIndent(' ', 2);
    return Rewrite(json, writer, buffer);
}

std::string Compact(const std::string& json)
{
    rapidjson::StringBuffer buffer;
    RawNumbers<rapidjson::Writer<rapidjson::StringBuffer>> writer(buffer);
    return Rewrite(json, writer, buffer);
}

std::string Sample(const std::string& structure)
{
    rapidjson::Document document;
    Outer outer;
    const rapidjson::Value sample = SampleOf(structure, outer, document.GetAllocator());
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    sample.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

std::string Filled(const std::string& json, const std::string& structure)
{
    rapidjson::Document document;
    if (document.Parse(json.c_str()).HasParseError()) {
        return json;
    }
    rapidjson::Value* const members = MembersIn(document, catalogue::ViewOf(structure));
    if (members != nullptr) {
        Outer outer;
        Fill(*members, structure, outer, document.GetAllocator());
    }
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    document.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

std::string Commented(const std::string& json, const std::string& structure)
{
    rapidjson::Document document;
    if (document.Parse(json.c_str()).HasParseError()) {
        return json + "\n";
    }
    Commenter commenter;
    commenter.Value(document, structure, catalogue::ViewOf(structure).rootName, 0, "", "", "");
    return commenter.Finished();
}

} // namespace nexwire::tools
