#include "sidebyside/ui/diffpane.h"

#include "sidebyside/filepairdiff.h"

#include <QFontDatabase>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace pv {

namespace {

constexpr int kTabWidth = 8;
constexpr int kPad = 4;

QColor mix(const QColor& base, const QColor& hue, double part) {
    return QColor::fromRgbF(float(base.redF() + (hue.redF() - base.redF()) * part),
                            float(base.greenF() + (hue.greenF() - base.greenF()) * part),
                            float(base.blueF() + (hue.blueF() - base.blueF()) * part));
}

// Appends a piece of a line for display, tabs expanded to the next multiple of 8
// counted from the line's start.
void appendDisplayed(QString& out, std::string_view bytes) {
    const QString text = QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
    for (QChar c : text) {
        if (c == u'\t')
            out.append(QString(kTabWidth - out.size() % kTabWidth, u' '));
        else
            out.append(c);
    }
}

} // namespace

DiffColours DiffColours::fromPalette(const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    const bool dark = base.lightnessF() < 0.5;
    // Darker backgrounds need a larger share of the hue to show it at all.
    const double light = dark ? 0.28 : 0.18;
    const double strong = dark ? 0.55 : 0.42;
    const QColor blue(70, 130, 230), red(225, 70, 70), green(60, 175, 80);
    DiffColours c;
    c.changed = mix(base, blue, light);
    c.changedStrong = mix(base, blue, strong);
    c.removed = mix(base, red, light);
    c.removedStrong = mix(base, red, strong);
    c.added = mix(base, green, light);
    c.addedStrong = mix(base, green, strong);
    c.band = mix(base, palette.color(QPalette::Mid), 0.25);
    c.bandLines = mix(base, palette.color(QPalette::Text), 0.3);
    c.margin = palette.color(QPalette::AlternateBase);
    c.number = palette.color(QPalette::PlaceholderText);
    c.current = palette.color(QPalette::Highlight);
    return c;
}

DiffPane::DiffPane(Side side, QWidget* parent) : QAbstractScrollArea(parent), m_side(side) {
    setObjectName(side == Side::Left ? "LeftPane" : "RightPane");
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFocusPolicy(Qt::StrongFocus);
    // The window shows one horizontal bar for both panes, and the right pane's
    // vertical bar stands for both.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(side == Side::Left ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAlwaysOn);
    verticalScrollBar()->setSingleStep(1);
}

void DiffPane::setPair(const FilePairDiff* pair, SpansOfRow spans) {
    m_pair = pair;
    m_spans = std::move(spans);
    updateScrollBars();
    viewport()->update();
}

void DiffPane::setCurrentChange(size_t change) {
    m_currentChange = change;
    viewport()->update();
}

int DiffPane::rowHeight() const {
    return fontMetrics().lineSpacing();
}

int DiffPane::firstVisibleRow() const {
    return verticalScrollBar()->value();
}

int DiffPane::visibleRows() const {
    return std::max(1, viewport()->height() / rowHeight());
}

int DiffPane::lineNumberAt(size_t row) const {
    if (!m_pair || row >= m_pair->diff().rows().size())
        return 0;
    const DiffRow& r = m_pair->diff().rows()[row];
    const std::int32_t line = m_side == Side::Left ? r.left : r.right;
    return line == DiffRow::kNone ? 0 : line + 1;
}

int DiffPane::marginWidth() const {
    const size_t lines =
        m_pair ? std::max(m_pair->left().lineCount(), m_pair->right().lineCount()) : 0;
    const int digits = int(std::to_string(std::max<size_t>(lines, 1)).size());
    return fontMetrics().horizontalAdvance(QString(std::max(digits, 3), u'9')) + 2 * kPad;
}

int DiffPane::contentWidth() const {
    if (!m_pair)
        return 0;
    // Bytes stand in for characters: a tab or a wide character may reach a little
    // further, many multi-byte characters a little less.
    const size_t longest = std::max(m_pair->left().longestLine(), m_pair->right().longestLine());
    return int(std::min<size_t>(longest + kTabWidth, 1'000'000)) *
               fontMetrics().horizontalAdvance(u'M') +
           2 * kPad;
}

void DiffPane::updateScrollBars() {
    const int rows = m_pair ? int(m_pair->diff().rows().size()) : 0;
    const int page = visibleRows();
    verticalScrollBar()->setRange(0, std::max(0, rows - page));
    verticalScrollBar()->setPageStep(page);
    const int textWidth = std::max(0, viewport()->width() - marginWidth());
    horizontalScrollBar()->setRange(0, std::max(0, contentWidth() - textWidth));
    horizontalScrollBar()->setPageStep(std::max(1, textWidth));
    horizontalScrollBar()->setSingleStep(fontMetrics().horizontalAdvance(u'M') * 4);
}

void DiffPane::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBars();
}

void DiffPane::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        updateScrollBars();
}

void DiffPane::scrollContentsBy(int, int) {
    viewport()->update();
}

void DiffPane::mousePressEvent(QMouseEvent* event) {
    QAbstractScrollArea::mousePressEvent(event);
    const int row = firstVisibleRow() + int(event->position().y()) / rowHeight();
    if (m_pair && row >= 0 && size_t(row) < m_pair->diff().rows().size())
        emit rowClicked(size_t(row));
}

void DiffPane::paintEvent(QPaintEvent*) {
    QPainter p(viewport());
    const QPalette& pal = palette();
    p.fillRect(viewport()->rect(), pal.color(QPalette::Base));
    if (!m_pair)
        return;
    const DiffColours colours = DiffColours::fromPalette(pal);
    const auto& rows = m_pair->diff().rows();
    const int h = rowHeight();
    const int first = firstVisibleRow();
    const int last = std::min<int>(int(rows.size()), first + visibleRows() + 1);
    p.fillRect(QRect(0, 0, marginWidth(), viewport()->height()), colours.margin);
    for (int row = first; row < last; ++row)
        paintRow(p, size_t(row), (row - first) * h, colours);

    const auto& changes = m_pair->diff().changes();
    if (m_currentChange < changes.size()) {
        // A line above and below the current change (one line for a change
        // that only removes or adds on the other side).
        const DiffChange& c = changes[m_currentChange];
        const int top = (int(c.firstRow) - first) * h;
        const int bottom = top + int(c.rowCount) * h;
        p.setPen(QPen(colours.current, 1));
        p.drawLine(0, top, viewport()->width(), top);
        p.drawLine(0, bottom - 1, viewport()->width(), bottom - 1);
    }
}

void DiffPane::paintRow(QPainter& p, size_t row, int y, const DiffColours& colours) {
    const DiffRow& r = m_pair->diff().rows()[row];
    const int h = rowHeight();
    const int margin = marginWidth();
    const QRect text(margin, y, viewport()->width() - margin, h);
    const bool left = m_side == Side::Left;
    const std::int32_t line = left ? r.left : r.right;

    if (line != DiffRow::kNone) {
        p.setPen(colours.number);
        p.drawText(QRect(0, y, margin - kPad, h), Qt::AlignRight | Qt::AlignVCenter,
                   QString::number(line + 1));
    }
    QColor tint, strong;
    switch (r.kind) {
    case RowKind::Same:
        break;
    case RowKind::Changed:
        tint = colours.changed, strong = colours.changedStrong;
        break;
    case RowKind::Deleted:
        tint = left ? colours.removed : colours.band;
        break;
    case RowKind::Inserted:
        tint = left ? colours.band : colours.added;
        break;
    }
    if (tint.isValid())
        p.fillRect(text, tint);
    if (line == DiffRow::kNone) {
        p.fillRect(text, QBrush(colours.bandLines, Qt::BDiagPattern));
        return;
    }

    const SideText& side = left ? m_pair->left() : m_pair->right();
    const std::string_view bytes = side.line(size_t(line));
    const int x0 = margin + kPad - horizontalScrollBar()->value();
    p.save();
    p.setClipRect(text);
    QString shown;
    if (r.kind == RowKind::Changed && m_spans) {
        const IntraLineSpans& spans = m_spans(row);
        size_t at = 0;
        for (const ByteSpan& s : left ? spans.left : spans.right) {
            appendDisplayed(shown, bytes.substr(at, s.begin - at));
            const int from = p.fontMetrics().horizontalAdvance(shown);
            appendDisplayed(shown, bytes.substr(s.begin, s.end - s.begin));
            const int to = p.fontMetrics().horizontalAdvance(shown);
            p.fillRect(QRect(x0 + from, y, std::max(2, to - from), h), strong);
            at = s.end;
        }
        appendDisplayed(shown, bytes.substr(at));
    } else {
        appendDisplayed(shown, bytes);
    }
    p.setPen(palette().color(QPalette::Text));
    p.drawText(QPoint(x0, y + p.fontMetrics().ascent()), shown);
    p.restore();
}

} // namespace pv
