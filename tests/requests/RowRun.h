#pragma once

#include <string>
#include <vector>

#include "loopback/RawServer.h"
#include "nexwire/LastExchange.h"
#include "requests/Catalogued.h"
#include "requests/Row.h"
#include "support/StubExecutor.h"

namespace requests {

/// The video wall service of the running test: what it was sent, and what it answers.
class WallServer {
public:
    WallServer();
    void Start(const nexwire::loopback::Reply& reply);
    std::vector<nexwire::RequestParams> Requests();
    std::string Port() const { return std::to_string(server_.Port()); }

private:
    nexwire::loopback::RawServer server_;
    std::size_t seen_ = 0;
};

/// A row against the function it means. Every difference is a failure at the row's place.
class RowRun {
public:
    RowRun(const Row& row, const Function& function, WallServer& wall);
    void Run();

private:
    /// What the exchange that the row is about comes to.
    struct Reply {
        std::string body;
        bool success = true;
    };
    struct Made {
        bool called = false;
        std::string reply; ///< What was answered to it.
        Outcome outcome;
        std::vector<nexwire::RequestParams> sent;
        std::vector<std::string> before, after; ///< JSON of every argument.
        Keel::Error::ErrorCode lastError;
        nexwire::ExchangeRecord exchange;
    };

    // ---- What goes in ----
    std::string FilledArgument(std::size_t place, int series, const std::string& id) const;
    std::string Given(std::size_t place, const std::string& text, const std::string& id) const;
    bool Prepare(Invocation& call, const std::string& id);
    Made Make(const std::string& id, const Reply& reply);
    bool Execute(nexwire::RspInfos& response, std::size_t index, const std::string& id, const Reply& reply) const;

    // ---- What is answered ----
    std::string Answer(const Form& form, const std::string& id, bool wrapped);
    std::string Out(const std::string& id) { return Answer(row_.out, id, true); }
    std::string DeviceData(const std::string& out, const std::string& id) const;
    std::string Data(const std::string& id);
    std::string Envelope(const std::string& code, const std::string& data) const;
    std::string Success(const std::string& data) const;
    std::string Refusal(const std::string& data) const;

    // ---- What must come of it ----
    void Fail(const std::string& what);
    void Expect(const std::string& label, const std::string& expected, const std::string& found);
    void ExpectNothing(const std::string& label, const std::string& difference);
    std::string BodyMisfit(const Form& form, const std::string& body, const std::string& id, const Made& made) const;
    std::string KeysMisfit(const Form& form, const Value& members, const std::string& id, const Made& made) const;
    std::string DeviceBodyMisfit(const std::string& body, const std::string& id, const Made& made) const;
    std::string RequestMisfit(const nexwire::RequestParams& request, const std::string& id, const Made& made) const;
    void CheckSent(const Made& made, const std::string& id, bool whole);
    std::string Expected(std::size_t place, const Made& made, const std::string& id, const std::string& data) const;
    void CheckFilled(const Made& made, const std::string& id, const std::string& data);
    void CheckUntouched(const Made& made);
    void CheckError(const Made& made, const Keel::Error::ErrorCode& error);
    void CheckErrorOutput(const Made& made, const Keel::Error::ErrorCode& error);
    void CheckRecord(const Made& made, int number, bool answered, bool parsed);

    // ---- Variations ----
    void Succeeds(const std::string& id);
    void Logs();
    void RefusesEverything();
    void BeforeTheStart();
    void ExecutorFails(const std::string& left, const Keel::Error::ErrorCode& error);
    void CannotBeRead(const std::string& body);
    void DeviceAnswers(const std::string& out);
    void SendsNothing();

    bool IsDevice() const { return row_.route != Route::Platform && row_.route != Route::Wall; }
    const Argument& At(std::size_t place) const { return function_.Arguments()[place]; }
    bool IsResult(std::size_t place) const { return place == result_; }

    const Row& row_;
    const Function& function_;
    WallServer& wall_;
    std::map<std::size_t, std::string> given_, gives_, appends_;
    std::size_t result_, code_, error_, whole_; ///< Places; as many as there are arguments for none.
    std::vector<std::string> blank_;
    test::Library* library_ = nullptr;
    std::string variation_;
    int failures_ = 0;
};

} // namespace requests
