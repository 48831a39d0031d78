// How many exchanges a second the local platform takes on two connections while its page reads along, and how much its
// memory grows meanwhile, once the exchanges that it keeps are there. `bench_workbench --exchanges N` takes N of them.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>

#include "simulator/Platform.h"

namespace {

using nexwire::simulator::Platform;
using Tcp = boost::asio::ip::tcp;
using Clock = std::chrono::steady_clock;

constexpr int kKept = 12000;     // More than the platform keeps.
constexpr double kBarUs = 200.0; // 5,000 a second.
int exchanges = 50000;

double ResidentMiB()
{
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    file >> pages >> pages;
    return static_cast<double>(pages) * 4096.0 / (1 << 20);
}

/// A connection that says the same again and again.
class Caller {
public:
    Caller(std::uint16_t port, const std::string& verb, const std::string& path, const std::string& body = {})
        : socket_(context_),
          request_(verb + " " + path + " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) +
                   "\r\nContent-Type: application/json\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
                   body)
    {
        socket_.connect({boost::asio::ip::address_v4::loopback(), port});
        socket_.set_option(Tcp::no_delay(true));
    }

    void Ask() { boost::asio::write(socket_, boost::asio::buffer(request_)); }

    /// What comes next, up to the end of an answer with a length.
    std::string Answer()
    {
        std::string text;
        std::size_t whole = std::string::npos;
        while (text.size() < whole) {
            text += Some();
            const std::size_t end = text.find("\r\n\r\n");
            if (end != std::string::npos) {
                whole = end + 4 + std::strtoul(text.c_str() + text.find("Content-Length: ") + 16, nullptr, 10);
            }
        }
        return text;
    }

    /// What comes next; empty at the end.
    std::string Some()
    {
        boost::system::error_code error;
        const std::size_t size = socket_.read_some(boost::asio::buffer(buffer_), error);
        return {buffer_, error ? 0 : size};
    }

    void Close() { socket_.shutdown(Tcp::socket::shutdown_both); }

private:
    boost::asio::io_context context_;
    Tcp::socket socket_;
    std::string request_;
    char buffer_[65536];
};

void Run(std::uint16_t port, const std::string& path, int count)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&] {
            Caller caller(port, "POST", path);
            for (int n = 0; n < count / 2; ++n) {
                caller.Ask();
                if (caller.Answer().find("\"0-0\"") == std::string::npos) {
                    std::abort();
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// Reads along as the page does, from its first request to its end.
class Page {
public:
    explicit Page(std::uint16_t port) : caller_(port, "GET", "/_workbench/events"), reader_([this] { Read(); }) {}
    ~Page()
    {
        caller_.Close();
        reader_.join();
    }
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    std::size_t Told() const { return told_; }

private:
    void Read()
    {
        caller_.Ask();
        for (std::string text = caller_.Some(); !text.empty(); text = caller_.Some()) {
            for (std::size_t at = text.find("{\"id\":"); at != std::string::npos; at = text.find("{\"id\":", at + 1)) {
                ++told_;
            }
        }
    }

    Caller caller_;
    std::atomic<std::size_t> told_{0};
    std::thread reader_;
};

void Exchanges(benchmark::State& state, bool open)
{
    Platform platform;
    std::string error;
    if (!platform.Start(error)) {
        state.SkipWithError(error.c_str());
        return;
    }
    const std::string groups = "/7730/v1/accessController/accessGroups";
    Caller adder(platform.Port(), "PUT", groups, R"({"accessGroupAddParam":{"name":"Night shift"}})");
    adder.Ask();
    const std::string added = adder.Answer();
    const std::size_t guid = added.find("\"accessGroupGuid\":\"") + 19;
    const std::string path = groups + "/" + added.substr(guid, 32);

    const std::unique_ptr<Page> page = open ? std::make_unique<Page>(platform.Port()) : nullptr;
    Run(platform.Port(), path, kKept);
    const double before = ResidentMiB();
    double own = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        Run(platform.Port(), path, exchanges);
        own = std::chrono::duration<double, std::micro>(Clock::now() - start).count() / exchanges;
    }
    const double grown = ResidentMiB() - before;
    if (page != nullptr && page->Told() == 0) {
        state.SkipWithError("the page was told nothing");
        return;
    }
    state.counters["turn_own"] = own;
    state.counters["turn_ratio"] = kBarUs / own;
    state.counters["turn_bar"] = 1.0;
    state.counters["turn_held"] = std::max(grown, 0.0);
    state.SetLabel("us|5,000 a second");
}

BENCHMARK_CAPTURE(Exchanges, open, true)->Name("exchange, page open")->Iterations(1)->UseRealTime();
BENCHMARK_CAPTURE(Exchanges, closed, false)->Name("exchange, page closed")->Iterations(1)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    for (int i = 1; i + 1 < argc; ++i) {
        if (std::strcmp(argv[i], "--exchanges") == 0) {
            exchanges = std::max(std::atoi(argv[i + 1]), 2);
            std::copy(argv + i + 2, argv + argc, argv + i);
            argc -= 2;
        }
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
