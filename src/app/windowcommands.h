#pragma once
// Small rules of the main window's View and timer commands, kept apart from the
// widgets so that they are tested without a window.

#include <string>

namespace pv {

// The refresh timer ticks every minute; the panes are re-read on every fifth tick.
inline constexpr int kRefreshIntervalMs = 60000;
inline constexpr int kRefreshEveryTicks = 5;
inline bool isRefreshTick(int tickCount) {
    return tickCount % kRefreshEveryTicks == 0;
}

// "Parallel Directory Locations": the source directory's last component, with the
// separator before it, appended to the target directory as the two texts stand
// ("/old/src" onto "/new" gives "/new/src"; onto the root "/" it gives "//src").
std::string parallelLocation(const std::string& sourceDirectory,
                             const std::string& targetDirectory);

// The caption of additional compare window `index` (1, 2, ...).
std::string additionalCompareCaption(int index);

} // namespace pv
