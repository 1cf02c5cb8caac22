#include "sidebyside/intralinediff.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace pv {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// The length of the UTF-8 sequence that starts at `i`; a byte that does not
// start a well-formed sequence is one character by itself.
size_t charLength(std::string_view s, size_t i) {
    const auto lead = static_cast<unsigned char>(s[i]);
    const size_t n = lead < 0x80           ? 1
                     : (lead >> 5) == 0x6  ? 2
                     : (lead >> 4) == 0xE  ? 3
                     : (lead >> 3) == 0x1E ? 4
                                           : 1;
    if (i + n > s.size())
        return 1;
    for (size_t k = 1; k < n; ++k)
        if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80)
            return 1;
    return n;
}

// A character compares as its bytes packed into one number (at most four).
struct Tokens {
    std::vector<std::uint32_t> ids;
    std::vector<ByteSpan> spans; // where each character stands in the line
};

Tokens tokenize(std::string_view line, const DiffOptions& options) {
    Tokens t;
    size_t i = 0;
    size_t end = line.size();
    if (options.compressWhite) {
        while (i < end && isBlank(line[i]))
            ++i;
        while (end > i && isBlank(line[end - 1]))
            --end;
    }
    while (i < end) {
        size_t n = charLength(line, i);
        if (options.compressWhite && isBlank(line[i])) {
            while (i + n < end && isBlank(line[i + n]))
                ++n;
            t.ids.push_back(' ');
        } else if (options.ignoreCase && line[i] >= 'a' && line[i] <= 'z') {
            t.ids.push_back(std::uint32_t(line[i] - 'a' + 'A'));
        } else {
            std::uint32_t id = 0;
            for (size_t k = 0; k < n; ++k)
                id = id << 8 | static_cast<unsigned char>(line[i + k]);
            t.ids.push_back(id);
        }
        t.spans.push_back({i, i + n});
        i += n;
    }
    return t;
}

void addSpan(std::vector<ByteSpan>& spans, ByteSpan span) {
    if (!spans.empty() && spans.back().end == span.begin)
        spans.back().end = span.end;
    else
        spans.push_back(span);
}

} // namespace

IntraLineSpans intraLineSpans(std::string_view left, std::string_view right,
                              const DiffOptions& options) {
    const Tokens a = tokenize(left, options);
    const Tokens b = tokenize(right, options);
    IntraLineSpans out;
    // Plenty for any line a person reads; a huge, wholly different line is
    // marked from its first to its last differing character instead.
    constexpr std::uint64_t kBudget = 20'000'000;
    size_t leftMarked = 0;
    for (const DiffHunk& h : diffSequences(a.ids, b.ids, kBudget).hunks) {
        for (size_t k = 0; k < h.leftCount; ++k)
            addSpan(out.left, a.spans[h.leftStart + k]);
        for (size_t k = 0; k < h.rightCount; ++k)
            addSpan(out.right, b.spans[h.rightStart + k]);
        leftMarked += h.leftCount;
    }
    // Two lines that share less than half their characters are different lines,
    // not one line edited: scattered single letters in common would only be noise.
    const size_t common = a.ids.size() - leftMarked;
    if (2 * common < std::max(a.ids.size(), b.ids.size())) {
        out.left.clear();
        out.right.clear();
        if (!a.spans.empty())
            out.left.push_back({a.spans.front().begin, a.spans.back().end});
        if (!b.spans.empty())
            out.right.push_back({b.spans.front().begin, b.spans.back().end});
    }
    return out;
}

} // namespace pv
