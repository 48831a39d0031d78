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

/// Commands that the platform relays to devices, one at a time and in batches; "commands" and "batches" of the resource
/// files say what the library's document does not.
/// @throws std::runtime_error for a command that nobody sends.
void AddDeviceChannel(Services& services, const Description& description);

/// Texts that the platform relays to devices as they are: "kestrel" and "netsdk".
void AddDeviceTexts(Services& services);

/// Users with their passwords and safety questions, and the one who is signed in.
void AddUsers(Services& services, std::shared_ptr<const Cipher> cipher);
/// Puts the first users into a fresh database.
void SeedUsers(Store& store, const Cipher& cipher);
/// Name of the user who is signed in.
std::string SignedIn(Store::Transaction& transaction);

/// Groups whose elements follow the resources of the platform.
void AddGroups(Services& services);

/// Writing, searching and saving the log; see OperationLog.h.
void AddLog(Services& services);

/// The network between the devices.
/// @param timeScale  how much faster than a real network it is looked through; more than 0.
void AddTopology(Services& services, double timeScale);

/// Recording templates and addresses of stored files.
void AddVideo(Services& services);

/// Work that takes time: "jobs".
void AddJobs(Services& services, double timeScale);

/// Bytes that come and go: "files".
void AddFiles(Services& services);

/// The bytes of a file that was uploaded whole under that plan and identifier; false when there is none.
bool ReadFile(Handling& handling, const std::string& plan, std::string_view upload, std::string& bytes);

/// Arrangements, clock records and what they come to.
void AddAttendance(Services& services);

/// Figures that are made up and add up: people, alarms, heat maps.
void AddStatistics(Services& services);

} // namespace nexwire::simulator
