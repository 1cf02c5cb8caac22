#pragma once
// The sub-directory walk: pre-order over the left tree, pairing each left
// directory with the one at the same relative path under the right base, down to
// 24 levels (0 to 23). It moves the panes and runs the compare through the hooks,
// so the same walk serves the compare window and the command-line compare.
// A directory that cannot be read on either side is reported and its pair
// skipped; a symbolic link to a directory already walked is reported and not
// entered; the right tree's directories without a left counterpart are listed
// after the walk.

#include "platform/fileidentity.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace pv {

inline constexpr int kWalkLevels = 24;
inline constexpr std::string_view kTooDeep = "Directory is too deep to process in this version";

class SubDirectoryWalk {
  public:
    struct Hooks {
        // The stop request, looked at as each level starts.
        std::function<bool()> stopRequested;
        // Runs before the stop request is looked at (a window processes pending
        // events here, so a click on its stop box gets through).
        std::function<void()> betweenLevels;
        // The immediate sub-directories of a directory, full paths, in list order.
        std::function<std::vector<std::string>(const std::string& dir)> subdirectories;
        // Points the left pane at a directory; returns the path the pane then shows,
        // throws when it cannot be read (the pane then stays).
        std::function<std::string(const std::string& dir)> moveLeft;
        // Points the right pane at a directory; returns its path, throws when the
        // directory does not exist or cannot be opened (the pane then stays): a
        // RuntimeError with ENOENT or ENOTDIR counts as missing, any other
        // failure as unreadable.
        std::function<std::string(const std::string& dir)> moveRight;
        // Compares the two panes as they stand.
        std::function<void()> compare;
        // A line that reports a difference between the trees.
        std::function<void(const std::string& line)> addLine;
        // A line that reports nothing different (a link not entered again); when
        // not set, addLine takes it.
        std::function<void(const std::string& line)> addNote;
        // After each level (repaint).
        std::function<void()> levelDone;
    };

    explicit SubDirectoryWalk(Hooks hooks) : m_hooks(std::move(hooks)) {}

    // Walks base1 and everything below it. Failures inside a level are passed
    // over: the walk goes on with the next step.
    void run(const std::string& base1, const std::string& base2);

    // The right-hand counterpart of a left directory.
    static std::string counterpart(const std::string& base1, const std::string& base2,
                                   const std::string& leftDir);

  private:
    void walk(const std::string& dir, int depth);
    // Records the directory as walked; false for a link to one walked before.
    bool enter(const std::string& dir);
    void noteRightOnly(const std::vector<std::string>& leftChildren, const std::string& rightDir);

    Hooks m_hooks;
    std::string m_base1;
    std::string m_base2;
    std::map<FileIdentity, std::string> m_visited; // first path of each directory walked
    std::vector<std::string> m_rightOnly;
};

} // namespace pv
