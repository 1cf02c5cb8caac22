#pragma once
// What a compare reports to while it runs: the results list and its progress bar.
// The results window implements it; the command-line compare prints the lines.

#include <string>
#include <string_view>

namespace pv {

class CompareObserver {
  public:
    virtual ~CompareObserver() = default;

    // The control value of the results window: "Process" while a compare runs.
    virtual void setCntl(std::string_view value) = 0;
    // True when the results list holds no line yet (the window is then shown).
    virtual bool isEmpty() const = 0;
    virtual void show() {}
    virtual void addLine(std::string_view line) = 0;
    virtual void initializeProgress(long max) = 0;
    virtual void incrementProgress() = 0;
    virtual void completeProgress() = 0;
    // After each entry and block: the list scrolls to its end and repaints. Called
    // often; a window may skip repaints that come too close together.
    virtual void repaint() {}
    // The progress of a sub-directory walk: directories done of the directories
    // found so far. Returns false when the user chose to stop the walk; it then
    // stops before its next level.
    virtual bool walkProgress(long done, long found) {
        (void)done;
        (void)found;
        return true;
    }
    // The walk has ended, completed or stopped.
    virtual void walkEnded() {}
};

} // namespace pv
