#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "catalogue/Rows.h"
#include "catalogue/Types.h"
#include "core/AnswerReads.h"
#include "nexwire/RequestRecords.h"

// Every request function by name, callable from JSON. Names, types and directions come from the headers, see README.md;
// path, code and body form are found by running the function against a recorder, so nothing is said twice.

namespace nexwire::catalogue {

/// One argument as a person sees it.
struct Argument {
    std::string name; ///< As the header has it.
    const TypeOps* type;
    bool output; ///< The function may write to it.

    /// Whether it can be given, even if it is written to: requests that come back filled.
    bool input() const;
    /// Whether a call without it would send something that nobody meant.
    bool required() const;
};

/// A type as the host writes it, without namespaces of ours: "std::vector<PersonnelAdd>".
std::string Spelled(const TypeOps& type);

/// What reaches the wire when the function runs with its identifiers standing in braces.
struct Trace {
    bool sent = false;
    bool direct = false; ///< Sent by the library itself to the video wall service, not through the executor.
    RequestParams request{"", 0};
    std::vector<std::string> before; ///< Paths of requests that the function sends first.
    bool success = false;            ///< What the function returned; the answer was a success without anything in it.
    std::string handsOut;            ///< The argument that received the answer's body as it stands.
    core::AnswerReads reads;
};

/// An answer of the video wall service with everything that was read of one, as JSON of its "data".
std::string AnswerRead(const core::AnswerReads& reads);

/// A request function.
class Function {
public:
    static constexpr std::size_t kNoArgument = static_cast<std::size_t>(-1);

    Function(const HeaderRows& header, const FunctionRow& row);

    const std::string& Module() const { return module_; }
    /// The header that declares it, as an include spells it.
    const char* Header() const { return header_->header; }
    /// "CAccessGroupComm::getAccessGroup".
    const std::string& Name() const { return name_; }
    const std::string& ClassName() const { return className_; }
    /// "getAccessGroup".
    const char* Member() const { return row_->name; }
    const std::vector<Argument>& Arguments() const { return arguments_; }
    /// The argument of that name, or, where only one fits, of that structure: "snapConfig" for a SnapConfig,
    /// "personnelAddList" for a list of PersonnelAdd. kNoArgument when there is none.
    std::size_t ArgumentNamed(const std::string& name) const;
    /// Distinguishes overloads: "cfginterface::getConfigRequest(SnapConfig& output, std::string deviceGuid, ...)".
    std::string Signature() const;

    const FunctionRow& Row() const { return *row_; }
    const HeaderRows& Rows() const { return *header_; }

private:
    const HeaderRows* header_;
    const FunctionRow* row_;
    std::string module_;
    std::string className_;
    std::string name_;
    std::vector<Argument> arguments_;
};

/// All functions, by module, header and place in the header.
const std::vector<Function>& All();

/// The values of one call.
class Call {
public:
    explicit Call(const Function& function);
    ~Call();
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    /// Gives an argument its value. False with a text for the user when there is no such argument or the value does
    /// not fit it.
    bool Set(const std::string& name, const std::string& text, std::string& error);
    bool Set(std::size_t index, const std::string& text, std::string& error);

    /// Fills a record so that every member shows; leaves other arguments alone.
    void Sample(std::size_t index);

    /// Runs the function; the library must be initialised.
    Outcome Run();

    /// JSON of an argument as it stands.
    std::string Json(std::size_t index) const;
    /// JSON of everything the function wrote: the value itself when there is one, else an object by name.
    std::string Result(const Outcome& outcome) const;

    const Function& function() const { return function_; }

private:
    const Function& function_;
    std::vector<void*> values_;
};

/// Runs functions against a recorder, with "{name}" for every text argument. The library must not be initialised; it is
/// not afterwards either. One thread at a time.
class Recorder {
public:
    Recorder();
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    Trace Run(const Function& function);
    /// With values already given; what was not given stays as the recorder finds it.
    Trace Run(Call& call);

    /// The value that stands for a text argument: "{name}", or for a local file the path of one that exists, which
    /// `Named` turns back.
    std::string Stand(const Argument& argument) const;
    /// A text of a trace with "{name}" wherever a value of `Stand` shows, brought to a length or not.
    std::string Named(const Function& function, std::string text) const;

private:
    struct State;
    Trace RunSampled(const Function& function);

    std::unique_ptr<State> state_;
};

/// Plain arguments; structures and records are everything else.
constexpr bool NeedsName(Shape shape)
{
    return shape != Shape::Structure && shape != Shape::StructureList && shape != Shape::Record &&
           shape != Shape::RecordList && shape != Shape::AnyStructure;
}

} // namespace nexwire::catalogue
