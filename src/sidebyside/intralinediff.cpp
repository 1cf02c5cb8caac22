#include "sidebyside/intralinediff.h"

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

struct Tokens {
    std::string records;         // one key per line, each ended by "\n"
    std::vector<ByteSpan> spans; // where each record's text stands in the line
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
            t.records += ' ';
        } else if (options.ignoreCase && line[i] >= 'a' && line[i] <= 'z') {
            t.records += static_cast<char>(line[i] - 'a' + 'A');
        } else {
            t.records.append(line.substr(i, n));
        }
        t.records += '\n';
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
    // Characters repeat too much for patience to anchor on; the minimal edit is
    // cheap for lines of ordinary length and the heuristics keep long ones quick.
    constexpr size_t kMinimalUpTo = 4000;
    const DiffAlgorithm algorithm = a.spans.size() + b.spans.size() <= kMinimalUpTo
                                        ? DiffAlgorithm::Minimal
                                        : DiffAlgorithm::Myers;
    for (const DiffHunk& h : diffLines(a.records, b.records, algorithm)) {
        for (size_t k = 0; k < h.leftCount; ++k)
            addSpan(out.left, a.spans[h.leftStart + k]);
        for (size_t k = 0; k < h.rightCount; ++k)
            addSpan(out.right, b.spans[h.rightStart + k]);
    }
    return out;
}

} // namespace pv
