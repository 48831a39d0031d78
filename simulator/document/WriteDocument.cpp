// Writes the document that the local platform reads: every request function as it reaches the wire, and every
// structure.

#include <cctype>
#include <cstdio>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "catalogue/Catalogue.h"
#include "catalogue/Comments.h"
#include "catalogue/Structures.h"
#include "tools/Observed.h"

namespace {

using nexwire::catalogue::Argument;
using nexwire::catalogue::Shape;
using nexwire::tools::Observed;
using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void Text(Writer& writer, const char* key, const std::string& value)
{
    if (!value.empty()) {
        writer.Key(key);
        writer.String(value.c_str(), static_cast<rapidjson::SizeType>(value.size()));
    }
}

/// Words in double quotes with nothing but commas and remarks in brackets between them: what a text may be.
std::vector<std::string> Words(const std::string& comment)
{
    std::vector<std::string> words;
    std::size_t at = comment.find('"');
    while (at != std::string::npos) {
        const std::size_t close = comment.find('"', at + 1);
        if (close == std::string::npos) {
            break;
        }
        words.push_back(comment.substr(at + 1, close - at - 1));
        std::size_t next = close + 1;
        if (comment.compare(next, 2, " (") == 0) {
            next = comment.find(')', next) + 1;
        }
        while (next < comment.size() &&
               (comment[next] == ',' || std::isspace(static_cast<unsigned char>(comment[next])) != 0)) {
            ++next;
        }
        at = next < comment.size() && comment[next] == '"' && next > close + 1 ? next : std::string::npos;
    }
    return words.size() < 2 ? std::vector<std::string>() : words;
}

const char* KindOf(nexwire::core::Kind kind)
{
    static const char* const names[] = {"text",   "int",      "int64",   "real",      "bool",
                                        "struct", "textList", "intList", "structList"};
    return names[static_cast<std::size_t>(kind)];
}

void WriteFunction(Writer& writer, const Observed& observed)
{
    writer.StartObject();
    Text(writer, "module", observed.function->Module());
    Text(writer, "class", observed.function->ClassName());
    const std::string name = observed.function->Name();
    Text(writer, "function", name.substr(name.find("::") + 2));
    Text(writer, "overload", observed.function->Signature());
    writer.Key("verb");
    writer.Int(observed.request.method);
    Text(writer, "path", observed.path);
    if (observed.direct) {
        writer.Key("direct");
        writer.Bool(true);
    }
    rapidjson::Document body;
    if (!observed.request.body.empty() && !body.Parse(observed.request.body.c_str()).HasParseError() &&
        body.IsObject()) {
        if (!observed.direct && body.MemberCount() == 1) {
            Text(writer, "root", body.MemberBegin()->name.GetString());
        }
        Text(writer, "body", observed.direct ? observed.inputStructure : observed.bodyStructure);
        if (observed.bodyStructure.empty()) {
            Text(writer, "example", observed.request.body);
        }
    }
    if (observed.passThrough) {
        writer.Key("command");
        writer.Int(observed.command);
        Text(writer, "condition", observed.condition);
        Text(writer, observed.deviceInput.empty() ? "output" : "input",
             observed.deviceInput.empty() ? observed.outputStructure : observed.inputStructure);
    } else {
        Text(writer, "result", observed.outputStructure);
        if (observed.outputIsList) {
            writer.Key("resultIsList");
            writer.Bool(true);
        }
    }
    writer.EndObject();
}

void WriteStructure(Writer& writer, const nexwire::core::FieldTable& fields)
{
    writer.Key(fields.name);
    writer.StartObject();
    Text(writer, "root", fields.rootName == nullptr ? "" : fields.rootName);
    writer.Key("members");
    writer.StartArray();
    for (const nexwire::core::Field& field : fields) {
        writer.StartObject();
        Text(writer, "key", field.key);
        Text(writer, "kind", KindOf(field.kind));
        if (field.ops != nullptr) {
            Text(writer, "structure", field.ops->fields->name);
        }
        const std::vector<std::string> words = field.kind == nexwire::core::Kind::Text
                                                   ? Words(nexwire::catalogue::DocOfMember(fields.name, field.key))
                                                   : std::vector<std::string>();
        if (!words.empty()) {
            writer.Key("values");
            writer.StartArray();
            for (const std::string& word : words) {
                writer.String(word.c_str());
            }
            writer.EndArray();
        }
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
}

void WriteRecord(Writer& writer, const std::string& name)
{
    writer.Key(name.c_str());
    writer.StartObject();
    writer.Key("members");
    writer.StartArray();
    for (const nexwire::tools::MemberView& member : nexwire::tools::ViewOf(name).members) {
        writer.StartObject();
        Text(writer, "key", member.key);
        const bool nested = !member.structure.empty();
        Text(writer, "kind",
             nested                              ? (member.list ? "structList" : "struct")
             : member.type == "text"             ? "text"
             : member.type == "integer"          ? "int"
             : member.type == "list of texts"    ? "textList"
             : member.type == "list of integers" ? "intList"
                                                 : "bool");
        Text(writer, "structure", member.structure);
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: nexwire_write_document FILE\n", stderr);
        return 2;
    }
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    writer.Key("functions");
    writer.StartArray();
    nexwire::tools::Observer observer;
    std::set<std::string> records;
    for (const nexwire::catalogue::Function& function : nexwire::catalogue::All()) {
        const Observed observed = observer.Observe(function);
        if (observed.sent) {
            WriteFunction(writer, observed);
        }
        for (const Argument& argument : function.Arguments()) {
            if (argument.type->shape == Shape::Record || argument.type->shape == Shape::RecordList) {
                records.insert(argument.type->name());
            }
        }
    }
    writer.EndArray();
    writer.Key("structures");
    writer.StartObject();
    for (const nexwire::catalogue::StructureInfo& structure : nexwire::catalogue::Structures()) {
        WriteStructure(writer, *structure.fields);
    }
    for (const std::string& name : nexwire::tools::Reachable({records.begin(), records.end()})) {
        WriteRecord(writer, name);
    }
    writer.EndObject();
    writer.EndObject();
    std::ofstream out(argv[1], std::ios::binary);
    out << buffer.GetString() << '\n';
    return out.good() ? 0 : 1;
}
