// Times the side-by-side window on two large text files and reports its memory.
//
//   sidebyside_open [--size MB] [--changes N] [--keep]
//       writes two files of about MB megabytes (default 20) that differ in N
//       scattered places (default 300: changed, inserted and deleted lines),
//       opens the window (offscreen), paints it, steps through every change with
//       F7 and prints the times and the peak memory against the files' size.
//       Targets: open and first paint under 2 s, memory under 10x the files.
//   sidebyside_open --shot OUT.png [--dark] [--change N] LEFT RIGHT
//       opens the window for two files at their Nth change and saves a picture of it.

#include "sidebyside/linediff.h"
#include "sidebyside/sidetext.h"
#include "sidebyside/ui/diffpane.h"
#include "sidebyside/ui/frmsidebyside.h"

#include <QApplication>
#include <QPalette>
#include <QScrollBar>
#include <QStyleFactory>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <sys/resource.h>

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point t0) {
    return std::chrono::duration<double>(Clock::now() - t0).count();
}

// The processor time the program has used (user and system): on a busy machine
// the wall-clock times above also hold the time spent waiting for a processor.
double cpuSeconds() {
    rusage use{};
    getrusage(RUSAGE_SELF, &use);
    return double(use.ru_utime.tv_sec + use.ru_stime.tv_sec) +
           double(use.ru_utime.tv_usec + use.ru_stime.tv_usec) / 1e6;
}

// A value from /proc/self/status, in kB ("VmHWM" is the peak resident size).
long statusKb(const char* key) {
    std::ifstream in("/proc/self/status");
    std::string line;
    while (std::getline(in, line))
        if (line.rfind(key, 0) == 0)
            return std::atol(line.c_str() + std::strlen(key) + 1);
    return -1;
}

// Source-like lines; the right file gets `changes` edits at random places.
void writePair(const fs::path& left, const fs::path& right, size_t bytes, int changes) {
    std::mt19937 rng(42);
    const size_t lines = bytes / 40;
    std::uniform_int_distribution<size_t> where(0, lines - 1);
    std::vector<char> edit(lines, 0);
    for (int i = 0; i < changes; ++i)
        edit[where(rng)] = char(1 + i % 3); // 1 changed, 2 inserted after, 3 deleted
    std::ofstream l(left, std::ios::binary), r(right, std::ios::binary);
    for (size_t i = 0; i < lines; ++i) {
        std::string line = "    value_" + std::to_string(i) + " = compute(" +
                           std::to_string(i * 7 % 1000) + ", \"item\");\n";
        l << line;
        switch (edit[i]) {
        case 1:
            r << "    value_" << i << " = compute(" << i * 7 % 1000 + 1 << ", \"item\");\n";
            break;
        case 2:
            r << line << "    // inserted after " << i << "\n";
            break;
        case 3:
            break;
        default:
            r << line;
        }
    }
}

int measure(int argc, char** argv) {
    double megabytes = 20;
    int changes = 300;
    bool keep = false;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--size") && i + 1 < argc)
            megabytes = std::atof(argv[++i]);
        else if (!std::strcmp(argv[i], "--changes") && i + 1 < argc)
            changes = std::atoi(argv[++i]);
        else if (!std::strcmp(argv[i], "--keep"))
            keep = true;
    }
    const fs::path dir = fs::temp_directory_path() / "pv_sidebyside_bench";
    fs::create_directories(dir);
    const fs::path left = dir / "left.txt", right = dir / "right.txt";
    writePair(left, right, size_t(megabytes * 1024 * 1024), changes);
    const double fileMb = double(fs::file_size(left) + fs::file_size(right)) / (1024 * 1024);
    const long before = statusKb("VmHWM");

    // The parts on their own: reading, and aligning by each algorithm.
    auto t = Clock::now();
    double cpu = cpuSeconds();
    pv::SideText a = pv::SideText::readFile(left.string());
    pv::SideText b = pv::SideText::readFile(right.string());
    std::printf("reading both files: %.2f s (processor %.2f s)\n", secondsSince(t),
                cpuSeconds() - cpu);
    cpu = cpuSeconds();
    t = Clock::now();
    pv::LineDiff diff(a, b, {});
    std::printf("aligning: %.2f s (processor %.2f s)\n", secondsSince(t), cpuSeconds() - cpu);
    a = {};
    b = {};

    const auto t0 = Clock::now();
    cpu = cpuSeconds();
    pv::frmSideBySide* window = pv::frmSideBySide::open(left.string(), right.string());
    if (!window)
        return 1;
    window->grab(); // the first paint
    const double openSeconds = secondsSince(t0);
    const double openCpu = cpuSeconds() - cpu;

    const auto t1 = Clock::now();
    const size_t count = window->pair().diff().changes().size();
    for (size_t i = 1; i < count; ++i) {
        window->NextChange_Click();
        window->grab();
    }
    const double stepSeconds = secondsSince(t1);
    const long peak = statusKb("VmHWM");

    std::printf("files: %.1f MB together, %zu + %zu lines, %zu changes\n", fileMb,
                window->pair().left().lineCount(), window->pair().right().lineCount(), count);
    std::printf("open and first paint: %.2f s, processor %.2f s (target < 2 s)\n", openSeconds,
                openCpu);
    std::printf("every change with F7: %.2f ms per change\n",
                count > 1 ? stepSeconds * 1000 / double(count - 1) : 0.0);
    std::printf("peak memory: %.1f MB in all, %.1f MB for the window = %.1fx the files (target "
                "< 10x)\n",
                double(peak) / 1024, double(peak - before) / 1024,
                double(peak - before) / 1024 / fileMb);
    if (!keep)
        fs::remove_all(dir);
    return 0;
}

int shot(int argc, char** argv) {
    const char* out = nullptr;
    bool dark = false;
    size_t change = 1;
    std::vector<std::string> files;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--shot") && i + 1 < argc)
            out = argv[++i];
        else if (!std::strcmp(argv[i], "--dark"))
            dark = true;
        else if (!std::strcmp(argv[i], "--change") && i + 1 < argc)
            change = size_t(std::atoi(argv[++i]));
        else
            files.push_back(argv[i]);
    }
    if (!out || files.size() != 2) {
        std::fprintf(stderr, "usage: sidebyside_open --shot OUT.png [--dark] [--change N] LEFT RIGHT\n");
        return 2;
    }
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    if (dark) {
        QPalette p;
        p.setColor(QPalette::Window, QColor(45, 45, 48));
        p.setColor(QPalette::WindowText, QColor(220, 220, 220));
        p.setColor(QPalette::Base, QColor(30, 30, 30));
        p.setColor(QPalette::AlternateBase, QColor(40, 40, 42));
        p.setColor(QPalette::Text, QColor(220, 220, 220));
        p.setColor(QPalette::PlaceholderText, QColor(140, 140, 140));
        p.setColor(QPalette::Button, QColor(55, 55, 58));
        p.setColor(QPalette::ButtonText, QColor(220, 220, 220));
        p.setColor(QPalette::Mid, QColor(90, 90, 90));
        p.setColor(QPalette::Highlight, QColor(80, 140, 220));
        QApplication::setPalette(p);
    }
    pv::frmSideBySide* window = pv::frmSideBySide::open(files[0], files[1]);
    if (!window)
        return 1;
    window->resize(1400, 800);
    window->goToChange(change - 1);
    return window->grab().save(out) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    for (int i = 1; i < argc; ++i)
        if (!std::strcmp(argv[i], "--shot"))
            return shot(argc, argv);
    return measure(argc, argv);
}
