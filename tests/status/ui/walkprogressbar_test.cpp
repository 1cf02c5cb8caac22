#include "app/ui/formregistry.h"
#include "status/ui/qtstatusbarview.h"
#include "status/ui/walkprogressbar.h"
#include "support/fakeclock.h"
#include "support/recordingprompter.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QProgressBar>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace pv;
using pvtest::FakeClock;
using std::chrono::seconds;

TEST(WalkProgressBar, ShowsProgressAndStopsOnlyWhenTheCancelIsConfirmed) {
    pvtest::RecordingPrompter prompts;
    FakeClock clock;
    QWidget window;
    auto* bar = new WalkProgressBar(&window, clock);
    window.resize(800, 100);
    bar->setGeometry(0, 70, 800, 30);
    window.show();
    EXPECT_FALSE(bar->isVisible());

    EXPECT_TRUE(bar->update(1, 5));
    EXPECT_TRUE(bar->isVisible());
    EXPECT_TRUE(bar->progressBar()->isVisible());
    EXPECT_EQ(bar->progressBar()->value(), 20);
    EXPECT_EQ(bar->panelText(1), "1 of 5 directories");
    clock.t += seconds(10);
    EXPECT_TRUE(bar->update(2, 10));
    EXPECT_EQ(bar->panelText(3), "40 seconds remaining");

    bar->cancelButton()->click();
    prompts.confirmAnswers = {false};
    EXPECT_TRUE(bar->update(3, 10));
    ASSERT_EQ(prompts.messages.size(), 1u);
    bar->cancelButton()->click();
    prompts.confirmAnswers = {true};
    EXPECT_FALSE(bar->update(4, 10));

    bar->finish();
    EXPECT_FALSE(bar->isVisible());
    // The next walk starts afresh.
    EXPECT_TRUE(bar->update(1, 2));
    EXPECT_EQ(bar->panelText(3), "");
}

TEST(WalkProgressBar, MdiStatusTextReachesTheFramesOwnStatusBarOnly) {
    QMainWindow frame;
    auto* area = new QMdiArea(&frame);
    frame.setCentralWidget(area);
    QStatusBar* status = frame.statusBar();
    status->setObjectName("StatusBar1");
    auto* panel = new QLabel(status);
    panel->setObjectName("StatusBar1_Panel1");
    status->addWidget(panel);
    status->hide();
    // A child window's status bar is not the frame's.
    auto* child = new QMainWindow;
    QStatusBar* childStatus = child->statusBar();
    childStatus->setObjectName("StatusBar1");
    auto* childPanel = new QLabel(childStatus);
    childPanel->setObjectName("StatusBar1_Panel1");
    area->addSubWindow(child);
    FormRegistry::add(&frame);
    frame.show();

    SetMdiStatusText("hello", 1);
    SetMdiStatusText("nowhere", 4);
    EXPECT_TRUE(status->isVisible());
    EXPECT_EQ(panel->text(), "hello");
    EXPECT_EQ(childPanel->text(), "");
}
