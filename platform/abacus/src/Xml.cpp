#include <charconv>

#include <pugixml.hpp>

#include "Reader.h"

namespace Abacus {
namespace {

bool ToInt(std::string_view text, std::int64_t& value)
{
    std::int64_t read = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), read);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        return false;
    }
    value = read;
    return true;
}

std::string_view Trimmed(std::string_view text)
{
    constexpr std::string_view kBlank = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlank);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

class XmlNode {
public:
    explicit XmlNode(pugi::xml_node node) : node_(node) {}

    void Bool(bool& value) const
    {
        const std::string_view text = node_.child_value();
        if (text == "true" || text == "1") {
            value = true;
        } else if (text == "false" || text == "0") {
            value = false;
        }
    }

    bool Int(std::int64_t& value) const { return ToInt(node_.child_value(), value); }

    bool Text(std::string& value) const
    {
        value = node_.child_value();
        return true;
    }

    void ReadRange(Range& range) const
    {
        const bool min = ToInt(node_.attribute("min").value(), range.min);
        const bool max = ToInt(node_.attribute("max").value(), range.max);
        range.given = min || max;
    }

    void ReadOptions(Options& value) const
    {
        std::string_view rest = node_.attribute("options").value();
        while (!rest.empty()) {
            const std::size_t comma = rest.find(',');
            const std::string_view word = Trimmed(rest.substr(0, comma));
            if (!word.empty()) {
                value.options.emplace_back(word);
            }
            rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
        }
        value.defaultOption = node_.attribute("default").value();
    }

    template <class Step>
    void EachChild(const Step& step) const
    {
        for (pugi::xml_node child = node_.first_child(); child; child = child.next_sibling()) {
            if (child.type() == pugi::node_element) {
                step(std::string_view(child.name()), XmlNode(child));
            }
        }
    }

    template <class Step>
    void EachElement(std::string_view name, const Step& step) const
    {
        EachChild([&](std::string_view found, const XmlNode& child) {
            if (found == name) {
                step(child);
            }
        });
    }

    template <class Step>
    void EachNode(const Step& step) const
    {
        EachChild([&](std::string_view, const XmlNode& child) { step(child); });
    }

private:
    pugi::xml_node node_;
};

/// The one element of a document; none when there are more, or a document type.
pugi::xml_node OnlyElement(const pugi::xml_document& document)
{
    pugi::xml_node root;
    for (const pugi::xml_node node : document) {
        if (node.type() == pugi::node_doctype || (node.type() == pugi::node_element && root)) {
            return pugi::xml_node();
        }
        if (node.type() == pugi::node_element) {
            root = node;
        }
    }
    return root;
}

} // namespace

bool ReadXml(const std::string& document, const Table& table, char* structure)
{
    constexpr unsigned kFlags =
        pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol | pugi::parse_trim_pcdata | pugi::parse_doctype;
    pugi::xml_document tree;
    if (!tree.load_buffer(document.data(), document.size(), kFlags, pugi::encoding_utf8)) {
        return false;
    }
    const pugi::xml_node root = OnlyElement(tree);
    if (!root || root.name() != table.root || !IsShallow(XmlNode(root), kMaxDepth)) {
        return false;
    }
    ReadStructure(XmlNode(root), table, structure);
    return true;
}

} // namespace Abacus
