#include "results/ui/resultsmodel.h"

#include <QPalette>

namespace pv {

namespace {

QColor mix(const QColor& base, const QColor& hue, double part) {
    return QColor::fromRgbF(float(base.redF() + (hue.redF() - base.redF()) * part),
                            float(base.greenF() + (hue.greenF() - base.greenF()) * part),
                            float(base.blueF() + (hue.blueF() - base.blueF()) * part));
}

} // namespace

ResultColours ResultColours::fromPalette(const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    // Darker backgrounds need a larger share of the hue to show it at all.
    const double part = base.lightnessF() < 0.5 ? 0.35 : 0.25;
    return {mix(base, QColor(70, 130, 230), part), mix(base, QColor(225, 70, 70), part),
            mix(base, QColor(60, 175, 80), part), mix(base, QColor(230, 170, 30), part)};
}

QColor ResultColours::of(LineKind kind) const {
    switch (kind) {
    case LineKind::Different: return different;
    case LineKind::OneOnly: return oneOnly;
    case LineKind::TwoOnly: return twoOnly;
    case LineKind::UnmatchedDirectory:
    case LineKind::UnreadableDirectory: return directory;
    default: return {};
    }
}

int ResultsModel::rowsFor(long publishedLines) const {
    return static_cast<int>(m_differencesOnly ? m_differences.rowAtOrAfter(publishedLines)
                                              : publishedLines);
}

void ResultsModel::publish() {
    const long stored = m_lines.size();
    const int before = rowsFor(m_shown), after = rowsFor(stored);
    m_shown = stored;
    if (after == before)
        return;
    beginInsertRows(QModelIndex(), before, after - 1);
    endInsertRows();
}

void ResultsModel::setDifferencesOnly(bool on) {
    if (on == m_differencesOnly)
        return;
    beginResetModel();
    m_differencesOnly = on;
    endResetModel();
}

long ResultsModel::lineOfRow(int row) const {
    if (row < 0 || row >= rowCount())
        return -1;
    return m_differencesOnly ? m_differences.rows()[size_t(row)] : row;
}

int ResultsModel::rowAtOrAfter(long line) const {
    return std::min(rowsFor(line), rowCount());
}

int ResultsModel::rowOfLine(long line) const {
    if (line < 0 || line >= m_shown)
        return -1;
    const int row = rowsFor(line);
    return lineOfRow(row) == line ? row : -1;
}

int ResultsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rowsFor(m_shown);
}

QVariant ResultsModel::data(const QModelIndex& index, int role) const {
    const long line = index.isValid() ? lineOfRow(index.row()) : -1;
    if (line < 0)
        return {};
    std::string_view text = m_lines[line];
    if (role == Qt::DisplayRole)
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    if (role == Qt::BackgroundRole) {
        const QColor tint = m_colours.of(lineKind(text));
        return tint.isValid() ? QVariant(tint) : QVariant();
    }
    return {};
}

} // namespace pv
