#pragma once
// A one-column list view whose rows all have the height of one line of its font.
// Every position is arithmetic on the row number, so scrolling to, selecting and
// painting a row cost the same in a list of a million rows as in one of ten; only
// the rows on screen are ever read from the model.

#include <QAbstractItemView>

namespace pv {

class ResultsView : public QAbstractItemView {
    Q_OBJECT
  public:
    explicit ResultsView(QWidget* parent = nullptr);

    // The width, in characters, of the longest row (for the horizontal scroll bar).
    void setLongestRow(std::size_t characters);
    int rowHeight() const;
    int firstVisibleRow() const;
    int visibleRows() const;

    QRect visualRect(const QModelIndex& index) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    QModelIndex indexAt(const QPoint& point) const override;

  protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    int horizontalOffset() const override;
    int verticalOffset() const override;
    bool isIndexHidden(const QModelIndex&) const override { return false; }
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags flags) override;
    QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    void rowsInserted(const QModelIndex& parent, int start, int end) override;
    void updateGeometries() override;
    void paintEvent(QPaintEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    int rows() const;
    int fullyVisibleRows() const;
    std::size_t m_longest = 0;
};

} // namespace pv
