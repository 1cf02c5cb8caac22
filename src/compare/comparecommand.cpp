#include "compare/comparecommand.h"

#include "compare/compareobserver.h"
#include "compare/subdirectorywalk.h"
#include "platform/clock.h"

namespace pv {

CompareCommand::CompareCommand(DirectoryCompare& compare, CompareObserver& observer,
                               ComparePanes& panes,
                               std::function<DirectoryCompare::Call()> readCall)
    : m_compare(compare), m_observer(observer), m_panes(panes), m_readCall(std::move(readCall)) {}

void CompareCommand::comparePanes(bool subDirectoryMode) {
    DirectoryCompare::Call call = m_call;
    call.subDirectoryMode = subDirectoryMode;
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
            hooks.stopRequested = [this] { return m_panes.stopRequested(); };
            hooks.betweenLevels = [this] { m_panes.betweenLevels(); };
            hooks.subdirectories = [this](const std::string& dir) {
                return m_panes.subdirectories(dir);
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
                ++m_totals.unmatchedDirectories;
                m_observer.addLine(line);
            };
            hooks.addNote = [this](const std::string& line) { m_observer.addLine(line); };
            hooks.levelDone = [this] { m_observer.repaint(); };
            SubDirectoryWalk(hooks).run(base1, base2);

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
        }
    } catch (...) {
        m_observer.setCntl("");
        throw;
    }
    m_observer.setCntl("");
    return m_totals;
}

} // namespace pv
