#include "status/statusbarhandler.h"
#include "status/timeremaining.h"
#include "support/fakeclock.h"
#include "support/recordingprompter.h"

#include <gtest/gtest.h>

#include <map>

using namespace pv;
using pvtest::FakeClock;
using std::chrono::seconds;

namespace {

struct FakeStatusBar : StatusBarView {
    std::map<int, std::string> texts;
    std::map<int, bool> visible{{1, true}, {2, true}, {3, false}};
    void setPanelVisible(int p, bool v) override {
        if (visible.count(p))
            visible[p] = v;
    }
    void setPanelText(int p, const std::string& t) override {
        if (visible.count(p))
            texts[p] = t;
    }
    std::optional<Span> panelSpan(int p) const override {
        if (!visible.count(p))
            return std::nullopt;
        return Span{1000 * (p - 1), 1000};
    }
    int top() const override { return 200; }
    void repaint() override {}
};

struct FakeBar : ProgressBarView {
    bool shown = false;
    int left = -1, top = -1, width = -1, value = 0;
    bool isVisible() const override { return shown; }
    void place(int l, int t, int w) override { left = l, top = t, width = w, shown = true; }
    void hide() override { shown = false; }
    int minimum() const override { return 0; }
    int maximum() const override { return 100; }
    void setValue(int v) override { value = v; }
};

struct Handlers {
    FakeClock clock;
    FakeStatusBar status;
    FakeBar bar;
    StatusBarHandler handler{clock};
    Handlers() {
        handler.setStatusBar(&status);
        handler.setProgressBarPanelNum(2);
        handler.progressBarHandler().setProgressBar(&bar);
        handler.progressBarHandler().Start();
    }
    ProgressBarHandler& progress() { return handler.progressBarHandler(); }
};

} // namespace

TEST(TimeRemaining, Texts) {
    struct Row {
        long remaining;
        const char* text;
    } rows[] = {
        {125, "2 minutes, 5 seconds remaining"},
        {65, "1 minute, 5 seconds remaining"},
        {120, "2 minutes remaining"},
        {60, "1 minute remaining"},
        {45, "45 seconds remaining"},
        {0, "0 seconds remaining"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(timeRemainingText(r.remaining), r.text) << r.remaining;
}

TEST(TimeRemaining, EstimateChangesOnlyOnFiveSecondStepsAfterSixSeconds) {
    struct Row {
        const char* name;
        long elapsed, current, total;
        std::optional<std::string> text;
    } rows[] = {
        {"a quarter done after 15 s", 15, 25, 100, "45 seconds remaining"},
        {"elapsed 6 is enough", 6, 1, 11, "1 minute remaining"},
        {"elapsed 4 is too early", 4, 1, 11, std::nullopt},
        {"63 s remaining is not a multiple of 5", 7, 10, 100, std::nullopt},
        {"nothing done yet", 30, 0, 10, std::nullopt},
        {"done: the estimate equals elapsed", 30, 10, 10, std::nullopt},
        // 10 s for 20 of 41: 20.5 rounds to 20 (even), 10 s remaining.
        {"a half rounds down to even", 10, 20, 41, "10 seconds remaining"},
        // 10 s for 20 of 31: 15.5 rounds to 16 (even), 6 s remaining: unchanged.
        {"a half rounds up to even", 10, 20, 31, std::nullopt},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        EXPECT_EQ(estimateText(r.elapsed, r.current, r.total), r.text);
    }
}

TEST(ProgressBarHandler, BandArithmetic) {
    struct Row {
        const char* name;
        std::optional<double> low, high;
        int value;
    } rows[] = {
        {"no band", std::nullopt, std::nullopt, 50},
        {"20 to 60", 20.0, 60.0, 40},
        {"only high 60", std::nullopt, 60.0, 30},
        {"only low 20", 20.0, std::nullopt, 60},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        Handlers h;
        h.progress().UpdateProgress(50, 100, r.low, r.high);
        EXPECT_EQ(h.bar.value, r.value);
    }
}

TEST(ProgressBarHandler, UpdateShowsTheBarOverItsPanelAndEstimates) {
    Handlers h;
    h.status.visible[2] = false;
    h.clock.t += seconds(15);
    h.progress().UpdateProgress(25, 100);
    EXPECT_TRUE(h.bar.shown);
    EXPECT_TRUE(h.status.visible[2]);
    EXPECT_EQ(h.bar.left, 1040);
    EXPECT_EQ(h.bar.top, 240);
    EXPECT_EQ(h.bar.width, 950);
    EXPECT_EQ(h.bar.value, 25);
    EXPECT_EQ(h.progress().TimeRemaining(), "45 seconds remaining");
    // With a band the estimate is left alone.
    h.clock.t += seconds(15);
    h.progress().UpdateProgress(30, 100, 10.0);
    EXPECT_EQ(h.progress().TimeRemaining(), "45 seconds remaining");
    // Past the total, nothing at all.
    h.progress().UpdateProgress(101, 100);
    EXPECT_EQ(h.bar.value, 37);

    h.progress().SetProgress(0);
    EXPECT_FALSE(h.bar.shown);
    EXPECT_FALSE(h.status.visible[2]);
    EXPECT_EQ(h.bar.value, 0);
    h.progress().SetProgress(101); // beyond the bar's maximum: shown, value kept
    EXPECT_TRUE(h.bar.shown);
    EXPECT_EQ(h.bar.value, 0);
    h.progress().SetProgress(64);
    EXPECT_EQ(h.bar.value, 64);
}

// The user takes five minutes over every question.
struct SlowPrompter : pvtest::RecordingPrompter {
    FakeClock* clock = nullptr;
    bool confirm(const std::string& text, const std::string& title, MessageIcon icon) override {
        clock->t += seconds(300);
        return RecordingPrompter::confirm(text, title, icon);
    }
};

TEST(ProgressBarHandler, CancelIsAskedAtTheNextUpdate) {
    SlowPrompter prompts;
    Handlers h;
    prompts.clock = &h.clock;
    h.progress().cmdcancel_Click();
    EXPECT_TRUE(prompts.messages.empty());

    // No: the work goes on, and the time of the question does not count.
    h.clock.t += seconds(10);
    prompts.confirmAnswers = {false};
    h.progress().UpdateProgress(10, 100);
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0], "Are you sure you want to cancel this operation?");
    EXPECT_EQ(prompts.titles[0], "Cancel Operation");
    EXPECT_EQ(prompts.icons[0], MessageIcon::Question);
    EXPECT_FALSE(h.progress().cancelRequested());
    EXPECT_FALSE(h.progress().cancelled());
    h.clock.t += seconds(10);
    h.progress().UpdateProgress(20, 100);
    EXPECT_EQ(prompts.messages.size(), 1u);
    // 20 s for 20 of 100 leaves 80 s (with the wait it would be 320 s and 1280 s).
    EXPECT_EQ(h.progress().TimeRemaining(), "1 minute, 20 seconds remaining");

    // Yes: the request stays and the operation learns it is cancelled.
    h.progress().cmdcancel_Click();
    prompts.confirmAnswers = {true};
    h.progress().UpdateProgress(30, 100);
    EXPECT_TRUE(h.progress().cancelled());
    EXPECT_TRUE(h.progress().cancelRequested());
}

TEST(StatusBarHandler, SetTextNamesItsPanelOrTheTextPanel) {
    Handlers h;
    h.handler.setPriTextPanelNum(3);
    h.handler.SetText("main");
    h.handler.SetText("second", 1);
    h.handler.SetText("none", 9);
    EXPECT_TRUE(h.status.visible[3]);
    EXPECT_EQ(h.status.texts, (std::map<int, std::string>{{1, "second"}, {3, "main"}}));
    EXPECT_EQ(walkProgressText(12, 40), "12 of 40 directories");
    EXPECT_EQ(walkProgressText(1, 2, "5 seconds remaining"),
              "1 of 2 directories, 5 seconds remaining");
}
