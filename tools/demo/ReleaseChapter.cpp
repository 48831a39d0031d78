#include "tools/demo/ReleaseChapter.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <thread>

#include <keel/Encrypt.h>
#include <keel/Error.h>
#include <keel/GuidUtil.h>

#include "nexwire/ElectronicMap/EmapElement.h"
#include "nexwire/InformationRelease/Marquee.h"
#include "nexwire/InformationRelease/ReleaseDevice.h"
#include "tools/demo/ChapterBase.h"

namespace nexwire::demo {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

constexpr std::size_t kMaterialBytes = std::size_t{2} << 20;
constexpr std::size_t kPictureBytes = 25'000'000;

/// Bytes that begin as a JPEG does and repeat nowhere soon.
std::string MakePicture(std::size_t size)
{
    std::string bytes = "\xFF\xD8\xFF\xE0";
    bytes.reserve(size);
    std::uint32_t state = 2463534242U;
    while (bytes.size() < size) {
        state ^= state << 13U;
        state ^= state >> 17U;
        state ^= state << 5U;
        bytes += static_cast<char>(state >> 24U);
    }
    return bytes;
}

std::string Megabytes(std::size_t bytes)
{
    return std::to_string((bytes + 500'000) / 1'000'000) + " MB";
}

/// A folder that goes with what is in it.
class Folder {
public:
    Folder() : path_(fs::temp_directory_path() / ("nexwire-demo-" + Keel::GuidUtil::CreateGuid()))
    {
        fs::create_directory(path_);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder()
    {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }

    std::string File(const char* name) const { return (path_ / name).u8string(); }

    /// What lies in it apart from one file: what a download has written so far.
    std::uintmax_t BytesBeside(const std::string& file) const
    {
        std::uintmax_t bytes = 0;
        std::error_code ignored;
        for (const fs::directory_entry& entry : fs::directory_iterator(path_, ignored)) {
            const std::uintmax_t size = entry.file_size(ignored);
            bytes += ignored || entry.path().u8string() == file ? 0 : size;
        }
        return bytes;
    }

private:
    fs::path path_;
};

class Chapter : private ChapterBase {
public:
    explicit Chapter(Screen& screen) : ChapterBase(screen) {}

    bool Run() { return Register() && Ask() && HandOver() && Publish() && Look() && Map() && Spot() && Picture(); }

private:
    bool Register()
    {
        screen_.Step("Register a release server; its password travels encrypted");
        server_ = CInformationReleaseDeviceComm::addServer("192.0.2.58", 8443, "admin", "Device-1234");
        return Done(!server_.empty(), "server " + server_);
    }

    bool Ask()
    {
        screen_.Step("Ask it what a page of a program may be, and a terminal that it has not");
        Abacus::Page page;
        if (!CInformationReleaseDeviceComm::getProgramPageCapability(server_, page)) {
            return Done(false, "reading the capability");
        }
        screen_.Result("up to " + std::to_string(page.windowNum.max) + " windows, " +
                       std::to_string(page.windowList.size()) + " kinds of them, text of " +
                       std::to_string(page.textStyle.fontSize.min) + " to " +
                       std::to_string(page.textStyle.fontSize.max) + " pixels");
        Abacus::TerminalAbility terminal;
        if (CInformationReleaseDeviceComm::getTerminalCapability(server_, terminal, 9)) {
            screen_.Wrong("a terminal that is not there tells what it can do");
            return false;
        }
        screen_.Failure("terminal 9: " + Keel::Error::GetLastError().text);
        return true;
    }

    bool HandOver()
    {
        screen_.Step("Put a picture of " + Megabytes(kMaterialBytes) + " into the library and hand a program over");
        protocol::MatrialResource material;
        material.name = "Welcome " + Keel::GuidUtil::CreateGuid();
        material.materialType = "picture";
        material.fileName = "welcome.jpg";
        material.fileData = Keel::Encrypt::Base64Encode(MakePicture(kMaterialBytes));
        std::string guid;
        const bool added = CMarqueeComm::addMaterialResources(guid, material);
        if (!Done(added, "material " + guid)) {
            return false;
        }
        protocol::CachePublishData program;
        program.name = "Welcome";
        program.publishMode = "insert";
        program.deviceGuidList.push_back(server_);
        protocol::PublishItem& item = program.itemList.emplace_back();
        item.materialGuid = guid;
        item.region = "full";
        protocol::CachePublishDataResult result;
        const bool cached = CMarqueeComm::cachePublishData(result, program);
        return Done(cached && !result.resultList.empty() && result.resultList.front().resultCode == 0,
                    std::to_string(result.totalSize) + " bytes for each terminal");
    }

    bool Publish()
    {
        screen_.Step("Have it sent to the terminals and follow them; one of them is switched off");
        if (!CMarqueeComm::doPublishCommand(server_)) {
            return Done(false, "the release");
        }
        protocol::PublicReleaseProgress progress;
        for (int i = 0; i < 400; ++i) {
            if (!CMarqueeComm::publishProgress(progress, server_)) {
                return Done(false, "asking for the progress");
            }
            screen_.Progress("terminals", progress.progress);
            if (progress.state != "running" && progress.state != "waiting") {
                break;
            }
            std::this_thread::sleep_for(milliseconds(50));
        }
        int failed = 0;
        for (const protocol::TerminalProgress& terminal : progress.terminalProgressList) {
            if (terminal.state == "done") {
                screen_.Result(terminal.terminalName + ": " + terminal.state);
                terminal_ = terminal_.empty() ? terminal.terminalGuid : terminal_;
            } else {
                screen_.Failure(terminal.terminalName + ": " + terminal.state + ", error " +
                                std::to_string(terminal.errorCode));
                ++failed;
            }
        }
        return Done(failed == 1 && !terminal_.empty(), "all but one show it");
    }

    bool Look()
    {
        screen_.Step("See what one of them shows");
        protocol::TerminalScreenShot wanted;
        wanted.terminalGuid = terminal_;
        wanted.pictureFormat = "png";
        wanted.width = 480;
        wanted.height = 270;
        std::string text;
        std::string picture;
        const bool taken = CMarqueeComm::getTerminalScreenShot(text, server_, wanted) &&
                           Keel::Encrypt::Base64Decode(text, picture) && picture.compare(1, 3, "PNG") == 0;
        return Done(taken, "a PNG picture of " + std::to_string(picture.size()) + " bytes");
    }

    bool Map()
    {
        screen_.Step("Draw a map");
        protocol::MapAdd map;
        map.mapName = "Exhibition hall";
        map.mapFilePath = "hall.jpg";
        map.dProportionalScale = 0.05;
        const bool drawn = CEmapElementComm::putMap(map, map_);
        return Done(drawn, "map " + map_);
    }

    bool Spot()
    {
        screen_.Step("Place the server on it as a hot spot and move it; only its place goes over the wire");
        protocol::HotSpot spot;
        spot.name = "Signage";
        spot.resourceGuid = server_;
        spot.resourceType = "camera";
        spot.dXPos = 100.0;
        spot.dYPos = 80.0;
        spot.color = "#2060C0";
        std::string guid;
        protocol::HotSpotGetSingleData read;
        constexpr double kLeft = 1000.0 / 3.0;
        const bool done = CEmapElementComm::putHotspot(map_, spot, guid) &&
                          CEmapElementComm::setHotspotPos(map_, guid, kLeft, 80.25) &&
                          CEmapElementComm::getHotspot(read, map_, guid);
        const protocol::HotSpotGet& kept = read.hotSpotGetSingle.hotSpot;
        const bool same = kept.name == spot.name && kept.dXPos == kLeft && kept.dYPos == 80.25;
        return Done(done && same, "\"" + kept.name + "\" stands for \"" + read.hotSpotGetSingle.resourceName +
                                      "\" at " + std::to_string(kept.dXPos) + ", " + std::to_string(kept.dYPos));
    }

    bool Picture()
    {
        screen_.Step("Send its picture of " + Megabytes(kPictureBytes) + " in slices, fetch it in ranges, compare");
        const Folder folder;
        const std::string sent = MakePicture(kPictureBytes);
        const std::string source = folder.File("hall.jpg");
        std::ofstream(fs::u8path(source), std::ios::binary) << sent;
        if (!Done(CEmapElementComm::putMapPicture(map_, source), "sent")) {
            return false;
        }
        const std::string target = folder.File("fetched.jpg");
        std::string why;
        std::future<bool> fetched = std::async(std::launch::async, [&] {
            const bool done = CEmapElementComm::getMapPicture(map_, target);
            why = done ? "" : WhyNot();
            return done;
        });
        while (fetched.wait_for(milliseconds(10)) != std::future_status::ready) {
            const std::uintmax_t held = std::min<std::uintmax_t>(folder.BytesBeside(source), kPictureBytes);
            screen_.Progress("picture", static_cast<int>(held * 100 / kPictureBytes));
        }
        if (!fetched.get()) {
            screen_.Wrong("the download failed: " + why);
            return false;
        }
        screen_.Progress("picture", 100);
        std::ifstream file(fs::u8path(target), std::ios::binary);
        const std::string came{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        return Done(came == sent, "what came is what was sent, byte for byte");
    }

    std::string server_;
    std::string terminal_;
    std::string map_;
};

} // namespace

bool RunReleaseChapter(Screen& screen)
{
    return Chapter(screen).Run();
}

} // namespace nexwire::demo
