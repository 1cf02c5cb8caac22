#pragma once
// What the launcher needs from the windows and the system: the state of two
// menus, the internal editor, the compare windows and the process start.

#include <string>

namespace pv {

class LaunchHost {
  public:
    virtual ~LaunchHost() = default;

    // "Use &Associated editor on click" is checked.
    virtual bool useAssociated() const = 0;
    // The index of the chosen query connection (the checked mnu_isql item).
    virtual int chosenConnection() const = 0;

    // Starts a command line detached; returns the task number. Throws RuntimeError.
    virtual long start(const std::string& commandLine) = 0;
    // Opens a file in a new internal editor window (quotes in the path are removed).
    virtual void loadIntoEditor(const std::string& path) = 0;
    // Runs the association opener of every compare window that carries the active
    // tag, with the quoted path.
    virtual void openInActiveCompareWindow(const std::string& quotedPath) = 0;

    // The program the desktop associates with the file; empty when none is found.
    virtual std::string findAssociatedProgram(const std::string& path) = 0;
    // Opens the file with its associated program; returns the task number. Throws
    // RuntimeError.
    virtual long openAssociated(const std::string& program, const std::string& path) = 0;
};

} // namespace pv
