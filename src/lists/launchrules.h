#pragma once
// How the program builds the command lines that open a file for the user. The
// texts are Windows command lines; the platform layer splits and resolves them.

#include <optional>
#include <string>
#include <vector>

namespace pv {

// A path counts as executable when its upper-cased text contains ".EXE", ".CMD",
// ".BAT" or ".REG" anywhere: a substring test, so "/tools.exe.d/readme.txt" counts.
bool isExecutableType(const std::string& path);

// An editor or associated program whose lower-cased name contains "isqlw.exe".
bool isQueryTool(const std::string& program);

// Replaces each pair of adjacent double quotes, scanning left to right, by one.
std::string collapseDoubledQuotes(const std::string& text);

// `text` in double quotes, as the callers hand paths on.
std::string quoted(const std::string& text);

// The query tool's command: program, two blanks, the connection, " -f ", the file.
std::string queryToolCommand(const std::string& program, const std::string& connection,
                             const std::string& file);

// The chosen connection: the last checked index of 1..checked.size()-1, else 1.
int chosenConnectionIndex(const std::vector<bool>& checked);

// The selection of one pane as the file commands see it.
struct PaneSelection {
    std::string directory;
    std::optional<std::string> selectedFile; // nullopt when the list has no selection
};

// The file the "Open by association" button and the OpenWith items act on, quoted:
// the right pane's file when both panes have a selection and the right pane was
// clicked last, else the left; the one pane with a selection; nullopt for none.
std::optional<std::string> fileToOpen(const PaneSelection& left, const PaneSelection& right,
                                      bool rightClickedLast);

// The message boxes of the launcher.
extern const char* const kExecutableWarning;
std::string associationExecutableWarning(const std::string& path);
extern const char* const kNoAssociationText;
extern const char* const kNoAssociationTitle;
std::string openFailedText(int number, const std::string& description);
extern const char* const kOpenFailedTitle;
extern const char* const kSelectFileFirst;
extern const char* const kSelectFileLastClicked;
extern const char* const kNoIsqlEditor;

} // namespace pv
