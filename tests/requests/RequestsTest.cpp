#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

#include <gtest/gtest.h>
#include <keel/Log.h>

#include "requests/RowRun.h"

namespace requests {
namespace {

std::vector<std::string> Modules()
{
    std::vector<std::string> modules;
    for (const auto& entry : std::filesystem::directory_iterator(NEXWIRE_ROWS)) {
        if (entry.path().extension() == ".txt" && entry.path().stem() != "CMakeLists") {
            modules.push_back(entry.path().stem().string());
        }
    }
    std::sort(modules.begin(), modules.end());
    return modules;
}

class Requests : public testing::TestWithParam<std::string> {
protected:
    Requests()
    {
        Keel::details::LogConfig quiet;
        quiet.level = Keel::details::LogLevel::Off;
        quiet.console = false;
        Keel::CSingleton<Keel::details::CLog>::Instance().Configure(quiet);
    }
};

TEST_P(Requests, StandAsTheirRowsSay)
{
    const Rows rows = ReadRows(std::string(NEXWIRE_ROWS) + "/" + GetParam() + ".txt");
    for (const std::string& error : rows.errors) {
        ADD_FAILURE() << error;
    }
    WallServer wall;
    const char* const only = std::getenv("NEXWIRE_ROWS_ONLY");
    std::set<const Function*> seen;
    for (const Row& row : rows.rows) {
        const std::vector<const Function*> meant = Meant(row.function);
        if (meant.size() != 1 || meant[0]->Module() != GetParam()) {
            ADD_FAILURE_AT(row.file.c_str(), row.line) << row.function
                                                       << (meant.empty()      ? " is no function"
                                                           : meant.size() > 1 ? " is several functions; add <Structure>"
                                                                              : " belongs to " + meant[0]->Module());
            continue;
        }
        seen.insert(meant[0]);
        if (only == nullptr || row.function.find(only) != std::string::npos) {
            RowRun(row, *meant[0], wall).Run();
        }
    }
    for (const Function& function : nexwire::catalogue::All()) {
        EXPECT_TRUE(function.Module() != GetParam() || seen.count(&function) != 0)
            << "no row for " << function.Signature();
    }
}

std::string NameOf(const testing::TestParamInfo<std::string>& module)
{
    return module.param;
}

INSTANTIATE_TEST_SUITE_P(Module, Requests, testing::ValuesIn(Modules()), NameOf);

TEST(RequestRows, EveryModuleHasAFile)
{
    std::set<std::string> missing;
    for (const Function& function : nexwire::catalogue::All()) {
        missing.insert(function.Module() + ".txt");
    }
    for (const std::string& module : Modules()) {
        missing.erase(module + ".txt");
    }
    EXPECT_EQ(missing, std::set<std::string>());
}

/// Everywhere else the key is the member's name.
TEST(RequestRows, OnlyTheseKeysAreNoNamesOfMembers)
{
    const std::set<std::string> odd = {"DetailsFilterCondition detailsFilterCondition",
                                       "DetailsQueryCondition detailsQueryCondition"};
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(NEXWIRE_PROTOCOL)) {
        if (!entry.is_regular_file()) {
            continue;
        }
        std::ifstream file(entry.path());
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        for (std::size_t at = text.find(" K(\""); at != std::string::npos; at = text.find(" K(\"", at + 1)) {
            const std::size_t key = at + 4;
            const std::size_t quote = text.find('"', key);
            const std::size_t member = text.find_first_not_of(", \n", quote + 1);
            found.insert(text.substr(key, quote - key) + " " + text.substr(member, text.find(')', member) - member));
        }
    }
    EXPECT_EQ(found, odd);
}

} // namespace
} // namespace requests
