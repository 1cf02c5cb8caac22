#pragma once
// Command-line file masks with "*" and "?", matched without regard to case as
// the system's tools match them, and expanded against a directory.

#include <string>
#include <vector>

namespace pvcmd {

class FileMask {
  public:
    explicit FileMask(std::string mask);

    static bool hasWildcard(const std::string& text);

    // True when a file name (no directory part) fits the mask; "*.*" fits every
    // name, also one without a dot.
    bool matches(const std::string& name) const;

    // The regular files of the mask's directory whose names fit, as paths built
    // from the mask's directory part as written ("" for the current directory),
    // sorted by name.
    std::vector<std::string> expand() const;

    // The name that a target mask gives a source file name: "?" takes one
    // character, "*" takes the source up to the mask's next literal character
    // (its last occurrence), other characters stand for themselves.
    // ("*.bak" makes "a.txt" into "a.bak"; "*" and "*.*" keep the name.)
    static std::string mapName(const std::string& mask, const std::string& source);

    const std::string& directory() const { return m_directory; }
    const std::string& pattern() const { return m_pattern; }

  private:
    std::string m_directory; // with its trailing "/", or empty
    std::string m_pattern;
};

} // namespace pvcmd
