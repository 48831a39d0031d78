#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace nexwire::simulator {

/// One answered request, as handed to `Options::onExchange`.
struct Served {
    std::int64_t timeMs = 0;        ///< When the request was complete, ms since 1970 UTC.
    std::string verb;               ///< HTTP verb as received.
    std::string path;               ///< Target as received, query included.
    unsigned status = 0;            ///< HTTP status of the answer.
    std::string code;               ///< Envelope code, for example "0-0".
    std::uint64_t requestBytes = 0; ///< Size of the request's body.
    std::uint64_t answerBytes = 0;  ///< Size of the answer's body.
    double milliseconds = 0.0;      ///< From the complete request to the finished answer.
};

/// One line without a line end: time (UTC), verb, path, status, code, bytes in/out, ms.
std::string ToLine(const Served& exchange);

struct Options {
    std::uint16_t port = 0; ///< 0 takes a free one; see `Platform::Port`.
    /// Address to listen on. Any but a loopback one needs a `token`.
    std::string address = "127.0.0.1";
    /// What every request has to bring ("Authorization: Bearer TOKEN", or the page's cookie): 16 to 128 letters,
    /// digits, "-", "_", "." and "~". Empty asks for none.
    std::string token;
    std::string databasePath; ///< SQLite file that keeps the state; empty keeps it in memory.
    unsigned threads = 2;     ///< Worker threads, 1 to 64.
    /// How fast devices work: 1 is the pace of a real controller (0.4 s per person), 100 a hundred times that.
    double timeScale = 1.0;
    double alarmsPerMinute = 0.0;                  ///< Alarms that happen by themselves, by the platform's clock.
    std::uint64_t bodyLimit = 64u * 1024u * 1024u; ///< Largest accepted request body in bytes.
    unsigned idleSeconds = 60;                     ///< A connection that is silent so long is closed.
    /// Called once per exchange on a worker thread, one call at a time. Must neither throw nor stop the platform.
    std::function<void(const Served&)> onExchange;
    /// Replaces the system clock: milliseconds since 1970 UTC. Must be callable from any thread.
    std::function<std::int64_t()> now;
    /// Makes the OpenAPI document that the workbench hands out, when somebody asks for it. Null: there is none.
    std::function<std::string()> openApi;
};

/// Whether an address reaches no further than this machine.
bool IsLoopbackAddress(std::string_view address);

/// An answer of the workbench.
struct WorkbenchAnswer {
    unsigned status = 0; ///< HTTP status; 200 when it was done.
    std::string body;    ///< JSON; with an error {"error": "..."}.
};

struct Site;

/// How the platform answers a request function.
struct Coverage {
    enum How {
        kBehaviour, ///< A resource file, or the video wall service, says what it does.
        kState,     ///< What is written is kept and given back.
        kSample,    ///< An answer made from the structure of the result, or none.
    };
    std::string function; ///< "Class::function".
    How how = kSample;
};

/// All functions that send, in the order of the library's document.
std::vector<Coverage> CoverageOfFunctions();

/// The other side of the wire: a management platform on 127.0.0.1 that keeps its state in SQLite and is described
/// by the JSON files under `resources/`. With a database file, nothing that was answered is lost when the process dies;
/// a file belongs to one platform at a time.
///
/// `Start`, `Stop` and the destructor belong to one thread at a time; all else may be called from any.
class Platform {
public:
    explicit Platform(Options options = {});
    ~Platform(); ///< Stops.
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

    /// Opens the database, binds the port and starts the workers; returns once connections are accepted.
    ///
    /// @param error  on false, what an operator can act on: port in use, database locked or not ours, bad description.
    bool Start(std::string& error);

    /// Closes every connection and ends the workers; no request is waited for beyond the handler it is in. A stopped
    /// platform may be started again; a database in memory is empty then.
    void Stop();

    std::uint16_t Port() const;          ///< 0 while stopped.
    std::uint64_t ExchangeCount() const; ///< Requests answered since construction, those of the workbench left out.

    /// Asks the workbench without a connection: what requests under "/_workbench/" do, a test in the same process has
    /// done by this. Status 0 while the platform is stopped; must not run while it stops.
    /// @param target  "/_workbench/exchanges?limit=1", or without the first part: "exchanges?limit=1".
    /// @param body    JSON, or empty.
    WorkbenchAnswer Workbench(const std::string& verb, const std::string& target, const std::string& body = {});

private:
    friend class VideoWallService;
    Site* Shared(); ///< Null while stopped.

    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace nexwire::simulator
