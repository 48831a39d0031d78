// A map's picture of 1 GiB into a file, beside bare libcurl that asks for the same ranges and writes what comes; turn
// by turn in one run, from one server on loopback. Also how much memory the process needs meanwhile.

#include <algorithm>
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

#include "nexwire/ElectronicMap/EmapElement.h"
#include "nexwire/Nexwire.h"
#include "nexwire/host/HttpRequestExecutor.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint64_t kTotal = 1ULL << 30;
constexpr std::uint64_t kChunk = 0xA00000;

/// Answers each request with the range it asks for, out of one piece of memory.
class RangeServer {
public:
    RangeServer() : acceptor_(context_, Tcp::endpoint(boost::asio::ip::address_v4::loopback(), 0)), bytes_(kChunk, 'j')
    {
        std::thread([this] {
            for (;;) {
                auto socket = std::make_shared<Tcp::socket>(context_);
                acceptor_.accept(*socket);
                std::thread([this, socket] { Serve(*socket); }).detach();
            }
        }).detach();
    }

    std::string Base() const { return "http://127.0.0.1:" + std::to_string(acceptor_.local_endpoint().port()); }

private:
    using Tcp = boost::asio::ip::tcp;

    void Serve(Tcp::socket& socket)
    {
        boost::system::error_code error;
        std::string request;
        while (!error) {
            const std::size_t end =
                boost::asio::read_until(socket, boost::asio::dynamic_buffer(request), "\r\n\r\n", error);
            const std::size_t range = request.find("bytes=");
            if (error || range == std::string::npos) {
                return;
            }
            const std::uint64_t first = std::stoull(request.substr(range + 6));
            const std::uint64_t size = std::min(kChunk, kTotal - first);
            const std::string head =
                "HTTP/1.1 206 Partial Content\r\nContent-Type: image/jpeg\r\nContent-Length: " + std::to_string(size) +
                "\r\nContent-Range: bytes " + std::to_string(first) + "-" + std::to_string(first + size - 1) + "/" +
                std::to_string(kTotal) + "\r\n\r\n";
            request.erase(0, end);
            boost::asio::write(socket, boost::asio::buffer(head), error);
            boost::asio::write(socket, boost::asio::buffer(bytes_.data(), size), error);
        }
    }

    boost::asio::io_context context_;
    Tcp::acceptor acceptor_;
    const std::string bytes_;
};

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

void Download(benchmark::State& state)
{
    static RangeServer* const server = new RangeServer;
    // In memory where there is such a file system: a disk that writes back would be all there is to measure.
    const std::filesystem::path memory = "/dev/shm";
    const std::string name =
        ((std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path()) / "nexwire-download-bench")
            .string();
    nexwire::host::HttpExecutorOptions options;
    options.baseAddress = server->Base();
    nexwire::NexwireInitParams params;
    params.executor = new nexwire::host::HttpRequestExecutor(options);
    nexwire::NexwireInit(params);
    double held = 0;
    std::vector<double> ratios;
    std::vector<double> own;
    for (auto _ : state) {
        std::ofstream("/proc/self/clear_refs") << "5";
        const double before = StatusMiB("VmRSS:");
        const Clock::time_point start = Clock::now();
        const bool mine = nexwire::CEmapElementComm::getMapPicture("M", name);
        const Clock::time_point middle = Clock::now();
        held = std::max(held, StatusMiB("VmHWM:") - before);
        const bool theirs = Bare(server->Base() + "/pictures", name);
        const std::chrono::duration<double> first = middle - start;
        const std::chrono::duration<double> second = Clock::now() - middle;
        if (!mine || !theirs || std::filesystem::file_size(name) != kTotal) {
            state.SkipWithError("a download failed");
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

BENCHMARK(Download)->Name("picture of 1 GiB")->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
