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

// What "%" stands for in a script's line.
struct PercentContext {
    std::vector<std::string> args; // %0 (the script as named), %1, ...
    // A script started with arguments reads every "%" form; one started without
    // (all the scripts Pairview writes) keeps what it cannot read as it is.
    bool withArguments = false;
    int errorLevel = 0; // %ERRORLEVEL%, unless a variable of that name is set
};

// With arguments: replaces %0..%9, %~0..%~9 (quotes removed), %*, %% and
// %NAME% (empty when unset); any other "%" is dropped.
// Without: only outside double quotes, %% becomes % and %NAME% the value of a
// variable that is set (or the error level); every other "%" stays, so file names
// such as "100%.txt" and "100%PATH%.txt" in the quoted paths of a compare line
// reach the tool intact.
std::string expandPercents(const std::string& line, const PercentContext& context);

// True when the line ends in a "^" that escapes the line end: outside double
// quotes and not itself escaped. The interpreter then joins the next line.
bool endsInContinuation(const std::string& line);

} // namespace pvcmd
