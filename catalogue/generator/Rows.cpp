#include "catalogue/generator/Rows.h"

#include <algorithm>
#include <set>

namespace generator {
namespace {

std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        quoted += c == '\n' ? std::string("\\n") : std::string(1, c);
    }
    return quoted + "\"";
}

bool StartsWith(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

/// A qualified name as people call it.
std::string Shown(const std::string& name)
{
    for (const char* space : {"protocol::", "nexwire::"}) {
        if (StartsWith(name, space)) {
            return name.substr(std::string(space).size());
        }
    }
    return name;
}

/// The element of "std::vector<...>"; empty for other types.
std::string ElementOf(const std::string& type)
{
    const std::string vector = "std::vector<";
    return StartsWith(type, vector) && type.back() == '>' ? type.substr(vector.size(), type.size() - vector.size() - 1)
                                                          : "";
}

bool IsSize(const TypeName& type)
{
    static const std::set<std::string> sizes = {"std::size_t",   "size_t",   "int",          "unsigned int",
                                                "std::uint32_t", "uint32_t", "std::int32_t", "unsigned long long"};
    return !type.reference && !type.pointer && sizes.count(type.value) != 0;
}

/// Bytes by pointer and size are one argument, named after the pointer.
bool IsBytes(const Function& function, std::size_t index)
{
    const TypeName& type = function.parameters[index].type;
    const bool bytes =
        type.value == "void" || type.value == "char" || type.value == "unsigned char" || type.value == "std::uint8_t";
    return type.pointer && type.constant && bytes && index + 1 < function.parameters.size() &&
           IsSize(function.parameters[index + 1].type);
}

const char* KindOf(const std::string& type)
{
    static const std::map<std::string, const char*> kinds = {{"std::string", "Text"},
                                                             {"int", "Int"},
                                                             {"std::int32_t", "Int"},
                                                             {"std::int64_t", "Int64"},
                                                             {"double", "Real"},
                                                             {"bool", "Bool"},
                                                             {"std::vector<std::string>", "TextList"},
                                                             {"std::vector<int>", "IntList"},
                                                             {"std::vector<std::int32_t>", "IntList"}};
    const auto found = kinds.find(type);
    return found == kinds.end() ? nullptr : found->second;
}

std::string Optional(const Vocabulary::Bound& bound)
{
    return bound.set ? "{true, " + std::to_string(bound.value) + "}" : "{}";
}

std::string Flag(bool flag)
{
    return flag ? "true" : "false";
}

} // namespace

Rows::Rows(std::vector<Header> headers) : headers_(std::move(headers))
{
    for (const Header& header : headers_) {
        for (const Type& type : header.types) {
            if (Gives(header)) {
                known_[type.name] = {&type, StartsWith(header.include, "protocol/"), &header};
            }
        }
    }
    for (const Header& header : headers_) {
        if (header.module.empty()) {
            continue;
        }
        for (const Type& type : header.types) {
            if (!type.functions.empty() && type.instanceFunction != 0) {
                throw Unreadable(header.file, type.instanceFunction,
                                 type.instanceFunctionName + " is not static, like the other functions of its class");
            }
            for (const Function& function : type.functions) {
                MarkRecords(function.result.value, type.name, header.file, function.line);
                for (const Parameter& parameter : function.parameters) {
                    MarkRecords(parameter.type.value, type.name, header.file, function.line);
                }
            }
        }
    }
}

bool Rows::Gives(const Header& header)
{
    return !header.module.empty() || StartsWith(header.include, "protocol/") || StartsWith(header.include, "abacus/");
}

std::string Rows::FileOf(const Header& header)
{
    std::string name = header.include.substr(0, header.include.size() - 2);
    std::replace(name.begin(), name.end(), '/', '_');
    return name;
}

const Rows::Known* Rows::Find(const std::string& name, const std::string& scope, std::string& qualified) const
{
    for (std::string prefix = scope;;
         prefix = prefix.find("::") == std::string::npos ? "" : prefix.substr(0, prefix.rfind("::"))) {
        qualified = prefix.empty() ? name : prefix + "::" + name;
        const auto found = known_.find(qualified);
        if (found != known_.end()) {
            return &found->second;
        }
        if (prefix.empty()) {
            return nullptr;
        }
    }
}

Rows::Wanted Rows::Resolve(const std::string& type, const std::string& scope) const
{
    std::string qualified;
    if (Find(type, scope, qualified) != nullptr) {
        return {Shown(qualified), false};
    }
    const std::string element = ElementOf(type);
    if (!element.empty() && Find(element, scope, qualified) != nullptr) {
        return {Shown(qualified), true};
    }
    return {};
}

void Rows::MarkRecords(const std::string& type, const std::string& scope, const std::string& file, int line)
{
    const std::string element = ElementOf(type);
    std::string qualified;
    const Known* const known = Find(element.empty() ? type : element, scope, qualified);
    if (known == nullptr || known->structure || records_[qualified]) {
        return;
    }
    records_[qualified] = true;
    if (known->type->derived) {
        throw Unreadable(file, line, qualified + " has bases; a plain record has members only");
    }
    for (const Member& member : known->type->members) {
        if (KindOf(member.type) == nullptr && Resolve(member.type, qualified).structure.empty()) {
            throw Unreadable(known->header->file, member.line,
                             "a member of a record cannot be of the type " + member.type);
        }
        MarkRecords(member.type, qualified, file, line);
    }
}

void Rows::WriteFunction(std::ostream& out, const Header& header, const Type& type, const Function& function,
                         std::size_t number) const
{
    const std::string className = Shown(type.name);
    const auto at = [&] { out << "#line " << function.line << " " << Quoted(header.file) << "\n"; };
    std::string types;
    std::string values;
    std::string written;
    std::size_t count = 0;
    std::string rows;
    for (std::size_t i = 0; i < function.parameters.size(); ++i) {
        const Parameter& parameter = function.parameters[i];
        const TypeName& of = parameter.type;
        bool output = of.reference && !of.constant;
        const Wanted wanted = Resolve(of.value, type.name);
        const std::string slot = "a[" + std::to_string(count++) + "]";
        std::string plain = of.value;
        std::string value = "Slot<" + of.value + ">(" + slot + ")";
        types += (i == 0 ? "" : ", ") + of.written;
        written += (i == 0 ? "" : ", ") + of.written + " " + parameter.name;
        if (IsBytes(function, i)) {
            const Parameter& size = function.parameters[++i];
            plain = "std::string";
            value = "Bytes<" + of.value + ">(" + slot + "), static_cast<" + size.type.value + ">(Slot<std::string>(" +
                    slot + ").size())";
            types += ", " + size.type.written;
            written += ", " + size.type.written + " " + size.name;
        } else if (of.pointer && of.value == "void" && !of.constant) {
            plain = "AnyStructure";
            value = "Slot<AnyStructure>(" + slot + ").structure.get()";
            if (i + 1 < function.parameters.size() && IsSize(function.parameters[i + 1].type)) {
                const Parameter& size = function.parameters[++i];
                output = true; // What is only read needs no size.
                value += ", static_cast<" + size.type.value + ">(Slot<AnyStructure>(" + slot + ").size())";
                types += ", " + size.type.written;
                written += ", " + size.type.written + " " + size.name;
            }
        } else if (of.pointer) {
            throw Unreadable(header.file, function.line,
                             "a pointer needs its size behind it: " + of.written + " " + parameter.name);
        }
        values += (values.empty() ? "" : ", ") + value;
        rows +=
            "    {" + Quoted(parameter.name) + ", " +
            (wanted.structure.empty() ? "&PlainType<" + plain + ">, nullptr" : "nullptr, " + Quoted(wanted.structure)) +
            ", " + Flag(wanted.list) + ", " + Flag(output) +
            (!wanted.structure.empty() && wanted.list ? ", ListOf<" + of.value + ">()" : "") + "},\n";
    }
    if (count > 0) {
        at();
        out << "constexpr ParameterRow kParameters" << number << "[] = {\n" << rows << "};\n";
    }
    at();
    out << "void Call" << number << "([[maybe_unused]] void* const* a, [[maybe_unused]] Outcome& outcome)\n{\n";
    at();
    const std::string call = "static_cast<" + function.result.written + " (*)(" + types + ")>(&" + type.name +
                             "::" + function.name + ")(" + values + ")";
    const std::string& result = function.result.value;
    if (result == "bool" && !function.result.reference) {
        out << "    outcome.success = " << call << ";\n";
    } else if (result == "void" && !function.result.pointer) {
        out << "    " << call << ";\n";
    } else if (function.result.pointer) {
        throw Unreadable(header.file, function.line, "a function that returns a pointer");
    } else {
        const Wanted wanted = Resolve(result, type.name);
        out << "    const " << result << " result = " << call << ";\n";
        out << "    outcome.returned = "
            << (wanted.structure.empty() ? "PlainType<" + result + ">()"
                                         : "NamedType(" + Quoted(wanted.structure) + ", " + Flag(wanted.list) +
                                               (wanted.list ? ", ListOf<" + result + ">())" : ")"))
            << ".write(&result);\n";
    }
    out << "}\n";
    out << "constexpr FunctionRow kFunction" << number << " = {" << Quoted(className) << ", " << Quoted(function.name)
        << ",\n    " << Quoted(function.result.written) << ", " << Quoted(written) << ",\n    " << Quoted(function.doc)
        << ",\n    " << (count > 0 ? "kParameters" + std::to_string(number) : "nullptr") << ", " << count << ", Call"
        << number << "};\n";
}

void Rows::WriteType(std::ostream& out, const Type& type, std::size_t number) const
{
    const std::string n = std::to_string(number);
    std::string rows;
    const bool allRequired = type.doc.find("All members are required.") != std::string::npos;
    for (std::size_t i = 0; i < type.members.size(); ++i) {
        const Member& member = type.members[i];
        Vocabulary said = member.vocabulary;
        said.required = said.required || allRequired;
        const std::string own = n + "_" + std::to_string(i);
        if (said.Any()) {
            if (!said.values.empty()) {
                out << "constexpr Choice kChoices" << own << "[] = {";
                for (const Vocabulary::Choice& choice : said.values) {
                    out << "{" << Quoted(choice.value) << ", " << Quoted(choice.means) << "}, ";
                }
                out << "};\n";
            }
            if (!said.also.empty()) {
                out << "constexpr std::int64_t kAlso" << own << "[] = {";
                for (const std::int64_t value : said.also) {
                    out << value << ", ";
                }
                out << "};\n";
            }
            out << "constexpr Limits kLimits" << own << " = {"
                << (said.values.empty() ? "{}" : "{kChoices" + own + ", " + std::to_string(said.values.size()) + "}")
                << ", " << Flag(said.closed) << ", " << Flag(said.numbers) << ", " << Optional(said.minimum) << ", "
                << Optional(said.maximum) << ", " << Optional(said.minLength) << ", " << Optional(said.maxLength)
                << ", " << Optional(said.minItems) << ", " << Optional(said.maxItems) << ", "
                << (said.also.empty() ? "{}" : "{kAlso" + own + ", " + std::to_string(said.also.size()) + "}") << ", "
                << Flag(said.empty) << ", " << Flag(said.required) << ", " << Flag(said.readOnly) << ", "
                << Quoted(said.unit) << "};\n";
        }
        rows += "    {" + Quoted(member.name) + ", " + Quoted(member.type) + ", " + Quoted(member.doc) + ", " +
                (said.Any() ? "&kLimits" + own : "nullptr") + "},\n";
    }
    if (!rows.empty()) {
        out << "constexpr MemberRow kMembers" << n << "[] = {\n" << rows << "};\n";
    }
}

void Rows::WriteRecord(std::ostream& out, const Type& type, std::size_t number) const
{
    const std::string n = std::to_string(number);
    const std::string name = Shown(type.name);
    out << "constexpr RecordMember kRecordMembers" << n << "[] = {\n";
    for (const Member& member : type.members) {
        const char* const kind = KindOf(member.type);
        const Wanted wanted = Resolve(member.type, type.name);
        out << "    {" << Quoted(member.name) << ", core::Kind::"
            << (kind != nullptr ? kind
                : wanted.list   ? "StructList"
                                : "Struct")
            << ", offsetof(" << name << ", " << member.name << "), " << Quoted(kind == nullptr ? wanted.structure : "")
            << "},\n";
    }
    out << "};\nconstexpr RecordTable kRecord" << n << " = MakeRecord<" << name << ">(" << Quoted(name)
        << ", {kRecordMembers" << n << ", " << type.members.size() << "});\n";
}

void Rows::Write(std::ostream& out, const Header& header) const
{
    out << "// Made from " << header.include << ".\n";
    if (!StartsWith(header.include, "protocol/")) {
        out << "#include " << Quoted(header.include) << "\n";
    }
    out << "#include \"catalogue/Rows.h\"\n\nnamespace nexwire::catalogue {\nnamespace {\n\n";
    std::string functions;
    std::string classes;
    std::string types;
    std::string records;
    std::size_t functionCount = 0;
    std::size_t classCount = 0;
    std::size_t typeCount = 0;
    std::size_t recordCount = 0;
    for (const Type& type : header.types) {
        if (!type.functions.empty() && !header.module.empty()) {
            classes += "    {" + Quoted(Shown(type.name)) + ", " + Quoted(type.doc) + "},\n";
            ++classCount;
            for (const Function& function : type.functions) {
                WriteFunction(out, header, type, function, functionCount);
                functions += "    kFunction" + std::to_string(functionCount++) + ",\n";
            }
            continue;
        }
        WriteType(out, type, typeCount);
        types += "    {" + Quoted(Shown(type.name)) + ", " + Quoted(type.doc) + ", " +
                 (type.members.empty()
                      ? "{}"
                      : "{kMembers" + std::to_string(typeCount) + ", " + std::to_string(type.members.size()) + "}") +
                 "},\n";
        ++typeCount;
        if (records_.count(type.name) != 0) {
            out << "#if defined(__GNUC__)\n#pragma GCC diagnostic ignored \"-Winvalid-offsetof\"\n#endif\n";
            WriteRecord(out, type, recordCount);
            records += "    kRecord" + std::to_string(recordCount++) + ",\n";
        }
    }
    const auto list = [&](const char* row, const char* name, const std::string& rows, std::size_t count) {
        if (count == 0) {
            return std::string("{}");
        }
        out << "constexpr " << row << " " << name << "[] = {\n" << rows << "};\n";
        return "{" + std::string(name) + ", " + std::to_string(count) + "}";
    };
    const std::string functionList = list("FunctionRow", "kFunctions", functions, functionCount);
    const std::string classList = list("ClassRow", "kClasses", classes, classCount);
    const std::string typeList = list("TypeRow", "kTypes", types, typeCount);
    const std::string recordList = list("RecordTable", "kRecords", records, recordCount);
    const std::string name = FileOf(header);
    out << "\n} // namespace\n\nextern const HeaderRows k_" << name << ";\nconst HeaderRows k_" << name << " = {"
        << Quoted(header.module) << ", " << Quoted(header.include) << ",\n    " << Quoted(Trimmed(header.remark))
        << ",\n    " << functionList << ", " << classList << ", " << typeList << ", " << recordList
        << "};\n\n} // namespace nexwire::catalogue\n";
}

void Rows::WriteIndex(std::ostream& out) const
{
    out << "#include \"catalogue/Rows.h\"\n\nnamespace nexwire::catalogue {\n\n";
    std::string list;
    for (const Header& header : headers_) {
        if (Gives(header)) {
            out << "extern const HeaderRows k_" << FileOf(header) << ";\n";
            list += "    &k_" + FileOf(header) + ",\n";
        }
    }
    out << "\nnamespace {\nconstexpr const HeaderRows* kHeaders[] = {\n"
        << list << "};\n}\n\nSpan<const HeaderRows* const> AllHeaders()\n{\n"
        << "    return {kHeaders, sizeof(kHeaders) / sizeof(kHeaders[0])};\n}\n\n"
        << "} // namespace nexwire::catalogue\n";
}

void Rows::WriteExports(std::ostream& out) const
{
    std::set<std::string> names;
    std::set<std::string> spaces;
    const auto add = [&](const std::string& name) {
        names.insert(name);
        for (std::size_t at = name.find("::"); at != std::string::npos; at = name.find("::", at + 2)) {
            spaces.insert(name.substr(0, at));
        }
    };
    for (const Header& header : headers_) {
        for (const Type& type : header.types) {
            if (type.exported && type.compiled) {
                add(type.name);
            }
        }
        for (const std::string& function : header.exportedFunctions) {
            add(function);
        }
    }
    for (const std::string& space : spaces) {
        out << "namespace " << space << "\n";
    }
    for (const std::string& name : names) {
        out << name << "\n";
    }
}

} // namespace generator
