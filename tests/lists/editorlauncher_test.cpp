#include "lists/editorlauncher.h"
#include "lists/launchrules.h"
#include "platform/runtimeerror.h"
#include "support/recordingprompter.h"
#include "support/temptree.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

using Log = std::vector<std::string>;

// Records every request in one log: "start <command>", "load <path>", "active <path>"
// (opened through the active compare window), "open <program>|<path>".
class FakeHost : public pv::LaunchHost {
  public:
    bool associated = false, failStart = false, failOpen = false;
    int connectionIndex = 1;
    std::string associatedProgram;
    Log log;

    bool useAssociated() const override { return associated; }
    int chosenConnection() const override { return connectionIndex; }
    long start(const std::string& commandLine) override {
        log.push_back("start " + commandLine);
        if (failStart)
            throw pv::RuntimeError(ENOENT, "No such file or directory");
        return 42;
    }
    void loadIntoEditor(const std::string& path) override { log.push_back("load " + path); }
    void openInActiveCompareWindow(const std::string& path) override {
        log.push_back("active " + path);
    }
    std::string findAssociatedProgram(const std::string&) override { return associatedProgram; }
    long openAssociated(const std::string& program, const std::string& path) override {
        log.push_back("open " + program + "|" + path);
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

TEST_F(Launcher, RunEditorStartsTheChosenEditor) {
    settings.write("ISQL", "ITEM3", "-S srv -E");
    host.connectionIndex = 3;
    struct Row {
        const char* name;
        bool associated;
        const char* editor; // "": none set
        const char* path;
        long task;
        const char* request;
        Log messages;
    } rows[] = {
        // clang-format off
        {"no editor is Write", false, "", "/a.txt", 42, "start Write.exe \"/a.txt\"", {}},
        {"one character is no editor", false, "x", "/a.txt", 42, "start Write.exe \"/a.txt\"", {}},
        {"editor is trimmed", false, "  Notepad.exe  ", "/a b.txt", 42, "start Notepad.exe \"/a b.txt\"", {}},
        {"query tool", false, "/q/isqlw.exe", "/a b.txt", 42, "start /q/isqlw.exe  -S srv -E -f \"/a b.txt\"", {}},
        // The caller's quotes and ours make "" at each end; each pair becomes one.
        {"query tool, quoted path", false, "/q/ISQLW.EXE", "\"/a b.txt\"", 42,
         "start /q/ISQLW.EXE  -S srv -E -f \"/a b.txt\"", {}},
        {"internal editor", false, "internal", "/a b/x.txt", 0, "load \"/a b/x.txt\"", {}},
        {"associations: executables to Notepad", true, "vi", "/tools.exe.d/readme.txt", 42,
         "start Notepad.exe \"/tools.exe.d/readme.txt\"", {pv::kExecutableWarning}},
        {"associations: through the compare window", true, "vi", "/a b.txt", 0, "active \"/a b.txt\"", {}},
        // clang-format on
    };
    for (const Row& r : rows) {
        host.log.clear();
        prompts.messages.clear();
        host.associated = r.associated;
        settings.write("APPLICATION", "EDITOR", r.editor);
        EXPECT_EQ(launcher.runEditor(r.path), r.task) << r.name;
        EXPECT_EQ(host.log, Log{r.request}) << r.name;
        EXPECT_EQ(prompts.messages, r.messages) << r.name;
    }
    host.associated = false;
    host.failStart = true;
    EXPECT_THROW(launcher.runEditor("/a.txt"), pv::RuntimeError);
}

TEST_F(Launcher, NamedEditorsAndOpenWithItemsUseThePathAsGiven) {
    settings.write("ISQL", "ITEM1", "-S one");
    EXPECT_EQ(launcher.runEditorAssociation("kate", "\"/a b\""), 42);
    EXPECT_EQ(launcher.runEditorAssociation("/q/isqlw.exe", "\"/c\""), 42);
    EXPECT_EQ(launcher.runEditorAssociation("Internal", "\"/d\""), 0);
    launcher.openWith("Open by association", "\"/e\"");
    launcher.openWith("INTERNAL", "\"/f\"");
    host.failStart = true;
    launcher.openWith("missing-editor", "\"/g\""); // errors ignored
    EXPECT_EQ(host.log,
              (Log{"start kate \"/a b\"", "start /q/isqlw.exe  -S one -f \"/c\"", "load \"\"/d\"\"",
                   "active \"/e\"", "load \"/f\"", "start missing-editor \"/g\""}));
    EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(Launcher, AssociationOpenerBranches) {
    // Executable type: warning naming the file, Notepad with the path as given.
    EXPECT_EQ(launcher.GetRelatedEXEforFileType("\"/x.bat\""), 42);
    EXPECT_EQ(prompts.messages,
              Log{"File extension is not in my list as valid associations\r\n(e.g Bat, cmd, exe) "
                  "will execute. I will use Notepad for these file types.\r\n\r\nUse Run Shell if "
                  "you wish to execute this code.\r\nFile : \"/x.bat\""});

    // Nothing associated.
    EXPECT_EQ(launcher.GetRelatedEXEforFileType("\"/a.txt\""), 0);
    EXPECT_EQ(prompts.messages.back(), pv::kNoAssociationText);
    EXPECT_EQ(prompts.titles.back(), pv::kNoAssociationTitle);
    EXPECT_EQ(prompts.icons.back(), pv::MessageIcon::Exclamation);

    // An associated program opens the file; a failing open is reported with the
    // error's number and description.
    host.associatedProgram = "/usr/bin/kate";
    EXPECT_EQ(launcher.GetRelatedEXEforFileType("\"/a.txt\""), 7);
    host.failOpen = true;
    EXPECT_EQ(launcher.GetRelatedEXEforFileType("\"/a.txt\""), 0);
    EXPECT_EQ(prompts.messages.back(),
              "Open failed:" + std::to_string(EACCES) + "\r\nDesc: Permission denied");
    EXPECT_EQ(prompts.titles.back(), pv::kOpenFailedTitle);

    // The query tool as the associated program gets the chosen connection.
    settings.write("ISQL", "ITEM2", "-S two");
    host.connectionIndex = 2;
    host.associatedProgram = "/q/isqlw.exe";
    launcher.GetRelatedEXEforFileType("\"/q.sql\"");
    EXPECT_EQ(host.log,
              (Log{"start Notepad.exe \"/x.bat\"", "open /usr/bin/kate|\"/a.txt\"",
                   "open /usr/bin/kate|\"/a.txt\"", "start /q/isqlw.exe  -S two -f \"/q.sql\""}));
}

TEST_F(Launcher, CaptureInQueryToolUsesEveryIsqlItem) {
    launcher.showCaptureInQueryTool({"Open by association", "/q/isqlw.exe", "kate", "ISQL2.exe"},
                                    "/p/CaptureFile.txt");
    EXPECT_EQ(host.log, (Log{"start /q/isqlw.exe   -f /p/CaptureFile.txt",
                             "start ISQL2.exe /p/CaptureFile.txt"}));
    EXPECT_TRUE(prompts.messages.empty());

    host.log.clear();
    launcher.showCaptureInQueryTool({"Open by association", "kate"}, "/p/CaptureFile.txt");
    EXPECT_TRUE(host.log.empty());
    EXPECT_EQ(prompts.messages, Log{pv::kNoIsqlEditor});
}

} // namespace
