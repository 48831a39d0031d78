// How long it takes to load a library whose own libraries are loaded already:
//
//   bench_load LIBRARY [DEPENDENCY...]
//
// A process of its own for each of 21 times; the median in milliseconds.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double LoadMs(char** libraries, int count)
{
    for (int i = 1; i < count; ++i) {
        if (dlopen(libraries[i], RTLD_NOW | RTLD_GLOBAL) == nullptr) {
            std::fprintf(stderr, "bench_load: %s\n", dlerror());
            std::exit(1);
        }
    }
    const auto start = std::chrono::steady_clock::now();
    if (dlopen(libraries[0], RTLD_NOW) == nullptr) {
        std::fprintf(stderr, "bench_load: %s\n", dlerror());
        std::exit(1);
    }
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main(int argc, char** argv)
{
    constexpr std::size_t kTimes = 21;
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_load LIBRARY [DEPENDENCY...]\n");
        return 2;
    }
    std::vector<double> times;
    while (times.size() < kTimes) {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0) {
            return 1;
        }
        const pid_t child = fork();
        if (child == 0) {
            const double ms = LoadMs(argv + 1, argc - 1);
            _exit(write(ends[1], &ms, sizeof(ms)) == sizeof(ms) ? 0 : 1);
        }
        double ms = 0;
        close(ends[1]);
        const bool told = child > 0 && read(ends[0], &ms, sizeof(ms)) == sizeof(ms);
        close(ends[0]);
        if (child > 0) {
            waitpid(child, nullptr, 0);
        }
        if (!told) {
            return 1;
        }
        times.push_back(ms);
    }
    std::nth_element(times.begin(), times.begin() + kTimes / 2, times.end());
    std::printf("%.2f\n", times[kTimes / 2]);
    return 0;
}
