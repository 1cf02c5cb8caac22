#pragma once
// A running main window on a settings file in a temporary program directory, with
// the desktop editor replaced by a program that records its arguments.

#include "app/programpaths.h"
#include "app/ui/mdiform1.h"
#include "compare/ui/pairview.h"
#include "lists/launchtestsupport.h"
#include "settings/settings.h"
#include "support/recordingprompter.h"
#include "support/temptree.h"

#include <QApplication>
#include <QDir>
#include <gtest/gtest.h>

#include <memory>

namespace pvtest {

class CommandsTest : public ::testing::Test {
  protected:
    CommandsTest()
        : editorLog(tools / "editor.log"), editor(writeRecorder(tools, "editor.sh", editorLog)),
          m_editorEnv("PAIRVIEW_EDITOR", editor) {}

    void SetUp() override {
        m_oldCwd = QDir::currentPath();
        pv::globals().setClicked(pv::ClickedControl::None);
        left = home.mkdir("left");
        right = home.mkdir("right");
        home.write("left/a.cpp", "1");
        home.write("left/b.h", "2");
        home.write("left/c.txt", "3");
        home.write("right/a.cpp", "1");
        ini = home / "my.ini";
    }
    void TearDown() override {
        frame.reset();
        QApplication::processEvents();
        QDir::setCurrent(m_oldCwd);
        pv::globals().setClicked(pv::ClickedControl::None);
    }
    void start() {
        frame = std::make_unique<pv::MDIForm1>(std::vector<std::string>{"-ini", ini});
        frame->MDIForm_Load(home.str());
        window = frame->defaultCompareWindow(false);
        ASSERT_NE(window, nullptr);
    }
    std::string value(const char* section, const char* key) const {
        return pv::Settings(ini).read(section, key);
    }
    void write(const char* section, const char* key, const std::string& v) const {
        pv::Settings(ini).write(section, key, v);
    }
    // The arguments the recording editor got, one line per start.
    std::string editorArgs() const { return waitForLine(editorLog); }

    TempDir home, tools;
    std::string editorLog, editor;
    RecordingPrompter prompts;
    std::string left, right, ini;
    std::unique_ptr<pv::MDIForm1> frame;
    pv::Pairview* window = nullptr;

  private:
    EnvGuard m_editorEnv;
    QString m_oldCwd;
};

} // namespace pvtest
