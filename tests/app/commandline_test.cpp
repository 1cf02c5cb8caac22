#include "app/commandline.h"
#include "app/programpaths.h"
#include "platform/pvversion.h"

#include <gtest/gtest.h>

using pv::settingsPathFromCommandLine;

struct CmdCase {
    const char* name;
    const char* line;
    std::optional<std::string> expected;
};

// The row's name, not its bytes, in test listings (stable ctest names).
static void PrintTo(const CmdCase& row, std::ostream* os) {
    *os << row.name;
}

class CommandLine : public ::testing::TestWithParam<CmdCase> {};

TEST_P(CommandLine, FindsSettingsPath) {
    EXPECT_EQ(settingsPathFromCommandLine(GetParam().line), GetParam().expected);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Cases, CommandLine, ::testing::Values(
    CmdCase{"dash_lower", "-ini /cfg/My.ini", "/cfg/My.ini"},
    CmdCase{"slash_upper_keeps_path_case", "/INI /D/x.INI", "/D/x.INI"},
    CmdCase{"other_words_ignored", "? -ini a.ini HELP", "a.ini"},
    CmdCase{"surrounding_blanks", "   -ini    a.ini   ", "a.ini"},
    CmdCase{"option_last_keeps_default", "x -ini", std::nullopt},
    CmdCase{"quotes_kept", "-ini \"a.ini\"", "\"a.ini\""},
    CmdCase{"later_option_wins", "-ini a.ini -ini b.ini", "b.ini"},
    // Eleven tokens are examined: the option as the eleventh still counts, as the twelfth not.
    CmdCase{"option_eleventh", "1 2 3 4 5 6 7 8 9 10 -ini a.ini", "a.ini"},
    CmdCase{"option_twelfth", "1 2 3 4 5 6 7 8 9 10 11 -ini a.ini", std::nullopt}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST(StartRequest, HelpVersionAndUnknownDoubleDashOptions) {
    using Kind = pv::StartRequest::Kind;
    struct Row {
        const char* name;
        std::vector<std::string> args;
        Kind kind;
    } rows[] = {
        {"nothing", {}, Kind::Run},
        {"settings_file", {"-ini", "a.ini", "?", "-x"}, Kind::Run},
        {"settings_path_like_an_option", {"/INI", "--odd.ini"}, Kind::Run},
        {"help_after_ini", {"-ini", "a.ini", "--help"}, Kind::Help},
        {"version", {"--version"}, Kind::Version},
        {"unknown", {"--frobnicate", "--help"}, Kind::Error},
        // The path is read word by word later: a blank would cut it short.
        {"settings_path_with_blank", {"-ini", "/tmp/my ini.ini"}, Kind::Error},
        {"settings_path_with_tab", {"/INI", "my\tini.ini"}, Kind::Error},
    };
    for (const Row& r : rows)
        EXPECT_EQ(pv::startRequest(r.args).kind, r.kind) << r.name;
    EXPECT_NE(pv::startRequest({"--help"}).text.find("PAIRVIEW_HOME"), std::string::npos);
    EXPECT_EQ(pv::startRequest({"--version"}).text,
              std::string("pairview ") + PAIRVIEW_VERSION + "\n");
    EXPECT_EQ(pv::startRequest({"--help"}).text.rfind("Usage: pairview [-ini FILE]\n\nCompares", 0),
              0u);
    EXPECT_EQ(pv::startRequest({"-ini", "/tmp/my ini.ini"}).text,
              "pairview: the settings path cannot contain blanks: /tmp/my ini.ini\n"
              "Usage: pairview [-ini FILE]\n");
    EXPECT_EQ(pv::startRequest({"--frobnicate"}).text,
              "pairview: unknown option --frobnicate (see pairview --help)\n");
}

TEST(ProgramPaths, PerWindowNamesInsertTagBeforeExtension) {
    EXPECT_EQ(pv::perWindowFileName("/p/Pairview.txt", ""), "/p/Pairview.txt");
    EXPECT_EQ(pv::perWindowFileName("/p/Pairview.txt", "3"), "/p/Pairview3.txt");
    EXPECT_EQ(pv::perWindowFileName("/my.prog/Pairview.txt", "Single2"),
              "/my.prog/PairviewSingle2.txt");
    EXPECT_EQ(pv::perWindowFileName("/my.prog/noext", "1"), "/my.prog/noext1");
    EXPECT_EQ(pv::ProgramPaths::inDirectory("/opt/pv").settingsPath, "/opt/pv/Pairview.ini");
}

TEST(ProgramGlobals, AtMostOneClickedFlagAndSide) {
    pv::ProgramGlobals g;
    EXPECT_FALSE(g.rightSideClicked());
    g.setClicked(pv::ClickedControl::FileOne);
    g.setClicked(pv::ClickedControl::Dir2);
    EXPECT_FALSE(g.clickedFileOne);
    EXPECT_TRUE(g.clickedDir2);
    EXPECT_TRUE(g.rightSideClicked());
    g.setClicked(pv::ClickedControl::Dir1);
    EXPECT_FALSE(g.rightSideClicked());
}
