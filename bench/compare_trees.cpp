// Times the directory compare on two big tree pairs, through the real compare
// window (offscreen) and through pvcompare, against `rsync -rn --itemize-changes`
// on the same pairs, and prints the times and their ratios.
//
//   compare_trees [--keep] [--runs N] [--content DIR]
//
// --content DIR times only the tree pair DIR/left and DIR/right (bench/content.py
// builds one) with "Compare on Contents in list" on: the window against
// `pvcompare -s --content`, target at most 1.3x.
//
// flat:   20,000 files on each side, a few hundred of them different or on one side
// nested: ~50,000 files in 5,000 directories on each side, some different
// Targets: flat within 2x of rsync, nested within 3x.

#include "app/programpaths.h"
#include "app/ui/mdiform1.h"
#include "compare/ui/dirlistbox.h"
#include "compare/ui/pairview.h"
#include "results/ui/resultslist.h"
#include "settings/settings.h"

#include <QAction>
#include <QApplication>
#include <QPushButton>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point t0) {
    return std::chrono::duration<double>(Clock::now() - t0).count();
}

void writeFile(const fs::path& p, const std::string& bytes) {
    std::ofstream(p, std::ios::binary) << bytes;
}

// Same content and the same modification time on both sides, unless `differ`.
void pair(const fs::path& l, const fs::path& r, int n, bool differ) {
    std::string body = "line " + std::to_string(n) + "\n";
    writeFile(l, body);
    writeFile(r, differ ? body + "changed\n" : body);
    auto t = fs::file_time_type::clock::now() - std::chrono::hours(24);
    fs::last_write_time(l, t);
    fs::last_write_time(r, t);
}

void buildFlat(const fs::path& root) {
    fs::create_directories(root / "left");
    fs::create_directories(root / "right");
    for (int n = 0; n < 20000; ++n) {
        char name[32];
        std::snprintf(name, sizeof name, "file%05d.txt", n);
        if (n % 100 == 1) { // 200 on the left only
            writeFile(root / "left" / name, "x");
            continue;
        }
        if (n % 100 == 2) { // 200 on the right only
            writeFile(root / "right" / name, "x");
            continue;
        }
        pair(root / "left" / name, root / "right" / name, n, n % 100 == 3); // 200 different
    }
}

void buildNested(const fs::path& root) {
    int n = 0;
    for (int a = 0; a < 50; ++a)
        for (int b = 0; b < 100; ++b) {
            fs::path rel = fs::path("a" + std::to_string(a)) / ("b" + std::to_string(b));
            fs::create_directories(root / "left" / rel);
            fs::create_directories(root / "right" / rel);
            for (int f = 0; f < 10; ++f, ++n) {
                std::string name = "f" + std::to_string(f) + ".dat";
                pair(root / "left" / rel / name, root / "right" / rel / name, n, n % 250 == 7);
            }
        }
}

double timeCommand(const std::string& command) {
    auto t0 = Clock::now();
    int rc = std::system((command + " >/dev/null 2>&1").c_str());
    (void)rc;
    return secondsSince(t0);
}

double timeWindow(pv::MDIForm1& frame, const fs::path& root, bool sub) {
    pv::Pairview* window = frame.defaultCompareWindow(false);
    window->dir(pv::Side::Left)->setPath((root / "left").string());
    window->dir(pv::Side::Right)->setPath((root / "right").string());
    frame.action("mnu_Options_Compare_Include_Sub_Directories")->setChecked(sub);
    auto t0 = Clock::now();
    window->findChild<QPushButton*>("Compare_Button")->click();
    return secondsSince(t0);
}

struct Times {
    double window = 1e9, pvcompare = 1e9, rsync = 1e9;
};

} // namespace

int main(int argc, char** argv) {
    bool keep = false;
    int runs = 3;
    std::string contentTree;
    for (int i = 1; i < argc; ++i) {
        std::string a = argv[i];
        if (a == "--keep")
            keep = true;
        else if (a == "--content" && i + 1 < argc)
            contentTree = argv[++i];
        else if (a == "--runs" && i + 1 < argc)
            runs = std::max(1, std::atoi(argv[++i]));
    }
    if (std::getenv("QT_QPA_PLATFORM") == nullptr)
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("PAIRVIEW_PVCMD", "/bin/true", 1); // the compare script is written, not run
    QApplication app(argc, argv);
    // Messages go to the error output through the console prompter.

    fs::path base = fs::temp_directory_path() / ("pv-bench-" + std::to_string(::getpid()));
    fs::path home = base / "home", flat = base / "flat", nested = base / "nested";
    fs::create_directories(home);
    if (contentTree.empty()) {
        std::printf("building trees in %s ...\n", base.c_str());
        buildFlat(flat);
        buildNested(nested);
    }
    std::string ini = (home / "Pairview.ini").string();
    writeFile(ini, "[COMPARECONTROL]\r\nLIST_DateTime=True\r\nLIST_Length=True\r\n");
    setenv("PAIRVIEW_HOME", home.c_str(), 1);

    pv::MDIForm1 frame({"-ini", ini});
    frame.MDIForm_Load(home.string());
    const std::string pvcompare = std::string(PV_BINARY_DIR) + "/pvcompare";
    const bool havePvcompare = fs::exists(pvcompare);

    auto measure = [&](const fs::path& root, bool sub) {
        Times t;
        std::string l = (root / "left").string(), r = (root / "right").string();
        for (int i = 0; i < runs; ++i) {
            t.rsync = std::min(
                t.rsync, timeCommand("rsync -rn --itemize-changes '" + l + "/' '" + r + "/'"));
            t.window = std::min(t.window, timeWindow(frame, root, sub));
            if (havePvcompare)
                t.pvcompare = std::min(t.pvcompare,
                                       timeCommand("'" + pvcompare + "' -ini '" + ini + "' " +
                                                   (sub ? "-s " : "") + "'" + l + "' '" + r + "'"));
        }
        return t;
    };
    auto report = [&](const char* name, const Times& t, double target) {
        std::printf("%-7s rsync %7.3f s | window %7.3f s (%.2fx) | pvcompare %7.3f s (%.2fx) | "
                    "target %.0fx\n",
                    name, t.rsync, t.window, t.window / t.rsync, t.pvcompare, t.pvcompare / t.rsync,
                    target);
    };
    if (!contentTree.empty()) {
        Times off = measure(contentTree, true);
        std::printf("contents off: window %7.3f s | pvcompare -s %7.3f s | window %.2fx\n",
                    off.window, off.pvcompare, off.window / off.pvcompare);
        pv::Settings(ini).write("COMPARECONTROL", "LIST_Contents", "True");
        Times c = measure(contentTree, true);
        std::printf("content: window %7.3f s | pvcompare -s --content %7.3f s | window %.2fx of "
                    "pvcompare, target 1.3x\n",
                    c.window, c.pvcompare, c.window / c.pvcompare);
        fs::remove_all(base);
        return 0;
    }
    Times f = measure(flat, false);
    report("flat", f, 2);
    Times n = measure(nested, true);
    report("nested", n, 3);
    if (pv::ResultsList* results = pv::ResultsList::instance(false))
        std::printf("results list lines: %d\n", results->lineCount());
    if (!keep)
        fs::remove_all(base);
    return 0;
}
