// Makes one table of what the programs measured: report OUTPUT.json HISTORY FILE...
//
// A file is either Google Benchmark's JSON or, ending in ".tsv", lines of "name value unit peer ratio bar" with "-" for
// what a line does not have; a bar says of the ratio, or of the value where there is none, that it is "<=" or ">="
// something. The history has one line of JSON for each run on this machine; what is found there is printed beside, and
// this run is added.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;

struct Row {
    std::string name;
    double value = 0.0;
    std::string unit;
    std::string peer;
    std::optional<double> ratio; ///< How many times as fast as the peer, unless the name says otherwise.
    std::optional<double> bar;
    bool atMost = false; ///< The bar is an upper one.

    double Judged() const { return ratio ? *ratio : value; }
    bool Met() const
    {
        // As it is printed, not by a digit that nobody sees.
        const double shown = std::round(Judged() * 100) / 100;
        return atMost ? shown <= *bar : shown >= *bar;
    }
};

/// All repetitions of one measurement.
struct Runs {
    double perSecond = 0.0; ///< Of the best: whatever else the machine does only ever takes time.
    std::map<std::string, std::vector<double>> counters;
    std::string label;
};

class Report {
public:
    bool Load(const std::string& path)
    {
        std::ifstream file(path);
        if (!file) {
            std::cerr << "report: cannot read " << path << "\n";
            return false;
        }
        if (path.size() > 4 && path.compare(path.size() - 4, 4, ".tsv") == 0) {
            LoadLines(file);
            return true;
        }
        const json document = json::parse(file);
        for (const json& run : document.at("benchmarks")) {
            if (run.at("run_type") != "iteration") {
                continue;
            }
            const std::string name = run.at("name");
            if (run.value("error_occurred", false)) {
                std::cerr << "report: " << name << ": " << run.value("error_message", "failed") << "\n";
                return false;
            }
            Runs& runs = runs_[name];
            runs.label = run.value("label", "");
            runs.perSecond = std::max(runs.perSecond, run.value("items_per_second", 0.0));
            for (const char* counter : {"turn_own", "turn_ratio", "turn_bar", "turn_held"}) {
                if (run.contains(counter)) {
                    runs.counters[counter].push_back(run.at(counter));
                }
            }
        }
        return true;
    }

    void Build()
    {
        Lists("read/", "typed read", {{"nlohmann", 2.3}, {"rapidjson", 0}, {"simdjson", 0.7}});
        Lists("read-arena/", "typed read, arena", {{"nlohmann", 4.5}, {"rapidjson", 1.0}, {"simdjson", 0.7}});
        for (const auto& [title, group, nlohmann, rapidjson] :
             {std::tuple{"request body of 1000", "write/", 1.9, 0.6},
              std::tuple{"request body of 1000, arena", "write-arena/", 1.9, 0.8}}) {
            const std::string own = group;
            Compare(title, own + "nexwire/1000", "nlohmann", own + "nlohmann/1000", nlohmann);
            Compare(title, own + "nexwire/1000", "rapidjson", own + "rapidjson/1000", rapidjson);
        }
        Calls();
        TurnByTurn();
        rows_.insert(rows_.end(), lines_.begin(), lines_.end());
    }

    void Print() const
    {
        std::printf("%-44s %12s %-6s %-18s %7s %9s  %-3s %s\n", "", "value", "unit", "peer", "ratio", "bar", "met",
                    "before");
        for (const Row& row : rows_) {
            std::printf("%-44s %12.*f %-6s %-18s", row.name.c_str(), row.value < 100 ? 3 : 0, row.value,
                        row.unit.c_str(), row.peer.c_str());
            row.ratio ? std::printf(" %7.2f", *row.ratio) : std::printf(" %7s", "");
            if (row.bar) {
                std::printf(" %s%7.2f  %-3s", row.atMost ? "<=" : ">=", *row.bar, row.Met() ? "yes" : "NO");
            } else {
                std::printf(" %9s  %-3s", "", "");
            }
            const auto before = before_.find(row.name + "|" + row.peer);
            if (before != before_.end()) {
                std::printf(" %.2f", Median(before->second));
            }
            std::printf("\n");
        }
    }

    /// What the last runs on this machine gave.
    void LoadHistory(const std::string& path)
    {
        constexpr std::size_t kRuns = 5;
        std::vector<json> runs;
        std::ifstream file(path);
        for (std::string line; std::getline(file, line);) {
            const json run = json::parse(line, nullptr, false);
            if (run.is_object()) {
                runs.push_back(run);
            }
        }
        for (std::size_t i = runs.size() - std::min(runs.size(), kRuns); i < runs.size(); ++i) {
            for (const auto& [name, value] : runs[i].items()) {
                before_[name].push_back(value);
            }
        }
    }

    bool AddToHistory(const std::string& path) const
    {
        json run = json::object();
        for (const Row& row : rows_) {
            run[row.name + "|" + row.peer] = row.Judged();
        }
        std::ofstream file(path, std::ios::app);
        file << run.dump() << "\n";
        return file.good();
    }

    bool Write(const std::string& path) const
    {
        nlohmann::ordered_json all = nlohmann::ordered_json::array();
        for (const Row& row : rows_) {
            nlohmann::ordered_json one;
            one["name"] = row.name;
            one["value"] = row.value;
            one["unit"] = row.unit;
            one["peer"] = row.peer.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(row.peer);
            one["ratio"] = row.ratio ? nlohmann::ordered_json(*row.ratio) : nlohmann::ordered_json();
            if (row.bar) {
                one["bar"] = *row.bar;
                one["met"] = row.Met();
            }
            all.push_back(one);
        }
        std::ofstream file(path);
        file << all.dump(2) << "\n";
        return file.good();
    }

private:
    void LoadLines(std::istream& file)
    {
        std::string line;
        while (std::getline(file, line)) {
            std::istringstream fields(line);
            Row row;
            std::string value;
            std::string ratio;
            if (std::getline(fields, row.name, '\t') && std::getline(fields, value, '\t') &&
                std::getline(fields, row.unit, '\t') && std::getline(fields, row.peer, '\t') &&
                std::getline(fields, ratio, '\t')) {
                row.value = std::stod(value);
                row.peer = row.peer == "-" ? "" : row.peer;
                if (ratio != "-") {
                    row.ratio = std::stod(ratio);
                }
                std::string bar;
                if (std::getline(fields, bar, '\t') && bar.size() > 2) {
                    row.atMost = bar[0] == '<';
                    row.bar = std::stod(bar.substr(2));
                }
                lines_.push_back(row);
            }
        }
    }

    /// Microseconds per item in the best run; 0 when it was not measured.
    double Best(const std::string& name) const
    {
        const auto found = runs_.find(name);
        return found == runs_.end() || found->second.perSecond <= 0 ? 0.0 : 1e6 / found->second.perSecond;
    }

    static double Median(std::vector<double> values)
    {
        std::sort(values.begin(), values.end());
        return values[values.size() / 2];
    }

    void Add(Row row, double ratio, double bar, bool atMost = false)
    {
        row.ratio = ratio;
        if (bar > 0) {
            row.bar = bar;
        }
        row.atMost = atMost;
        rows_.push_back(std::move(row));
    }

    void Compare(const std::string& name, const std::string& own, const std::string& peer, const std::string& other,
                 double bar)
    {
        const double mine = Best(own);
        const double theirs = Best(other);
        if (mine > 0 && theirs > 0) {
            Add({name, mine, "us/el", peer, {}, {}}, theirs / mine, bar);
        }
    }

    void Lists(const std::string& group, const std::string& title,
               const std::vector<std::pair<std::string, double>>& peers)
    {
        for (const char* size : {"100", "5000", "100000"}) {
            for (const auto& [peer, bar] : peers) {
                // Beside simdjson 5,000 count: with 100 the call itself does, with 100,000 the memory of the machine.
                const bool counts = peer != "simdjson" || std::string(size) == "5000";
                Compare(title + ", " + size, group + "nexwire/" + size, peer, group + peer + "/" + size,
                        counts ? bar : 0);
            }
        }
        // With the list's length grows what the memory takes; whoever reads has to bear that.
        const auto growth = [&](const std::string& reader) {
            const double small = Best(group + reader + "/5000");
            return small > 0 ? Best(group + reader + "/100000") / small : 0.0;
        };
        if (growth("nexwire") > 0 && growth("simdjson") > 0) {
            Add({title + ", growth from 5000 to 100000", growth("nexwire"), "times", "simdjson's growth", {}, {}},
                growth("nexwire") / growth("simdjson"), 1.0, true);
        }
    }

    void Calls()
    {
        const auto name = [](const char* what, int threads) {
            return std::string("call/") + what + "/real_time/threads:" + std::to_string(threads);
        };
        const double own = Best(name("nexwire", 1));
        if (own <= 0) {
            return;
        }
        for (const int threads : {2, 4}) {
            const double gain = own / Best(name("nexwire", threads));
            const double possible = Best(name("machine", 1)) / Best(name("machine", threads));
            const std::string title = "small call, " + std::to_string(threads) + " threads";
            Add({title + ", gain over 1", Best(name("nexwire", threads)), "us", "1 thread", {}, {}}, gain, 0);
            // Whatever else runs on the machine takes its share of the further processors; work that shares nothing
            // tells what is left of them. Told as if that were two whole ones.
            if (threads == 2) {
                Add({title + ", gain with both free", possible, "times", "unrelated work", {}, {}}, 2 * gain / possible,
                    1.9);
            }
        }
    }

    /// Programs in which library and peer take turns and that say their bars themselves. Their label is "unit|peer".
    void TurnByTurn()
    {
        for (const auto& [name, runs] : runs_) {
            const auto bar = runs.counters.find("turn_bar");
            if (bar == runs.counters.end()) {
                continue;
            }
            const std::string title = name.substr(0, std::min(name.find("/iterations:"), name.rfind("/real_time")));
            const std::size_t cut = runs.label.find('|');
            // An upper bar is said with a minus.
            const double reach = Median(bar->second);
            Add({title,
                 Median(runs.counters.at("turn_own")),
                 runs.label.substr(0, cut),
                 runs.label.substr(cut + 1),
                 {},
                 {}},
                Median(runs.counters.at("turn_ratio")), std::abs(reach), reach < 0);
            const auto held = runs.counters.find("turn_held");
            if (held != runs.counters.end()) {
                const double most = *std::max_element(held->second.begin(), held->second.end());
                Add({title + ", memory (ratio: MiB)", most, "MiB", "", {}, {}}, most, 32, true);
            }
        }
    }

    std::map<std::string, Runs> runs_;
    std::map<std::string, std::vector<double>> before_; ///< By name and peer, oldest first.
    std::vector<Row> lines_;
    std::vector<Row> rows_;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc < 4) {
        std::cerr << "usage: bench_report OUTPUT.json HISTORY FILE...\n";
        return 2;
    }
    try {
        Report report;
        for (int i = 3; i < argc; ++i) {
            if (!report.Load(argv[i])) {
                return 1;
            }
        }
        report.Build();
        report.LoadHistory(argv[2]);
        report.Print();
        return report.Write(argv[1]) && report.AddToHistory(argv[2]) ? 0 : 1;
    } catch (const std::exception& problem) {
        std::cerr << "report: " << problem.what() << "\n";
        return 1;
    }
}
