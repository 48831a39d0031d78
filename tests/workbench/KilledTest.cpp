#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <set>
#include <thread>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "simulator/Client.h"
#include "simulator/VideoWallService.h"

namespace {

using nexwire::simulator::Options;
using nexwire::simulator::Platform;
using nexwire::simulator::VideoWallService;
using test::Client;
using testing::HasSubstr;

/// A platform with its video wall on a file.
struct Building {
    explicit Building(const std::string& file)
    {
        Options options;
        options.databasePath = file;
        platform = std::make_unique<Platform>(options);
        std::string error;
        VideoWallService::Options wallOptions;
        wallOptions.platform = platform.get();
        wall = std::make_unique<VideoWallService>(wallOptions);
        EXPECT_TRUE(platform->Start(error) && wall->Start(error)) << error;
    }

    std::unique_ptr<Platform> platform;
    std::unique_ptr<VideoWallService> wall;
};

// The child lives from fork to the kill; what it tells comes over a pipe.
pid_t StartAndTellPorts(const std::string& file, std::uint16_t (&ports)[2])
{
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        const Building building(file);
        const std::uint16_t mine[] = {building.platform->Port(), building.wall->Port()};
        if (write(ends[1], mine, sizeof mine) == sizeof mine) {
            pause();
        }
        _exit(1);
    }
    EXPECT_EQ(read(ends[0], ports, sizeof ports), static_cast<ssize_t>(sizeof ports));
    close(ends[0]);
    close(ends[1]);
    return child;
}

TEST(Killed, LosesNothingThatWasAnswered)
{
    const auto folder = std::filesystem::path(testing::TempDir()) / ("killed-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    const std::string file = (folder / "site.db").string();
    std::set<std::string> groups;
    std::set<std::string> decoders;
    for (int round = 0; round < 3; ++round) {
        std::uint16_t ports[2] = {};
        const pid_t child = StartAndTellPorts(file, ports);
        Client wall(ports[1]);
        Client client(ports[0]);
        // Hit while it writes, at another moment each time.
        std::thread killer([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(60 + round * 37));
            kill(child, SIGKILL);
        });
        try {
            for (int i = 0;; ++i) {
                const std::string name = std::to_string(round) + "-" + std::to_string(i);
                if (client
                        .Send("PUT", "/7730/v1/accessController/accessGroups",
                              "{\"accessGroupAddParam\":{\"name\":\"" + name + "\"}}")
                        .Code() == "0-0") {
                    groups.insert(name);
                }
                const std::string address = "10.0." + std::to_string(round) + "." + std::to_string(i % 250 + 1);
                if (i < 50 && wall.Send("POST", "/videoWall/v1/deviceManager/device/add",
                                        "{\"username\":\"YWRtaW4=\",\"password\":\"YWRtaW4xMjM=\",\"address\":\"" +
                                            address + "\",\"port\":8000,\"alias\":\"d\",\"synAdd\":1}")
                                      .Int("/code") == 0) {
                    decoders.insert(address);
                }
            }
        } catch (const std::exception&) {
            // The platform is gone.
        }
        killer.join();
        int status = 0;
        waitpid(child, &status, 0);
    }
    ASSERT_GT(groups.size(), 4u);
    ASSERT_GT(decoders.size(), 4u);
    {
        const Building building(file);
        const std::string kept = building.platform->Workbench("GET", "state/accessGroups?limit=1000").body;
        for (const std::string& name : groups) {
            EXPECT_THAT(kept, HasSubstr("\"name\":\"" + name + "\""));
        }
        Client wall(building.wall->Port());
        const auto list = [&] {
            return wall
                .Send("POST", "/videoWall/v1/deviceManager/device/list/get",
                      R"({"account":"","teamNo":"","SynCloud":false})")
                .body;
        };
        const std::string devices = list();
        for (const std::string& address : decoders) {
            EXPECT_THAT(devices, HasSubstr("\"" + address + "\""));
        }
        EXPECT_EQ(building.platform->Workbench("POST", "reset").status, 200u);
        EXPECT_THAT(list(), testing::AllOf(HasSubstr("\"code\":0"), testing::Not(HasSubstr("\"address\""))));
    }
    std::filesystem::remove_all(folder);
}

} // namespace
