#pragma once
// What the about box shows and how it starts the desktop's system-information
// program.

#include "settings/settings.h"

#include <functional>
#include <string>

namespace pv {

extern const char* const kAboutDescription;
extern const char* const kAboutDisclaimer;
extern const char* const kSysInfoUnavailable; // "System Information Is Unavailable At This Time"

// "Version " and the program's version.
std::string aboutVersionText();

// "Documentation:" and, for each documented section in order, CR LF CR LF and its
// text from "DOCUMENTATION" ("empty" when missing).
std::string documentationText(const Settings& settings);

// The system-information program: $PAIRVIEW_SYSINFO when set, else the first of
// kinfocenter, hardinfo and gnome-system-monitor that `onPath` finds; "" for none.
std::string sysInfoProgram(const std::function<bool(const std::string&)>& onPath);

// Starts the system-information program, or says it is unavailable.
void StartSysInfo();

} // namespace pv
