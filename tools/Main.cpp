#include <algorithm>
#include <csignal>

#include <CLI/CLI.hpp>

#include <keel/Log.h>

#include "catalogue/Find.h"
#include "tools/Commands.h"
#include "tools/demo/Demo.h"

namespace {

using namespace nexwire::tools;

/// A usage text ends with the exit codes, which scripts depend on.
constexpr const char* kFooter =
    "Exit codes: 0 done, 1 the function returned false or nothing was found, 2 the command line cannot be carried\n"
    "out, 3 no answer from the server, 4 the server refused, 5 the output cannot be written.\n"
    "Environment: NO_COLOR, when not empty, keeps the output free of colours.";

constexpr const char* kCallFooter =
    "Values: name=TEXT for texts and numbers, name=JSON for structures and lists, name=@env:VARIABLE and\n"
    "name=@file:PATH for what stands there, name=@@TEXT for a text that begins with @. Secrets (passwords, tokens,\n"
    "card numbers, keys) are taken from the environment, a file or --body only, for others can read a command line;\n"
    "so are the headers that carry credentials. A structure may stand under its root name or not.\n"
    "Overloads are chosen by what is given, or by their structure: 'cfginterface::getConfigRequest(SnapConfig)'.\n"
    "Texts that travel encrypted are shown by --dry-run as they are before that, like all secrets as ***.";

void Quiet()
{
    Keel::details::LogConfig config;
    config.level = Keel::details::LogLevel::Off;
    config.console = false;
    Keel::details::CLog().Configure(config);
}

class CommandLine {
public:
    CommandLine()
    {
        app_.set_version_flag("--version", "nexwire " NEXWIRE_VERSION);
        app_.require_subcommand(1);
        app_.footer(kFooter);
        app_.add_option("--color", color_, "When to use colours")
            ->check(CLI::IsMember({"auto", "always", "never"}))
            ->capture_default_str();
        app_.fallthrough();
        AddList();
        AddDescribe();
        AddCall();
        AddPlatform();
        AddDemo();
        AddDocument("openapi", "The OpenAPI 3.1 document of all functions and structures", "--output", OpenApi);
        AddDocument("reference", "The reference of all functions as one page of HTML", "--html", Reference);
    }

    int Run(int argc, char** argv)
    {
        std::vector<std::string> commands;
        for (const CLI::App* const each : app_.get_subcommands(nullptr)) {
            commands.push_back(each->get_name());
        }
        const std::string first = FirstWord(argc, argv);
        if (!first.empty() && std::find(commands.begin(), commands.end(), first) == commands.end()) {
            const std::vector<std::string> close = nexwire::catalogue::Closest(first, commands);
            Complain("there is no command '" + first + "'" +
                     (close.empty() ? "" : "; did you mean " + close.front() + "?") +
                     "\nRun with --help for more information.");
            return kUsage;
        }
        try {
            app_.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            return app_.exit(error) == 0 ? kDone : kUsage;
        }
        return command_();
    }

private:
    /// The first word that is no option nor the value of one; empty when there is none.
    static std::string FirstWord(int argc, char** argv)
    {
        for (int i = 1; i < argc; ++i) {
            const std::string word = argv[i];
            if (word == "--color") {
                ++i;
            } else if (word.empty() || word.front() != '-') {
                return word;
            }
        }
        return std::string();
    }

    void AddList()
    {
        CLI::App* const list = app_.add_subcommand("list", "Functions by module, with method code, verb and path");
        list->add_option("words", list_.words,
                         "Only functions with all of these words in name, path, structures or comments");
        list->add_flag("--names", list_.namesOnly, "Names only");
        list->add_flag("--json", list_.json, "As a JSON array");
        list->callback([this] { command_ = [this] { return Quiet(), List(list_, Style(color_)); }; });
    }

    void AddDescribe()
    {
        CLI::App* const describe =
            app_.add_subcommand("describe", "What a function sends, what it answers, and its structures");
        describe->add_option("function", describe_.function, "Class::function, function, Class or structure")
            ->required();
        describe->add_flag("--json", describe_.json, "As a JSON object");
        describe->add_flag("--arguments", describe_.argumentsOnly, "Only the names of what can be given");
        describe->callback([this] { command_ = [this] { return Quiet(), Describe(describe_, Style(color_)); }; });
    }

    void AddCall()
    {
        CLI::App* const call = app_.add_subcommand("call", "Runs a function; its result as JSON on standard output");
        call->footer(std::string(kCallFooter) + "\n" + kFooter);
        call->add_option("function", call_.function, "Class::function, function or Class")->required();
        call->add_option("values", call_.values, "Arguments, name=value");
        call->add_option("--body", call_.body, "File with the request structure as JSON; - is standard input")
            ->type_name("FILE");
        call->add_option("--server", call_.server, "Address, http(s)://host[:port][/prefix]; none: a local platform")
            ->type_name("URL");
        call->add_option("--db", call_.database, "Database of the local platform; none: in memory")->type_name("FILE");
        call->add_flag("--dry-run", call_.dryRun, "Show what would be sent, send nothing");
        call->add_flag("--merge", call_.merge, "Read a structure that is given in part, and change only what is given")
            ->excludes("--dry-run");
        call->add_flag("--compact", call_.compact, "Result on one line");
        call->add_flag("--pages", call_.pages, "Ask for all pages; one element of their lists a line")
            ->excludes("--dry-run");
        call->add_flag("--follow", call_.follow, "Ask until the progress is at its end, and show it")
            ->excludes("--dry-run")
            ->excludes("--pages");
        call->add_flag("--json", call_.json, "Outcome, numbers, message, result, path and time as one JSON object");
        call->add_flag("-q,--quiet", call_.quiet, "Say nothing on standard error when all went well");
        call->add_flag("-v,--verbose", call_.verbose, "Show the exchanges on standard error, secrets as ***")
            ->excludes("--quiet");
        call->add_flag("--trace", call_.trace, "Show each step on standard error: attempts, waits, outcomes, times")
            ->excludes("--quiet");
        call->add_option("--header", call_.headers, "Header field for every request; may be given again")
            ->type_name("NAME=VALUE")
            ->take_all()
            ->expected(1);
        call->add_option("--timeout", call_.timeoutMs, "Milliseconds for the exchange")
            ->type_name("MS")
            ->check(CLI::Range(1, 86400000));
        call->add_option("--deadline", call_.deadlineMs, "Milliseconds for all exchanges of the call together")
            ->type_name("MS")
            ->check(CLI::Range(1, 86400000));
        call->add_option("--retry", call_.retries, "Repeat what failed so often, where that can do no harm")
            ->type_name("TIMES")
            ->check(CLI::Range(0, 100));
        call->add_option("--ca", call_.caFile, "Certificate authorities to trust, PEM")
            ->type_name("FILE")
            ->check(CLI::ExistingFile);
        call->add_option("--cert", call_.certificateFile, "Certificate to show the server, PEM")
            ->type_name("FILE")
            ->check(CLI::ExistingFile);
        call->add_option("--key", call_.keyFile, "Its key, PEM; none: it is in the same file")
            ->type_name("FILE")
            ->check(CLI::ExistingFile)
            ->needs("--cert");
        call->add_option("--key-passphrase", call_.keyPassphrase, "Opens the key: @env:VARIABLE or @file:PATH")
            ->needs("--cert");
        call->add_flag("--insecure", call_.insecure, "Accept any certificate of the server");
        call->add_option("--proxy", call_.proxy, "Proxy address, or @env:VARIABLE or @file:PATH")->type_name("URL");
        call->add_option("--record", call_.recordFile, "Append the exchange to this file")->type_name("FILE");
        call->add_option("--replay", call_.replayFile, "Answer from this file, without any server")
            ->type_name("FILE")
            ->excludes("--server");
        call->callback([this] {
            command_ = [this] {
                if (call_.dryRun) {
                    Quiet();
                }
                return CallFunction(call_);
            };
        });
    }

    void AddPlatform()
    {
        CLI::App* const platform = app_.add_subcommand(
            "platform",
            "The local platform on 127.0.0.1, until interrupted; prints its address, where its page is, too");
        platform->add_option("--port", platform_.port, "Port; 0 takes a free one")->capture_default_str();
        platform->add_option("--db", platform_.database, "Database; none: in memory")->type_name("FILE");
        platform->add_option("--time-scale", platform_.timeScale, "How fast devices work; 100: a hundred times")
            ->check(CLI::PositiveNumber)
            ->capture_default_str();
        platform->add_option("--alarms", platform_.alarmsPerMinute, "Alarms a minute that happen by themselves")
            ->check(CLI::NonNegativeNumber)
            ->capture_default_str();
        CLI::Option* const wall = platform->add_option(
            "--wall-port", platform_.wallPort,
            "Run the video wall service, too, on this port; its address is printed behind the other");
        platform->add_option("--faults", platform_.faultsFile, "Rules for faults, JSON; - is standard input")
            ->type_name("FILE");
        platform->add_option("--seed", platform_.seedFile, "Documents to write at the start, JSON; - is standard input")
            ->type_name("FILE");
        platform
            ->add_option("--listen", platform_.listen, "Address to listen on; any but a loopback one asks for a token")
            ->type_name("ADDRESS")
            ->capture_default_str();
        platform->add_option(
            "--token", platform_.token,
            "What every request has to bring: @env:VARIABLE or @file:PATH; none: one is made if needed");
        platform->add_flag("--coverage", platform_.coverage,
                           "Only list how it answers each function: with behaviour, kept state or a sample");
        platform->add_flag("--verbose", platform_.verbose, "One line per exchange on standard error");
        platform->callback([this, wall] {
            platform_.wall = wall->count() > 0;
            command_ = [this] { return RunPlatform(platform_); };
        });
    }

    void AddDemo()
    {
        CLI::App* const demo = app_.add_subcommand("demo", "Shows the library at work on a local platform");
        demo->add_option("--site", demo_.sitePath, "Description of the site; none: the one that is built in")
            ->type_name("FILE")
            ->check(CLI::ExistingFile);
        demo->callback([this] {
            command_ = [this] {
                demo_.colour = Style(color_).color();
                demo_.animate = demo_.colour;
                return nexwire::demo::Run(demo_);
            };
        });
    }

    void AddDocument(const char* name, const char* about, const char* option, int (*write)(const std::string&))
    {
        CLI::App* const command = app_.add_subcommand(name, about);
        command->add_option(option, file_, "Where to write it; - is standard output")
            ->type_name("FILE")
            ->default_str("-");
        command->callback([this, write] { command_ = [this, write] { return Quiet(), write(file_); }; });
    }

    CLI::App app_{"The functions of the nexwire library from the command line.", "nexwire"};
    std::string color_ = "auto";
    nexwire::demo::DemoOptions demo_;
    std::string file_ = "-";
    ListOptions list_;
    DescribeOptions describe_;
    CallOptions call_;
    PlatformOptions platform_;
    std::function<int()> command_;
};

} // namespace

int main(int argc, char** argv)
{
#if defined(SIGPIPE)
    // A reader that has gone is an error of its own, see Console.h.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    try {
        std::vector<std::string> words = OpenConsole(argc, argv);
        std::vector<char*> pointers;
        for (std::string& word : words) {
            pointers.push_back(word.data());
        }
        return CommandLine().Run(static_cast<int>(pointers.size()), pointers.data());
    } catch (const std::exception& error) {
        Complain(error.what());
        return kUsage;
    }
}
