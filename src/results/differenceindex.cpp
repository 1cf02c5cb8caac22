#include "results/differenceindex.h"
#include "results/linekind.h"

#include <algorithm>

namespace pv {

void DifferenceIndex::add(std::string_view line) {
    add(line, lineKind(line));
}

void DifferenceIndex::add(std::string_view line, LineKind kind) {
    if (kind != LineKind::Plain) {
        // A walk's directory line stands between blocks: it takes no headers.
        if (kind != LineKind::UnmatchedDirectory && kind != LineKind::UnreadableDirectory &&
            isDifference(kind))
            for (long* header : {&m_header1, &m_header2})
                if (*header >= 0) {
                    m_rows.push_back(*header);
                    *header = -1;
                }
        if (isDifference(kind))
            m_rows.push_back(m_next);
    } else if (line.substr(0, 13) == "Directory 1: ") {
        m_header1 = m_next;
        m_header2 = -1;
    } else if (line.substr(0, 13) == "Directory 2: ") {
        m_header2 = m_next;
    }
    ++m_next;
}

long DifferenceIndex::rowAtOrAfter(long line) const {
    return std::lower_bound(m_rows.begin(), m_rows.end(), line) - m_rows.begin();
}

} // namespace pv
