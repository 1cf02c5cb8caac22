// pvcompare: the directory compare without a window, for scripts and CI. It lists
// both directories as the panes would, prints the results-list lines, writes the
// compare script and the results-file start lines as the first compare window
// would, and can start the script.

#include "app/programpaths.h"
#include "compare/comparecommand.h"
#include "compare/compareobserver.h"
#include "compare/compareoptions.h"
#include "compare/filelisting.h"
#include "platform/process.h"
#include "platform/programdir.h"
#include "platform/pvversion.h"
#include "remote/remotefiles.h"
#include "settings/settings.h"
#include "status/statusbarhandler.h"
#include "status/timeremaining.h"

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr const char* kHelp =
    R"(Usage: pvcompare [-ini FILE] [-s] [-p PATTERN] [--[no-]date] [--[no-]length]
                 [--replace|--append] [--run] LEFT RIGHT

Compares the files of LEFT and RIGHT by name, as Pairview's Compare button does,
and prints the results-list lines exactly as the results window shows them.

  -ini FILE    settings file to read (default: Pairview.ini in the program
               directory); the fc switches and EDITOR go into the compare
               script; with -ini, its LIST_DateTime and LIST_Length decide
               what makes two same-named files different
  --date, --no-date
               same-named files with different last-change times are
               different, or not (default: on without -ini, else LIST_DateTime)
  --length, --no-length
               likewise for different lengths (default: on without -ini, else
               LIST_Length)
  -s           include sub-directories: walk the LEFT tree (24 levels) and compare
               every directory with the one at the same place under RIGHT
  -p PATTERN   file pattern, several separated by ";" (default "*.*");
               hidden (dot) files are always left out
  --replace    start the results file afresh (default)
  --append     leave the results file as it is
  --run        run the compare script when the compare is done and wait for it
  --help       show this text
  --version    show the version

The compare script (Pairview.cmd) and the results file (Pairview.txt) are written
in the program directory ($PAIRVIEW_HOME when set).

With -s, when standard error is a terminal, the progress shows there: directories
done of directories found so far, and the time remaining once it can be told.

Exit status: 0 when every entry matched, 1 when anything differs or is on one
side only (or a sub-directory has no counterpart on either side, or cannot be
read), 2 on an error, also when the script run by --run failed (for instance a
full disk cut the results file short).
)";

// Prints the results-list lines as they come, and the progress of a walk on
// standard error when that is a terminal (one line, rewritten in place).
class PrintingObserver : public pv::CompareObserver {
  public:
    void setCntl(std::string_view) override {}
    bool isEmpty() const override { return m_lines == 0; }
    void addLine(std::string_view line) override {
        clearProgress();
        ++m_lines;
        std::fwrite(line.data(), 1, line.size(), stdout);
        std::fputc('\n', stdout);
    }
    void initializeProgress(long) override {}
    void incrementProgress() override {}
    void completeProgress() override {}
    bool walkProgress(long done, long found) override {
        if (!m_terminal)
            return true;
        if (!m_walking) {
            m_walking = true;
            m_progress.Start();
        }
        m_progress.UpdateProgress(done, found);
        const std::string text = pv::walkProgressText(done, found, m_progress.TimeRemaining());
        if (text != m_shown) {
            std::fflush(stdout);
            std::fprintf(stderr, "\r%s\033[K", text.c_str());
            std::fflush(stderr);
            m_shown = text;
        }
        return true;
    }
    void walkEnded() override {
        clearProgress();
        m_walking = false;
    }

  private:
    void clearProgress() {
        if (m_shown.empty())
            return;
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
        m_shown.clear();
    }

    long m_lines = 0;
    bool m_terminal = ::isatty(STDERR_FILENO) == 1;
    bool m_walking = false;
    pv::ProgressBarHandler m_progress;
    std::string m_shown;
};

// The panes as plain directories, listed as the file lists list them.
class DirectoryPanes : public pv::ComparePanes {
  public:
    DirectoryPanes(std::string left, std::string right, std::string pattern)
        : m_left(std::move(left)), m_right(std::move(right)), m_pattern(std::move(pattern)) {}
    std::string leftDir() const override { return m_left; }
    std::string rightDir() const override { return m_right; }
    // As a file list does, a pane lists its directory when it is pointed at it.
    pv::PaneLists lists() override {
        if (!m_leftListed)
            moveLeft(m_left);
        if (!m_rightListed)
            moveRight(m_right);
        return {m_left, m_right, m_leftFiles, m_rightFiles};
    }
    // Each directory is read once for both its files and its sub-directories,
    // which the walk asks for next.
    std::string moveLeft(const std::string& dir) override {
        pv::DirectoryListing listing = pv::readDirectory(dir); // throws when unreadable
        m_leftFiles = pv::matchingNames(listing.files, m_pattern);
        m_leftSubdirectories = std::move(listing.subdirectories);
        m_leftListed = true;
        return m_left = dir;
    }
    std::string moveRight(const std::string& dir) override {
        pv::DirectoryListing listing = pv::readDirectory(dir); // throws when unreadable
        m_rightFiles = pv::matchingNames(listing.files, m_pattern);
        m_rightSubdirectories = std::move(listing.subdirectories);
        m_rightListed = true;
        return m_right = dir;
    }
    std::vector<std::string> subdirectories(const std::string& dir) override {
        std::vector<std::string> names;
        if (m_leftListed && dir == m_left)
            names = m_leftSubdirectories;
        else if (m_rightListed && dir == m_right)
            names = m_rightSubdirectories;
        else
            names = pv::listSubdirectories(dir);
        std::vector<std::string> paths;
        paths.reserve(names.size());
        for (const std::string& name : names)
            paths.push_back(pv::joinPath(dir, name));
        return paths;
    }

    // A host lost during the walk ends it: its remaining directories cannot be read.
    bool stopRequested() override { return !pv::remoteConnectionFailures().empty(); }

  private:
    std::string m_left, m_right, m_pattern;
    std::vector<std::string> m_leftFiles, m_rightFiles;
    std::vector<std::string> m_leftSubdirectories, m_rightSubdirectories;
    bool m_leftListed = false, m_rightListed = false;
};

// Runs the compare script and waits for it. What it prints outside its own
// redirections goes to the log beside it, as for a started script; its error
// output stays on ours, so a failure is seen where pvcompare was run.
int runScriptAndWait(const std::string& command) {
    std::vector<std::string> words = pv::splitCommandLine(command);
    std::vector<std::string> argv = words.empty() ? words : pv::resolveProgram(words[0]);
    if (argv.empty())
        throw std::runtime_error("cannot run the compare script " + command);
    argv.insert(argv.end(), words.begin() + 1, words.end());
    int log = ::open((words[0] + ".log").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    std::fflush(stdout);
    int status = pv::runAndWait(argv, log, -1);
    if (log >= 0)
        ::close(log);
    return status;
}

} // namespace

int main(int argc, char** argv) {
    std::string ini, pattern = "*.*";
    bool sub = false, replace = true, run = false;
    std::optional<bool> listDate, listLength; // a flag overrides the settings file
    std::vector<std::string> dirs;
    for (int n = 1; n < argc; ++n) {
        std::string a = argv[n];
        if (a == "--help" || a == "-h" || a == "/?") {
            std::fputs(kHelp, stdout);
            return 0;
        } else if (a == "--version") {
            std::printf("pvcompare %s\n", PAIRVIEW_VERSION);
            return 0;
        } else if (a == "--date" || a == "--no-date") {
            listDate = a == "--date";
        } else if (a == "--length" || a == "--no-length") {
            listLength = a == "--length";
        } else if ((a == "-ini" || a == "/ini") && n + 1 < argc) {
            ini = argv[++n];
        } else if (a == "-p" && n + 1 < argc) {
            pattern = argv[++n];
        } else if (a == "-s") {
            sub = true;
        } else if (a == "--replace") {
            replace = true;
        } else if (a == "--append") {
            replace = false;
        } else if (a == "--run") {
            run = true;
        } else if (a.size() > 1 && a[0] == '-') {
            std::fprintf(stderr, "pvcompare: unknown option %s (see pvcompare --help)\n",
                         a.c_str());
            return 2;
        } else {
            dirs.push_back(a);
        }
    }
    if (dirs.size() != 2) {
        std::fputs("pvcompare: give two directories (see pvcompare --help)\n", stderr);
        return 2;
    }
    try {
        pv::ProgramPaths paths = pv::ProgramPaths::inDirectory(pv::resolveProgramDirectory());
        pv::Settings settings(ini.empty() ? paths.settingsPath : ini);
        PrintingObserver observer;
        int scriptStatus = 0;
        pv::DirectoryCompare compare(observer,
                                     pv::CompareFiles::forWindow(paths.programDirectory, ""),
                                     [run, &scriptStatus](const std::string& command) {
                                         if (run)
                                             scriptStatus = runScriptAndWait(command);
                                         return 0L;
                                     });
        DirectoryPanes panes(pv::normalizeDirectoryPath(dirs[0]),
                             pv::normalizeDirectoryPath(dirs[1]), pattern);
        pv::CompareCommand command(compare, observer, panes, [&] {
            pv::DirectoryCompare::Call call;
            call.options = pv::readCompareOptions(settings);
            // Without a settings file of the user's choosing, the quick check
            // (time and length) is what tells changed trees apart.
            call.options.listDateTime = listDate.value_or(ini.empty() || call.options.listDateTime);
            call.options.listLength = listLength.value_or(ini.empty() || call.options.listLength);
            call.replace = replace;
            return call;
        });
        if (sub) // the walk passes over what it cannot read; the top pair must exist
            panes.lists();
        pv::CompareTotals totals = command.run(sub);
        std::fflush(stdout);
        // A host lost during the walk: its lines so far stand, the run failed.
        for (const std::string& failure : pv::remoteConnectionFailures())
            std::fprintf(stderr, "pvcompare: %s\n", failure.c_str());
        if (!pv::remoteConnectionFailures().empty())
            return 2;
        if (scriptStatus != 0) {
            std::fprintf(stderr, "pvcompare: the compare script failed (status %d)\n",
                         scriptStatus);
            return 2;
        }
        return totals.allMatched() ? 0 : 1;
    } catch (const std::exception& e) {
        std::fflush(stdout);
        std::fprintf(stderr, "pvcompare: %s\n", e.what());
        return 2;
    }
}
