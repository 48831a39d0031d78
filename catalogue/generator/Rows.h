#pragma once

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "catalogue/generator/Header.h"

namespace generator {

/// All headers together, and what they say as source files.
class Rows {
public:
    /// Throws Unreadable for what no row can be made of.
    explicit Rows(std::vector<Header> headers);

    const std::vector<Header>& Headers() const { return headers_; }
    /// Whether a header gives rows: one of a module or of the protocol.
    static bool Gives(const Header& header);
    /// Name of a header's source file, without ".cpp".
    static std::string FileOf(const Header& header);

    void Write(std::ostream& out, const Header& header) const;
    void WriteIndex(std::ostream& out) const;
    /// Names of all classes and free functions that are marked for export, and their namespaces.
    void WriteExports(std::ostream& out) const;

private:
    struct Known {
        const Type* type;
        bool structure; ///< Crosses the wire; otherwise a plain record.
        const Header* header;
    };
    struct Wanted {
        std::string structure; ///< As people call it; empty for plain types.
        bool list = false;
    };

    const Known* Find(const std::string& name, const std::string& scope, std::string& qualified) const;
    Wanted Resolve(const std::string& type, const std::string& scope) const;
    void MarkRecords(const std::string& type, const std::string& scope, const std::string& file, int line);
    void WriteFunction(std::ostream& out, const Header& header, const Type& type, const Function& function,
                       std::size_t number) const;
    void WriteType(std::ostream& out, const Type& type, std::size_t number) const;
    void WriteRecord(std::ostream& out, const Type& type, std::size_t number) const;

    std::vector<Header> headers_;
    std::map<std::string, Known> known_;  ///< By qualified name.
    std::map<std::string, bool> records_; ///< Records that functions use.
};

} // namespace generator
