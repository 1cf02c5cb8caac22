#pragma once
// Where the main window stood when it was last closed, kept in the settings file in
// a section of its own ("MAINWINDOW", key "PLACEMENT": "x,y,width,height,maximized").

#include "settings/settings.h"

#include <optional>
#include <string>

namespace pv {

struct WindowPlacement {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool maximized = false;

    bool operator==(const WindowPlacement&) const = default;
};

// The stored placement, or nullopt when there is none or it is damaged (a window
// smaller than 200 by 150 counts as damaged: it would be lost on the screen).
std::optional<WindowPlacement> readWindowPlacement(const Settings& settings);
void writeWindowPlacement(const Settings& settings, const WindowPlacement& placement);

} // namespace pv
