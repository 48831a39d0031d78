#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/FieldLayout.h"
#include "core/Guard.h"
#include "nexwire/HTTPCommonJSONStruct.h"
#include "nexwire/LastExchange.h"
#include "nexwire/RequestRecords.h"

// The vocabulary request functions are written in:
//
//   return Exchange(Query(Path(kRoot, "devices/", deviceGuid), condition), result);
//
// A verb (method code) with a path and perhaps a body makes an operation; an ending sends it and says what becomes
// of the answer. Pieces and bodies are only referred to: use an operation within the statement that makes it.

namespace nexwire {

namespace core {

/// Has only these members of a structure written; they are named by where they lie.
void SendOnly(protocol::IInboundData& structure, const void* base, const std::vector<const void*>& members);

} // namespace core

/// A path as literal pieces and identifiers, put together when the request is sent. Identifiers go in as given.
class Path {
public:
    static constexpr std::size_t kMaxPieces = 8;

    Path(const char* literal) { Add(literal); }
    template <class First, class Second, class... More>
    Path(const First& first, const Second& second, const More&... more)
    {
        static_assert(2 + sizeof...(More) <= kMaxPieces, "too many pieces");
        Add(first);
        Add(second);
        (Add(more), ...);
    }
    Path(const Path& other);
    Path& operator=(const Path&) = delete;

    std::string Text() const;

private:
    struct Piece {
        const char* text;
        std::size_t length;
    };
    /// Of literals: every request function would have to count them.
    static constexpr std::size_t kUnknownLength = static_cast<std::size_t>(-1);

    void Add(const char* literal) { pieces_[count_++] = {literal, kUnknownLength}; }
    void Add(std::string_view text) { pieces_[count_++] = {text.data(), text.size()}; }
    static std::string_view View(const Piece& piece);

    std::size_t count_ = 0;
    Piece pieces_[kMaxPieces]; // NOLINT(cppcoreguidelines-pro-type-member-init): only `count_` of them are anything.
};

/// Content type of uploads in slices and of ranged downloads; the boundary is fixed.
constexpr const char* kMultipartType = "multipart/form-data; boundary=-----------------------------7e231b2b250806";

/// A structure of which only the named members are sent; for partial updates. A member that is misspelled does not
/// compile, and the keys are those of its table:
///
///   return Exchange(Write(Path(kRoot, "maps/", guid), Only(&protocol::MapModify::name, name)));
template <class Structure>
class Partial {
    static_assert(core::kHasTable<Structure>, "nobody knows the keys of its members");

public:
    template <class Owner, class Member, class Value, class... More>
    explicit Partial(Member Owner::*member, const Value& value, const More&... more)
    {
        const auto take = [&] {
            std::vector<const void*> sent;
            Take(structure_, sent, member, value, more...);
            core::SendOnly(structure_, &structure_, sent);
            return true;
        };
        complete_ = core::Guard(take);
    }

    /// Null when memory ran out; what is made of it is not sent then.
    const protocol::IInboundData* Body() const { return complete_ ? &structure_ : nullptr; }

private:
    static void Take(Structure&, std::vector<const void*>&) {}
    template <class Owner, class Member, class Value, class... More>
    static void Take(Structure& structure, std::vector<const void*>& sent, Member Owner::*member, const Value& value,
                     const More&... more)
    {
        structure.*member = value;
        sent.push_back(&(structure.*member));
        Take(structure, sent, more...);
    }

    Structure structure_;
    bool complete_ = false;
};

template <class Structure, class Member, class Value, class... More>
Partial<Structure> Only(Member Structure::*member, const Value& value, const More&... more)
{
    return Partial<Structure>(member, value, more...);
}

/// One request, not yet sent.
class Operation {
public:
    Operation(std::int32_t method, const Path& path, const protocol::IInboundData* body = nullptr);
    Operation(std::int32_t method, const Path& path, const protocol::IInboundData& body)
        : Operation(method, path, &body)
    {
    }
    template <class Structure>
    Operation(std::int32_t method, const Path& path, const Partial<Structure>& body)
        : Operation(method, path, body.Body())
    {
        spoiled_ = body.Body() == nullptr;
    }

    /// The body is a text of the caller, as it stands.
    Operation& Text(std::string_view text);
    /// Adds an entry to the first map of the record: a mark for the executor, mostly sent as a header field.
    Operation& Header(const char* name, std::string_view value) { return Add(headers_, name, value); }
    /// The same unless the value is empty.
    Operation& HeaderUnlessEmpty(const char* name, std::string_view value);
    /// Adds an entry to the second map of the record.
    Operation& Param(const char* name, std::string_view value) { return Add(params_, name, value); }
    /// The content type of uploads in slices and of ranged downloads, in the second map.
    Operation& Multipart();
    /// Asks the executor for its slower worker.
    Operation& OnSlowThread() { return Header("RequstType", "slowThread"); }
    /// Replaces the default time-out, in milliseconds; 0 keeps it.
    Operation& Timeout(std::int32_t timeoutMs);
    /// When the executor fails but left a body, the code of its envelope becomes the last error, unless it is 0.
    Operation& ErrorFromAnswer();

    /// The record for the executor.
    /// @throws std::exception when memory runs out, or when more entries were added than there is room for.
    RequestParams Build() const;
    bool TakesErrorFromAnswer() const { return errorFromAnswer_; }

private:
    static constexpr std::size_t kMaxEntries = 4;
    using Entries = std::array<std::pair<const char*, std::string_view>, kMaxEntries>;

    Operation& Add(Entries& entries, const char* name, std::string_view value);

    Path path_;
    const protocol::IInboundData* body_ = nullptr;
    std::string_view text_;
    std::int32_t method_;
    std::int32_t timeoutMs_ = 0;
    Entries headers_{};
    Entries params_{};
    bool errorFromAnswer_ = false;
    bool spoiled_ = false; ///< Cannot be said completely, so it is not sent at all.
};

/// Method code 0: single settings, small lists, raw fetches.
template <class... Body>
Operation Read(const Path& path, const Body&... body)
{
    return {0, path, body...};
}
/// Method code 1: creation, modification, actions.
template <class... Body>
Operation Write(const Path& path, const Body&... body)
{
    return {1, path, body...};
}
/// Method code 2: queries, searches, pass-through, and some modifications.
template <class... Body>
Operation Query(const Path& path, const Body&... body)
{
    return {2, path, body...};
}
/// Method code 3: deletions.
template <class... Body>
Operation Remove(const Path& path, const Body&... body)
{
    return {3, path, body...};
}

namespace core {

/// What the ending does with a parsed envelope whose number is not 0.
enum class Verdict {
    Accept, ///< Nothing: the exchange took place.
    Judge,  ///< Makes the code the last error and fails.
};

/// Hands a request to the executor and notes what happened for `LastExchange`.
///
/// @param errorFromAnswer  as `Operation::ErrorFromAnswer`.
bool Execute(RspInfos& response, const RequestParams& request, bool errorFromAnswer = false);
bool Execute(RspInfos& response, const Operation& operation);

/// False. Notes for `LastExchange` that this is what was to be sent, and was not.
bool NotSent(const Operation& operation);

/// Why the calling thread's last exchange gave no result, for functions that hand out an error: the last error after
/// a failure of the executor; otherwise {0, 0} with a text that says what was missing.
Keel::Error::ErrorCode FailureOfLastExchange();

/// While it lives, exchanges of this thread leave no trace in `LastExchange`: for requests inside a request.
class InnerExchanges {
public:
    InnerExchanges() : outer_(LastExchange()) {}
    ~InnerExchanges();
    InnerExchanges(const InnerExchanges&) = delete;
    InnerExchanges& operator=(const InnerExchanges&) = delete;

private:
    ExchangeRecord outer_;
};

/// What follows once an envelope is read: notes it for `LastExchange`, and judges it.
bool Settle(const protocol::ReturnData& envelope, Verdict verdict);

/// Sends an operation and reads the envelope into `envelope`. The one path that all typed requests take.
///
/// @param text   receives the answer's body on success; may be null.
/// @param table  of the envelope's data, where that is known already.
bool Run(const Operation& operation, protocol::ReturnData& envelope, Verdict verdict, std::string* text = nullptr,
         const FieldTable* table = nullptr);

/// A shared pointer that does not own: the result lives on the stack of its call.
template <class Result>
std::shared_ptr<protocol::IJSONStruct> Borrow(Result& result)
{
    return {std::shared_ptr<void>(), &result};
}

bool RunInto(const Operation& operation, Target result, Verdict verdict, std::string* text = nullptr) noexcept;
bool RunWithoutResult(const Operation& operation, Verdict verdict) noexcept;
bool RunForCode(const Operation& operation, protocol::IJSONStruct* fresh, const FieldTable* table, int& code);

} // namespace core

// ---- Endings ----

/// True when the envelope parsed, whatever its code; `result` is replaced then and untouched otherwise.
bool Exchange(const Operation& operation, core::Target result) noexcept;

/// The same without a result.
bool Exchange(const Operation& operation) noexcept;

/// The same; besides, `text` receives the answer's body as it stands.
bool ExchangeForText(const Operation& operation, std::string& text) noexcept;

bool ExchangeForText(const Operation& operation, core::Target result, std::string& text) noexcept;

/// For a structure that goes out and comes back. Returns as `Exchange`, or as `ExchangeJudged` when so told;
/// `structure` is replaced when the answer carries any of its members, which then start from what was sent, and is
/// untouched otherwise. A structure of the host's own parses what there is.
template <class Structure>
bool ExchangeBothWays(const Operation& operation, Structure& structure,
                      core::Verdict verdict = core::Verdict::Accept) noexcept
{
    if (!core::IsOfTable(structure, structure.Fields())) {
        return core::RunInto(operation, structure, verdict);
    }
    return core::Guard([&] {
        Structure fresh = structure;
        protocol::ReturnData envelope(core::Borrow(fresh));
        if (!core::Run(operation, envelope, verdict)) {
            return false;
        }
        if (!fresh.PresentKeys().empty()) {
            structure = std::move(fresh);
        }
        return true;
    });
}

/// True when the envelope parsed and its number is 0. Any other code becomes the last error, and `result` is
/// untouched.
bool ExchangeJudged(const Operation& operation, core::Target result) noexcept;

/// The same without a result.
bool ExchangeJudged(const Operation& operation) noexcept;

/// As `ExchangeJudged`; besides, `code` receives the envelope's number whenever the envelope parsed.
bool ExchangeForCode(const Operation& operation, int& code) noexcept;

bool ExchangeForCode(const Operation& operation, core::Target result, int& code) noexcept;

/// True when the envelope parsed, whatever its code; `envelope` receives it without its data.
bool ExchangeForEnvelope(const Operation& operation, protocol::ReturnData& envelope) noexcept;

/// True when the executor got an answer; what it says is not looked at.
bool ExchangeUnread(const Operation& operation) noexcept;

/// As `ExchangeUnread`; `bytes` receives the answer's body as it is.
bool ExchangeForBytes(const Operation& operation, std::string& bytes) noexcept;

/// As `ExchangeUnread`; `value` receives a header field of the answer and is left alone when there is none. The field's
/// name is compared without regard to case.
bool ExchangeForField(const Operation& operation, const char* field, std::string& value) noexcept;

/// Both of the above.
bool ExchangeForBytes(const Operation& operation, std::string& bytes, const char* field, std::string& value) noexcept;

} // namespace nexwire
