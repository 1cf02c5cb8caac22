#pragma once
// The time-remaining estimate of a long operation, from how far it got and how
// long that took.

#include <optional>
#include <string>

namespace pv {

// "45 seconds remaining", "1 minute, 5 seconds remaining", "2 minutes remaining".
std::string timeRemainingText(long remaining);

// The new estimate text after `elapsed` whole seconds for `current` of `total`,
// or nothing when the shown text should stay: the estimate changes only every
// five seconds of remaining time, not in the first six seconds (too little to go
// on), and not when the work looks done.
std::optional<std::string> estimateText(long elapsed, long current, long total);

} // namespace pv

namespace pv {

// The progress of a sub-directory walk as one line: "12 of 40 directories", and
// the time estimate after a comma when there is one.
std::string walkProgressText(long done, long found, const std::string& timeRemaining = {});

} // namespace pv
