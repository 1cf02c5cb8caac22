#pragma once
// The find-file, find-text, copy-script and run-shell commands of a compare
// window, on the window's state as plain data. They ask the user through the
// prompter, read and write the settings, write their files and start what they
// start through an injected starter; they report their own failures in message
// boxes and never throw.

#include "scripts/scripttext.h"

#include <optional>
#include <string>
#include <vector>

namespace pv {

class Settings;

// One pane as these commands see it.
struct ScriptPane {
    std::string directory;                   // the directory list's path
    std::string fileListPath;                // the file list's path
    std::string drive;                       // the drive list's drive text
    std::vector<std::string> items;          // the file list's items, in list order
    std::optional<std::string> selectedFile; // nullopt when the list has no selection
};

struct ScriptWindow {
    std::string programDirectory;
    std::string tag; // the window tag, trimmed
    ScriptPane left, right;
    bool rightClickedLast = false;
    bool replaceOutput = true;   // Output Options: Replace (else Append)
    bool breakout = false;       // File Type Breakout
    std::string findFileCapture; // the program-wide capture names, before the tag
    std::string findTextCapture;
    std::string xcopyScript; // the copy script's path
};

// The texts the commands show.
extern const char* const kCancelledByOperator;
extern const char* const kEmptyNotSearched;
extern const char* const kSelectFileToRun;
std::string runShellPrompt(const std::string& commandText);
std::string shellRunFailedText(int number, const std::string& description);

class ScriptCommands {
  public:
    ScriptCommands(const Settings& settings, ScriptStarter start)
        : m_settings(settings), m_start(std::move(start)) {}

    // Each returns the task number of what it started, or 0.
    long FindFile(const ScriptWindow& w);
    long FindTheText(const ScriptWindow& w);
    // Writes the copy script; starts nothing.
    void CreateXcopy(const ScriptWindow& w);
    long RunShell(const ScriptWindow& w);

  private:
    struct Search {
        std::string text;
        const ScriptPane* pane; // the pane clicked last, the left one when none was
    };
    // The search text from an input box, written back to its key, and the pane to
    // search; nullopt after the message that says why not.
    std::optional<Search> beginSearch(const ScriptWindow& w, const char* prompt,
                                      const char* inputTitle, const char* title, const char* key,
                                      bool quotedInScript);
    std::string editor() const;
    long run(const ScriptRun& run, const char* title);

    const Settings& m_settings;
    ScriptStarter m_start;
};

} // namespace pv
