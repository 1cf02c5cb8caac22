// The main window as a desktop program: its icon on every window, and its place on
// the screen kept between runs.

#include "support/qt/runningprogram.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace {

using FrameTest = pvtest::RunningProgramTest;

TEST_F(FrameTest, EveryWindowCarriesTheProgramIcon) {
    start();
    EXPECT_FALSE(frame->windowIcon().pixmap(32).isNull());
    const QList<QMdiSubWindow*> children = frame->mdiArea()->subWindowList();
    ASSERT_FALSE(children.isEmpty());
    for (QMdiSubWindow* sub : children)
        EXPECT_EQ(sub->windowIcon().cacheKey(), frame->windowIcon().cacheKey());
}

TEST_F(FrameTest, ComesBackWhereItWasClosed) {
    start();
    frame->resize(640, 480);
    frame->move(20, 30);
    const QRect closedAt = frame->geometry();
    frame->close();
    EXPECT_FALSE(value("MAINWINDOW", "PLACEMENT").empty());

    start();
    EXPECT_EQ(frame->geometry().size(), closedAt.size());
    EXPECT_EQ(frame->geometry().topLeft(), closedAt.topLeft());
}

} // namespace
