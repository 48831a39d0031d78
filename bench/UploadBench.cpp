// A file of 200 MB in slices, beside bare libcurl that reads the same slices, frames them the same way and sends them;
// turn by turn in one run, to one server on loopback that drops what comes. Also how much memory the process needs
// meanwhile: a slice as it was read, and the body that holds it.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <curl/curl.h>
#include <keel/FileSlice.h>

#include "AtServer.h"
#include "Turns.h"
#include "loopback/RawServer.h"
#include "nexwire/DeviceManagement/EventImport.h"

namespace {

constexpr std::size_t kTotal = 200'000'000;
constexpr std::size_t kSlice = Keel::FileUtil::CFileSlice::kDefaultSliceBytes;
constexpr const char* kBoundary = "-----------------------------7e231b2b250806";

/// Takes requests, drops their bodies and says that all is well.
nexwire::loopback::RawServer& Sink()
{
    static nexwire::loopback::RawServer* const server = [] {
        auto* const made = new nexwire::loopback::RawServer;
        made->SetKeeping(false);
        made->SetDefault(nexwire::loopback::Reply::Json(R"({"code":"0-0","msg":"taken"})"));
        return made;
    }();
    return *server;
}

std::size_t Drop(char*, std::size_t size, std::size_t count, void*)
{
    return size * count;
}

bool Bare(const std::string& url, const std::string& name)
{
    std::FILE* const file = std::fopen(name.c_str(), "rb");
    CURL* const easy = curl_easy_init();
    curl_slist* headers =
        curl_slist_append(nullptr, ("Content-Type: multipart/form-data; boundary=" + std::string(kBoundary)).c_str());
    headers = curl_slist_append(headers, "Expect:");
    curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy, CURLOPT_PROXY, "");
    curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, "PUT");
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Drop);
    const std::string head = std::string("--") + kBoundary +
                             "\r\nContent-Disposition: form-data; name=\"file\"; filename=\"events.csv\"\r\n"
                             "Content-Type: text/csv\r\n\r\n";
    const std::string tail = std::string("\r\n--") + kBoundary + "--\r\n";
    std::string slice(kSlice, '\0');
    std::string body;
    bool good = file != nullptr;
    for (std::size_t sent = 0; good && sent < kTotal;) {
        const std::size_t size = std::fread(&slice[0], 1, slice.size(), file);
        body.assign(head).append(slice, 0, size).append(tail);
        curl_easy_setopt(easy, CURLOPT_POSTFIELDS, body.data());
        curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
        good = size > 0 && curl_easy_perform(easy) == CURLE_OK;
        sent += size;
    }
    curl_slist_free_all(headers);
    curl_easy_cleanup(easy);
    return file != nullptr && std::fclose(file) == 0 && good;
}

void WriteFile(const std::string& name, std::size_t total)
{
    std::ofstream out(name, std::ios::binary);
    const std::string line = "motion,2026-03-01T08:00:00+00:00,1,AC,Yard,somebody came\n";
    for (std::size_t written = 0; written < total; written += line.size()) {
        out.write(line.data(), static_cast<std::streamsize>(std::min(line.size(), total - written)));
    }
}

bool Own(const std::string& name)
{
    const auto progress = std::make_shared<int>(0);
    std::string guid;
    std::string answer;
    return nexwire::FileImportEventComm::requestUpload(progress, guid, name, answer) && *progress == 100;
}

void Upload(benchmark::State& state)
{
    const std::string base = Sink().Base();
    const std::string name = (std::filesystem::temp_directory_path() / "nexwire-upload-bench.csv").string();
    const bench::AtServer library(base);
    WriteFile(name, 100); // What a first exchange loads is not the upload's.
    Own(name);
    WriteFile(name, kTotal);
    bench::HeldMemory held;
    bench::Turns turns;
    for (auto _ : state) {
        if (!turns.Take([&] { return held.During([&] { return Own(name); }); },
                        [&] { return Bare(base + "/7730/v1/deviceManagement/uploadFile", name); })) {
            state.SkipWithError("an upload failed");
            break;
        }
    }
    std::filesystem::remove(name);
    bench::Report(state, turns.Own() * 1000, turns.Ratio(), 0.9, "ms|bare libcurl");
    held.Report(state);
}

BENCHMARK(Upload)->Name("upload of 200 MB")->Iterations(9)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
