#pragma once
// The main window's way into the side-by-side window: the View item
// "Compare_Results_Side_by_Side" shows the pair selected in the active compare
// window (the pair "Compare Single" would compare).

#include <string_view>

namespace pv {

class MDIForm1;

inline constexpr std::string_view kSelectBothFiles =
    "Select a file in both file lists to see the pair side by side.";

void connectSideBySideCommands(MDIForm1& frame);

// Opens the side-by-side window for the active compare window's selected pair.
// Throws RuntimeError (kSelectBothFiles) without a file selected on both sides.
void ShowCompareResults_SideBySide_Click();

} // namespace pv
