#pragma once
// A running main window on a settings file in a temporary program directory, with
// the desktop editor replaced by a program that records its arguments.

#include "support/qt/runningprogram.h"
#include "support/standins.h"

namespace pvtest {

class CommandsTest : public TwoTreesTest {
  protected:
    CommandsTest()
        : editorLog(tools / "editor.log"), editor(writeRecorder(tools, "editor.sh", editorLog)),
          m_editorEnv("PAIRVIEW_EDITOR", editor) {}

    // The arguments the recording editor got, one line per start.
    std::string editorArgs() const { return waitForLine(editorLog); }

    TempDir tools;
    std::string editorLog, editor;

  private:
    EnvGuard m_editorEnv;
};

} // namespace pvtest
