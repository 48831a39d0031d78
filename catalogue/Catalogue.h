#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "catalogue/Types.h"
#include "nexwire/RequestRecords.h"

// Every request function by name, callable from JSON. One line per function:
//
//   NEXWIRE_OPERATION(CAccessGroupComm, modifyAccessGroupName, "groupGuid, name, code")
//
// The line names what a signature cannot: the plain arguments, in order. Types and directions are deduced; path, code
// and body form are found by running the function against a recorder, so nothing is said twice.

namespace nexwire {
namespace catalogue {

/// What a function answered.
struct Outcome {
    bool success = true;
    std::string returned; ///< JSON of a return value other than bool; else empty.
};

/// A function as its catalogue line lays it down.
struct Entry {
    const char* className;
    const char* function;
    const TypeOps* const* types;
    const bool* outputs;    ///< Per argument: passed by non-const reference.
    const char* plainNames; ///< Separated by ", ".
    std::size_t count;
    Outcome (*call)(void* const* arguments);
};

/// One argument as a person sees it.
struct Argument {
    std::string name; ///< From the line for plain arguments, from the type for structures.
    const TypeOps* type;
    bool output; ///< The function may write to it.

    /// Whether a structure that can be written to can also be given: requests that come back filled.
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
};

/// A request function.
class Function {
public:
    Function(const char* module, const Entry& entry);

    const std::string& Module() const { return module_; }
    /// "CAccessGroupComm::getAccessGroup".
    const std::string& Name() const { return name_; }
    const std::string& ClassName() const { return className_; }
    const std::vector<Argument>& Arguments() const { return arguments_; }
    /// Distinguishes overloads: "cfginterface::getConfigRequest(SnapConfig&, std::string, std::string)".
    std::string Signature() const;

    const Entry& Line() const { return *entry_; }

private:
    const Entry* entry_;
    std::string module_;
    std::string className_;
    std::string name_;
    std::vector<Argument> arguments_;
};

/// All functions, by module in the order of their lines.
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

private:
    struct State;
    std::unique_ptr<State> state_;
};

// ---- How lines become entries ----

template <class Parameter>
struct ParameterOf {
    using Value = std::decay_t<Parameter>;
    static constexpr bool output =
        std::is_lvalue_reference<Parameter>::value && !std::is_const<std::remove_reference_t<Parameter>>::value;
    static Value& From(void* value) { return *static_cast<Value*>(value); }
};
template <>
struct ParameterOf<void*> {
    using Value = AnyStructure;
    static constexpr bool output = false;
    static void* From(void* value) { return static_cast<AnyStructure*>(value)->structure.get(); }
};

/// Plain arguments need a name in the line; structures bring theirs.
constexpr bool NeedsName(Shape shape)
{
    return shape != Shape::Structure && shape != Shape::StructureList && shape != Shape::Record &&
           shape != Shape::RecordList && shape != Shape::AnyStructure;
}

template <class Signature, Signature Function>
struct OperationOf;

template <class Result, class... Parameters, Result (*Function)(Parameters...)>
struct OperationOf<Result (*)(Parameters...), Function> {
    static constexpr std::size_t count = sizeof...(Parameters);
    // One element more, for functions without arguments.
    static constexpr const TypeOps* types[count + 1] = {&TypeOf<typename ParameterOf<Parameters>::Value>::ops...};
    static constexpr bool outputs[count + 1] = {ParameterOf<Parameters>::output...};

    static constexpr std::size_t PlainCount()
    {
        std::size_t plain = 0;
        for (std::size_t i = 0; i < count; ++i) {
            plain += NeedsName(types[i]->shape) ? 1 : 0;
        }
        return plain;
    }

    static Outcome Call(void* const* arguments) { return Invoke(arguments, std::index_sequence_for<Parameters...>()); }

    template <std::size_t... Index>
    static Outcome Invoke([[maybe_unused]] void* const* arguments, std::index_sequence<Index...>)
    {
        Outcome outcome;
        if constexpr (std::is_same<Result, bool>::value) {
            outcome.success = Function(ParameterOf<Parameters>::From(arguments[Index])...);
        } else if constexpr (std::is_void<Result>::value) {
            Function(ParameterOf<Parameters>::From(arguments[Index])...);
        } else {
            const Result result = Function(ParameterOf<Parameters>::From(arguments[Index])...);
            outcome.returned = TypeOf<Result>::ops.write(&result);
        }
        return outcome;
    }
};

constexpr std::size_t CountNames(const char* names)
{
    std::size_t count = *names == '\0' ? 0 : 1;
    for (; *names != '\0'; ++names) {
        count += *names == ',' ? 1 : 0;
    }
    return count;
}

template <class Pointer, Pointer Function>
constexpr Entry MakeEntry(const char* className, const char* function, const char* names)
{
    using Operation = OperationOf<Pointer, Function>;
    return CountNames(names) == Operation::PlainCount()
               ? Entry{className, function,         Operation::types, Operation::outputs,
                       names,     Operation::count, Operation::Call}
               : throw "the line must name every plain argument, and nothing else";
}

struct Module {
    const char* name;
    const Entry* entries;
    std::size_t count;
};

/// The line of an overload; its signature comes last.
#define NEXWIRE_OVERLOAD(Class, function, names, ...)                                                                  \
    ::nexwire::catalogue::MakeEntry<std::add_pointer_t<__VA_ARGS__>, &::nexwire::Class::function>(#Class, #function,   \
                                                                                                  names)

/// The line of a function that has no overloads.
#define NEXWIRE_OPERATION(Class, function, names)                                                                      \
    ::nexwire::catalogue::MakeEntry<decltype(&::nexwire::Class::function), &::nexwire::Class::function>(               \
        #Class, #function, names)

} // namespace catalogue
} // namespace nexwire
