#include "scripts/scriptcommands.h"

#include "platform/clock.h"
#include "platform/process.h"
#include "platform/runtimeerror.h"
#include "settings/settings.h"
#include "support/envguard.h"
#include "support/fakeclock.h"
#include "support/recordingprompter.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

using pv::MessageIcon;
using Texts = std::vector<std::string>;

namespace {

// Also keeps the text each input box proposed.
class Prompts : public pvtest::RecordingPrompter {
  public:
    Texts proposed;
    std::optional<std::string> input(const std::string& prompt, const std::string& title,
                                     const std::string& defaultText) override {
        proposed.push_back(defaultText);
        return RecordingPrompter::input(prompt, title, defaultText);
    }
};

// The commands write the scripts for real; the start is recorded. The writers'
// own tests hold the scripts' bytes: these check what reaches them.
class ScriptCommandsTest : public ::testing::Test {
  protected:
    ScriptCommandsTest() : m_oldClock(pv::setProgramClock(&m_clock)) {
        w.programDirectory = home.str();
        w.findFileCapture = home / "PairviewFINDFILE.txt";
        w.findTextCapture = home / "PairviewFIND.txt";
        w.xcopyScript = home / "Xcopy_FILE.CMD";
        w.left = {"/l", "/l/files", "/", {"a.txt", "b.h"}, std::nullopt};
        w.right = {"/r", "/r/files", "/mnt", {"c.txt"}, std::nullopt};
    }
    ~ScriptCommandsTest() override { pv::setProgramClock(m_oldClock); }

    pv::ScriptCommands commands() {
        return pv::ScriptCommands(settings, [this](const std::string& command) {
            if (failStart)
                throw pv::RuntimeError(2, "pvcmd: No such file or directory");
            started.push_back(command);
            return 42L;
        });
    }
    std::string script(const char* name) const { return pvtest::readFile(home / name); }
    static bool has(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }

    pvtest::TempDir home;
    pv::Settings settings{home / "Pairview.ini"};
    Prompts prompts;
    pv::ScriptWindow w;
    Texts started;
    bool failStart = false;

  private:
    pvtest::FakeClock m_clock{1795000000};
    const pv::Clock* m_oldClock;

  protected:
    const std::string now = pv::formatGeneralDate(m_clock.now());
};

TEST_F(ScriptCommandsTest, SearchesRefuseCancelledEmptyAndUnscriptableTexts) {
    settings.write("APPLICATION", "SEARCHFILE", "old");
    settings.write("APPLICATION", "SEARCHTEXT", "old");
    struct Row {
        bool findText;
        std::optional<std::string> answer;
        const char* message;
    } rows[] = {
        {false, std::nullopt, "action cancelled by operator"},
        {false, "", "empty string not searched for"},
        {false, "a\nb", "Not searched for: the text holds a line break"},
        {false, "say \"hi", "Not searched for: the text holds an unmatched double quote"},
        {true, "say \"x\"", "Not searched for: the text holds a double quote"},
    };
    for (const Row& r : rows) {
        prompts.messages.clear();
        prompts.titles.clear();
        prompts.inputAnswers = {r.answer};
        EXPECT_EQ(r.findText ? commands().FindTheText(w) : commands().FindFile(w), 0);
        EXPECT_EQ(prompts.messages,
                  (Texts{r.findText ? "Enter text to be scanned for"
                                    : "Enter File name / pattern to be scanned for",
                         r.message}));
        EXPECT_EQ(prompts.titles, (Texts{r.findText ? "Text Search" : "File Search",
                                         r.findText ? "Find Text" : "Find File"}));
    }
    EXPECT_EQ(prompts.proposed, Texts(5, "old"));
    EXPECT_EQ(settings.read("APPLICATION", "SEARCHFILE"), "old");
    EXPECT_EQ(settings.read("APPLICATION", "SEARCHTEXT"), "old");
    EXPECT_TRUE(started.empty());
}

TEST_F(ScriptCommandsTest, FindFileSearchesTheClickedPaneIntoTheWindowsFiles) {
    settings.write("DIRCONTROL", "DIR_B", "True");
    settings.write("APPLICATION", "EDITOR", "internal");
    w.tag = "2";
    w.rightClickedLast = true;
    prompts.inputAnswers = {"*.h"};
    EXPECT_EQ(commands().FindFile(w), 42);
    EXPECT_EQ(started, Texts{home / "pairviewFINDFile2.bat"});
    EXPECT_EQ(settings.read("APPLICATION", "SEARCHFILE"), "*.h");
    const std::string text = script("pairviewFINDFile2.bat");
    const std::string q = "\"" + home / "PairviewFINDFILE2.txt" + "\"";
    EXPECT_TRUE(has(text, "\r\ncd \"/r/files\"\r\n\r\n\r\n/mnt\r\n")) << text;
    EXPECT_TRUE(has(text, "\r\nDIR /b *.h  >> " + q + "\r\n")) << text;
    EXPECT_TRUE(has(text, "\r\nWrite.exe " + q + "\r\n")) << text;
    EXPECT_EQ(script("PairviewFINDFILE2.txt"),
              "\r\n\r\n ---------- Start " + now + " -----------\r\n\r\n");
}

TEST_F(ScriptCommandsTest, FindTextReadsTheWindowsPatternAndAppends) {
    home.write("PairviewFIND.txt", "earlier results\r\n");
    settings.write("LASTFILE", "FILEPATTERN", "*.c;*.h");
    settings.write("FINDCONTROL", "I", "TRUE");
    settings.write("APPLICATION", "EDITOR", "/opt/a&b/ed");
    w.replaceOutput = false;
    w.breakout = true;
    prompts.inputAnswers = {"to do"};
    EXPECT_EQ(commands().FindTheText(w), 42);
    EXPECT_EQ(settings.read("APPLICATION", "SEARCHTEXT"), "to do");
    EXPECT_EQ(script("PairviewFIND.txt"), "earlier results\r\n");
    const std::string text = script("pairviewFINDDyn.bat");
    EXPECT_TRUE(has(text, "\r\ncd \"/l/files\"\r\n")) << text;
    EXPECT_TRUE(has(text, "Looking for *.c ")) << text;
    EXPECT_TRUE(has(text, "findstr /i  /c:\"to do\" *.h >> ")) << text;
    EXPECT_TRUE(has(text, "\r\n/opt/a^&b/ed \"")) << text;
}

// The script runs under the real interpreter: the typed text is echoed into the
// capture file as typed, and nothing in the searched directory is created or
// changed by what the text holds.
TEST_F(ScriptCommandsTest, FindTextEchoesTheTextAsTypedAndTouchesNoFile) {
    const std::string pvcmd = std::string(PV_BINARY_DIR) + "/pvcmd";
    if (!std::filesystem::exists(pvcmd))
        GTEST_SKIP() << "pvcmd is not built";
    pvtest::EnvGuard editor("PAIRVIEW_EDITOR", "true");
    const std::string searched = home / "searched";
    home.write("searched/b", "keep me\r\n");
    home.write("searched/notes.txt", "a > b | c & d ^ %PATH% here\r\n");
    w.left.fileListPath = searched;
    const std::string typed = "a > b | c & d ^ %PATH%";
    prompts.inputAnswers = {typed};
    const int quiet = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    pv::ScriptCommands real(settings, [&](const std::string& command) {
        return static_cast<long>(pv::runAndWait({pvcmd, command}, quiet));
    });
    real.FindTheText(w);
    ::close(quiet);
    const std::string capture = script("PairviewFIND.txt");
    EXPECT_NE(capture.find("searchText = '" + typed + "' \r\n"), std::string::npos) << capture;
    EXPECT_EQ(pvtest::readFile(searched + "/b"), "keep me\r\n");
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(searched))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Texts{"b", "notes.txt"}));
}

TEST_F(ScriptCommandsTest, FailuresToWriteOrStartNameTheFile) {
    prompts.inputAnswers = {"*.h", "*.h"};
    failStart = true;
    EXPECT_EQ(commands().FindFile(w), 0);
    EXPECT_EQ(prompts.messages.back(), "Cannot start " + home / "pairviewFINDFile.bat" +
                                           ": pvcmd: No such file or directory");
    EXPECT_EQ(prompts.icons.back(), MessageIcon::Critical);

    w.programDirectory = home / "missing";
    w.findFileCapture = home / "missing/PairviewFINDFILE.txt";
    EXPECT_EQ(commands().FindFile(w), 0);
    EXPECT_EQ(prompts.messages.back(), "Cannot write " + home / "missing/PairviewFINDFILE.txt" +
                                           ": No such file or directory");
    EXPECT_EQ(prompts.titles.back(), "Find File");
}

TEST_F(ScriptCommandsTest, CreateXcopyRewritesTheScriptAndNamesWhatItLeavesOut) {
    settings.write("APPLICATION", "XCOPYPARMS", "/y");
    w.left.items = {"a.txt", "odd\"name"};
    commands().CreateXcopy(w);
    EXPECT_EQ(prompts.messages,
              Texts{w.xcopyScript + " copies every file but these, whose names cannot stand in "
                                    "a script line:\r\nodd\"name (the name holds a double quote)"});
    w.left.items = {"b.h"};
    commands().CreateXcopy(w);
    const std::string text = script("Xcopy_FILE.CMD");
    EXPECT_TRUE(
        has(text, "\r\nXCOPY \"/l/b.h\" \"/r/*.*\" /y >> \"" + home / "XCOPY_FILE.TXT" + "\"\r\n"))
        << text;
    EXPECT_FALSE(has(text, "a.txt"));
    EXPECT_TRUE(started.empty());
}

TEST_F(ScriptCommandsTest, RunShellAsksForParametersOfTheChosenFileAndRemembersThem) {
    commands().RunShell(w);
    EXPECT_EQ(prompts.messages, Texts{"Please select a file to run with a click on the file"});
    w.left.selectedFile = "a.txt";
    w.right.selectedFile = "c.txt";
    w.rightClickedLast = true;
    commands().RunShell(w); // cancelled
    EXPECT_EQ(prompts.messages[1],
              "Enter text to be used as command line parms for : \r\n\"/r/files/c.txt\"");
    EXPECT_EQ(prompts.messages[2], "action cancelled by operator");
    EXPECT_EQ(prompts.titles.back(), "Command line parms");

    w.rightClickedLast = false;
    prompts.inputAnswers = {"-v x", ""};
    EXPECT_EQ(commands().RunShell(w), 42);
    EXPECT_EQ(commands().RunShell(w), 42);
    EXPECT_EQ(started, (Texts{"\"/l/files/a.txt\" -v x", "\"/l/files/a.txt\" "}));
    EXPECT_EQ(prompts.proposed, (Texts{"", "", "-v x"}));
}

// The parameters are kept under the file's path; a path that would write a
// section and a key of its own into the settings file is not run.
TEST_F(ScriptCommandsTest, RunShellRefusesAPathThatWouldAddSettingsLines) {
    w.left.fileListPath = "/l/files";
    w.left.selectedFile = "x\n[COMPARECONTROL]\nFC_LB=>victim.txt ^";
    EXPECT_EQ(commands().RunShell(w), 0);
    EXPECT_EQ(prompts.messages,
              Texts{"Cannot run \"/l/files/x\n[COMPARECONTROL]\nFC_LB=>victim.txt ^\": its path "
                    "cannot be kept in the settings file, the key holds a line break"});
    EXPECT_TRUE(started.empty());
    EXPECT_FALSE(std::filesystem::exists(settings.path()));
}

TEST_F(ScriptCommandsTest, RunShellReportsAFileThatCannotStart) {
    std::string notes = home.write("files/notes.txt", "not a program");
    w.left.fileListPath = home / "files";
    w.left.selectedFile = "notes.txt";
    prompts.inputAnswers = {"--now"};
    pv::ScriptCommands real(settings, [](const std::string& c) { return pv::startDetached(c); });
    EXPECT_EQ(real.RunShell(w), 0);
    EXPECT_EQ(prompts.messages.back(), "Shell run failed: 13 " + notes + ": Permission denied");
    EXPECT_EQ(prompts.icons.back(), MessageIcon::Critical);
    EXPECT_EQ(settings.read("SHELLSCRIPTS", "\"" + notes + "\""), "--now");
}

} // namespace
