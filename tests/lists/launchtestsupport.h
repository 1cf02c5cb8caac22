#pragma once
// Stand-in programs for the launcher tests: small shell scripts that record how
// they were started.

#include "support/temptree.h"

#include <chrono>
#include <cstdlib>
#include <string>
#include <sys/stat.h>
#include <thread>

namespace pvtest {

// Sets an environment variable for one scope and puts the old value back.
class EnvGuard {
  public:
    EnvGuard(const char* name, const std::string& value) : m_name(name) {
        if (const char* old = std::getenv(name)) {
            m_had = true;
            m_old = old;
        }
        ::setenv(name, value.c_str(), 1);
    }
    ~EnvGuard() {
        if (m_had)
            ::setenv(m_name, m_old.c_str(), 1);
        else
            ::unsetenv(m_name);
    }
    EnvGuard(const EnvGuard&) = delete;
    EnvGuard& operator=(const EnvGuard&) = delete;

  private:
    const char* m_name;
    bool m_had = false;
    std::string m_old;
};

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

// Polls for a line a detached process writes; bounded so a broken start fails
// instead of hanging.
inline std::string waitForLine(const std::string& path) {
    for (int i = 0; i < 500; ++i) {
        std::string text = readFile(path);
        if (!text.empty() && text.back() == '\n')
            return text;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return readFile(path);
}

} // namespace pvtest
