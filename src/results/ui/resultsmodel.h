#pragma once
// The results list's model: every line as plain text in one store. Lines are
// stored at once but shown in batches: `publish` tells the views about all lines
// stored since the last call, so a compare that adds thousands of lines between
// two paints costs the views one insertion.

#include "results/resultlines.h"

#include <QAbstractListModel>

namespace pv {

class ResultsModel : public QAbstractListModel {
    Q_OBJECT
  public:
    using QAbstractListModel::QAbstractListModel;

    void append(std::string_view line) { m_lines.append(line); }
    void publish();
    // Every stored line, shown or not yet.
    const ResultLines& lines() const { return m_lines; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

  private:
    ResultLines m_lines;
    long m_shown = 0;
};

} // namespace pv
