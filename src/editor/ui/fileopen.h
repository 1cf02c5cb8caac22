#pragma once
// The editor windows' shared operations: the table of windows and the find state,
// opening files into new windows, the Open and Save dialogs, writing a window's
// text, and the File commands of the main window that act on editor windows.

#include "editor/editorslots.h"
#include "editor/findineditor.h"

#include <string>

namespace pv {

class MDIForm1;
class frmNotePad;

// Shared by every editor window for the program's run.
struct EditorState {
    EditorSlots windows;
    FindState find;
};
EditorState& editorState();

// A new, empty document: "Untitled:" + its slot.
frmNotePad* mnuFileNew();
// Opens a file in a new editor window; double quotes in the path are removed. A
// file that cannot be read is reported ("Can't open file: ") and no window opens.
frmNotePad* LoadFileIntoEditor(const std::string& path);
// Opens a report a script hands over: an editor window that already shows the
// file and holds no unsaved change reads it again and comes to the front;
// otherwise the file opens in a new window as above.
frmNotePad* OpenReportInEditor(const std::string& path);
// The Open dialog, with the file types of the pattern list; the file chosen
// opens in a new window and goes to the recent list.
void ShowEditorOpenDialog();
// The Save dialog on a default name; "" when cancelled.
std::string AskSaveFileName(const std::string& defaultName);
// Writes the active editor window's text to a path; false when it failed (the
// error was shown).
bool SaveEditorFile(const std::string& path);
// Adds a path to the recent list unless a recent item already shows it.
void RememberOpenedFile(const std::string& path);

// The editor window of the frame's current child, or nullptr.
frmNotePad* activeEditorWindow();
// Closes every editor window, each asking about a changed text; false when one
// stays open.
bool closeEditorWindows();

// File > New, Open, Save and Save As of the main window; Save and Save As are
// enabled while an editor window is the current child.
void connectEditorCommands(MDIForm1& frame);

} // namespace pv
