#include <algorithm>
#include <cctype>
#include <map>

#include "catalogue/Comments.h"
#include "catalogue/Find.h"
#include "catalogue/Observed.h"
#include "tools/Commands.h"
#include "tools/Example.h"
#include "tools/Json.h"
#include "tools/Verbs.h"

namespace nexwire::tools {
namespace {

bool HoldsAll(const std::string& text, const std::vector<std::string>& words)
{
    return std::all_of(words.begin(), words.end(),
                       [&](const std::string& word) { return text.find(word) != std::string::npos; });
}

/// Whether a text holds a word by itself: "put", but not in "output".
bool HoldsWord(const std::string& text, const std::string& word)
{
    const auto inWord = [&](std::size_t at) {
        return at < text.size() && std::isalnum(static_cast<unsigned char>(text[at])) != 0;
    };
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        if ((at == 0 || !inWord(at - 1)) && !inWord(at + word.size())) {
            return true;
        }
    }
    return false;
}

struct Row {
    std::string module;
    std::string name;
    std::string wire;
    std::string json;
};

/// Keys and comments of structures in small letters, each structure read once.
class MemberTexts {
public:
    struct Texts {
        std::string keys;
        std::string docs;
    };

    Texts Of(const std::vector<std::string>& structures)
    {
        Texts texts;
        for (const std::string& name : catalogue::Reachable(structures)) {
            Texts& known = texts_[name];
            if (known.keys.empty()) {
                const catalogue::StructureView view = catalogue::ViewOf(name);
                known.docs = view.doc;
                for (const catalogue::MemberView& member : view.members) {
                    known.keys += " " + member.key;
                    known.docs += " " + member.doc;
                }
                known.keys = catalogue::LowerCase(known.keys + " " + name);
                known.docs = catalogue::LowerCase(known.docs);
            }
            texts.keys += " " + known.keys;
            texts.docs += " " + known.docs;
        }
        return texts;
    }

private:
    std::map<std::string, Texts> texts_;
};

std::string Described(const catalogue::Function& function)
{
    const catalogue::FunctionDoc doc = catalogue::DocOfFunction(function);
    return catalogue::LowerCase(" " + doc.text + " " + doc.returns + " " + catalogue::DocOfClass(function.ClassName()));
}

std::string Wire(const catalogue::Observed& observed)
{
    if (!observed.sent) {
        return "sends nothing";
    }
    std::string text = observed.direct ? "video wall" : std::to_string(observed.request.method);
    text += " " + Padded(VerbOf(observed.request.method), 6) + " " + observed.path;
    if (observed.passThrough && observed.command != 0) {
        text += "  command " + std::to_string(observed.command);
    }
    return text;
}

std::string AsJson(const catalogue::Observed& observed)
{
    return JsonObject()
        .Text("function", observed.name)
        .Text("module", observed.function->Module())
        .Bool("videoWall", observed.direct)
        .Number("method", observed.request.method)
        .Text("verb", observed.sent ? VerbOf(observed.request.method) : "")
        .Text("path", observed.path)
        .Number("command", observed.passThrough ? observed.command : 0)
        .Text("body", observed.bodyStructure)
        .Text("result", observed.outputStructure)
        .Done();
}

} // namespace

int List(const ListOptions& options, const Style& style)
{
    std::vector<std::string> words;
    for (const std::string& word : options.words) {
        words.push_back(catalogue::LowerCase(word));
    }
    std::vector<Row> rows;
    MemberTexts members;
    if (options.namesOnly && words.empty()) {
        for (const catalogue::Function& function : catalogue::All()) {
            rows.push_back({"", catalogue::UniqueName(function), "", ""});
        }
    } else {
        catalogue::Observer observer;
        for (const catalogue::Function& function : catalogue::All()) {
            const catalogue::Observed observed = observer.Observe(function);
            const std::string text =
                catalogue::SearchText(function) + " " +
                catalogue::LowerCase(observed.path + " " + observed.bodyStructure + " " + Wire(observed));
            const auto found = [&] {
                const MemberTexts::Texts inside = members.Of(catalogue::StructuresOf(observed));
                const std::string docs = Described(function) + " " + inside.docs;
                return std::all_of(words.begin(), words.end(), [&](const std::string& word) {
                    return (text + inside.keys).find(word) != std::string::npos || HoldsWord(docs, word);
                });
            };
            if (HoldsAll(text, words) || found()) {
                rows.push_back({options.namesOnly ? "" : function.Module(), observed.name, Wire(observed),
                                options.json ? AsJson(observed) : ""});
            }
        }
    }
    if (options.json) {
        const int written = Output(
            Pretty(JsonArray(
                rows, [](const Row& row) { return row.json.empty() ? catalogue::WriteText(row.name) : row.json; })) +
            "\n");
        return written != kDone ? written : rows.empty() ? kFalse : kDone;
    }
    std::size_t width = 0;
    for (const Row& row : rows) {
        width = std::max(width, std::min<std::size_t>(Width(row.name), 60));
    }
    std::string text;
    std::string module;
    for (const Row& row : rows) {
        if (row.module != module) {
            text += (module.empty() ? "" : "\n") + style.Heading(row.module) + "\n";
            module = row.module;
        }
        if (options.namesOnly) {
            text += row.name + "\n";
        } else {
            const std::string padding = Padded(row.name, width).substr(row.name.size());
            text += "  " + style.Name(row.name) + padding + "  " + row.wire + "\n";
        }
    }
    if (rows.empty()) {
        Complain("no function has all of these words");
        return kFalse;
    }
    return Output(text);
}

} // namespace nexwire::tools
