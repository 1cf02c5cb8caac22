#include "sidebyside/intralinediff.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// The line with its differing spans in brackets.
std::string marked(std::string_view line, const std::vector<pv::ByteSpan>& spans) {
    std::string out;
    size_t at = 0;
    for (const pv::ByteSpan& s : spans) {
        out.append(line.substr(at, s.begin - at));
        out += "[" + std::string(line.substr(s.begin, s.end - s.begin)) + "]";
        at = s.end;
    }
    out.append(line.substr(at));
    return out;
}

struct SpanCase {
    const char* name;
    std::string left;
    std::string right;
    pv::DiffOptions options;
    std::string leftMarked;
    std::string rightMarked;
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const SpanCase& row, std::ostream* os) {
    *os << row.name;
}


class IntraLine : public ::testing::TestWithParam<SpanCase> {};

TEST_P(IntraLine, MarksTheDifferingCharacters) {
    const SpanCase& c = GetParam();
    const pv::IntraLineSpans spans = pv::intraLineSpans(c.left, c.right, c.options);
    EXPECT_EQ(marked(c.left, spans.left), c.leftMarked);
    EXPECT_EQ(marked(c.right, spans.right), c.rightMarked);
}

pv::DiffOptions ignoreCase() {
    pv::DiffOptions o;
    o.ignoreCase = true;
    return o;
}

pv::DiffOptions compressWhite() {
    pv::DiffOptions o;
    o.compressWhite = true;
    return o;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Spans, IntraLine, ::testing::Values(
    SpanCase{"AtStart", "hello world", "jello world", {}, "[h]ello world", "[j]ello world"},
    SpanCase{"InTheMiddle", "int count = 10;", "int count = 12;", {}, "int count = 1[0];", "int count = 1[2];"},
    SpanCase{"AtEnd", "return a;", "return a", {}, "return a[;]", "return a"},
    SpanCase{"TwoSpansStaySeparate", "a1b2c", "a9b8c", {}, "a[1]b[2]c", "a[9]b[8]c"},
    SpanCase{"AdjacentCharactersMerge", "abXYcd", "abcd", {}, "ab[XY]cd", "abcd"},
    SpanCase{"Utf8CharactersStayWhole", "gr\xC3\xB6\xC3\x9F" "e", "gr\xC3\xB6sse", {},
             "gr\xC3\xB6[\xC3\x9F]e", "gr\xC3\xB6[ss]e"},
    SpanCase{"CaseIgnoredWithC", "Value x", "value y", ignoreCase(), "Value [x]", "value [y]"},
    SpanCase{"BlankRunsAndEndsIgnoredWithW", "  a   b c ", "a b  d", compressWhite(), "  a   b [c] ", "a b  [d]"},
    SpanCase{"EmptyAgainstText", "", "abc", {}, "", "[abc]"},
    // Six of twelve characters in common is still an edit; five is not.
    SpanCase{"HalfInCommonIsAnEdit", "abcdefghijkl", "abcdefXXXXXX", {}, "abcdef[ghijkl]", "abcdef[XXXXXX]"},
    SpanCase{"MostlyDifferentMarkedWhole", "  if (x == 1) {", "  return y;", compressWhite(),
             "  [if (x == 1) {]", "  [return y;]"}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

} // namespace
