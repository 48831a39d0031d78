#include <simdjson.h>

#include "Peers.h"

namespace bench {
namespace {

using simdjson::ondemand::object;

struct Reader {
    object& from;
    bool good = true;

    void operator()(const char* key, std::string& out)
    {
        std::string_view text;
        if (from.find_field(key).get_string().get(text) != simdjson::SUCCESS) {
            good = false;
            return;
        }
        out.assign(text);
    }
    void operator()(const char* key, std::int32_t& out)
    {
        std::int64_t number = 0;
        good = from.find_field(key).get_int64().get(number) == simdjson::SUCCESS && good;
        out = static_cast<std::int32_t>(number);
    }
    void operator()(const char* key, bool& out)
    {
        good = from.find_field(key).get_bool().get(out) == simdjson::SUCCESS && good;
    }
};

} // namespace

bool ReadWithSimdjson(const std::string& answer, std::vector<PlainPerson>& persons)
{
    // Kept from call to call, as the library's documentation asks for.
    static thread_local simdjson::ondemand::parser parser;
    simdjson::ondemand::document document;
    if (parser.iterate(answer.data(), answer.size(), answer.capacity()).get(document) != simdjson::SUCCESS) {
        return false;
    }
    std::string_view code;
    if (document.find_field("code").get_string().get(code) != simdjson::SUCCESS || code != "0-0") {
        return false;
    }
    simdjson::ondemand::array list;
    if (document.find_field("data").find_field("personList").get_array().get(list) != simdjson::SUCCESS) {
        return false;
    }
    for (auto element : list) {
        object from;
        if (element.get_object().get(from) != simdjson::SUCCESS) {
            return false;
        }
        Reader reader{from};
        ForEachMember(persons.emplace_back(), reader);
        if (!reader.good) {
            return false;
        }
    }
    return true;
}

} // namespace bench
