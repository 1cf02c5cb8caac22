#pragma once
// Building a command script entry by entry, writing it and starting it. Each entry
// carries its own line breaks before and after its text and is then ended by the
// CR LF that ends every written line, so the writers read like the entry tables
// they follow.

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace pv {

class ScriptText {
  public:
    // `before` CR LFs, the text, `after` CR LFs, then the line's own CR LF.
    void entry(int before, std::string_view text, int after);
    const std::string& str() const { return m_text; }

  private:
    std::string m_text;
};

// `text` in double quotes.
std::string inQuotes(std::string_view text);

// A network path begins with two separators ("//server/share").
bool isNetworkPath(std::string_view path);

// Starts a command line detached and returns its task number.
using ScriptStarter = std::function<long(const std::string& commandLine)>;

// The files of one run of a search command.
struct ScriptRun {
    std::string scriptPath;
    std::string scriptText;
    std::string capturePath;
    // The capture file's new start in replace mode; nullopt keeps (appends to) it.
    std::optional<std::string> captureStart;
};

// Writes the capture start (replace mode) and the script, each replacing its file
// in one step so that no half-written file is left, then starts the script.
// Returns the task number. Throws RuntimeError naming the file and the reason:
// "Cannot write PATH: reason" or "Cannot start PATH: reason".
long writeAndStart(const ScriptRun& run, const ScriptStarter& start);

// Writes a file in one step; a failure throws "Cannot write PATH: reason".
void writeScriptFile(const std::string& path, std::string_view bytes);

} // namespace pv
