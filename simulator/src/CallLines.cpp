#include <algorithm>

#include "src/ExchangeText.h"
#include "src/Fields.h"
#include "src/Query.h"

// A call that was seen on the wire, as it is made by other means.

namespace nexwire::simulator {
namespace {

/// A word for a POSIX shell.
std::string Quoted(const std::string& text)
{
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./:=@%+,?&";
    if (!text.empty() && text.find_first_not_of(kPlain) == std::string::npos &&
        text.find_first_of("?&") == std::string::npos) {
        return text;
    }
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

bool IsControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20;
}

/// The format by which printf writes the bytes; on one line, whatever they are.
std::string PrintFormat(const std::string& bytes)
{
    std::string format;
    for (const char c : bytes) {
        if (c == '\n') {
            format += "\\n";
        } else if (IsControl(c)) {
            format += {'\\', '0', static_cast<char>('0' + c / 8), static_cast<char>('0' + c % 8)};
        } else {
            format.append(c == '%' || c == '\\' ? 2 : 1, c);
        }
    }
    return format;
}

std::string CurlLine(const Exchange& exchange, const std::string& target, const std::string& body,
                     const std::string& server)
{
    const HttpServer::Done& served = exchange.served;
    std::string line = "curl -X " + Quoted(served.request.verb) + " " + Quoted(server + target);
    const auto type = served.request.headers.find("content-type");
    const bool piped = std::any_of(body.begin(), body.end(), IsControl);
    if (!body.empty()) {
        line += " -H " +
                Quoted("Content-Type: " +
                       (type == served.request.headers.end() ? std::string("application/json") : type->second)) +
                " --data-binary " + (piped ? "@-" : Quoted(body));
    }
    return piped ? "printf " + Quoted(PrintFormat(body)) + " | " + line : line;
}

/// A value that the body has somewhere under that name, its own members first; null without one.
const Json* Deep(const Json& value, std::string_view name)
{
    const Json* own = Member(value, name);
    if (own != nullptr || !value.IsObject()) {
        return own;
    }
    for (const auto& member : value.GetObject()) {
        if (const Json* found = Deep(member.value, name)) {
            return found;
        }
    }
    return nullptr;
}

/// What a function was called with, as far as the wire shows it.
class Arguments {
public:
    Arguments(const WireFunction& function, const Exchange& exchange, const std::string& body) : function_(function)
    {
        ReadPath(exchange.served.request.path);
        std::string error;
        if (body.empty() || !ParseJson(body_, body, error)) {
            return;
        }
        const Json* root = function.root.empty() ? &body_ : Member(body_, function.root);
        root_ = root;
        const Json* input = root == nullptr || function.input == nullptr ? nullptr : Member(*root, "inBuffer");
        if (input != nullptr && ParseJson(input_, AsText(input), error)) {
            root_ = Member(input_, function.input->root);
        }
    }

    /// Null when the wire does not tell.
    const Json* Find(const WireArgument& argument)
    {
        const auto identifier = path_.find(argument.name);
        if (identifier != path_.end()) {
            return &identifier->second;
        }
        const WireStructure* whole = function_.input != nullptr ? function_.input : function_.body;
        if (root_ == nullptr) {
            return nullptr;
        }
        const bool is = !argument.structure.empty() && argument.type == argument.structure &&
                        (whole == nullptr || function_.structures.size() == 1 || whole->name == argument.structure);
        return is ? root_ : Deep(*root_, argument.name);
    }

private:
    void ReadPath(std::string_view path)
    {
        std::string_view pattern = function_.path;
        while (!pattern.empty() && !path.empty()) {
            const std::string_view name = pattern.substr(0, pattern.find('/', 1));
            const std::string_view value = path.substr(0, path.find('/', 1));
            if (name.size() > 3 && name[1] == '{') {
                path_[std::string(name.substr(2, name.size() - 3))] =
                    MakeText(Decoded(value.substr(1), false), body_.GetAllocator());
            }
            pattern.remove_prefix(name.size());
            path.remove_prefix(value.size());
        }
    }

    const WireFunction& function_;
    Document body_;
    Document input_;
    const Json* root_ = nullptr;
    std::map<std::string, Json, std::less<>> path_;
};

std::string CommandLine(const WireFunction& function, Arguments& arguments, const std::string& server,
                        const Keel::CRedactor& redactor)
{
    std::string line = "nexwire call " + function.name + " --server " + Quoted(server);
    for (const WireArgument& argument : function.arguments) {
        const Json* value = argument.input ? arguments.Find(argument) : nullptr;
        if (value == nullptr) {
            continue;
        }
        // Others can read a command line.
        std::string name = argument.name;
        std::transform(name.begin(), name.end(), name.begin(),
                       [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
        line += " " + argument.name + "=" +
                (redactor.IsSecret(argument.name) ? "@env:" + name
                 : value->IsString()              ? Quoted(std::string(AsText(value)))
                                                  : Quoted(PrintJson(*value)));
    }
    return line;
}

std::string Literal(const Json& value)
{
    // JSON's escapes are C++'s, but for the slash, which is not escaped here.
    return PrintJson(value);
}

bool IsNothing(const Json& value)
{
    return value.IsNull() || (value.IsString() && value.GetStringLength() == 0) || (value.IsArray() && value.Empty()) ||
           (value.IsNumber() && value.GetDouble() == 0.0) || (value.IsBool() && !value.GetBool());
}

/// Assignments to what is not as a new structure has it.
/// @param structure  null when it is not known; on its way to the video wall a body gets members that it has not.
void Assign(std::string& code, const std::string& target, const Json& value, const WireStructure* structure = nullptr)
{
    if (value.IsObject()) {
        for (const auto& member : value.GetObject()) {
            if (structure != nullptr && structure->Find(AsText(&member.name)) == nullptr) {
                continue;
            }
            Assign(code, target + "." + std::string(AsText(&member.name)), member.value);
        }
    } else if (value.IsArray() && !value.Empty() && value[0].IsObject()) {
        for (const Json& element : value.GetArray()) {
            code += target + ".emplace_back();\n";
            Assign(code, target + ".back()", element);
        }
    } else if (value.IsArray() && !value.Empty()) {
        std::string list;
        for (const Json& element : value.GetArray()) {
            list += (list.empty() ? "" : ", ") + Literal(element);
        }
        code += target + " = {" + list + "};\n";
    } else if (!IsNothing(value)) {
        code += target + " = " + Literal(value) + ";\n";
    }
}

/// A type as a program outside the library's namespace names it.
std::string OutsideName(const WireFunction& function, const WireArgument& argument)
{
    std::string type = argument.type;
    const std::size_t inner = argument.structure.empty() ? std::string::npos : type.find(argument.structure);
    if (inner == std::string::npos) {
        return type;
    }
    const bool inProtocol = function.signature.find("protocol::" + argument.structure) != std::string::npos;
    const bool qualified = argument.structure.find("::") != std::string::npos;
    return type.insert(inner, inProtocol ? "protocol::" : qualified ? "" : "nexwire::");
}

std::string Program(const Wire& library, const WireFunction& function, Arguments& arguments)
{
    std::string code;
    std::string call;
    for (const WireArgument& argument : function.arguments) {
        const Json* value = argument.input ? arguments.Find(argument) : nullptr;
        const bool simple = value != nullptr && !argument.output && argument.structure.empty() && !value->IsArray();
        call += (call.empty() ? "" : ", ") + (simple ? Literal(*value) : argument.name);
        if (!simple) {
            code += OutsideName(function, argument) + " " + argument.name + "{};\n";
            if (value != nullptr) {
                Assign(code, argument.name, *value,
                       argument.type == argument.structure ? library.Find(argument.structure) : nullptr);
            }
        }
    }
    return code + "const bool done = nexwire::" + function.name + "(" + call + ");\n";
}

} // namespace

Json CallLines(const Wire& library, const Exchange& exchange, const std::string& target, const std::string& body,
               const WireFunction* function, const std::string& server, const Keel::CRedactor& redactor,
               Allocator& memory)
{
    Fields lines(memory);
    lines.Text("curl", CurlLine(exchange, target, body, server));
    if (function != nullptr) {
        Arguments arguments(*function, exchange, body);
        lines.Text("call", CommandLine(*function, arguments, server, redactor))
            .Text("cpp", Program(library, *function, arguments));
    }
    return lines.Take();
}

} // namespace nexwire::simulator
