// A map's picture of 1 GiB into a file, beside bare libcurl that asks for the same ranges and writes what comes; turn
// by turn in one run, from one server on loopback. Also how much memory the process needs meanwhile.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <curl/curl.h>

#include "AtServer.h"
#include "Turns.h"
#include "loopback/RawServer.h"
#include "nexwire/ElectronicMap/EmapElement.h"

namespace {

constexpr std::uint64_t kTotal = 1ULL << 30;
constexpr std::uint64_t kChunk = 0xA00000;

/// A server that answers each request with the range it asks for, out of one piece of memory.
nexwire::loopback::RawServer& Ranges()
{
    using nexwire::loopback::RawRequest;
    using nexwire::loopback::Reply;
    static nexwire::loopback::RawServer* const server = [] {
        auto* const made = new nexwire::loopback::RawServer;
        made->SetKeeping(false);
        made->SetHandler([bytes = std::make_shared<const std::string>(kChunk, 'j')](const RawRequest& request) {
            const std::uint64_t first = std::stoull(request.Value("Range").substr(std::string("bytes=").size()));
            const std::uint64_t size = std::min(kChunk, kTotal - first);
            return Reply()
                .Send("HTTP/1.1 206 Partial Content\r\nContent-Type: image/jpeg\r\nContent-Length: " +
                      std::to_string(size) + "\r\nContent-Range: bytes " + std::to_string(first) + "-" +
                      std::to_string(first + size - 1) + "/" + std::to_string(kTotal) + "\r\n\r\n")
                .Send(bytes, size);
        });
        return made;
    }();
    return *server;
}

std::size_t WriteTo(char* data, std::size_t size, std::size_t count, void* file)
{
    return std::fwrite(data, 1, size * count, static_cast<std::FILE*>(file));
}

bool Bare(const std::string& url, const std::string& name)
{
    std::FILE* const file = std::fopen(name.c_str(), "wb");
    CURL* const easy = curl_easy_init();
    curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy, CURLOPT_PROXY, "");
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &WriteTo);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, file);
    bool good = file != nullptr;
    for (std::uint64_t first = 0; good && first < kTotal; first += kChunk) {
        const std::string range = std::to_string(first) + "-" + std::to_string(first + kChunk - 1);
        curl_easy_setopt(easy, CURLOPT_RANGE, range.c_str());
        good = curl_easy_perform(easy) == CURLE_OK;
    }
    curl_easy_cleanup(easy);
    return file != nullptr && std::fclose(file) == 0 && good;
}

void Download(benchmark::State& state)
{
    const std::string base = Ranges().Base();
    // In memory where there is such a file system: a disk that writes back would be all there is to measure.
    const std::filesystem::path memory = "/dev/shm";
    const std::string name =
        ((std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path()) / "nexwire-download-bench")
            .string();
    const bench::AtServer library(base);
    bench::HeldMemory held;
    bench::Turns turns;
    for (auto _ : state) {
        const bool good =
            turns.Take([&] { return held.During([&] { return nexwire::CEmapElementComm::getMapPicture("M", name); }); },
                       [&] { return Bare(base + "/pictures", name); });
        if (!good || std::filesystem::file_size(name) != kTotal) {
            state.SkipWithError("a download failed");
            break;
        }
    }
    std::filesystem::remove(name);
    bench::Report(state, turns.Own() * 1000, turns.Ratio(), 0.9, "ms|bare libcurl");
    held.Report(state);
}

BENCHMARK(Download)->Name("picture of 1 GiB")->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
