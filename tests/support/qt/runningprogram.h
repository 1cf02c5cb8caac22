#pragma once
// A running main window with its first compare window, on a settings file in a
// temporary program directory. Dialogs are answered by a recording prompter.

#include "app/programpaths.h"
#include "app/ui/mdiform1.h"
#include "compare/ui/pairview.h"
#include "settings/settings.h"
#include "support/recordingprompter.h"
#include "support/temptree.h"

#include <QApplication>
#include <QDir>
#include <gtest/gtest.h>

#include <memory>

namespace pvtest {

class RunningProgramTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_oldCwd = QDir::currentPath();
        pv::globals().setClicked(pv::ClickedControl::None);
        ini = home / "my.ini";
    }
    void TearDown() override {
        frame.reset();
        QApplication::processEvents();
        QDir::setCurrent(m_oldCwd);
        pv::globals().setClicked(pv::ClickedControl::None);
    }
    // Starts the program with "-ini" naming `ini`, the program directory `home`.
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

    TempDir home;
    RecordingPrompter prompts;
    std::string ini;
    std::unique_ptr<pv::MDIForm1> frame;
    pv::Pairview* window = nullptr;

private:
    QString m_oldCwd;
};

// The same, with two small trees: left a.cpp, b.h, c.txt; right a.cpp.
class TwoTreesTest : public RunningProgramTest {
protected:
    void SetUp() override {
        RunningProgramTest::SetUp();
        left = home.mkdir("left");
        right = home.mkdir("right");
        home.write("left/a.cpp", "1");
        home.write("left/b.h", "2");
        home.write("left/c.txt", "3");
        home.write("right/a.cpp", "1");
    }
    std::string left, right;
};

} // namespace pvtest
