#pragma once
// Sets an environment variable for one scope and puts the old value back.

#include <cstdlib>
#include <string>

namespace pvtest {

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

} // namespace pvtest
