#pragma once

#include <functional>
#include <memory>
#include <string>

#include "src/Engine.h"
#include "src/Guard.h"
#include "src/HttpServer.h"
#include "src/PlatformClock.h"

namespace nexwire::simulator {

/// A file of the page.
struct PageFile {
    std::string name;
    std::string text;
};

/// All files of the page, embedded.
const std::vector<PageFile>& EmbeddedPage();

/// What the platform shows of itself and lets be changed, under paths of its own. Safe from any thread.
class Workbench {
public:
    struct Parts {
        const Description& description;
        Store& store;
        PlatformClock& clock;
        std::function<void()> seed;           ///< Fills a store that is empty.
        std::function<void()> keepClock;      ///< Writes down how far the clock is ahead.
        std::function<std::string()> openApi; ///< Null: nobody made the document.
        std::string database;
        std::string version;
    };
    explicit Workbench(Parts parts);
    ~Workbench();

    /// Whether a path is the workbench's own.
    static bool Owns(std::string_view path);

    /// Answers a request for a path of its own.
    /// @param server  where the platform is: "http://127.0.0.1:8080".
    Answer Handle(const Request& request, const std::string& server);

    using Refuse = std::function<Answer(const std::string& code)>;
    /// Has a request of the API carried out, as well as the rules for faults let it.
    Answer Serve(const Request& request, const std::function<Answer()>& handle, const Refuse& refuse);

    /// Takes note of what was answered. @param wall  by the video wall service.
    void Observe(HttpServer::Done&& done, bool wall);

    /// Has something else begin anew when the platform does. Null takes it away.
    void OnReset(std::function<void()> begin);

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

// ---- What stands in the store (WorkbenchState.cpp) ----

Json ListCollections(Store& store, const Description& description, Allocator& memory);
Json ListDocuments(Store& store, std::string_view collection, std::int64_t offset, std::int64_t limit,
                   const std::string& text, Allocator& memory);
/// @throws Problem when a document is not what its collection holds.
void WriteDocument(Store& store, const Description& description, const std::string& collection, const std::string& key,
                   const Json& document);
/// {"collection": [documents...], ...}, all or nothing. @throws Problem.
void WriteSeed(Store& store, const Description& description, const Json& seed);
/// Empties the store, but for what the platform needs to read old secrets.
void Forget(Store& store);

Json ListDevices(const Description& description, Store& store, std::int64_t nowMs, Allocator& memory);
void SwitchDevice(Store& store, const std::string& guid, const Json& switches);
Json ProvokeAlarm(const Description& description, Store& store, std::int64_t nowMs, const std::string& device,
                  const Json& body, Allocator& memory);
Json ListWork(const Description& description, Store& store, std::int64_t nowMs, Allocator& memory);

constexpr std::string_view kOwnCollection = "_platform"; ///< Never shown.

} // namespace nexwire::simulator
