#pragma once
// One side of the side-by-side window: the file's lines on the rows of the
// alignment, with line numbers in a margin. Only the rows in view are drawn, so a
// file of any size costs the same to paint.

#include "sidebyside/intralinediff.h"

#include <QAbstractScrollArea>
#include <QColor>
#include <functional>

namespace pv {

class FilePairDiff;

// The tints of a pane, mixed from its palette so that they read on light and dark
// themes alike: each is the base colour moved part of the way towards a hue.
struct DiffColours {
    QColor changed;       // a changed line
    QColor changedStrong; // its differing characters
    QColor removed;       // a line only on the left
    QColor removedStrong;
    QColor added; // a line only on the right
    QColor addedStrong;
    QColor band;      // where the other side has a line and this one none
    QColor bandLines; // the hatching over it
    QColor margin; // the line-number margin
    QColor number;
    QColor current; // the frame of the current change

    static DiffColours fromPalette(const QPalette& palette);
};

class DiffPane : public QAbstractScrollArea {
    Q_OBJECT
  public:
    enum class Side { Left, Right };
    using SpansOfRow = std::function<const IntraLineSpans&(size_t row)>;

    DiffPane(Side side, QWidget* parent = nullptr);

    // The pair to show (nullptr for none) and where the changed characters of a
    // changed row come from.
    void setPair(const FilePairDiff* pair, SpansOfRow spans);
    void setCurrentChange(size_t change);

    int firstVisibleRow() const;
    int visibleRows() const;
    // The 1-based line number a row shows, 0 on an empty band.
    int lineNumberAt(size_t row) const;
    int rowHeight() const;
    // The pixel width every line fits in, margin excluded.
    int contentWidth() const;

  signals:
    void rowClicked(size_t row);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    void updateScrollBars();
    int marginWidth() const;
    void paintRow(class QPainter& p, size_t row, int y, const DiffColours& colours);

    Side m_side;
    const FilePairDiff* m_pair = nullptr;
    SpansOfRow m_spans;
    size_t m_currentChange = 0;
};

} // namespace pv
