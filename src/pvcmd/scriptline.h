#pragma once
// One line of a command script, taken apart the way the command interpreter
// does before running it: the "@" that hides it, the redirections (which may
// stand anywhere on the line), and the command text that is left.

#include <string>
#include <vector>

namespace pvcmd {

struct Redirection {
    int handle = 1;      // 1 standard output, 2 standard error
    bool append = false; // ">>" rather than ">"
    std::string target;  // file name without quotes, or "&1"/"&2" for a handle

    bool operator==(const Redirection&) const = default;
};

class ScriptLine {
  public:
    // Parses a line (no line end). Outside double quotes "^" makes the next
    // character plain text and ">" starts a redirection; a lone digit right
    // before it names the handle. Text around a redirection stays as it is, so
    // "echo foo >>f" keeps the blank: the command text is "echo foo ".
    static ScriptLine parse(const std::string& raw);

    bool hidden() const { return m_hidden; }
    const std::string& text() const { return m_text; }
    const std::vector<Redirection>& redirections() const { return m_redirections; }
    // A redirection without a file name ("echo x >"): a syntax error.
    bool malformed() const { return m_malformed; }

    // The line as the interpreter shows it when echoing commands.
    std::string display() const;

  private:
    bool m_hidden = false;
    bool m_malformed = false;
    std::string m_text;
    std::vector<Redirection> m_redirections;
};

// Replaces %0..%9, %~0..%~9 (quotes removed), %* and %% in a line of a script
// started with arguments; any other "%" is dropped.
std::string expandArguments(const std::string& line, const std::vector<std::string>& args);

} // namespace pvcmd
