#pragma once

#include <map>
#include <memory>
#include <string>

#include "src/Cipher.h"
#include "src/Engine.h"

namespace nexwire::simulator {

using Services = std::map<std::string, Service, std::less<>>;

/// Work that takes time, at one moment.
struct Work {
    std::string job;
    std::string kind;
    std::string device; ///< Empty where it is of none.
    const char* state;  ///< "waiting", "running", "done", "failed" or "stopped".
    std::int64_t done = 0;
    std::int64_t total = 0;
    std::int64_t percent = 0;
};
using WorkSink = std::function<void(const Work& work)>;
void EachDownload(Handling& handling, const WorkSink& each);
void EachJob(Handling& handling, const WorkSink& each);
void EachPersonJob(Handling& handling, const WorkSink& each);
void EachRelease(Handling& handling, const WorkSink& each);
void EachCalculation(Handling& handling, const WorkSink& each);
/// All of these.
inline void EachWork(Handling& handling, const WorkSink& each)
{
    for (const auto& of : {EachDownload, EachJob, EachPersonJob, EachRelease, EachCalculation}) {
        of(handling, each);
    }
}

/// The video wall as its service keeps it; one document.
constexpr const char* kWallCollection = "_videoWall";

void AddEncryption(Services& services, std::shared_ptr<const Cipher> cipher);

/// @param timeScale  how much faster than a real controller devices take persons; more than 0.
void AddDownloads(Services& services, double timeScale);

constexpr const char* kParameters = "_parameters";   ///< What devices were set: per device, root and condition.
constexpr const char* kDeviceTexts = "_deviceTexts"; ///< What devices were sent, by request line or command.

/// Commands that the platform relays to devices, one at a time and in batches; "commands" and "batches" of the resource
/// files say what the library's document does not.
/// @param deviceServices  what devices do by themselves, by the name that "commands" give; answers the text asked for.
/// @param timeScale       as with `AddDownloads`, for the "work" of batches.
/// @throws std::runtime_error for a command that nobody sends.
using DeviceService = std::function<std::string(Handling& handling, std::int64_t command, const std::string& condition,
                                                const std::string& input)>;
using DeviceServices = std::map<std::string, DeviceService, std::less<>>;
void AddDeviceChannel(Services& services, const Description& description, const DeviceServices& deviceServices = {},
                      double timeScale = 1.0);

/// Texts that the platform relays to devices as they are: "kestrel" and "netsdk".
void AddDeviceTexts(Services& services);

/// Devices and what they have. @param timeScale  as with `AddDownloads`.
void AddDevices(Services& services, std::shared_ptr<const Cipher> cipher, double timeScale);
/// Channels, inputs, outputs and the like of the devices that a store is seeded with.
void EquipDevices(Store& store);
/// What outputs, relays, partitions and zones do when they are told to; presets, snapshots.
void AddControls(Services& services, double timeScale);

/// Alarms with their pictures, links and templates. @param perMinute  how many happen by themselves; 0: none.
void AddAlarms(Services& services, double perMinute);

/// Work that takes time: "jobs".
void AddJobs(Services& services, double timeScale);

/// Bytes that come and go: "files".
void AddFiles(Services& services);

/// The bytes of a file that was uploaded under that plan and identifier; false when there is none.
/// @param closed  only one that was uploaded to its end; false for uploads that do not tell their end.
bool ReadFile(Handling& handling, const std::string& plan, std::string_view upload, std::string& bytes,
              bool closed = true);

/// Removes the file of a plan whose path has that one identifier.
void EraseFile(Handling& handling, const std::string& plan, std::string_view identifier);

/// The file that was written last under that plan, as a table: lines, taken apart at their commas. Refuses where there
/// is none.
std::vector<std::vector<std::string>> LastTable(Handling& handling, const std::string& plan);

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

/// Release servers and their terminals: materials, publications, upgrades, screenshots.
void AddRelease(Services& services, double timeScale);
/// What a release server does on the command channels.
std::string AskReleaseServer(Handling& handling, std::int64_t command, const std::string& condition,
                             const std::string& input);
/// The number of terminals that a release server has.
std::int64_t TerminalCount(Handling& handling);

/// Maps with their pictures.
void AddMaps(Services& services);

/// What security radars do; learning and arming take time.
DeviceService Radars(double timeScale);
/// What a radar sees at this moment: a JSON document.
std::string PointCloud(Handling& handling);

/// What the platform has been asked to do: a table of its own, so that a page of a hundred thousand entries is there at
/// once.
void AddLog(Services& services);
/// Makes the table where there is none.
void PrepareLog(Store& store);
/// Writes what a request asked for and what came of it; what only reads is not worth an entry.
void NoteInLog(Store::Transaction& store, const Outcome& outcome);
/// Text of a backup of the log, a line an entry; empty when there is none under that path.
std::string LogBackup(Handling& handling, std::string_view path);
/// Writes that somebody signed in or locked the screen, or tried to.
void NoteSignIn(Handling& handling, std::string_view user, bool passed, const std::string& content);

/// Nodes and links that a refresh finds. @param timeScale  as with `AddDownloads`.
void AddTopology(Services& services, double timeScale);

/// Users, their passwords and the one who is signed in; "nameUser" gives the name to templates as "$user".
void AddUsers(Services& services, std::shared_ptr<const Cipher> cipher);
/// The first users, once for a store.
void SeedUsers(Store& store, const Cipher& cipher);
/// Name of the user who is signed in.
std::string SignedIn(Store::Transaction& transaction);

/// Recording templates and the files of the storage server.
void AddVideo(Services& services);

/// Appointments, permissions and records of visitors.
void AddVisitors(Services& services, double timeScale);

} // namespace nexwire::simulator
