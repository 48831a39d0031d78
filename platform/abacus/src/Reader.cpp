#include "Reader.h"

namespace Abacus {

bool ReadDocument(const std::string& document, const Table& table, void* structure) noexcept
{
    try {
        const std::size_t first = document.find_first_not_of(" \t\r\n");
        if (first == std::string::npos || document.size() > kMaxBytes || document.find('\0') != std::string::npos) {
            return false;
        }
        char* const target = static_cast<char*>(structure);
        return document[first] == '{' ? ReadJson(document, table, target) : ReadXml(document, table, target);
    } catch (...) {
        return false;
    }
}

} // namespace Abacus
