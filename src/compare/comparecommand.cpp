#include "compare/comparecommand.h"

#include "compare/compareobserver.h"
#include "compare/filelisting.h"
#include "compare/subdirectorywalk.h"
#include "platform/clock.h"

namespace pv {

CompareCommand::CompareCommand(DirectoryCompare& compare, CompareObserver& observer,
                               ComparePanes& panes,
                               std::function<DirectoryCompare::Call()> readCall)
    : m_compare(compare), m_observer(observer), m_panes(panes), m_readCall(std::move(readCall)) {}

std::vector<std::string> totalsBlock(const CompareTotals& t) {
    auto line = [](long n, const char* what) { return " there were " + std::to_string(n) + what; };
    return {"Total stats:",
            line(t.pairs, " directories compared"),
            line(t.matched - t.different, " files matched"),
            line(t.different, " files different"),
            line(t.oneOnly, " files in directory one only"),
            line(t.twoOnly, " files in directory two only"),
            line(t.unmatchedDirectories, " unmatched sub directories"),
            line(t.unreadableDirectories, " unreadable sub directories")};
}

bool CompareCommand::whileReading() {
    m_panes.betweenLevels();
    if (!m_walking)
        return true;
    if (!m_observer.walkProgress(m_done, m_found))
        m_cancelled = true;
    return !m_cancelled && !m_panes.stopRequested();
}

void CompareCommand::comparePanes(bool subDirectoryMode) {
    DirectoryCompare::Call call = m_call;
    call.subDirectoryMode = subDirectoryMode;
    if (call.options.listContents)
        call.whileReading = [this](std::size_t, std::size_t) { return whileReading(); };
    CompareCounts k = m_compare.compareDirectories(m_panes.lists(), call);
    ++m_totals.pairs;
    m_totals.entries += k.matched + k.oneOnly + k.twoOnly;
    m_totals.matched += k.matched;
    m_totals.different += k.different;
    m_totals.oneOnly += k.oneOnly;
    m_totals.twoOnly += k.twoOnly;
}

CompareTotals CompareCommand::run(bool includeSubDirectories) {
    m_totals = {};
    try {
        // The settings are read once per press: a walk over thousands of
        // directories would otherwise read the settings file thousands of times.
        m_call = m_readCall();
        if (!includeSubDirectories) {
            comparePanes(false);
            m_observer.addLine("end of Directory compare\t" + nowText());
        } else {
            const std::string base1 = m_panes.leftDir();
            const std::string base2 = m_panes.rightDir();
            m_panes.clearStopRequest();
            m_observer.show();
            m_observer.setCntl("Process");
            m_observer.addLine("Start\t" + nowText());
            m_compare.beginSubDirectoryRun();

            SubDirectoryWalk::Hooks hooks;
            // A stop asked for in the window's stop box or confirmed in the
            // progress display ends the walk before its next level.
            bool stopped = false;
            m_walking = true;
            m_cancelled = false;
            m_done = m_found = 0;
            hooks.stopRequested = [&] {
                stopped = stopped || m_cancelled || m_panes.stopRequested();
                return stopped;
            };
            hooks.progress = [&](long doneNow, long foundNow) {
                m_done = doneNow;
                m_found = foundNow;
                if (!m_observer.walkProgress(m_done, m_found))
                    m_cancelled = true;
            };
            hooks.betweenLevels = [this] { m_panes.betweenLevels(); };
            // Directories the pattern leaves out are neither compared nor reported.
            hooks.subdirectories = [this](const std::string& dir) {
                std::vector<std::string> children = m_panes.subdirectories(dir);
                std::erase_if(children, [this](const std::string& child) {
                    return !directoryPassesPatternList(
                        std::string_view(child).substr(child.find_last_of('/') + 1),
                        m_call.pattern);
                });
                return children;
            };
            hooks.moveLeft = [this](const std::string& dir) {
                std::string shown = m_panes.moveLeft(dir);
                if (onLeftMoved)
                    onLeftMoved(shown);
                return shown;
            };
            hooks.moveRight = [this](const std::string& dir) { return m_panes.moveRight(dir); };
            hooks.compare = [this] { comparePanes(true); };
            hooks.addLine = [this](const std::string& line) {
                if (line.starts_with("Unreadable"))
                    ++m_totals.unreadableDirectories;
                else
                    ++m_totals.unmatchedDirectories;
                m_observer.addLine(line);
            };
            hooks.addNote = [this](const std::string& line) { m_observer.addLine(line); };
            hooks.levelDone = [this] { m_observer.repaint(); };
            SubDirectoryWalk(hooks).run(base1, base2);
            m_walking = false;
            m_observer.walkEnded();
            if (stopped)
                m_observer.addLine("Compare stopped after " + std::to_string(m_done) + " of " +
                                   std::to_string(m_found) + " directories\t" + nowText());

            // The panes go back where they were, whatever the walk met.
            try {
                m_panes.moveLeft(base1);
            } catch (...) {
            }
            try {
                m_panes.moveRight(base2);
            } catch (...) {
            }
            m_compare.finishRun(m_call.options);
            m_observer.addLine("end of subdirectory compare\t" + nowText());
            for (const std::string& line : totalsBlock(m_totals))
                m_observer.addLine(line);
        }
    } catch (...) {
        m_walking = false;
        m_observer.setCntl("");
        throw;
    }
    m_observer.setCntl("");
    return m_totals;
}

} // namespace pv
