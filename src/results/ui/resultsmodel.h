#pragma once
// The results list's model: every line as plain text in one store. Lines are
// stored at once but shown in batches: `publish` tells the views about all lines
// stored since the last call, so a compare that adds thousands of lines between
// two paints costs the views one insertion. With "differences only" the rows are
// the lines that report a difference (and their blocks' headers); the store
// keeps every line either way, and line indexes are always the store's.

#include "results/differenceindex.h"
#include "results/resultlines.h"
#include "results/resultstree.h"

#include <QAbstractListModel>
#include <QColor>

namespace pv {

// The tints of the results lines, from the window's palette, with the meanings
// of the side-by-side window: blue changed, red only on the left, green only on
// the right; directories that could not be paired in amber.
struct ResultColours {
    QColor different, oneOnly, twoOnly, directory;
    static ResultColours fromPalette(const QPalette& palette);
    // The tint of a line of this kind; invalid for lines that stay plain.
    QColor of(LineKind kind) const;
};

class ResultsModel : public QAbstractListModel {
    Q_OBJECT
  public:
    using QAbstractListModel::QAbstractListModel;

    void append(std::string_view line) {
        m_lines.append(line);
        const LineKind kind = lineKind(line);
        m_differences.add(line, kind);
        m_tree.add(line, kind);
    }
    void publish();
    // Every stored line, shown or not yet.
    const ResultLines& lines() const { return m_lines; }
    const ResultsTree& tree() const { return m_tree; }

    void setDifferencesOnly(bool on);
    bool differencesOnly() const { return m_differencesOnly; }
    // The store's index of the line a row shows, and back (-1: not shown). A
    // line that is not shown maps to the first shown row after it.
    long lineOfRow(int row) const;
    int rowOfLine(long line) const;
    int rowAtOrAfter(long line) const;

    void setColours(const ResultColours& colours) { m_colours = colours; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

  private:
    int rowsFor(long publishedLines) const;

    ResultLines m_lines;
    DifferenceIndex m_differences;
    ResultsTree m_tree;
    ResultColours m_colours;
    long m_shown = 0; // lines published to the views
    bool m_differencesOnly = false;
};

} // namespace pv
