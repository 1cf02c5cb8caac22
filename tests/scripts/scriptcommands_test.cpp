#include "scripts/scriptcommands.h"

#include "platform/clock.h"
#include "platform/process.h"
#include "platform/runtimeerror.h"
#include "settings/settings.h"
#include "support/recordingprompter.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

using pv::MessageIcon;

namespace {

class FixedClock : public pv::Clock {
  public:
    std::chrono::system_clock::time_point now() const override {
        return std::chrono::system_clock::from_time_t(1795000000);
    }
};

// Also keeps the text each input box proposed.
class Prompts : public pvtest::RecordingPrompter {
  public:
    std::vector<std::string> proposed;
    std::optional<std::string> input(const std::string& prompt, const std::string& title,
                                     const std::string& defaultText) override {
        proposed.push_back(defaultText);
        return RecordingPrompter::input(prompt, title, defaultText);
    }
};

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
    std::string now() const { return pv::formatGeneralDate(m_clock.now()); }

    pvtest::TempDir home;
    pv::Settings settings{home / "Pairview.ini"};
    Prompts prompts;
    pv::ScriptWindow w;
    std::vector<std::string> started;
    bool failStart = false;

  private:
    FixedClock m_clock;
    const pv::Clock* m_oldClock;
};

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST_F(ScriptCommandsTest, SearchesRefuseCancelEmptyAndUnscriptableTexts) {
    settings.write("APPLICATION", "SEARCHFILE", "old");
    settings.write("APPLICATION", "SEARCHTEXT", "old");
    struct Row {
        const char* name;
        bool findText;
        std::optional<std::string> answer;
        std::string message;
        MessageIcon icon;
    } rows[] = {
        {"file cancelled", false, std::nullopt, "action cancelled by operator", MessageIcon::None},
        {"file empty", false, "", "empty string not searched for", MessageIcon::None},
        {"file line break", false, "a\nb", "Not searched for: the text holds a line break",
         MessageIcon::Exclamation},
        {"text cancelled", true, std::nullopt, "action cancelled by operator", MessageIcon::None},
        {"text empty", true, "", "empty string not searched for", MessageIcon::None},
        {"text quote", true, "say \"x\"", "Not searched for: the text holds a double quote",
         MessageIcon::Exclamation},
    };
    for (const Row& r : rows) {
        prompts.messages.clear();
        prompts.titles.clear();
        prompts.icons.clear();
        prompts.inputAnswers = {r.answer};
        long task = r.findText ? commands().FindTheText(w) : commands().FindFile(w);
        EXPECT_EQ(task, 0) << r.name;
        ASSERT_EQ(prompts.messages.size(), 2u) << r.name;
        EXPECT_EQ(prompts.messages[0], r.findText ? "Enter text to be scanned for"
                                                  : "Enter File name / pattern to be scanned for")
            << r.name;
        EXPECT_EQ(prompts.titles[0], r.findText ? "Text Search" : "File Search") << r.name;
        EXPECT_EQ(prompts.messages[1], r.message) << r.name;
        EXPECT_EQ(prompts.titles[1], r.findText ? "Find Text" : "Find File") << r.name;
        EXPECT_EQ(prompts.icons[1], r.icon) << r.name;
    }
    EXPECT_EQ(prompts.proposed, std::vector<std::string>(6, "old"));
    EXPECT_EQ(settings.read("APPLICATION", "SEARCHFILE"), "old");
    EXPECT_EQ(settings.read("APPLICATION", "SEARCHTEXT"), "old");
    EXPECT_TRUE(started.empty());
    EXPECT_FALSE(std::filesystem::exists(home / "pairviewFINDFile.bat"));
}

TEST_F(ScriptCommandsTest, FindFileSearchesTheClickedPaneWithTheWindowsFiles) {
    settings.write("DIRCONTROL", "DIR_B", "True");
    settings.write("APPLICATION", "EDITOR", "internal");
    w.tag = "2";
    w.rightClickedLast = true;
    prompts.inputAnswers = {"*.h"};
    EXPECT_EQ(commands().FindFile(w), 42);
    const std::string script = home / "pairviewFINDFile2.bat";
    const std::string q = "\"" + home / "PairviewFINDFILE2.txt" + "\"";
    EXPECT_EQ(started, std::vector<std::string>{script});
    EXPECT_EQ(settings.read("APPLICATION", "SEARCHFILE"), "*.h");
    std::string text = pvtest::readFile(script);
    EXPECT_TRUE(contains(text, "\r\ncd \"/r/files\"\r\n\r\n\r\n/mnt\r\n")) << text;
    EXPECT_TRUE(contains(text, "\r\nDIR /b *.h  >> " + q + "\r\n")) << text;
    EXPECT_TRUE(contains(text, "\r\nWrite.exe " + q + "\r\n")) << text;
    EXPECT_TRUE(contains(text, "rem ---------- Start " + now() + " ")) << text;
    EXPECT_EQ(pvtest::readFile(home / "PairviewFINDFILE2.txt"),
              "\r\n\r\n ---------- Start " + now() + " -----------\r\n\r\n");
    EXPECT_TRUE(prompts.messages.size() == 1) << prompts.messages.back();
}

TEST_F(ScriptCommandsTest, AppendModeKeepsTheCaptureFile) {
    home.write("PairviewFIND.txt", "earlier results\r\n");
    settings.write("LASTFILE", "FILEPATTERN", "*.c;*.h");
    settings.write("FINDCONTROL", "I", "TRUE");
    w.replaceOutput = false;
    w.breakout = true;
    prompts.inputAnswers = {"to do"};
    EXPECT_EQ(commands().FindTheText(w), 42);
    EXPECT_EQ(settings.read("APPLICATION", "SEARCHTEXT"), "to do");
    EXPECT_EQ(pvtest::readFile(home / "PairviewFIND.txt"), "earlier results\r\n");
    std::string text = pvtest::readFile(home / "pairviewFINDDyn.bat");
    EXPECT_TRUE(contains(text, "\r\ncd \"/l/files\"\r\n")) << text;
    EXPECT_TRUE(contains(text, "findstr /i  /c:\"to do\" *.h >> ")) << text;
    EXPECT_TRUE(contains(text, "Looking for *.c ")) << text;
}

TEST_F(ScriptCommandsTest, FailuresToWriteOrStartNameTheFile) {
    prompts.inputAnswers = {"*.h", "*.h"};
    failStart = true;
    EXPECT_EQ(commands().FindFile(w), 0);
    ASSERT_EQ(prompts.messages.size(), 2u);
    EXPECT_EQ(prompts.messages[1], "Cannot start " + home / "pairviewFINDFile.bat" +
                                       ": pvcmd: No such file or directory");
    EXPECT_EQ(prompts.icons[1], MessageIcon::Critical);
    EXPECT_TRUE(std::filesystem::exists(home / "pairviewFINDFile.bat"));

    failStart = false;
    w.programDirectory = home / "missing";
    w.findFileCapture = home / "missing/PairviewFINDFILE.txt";
    EXPECT_EQ(commands().FindFile(w), 0);
    ASSERT_EQ(prompts.messages.size(), 4u);
    EXPECT_EQ(prompts.messages[3], "Cannot write " + home / "missing/PairviewFINDFILE.txt" +
                                       ": No such file or directory");
    EXPECT_EQ(prompts.titles[3], "Find File");
    EXPECT_TRUE(started.empty());
}

TEST_F(ScriptCommandsTest, CreateXcopyWritesTheScriptOnly) {
    settings.write("APPLICATION", "XCOPYPARMS", "/y");
    w.left.items = {"a.txt", "odd\"name"};
    commands().CreateXcopy(w);
    w.left.items = {"b.h"};
    commands().CreateXcopy(w);
    EXPECT_TRUE(started.empty());
    std::string text = pvtest::readFile(w.xcopyScript);
    const std::string r = "\"" + home / "XCOPY_FILE.TXT" + "\"";
    EXPECT_TRUE(contains(text, "\r\nXCOPY \"/l/b.h\" \"/r/*.*\" /y >> " + r + "\r\n")) << text;
    EXPECT_FALSE(contains(text, "a.txt")) << text;
    // The first run left a name out and said so.
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0],
              w.xcopyScript + " copies every file but these, whose names cannot stand in a "
                              "script line:\r\nodd\"name (the name holds a double quote)");
}

TEST_F(ScriptCommandsTest, RunShellChoosesTheFile) {
    struct Row {
        const char* name;
        bool left, right, rightClicked;
        const char* command; // empty: no file chosen
    } rows[] = {
        {"none", false, false, true, ""},
        {"only right, left clicked", false, true, false, "\"/r/files/c.txt\""},
        {"only left, right clicked", true, false, true, "\"/l/files/a.txt\""},
        {"both, right clicked", true, true, true, "\"/r/files/c.txt\""},
        {"both, left or nothing clicked", true, true, false, "\"/l/files/a.txt\""},
    };
    for (const Row& r : rows) {
        prompts.messages.clear();
        prompts.titles.clear();
        w.left.selectedFile = r.left ? std::optional<std::string>("a.txt") : std::nullopt;
        w.right.selectedFile = r.right ? std::optional<std::string>("c.txt") : std::nullopt;
        w.rightClickedLast = r.rightClicked;
        commands().RunShell(w); // cancelled
        ASSERT_FALSE(prompts.messages.empty()) << r.name;
        if (*r.command == 0) {
            EXPECT_EQ(
                prompts.messages,
                std::vector<std::string>{"Please select a file to run with a click on the file"})
                << r.name;
            continue;
        }
        EXPECT_EQ(prompts.messages[0],
                  std::string("Enter text to be used as command line parms for : \r\n") + r.command)
            << r.name;
        EXPECT_EQ(prompts.messages[1], "action cancelled by operator") << r.name;
        EXPECT_EQ(prompts.titles[1], "Command line parms") << r.name;
    }
    EXPECT_TRUE(started.empty());
    EXPECT_EQ(settings.read("SHELLSCRIPTS", "\"/l/files/a.txt\""), "");
}

TEST_F(ScriptCommandsTest, RunShellRemembersParametersPerFile) {
    w.left.selectedFile = "a.txt";
    prompts.inputAnswers = {"-v x", "", std::nullopt};
    EXPECT_EQ(commands().RunShell(w), 42);
    EXPECT_EQ(commands().RunShell(w), 42);
    commands().RunShell(w);
    EXPECT_EQ(started,
              (std::vector<std::string>{"\"/l/files/a.txt\" -v x", "\"/l/files/a.txt\" "}));
    EXPECT_EQ(prompts.proposed, (std::vector<std::string>{"", "-v x", ""}));
    EXPECT_EQ(settings.read("SHELLSCRIPTS", "\"/l/files/a.txt\""), "");
}

TEST_F(ScriptCommandsTest, RunShellReportsAFileThatCannotStart) {
    std::string notes = home.write("files/notes.txt", "not a program");
    w.left.fileListPath = home / "files";
    w.left.selectedFile = "notes.txt";
    prompts.inputAnswers = {"--now"};
    pv::ScriptCommands real(settings, [](const std::string& c) { return pv::startDetached(c); });
    EXPECT_EQ(real.RunShell(w), 0);
    ASSERT_EQ(prompts.messages.size(), 2u);
    EXPECT_EQ(prompts.messages[1], "Shell run failed: 13 " + notes + ": Permission denied");
    EXPECT_EQ(prompts.icons[1], MessageIcon::Critical);
    EXPECT_EQ(settings.read("SHELLSCRIPTS", "\"" + notes + "\""), "--now");
}

} // namespace
