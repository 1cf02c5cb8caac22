#include "lists/editorlauncher.h"
#include "lists/launchrules.h"
#include "lists/launchtestsupport.h"
#include "platform/process.h"
#include "platform/runtimeerror.h"
#include "support/recordingprompter.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

// Records every request; starts through a pluggable function.
class FakeHost : public pv::LaunchHost {
  public:
    bool associated = false;
    int connectionIndex = 1;
    std::string associatedProgram;
    bool failStart = false;
    bool failOpen = false;
    bool realStart = false;

    std::vector<std::string> started, loaded, activeOpened, opened;

    bool useAssociated() const override { return associated; }
    int chosenConnection() const override { return connectionIndex; }
    long start(const std::string& commandLine) override {
        started.push_back(commandLine);
        if (failStart)
            throw pv::RuntimeError(ENOENT, "No such file or directory");
        return realStart ? pv::startDetached(commandLine) : 42;
    }
    void loadIntoEditor(const std::string& path) override { loaded.push_back(path); }
    void openInActiveCompareWindow(const std::string& quotedPath) override {
        activeOpened.push_back(quotedPath);
    }
    std::string findAssociatedProgram(const std::string&) override { return associatedProgram; }
    long openAssociated(const std::string& program, const std::string& path) override {
        opened.push_back(program + "|" + path);
        if (failOpen)
            throw pv::RuntimeError(EACCES, "Permission denied");
        return 7;
    }
};

class Launcher : public testing::Test {
  protected:
    pvtest::TempDir dir;
    pv::Settings settings{dir / "Pairview.ini"};
    FakeHost host;
    pvtest::RecordingPrompter prompts;
    pv::EditorLauncher launcher{settings, host};
};

struct EditorCase {
    const char* name;
    const char* editor; // nullptr: key missing
    const char* path;
    const char* command;
};

void PrintTo(const EditorCase& c, std::ostream* os) {
    *os << c.name;
}

class RunEditorCommand : public Launcher, public testing::WithParamInterface<EditorCase> {};

TEST_P(RunEditorCommand, StartsTheChosenEditor) {
    const EditorCase& c = GetParam();
    if (c.editor)
        settings.write("APPLICATION", "EDITOR", c.editor);
    settings.write("ISQL", "ITEM3", "-S srv -E");
    host.connectionIndex = 3;
    EXPECT_EQ(launcher.runEditor(c.path), 42);
    EXPECT_EQ(host.started, std::vector<std::string>{c.command});
    EXPECT_TRUE(prompts.messages.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Branches, RunEditorCommand,
    testing::Values(EditorCase{"MissingEditorIsWrite", nullptr, "/a.txt", "Write.exe \"/a.txt\""},
                    EditorCase{"OneCharacterEditorIsWrite", "x", "/a.txt", "Write.exe \"/a.txt\""},
                    EditorCase{"EditorIsTrimmed", "  Notepad.exe  ", "/a b.txt",
                               "Notepad.exe \"/a b.txt\""},
                    EditorCase{"QueryTool", "/q/isqlw.exe", "/a b.txt",
                               "/q/isqlw.exe  -S srv -E -f \"/a b.txt\""},
                    // The caller's quotes and ours make "" at each end; each pair becomes one.
                    EditorCase{"QueryToolWithQuotedPath", "/q/ISQLW.EXE", "\"/a b.txt\"",
                               "/q/ISQLW.EXE  -S srv -E -f \"/a b.txt\""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(Launcher, InternalEditorGetsTheQuotedPath) {
    settings.write("APPLICATION", "EDITOR", "internal");
    EXPECT_EQ(launcher.runEditor("/a b/x.txt"), 0);
    EXPECT_EQ(host.loaded, std::vector<std::string>{"\"/a b/x.txt\""});
    EXPECT_TRUE(host.started.empty());
}

TEST_F(Launcher, AssociationsOnHandExecutablesToNotepadWithWarning) {
    host.associated = true;
    settings.write("APPLICATION", "EDITOR", "vi");
    EXPECT_EQ(launcher.runEditor("/tools.exe.d/readme.txt"), 42);
    EXPECT_EQ(host.started, std::vector<std::string>{"Notepad.exe \"/tools.exe.d/readme.txt\""});
    EXPECT_EQ(prompts.messages, std::vector<std::string>{pv::kExecutableWarning});
}

TEST_F(Launcher, AssociationsOnOpenThroughTheActiveCompareWindow) {
    host.associated = true;
    EXPECT_EQ(launcher.runEditor("/a b.txt"), 0);
    EXPECT_EQ(host.activeOpened, std::vector<std::string>{"\"/a b.txt\""});
    EXPECT_TRUE(host.started.empty());
}

TEST_F(Launcher, RunEditorPassesAFailedStartToTheCaller) {
    host.failStart = true;
    EXPECT_THROW(launcher.runEditor("/a.txt"), pv::RuntimeError);
}

TEST_F(Launcher, NamedEditorUsesThePathAsGiven) {
    settings.write("ISQL", "ITEM1", "-S one");
    EXPECT_EQ(launcher.runEditorAssociation("kate", "\"/a b\""), 42);
    EXPECT_EQ(launcher.runEditorAssociation("/q/isqlw.exe", "\"/c\""), 42);
    EXPECT_EQ(launcher.runEditorAssociation("Internal", "\"/d\""), 0);
    EXPECT_EQ(host.started,
              (std::vector<std::string>{"kate \"/a b\"", "/q/isqlw.exe  -S one -f \"/c\""}));
    EXPECT_EQ(host.loaded, std::vector<std::string>{"\"\"/d\"\""});
}

TEST_F(Launcher, AssociationOpenerBranches) {
    // Executable type: warning naming the file, Notepad with the path as given.
    EXPECT_EQ(launcher.GetRelatedEXEforFileType("\"/x.bat\""), 42);
    EXPECT_EQ(host.started, std::vector<std::string>{"Notepad.exe \"/x.bat\""});
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0],
              "File extension is not in my list as valid associations\r\n(e.g Bat, cmd, exe) will "
              "execute. I will use Notepad for these file types.\r\n\r\nUse Run Shell if you wish "
              "to execute this code.\r\nFile : \"/x.bat\"");

    // Nothing associated.
    EXPECT_EQ(launcher.GetRelatedEXEforFileType("\"/a.txt\""), 0);
    EXPECT_EQ(prompts.messages.back(), pv::kNoAssociationText);
    EXPECT_EQ(prompts.titles.back(), pv::kNoAssociationTitle);
    EXPECT_EQ(prompts.icons.back(), pv::MessageIcon::Exclamation);

    // An associated program opens the file.
    host.associatedProgram = "/usr/bin/kate";
    EXPECT_EQ(launcher.GetRelatedEXEforFileType("\"/a.txt\""), 7);
    EXPECT_EQ(host.opened, std::vector<std::string>{"/usr/bin/kate|\"/a.txt\""});

    // A failing open is reported with the error's number and description.
    host.failOpen = true;
    EXPECT_EQ(launcher.GetRelatedEXEforFileType("\"/a.txt\""), 0);
    EXPECT_EQ(prompts.messages.back(),
              "Open failed:" + std::to_string(EACCES) + "\r\nDesc: Permission denied");
    EXPECT_EQ(prompts.titles.back(), pv::kOpenFailedTitle);
    EXPECT_EQ(prompts.icons.back(), pv::MessageIcon::Exclamation);

    // The query tool as the associated program gets the chosen connection.
    settings.write("ISQL", "ITEM2", "-S two");
    host.connectionIndex = 2;
    host.associatedProgram = "/q/isqlw.exe";
    launcher.GetRelatedEXEforFileType("\"/q.sql\"");
    EXPECT_EQ(host.started.back(), "/q/isqlw.exe  -S two -f \"/q.sql\"");
}

TEST_F(Launcher, OpenWithItemsByCaption) {
    launcher.openWith("Open by association", "\"/a\"");
    launcher.openWith("INTERNAL", "\"/b\"");
    launcher.openWith("kate", "\"/c\"");
    host.failStart = true;
    launcher.openWith("missing-editor", "\"/d\""); // errors ignored
    EXPECT_EQ(host.activeOpened, std::vector<std::string>{"\"/a\""});
    EXPECT_EQ(host.loaded, std::vector<std::string>{"\"/b\""});
    EXPECT_EQ(host.started, (std::vector<std::string>{"kate \"/c\"", "missing-editor \"/d\""}));
    EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(Launcher, CaptureInQueryToolUsesEveryIsqlItem) {
    launcher.showCaptureInQueryTool({"Open by association", "/q/isqlw.exe", "kate", "ISQL2.exe"},
                                    "/p/CaptureFile.txt");
    EXPECT_EQ(host.started, (std::vector<std::string>{"/q/isqlw.exe   -f /p/CaptureFile.txt",
                                                      "ISQL2.exe /p/CaptureFile.txt"}));
    EXPECT_TRUE(prompts.messages.empty());

    host.started.clear();
    launcher.showCaptureInQueryTool({"Open by association", "kate"}, "/p/CaptureFile.txt");
    EXPECT_TRUE(host.started.empty());
    EXPECT_EQ(prompts.messages, std::vector<std::string>{pv::kNoIsqlEditor});
}

// The command lines really start the programs with the intended arguments.
TEST_F(Launcher, StartedEditorsReceiveThePathAsOneArgument) {
    host.realStart = true;
    const std::string log = dir / "argv.log";
    const std::string editor = pvtest::writeRecorder(dir, "my editor.sh", log);
    settings.write("APPLICATION", "EDITOR", pv::quoteArgument(editor));
    const std::string file = dir.write("a b.txt", "x");
    EXPECT_GT(launcher.runEditor(file), 0);
    EXPECT_EQ(pvtest::waitForLine(log), "[" + file + "]\n");
}

TEST_F(Launcher, StartedQueryToolReceivesConnectionWordsAndOnePath) {
    host.realStart = true;
    const std::string log = dir / "argv.log";
    const std::string tool = pvtest::writeRecorder(dir, "isqlw.exe", log);
    settings.write("APPLICATION", "EDITOR", tool);
    settings.write("ISQL", "ITEM3", "-S srv -E");
    host.connectionIndex = 3;
    launcher.runEditor("\"/data/my file.sql\"");
    EXPECT_EQ(pvtest::waitForLine(log), "[-S][srv][-E][-f][/data/my file.sql]\n");
}

} // namespace
