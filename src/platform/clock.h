#pragma once
// The program's idea of "now", injectable so that tests fix the time.

#include <chrono>
#include <string>

namespace pv {

class Clock {
public:
    virtual ~Clock() = default;
    virtual std::chrono::system_clock::time_point now() const = 0;
};

class SystemClock : public Clock {
public:
    std::chrono::system_clock::time_point now() const override {
        return std::chrono::system_clock::now();
    }
};

// The one date format for every "now" the program writes: yyyy-MM-dd HH:mm:ss, local time.
std::string formatGeneralDate(std::chrono::system_clock::time_point when);

// The clock the program uses; tests may replace it (the previous one is returned).
const Clock& programClock();
const Clock* setProgramClock(const Clock* clock);

// formatGeneralDate(programClock().now()).
std::string nowText();

} // namespace pv
