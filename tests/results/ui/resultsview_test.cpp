#include "results/ui/resultsview.h"

#include <QStringListModel>
#include <QTest>
#include <gtest/gtest.h>

using pv::ResultsView;

namespace {

// A view ten rows high over 1,000 rows.
struct TenRowView {
    QStringListModel model;
    ResultsView view;
    TenRowView() {
        QStringList rows;
        for (int n = 0; n < 1000; ++n)
            rows << QString("row %1").arg(n);
        model.setStringList(rows);
        view.setModel(&model);
        view.show();
        view.resize(300, 10 * view.rowHeight() + 2 * view.frameWidth());
        QApplication::processEvents();
        view.setFocus();
    }
    int current() const { return view.currentIndex().row(); }
};

} // namespace

// The keys move the current row and the list scrolls just enough to show it.
TEST(ResultsView, KeysMoveTheCurrentRowAndKeepItInView) {
    struct Row {
        const char* name;
        int from;
        Qt::Key key;
        int current, top;
    };
    const Row rows[] = {
        {"down", 0, Qt::Key_Down, 1, 0},
        {"down past the bottom", 9, Qt::Key_Down, 10, 1},
        {"up at the top", 0, Qt::Key_Up, 0, 0},
        {"page down", 0, Qt::Key_PageDown, 10, 1},
        {"end", 0, Qt::Key_End, 999, 990},
        {"end, then page down", 999, Qt::Key_PageDown, 999, 990},
        {"home", 999, Qt::Key_Home, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TenRowView v;
        v.view.setCurrentIndex(v.model.index(row.from));
        QTest::keyClick(&v.view, row.key);
        EXPECT_EQ(v.current(), row.current);
        EXPECT_EQ(v.view.firstVisibleRow(), row.top);
    }
}

// After scrolling, a click lands on the row drawn under the mouse.
TEST(ResultsView, ClickSelectsTheRowUnderTheMouse) {
    TenRowView v;
    v.view.scrollTo(v.model.index(500), QAbstractItemView::PositionAtTop);
    ASSERT_EQ(v.view.firstVisibleRow(), 500);
    const QRect rect = v.view.visualRect(v.model.index(503));
    EXPECT_EQ(rect.top(), 3 * v.view.rowHeight());
    QTest::mouseClick(v.view.viewport(), Qt::LeftButton, {}, rect.center());
    EXPECT_EQ(v.current(), 503);
    EXPECT_EQ(v.view.indexAt(QPoint(5, 10 * v.view.rowHeight() + 1)).row(), 510);
}
