// pvcompare shows the progress of a sub-directory compare on standard error when
// that is a terminal, and nothing there when it is redirected.

#include "support/temptree.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Runs pvcompare -s with stdout to a file and stderr to `stderrFd` (a new
// terminal when -1); returns what the terminal showed.
std::string runPvcompare(const pvtest::TempDir& home, const std::string& out, bool terminal) {
    const std::string program = std::string(PV_BINARY_DIR) + "/pvcompare";
    const std::string errFile = home / "err.txt";
    int master = -1;
    pid_t pid = terminal ? ::forkpty(&master, nullptr, nullptr, nullptr) : ::fork();
    if (pid == 0) {
        ::setenv("PAIRVIEW_HOME", home.str().c_str(), 1);
        int fd = ::open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        ::dup2(fd, 1);
        if (!terminal) {
            int err = ::open(errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
            ::dup2(err, 2);
        }
        const std::string left = home / "l", right = home / "r";
        ::execl(program.c_str(), "pvcompare", "-s", left.c_str(), right.c_str(), nullptr);
        ::_exit(127);
    }
    std::string shown;
    if (terminal) {
        char buf[4096];
        for (ssize_t n; (n = ::read(master, buf, sizeof buf)) > 0;)
            shown.append(buf, size_t(n));
        ::close(master);
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    return terminal ? shown : pvtest::readFile(errFile);
}

} // namespace

TEST(PvcompareProgress, ShownOnATerminalOnly) {
    pvtest::TempDir home;
    for (const char* d : {"l/a", "l/b", "l/a/c", "r/a", "r/b", "r/a/c"})
        home.mkdir(d);
    const std::string out = home / "out.txt";

    const std::string shown = runPvcompare(home, out, true);
    EXPECT_NE(shown.find("\r1 of 3 directories\033[K"), std::string::npos) << shown;
    EXPECT_NE(shown.find("\r4 of 4 directories\033[K"), std::string::npos) << shown;
    // The progress line is cleared when the walk ends; the list went to stdout.
    EXPECT_EQ(shown.substr(shown.size() - 4), "\r\033[K");
    EXPECT_NE(pvtest::readFile(out).find("end of subdirectory compare"), std::string::npos);

    EXPECT_EQ(runPvcompare(home, out, false), "");
}
