#pragma once
// A run-time failure as the program reports it: a number and a description.
// On POSIX the number is errno and the description its text.

#include <stdexcept>
#include <string>

namespace pv {

class RuntimeError : public std::runtime_error {
public:
    RuntimeError(int number, const std::string& description)
        : std::runtime_error(description), m_number(number) {}

    int number() const { return m_number; }
    std::string description() const { return what(); }

    // Builds the error from an errno value, with strerror's text.
    static RuntimeError fromErrno(int err, const std::string& context = {});

private:
    int m_number;
};

} // namespace pv
