#pragma once
// The main window's way into the side-by-side window: the View item
// "Compare_Results_Side_by_Side" shows the pair selected in the active compare
// window (the pair "Compare Single" would compare).

namespace pv {

class MDIForm1;

void connectSideBySideCommands(MDIForm1& frame);

// Opens the side-by-side window for the active compare window's selected pair;
// without a file selected on both sides it says so.
void ShowCompareResults_SideBySide_Click();

} // namespace pv
