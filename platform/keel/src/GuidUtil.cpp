#include "keel/GuidUtil.h"

#include <boost/uuid/entropy_error.hpp>
#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid.hpp>

namespace Keel::GuidUtil {

std::string CreateGuid()
{
    boost::uuids::uuid uuid;
    try {
        uuid = boost::uuids::random_generator()();
    } catch (const boost::uuids::entropy_error&) {
        return std::string();
    }
    std::string text;
    text.reserve(2 * uuid.size());
    for (const std::uint8_t byte : uuid) {
        text += "0123456789abcdef"[byte >> 4U];
        text += "0123456789abcdef"[byte & 0xFU];
    }
    return text;
}

} // namespace Keel::GuidUtil
