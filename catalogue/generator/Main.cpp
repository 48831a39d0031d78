// Reads the headers of the library and writes what they say as C++: a source file per header with a row for each
// request function, structure and member.
//
//   nexwire_read_headers OUTPUT ROOT FILE
//
// FILE names the headers, one a line. Those below ROOT/include/nexwire/<Module> give the functions, those below
// ROOT/protocol the structures, those of Abacus plain records; what all of them mark for export is listed in
// OUTPUT/exports.txt. A file that is right already is left alone.

#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>

#include "catalogue/generator/Rows.h"

namespace {

bool ReadWhole(const std::string& name, std::string& text)
{
    std::ifstream file(name, std::ios::binary);
    std::ostringstream all;
    all << file.rdbuf();
    text = all.str();
    return static_cast<bool>(file);
}

bool WriteIfChanged(const std::string& name, const std::string& text)
{
    std::string old;
    if (ReadWhole(name, old) && old == text) {
        return true;
    }
    std::ofstream file(name, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (!file) {
        std::cerr << "cannot write " << name << "\n";
    }
    return static_cast<bool>(file);
}

/// Module and spelling in an include of a header below one of the two roots of includes.
void Place(generator::Header& header, const std::string& root)
{
    header.include = header.file;
    for (const std::string& start : {root + "/include/", root + "/platform/abacus/include/", root + "/"}) {
        if (header.file.compare(0, start.size(), start) == 0) {
            header.include = header.file.substr(start.size());
            break;
        }
    }
    const std::string frame = "nexwire/";
    const std::size_t slash = header.include.find('/', frame.size());
    if (header.include.compare(0, frame.size(), frame) == 0 && slash != std::string::npos) {
        header.module = header.include.substr(frame.size(), slash - frame.size());
    }
}

int Run(const std::string& output, const std::string& root, const std::string& list)
{
    std::string names;
    if (!ReadWhole(list, names)) {
        std::cerr << "cannot read " << list << "\n";
        return 1;
    }
    std::vector<generator::Header> headers;
    std::istringstream lines(names);
    for (std::string name; std::getline(lines, name);) {
        std::string text;
        if (name.empty()) {
            continue;
        }
        if (!ReadWhole(name, text)) {
            std::cerr << "cannot read " << name << "\n";
            return 1;
        }
        headers.push_back(generator::ReadHeader(name, text));
        Place(headers.back(), root);
    }
    std::sort(headers.begin(), headers.end(),
              [](const auto& left, const auto& right) { return left.include < right.include; });
    const generator::Rows rows(std::move(headers));
    bool good = true;
    for (const generator::Header& header : rows.Headers()) {
        if (generator::Rows::Gives(header)) {
            std::ostringstream text;
            rows.Write(text, header);
            good = WriteIfChanged(output + "/" + generator::Rows::FileOf(header) + ".cpp", text.str()) && good;
        }
    }
    std::ostringstream index;
    rows.WriteIndex(index);
    std::ostringstream exported;
    rows.WriteExports(exported);
    good = WriteIfChanged(output + "/Index.cpp", index.str()) && good;
    return WriteIfChanged(output + "/exports.txt", exported.str()) && good ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: nexwire_read_headers OUTPUT ROOT FILE\n";
        return 2;
    }
    try {
        return Run(argv[1], argv[2], argv[3]);
    } catch (const generator::Unreadable& problem) {
        std::cerr << problem.what() << "\n";
        return 1;
    }
}
