#include "status/timeremaining.h"

#include <cmath>

namespace pv {

std::string timeRemainingText(long remaining) {
    if (remaining < 60)
        return std::to_string(remaining) + " seconds remaining";
    const long m = remaining / 60, s = remaining % 60;
    const std::string minutes = m == 1 ? "1 minute" : std::to_string(m) + " minutes";
    if (s == 0)
        return minutes + " remaining";
    return minutes + ", " + std::to_string(s) + " seconds remaining";
}

std::optional<std::string> estimateText(long elapsed, long current, long total) {
    if (current == 0)
        return std::nullopt;
    // Halves round to even, as the estimate always has.
    const long estimatedTotal =
        long(std::nearbyint(double(elapsed) * double(total) / double(current)));
    const long remaining = estimatedTotal - elapsed;
    if (remaining % 5 != 0 || elapsed < 6 || estimatedTotal == elapsed)
        return std::nullopt;
    return timeRemainingText(remaining);
}

} // namespace pv

namespace pv {

std::string walkProgressText(long done, long found, const std::string& timeRemaining) {
    std::string text = std::to_string(done) + " of " + std::to_string(found) + " directories";
    if (!timeRemaining.empty())
        text += ", " + timeRemaining;
    return text;
}

} // namespace pv
