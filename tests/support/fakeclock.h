#pragma once
// A clock that stands still until a test moves it.

#include "platform/clock.h"

namespace pvtest {

struct FakeClock : pv::Clock {
    explicit FakeClock(long long secondsSinceEpoch = 1700000000)
        : t(std::chrono::seconds(secondsSinceEpoch)) {}
    std::chrono::system_clock::time_point t;
    std::chrono::system_clock::time_point now() const override { return t; }
};

} // namespace pvtest
