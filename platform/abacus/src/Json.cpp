#include <rapidjson/document.h>

#include "Reader.h"

namespace Abacus {
namespace {

std::string_view View(const rapidjson::Value& text)
{
    return {text.GetString(), text.GetStringLength()};
}

class JsonNode {
public:
    explicit JsonNode(const rapidjson::Value& value) : value_(&value) {}

    void Bool(bool& value) const
    {
        if (value_->IsBool()) {
            value = value_->GetBool();
        }
    }

    bool Int(std::int64_t& value) const
    {
        if (!value_->IsInt64()) {
            return false;
        }
        value = value_->GetInt64();
        return true;
    }

    bool Text(std::string& value) const
    {
        if (!value_->IsString()) {
            return false;
        }
        value = View(*value_);
        return true;
    }

    void ReadRange(Range& range) const
    {
        EachChild([&](std::string_view name, const JsonNode& child) {
            if (name == "min" || name == "max") {
                range.given = child.Int(name == "min" ? range.min : range.max) || range.given;
            }
        });
    }

    void ReadOptions(Options& options) const
    {
        EachChild([&](std::string_view name, const JsonNode& child) {
            if (name == "default") {
                child.Text(options.defaultOption);
            } else if (name == "options") {
                child.EachElement({}, [&](const JsonNode& word) {
                    if (word.value_->IsString()) {
                        options.options.emplace_back(View(*word.value_));
                    }
                });
            }
        });
    }

    template <class Step>
    void EachChild(const Step& step) const
    {
        if (value_->IsObject()) {
            for (const auto& member : value_->GetObject()) {
                step(View(member.name), JsonNode(member.value));
            }
        }
    }

    template <class Step>
    void EachElement(std::string_view, const Step& step) const
    {
        if (value_->IsArray()) {
            for (const rapidjson::Value& element : value_->GetArray()) {
                step(JsonNode(element));
            }
        }
    }

    template <class Step>
    void EachNode(const Step& step) const
    {
        EachChild([&](std::string_view, const JsonNode& child) { step(child); });
        EachElement({}, step);
    }

private:
    const rapidjson::Value* value_;
};

} // namespace

bool ReadJson(const std::string& document, const Table& table, char* structure)
{
    rapidjson::Document tree;
    tree.Parse<rapidjson::kParseIterativeFlag>(document.data(), document.size());
    if (tree.HasParseError() || !tree.IsObject() || tree.MemberCount() != 1) {
        return false;
    }
    const auto& root = *tree.MemberBegin();
    if (View(root.name) != table.root || !root.value.IsObject() || !IsShallow(JsonNode(root.value), kMaxDepth)) {
        return false;
    }
    ReadStructure(JsonNode(root.value), table, structure);
    return true;
}

} // namespace Abacus
