#include "Application/DeviceManagement/DeviceGuid.h"

#include "core/Log.h"

namespace nexwire::guid {
namespace {

constexpr std::size_t kLength = 32;
constexpr std::size_t kSerialLength = 10;

std::string Shorten(const std::string& deviceGuid)
{
    return IsLong(deviceGuid) ? deviceGuid.substr(deviceGuid.size() - kSerialLength) : deviceGuid;
}

std::string FillUp(std::string serial)
{
    serial.resize(kLength, '$');
    return serial;
}

} // namespace

bool IsLong(const std::string& deviceGuid)
{
    return deviceGuid.size() > kLength;
}

std::string Supply(const char* function, const char* request, const std::string& deviceGuid)
{
    std::string serial = FillUp(Shorten(deviceGuid));
    NEXWIRE_LOG_INFO_OF(function, "[mko]SupplyGuid %s [strGuid - serial] [%s - %s]", request, deviceGuid.c_str(),
                        serial.c_str());
    return serial;
}

std::string SupplyForChannel(const char* function, const char* request, const std::string& deviceGuid)
{
    std::string serial = Shorten(deviceGuid);
    LogSerial(function, request, serial);
    serial = FillUp(std::move(serial));
    LogSerial(function, request, serial);
    return serial;
}

void LogSerial(const char* function, const char* request, const std::string& serial)
{
    NEXWIRE_LOG_INFO_OF(function, "[mko]SupplyGuid %s [serial - %s]", request, serial.c_str());
}

} // namespace nexwire::guid
