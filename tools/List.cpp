#include <algorithm>

#include "catalogue/Find.h"
#include "catalogue/Observed.h"
#include "tools/Commands.h"
#include "tools/Verbs.h"

namespace nexwire {
namespace tools {
namespace {

bool HoldsAll(const std::string& text, const std::vector<std::string>& words)
{
    return std::all_of(words.begin(), words.end(),
                       [&](const std::string& word) { return text.find(word) != std::string::npos; });
}

struct Row {
    std::string module;
    std::string name;
    std::string wire;
};

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

} // namespace

int List(const ListOptions& options, const Style& style)
{
    std::vector<std::string> words;
    for (const std::string& word : options.words) {
        words.push_back(catalogue::LowerCase(word));
    }
    std::vector<Row> rows;
    if (options.namesOnly) {
        for (const catalogue::Function& function : catalogue::All()) {
            const std::string name = catalogue::UniqueName(function);
            if (HoldsAll(catalogue::SearchText(function), words)) {
                rows.push_back({"", name, ""});
            }
        }
    } else {
        catalogue::Observer observer;
        for (const catalogue::Function& function : catalogue::All()) {
            const catalogue::Observed observed = observer.Observe(function);
            const std::string text =
                catalogue::SearchText(function) + " " +
                catalogue::LowerCase(observed.path + " " + observed.bodyStructure + " " + Wire(observed));
            if (HoldsAll(text, words)) {
                rows.push_back({function.Module(), observed.name, Wire(observed)});
            }
        }
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
    Print(text);
    return kDone;
}

} // namespace tools
} // namespace nexwire
