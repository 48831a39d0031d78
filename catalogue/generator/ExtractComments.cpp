// Writes what the headers say about structures, members and request functions as rows of C++ tables, so that the
// command line and the reference can say it too.
//
//   extract_comments OUTPUT FILE...    headers (.h) and the tables of their wire keys (.cpp)

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace {

struct Member {
    std::string type;
    std::string name;
    std::string doc;
};

struct Type {
    std::string name;
    std::string doc;
    std::vector<Member> members;
};

struct Function {
    std::string className;
    std::string name;
    std::string result;
    std::string parameters;
    std::string doc;
};

struct Class {
    std::string name;
    std::string doc;
    std::string remark;
};

struct Found {
    std::vector<Type> types;
    std::vector<Class> classes;
    std::vector<Function> functions;
    /// Wire key by "structure.member", where it is not the member's name.
    std::map<std::string, std::string> keys;
};

bool StartsWith(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

std::string Trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(" \t\r");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// Joins the lines of a comment to paragraphs; a line that begins with "@" begins one.
void AppendLine(std::string& doc, const std::string& line)
{
    const std::string text = Trimmed(line);
    if (text.empty()) {
        doc += doc.empty() || doc.back() == '\n' ? "" : "\n";
        return;
    }
    const std::size_t mark = text.find("@param");
    if (mark != std::string::npos && mark > 0) {
        AppendLine(doc, text.substr(0, mark));
        AppendLine(doc, text.substr(mark));
        return;
    }
    if (!doc.empty() && doc.back() != '\n') {
        doc += text[0] == '@' ? '\n' : ' ';
    }
    doc += text;
}

/// The name of the class or structure that a line opens; empty for other lines.
std::string OpenedType(const std::string& line, const std::string& keyword)
{
    if (!StartsWith(line, keyword + " ") || line.back() != '{') {
        return "";
    }
    std::string name;
    std::size_t at = keyword.size();
    while (at < line.size()) {
        const std::size_t begin = line.find_first_not_of(' ', at);
        const std::size_t end = line.find_first_of(" {:", begin);
        const std::string word = line.substr(begin, end - begin);
        if (word.empty()) {
            break;
        }
        name = word;
        at = end;
        if (name != "NEXWIRE_API") {
            break;
        }
    }
    return name;
}

/// Whether the comment in front of the first function speaks of the second, too, which stands right behind it: of a
/// getter and its setter, of things done alike. "Adds …" says nothing about the deletion below it.
bool Share(const std::string& first, const std::string& second)
{
    const auto verb = [](const std::string& name) {
        return name.substr(0,
                           static_cast<std::size_t>(std::find_if(name.begin(), name.end(),
                                                                 [](unsigned char c) { return std::islower(c) == 0; }) -
                                                    name.begin()));
    };
    const auto reads = [](const std::string& word) { return word == "get" || word == "set"; };
    return verb(first) == verb(second) || (reads(verb(first)) && reads(verb(second)));
}

class HeaderReader {
public:
    explicit HeaderReader(Found& found) : found_(found) {}

    void Read(std::istream& file)
    {
        for (std::string line; std::getline(file, line);) {
            Take(Trimmed(line));
        }
    }

private:
    void Take(const std::string& line)
    {
        if (StartsWith(line, "///<")) {
            if (lastMember_ != nullptr) {
                AppendLine(*lastMember_, line.substr(4));
            }
            return;
        }
        if (StartsWith(line, "///")) {
            if (!inDoc_) {
                doc_.clear();
                sharer_.clear();
            }
            inDoc_ = true;
            AppendLine(doc_, line.substr(3));
            return;
        }
        inDoc_ = false;
        if (StartsWith(line, "//")) {
            TakeRemark(Trimmed(line.substr(2)));
            return;
        }
        if (line.empty()) {
            doc_.clear();
            sharer_.clear();
            return;
        }
        if (StartsWith(line, "namespace ")) {
            inNamespace_ = true;
        }
        TakeCode(line);
    }

    void TakeRemark(const std::string& text)
    {
        if (!inNamespace_) {
            AppendLine(remark_, text);
        } else if (StartsWith(text, "----")) {
            section_ = Trimmed(text.substr(4, text.rfind("----") - 4));
        }
    }

    void TakeCode(const std::string& line)
    {
        if (inClass_ && (StartsWith(line, "static ") || !statement_.empty())) {
            TakeFunction(line);
            return;
        }
        const std::string className = OpenedType(line, "class");
        const std::string structName = OpenedType(line, "struct");
        if (!className.empty()) {
            inClass_ = true;
            section_.clear();
            found_.classes.push_back({className, doc_, remark_});
            doc_.clear();
        } else if (!structName.empty()) {
            inStruct_ = true;
            found_.types.push_back({structName, doc_, {}});
            doc_.clear();
        } else if (line == "};") {
            inClass_ = false;
            inStruct_ = false;
            lastMember_ = nullptr;
        } else if (inStruct_) {
            TakeMember(line);
        }
    }

    void TakeFunction(const std::string& line)
    {
        statement_ += (statement_.empty() ? "" : " ") + line;
        if (statement_.find(';') == std::string::npos) {
            return;
        }
        const std::size_t open = statement_.find('(');
        const std::size_t close = statement_.rfind(')');
        if (open != std::string::npos && close != std::string::npos) {
            const std::string head = Trimmed(statement_.substr(7, open - 7));
            const std::size_t space = head.rfind(' ');
            const std::string name = head.substr(space + 1);
            if (!sharer_.empty() && !Share(sharer_, name)) {
                doc_.clear();
            }
            sharer_ = doc_.empty() ? "" : name;
            found_.functions.push_back({found_.classes.back().name, name, head.substr(0, space),
                                        statement_.substr(open + 1, close - open - 1), doc_.empty() ? section_ : doc_});
        }
        statement_.clear();
    }

    void TakeMember(const std::string& line)
    {
        std::string code = line;
        std::string doc = doc_;
        const std::size_t comment = line.find("///<");
        if (comment != std::string::npos) {
            code = Trimmed(line.substr(0, comment));
            AppendLine(doc, line.substr(comment + 4));
        }
        if (code.empty() || code.back() != ';' || code.find('(') != std::string::npos) {
            return;
        }
        code = Trimmed(code.substr(0, code.find_first_of("=;")));
        const std::size_t space = code.rfind(' ');
        if (space == std::string::npos) {
            return;
        }
        std::vector<Member>& members = found_.types.back().members;
        members.push_back({Trimmed(code.substr(0, space)), code.substr(space + 1), doc});
        lastMember_ = &members.back().doc;
        doc_.clear();
    }

    Found& found_;
    std::string doc_;       ///< Of what comes next, up to a blank line.
    std::string remark_;    ///< What the file says about itself before its first declaration.
    std::string section_;   ///< Heading within a class.
    std::string statement_; ///< Declaration that goes over several lines, as far as it was read.
    std::string sharer_;    ///< Function that `doc_` was last given to.
    std::string* lastMember_ = nullptr;
    bool inDoc_ = false;
    bool inNamespace_ = false;
    bool inClass_ = false;
    bool inStruct_ = false;
};

/// Reads which members go by another key: K("Key", member) within a table.
void ReadKeys(std::istream& file, Found& found)
{
    std::string type;
    for (std::string line; std::getline(file, line);) {
        const std::size_t table = line.find("_FIELDS(");
        if (StartsWith(line, "NEXWIRE_") && table != std::string::npos) {
            const std::size_t begin = table + 8;
            type = line.substr(begin, line.find_first_of(",)", begin) - begin);
        }
        for (std::size_t at = line.find("K(\""); at != std::string::npos; at = line.find("K(\"", at + 1)) {
            const std::size_t quote = line.find('"', at + 3);
            const std::size_t close = line.find(')', at);
            if (quote == std::string::npos || close == std::string::npos || quote + 1 > close) {
                continue;
            }
            const std::string member = Trimmed(line.substr(quote + 2, close - quote - 2));
            found.keys[type + "." + member] = line.substr(at + 3, quote - at - 3);
        }
    }
}

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

void Write(std::ostream& out, const Found& found)
{
    out << "constexpr TypeRow kTypes[] = {\n";
    for (const Type& type : found.types) {
        out << "{" << Quoted(type.name) << ", " << Quoted(Trimmed(type.doc)) << "},\n";
    }
    out << "};\nconstexpr MemberRow kMembers[] = {\n";
    for (const Type& type : found.types) {
        for (const Member& member : type.members) {
            const auto key = found.keys.find(type.name + "." + member.name);
            out << "{" << Quoted(type.name) << ", " << Quoted(key == found.keys.end() ? member.name : key->second)
                << ", " << Quoted(member.type) << ", " << Quoted(Trimmed(member.doc)) << "},\n";
        }
    }
    out << "};\nconstexpr ClassRow kClasses[] = {\n";
    for (const Class& row : found.classes) {
        out << "{" << Quoted(row.name) << ", " << Quoted(Trimmed(row.doc)) << ", " << Quoted(Trimmed(row.remark))
            << "},\n";
    }
    out << "};\nconstexpr FunctionRow kFunctions[] = {\n";
    for (const Function& row : found.functions) {
        out << "{" << Quoted(row.className) << ", " << Quoted(row.name) << ", " << Quoted(row.result) << ", "
            << Quoted(row.parameters) << ", " << Quoted(Trimmed(row.doc)) << "},\n";
    }
    out << "};\n";
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::cerr << "usage: extract_comments OUTPUT FILE...\n";
        return 2;
    }
    Found found;
    for (int i = 2; i < argc; ++i) {
        const std::string name = argv[i];
        std::ifstream file(name);
        if (!file) {
            std::cerr << "cannot read " << name << "\n";
            return 1;
        }
        if (name.size() > 4 && name.compare(name.size() - 4, 4, ".cpp") == 0) {
            ReadKeys(file, found);
        } else {
            HeaderReader(found).Read(file);
        }
    }
    std::ofstream out(argv[1], std::ios::trunc);
    Write(out, found);
    out.close();
    if (!out) {
        std::cerr << "cannot write " << argv[1] << "\n";
        return 1;
    }
    return 0;
}
