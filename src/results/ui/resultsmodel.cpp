#include "results/ui/resultsmodel.h"

namespace pv {

void ResultsModel::publish() {
    const long stored = m_lines.size();
    if (stored == m_shown)
        return;
    beginInsertRows(QModelIndex(), static_cast<int>(m_shown), static_cast<int>(stored - 1));
    m_shown = stored;
    endInsertRows();
}

int ResultsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_shown);
}

QVariant ResultsModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= m_shown)
        return {};
    std::string_view line = m_lines[index.row()];
    return QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size()));
}

} // namespace pv
