#pragma once
// File-name masks as the command interpreter's tools read them: "*" any run of
// characters, "?" one character, letter case ignored, and a mask ending in ".*"
// also matching names without an extension ("*.*" matches every name).

#include <string>
#include <string_view>

namespace pvcmd {

class Wildcard {
  public:
    explicit Wildcard(std::string pattern);

    bool matches(std::string_view name) const;
    const std::string& pattern() const { return m_pattern; }

    static bool hasWildcard(std::string_view text);

  private:
    std::string m_pattern;
};

} // namespace pvcmd
