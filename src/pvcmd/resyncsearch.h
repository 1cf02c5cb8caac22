#pragma once
// Where two windows of lines agree again after a difference. Candidates (x, y)
// are tried in the order (1,1), (2,1), (1,2), (2,2), (3,1), (1,3), (3,2), (2,3),
// (3,3), ...; the first one where min(want, lines left in each window) lines
// agree wins. A candidate can only win when its first lines agree, so the search
// looks only at the pairs whose first lines have the same hash: the earlier
// lines of each window are kept in a hash index as the search moves outwards.
// The cost is about linear in the window length instead of its square. Two lines
// count as agreeing only when their hashes and their bytes agree.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace pvcmd {

// Positions of a window's lines by hash. Chained through `next`, so inserting is
// one store; only the buckets used are cleared again, so a search that ends early
// costs nothing for the rest of a big window.
class LineHashIndex {
  public:
    void prepare(size_t lines) {
        size_t buckets = 16;
        while (buckets < lines * 2)
            buckets *= 2;
        if (m_head.size() < buckets)
            m_head.assign(buckets, 0);
        if (m_next.size() < lines)
            m_next.resize(lines);
        m_mask = m_head.size() - 1;
    }
    void insert(size_t pos, std::uint64_t hash) {
        size_t b = bucket(hash);
        if (m_head[b] == 0)
            m_used.push_back(b);
        m_next[pos] = m_head[b];
        m_head[b] = pos + 1;
    }
    // Calls f(pos) for every inserted position in the bucket of `hash`, latest first.
    template <class F> void each(std::uint64_t hash, F&& f) const {
        for (size_t p = m_head[bucket(hash)]; p != 0; p = m_next[p - 1])
            f(p - 1);
    }
    void clear() {
        for (size_t b : m_used)
            m_head[b] = 0;
        m_used.clear();
    }

  private:
    size_t bucket(std::uint64_t hash) const {
        return static_cast<size_t>(hash ^ (hash >> 29)) & m_mask;
    }
    std::vector<size_t> m_head; // bucket -> position + 1 of the latest line, 0 = none
    std::vector<size_t> m_next; // position -> position + 1 of the previous line
    std::vector<size_t> m_used;
    size_t m_mask = 0;
};

// Reusable state of the search, so that a run of many blocks allocates once.
struct ResyncScratch {
    LineHashIndex index1;
    LineHashIndex index2;
    struct Candidate {
        size_t p;
        bool swapped; // (p, c) rather than (c, p)
        bool operator<(const Candidate& o) const {
            return p != o.p ? p < o.p : swapped < o.swapped;
        }
    };
    std::vector<Candidate> candidates;
};

// hash1(i), hash2(j): the hashes of line i of window 1 and line j of window 2;
// same(i, j): whether the two lines are equal byte for byte.
template <class Hash1, class Hash2, class Same>
bool findResyncPoint(size_t len1, size_t len2, size_t want, Hash1&& hash1, Hash2&& hash2,
                     Same&& same, ResyncScratch& scratch, size_t& x, size_t& y) {
    auto agree = [&](size_t i, size_t j) { return hash1(i) == hash2(j) && same(i, j); };
    auto accepts = [&](size_t cx, size_t cy) {
        size_t k = std::min({want, len1 - cx, len2 - cy});
        for (size_t j = 0; j < k; ++j)
            if (!agree(cx + j, cy + j))
                return false;
        return true;
    };
    const size_t limit = std::max(len1, len2);
    scratch.index1.prepare(len1);
    scratch.index2.prepare(len2);
    bool found = false;
    // Level c holds the candidates (c, p) and (p, c) with p <= c; window 2's
    // lines 1..c and window 1's lines 1..c-1 are in the indexes when it is searched.
    for (size_t c = 1; c < limit && !found; ++c) {
        auto& candidates = scratch.candidates;
        candidates.clear();
        if (c < len2)
            scratch.index2.insert(c, hash2(c));
        if (c < len1) {
            const std::uint64_t h = hash1(c);
            scratch.index2.each(h, [&](size_t p) {
                if (hash2(p) == h)
                    candidates.push_back({p, false});
            });
        }
        if (c < len2) {
            const std::uint64_t h = hash2(c);
            scratch.index1.each(h, [&](size_t p) {
                if (hash1(p) == h)
                    candidates.push_back({p, true});
            });
        }
        if (c < len1)
            scratch.index1.insert(c, hash1(c));
        std::sort(candidates.begin(), candidates.end());
        for (const auto& cand : candidates) {
            size_t cx = cand.swapped ? cand.p : c;
            size_t cy = cand.swapped ? c : cand.p;
            if (accepts(cx, cy)) {
                x = cx;
                y = cy;
                found = true;
                break;
            }
        }
    }
    scratch.index1.clear();
    scratch.index2.clear();
    return found;
}

} // namespace pvcmd
