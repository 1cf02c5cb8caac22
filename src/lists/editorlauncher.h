#pragma once
// Opening a file for the user: in the editor chosen in the compare window, in the
// internal editor ("INTERNAL"), in the query tool with the chosen connection, or
// with the program the desktop associates with the file's type.

#include "lists/launchhost.h"
#include "settings/settings.h"

#include <string>
#include <vector>

namespace pv {

class EditorLauncher {
  public:
    EditorLauncher(const Settings& settings, LaunchHost& host)
        : m_settings(settings), m_host(host) {}

    // Opens a full, unquoted path in the chosen editor; returns the task number or 0.
    // A start that fails throws to the caller.
    long runEditor(const std::string& path);

    // Opens a path (used as the caller built it) with the named editor.
    long runEditorAssociation(const std::string& editor, const std::string& path);

    // The association opener of a compare window (the path comes quoted). Errors are
    // ignored; failures to find or open are reported by message. Returns the task
    // number, 0 when nothing was started.
    long GetRelatedEXEforFileType(const std::string& path);

    // An item of the OpenWith submenu, by caption, on the quoted file. Errors ignored.
    void openWith(const std::string& caption, const std::string& file);

    // "Capture_FileName in ISQL": every OpenWith caption containing "ISQL" opens the
    // capture file.
    void showCaptureInQueryTool(const std::vector<std::string>& openWithCaptions,
                                const std::string& capturePath);

    // The chosen editor: "APPLICATION"/"EDITOR", "Write.exe" when shorter than two.
    std::string editor() const;
    // The chosen connection's text ("ISQL"/"ITEM"+index), "" when missing.
    std::string connection() const;

  private:
    const Settings& m_settings;
    LaunchHost& m_host;
};

} // namespace pv
