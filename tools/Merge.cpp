#include "tools/Merge.h"

#include <algorithm>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace nexwire::tools {
namespace {

using catalogue::Argument;
using catalogue::Function;
using catalogue::Shape;

std::string Written(const rapidjson::Value& value)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return buffer.GetString();
}

void Lay(rapidjson::Value& whole, rapidjson::Value& change, rapidjson::Document::AllocatorType& memory)
{
    if (!whole.IsObject() || !change.IsObject()) {
        whole = change;
        return;
    }
    for (auto& member : change.GetObject()) {
        const auto found = whole.FindMember(member.name);
        if (found == whole.MemberEnd()) {
            whole.AddMember(member.name, member.value, memory);
        } else {
            Lay(found->value, member.value, memory);
        }
    }
}

/// Whether a function asks for something, so that what is missing in its structures is just not asked for.
bool Asks(const Function& function)
{
    const std::string member = catalogue::LowerCase(function.Member());
    const std::string type = catalogue::LowerCase(function.ClassName());
    for (const std::string word : {"query", "search", "get", "find"}) {
        if (member.compare(0, word.size(), word) == 0 ||
            type.compare(type.front() == 'c' ? 1 : 0, word.size(), word) == 0) {
            return true;
        }
    }
    return false;
}

/// The JSON that was given for an argument, without its root name; empty when there was none.
std::string GivenFor(const Function& function, std::size_t index, const catalogue::Given& given)
{
    std::string text;
    bool others = false;
    for (const auto& value : given.values) {
        const std::size_t named = function.ArgumentNamed(value.first);
        if (named == index) {
            text = value.second;
        } else if (named != Function::kNoArgument && function.Arguments()[named].type->shape == Shape::Structure) {
            others = true;
        }
    }
    if (text.empty() && given.hasBody && !others) {
        text = given.body;
    }
    rapidjson::Document document;
    document.Parse(text.c_str(), text.size());
    if (document.HasParseError() || !document.IsObject()) {
        return std::string();
    }
    const char* const root = function.Arguments()[index].type->fields()->rootName;
    if (root != nullptr && document.MemberCount() == 1 && document.HasMember(root) && document[root].IsObject()) {
        return Written(document[root]);
    }
    return text;
}

} // namespace

std::vector<PartialStructure> PartialStructures(const catalogue::Call& call, const catalogue::Given& given)
{
    std::vector<PartialStructure> partials;
    const Function& function = call.function();
    if (Asks(function)) {
        return partials;
    }
    for (std::size_t i = 0; i < function.Arguments().size(); ++i) {
        const Argument& argument = function.Arguments()[i];
        if (argument.type->shape != Shape::Structure || !argument.input()) {
            continue;
        }
        PartialStructure partial;
        partial.argument = i;
        partial.name = argument.type->name();
        partial.given = GivenFor(function, i, given);
        rapidjson::Document document;
        document.Parse(partial.given.c_str(), partial.given.size());
        if (document.HasParseError() || !document.IsObject()) {
            continue;
        }
        for (const core::Field& field : *argument.type->fields()) {
            if (!document.HasMember(field.key)) {
                partial.missing.emplace_back(field.key);
            }
        }
        if (!partial.missing.empty()) {
            partials.push_back(std::move(partial));
        }
    }
    return partials;
}

std::unique_ptr<catalogue::Call> ReaderOf(const catalogue::Call& call, const PartialStructure& partial,
                                          const catalogue::Given& given)
{
    const Function& changes = call.function();
    const core::FieldTable* const fields = changes.Arguments()[partial.argument].type->fields();
    std::unique_ptr<catalogue::Call> best;
    std::size_t bestRank = 0;
    for (const Function& function : catalogue::All()) {
        if (&function == &changes || function.Module() != changes.Module()) {
            continue;
        }
        auto reader = std::make_unique<catalogue::Call>(function);
        std::size_t rank = function.ClassName() == changes.ClassName() ? 100 : 1;
        bool reads = false;
        bool fits = true;
        for (std::size_t i = 0; i < function.Arguments().size() && fits; ++i) {
            const Argument& argument = function.Arguments()[i];
            if (argument.output && argument.type->shape == Shape::Structure && argument.type->fields() == fields) {
                reads = true;
                continue;
            }
            if (argument.output) {
                continue;
            }
            // Plain arguments of the same name and type: the same device, the same door.
            const std::size_t same = changes.ArgumentNamed(argument.name);
            const auto value = std::find_if(given.values.begin(), given.values.end(), [&](const auto& each) {
                return changes.ArgumentNamed(each.first) == same;
            });
            std::string ignored;
            fits = same != Function::kNoArgument && value != given.values.end() && NeedsName(argument.type->shape) &&
                   reader->Set(i, value->second, ignored);
            ++rank;
        }
        if (reads && fits && rank > bestRank) {
            bestRank = rank;
            best = std::move(reader);
        }
    }
    return best;
}

std::string Merged(const std::string& whole, const std::string& change)
{
    rapidjson::Document document;
    document.Parse(whole.c_str(), whole.size());
    rapidjson::Document over(&document.GetAllocator());
    over.Parse(change.c_str(), change.size());
    Lay(document, over, document.GetAllocator());
    return Written(document);
}

} // namespace nexwire::tools
