#include "compare/directorycompare.h"
#include "platform/clock.h"
#include "recordingobserver.h"
#include "support/fakeclock.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

using namespace pv;

namespace {

// "now" stands still, so the texts the test builds match the ones written.
struct ClockScope {
    pvtest::FakeClock clock;
    const Clock* previous = setProgramClock(&clock);
    ~ClockScope() { setProgramClock(previous); }
};

} // namespace

TEST(DirectoryCompare, SingleModeWritesResultsStartScriptAndStartsIt) {
    ClockScope clock;
    const std::string now = nowText();
    pvtest::TempDir dir;
    pvtest::RecordingObserver observer;
    std::vector<std::string> started;
    CompareFiles files = CompareFiles::forWindow(dir.str(), "1");
    EXPECT_EQ(files.results, dir / "Pairview1.txt");
    DirectoryCompare dc(observer, files, [&](const std::string& cmd) {
        started.push_back(cmd);
        return 42L;
    });
    PaneLists panes{"/a", "/b", {"x"}, {"x"}};
    DirectoryCompare::Call call;
    call.options.editor = "INTERNAL";
    dc.compareDirectories(panes, call);

    EXPECT_EQ(pvtest::readFile(files.results),
              "\r\n\r\n---------- Start " + now + " -----------\r\n\r\n");
    EXPECT_EQ(pvtest::readFile(files.script), "\r\nrem ---------- Start " + now +
                                                  " -----------\r\n\r\n"
                                                  "\r\nfc /lb100 /2 \"/a/x\" \"/b/x\"  >> " +
                                                  files.results +
                                                  "\r\n"
                                                  "\r\nWrite.exe \"" +
                                                  files.results + "\"\r\n\r\n");
    EXPECT_EQ(started, std::vector<std::string>{files.script});
    EXPECT_EQ(dc.lastTask(), 42);
    ASSERT_GE(observer.lines.size(), 4u);
    EXPECT_EQ(observer.lines[0], "Start\t" + now);
    EXPECT_EQ(observer.lines[1], "Directory 1: /a ");
    EXPECT_EQ(observer.lines[2], "Directory 2: /b ");
    EXPECT_EQ(observer.lines[3], "seq 1\tmessage\tseq 2\tCreateDate\tFile length\tFilename");
    EXPECT_EQ(observer.cntl, "Process");
    EXPECT_EQ(observer.shown, 1);
}

TEST(DirectoryCompare, AppendLeavesResultsFileAndSubModeWritesOneScript) {
    ClockScope clock;
    const std::string now = nowText();
    pvtest::TempDir dir;
    pvtest::RecordingObserver observer;
    observer.lines.push_back("earlier");
    CompareFiles files = CompareFiles::forWindow(dir.str(), "");
    pvtest::TempDir other;
    std::string keep = "keep me\r\n";
    other.write("x", "");
    std::string results = dir.write("Pairview.txt", keep);
    int starts = 0;
    DirectoryCompare dc(observer, files, [&](const std::string&) { return ++starts, 7L; });
    DirectoryCompare::Call call;
    call.replace = false;
    call.subDirectoryMode = true;
    // Until the run finishes the previous script stays whole: a kill during a
    // long walk must not leave it empty.
    dir.write("Pairview.cmd", "previous script\r\n");
    dc.beginSubDirectoryRun();
    dc.compareDirectories({"/a", "/b", {}, {}}, call);
    dc.compareDirectories({"/a/s", "/b/s", {"q"}, {"q"}}, call);
    EXPECT_EQ(starts, 0);
    EXPECT_EQ(pvtest::readFile(files.script), "previous script\r\n");
    dc.finishRun(call.options);
    EXPECT_EQ(starts, 1);
    EXPECT_EQ(observer.shown, 0); // the list was not empty
    EXPECT_EQ(pvtest::readFile(results), keep);
    std::string cont = "\r\n\r\nrem ---------- Continue " + now + " -----------\r\n\r\n\r\n";
    EXPECT_EQ(pvtest::readFile(files.script),
              "\r\nrem ---------- Start Sub directory search " + now + " -----------\r\n\r\n" +
                  cont + cont + "\r\nfc /lb100 /2 \"/a/s/q\" \"/b/s/q\"  >> " + results +
                  "\r\n\r\nWrite.exe \"" + results + "\"\r\n\r\n");
}

TEST(DirectoryCompare, CaptureFileHoldsSelectedFilesLineByLine) {
    ClockScope clock;
    pvtest::TempDir dir, left, right;
    left.write("one.txt", "alpha\r\nbeta\ngamma");
    left.write("both.txt", "");
    right.write("both.txt", "");
    pvtest::RecordingObserver observer;
    CompareFiles files = CompareFiles::forWindow(dir.str(), "");
    DirectoryCompare dc(observer, files, [](const std::string&) { return 1L; });
    DirectoryCompare::Call call;
    call.capture = CaptureSelection::OneOnly;
    dc.compareDirectories({left.str(), right.str(), {"both.txt", "one.txt"}, {"both.txt"}}, call);
    // one.txt comes after the right list ran out: a maxed entry, not captured.
    EXPECT_EQ(pvtest::readFile(files.capture),
              "\r\n\r\n---------- Start " + nowText() + " -----------\r\n\r\n");
    dc.compareDirectories({left.str(), right.str(), {"one.txt"}, {"zz"}}, call);
    EXPECT_EQ(pvtest::readFile(files.capture), "\r\n\r\n---------- Start " + nowText() +
                                                   " -----------\r\n\r\n"
                                                   "-- one.txt\r\nalpha\r\nbeta\r\ngamma\r\n");
}

TEST(DirectoryCompare, UnwritableResultsFileFailsBeforeTheScriptIsStarted) {
    pvtest::RecordingObserver observer;
    pvtest::TempDir dir;
    CompareFiles files = CompareFiles::forWindow(dir / "missing", "");
    int starts = 0;
    DirectoryCompare dc(observer, files, [&](const std::string&) { return ++starts, 1L; });
    EXPECT_ANY_THROW(dc.compareDirectories({"/a", "/b", {}, {}}, {}));
    EXPECT_EQ(starts, 0);
}
