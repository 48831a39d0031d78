#pragma once

#include <map>
#include <memory>
#include <string>

#include "src/Cipher.h"
#include "src/Engine.h"

namespace nexwire::simulator {

using Services = std::map<std::string, Service, std::less<>>;

void AddEncryption(Services& services, std::shared_ptr<const Cipher> cipher);

/// @param timeScale  how much faster than a real controller devices take persons; more than 0.
void AddDownloads(Services& services, double timeScale);

/// Commands that the platform relays to devices, one at a time and in batches; "deviceCommands" describes them.
void AddDeviceChannel(Services& services, const Description& description);

} // namespace nexwire::simulator
