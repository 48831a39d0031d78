#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/Json.h"

namespace nexwire::simulator {

/// The library's own document: its requests and structures, embedded.
std::string_view EmbeddedDocument();

enum class WireKind { kText, kInt, kInt64, kReal, kBool, kStruct, kTextList, kIntList, kStructList, kAny };

struct WireStructure;

/// A value that a member may have.
struct WireValue {
    std::string text;
    std::int64_t number = 0;
    std::string meaning; ///< Empty where the value speaks for itself.
};

struct WireMember {
    std::string key;
    WireKind kind = WireKind::kAny;
    const WireStructure* structure = nullptr; ///< Of a struct, or of a list's elements.
    std::vector<WireValue> values;            ///< Empty: anything.
    bool mayBeEmpty = false;                  ///< A text may be empty whatever else is said about it.
    bool required = false;
    std::optional<double> least;
    std::optional<double> most;
    std::vector<double> also; ///< Outside the range, and good all the same.
    std::optional<std::int64_t> leastCharacters;
    std::optional<std::int64_t> mostCharacters;
    std::optional<std::int64_t> leastItems;
    std::optional<std::int64_t> mostItems;
    std::string example; ///< A text to show; empty without one.
    WireValue usual;     ///< What a new structure holds: text, number, or 1 for true.

    bool IsNumber() const { return kind == WireKind::kInt || kind == WireKind::kInt64 || kind == WireKind::kReal; }
    bool IsList() const
    {
        return kind == WireKind::kTextList || kind == WireKind::kIntList || kind == WireKind::kStructList;
    }
};

struct WireStructure {
    std::string name;
    std::string root; ///< Key it is sent under; empty for results.
    std::vector<WireMember> members;
    bool open = false; ///< Takes members that it does not list.

    const WireMember* Find(std::string_view key) const;
};

struct WireArgument {
    std::string name;
    std::string type;      ///< As declared, without const and reference.
    std::string structure; ///< Empty for anything else.
    bool input = false;
    bool output = false;
};

/// A request function as it reaches the wire.
struct WireFunction {
    std::string module;
    std::string name; ///< "Class::function".
    std::string signature;
    std::vector<std::string> structures; ///< Of its arguments, by name.
    std::vector<WireArgument> arguments;
    int method = 0;   ///< Code of the verb.
    std::string verb; ///< GET, PUT, POST, DELETE.
    std::string path; ///< Identifiers by name, in braces.
    std::string root; ///< Empty: no body.
    const WireStructure* body = nullptr;
    std::string sample;   ///< What it sends under its root, as JSON, "*" in place of what it is called with.
    bool partial = false; ///< Sends some members of its body's structure only.
    const WireStructure* result = nullptr;
    bool direct = false;                   ///< Goes to the video wall service.
    std::int64_t command = 0;              ///< Of a relayed device command, else 0.
    const WireStructure* input = nullptr;  ///< What the device receives.
    const WireStructure* output = nullptr; ///< What the device answers.
};

/// The document. Immutable once read; safe from any thread.
class Wire {
public:
    /// @throws std::runtime_error when the text is no such document.
    explicit Wire(std::string_view document);

    const std::vector<WireFunction>& Functions() const { return functions_; }
    const WireStructure* Find(std::string_view structure) const;
    /// The functions that "Class::function" or "Class::function(Structure, Structure)" names.
    std::vector<const WireFunction*> Named(std::string_view name) const;
    /// What the video wall service receives under each path.
    std::map<std::string, const WireStructure*, std::less<>> Direct() const;
    /// Any member of that key with a vocabulary, or with a range; null without one.
    const WireMember* WithVocabulary(std::string_view key) const;
    const WireMember* WithRange(std::string_view key) const;

private:
    const WireStructure* Declare(std::string_view name);
    const WireStructure* FromExample(const Json& example);
    const WireStructure* Merged(const WireStructure& first, const WireStructure* second);
    void ReadStructure(std::string_view name, const Json& entry);
    static std::string Patterned(std::string_view text);
    void ReadFunction(const Json& entry);

    std::map<std::string, std::unique_ptr<WireStructure>, std::less<>> structures_;
    std::vector<std::unique_ptr<WireStructure>> examples_;
    std::vector<WireFunction> functions_;
    std::map<std::string, const WireMember*, std::less<>> vocabularies_;
    std::map<std::string, const WireMember*, std::less<>> ranges_;
};

/// Whether `text` ends with, or begins with, `part`, whatever the case of ASCII letters.
bool EndsWith(std::string_view text, std::string_view part);
bool BeginsWith(std::string_view text, std::string_view part);
bool Same(std::string_view left, std::string_view right);

} // namespace nexwire::simulator
