#include "platform/clock.h"

#include <ctime>

namespace pv {

std::string formatGeneralDate(std::chrono::system_clock::time_point when) {
    std::time_t t = std::chrono::system_clock::to_time_t(when);
    std::tm local{};
    ::localtime_r(&t, &local);
    char buf[32];
    std::strftime(buf, sizeof buf, "%Y-%m-%d %H:%M:%S", &local);
    return buf;
}

namespace {
const SystemClock g_systemClock;
const Clock* g_clock = &g_systemClock;
} // namespace

const Clock& programClock() { return *g_clock; }

const Clock* setProgramClock(const Clock* clock) {
    const Clock* previous = g_clock;
    g_clock = clock ? clock : &g_systemClock;
    return previous;
}

std::string nowText() { return formatGeneralDate(programClock().now()); }

} // namespace pv
