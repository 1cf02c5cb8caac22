#include "results/ui/resultsview.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace pv {

namespace {
constexpr int kMargin = 3; // blank pixels left of the text
} // namespace

ResultsView::ResultsView(QWidget* parent) : QAbstractItemView(parent) {
    setSelectionBehavior(SelectRows);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
}

void ResultsView::setLongestRow(std::size_t characters) {
    if (characters != m_longest) {
        m_longest = characters;
        updateGeometries();
    }
}

int ResultsView::rows() const {
    return model() ? model()->rowCount(rootIndex()) : 0;
}

int ResultsView::rowHeight() const {
    return std::max(1, fontMetrics().height());
}

int ResultsView::firstVisibleRow() const {
    return verticalScrollBar()->value();
}

int ResultsView::visibleRows() const {
    return (viewport()->height() + rowHeight() - 1) / rowHeight();
}

int ResultsView::fullyVisibleRows() const {
    return std::max(1, viewport()->height() / rowHeight());
}

QRect ResultsView::visualRect(const QModelIndex& index) const {
    if (!index.isValid())
        return {};
    const int width =
        std::max(viewport()->width(),
                 static_cast<int>(m_longest) * fontMetrics().horizontalAdvance('M') + 2 * kMargin);
    return QRect(-horizontalOffset(), (index.row() - firstVisibleRow()) * rowHeight(), width,
                 rowHeight());
}

void ResultsView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (!index.isValid())
        return;
    const int row = index.row(), top = firstVisibleRow(), page = fullyVisibleRows();
    int newTop = top;
    switch (hint) {
    case PositionAtTop:
        newTop = row;
        break;
    case PositionAtBottom:
        newTop = row - page + 1;
        break;
    case PositionAtCenter:
        newTop = row - page / 2;
        break;
    case EnsureVisible:
        if (row < top)
            newTop = row;
        else if (row >= top + page)
            newTop = row - page + 1;
        break;
    }
    verticalScrollBar()->setValue(newTop);
}

QModelIndex ResultsView::indexAt(const QPoint& point) const {
    if (point.y() < 0 || !model())
        return {};
    const int row = firstVisibleRow() + point.y() / rowHeight();
    return row < rows() ? model()->index(row, 0, rootIndex()) : QModelIndex();
}

QModelIndex ResultsView::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
    const int count = rows();
    if (count == 0)
        return {};
    const int current = currentIndex().isValid() ? currentIndex().row() : -1;
    const int page = fullyVisibleRows();
    int row = current;
    switch (action) {
    case MoveUp:
    case MovePrevious:
        row = current < 0 ? 0 : current - 1;
        break;
    case MoveDown:
    case MoveNext:
        row = current + 1;
        break;
    case MovePageUp:
        row = current - page;
        break;
    case MovePageDown:
        row = current < 0 ? page - 1 : current + page;
        break;
    case MoveHome:
        row = 0;
        break;
    case MoveEnd:
        row = count - 1;
        break;
    case MoveLeft:
    case MoveRight:
        break;
    }
    return model()->index(std::clamp(row, 0, count - 1), 0, rootIndex());
}

int ResultsView::horizontalOffset() const {
    return horizontalScrollBar()->value();
}

int ResultsView::verticalOffset() const {
    return firstVisibleRow() * rowHeight();
}

void ResultsView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags flags) {
    const int count = rows();
    if (count == 0)
        return;
    const int top = firstVisibleRow();
    const int first =
        std::clamp(top + std::min(rect.top(), rect.bottom()) / rowHeight(), 0, count - 1);
    const int last =
        std::clamp(top + std::max(rect.top(), rect.bottom()) / rowHeight(), 0, count - 1);
    selectionModel()->select(
        QItemSelection(model()->index(first, 0, rootIndex()), model()->index(last, 0, rootIndex())),
        flags);
}

QRegion ResultsView::visualRegionForSelection(const QItemSelection& selection) const {
    // Only the rows on screen matter for painting.
    const int top = firstVisibleRow(), bottom = top + visibleRows();
    QRegion region;
    for (const QItemSelectionRange& range : selection) {
        const int first = std::max(range.top(), top), last = std::min(range.bottom(), bottom);
        if (first <= last)
            region += QRect(0, (first - top) * rowHeight(), viewport()->width(),
                            (last - first + 1) * rowHeight());
    }
    return region;
}

void ResultsView::rowsInserted(const QModelIndex& parent, int start, int end) {
    QAbstractItemView::rowsInserted(parent, start, end);
    updateGeometries();
    if (start <= firstVisibleRow() + visibleRows())
        viewport()->update();
}

void ResultsView::updateGeometries() {
    const int page = fullyVisibleRows();
    verticalScrollBar()->setPageStep(page);
    verticalScrollBar()->setSingleStep(1);
    verticalScrollBar()->setRange(0, std::max(0, rows() - page));
    const int contentWidth =
        static_cast<int>(m_longest) * fontMetrics().horizontalAdvance('M') + 2 * kMargin;
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(fontMetrics().horizontalAdvance('M'));
    horizontalScrollBar()->setRange(0, std::max(0, contentWidth - viewport()->width()));
    QAbstractItemView::updateGeometries();
}

void ResultsView::scrollContentsBy(int, int) {
    viewport()->update();
}

void ResultsView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QPalette& pal = palette();
    painter.fillRect(event->rect(), pal.base());
    if (!model())
        return;
    const int top = firstVisibleRow(), height = rowHeight();
    const int last = std::min(rows() - 1, top + visibleRows());
    const QModelIndex current = currentIndex();
    for (int row = top; row <= last; ++row) {
        const QModelIndex index = model()->index(row, 0, rootIndex());
        const QRect rect(0, (row - top) * height, viewport()->width(), height);
        if (!rect.intersects(event->rect()))
            continue;
        const bool selected = selectionModel() && selectionModel()->isSelected(index);
        if (selected) {
            painter.fillRect(rect, pal.highlight());
        } else if (const QVariant tint = model()->data(index, Qt::BackgroundRole); tint.isValid()) {
            painter.fillRect(rect, tint.value<QColor>());
        }
        painter.setPen(selected ? pal.highlightedText().color() : pal.text().color());
        painter.drawText(QRect(kMargin - horizontalOffset(), rect.top(),
                               horizontalOffset() + rect.width(), height),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextExpandTabs,
                         model()->data(index).toString());
        if (index == current && hasFocus())
            painter.drawRect(rect.adjusted(0, 0, -1, -1));
    }
}

} // namespace pv
