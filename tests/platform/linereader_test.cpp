#include "platform/linereader.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

using Lines = std::vector<std::string>;

Lines readAll(const std::string& bytes, bool utf16) {
    std::FILE* f = std::tmpfile();
    std::fwrite(bytes.data(), 1, bytes.size(), f);
    std::rewind(f);
    pv::LineReader reader(f, utf16);
    Lines lines;
    std::string line;
    while (reader.next(line))
        lines.push_back(line);
    EXPECT_FALSE(reader.failed());
    std::fclose(f);
    return lines;
}

struct ReadCase {
    const char* name;
    std::string bytes;
    bool utf16;
    Lines lines;
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const ReadCase& row, std::ostream* os) {
    *os << row.name;
}

class LineReaderRows : public ::testing::TestWithParam<ReadCase> {};

TEST_P(LineReaderRows, SplitsLikeFc) {
    EXPECT_EQ(readAll(GetParam().bytes, GetParam().utf16), GetParam().lines);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Rows, LineReaderRows,
    ::testing::Values(
        ReadCase{"Empty", "", false, {}},
        ReadCase{"FinalNewlineAddsNoLine", "a\nb\n", false, {"a", "b"}},
        ReadCase{"NoFinalNewline", "a\nb", false, {"a", "b"}},
        ReadCase{"EmptyLinesKept", "\n\nx\n", false, {"", "", "x"}},
        ReadCase{"OneCrDropped", "a\r\nb\r\r\nc\r", false, {"a", "b\r", "c\r"}},
        ReadCase{"NulEndsLine", std::string("a\0b\0\nc", 6), false, {"a", "b", "", "c"}},
        ReadCase{"Utf16LittleEndianWithBom", std::string("\xFF\xFE" "a\0\r\0\n\0b\0", 10), true, {"a", "b"}},
        ReadCase{"Utf16BigEndian", std::string("\xFE\xFF\0a\0\n\0\xE9", 8), true, {"a", "\xC3\xA9"}},
        ReadCase{"Utf16NoBomIsLittleEndian", std::string("x\0\n\0", 4), true, {"x"}},
        ReadCase{"Utf16SurrogatePair", std::string("\x3D\xD8\x00\xDE", 4), true, {"\xF0\x9F\x98\x80"}},
        ReadCase{"Utf16LoneSurrogateReplaced", std::string("\x3D\xD8" "a\0", 4), true, {"\xEF\xBF\xBD" "a"}},
        ReadCase{"Utf16OddTrailingByte", std::string("a\0b", 3), true, {"ab"}}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST(LineReader, LongLinesComeInBoundedPiecesAcrossReadBlocks) {
    // Longer than the read block too, with a CR LF straddling nothing special.
    std::string big(300000, 'q');
    Lines lines = readAll("s\n" + big + "\r\nend\n", false);
    ASSERT_EQ(lines.size(),
              2u + (big.size() + pv::LineReader::kMaxLine - 1) / pv::LineReader::kMaxLine);
    std::string joined;
    for (size_t i = 1; i + 1 < lines.size(); ++i) {
        EXPECT_LE(lines[i].size(), pv::LineReader::kMaxLine);
        joined += lines[i];
    }
    EXPECT_EQ(joined, big);
    EXPECT_EQ(lines.back(), "end");
}

TEST(LineReader, CrLfSplitOverReadBlocksStillEndsTheLine) {
    // The CR is the last byte of the first 256 KiB block, the LF the first of the next.
    std::string first(256 * 1024 - 1, 'a');
    for (size_t i = 1000; i < first.size(); i += 1000)
        first[i] = '\n';
    Lines lines = readAll(first + "\r\nlast\n", false);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back(), "last");
    EXPECT_NE(lines[lines.size() - 2].back(), '\r');
}

} // namespace
