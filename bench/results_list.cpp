// Appends compare lines to the results window (offscreen, shown) the way a
// compare does: each line followed by the throttled repaint, the last line
// selected at every paint, and the end of the compare. Prints, per size, the
// processor time (user + system, so that other work on the machine counts
// less) per line, the wall time of one paint that shows 1,000 new lines at the
// end of the full list (median of 21; the same at every size when painting
// does not grow with the list), the time of the "differences only" toggle
// (median of 5 on and 5 off, each painted), and the peak resident set. The
// lines come in blocks of 100 files, each with its directory headers, as a
// sub-directory walk writes them, so the directory tree has a node per block.
//
//   results_list            runs 10,000, 100,000 and 1,000,000 lines, each in a
//                           fresh process so that each peak is its own
//   results_list N          one run of N lines
// Target: linear time, under 250 MiB at 1,000,000 lines; the toggle under 200 ms.

#include "results/ui/resultslist.h"

#include <QApplication>

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>
#include <cstdlib>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;

double seconds(Clock::duration d) {
    return std::chrono::duration<double>(d).count();
}

double cpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    auto s = [](const timeval& t) { return static_cast<double>(t.tv_sec) + t.tv_usec / 1e6; };
    return s(usage.ru_utime) + s(usage.ru_stime);
}

// A matched or different line as the compare writes it with dates and lengths on.
std::string resultLine(long n, int seqWidth) {
    std::string seq = std::to_string(n);
    seq.resize(static_cast<size_t>(seqWidth), ' ');
    std::string attr = "2026\\05\\07 9:5:7 - " + std::to_string(1000 + n % 90000);
    attr.resize(25, ' ');
    return seq + (n % 7 ? "-matched-   " : "-different- ") + seq + attr + attr + "src/module " +
           std::to_string(n / 100) + "/file " + std::to_string(n) + ".cpp";
}

int runOnce(long count, int argc, char** argv) {
    QApplication app(argc, argv);
    pv::ResultsList results;
    results.resize(900, 600);
    results.show();
    QApplication::processEvents();
    const int seqWidth = static_cast<int>(std::to_string(count).size()) + 1;
    const double cpu0 = cpuSeconds();
    const auto t0 = Clock::now();
    results.setCntl("Process");
    results.addLine("Start\t2026-05-07 09:05:07");
    results.addLine("Start\t2026-05-07 09:05:07");
    results.addLine("Directory 1: /left ");
    results.addLine("Directory 2: /right ");
    for (long n = 0; n < count; ++n) {
        if (n % 100 == 0) {
            const std::string dir = "/src/module " + std::to_string(n / 1000) + "/part " +
                                    std::to_string(n / 100);
            results.addLine("Start\t2026-05-07 09:05:07");
            results.addLine("Directory 1: /left" + dir + " ");
            results.addLine("Directory 2: /right" + dir + " ");
        }
        results.addLine(resultLine(n, seqWidth));
        results.incrementProgress();
        results.repaint();
    }
    results.setCntl("");
    const double wall = seconds(Clock::now() - t0);
    const double cpu = cpuSeconds() - cpu0;
    std::vector<double> toggles;
    for (int run = 0; run < 10; ++run) {
        const auto p0 = Clock::now();
        results.setDifferencesOnly(run % 2 == 0);
        QApplication::processEvents();
        results.repaint();
        toggles.push_back(seconds(Clock::now() - p0));
    }
    std::nth_element(toggles.begin(), toggles.begin() + 5, toggles.end());

    // Paints forced by waiting out the throttle, each showing 1,000 new lines.
    results.setCntl("Process");
    std::vector<double> paints;
    for (int run = 0; run < 21; ++run) {
        for (long n = 0; n < 1000; ++n)
            results.addLine(resultLine(count + n, seqWidth));
        std::this_thread::sleep_for(std::chrono::milliseconds(45));
        const auto p0 = Clock::now();
        results.repaint();
        paints.push_back(seconds(Clock::now() - p0));
    }
    results.setCntl("");
    std::nth_element(paints.begin(), paints.begin() + 10, paints.end());
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%9ld lines  cpu %6.2f s (%5.2f us/line)  wall %6.2f s  paint %6.2f ms  "
                "toggle %6.2f ms  peak RSS %6.1f MiB\n",
                count, cpu, cpu * 1e6 / static_cast<double>(count), wall, paints[10] * 1e3,
                toggles[5] * 1e3, static_cast<double>(usage.ru_maxrss) / 1024.0);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    if (argc > 1)
        return runOnce(std::atol(argv[1]), argc, argv);
    int status = 0;
    for (const char* count : {"10000", "100000", "1000000"})
        status |= std::system((std::string("\"") + argv[0] + "\" " + count).c_str());
    return status == 0 ? 0 : 1;
}
