// The main window as a desktop program: its icon on every window, its place on
// the screen kept between runs, and child windows that open whole inside it.

#include "about/ui/frmabout.h"
#include "app/ui/formregistry.h"
#include "editor/ui/fileopen.h"
#include "editor/ui/frmnotepad.h"
#include "support/qt/runningprogram.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>

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

// A child window opens at a size that shows its content, wholly inside the
// frame, and a maximized compare window stays maximized behind it.
TEST_F(FrameTest, ChildWindowsOpenWholeInsideTheFrame) {
    start();
    frame->resize(1600, 1000);
    frame->show();
    QMdiArea* area = frame->mdiArea();
    auto* compare = qobject_cast<QMdiSubWindow*>(window->parentWidget());
    ASSERT_TRUE(compare->isMaximized());
    auto inside = [area](QWidget* form) {
        auto* sub = qobject_cast<QMdiSubWindow*>(form->parentWidget());
        return sub && !sub->isMaximized() && area->viewport()->rect().contains(sub->geometry());
    };

    pv::frmNotePad* editor = pv::mnuFileNew();
    EXPECT_TRUE(compare->isMaximized());
    EXPECT_TRUE(inside(editor));
    const QPlainTextEdit* text = editor->textBox();
    const QFontMetrics metrics(text->font());
    EXPECT_GE(text->viewport()->width(), 80 * metrics.horizontalAdvance(u'M'));
    EXPECT_GE(text->viewport()->height(), 25 * metrics.lineSpacing());

    pv::mnu_helpAbout_Click(*frame);
    EXPECT_TRUE(compare->isMaximized());
    pv::frmAbout* about = nullptr;
    for (QMdiSubWindow* sub : area->subWindowList())
        if (auto* a = qobject_cast<pv::frmAbout*>(sub->widget()))
            about = a;
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(inside(about));
    // Closed, it hands the front back to the editor it opened over.
    pv::FormRegistry::unload(about);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(area->activeSubWindow(), editor->parentWidget());

    // Restored from maximized, the compare window shows all of its controls.
    compare->showNormal();
    EXPECT_TRUE(area->viewport()->rect().contains(compare->geometry()));
    EXPECT_GE(window->width(), window->minimumSizeHint().width());
    EXPECT_GE(window->height(), window->minimumSizeHint().height());
}

} // namespace
