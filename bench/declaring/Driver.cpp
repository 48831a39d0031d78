// Reads lists of two structures of the set again and again; prints nanoseconds per element, the best of many rounds.

#include <chrono>
#include <cstdio>

#include <cjson/cJSON.h>

#include "Driver.h"
#include "Module0.h"

namespace {

template <class Record>
double Measure(cJSON* list, const Record& filled)
{
    for (int i = 0; i < 200; ++i) {
        cJSON_AddItemToArray(list, set::Write(filled));
    }
    double best = 1e9;
    for (int round = 0; round < 2000; ++round) {
        const auto start = std::chrono::steady_clock::now();
        for (const cJSON* node = list->child; node != nullptr; node = node->next) {
            Record record;
            if (!set::Read(record, node)) {
                return 0;
            }
        }
        const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - start;
        best = best < time.count() / 200 ? best : time.count() / 200;
    }
    cJSON_Delete(list);
    return best;
}

} // namespace

int main()
{
    set::Record3 plain;
    const double first = Measure(cJSON_CreateArray(), plain);
    set::Record5 holder;
    holder.MEMBER_LIST.resize(3);
    const double second = Measure(cJSON_CreateArray(), holder);
    std::printf("%.0f\n", first + second);
    return 0;
}
