// A file of 200 MB in slices, beside bare libcurl that reads the same slices, frames them the same way and sends them;
// turn by turn in one run, to one server on loopback that drops what comes. Also how much memory the process needs
// meanwhile: a slice as it was read, and the body that holds it.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
#include <curl/curl.h>
#include <keel/FileSlice.h>

#include "nexwire/DeviceManagement/EventImport.h"
#include "nexwire/Nexwire.h"
#include "nexwire/host/HttpRequestExecutor.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kTotal = 200'000'000;
constexpr std::size_t kSlice = Keel::FileUtil::CFileSlice::kDefaultSliceBytes;
constexpr const char* kBoundary = "-----------------------------7e231b2b250806";

/// Takes requests, drops their bodies and says that all is well.
class Sink {
public:
    Sink() : acceptor_(context_, Tcp::endpoint(boost::asio::ip::address_v4::loopback(), 0))
    {
        std::thread([this] {
            for (;;) {
                auto socket = std::make_shared<Tcp::socket>(context_);
                acceptor_.accept(*socket);
                std::thread([socket] { Serve(*socket); }).detach();
            }
        }).detach();
    }

    std::string Base() const { return "http://127.0.0.1:" + std::to_string(acceptor_.local_endpoint().port()); }

private:
    using Tcp = boost::asio::ip::tcp;

    static void Serve(Tcp::socket& socket)
    {
        static const std::string kLength = "Content-Length: ";
        static const std::string kBody = R"({"code":"0-0","msg":"taken"})";
        static const std::string kAnswer =
            "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " + std::to_string(kBody.size()) +
            "\r\n\r\n" + kBody;
        boost::system::error_code error;
        std::string request;
        const auto piece = std::make_unique<std::array<char, 256 * 1024>>();
        while (!error) {
            const std::size_t end =
                boost::asio::read_until(socket, boost::asio::dynamic_buffer(request), "\r\n\r\n", error);
            const std::size_t length = request.find(kLength);
            if (error || length == std::string::npos) {
                return;
            }
            std::size_t left = std::stoul(request.substr(length + kLength.size(), 20));
            if (request.find("Expect: 100-continue") < end) {
                boost::asio::write(socket, boost::asio::buffer("HTTP/1.1 100 Continue\r\n\r\n", 25), error);
            }
            left -= std::min(left, request.size() - end);
            request.clear();
            while (left > 0 && !error) {
                left -= socket.read_some(boost::asio::buffer(piece->data(), std::min(left, piece->size())), error);
            }
            boost::asio::write(socket, boost::asio::buffer(kAnswer), error);
        }
    }

    boost::asio::io_context context_;
    Tcp::acceptor acceptor_;
};

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

/// A line of the process's own status in MiB; 0 where there is none.
double StatusMiB(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, name.size(), name) == 0) {
            return std::stod(line.substr(name.size())) / 1024;
        }
    }
    return 0;
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
    static Sink* const server = new Sink;
    const std::string name = (std::filesystem::temp_directory_path() / "nexwire-upload-bench.csv").string();
    nexwire::host::HttpExecutorOptions options;
    options.baseAddress = server->Base();
    nexwire::NexwireInitParams params;
    params.executor = new nexwire::host::HttpRequestExecutor(options);
    nexwire::NexwireInit(params);
    WriteFile(name, 100); // What a first exchange loads is not the upload's.
    Own(name);
    WriteFile(name, kTotal);
    double held = 0;
    std::vector<double> ratios;
    std::vector<double> own;
    for (auto _ : state) {
        std::ofstream("/proc/self/clear_refs") << "5";
        const double before = StatusMiB("VmRSS:");
        const Clock::time_point start = Clock::now();
        const bool mine = Own(name);
        const Clock::time_point middle = Clock::now();
        held = std::max(held, StatusMiB("VmHWM:") - before);
        const bool theirs = Bare(server->Base() + "/7730/v1/deviceManagement/uploadFile", name);
        const std::chrono::duration<double> first = middle - start;
        const std::chrono::duration<double> second = Clock::now() - middle;
        if (!mine || !theirs) {
            state.SkipWithError("an upload failed");
            break;
        }
        own.push_back(first.count() * 1000);
        ratios.push_back(second.count() / first.count());
    }
    nexwire::NexwireUnInit();
    std::filesystem::remove(name);
    if (own.empty()) {
        return;
    }
    std::sort(own.begin(), own.end());
    std::sort(ratios.begin(), ratios.end());
    state.counters["turn_own"] = own[own.size() / 2];
    state.counters["turn_ratio"] = ratios[ratios.size() / 2];
    state.counters["turn_bar"] = 0.9;
    state.counters["turn_held"] = held;
    state.SetLabel("ms|bare libcurl");
}

BENCHMARK(Upload)->Name("upload of 200 MB")->Iterations(9)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
