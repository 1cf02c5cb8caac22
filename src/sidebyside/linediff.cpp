#include "sidebyside/linediff.h"

#include "sidebyside/sidetext.h"

#include <algorithm>
#include <deque>
#include <functional>

namespace pv {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// Numbers lines so that equal lines get equal ids. Open addressing over one
// flat table: a node-based map spends most of the alignment's time allocating.
class LineIds {
  public:
    explicit LineIds(size_t expected) {
        size_t size = 64;
        while (size < expected * 2)
            size <<= 1;
        m_slots.assign(size, 0);
        m_mask = size - 1;
        m_keys.reserve(expected);
        m_hashes.reserve(expected);
    }

    std::uint32_t idOf(std::string_view line) {
        const size_t hash = std::hash<std::string_view>{}(line);
        for (size_t i = hash & m_mask;; i = (i + 1) & m_mask) {
            const std::uint32_t slot = m_slots[i];
            if (slot == 0) {
                m_keys.push_back(line);
                m_hashes.push_back(hash);
                m_slots[i] = std::uint32_t(m_keys.size());
                return std::uint32_t(m_keys.size()) - 1;
            }
            if (m_hashes[slot - 1] == hash && m_keys[slot - 1] == line)
                return slot - 1;
        }
    }

  private:
    std::vector<std::uint32_t> m_slots; // id + 1, 0 for an empty slot
    size_t m_mask = 0;
    std::vector<std::string_view> m_keys;
    std::vector<size_t> m_hashes;
};

// The lines as ids. The keys that differ from their lines are kept in `keys`
// (a deque: views into it must stay valid).
std::vector<std::uint32_t> lineIds(const SideText& text, const DiffOptions& options, LineIds& ids,
                                   std::deque<std::string>& keys) {
    std::vector<std::uint32_t> out;
    out.reserve(text.lineCount());
    for (size_t i = 0; i < text.lineCount(); ++i) {
        std::string_view line = text.line(i);
        if (options.ignoreCase || options.compressWhite ||
            (options.expandTabs && line.find('\t') != std::string_view::npos)) {
            std::string key = compareKey(line, options);
            if (key != line)
                line = keys.emplace_back(std::move(key));
        }
        out.push_back(ids.idOf(line));
    }
    return out;
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

LineDiff::LineDiff(const SideText& left, const SideText& right, const DiffOptions& options,
                   std::uint64_t budget) {
    std::vector<DiffHunk> hunks;
    {
        LineIds ids(left.lineCount() + right.lineCount());
        std::deque<std::string> keys;
        const std::vector<std::uint32_t> a = lineIds(left, options, ids, keys);
        const std::vector<std::uint32_t> b = lineIds(right, options, ids, keys);
        SequenceDiff diff = diffSequences(a, b, budget);
        hunks = std::move(diff.hunks);
        m_aligned = diff.aligned;
    }

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
