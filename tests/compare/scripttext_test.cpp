#include "compare/scripttext.h"

#include "support/recordingprompter.h"

#include <gtest/gtest.h>

namespace {

// Texts a script line could misread, each with the line it must become.
TEST(ScriptEscaped, HostileTextsGetTheInterpretersEscapes) {
    struct Row {
        const char* name;
        const char* text;
        const char* escaped;
    } rows[] = {
        {"plain", "to do", "to do"},
        {"redirection out", "if a > b then", "if a ^> b then"},
        {"redirection in", "a<b", "a^<b"},
        {"pipe", "a|b", "a^|b"},
        {"ampersand", "q&calc", "q^&calc"},
        {"caret", "x^y", "x^^y"},
        {"percent", "100%PATH%", "100%%PATH%%"},
        {"leading dash", "-rf *", "-rf *"},
        {"quoted part kept", "\"a > b\" > c", "\"a > b\" ^> c"},
        {"percent inside quotes", "\"50%\"", "\"50%\""},
        {"trailing backslash", "dir\\", "dir\\"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(pv::scriptEscaped(r.text), r.escaped) << r.name;
}

TEST(ScriptTextRefusal, LineBreaksAndUnmatchedQuotes) {
    EXPECT_EQ(pv::scriptTextRefusal("a > b | c & d ^ %PATH%"), "");
    EXPECT_EQ(pv::scriptTextRefusal("\"my file.txt\""), "");
    EXPECT_EQ(pv::scriptTextRefusal("a\nb"), "the text holds a line break");
    EXPECT_EQ(pv::scriptTextRefusal("a\rb"), "the text holds a line break");
    EXPECT_EQ(pv::scriptTextRefusal("say \"hi"), "the text holds an unmatched double quote");
}

// FC_LB and FC_NNNN reach the fc lines only as fc switches: anything else would
// be written into every fc line of the compare script.
TEST(WellFormedFcSwitch, OnlyFcSwitchesPassAndOthersAreReportedOnce) {
    struct Row {
        const char* name;
        const char* key;
        const char* text;
        const char* passed;
    } rows[] = {
        {"line buffer", "FC_LB", "/lb100", "/lb100"},
        {"line buffer upper case", "FC_LB", "/LB7", "/LB7"},
        {"resync count", "FC_NNNN", "/2", "/2"},
        {"empty", "FC_LB", "", ""},
        {"redirection", "FC_LB", ">victim.txt ^", ""},
        {"line buffer without number", "FC_LB", "/lb", ""},
        {"count in the line buffer key", "FC_LB", "/2", ""},
        {"line buffer in the count key", "FC_NNNN", "/lb100", ""},
        {"count and more", "FC_NNNN", "/2 & calc", ""},
    };
    pvtest::RecordingPrompter prompts;
    for (const Row& r : rows)
        EXPECT_EQ(pv::wellFormedFcSwitch(r.key, r.text), r.passed) << r.name;
    EXPECT_EQ(pv::wellFormedFcSwitch("FC_LB", ">victim.txt ^"), "");
    EXPECT_EQ(
        prompts.messages,
        (std::vector<std::string>{"Ignored fc switch from the settings file: FC_LB=>victim.txt ^",
                                  "Ignored fc switch from the settings file: FC_LB=/lb",
                                  "Ignored fc switch from the settings file: FC_LB=/2",
                                  "Ignored fc switch from the settings file: FC_NNNN=/lb100",
                                  "Ignored fc switch from the settings file: FC_NNNN=/2 & calc"}));
}

} // namespace
