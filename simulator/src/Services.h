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

/// Work that takes time: "jobs".
void AddJobs(Services& services, double timeScale);

/// Bytes that come and go: "files".
void AddFiles(Services& services);

/// The bytes of a file that was uploaded under that plan and identifier; false when there is none.
/// @param closed  only one that was uploaded to its end; false for uploads that do not tell their end.
bool ReadFile(Handling& handling, const std::string& plan, std::string_view upload, std::string& bytes,
              bool closed = true);

/// Arrangements, clock records and what they come to.
/// @param timeScale  as with `AddDownloads`.
void AddAttendance(Services& services, double timeScale);

/// Figures that are made up and add up: people, alarms, heat maps.
void AddStatistics(Services& services);

/// The register of persons: persons, organisations, credentials.
void AddPersonnel(Services& services);
void AddCredentials(Services& services);
void AddPersonGroups(Services& services);
/// Persons from files, devices and enrolment stations.
void AddPersonJobs(Services& services, double timeScale);

/// Groups whose elements follow the resources of the platform.
void AddGroups(Services& services);

/// What the platform has been asked to do: a table of its own, so that a page of a hundred thousand entries is there at
/// once.
void AddLog(Services& services);
/// Makes the table where there is none.
void PrepareLog(Store& store);
/// Writes what a request asked for and what came of it; what only reads is not worth an entry.
void NoteInLog(Store::Transaction& store, const Outcome& outcome);
/// Writes that somebody signed in or locked the screen, or tried to.
void NoteSignIn(Handling& handling, std::string_view user, bool passed, const std::string& content);

/// Nodes and links that a refresh finds. @param timeScale  as with `AddDownloads`.
void AddTopology(Services& services, double timeScale);

/// Users, their passwords and the one who is signed in.
void AddUsers(Services& services, std::shared_ptr<const Cipher> cipher);
/// The first users, once for a store.
void SeedUsers(Store& store, const Cipher& cipher);
/// Name of the user who is signed in.
std::string SignedIn(Store::Transaction& transaction);

/// Recording templates and the addresses of files.
void AddVideo(Services& services);

/// Appointments, permissions and records of visitors.
void AddVisitors(Services& services, double timeScale);

} // namespace nexwire::simulator
