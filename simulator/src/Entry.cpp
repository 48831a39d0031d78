#include "src/Entry.h"

#include <algorithm>

namespace nexwire::simulator {

std::vector<std::string> Texts(const Json* list)
{
    std::vector<std::string> texts;
    if (list == nullptr) {
        return texts;
    }
    if (list->IsString()) {
        texts.emplace_back(AsText(list));
        return texts;
    }
    if (!list->IsArray()) {
        throw std::runtime_error("expected a text or a list of texts");
    }
    for (const Json& text : list->GetArray()) {
        if (!text.IsString()) {
            throw std::runtime_error("expected a list of texts");
        }
        texts.emplace_back(AsText(&text));
    }
    return texts;
}

void OnlyMembers(const Json& object, std::initializer_list<std::string_view> allowed)
{
    if (!object.IsObject()) {
        throw std::runtime_error("expected an object");
    }
    for (const auto& member : object.GetObject()) {
        const std::string_view name = AsText(&member.name);
        if (std::find(allowed.begin(), allowed.end(), name) == allowed.end()) {
            throw std::runtime_error("unknown member \"" + std::string(name) + "\"");
        }
    }
}

std::string NeedText(const Json& object, std::string_view name)
{
    const std::string_view text = AsText(Member(object, name));
    if (text.empty()) {
        throw std::runtime_error("missing \"" + std::string(name) + "\"");
    }
    return std::string(text);
}

std::vector<Reference> References(const Json* entry)
{
    std::vector<Reference> references;
    ForMembers(entry, [&](const std::string& path, const Json& collection) {
        references.push_back({path, std::string(AsText(&collection))});
    });
    return references;
}

} // namespace nexwire::simulator
