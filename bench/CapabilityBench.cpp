// A capability document into its structure, beside bare pugixml that parses the same text and picks the same members by
// hand; turn by turn in one run.

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

#include <abacus/Abacus.h>
#include <benchmark/benchmark.h>
#include <pugixml.hpp>

namespace {

using Clock = std::chrono::steady_clock;

std::string MakeDocument(int windows)
{
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Page version=\"2.0\">\n"
        "    <nameLength min=\"1\" max=\"64\"/>\n    <playMode options=\"auto,fixed\" default=\"auto\"/>\n"
        "    <playDurationS min=\"1\" max=\"86400\"/>\n    <windowNum min=\"0\" max=\"16\"/>\n"
        "    <windowList>\n";
    for (int i = 0; i < windows; ++i) {
        text +=
            "        <window>\n            <materialType options=\"picture,video,audio,document,webPage\"/>\n"
            "            <num min=\"0\" max=\"" +
            std::to_string(i) +
            "\"/>\n            <width min=\"16\" max=\"7680\"/>\n            <height min=\"16\" max=\"4320\"/>\n"
            "            <materialNum min=\"1\" max=\"64\"/>\n            <switchEffect>\n"
            "                <effect options=\"none,random,fade,wipe\" default=\"none\"/>\n"
            "                <durationS min=\"1\" max=\"86400\"/>\n            </switchEffect>\n        </window>\n";
    }
    return text +
           "    </windowList>\n    <textStyle>\n        <fontSize min=\"8\" max=\"256\"/>\n"
           "        <isSptColor>true</isSptColor>\n    </textStyle>\n    <isSptOverlap>true</isSptOverlap>\n</Page>\n";
}

void PickRange(const pugi::xml_node& node, Abacus::Range& range)
{
    range.min = node.attribute("min").as_llong();
    range.max = node.attribute("max").as_llong();
    range.given = !node.empty();
}

void PickOptions(const pugi::xml_node& node, Abacus::Options& options)
{
    const char* text = node.attribute("options").value();
    while (*text != '\0') {
        const char* end = text;
        while (*end != '\0' && *end != ',') {
            ++end;
        }
        options.options.emplace_back(text, end);
        text = *end == ',' ? end + 1 : end;
    }
    options.defaultOption = node.attribute("default").value();
}

bool PickByHand(const std::string& text, Abacus::Page& page)
{
    pugi::xml_document document;
    if (!document.load_buffer(text.data(), text.size())) {
        return false;
    }
    const pugi::xml_node root = document.child("Page");
    PickRange(root.child("nameLength"), page.nameLength);
    PickOptions(root.child("playMode"), page.playMode);
    PickRange(root.child("playDurationS"), page.playDurationS);
    PickRange(root.child("windowNum"), page.windowNum);
    for (const pugi::xml_node node : root.child("windowList").children("window")) {
        Abacus::PageWindow& window = page.windowList.emplace_back();
        PickOptions(node.child("materialType"), window.materialType);
        PickRange(node.child("num"), window.num);
        PickRange(node.child("width"), window.width);
        PickRange(node.child("height"), window.height);
        PickRange(node.child("materialNum"), window.materialNum);
        const pugi::xml_node effect = node.child("switchEffect");
        PickOptions(effect.child("effect"), window.switchEffect.effect);
        PickRange(effect.child("durationS"), window.switchEffect.durationS);
    }
    const pugi::xml_node style = root.child("textStyle");
    PickRange(style.child("fontSize"), page.textStyle.fontSize);
    page.textStyle.isSptColor = style.child("isSptColor").text().as_bool();
    page.isSptOverlap = root.child("isSptOverlap").text().as_bool();
    return true;
}

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

template <class Read>
void Time(std::vector<double>& times, bool& good, std::size_t windows, const Read& read)
{
    const Clock::time_point start = Clock::now();
    Abacus::Page page;
    good = read(page) && good && page.windowList.size() == windows && page.textStyle.fontSize.max == 256;
    benchmark::DoNotOptimize(page);
    times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
}

void Capability(benchmark::State& state)
{
    const auto windows = static_cast<std::size_t>(state.range(0));
    const std::string text = MakeDocument(static_cast<int>(windows));
    std::vector<double> own;
    std::vector<double> peer;
    bool good = true;
    for (auto _ : state) {
        Time(own, good, windows, [&](Abacus::Page& page) { return page.Parse(text); });
        Time(peer, good, windows, [&](Abacus::Page& page) { return PickByHand(text, page); });
    }
    if (!good) {
        state.SkipWithError("read something else");
        return;
    }
    state.counters["turn_own"] = Median(own);
    state.counters["turn_ratio"] = Median(peer) / Median(own);
    state.counters["turn_bar"] = 0.7;
    state.SetLabel("us|bare pugixml");
}

BENCHMARK(Capability)->Name("capability document, windows")->Arg(8)->Arg(200)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
