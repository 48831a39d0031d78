#include <nlohmann/json.hpp>

#include "Peers.h"

namespace bench {

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PlainPerson, personGuid, personName, personNo, orgGuid, orgName, certificateNo,
                                   phoneNo, beginTime, endTime, remark, gender, personType, cardCount, faceCount,
                                   fingerprintCount, enabled, visitor)

bool ReadWithNlohmann(const std::string& answer, std::vector<PlainPerson>& persons)
{
    const nlohmann::json document = nlohmann::json::parse(answer);
    if (document.at("code").get_ref<const std::string&>() != "0-0") {
        return false;
    }
    document.at("data").at("personList").get_to(persons);
    return true;
}

std::string WriteWithNlohmann(const std::vector<PlainPerson>& persons)
{
    nlohmann::json document;
    document["personAddParam"]["personList"] = persons;
    return document.dump(1, '\t');
}

} // namespace bench
