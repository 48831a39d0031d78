#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Process.h"
#include "catalogue/Find.h"
#include "tests/support/Regex.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace test {
namespace {

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(CommandLine, AnswersWithTheRightCodeOnTheRightStream)
{
    const struct {
        std::vector<std::string> arguments;
        int code;
        const char* out; ///< Part of standard output; empty: nothing there.
        const char* err;
    } cases[] = {
        {{"--help"}, 0, "Usage: nexwire", ""},
        {{"call", "--help"}, 0, "@env:VARIABLE", ""},
        {{"--version"}, 0, "nexwire 0.", ""},
        {{}, 2, "", "subcommand is required"},
        {{"frobnicate"}, 2, "", "--help"},
        {{"--color", "never", "lst"}, 2, "", "did you mean list?"},
        {{"list", "--frobnicate"}, 2, "", "--frobnicate"},
        {{"list", "accessgroup", "NAME"}, 0, "CAccessGroupComm::modifyAccessGroupName", ""},
        {{"list", "nothinghasthisword"}, 1, "", "no function"},
        {{"describe"}, 2, "", "function is required"},
        {{"describe", "CSetWiegnd"}, 2, "", "did you mean\n  CSetWiegand::request"},
        {{"describe", "getConfigRequest"}, 2, "", "cfginterface::getConfigRequest(SnapConfig)"},
        {{"describe", "CSetWiegand"}, 0, "/7730/v1/accessController/wiegands", ""},
        {{"call", "CSetWiegnd"}, 2, "", "did you mean"},
        {{"call", "CAccessGroupComm::getAccessGroup", "groupGuid"}, 2, "", "is not name=value"},
        {{"call", "CAccessGroupComm::getAccessGroup"}, 2, "", "not given: groupGuid"},
        {{"call", "CAccessGroupComm::getAccessGroup", "groupGuid=a", "--timeout", "0"}, 2, "", "--timeout"},
        {{"call", "CAccessGroupComm::getAccessGroup", "groupGuid=a", "--server", "platform"},
         2,
         "",
         "--server is not an address"},
        {{"call", "CAccessGroupComm::getAccessGroup", "groupGuid=a", "--server", "http://a", "--replay", "f"},
         2,
         "",
         "excludes"},
        {{"call", "CAccessGroupComm::getAccessGroup", "groupGuid=a", "--replay", "/nonexistent/file"},
         2,
         "",
         "/nonexistent/file"},
        {{"call", "CAccessGroupComm::getAccessGroup", "groupGuid=a", "--body", "/nonexistent/file"},
         2,
         "",
         "/nonexistent/file"},
        {{"call", "CAccessGroupComm::getAccessGroup", "groupGuid=@env:NEXWIRE_TEST_UNSET"},
         2,
         "",
         "NEXWIRE_TEST_UNSET"},
        {{"call", "CAccessGroupComm::getAccessGroup", "groupGuid=a", "--server", "http://127.0.0.1:1"},
         3,
         "",
         "could not connect"},
        {{"call", "CAccessGroupComm::getAccessGroup", "groupGid=a"},
         2,
         "",
         "did you mean groupGuid; not given: groupGuid"},
        {{"call", "CAccessGroupComm::getAccessGroup", "x=a"}, 2, "", "it takes groupGuid"},
        {{"call", "CAccessGroupComm::getAccessGroup", "groupGuid=a", "--merge", "--dry-run"}, 2, "", "excludes"},
        {{"call", "CAccessGroupComm::getAccessGroup", "groupGuid=a", "--key", NEXWIRE_EXECUTABLE}, 2, "", "--cert"},
        {{"call", "CAccessGroupComm::getAccessGroup", "groupGuid=a", "--cert", NEXWIRE_EXECUTABLE, "--key-passphrase",
          "x"},
         2,
         "",
         "@env:"},
        {{"call", "CGetWiegands", "--server", "http://127.0.0.1:1", "--retry", "2"}, 3, "", "(tried 3 times)"},
        {{"call", "CGetWiegands", "--server", "http://127.0.0.1:1", "--retry", "1", "--trace"},
         3,
         "",
         "then attempt 2 of at most 2"},
        {{"call", "CGetWiegands", "--server", "http://127.0.0.1:1", "--retry", "90", "--deadline", "1000"},
         3,
         "",
         "tried"},
        {{"call", "getAllDevices", "account=a", "teamNo=", "syncCloud=0", "--retry", "2"}, 2, "", "only --server"},
        {{"call", "getAllDevices", "account=a", "teamNo=", "syncCloud=0", "--server", "http://127.0.0.1:1"},
         3,
         "",
         "0-99999"},
        {{"call", "getAllDevices", "account=a", "teamNo=", "syncCloud=0", "--server", "https://127.0.0.1:1"},
         2,
         "",
         "in clear"},
        {{"call", "getAllDevices", "account=a", "teamNo=", "syncCloud=0", "--server", "http://127.0.0.1:1/wall"},
         2,
         "",
         "nothing else"},
        {{"openapi", "--output", "/nonexistent/file"}, 2, "", "cannot write /nonexistent/file"},
        {{"platform", "--port", "70000"}, 2, "", "--port"},
        {{"platform", "--db", "/nonexistent/folder/file"}, 3, "", "/nonexistent/folder/file"},
    };
    for (const auto& each : cases) {
        std::string label;
        for (const std::string& argument : each.arguments) {
            label += " " + argument;
        }
        SCOPED_TRACE(label);
        const ProcessResult result = Nexwire(each.arguments);
        EXPECT_EQ(each.code, result.code) << result.err;
        EXPECT_THAT(result.out, HasSubstr(each.out));
        EXPECT_THAT(result.err, HasSubstr(each.err));
        EXPECT_EQ(*each.out == '\0', result.out.empty()) << result.out;
        EXPECT_EQ(*each.err == '\0', result.err.empty()) << result.err;
    }
}

TEST(List, HasEveryFunctionOnceAndFindsByAnyWord)
{
    const std::vector<std::string> names = Lines(Nexwire({"list", "--names"}).out);
    EXPECT_EQ(nexwire::catalogue::All().size(), names.size());
    const std::vector<std::string> rows = Lines(Nexwire({"list"}).out);
    for (const std::string& name : names) {
        EXPECT_EQ(1, std::count_if(rows.begin(), rows.end(),
                                   [&](const std::string& row) { return row.find("  " + name + " ") == 0; }))
            << name;
    }
    // Path, structure, command; all words, in either case.
    EXPECT_THAT(Nexwire({"list", "planUsedAccessGroup"}).out, HasSubstr("ACPlanTemplate::getAccessGroupGuids"));
    EXPECT_THAT(Nexwire({"list", "snapconfigability"}).out,
                HasSubstr("cfginterface::getConfigRequest(SnapConfigAbility)"));
    EXPECT_THAT(Nexwire({"list", "command", "4250"}).out, HasSubstr("cfginterface::setConfigRequest(SnapConfig)"));
    EXPECT_THAT(Nexwire({"list", "wiegands", "PUT"}).out,
                AllOf(HasSubstr("CSetWiegand"), Not(HasSubstr("CGetWiegands"))));
}

TEST(Describe, ShowsWhatAFunctionSends)
{
    const std::string name = Nexwire({"describe", "modifyAccessGroupName"}).out;
    EXPECT_THAT(name, HasSubstr("/7730/v1/accessController/accessGroups/{groupGuid}"));
    EXPECT_THAT(name, HasSubstr("code 1 (write), PUT by default"));
    EXPECT_THAT(name, HasSubstr("\"name\": \"{name}\""));
    EXPECT_THAT(name, Not(HasSubstr("\"description\"")));

    // Empty lists show what stands in them; members have their comments beside them.
    const std::string add = Nexwire({"describe", "addAccessGroup"}).out;
    EXPECT_THAT(add, HasPart("\"objectNo\": 1, +// Number of the point on its device, from 1\\."));
    EXPECT_THAT(add, HasSubstr("  #include <nexwire/AccessController/AccessGroup.h>\n"
                               "  bool CAccessGroupComm::addAccessGroup("));

    // A device's command: what the device receives is shown by itself, numbers in the condition by name.
    const std::string snap = Nexwire({"describe", "setConfigRequest(SnapConfig)"}).out;
    EXPECT_THAT(snap, HasPart("\"resolution\": \"\", +// One of: \"CIF\", \"4CIF\""));
    EXPECT_THAT(snap, HasSubstr("4250, relayed to the device"));
    EXPECT_THAT(Nexwire({"describe", "getLadderControlRelayCfg"}).out, HasSubstr("condition   {relayNo}"));

    // An identifier that comes from a structure is named by its member.
    EXPECT_THAT(Nexwire({"describe", "modifyLadderControlRelays"}).out,
                HasSubstr("/ladderControlRelayFromDB/{guid}\n"));
    EXPECT_THAT(Nexwire({"describe", "CEncryptionComm"}).out, HasSubstr("SID: {sid}"));
    EXPECT_THAT(Nexwire({"describe", "CTWDeviceCommon::init"}).out, HasSubstr("Sends nothing"));

    // A result is none of the things to give, a request that comes back filled is both.
    EXPECT_THAT(Nexwire({"describe", "getOutDoorUnitInfo"}).out, HasSubstr("OutDoorUnitInfo, result"));
    EXPECT_THAT(Nexwire({"describe", "CTWDeviceCommon::addDevice"}).out, HasSubstr("given and returned"));
}

TEST(Colour, IsForTerminalsAndForWhoAsks)
{
    const std::string escape = "\x1b[";
    EXPECT_THAT(Nexwire({"list", "wiegand"}).out, Not(HasSubstr(escape)));
    EXPECT_THAT(Nexwire({"--color", "always", "list", "wiegand"}).out, HasSubstr(escape));

    const auto inTerminal = [](const ProcessOptions& options) {
        return RunProgram({"script", "-qec", NEXWIRE_EXECUTABLE " list wiegand", "/dev/null"}, options);
    };
    ProcessOptions options;
    options.environment = {{"TERM", "xterm"}};
    options.without = {"NO_COLOR"};
    const ProcessResult coloured = inTerminal(options);
    if (coloured.code != 0) {
        GTEST_SKIP() << "no program that makes a terminal";
    }
    EXPECT_THAT(coloured.out, HasSubstr(escape));
    options.without.clear();
    options.environment.emplace_back("NO_COLOR", "1");
    EXPECT_THAT(inTerminal(options).out, Not(HasSubstr(escape)));
    // An empty one counts as none.
    options.environment.back().second.clear();
    EXPECT_THAT(inTerminal(options).out, HasSubstr(escape));
}

/// What the shell offers behind a command line, the word under the cursor last.
std::vector<std::string> Completions(const std::string& words)
{
    // The words as bash splits them: a name's colons are words of their own.
    const std::string script = "source /usr/share/bash-completion/bash_completion || exit 77\n"
                               "source " NEXWIRE_COMPLETIONS "/nexwire.bash\n"
                               "compopt() { :; }\n"
                               "nexwire() { " NEXWIRE_EXECUTABLE " \"$@\"; }\n"
                               "COMP_WORDS=(" +
                               words +
                               ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\nCOMP_LINE=\"${COMP_WORDS[*]}\"\n"
                               "COMP_POINT=${#COMP_LINE}\n_nexwire\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n";
    const ProcessResult result = RunProgram({"bash", "-c", script});
    return result.code == 77 ? std::vector<std::string>{"skip"} : Lines(result.out);
}

TEST(Completion, OffersCommandsFunctionsAndArguments)
{
    if (Completions("nexwire pl") == std::vector<std::string>{"skip"}) {
        GTEST_SKIP() << "bash-completion is not installed";
    }
    EXPECT_THAT(Completions("nexwire pl"), ElementsAre("platform"));
    EXPECT_THAT(Completions("nexwire call modifyAccessGroupN"), ElementsAre("modifyAccessGroupName"));
    EXPECT_THAT(Completions("nexwire describe CSetW"), ElementsAre("CSetWiegand::request"));
    EXPECT_THAT(Completions("nexwire call --dry-run modifyAccessGroupName ''"), ElementsAre("groupGuid=", "name="));
    EXPECT_THAT(Completions("nexwire call modifyAccessGroupName --server http na"), ElementsAre("name="));
    EXPECT_THAT(Completions("nexwire call modifyAccessGroupName --re"), ElementsAre("--retry", "--record", "--replay"));
}

std::set<std::string> OfferedBy(const std::string& shell, const std::string& line)
{
    const std::string executable = NEXWIRE_EXECUTABLE;
    ProcessOptions options;
    options.environment = {{"PATH", executable.substr(0, executable.rfind('/')) + ":" + std::getenv("PATH")}};
    std::vector<std::string> offered;
    const Folder folder;
    if (shell == "fish") {
        const std::string script = "source " NEXWIRE_COMPLETIONS "/nexwire.fish; complete -C '" + line + "'";
        offered = Lines(RunProgram({"fish", "--no-config", "-c", script}, options).out);
    } else {
        RunProgram({"zsh", "-f", NEXWIRE_ZSH_SCRIPT, NEXWIRE_COMPLETIONS, folder.Path("found"), line}, options);
        offered = Lines(folder.Read("found"));
    }
    std::set<std::string> words;
    for (const std::string& each : offered) {
        words.insert(each.substr(0, each.find_first_of("\t=")));
    }
    return words;
}

TEST(Completion, OtherShellsOfferTheSame)
{
    for (const char* const shell : {"zsh", "fish"}) {
        SCOPED_TRACE(shell);
        if (RunProgram({"sh", "-c", std::string("command -v ") + shell}).code != 0) {
            GTEST_SKIP() << shell << " is not installed";
        }
        EXPECT_THAT(OfferedBy(shell, "nexwire pl"), ElementsAre("platform"));
        EXPECT_THAT(OfferedBy(shell, "nexwire call modifyAccessGroupN"), ElementsAre("modifyAccessGroupName"));
        EXPECT_THAT(OfferedBy(shell, "nexwire call --dry-run modifyAccessGroupName "),
                    ElementsAre("groupGuid", "name"));
        EXPECT_THAT(OfferedBy(shell, "nexwire call modifyAccessGroupName --re"),
                    ElementsAre("--record", "--replay", "--retry"));
    }
}

TEST(Completion, NoShellMissesAnOption)
{
    for (const char* const command : {"list", "describe", "call", "platform", "demo", "openapi", "reference"}) {
        const std::string help = Nexwire({command, "--help"}).out;
        for (const std::string& line : Lines(help)) {
            const std::size_t at = line.find("--");
            if (line.compare(0, 2, "  ") != 0 || at == std::string::npos || at > 6) {
                continue;
            }
            const std::string option = line.substr(at + 2, line.find_first_of(" ,", at) - at - 2);
            for (const char* const file : {"nexwire.bash", "_nexwire", "nexwire.fish"}) {
                std::ifstream in(NEXWIRE_COMPLETIONS + std::string("/") + file);
                const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
                const bool fish = std::string(file) == "nexwire.fish";
                EXPECT_THAT(text, HasSubstr((fish ? "-l " : "--") + option)) << file << ", " << command;
            }
        }
    }
}

} // namespace
} // namespace test
