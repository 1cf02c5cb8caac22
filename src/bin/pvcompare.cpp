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
#include "results/filerecords.h"
#include "settings/settings.h"
#include "status/statusbarhandler.h"
#include "status/timeremaining.h"

#include <CLI/CLI.hpp>

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

constexpr const char* kDescription =
    "Compares the files of LEFT and RIGHT by name, as Pairview's Compare button does,\n"
    "and prints the results-list lines exactly as the results window shows them.\n"
    "Without -ini, same-named files differ when their last-change times or lengths\n"
    "differ; with -ini, its LIST_DateTime, LIST_Length, LIST_Contents, LIST_Time2s\n"
    "and LIST_HourShift decide; the flags below override either.";

constexpr const char* kFooter =
    R"(Patterns: several separated by ";"; one beginning with "!" leaves out the names
it matches ("*.*;!*.o"); one ending in "/" is for sub-directories: "!build/"
keeps that directory out of the -s walk. Hidden (dot) files are always left out.

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
    // `quiet`: the lines are counted, not printed.
    explicit PrintingObserver(bool quiet) : m_quiet(quiet) {}
    // Prints one record per file instead of the lines.
    void printRecords(pv::FileRecords records) {
        m_records.emplace(std::move(records));
        print(m_records->header());
    }
    void setCntl(std::string_view) override {}
    bool isEmpty() const override { return m_lines == 0; }
    void addLine(std::string_view line) override {
        clearProgress();
        ++m_lines;
        if (m_quiet)
            return;
        if (m_records) {
            print(m_records->add(line));
            return;
        }
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
    static void print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }
    void clearProgress() {
        if (m_shown.empty())
            return;
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
        m_shown.clear();
    }

    bool m_quiet;
    std::optional<pv::FileRecords> m_records;
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

// The help lists a flag and its "--no-" form as "--[no-]name", one line each.
class HelpFormatter : public CLI::Formatter {
  public:
    std::string make_option_name(const CLI::Option* option, bool positional) const override {
        std::string name = CLI::Formatter::make_option_name(option, positional);
        if (size_t brace = name.find('{'); brace != std::string::npos)
            name.erase(brace, name.find('}', brace) + 1 - brace);
        if (size_t no = name.find(",--no-"); no != std::string::npos)
            name = "--[no-]" + name.substr(no + 6);
        return name;
    }
    // The value's name alone, without the checks' wording.
    std::string make_option_opts(const CLI::Option* option) const override {
        if (option->get_positional())
            return {};
        std::string opts = CLI::Formatter::make_option_opts(option);
        if (size_t colon = opts.find(':'); colon != std::string::npos)
            opts.erase(colon, opts.find_first_of(' ', opts.find(']', colon)) - colon);
        return opts;
    }
};

// The options as given; an unset optional leaves the settings file's value.
struct Arguments {
    std::string ini, pattern = "*.*", format = "text";
    std::vector<std::string> excludes;
    bool sub = false, replace = true, run = false, summary = false;
    std::optional<bool> listDate, listLength, listContents, hourShift;
    std::optional<int> modifyWindow;
    std::vector<std::string> dirs;
};

// A flag and its "--no-" form, the last one given wins.
void addSwitch(CLI::App& app, const std::string& name, std::optional<bool>& value,
               const std::string& help) {
    app.add_flag_function(
           "--" + name + ",!--no-" + name,
           [&value](std::int64_t count) { value = count > 0; }, help)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

// Parses the command line; returns the exit status when the program ends here.
std::optional<int> parseArguments(int argc, char** argv, Arguments& a) {
    CLI::App app(kDescription, "pvcompare");
    app.footer(kFooter);
    app.allow_extras(); // reported below in the program's own words
    app.formatter(std::make_shared<HelpFormatter>());
    app.get_formatter()->column_width(30);
    app.set_help_flag("-h,--help", "show this text");
    bool version = false;
    app.add_flag("--version", version, "show the version");
    app.add_option("--ini", a.ini,
                   "settings file to read (also -ini; default: Pairview.ini in the program "
                   "directory)")
        ->type_name("FILE");
    app.add_flag("-s", a.sub, "include sub-directories: walk LEFT (24 levels) against RIGHT");
    app.add_option("-p", a.pattern, "file pattern, several separated by \";\" (default \"*.*\")")
        ->type_name("PATTERN");
    app.add_option("--exclude", a.excludes, "leave out what PATTERN matches (repeatable)")
        ->type_name("PATTERN")
        ->allow_extra_args(false);
    addSwitch(app, "date", a.listDate, "different last-change times make files different");
    addSwitch(app, "length", a.listLength, "different lengths make files different");
    addSwitch(app, "content", a.listContents,
              "files whose times and lengths agree are compared byte for byte");
    app.add_option("--modify-window", a.modifyWindow,
                   "times at most N seconds apart count as equal (default 0)")
        ->type_name("N")
        ->check(CLI::Range(0, 100000000));
    addSwitch(app, "ignore-hour-shift", a.hourShift,
              "times a whole 1 or 2 hours apart (within the window) count as equal");
    app.add_flag("--summary", a.summary, "print only the block of totals");
    app.add_option("--format", a.format,
                   "text: the results lines (default); csv or json: one record per file "
                   "(path, status, both times and lengths, contents)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "csv", "json"}));
    app.add_flag_callback("--replace", [&a] { a.replace = true; },
                          "start the results file afresh (default)");
    app.add_flag_callback("--append", [&a] { a.replace = false; },
                          "leave the results file as it is");
    app.add_flag("--run", a.run, "run the compare script when done and wait for it");
    app.add_option("LEFT RIGHT", a.dirs, "the two directories")->expected(0, -1)->type_name("DIR");

    // The settings file's option keeps the form the program has always taken,
    // "-ini FILE" (and "/ini FILE", "/?"); the parser takes "--ini".
    std::vector<std::string> words;
    for (int n = argc - 1; n > 0; --n) {
        std::string w = argv[n];
        words.push_back(w == "-ini" || w == "/ini" ? "--ini" : w == "/?" ? "--help" : w);
    }
    try {
        app.parse(words);
    } catch (const CLI::CallForHelp&) {
        std::fputs(app.help().c_str(), stdout);
        return 0;
    } catch (const CLI::ParseError& e) {
        std::fprintf(stderr, "pvcompare: %s (see pvcompare --help)\n", e.what());
        return 2;
    }
    if (!app.remaining().empty()) {
        std::fprintf(stderr, "pvcompare: unknown option %s (see pvcompare --help)\n",
                     app.remaining().front().c_str());
        return 2;
    }
    if (version) {
        std::printf("pvcompare %s\n", PAIRVIEW_VERSION);
        return 0;
    }
    if (a.dirs.size() != 2) {
        std::fputs("pvcompare: give two directories (see pvcompare --help)\n", stderr);
        return 2;
    }
    for (const std::string& exclude : a.excludes)
        a.pattern += ";!" + exclude;
    return std::nullopt;
}

} // namespace

int main(int argc, char** argv) {
    Arguments a;
    if (std::optional<int> status = parseArguments(argc, argv, a))
        return *status;
    const std::vector<std::string>& dirs = a.dirs;
    try {
        pv::ProgramPaths paths = pv::ProgramPaths::inDirectory(pv::resolveProgramDirectory());
        pv::Settings settings(a.ini.empty() ? paths.settingsPath : a.ini);
        PrintingObserver observer(a.summary);
        const std::string left = pv::normalizeDirectoryPath(dirs[0]);
        const std::string right = pv::normalizeDirectoryPath(dirs[1]);
        if (a.format != "text") {
            const bool contents =
                a.listContents.value_or(pv::readCompareOptions(settings).listContents);
            observer.printRecords(pv::FileRecords(
                a.format == "csv" ? pv::RecordFormat::Csv : pv::RecordFormat::Json, left, right,
                contents));
        }
        int scriptStatus = 0;
        pv::DirectoryCompare compare(observer,
                                     pv::CompareFiles::forWindow(paths.programDirectory, ""),
                                     [&a, &scriptStatus](const std::string& command) {
                                         if (a.run)
                                             scriptStatus = runScriptAndWait(command);
                                         return 0L;
                                     });
        DirectoryPanes panes(left, right, a.pattern);
        pv::CompareCommand command(compare, observer, panes, [&] {
            pv::DirectoryCompare::Call call;
            call.options = pv::readCompareOptions(settings);
            // Without a settings file of the user's choosing, the quick check
            // (time and length) is what tells changed trees apart.
            const bool own = a.ini.empty();
            call.options.listDateTime = a.listDate.value_or(own || call.options.listDateTime);
            call.options.listLength = a.listLength.value_or(own || call.options.listLength);
            call.options.listContents = a.listContents.value_or(call.options.listContents);
            call.options.modifyWindow = a.modifyWindow.value_or(call.options.modifyWindow);
            call.options.ignoreHourShift = a.hourShift.value_or(call.options.ignoreHourShift);
            call.replace = a.replace;
            call.pattern = a.pattern;
            return call;
        });
        if (a.sub) // the walk passes over what it cannot read; the top pair must exist
            panes.lists();
        pv::CompareTotals totals = command.run(a.sub);
        if (a.summary)
            for (const std::string& line : pv::totalsBlock(totals))
                std::printf("%s\n", line.c_str());
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
