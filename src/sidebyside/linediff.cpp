#include "sidebyside/linediff.h"

#include "sidebyside/sidetext.h"

#include <algorithm>

namespace pv {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

bool keyDiffersFromLine(std::string_view line, const DiffOptions& options) {
    if (options.ignoreCase || options.compressWhite)
        return true;
    return options.expandTabs && line.find('\t') != std::string_view::npos;
}

// The whole text as compare keys, one per line, or the text itself when no
// line's key differs from the line.
std::string keyBuffer(const SideText& text, const DiffOptions& options, bool& rebuilt) {
    rebuilt = false;
    const bool anyKey = options.ignoreCase || options.compressWhite ||
                        (options.expandTabs && text.buffer().find('\t') != std::string::npos);
    if (!anyKey)
        return {};
    rebuilt = true;
    std::string keys;
    keys.reserve(text.buffer().size());
    for (size_t i = 0; i < text.lineCount(); ++i) {
        const std::string_view line = text.line(i);
        if (keyDiffersFromLine(line, options))
            keys += compareKey(line, options);
        else
            keys += line;
        keys += '\n';
    }
    return keys;
}

} // namespace

std::string compareKey(std::string_view line, const DiffOptions& options) {
    std::string key;
    key.reserve(line.size());
    size_t column = 0; // where a tab expands to, counted in the key before compressing
    bool pendingBlank = false;
    for (char c : line) {
        if (options.compressWhite && isBlank(c)) {
            // Runs of blanks and tabs become one blank, and none at the start.
            pendingBlank = !key.empty();
            continue;
        }
        if (pendingBlank) {
            key += ' ';
            pendingBlank = false;
        }
        if (c == '\t' && options.expandTabs) {
            const size_t width = 8 - column % 8;
            key.append(width, ' ');
            column += width;
            continue;
        }
        if (options.ignoreCase && c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
        key += c;
        ++column;
    }
    return key;
}

LineDiff::LineDiff(const SideText& left, const SideText& right, const DiffOptions& options) {
    bool leftRebuilt = false, rightRebuilt = false;
    const std::string leftKeys = keyBuffer(left, options, leftRebuilt);
    const std::string rightKeys = keyBuffer(right, options, rightRebuilt);
    const std::vector<DiffHunk> hunks =
        diffLines(leftRebuilt ? leftKeys : left.buffer(), rightRebuilt ? rightKeys : right.buffer(),
                  options.algorithm);

    m_rows.reserve(std::max(left.lineCount(), right.lineCount()) + 16);
    m_changes.reserve(hunks.size());
    size_t l = 0, r = 0;
    auto sameUpTo = [&](size_t leftEnd) {
        for (; l < leftEnd; ++l, ++r)
            m_rows.push_back({std::int32_t(l), std::int32_t(r), RowKind::Same});
    };
    for (const DiffHunk& h : hunks) {
        sameUpTo(h.leftStart);
        DiffChange change{m_rows.size(), std::max(h.leftCount, h.rightCount)};
        // The lines of a block pair up from its top; the longer side's rest stands
        // against empty bands.
        for (size_t k = 0; k < change.rowCount; ++k) {
            DiffRow row;
            if (k < h.leftCount)
                row.left = std::int32_t(l++);
            if (k < h.rightCount)
                row.right = std::int32_t(r++);
            row.kind = row.left == DiffRow::kNone    ? RowKind::Inserted
                       : row.right == DiffRow::kNone ? RowKind::Deleted
                                                     : RowKind::Changed;
            m_rows.push_back(row);
        }
        m_changes.push_back(change);
    }
    sameUpTo(left.lineCount());
}

size_t LineDiff::changeAtRow(size_t row) const {
    auto it = std::upper_bound(m_changes.begin(), m_changes.end(), row,
                               [](size_t r, const DiffChange& c) { return r < c.firstRow; });
    if (it == m_changes.begin())
        return m_changes.size();
    --it;
    return row < it->firstRow + it->rowCount ? size_t(it - m_changes.begin()) : m_changes.size();
}

} // namespace pv
