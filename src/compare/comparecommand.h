#pragma once
// What the Compare button does, in either mode, on any pair of panes: the compare
// window runs it on its widgets, the command-line compare on plain directories.

#include "compare/directorycompare.h"

#include <functional>
#include <string>
#include <vector>

namespace pv {

class CompareObserver;

// The two panes as the compare sees them.
class ComparePanes {
  public:
    virtual ~ComparePanes() = default;
    virtual std::string leftDir() const = 0;
    virtual std::string rightDir() const = 0;
    // The directories and the file lists as the panes show them now.
    virtual PaneLists lists() = 0;
    // Points the left pane (directory and file list) at a directory and returns
    // the path it then shows.
    virtual std::string moveLeft(const std::string& dir) = 0;
    // Likewise for the right pane; throws when the directory cannot be shown, and
    // the pane then stays where it was.
    virtual std::string moveRight(const std::string& dir) = 0;
    // The immediate sub-directories of a directory, full paths, in list order.
    virtual std::vector<std::string> subdirectories(const std::string& dir) = 0;
    // The stop request of a sub-directory run.
    virtual bool stopRequested() { return false; }
    virtual void clearStopRequest() {}
    // Between the levels of a walk (a window lets pending clicks through here).
    virtual void betweenLevels() {}
};

// Totals over all pairs of one run.
struct CompareTotals {
    long pairs = 0;
    long entries = 0;
    long matched = 0;
    long different = 0;
    long oneOnly = 0;
    long twoOnly = 0;
    // A sub-directory on one side only, or deeper than the walk goes.
    long unmatchedDirectories = 0;
    // A sub-directory that could not be read on either side.
    long unreadableDirectories = 0;
    bool allMatched() const {
        return different == 0 && oneOnly == 0 && twoOnly == 0 && unmatchedDirectories == 0 &&
               unreadableDirectories == 0;
    }
};

// The block of totals written after a sub-directory run, in the manner of the
// statistics of each directory pair.
std::vector<std::string> totalsBlock(const CompareTotals& totals);

class CompareCommand {
  public:
    // `readCall` gives the options of the CompareDirectories calls of a run.
    CompareCommand(DirectoryCompare& compare, CompareObserver& observer, ComparePanes& panes,
                   std::function<DirectoryCompare::Call()> readCall);

    // Called with the left directory each time a walk moves the left pane.
    std::function<void(const std::string& dir)> onLeftMoved;

    // One press of Compare. Leaves the control value "" in every case. Throws the
    // first error of a single-directory compare (the script is then not started);
    // errors inside a sub-directory walk are passed over pair by pair.
    CompareTotals run(bool includeSubDirectories);

  private:
    void comparePanes(bool subDirectoryMode);

    DirectoryCompare& m_compare;
    CompareObserver& m_observer;
    ComparePanes& m_panes;
    std::function<DirectoryCompare::Call()> m_readCall;
    // While a compare reads contents: lets the window's events through and tells
    // whether to go on.
    bool whileReading();

    DirectoryCompare::Call m_call;
    CompareTotals m_totals;
    // The walk's progress and stop state, also looked at while contents are read.
    bool m_walking = false;
    bool m_cancelled = false;
    long m_done = 0;
    long m_found = 0;
};

} // namespace pv
