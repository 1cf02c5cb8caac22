#pragma once
// Stand-in programs for tests that start programs: small shell scripts that record
// how they were started.

#include "support/envguard.h"
#include "support/temptree.h"

#include <chrono>
#include <cstdlib>
#include <string>
#include <sys/stat.h>
#include <thread>

namespace pvtest {

inline std::string writeExecutable(const TempDir& dir, const std::string& name,
                                   const std::string& body) {
    std::string path = dir.write(name, "#!/bin/sh\n" + body);
    ::chmod(path.c_str(), 0755);
    return path;
}

// A program that appends one line per argument, each in brackets, to `log`.
inline std::string writeRecorder(const TempDir& dir, const std::string& name,
                                 const std::string& log) {
    return writeExecutable(dir, name,
                           "for a in \"$@\"; do printf '[%s]' \"$a\" >> '" + log +
                               "'; done\nprintf '\\n' >> '" + log + "'\n");
}

// Polls for a file a detached process writes until it holds `text` and ends with a
// line end; bounded so a broken start fails instead of hanging.
inline std::string waitForLine(const std::string& path, const std::string& text = "") {
    for (int i = 0; i < 500; ++i) {
        std::string now = readFile(path);
        if (!now.empty() && now.back() == '\n' && now.find(text) != std::string::npos)
            return now;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return readFile(path);
}

// A desktop of stand-ins: its tools first on PATH, its desktop files in a temporary
// XDG_DATA_HOME. xdg-mime gives text files (by name) the program fake-editor, and
// xdg-open appends its arguments to `openLog`.
class FakeDesktop {
  public:
    FakeDesktop() {
        writeExecutable(bin, "xdg-mime",
                        "case \"$2\" in\n"
                        "filetype) case \"$3\" in *.txt) echo text/plain;; *) exit 4;; esac;;\n"
                        "default) case \"$3\" in text/plain) echo vendor-editor.desktop;; "
                        "*) echo;; esac;;\n"
                        "esac\n");
        writeRecorder(bin, "xdg-open", openLog);
        data.write("applications/vendor/editor.desktop",
                   "[Desktop Entry]\nType=Application\nExec=fake-editor %U\n");
    }

    TempDir bin, data;
    const std::string editor = writeExecutable(bin, "fake-editor", "exit 0\n");
    const std::string openLog = bin / "open.log";

  private:
    EnvGuard m_path{"PATH", bin.str() + ":" + std::string(std::getenv("PATH"))};
    EnvGuard m_dataHome{"XDG_DATA_HOME", data.str()};
    EnvGuard m_dataDirs{"XDG_DATA_DIRS", data / "none"};
};

} // namespace pvtest
