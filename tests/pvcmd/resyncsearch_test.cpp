#include "pvcmd/resyncsearch.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
using Point = std::optional<std::pair<size_t, size_t>>;

// Every candidate in turn, each checked line by line: the plain form of the search.
Point plainSearch(const Lines& a, const Lines& b, size_t want) {
    auto accepts = [&](size_t cx, size_t cy) {
        if (cx >= a.size() || cy >= b.size())
            return false;
        size_t k = std::min({want, a.size() - cx, b.size() - cy});
        for (size_t j = 0; j < k; ++j)
            if (a[cx + j] != b[cy + j])
                return false;
        return true;
    };
    for (size_t c = 1; c < std::max(a.size(), b.size()); ++c)
        for (size_t p = 1; p <= c; ++p) {
            if (accepts(c, p))
                return std::make_pair(c, p);
            if (p != c && accepts(p, c))
                return std::make_pair(p, c);
        }
    return std::nullopt;
}

Point hashedSearch(const Lines& a, const Lines& b, size_t want,
                   const std::function<std::uint64_t(const std::string&)>& hash,
                   pvcmd::ResyncScratch& scratch) {
    size_t x = 0, y = 0;
    bool found = pvcmd::findResyncPoint(
        a.size(), b.size(), want, [&](size_t i) { return hash(a[i]); },
        [&](size_t j) { return hash(b[j]); }, [&](size_t i, size_t j) { return a[i] == b[j]; },
        scratch, x, y);
    return found ? Point(std::make_pair(x, y)) : std::nullopt;
}

std::uint64_t realHash(const std::string& s) {
    return std::hash<std::string>{}(s);
}

// A few distinct lines, so that matches, repeats and near misses are common.
Lines randomLines(std::mt19937& rng, size_t count) {
    std::uniform_int_distribution<int> pick(0, 5);
    Lines lines;
    for (size_t n = 0; n < count; ++n)
        lines.push_back(std::string(1, static_cast<char>('a' + pick(rng))));
    return lines;
}

TEST(ResyncSearch, FindsTheSamePointAsTryingEveryCandidate) {
    std::mt19937 rng(20261123);
    std::uniform_int_distribution<size_t> length(0, 40);
    std::uniform_int_distribution<size_t> wants(1, 6);
    pvcmd::ResyncScratch scratch; // reused, as a run of blocks reuses it
    for (int round = 0; round < 3000; ++round) {
        Lines a = randomLines(rng, length(rng));
        Lines b = randomLines(rng, length(rng));
        size_t want = wants(rng);
        SCOPED_TRACE("round " + std::to_string(round));
        EXPECT_EQ(hashedSearch(a, b, want, realHash, scratch), plainSearch(a, b, want));
        // Every line in one bucket: the bytes alone must decide.
        EXPECT_EQ(hashedSearch(
                      a, b, want, [](const std::string&) { return 7u; }, scratch),
                  plainSearch(a, b, want));
    }
}

TEST(ResyncSearch, LinesWithTheSameHashButOtherBytesDoNotAgree) {
    pvcmd::ResyncScratch scratch;
    auto byLength = [](const std::string& s) { return static_cast<std::uint64_t>(s.size()); };
    // Each line of b has a same-hash twin in a at the first candidate positions.
    Lines a{"x", "ab", "cd", "ef", "gh"};
    Lines b{"y", "ba", "dc", "ef", "gh"};
    EXPECT_EQ(hashedSearch(a, b, 2, byLength, scratch), Point(std::make_pair(3u, 3u)));
    Lines c{"y", "ba", "dc", "fe", "hg"};
    EXPECT_EQ(hashedSearch(a, c, 2, byLength, scratch), std::nullopt);
}

} // namespace
