#include "src/Drawing.h"
#include "src/Equipment.h"

namespace nexwire::simulator {

std::string Picture(std::string_view about, bool small)
{
    return DrawScreen({std::string(about)}, small ? 48 : 144, small ? 36 : 108).Png();
}

} // namespace nexwire::simulator
