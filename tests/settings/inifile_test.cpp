#include "settings/inifile.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

using pv::ini::readValue;
using pv::ini::writeValue;

std::string repeat(const std::string& s, int times) {
    std::string out;
    for (int i = 0; i < times; ++i)
        out += s;
    return out;
}

struct ReadCase {
    const char* name;
    std::string text;
    const char* section;
    const char* key;
    std::string expected;
};

// The row's name, not its bytes, in test listings (stable ctest names).
void PrintTo(const ReadCase& row, std::ostream* os) {
    *os << row.name;
}

class IniRead : public ::testing::TestWithParam<ReadCase> {};

TEST_P(IniRead, FindsValue) {
    const ReadCase& c = GetParam();
    EXPECT_EQ(readValue(c.text, c.section, c.key), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, IniRead,
    ::testing::Values(
        ReadCase{"plain", "[APPLICATION]\r\nEDITOR=Write.exe\r\n", "APPLICATION", "EDITOR",
                 "Write.exe"},
        ReadCase{"names_ignore_case", "[application]\nEditor=x\n", "APPLICATION", "EDITOR", "x"},
        ReadCase{"value_trimmed", "[A]\nEDITOR=  Notepad.exe  \n", "A", "EDITOR", "Notepad.exe"},
        ReadCase{"key_blanks_around_equals", "[A]\n  K  =  v\n", "A", "K", "v"},
        ReadCase{"missing_key", "[A]\nK=v\n", "A", "L", ""},
        ReadCase{"missing_section", "[A]\nK=v\n", "B", "K", ""},
        ReadCase{"key_of_other_section", "[A]\nK=a\n[B]\nL=b\n", "A", "L", ""},
        ReadCase{"first_duplicate_key_wins", "[A]\nK=1\nK=2\n", "A", "K", "1"},
        ReadCase{"first_duplicate_section_wins", "[A]\nK=1\n[A]\nK=2\nL=3\n", "A", "L", ""},
        ReadCase{"no_sections", "K=v\nL=w\n", "A", "K", ""},
        ReadCase{"value_with_equals", "[A]\nK=a=b\n", "A", "K", "a=b"},
        ReadCase{"cut_at_nul", std::string("[A]\nK=ab\0cd\n", 12), "A", "K", "ab"},
        ReadCase{"comment_lines_ignored", "; note\n[A]\n;K=no\nK=yes\n", "A", "K", "yes"},
        ReadCase{"empty_value", "[A]\nK=\n", "A", "K", ""},
        ReadCase{"long_value_cut_to_254", "[A]\nK=" + std::string(300, 'x') + "\n", "A", "K",
                 std::string(254, 'x')},
        // Characters are counted, not bytes: 254 two-byte letters read back whole.
        ReadCase{"non_ascii_value_of_254_characters_kept",
                 "[A]\nK=/" + repeat("\xc3\xa9", 253) + "\n", "A", "K",
                 "/" + repeat("\xc3\xa9", 253)},
        ReadCase{"non_ascii_value_cut_at_254_characters",
                 "[A]\nK=" + repeat("\xe2\x82\xac", 300) + "\n", "A", "K",
                 repeat("\xe2\x82\xac", 254)}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(IniWrite, ReplacesInPlaceAndKeepsOtherLines) {
    std::string text = "; my notes\r\n[A]\r\nK=old\r\nL=keep\r\n\r\n[B]\r\nK=b\r\n";
    EXPECT_EQ(writeValue(text, "a", "k", "new"),
              "; my notes\r\n[A]\r\nk=new\r\nL=keep\r\n\r\n[B]\r\nK=b\r\n");
}

TEST(IniWrite, NewKeyGoesAfterLastEntryOfItsSection) {
    std::string text = "[A]\nK=1\n\n[B]\nK=2\n";
    EXPECT_EQ(writeValue(text, "A", "L", "x"), "[A]\r\nK=1\r\nL=x\r\n\r\n[B]\r\nK=2\r\n");
}

TEST(IniWrite, NewSectionAppendedAndEmptyValueLeavesKey) {
    EXPECT_EQ(writeValue("", "APPLICATION", "EDITOR", ""), "[APPLICATION]\r\nEDITOR=\r\n");
    EXPECT_EQ(writeValue("[A]\r\nK=1\r\n", "B", "K", "2"), "[A]\r\nK=1\r\n[B]\r\nK=2\r\n");
}

// A line break or a NUL byte in a value becomes a blank: neither can add lines
// nor cut the value, or the key after it, short.
TEST(IniWrite, LineBreakOrNulInValueBecomesABlank) {
    std::string text = writeValue("", "A", "K", "one\r\n[B]\nX=1");
    EXPECT_EQ(readValue(text, "B", "X"), "");
    EXPECT_EQ(readValue(text, "A", "K"), "one  [B] X=1");
    using namespace std::string_literals;
    text = writeValue("", "A", "K", "a\0b"s);
    EXPECT_EQ(text, "[A]\r\nK=a b\r\n");
    EXPECT_EQ(readValue(text, "A", "K"), "a b");
}

TEST(IniWrite, UntrimmedValueRoundTripsTrimmed) {
    std::string text = writeValue("", "A", "EDITOR", "  Notepad.exe  ");
    EXPECT_EQ(text, "[A]\r\nEDITOR=  Notepad.exe  \r\n");
    EXPECT_EQ(readValue(text, "A", "EDITOR"), "Notepad.exe");
}

// Malformed files must read and write without crashing, and a value written into
// them must read back.
TEST(IniFuzz, RandomBytesNeverBreakReadOrWrite) {
    std::mt19937 rng(12345);
    const std::string alphabet = "[]=;\r\n\t AbKk\0\xff\x80xyz";
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        int len = static_cast<int>(rng() % 200);
        for (int i = 0; i < len; ++i)
            text += alphabet[rng() % alphabet.size()];
        (void)readValue(text, "A", "K");
        std::string written = writeValue(text, "A", "K", "value");
        ASSERT_EQ(readValue(written, "A", "K"), "value")
            << "input: " << testing::PrintToString(text);
    }
}

TEST(IniFuzz, HugeLineReadsCut) {
    std::string text = "[A]\nK=" + std::string(1 << 20, 'z') + "\nL=short\n";
    EXPECT_EQ(readValue(text, "A", "K").size(), 254u);
    EXPECT_EQ(readValue(text, "A", "L"), "short");
}

// Names that could add lines or sections to the file are refused; the texts a
// script would misread are ordinary names here.
TEST(IniNames, NamesThatWouldAddLinesOrSectionsAreRefused) {
    struct Row {
        const char* name;
        const char* text;
        bool isKey;
        const char* refusal;
    } rows[] = {
        {"quoted path", "\"/home/ann/run.sh\"", true, ""},
        {"script characters", "\"/x/a>b<c|d&e^f%PATH%\"", true, ""},
        {"leading dash", "-rf", true, ""},
        {"section", "LASTFILE2", false, ""},
        {"equals inside a section", "A=B", false, ""},
        {"LF in a key", "\"/x/a\n[COMPARECONTROL]\nFC_LB=>victim.txt ^\"", true,
         "the key holds a line break"},
        {"CR in a key", "a\rb", true, "the key holds a line break"},
        {"CR LF in a section", "A\r\nB", false, "the section holds a line break"},
        {"NUL in a key", "a\0b", true, "the key holds a line break"},
        {"equals at the start", "=x", true, "the key begins with \"=\""},
        {"equals inside a key", "a=b", true, "the key holds \"=\""},
        {"bracket at the start", " [A", true, "the key begins with \"[\""},
        {"section begins with a bracket", "[A", false, "the section begins with \"[\""},
        {"closing bracket", "A]B", false, "the section holds \"]\""},
    };
    for (const Row& r : rows) {
        std::string_view text(r.text, r.name == std::string("NUL in a key") ? 3 : strlen(r.text));
        EXPECT_EQ(pv::ini::nameRefusal(text, r.isKey), r.refusal) << r.name;
    }
}

// A file with a byte-order mark is read and written in its own encoding; bytes
// that are not text are said to be so.
TEST(IniFile, EncodingsRoundTripAndForeignBytesAreNamed) {
    using pv::ini::FileEncoding;
    using namespace std::string_literals;
    struct Row {
        const char* name;
        std::string bytes;
        FileEncoding encoding;
        std::string text;
        bool foreign;
    } rows[] = {
        {"plain", "[A]\r\nK=v\r\n", FileEncoding::Bytes, "[A]\r\nK=v\r\n", false},
        {"8-bit code page", "[A]\r\nK=caf\xe9\r\n", FileEncoding::Bytes, "[A]\r\nK=caf\xe9\r\n",
         false},
        {"UTF-8 mark", "\xEF\xBB\xBF[A]\r\nK=v\r\n", FileEncoding::Utf8Bom, "[A]\r\nK=v\r\n",
         false},
        {"UTF-16 LE mark", "\xFF\xFE[\0A\0]\0\r\0\n\0K\0=\0\xe9\0\r\0\n\0"s, FileEncoding::Utf16LE,
         "[A]\nK=\xc3\xa9\n", false},
        {"UTF-16 BE mark", "\xFE\xFF\0[\0A\0]\0\n\0K\0=\0v\0\n"s, FileEncoding::Utf16BE,
         "[A]\nK=v\n", false},
        {"UTF-16 without mark", "[\0A\0]\0\r\0\n\0"s, FileEncoding::Bytes, "[\0A\0]\0\r\0\n\0"s,
         true},
        {"binary junk", "\177ELF\x02\x01\x01\x03", FileEncoding::Bytes, "\177ELF\x02\x01\x01\x03",
         true},
    };
    for (const Row& r : rows) {
        pv::ini::FileText f = pv::ini::decodeFile(r.bytes);
        EXPECT_EQ(f.encoding, r.encoding) << r.name;
        EXPECT_EQ(f.text, r.text) << r.name;
        EXPECT_EQ(!f.foreign.empty(), r.foreign) << r.name;
        // The writer ends lines with CR LF: a text that has them comes back whole.
        if (!r.foreign && r.text.find('\r') != std::string::npos) {
            EXPECT_EQ(pv::ini::encodeFile(f.text, f.encoding), r.bytes) << r.name;
        }
    }
    EXPECT_EQ(pv::ini::encodeFile("[A]\r\nK=v\r\n", FileEncoding::Utf16LE),
              "\xFF\xFE[\0A\0]\0\r\0\n\0K\0=\0v\0\r\0\n\0"s);
}
