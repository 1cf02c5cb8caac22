#pragma once
// The switches a compare reads from the settings file, as one value, and the
// texts built from them: the fc switches of a script line and the editor named
// in a script's last line.

#include <string>
#include <string_view>

namespace pv {

class Settings;

struct CompareOptions {
    // Free-text fc switches, used verbatim by the directory compare.
    std::string fcLb = "/lb100";
    std::string fcNnnn = "/2";
    // On/off fc switches, in the order their texts are written.
    bool fcA = false;
    bool fcB = false;
    bool fcC = false;
    bool fcL = false;
    bool fcN = false;
    bool fcT = false;
    bool fcU = false;
    bool fcW = false;
    // What the attribute text holds (and so what makes two files "different").
    bool listDateTime = false;
    bool listLength = false;
    // Same-named files whose attribute texts agree are also compared byte for byte.
    bool listContents = false;
    // Last-change times this many seconds apart or less count as equal.
    int modifyWindow = 0;
    // Times a whole number of hours apart (1 or 2, give or take the window) count
    // as equal.
    bool ignoreHourShift = false;
    std::string editor = "Write.exe";
};

// Reads every compare switch from section "COMPARECONTROL" and the editor from
// "APPLICATION"; a switch is on when its value is "True" in any letter case.
CompareOptions readCompareOptions(const Settings& settings);

// The switches of a directory-compare fc line, directly after "fc ": each
// free-text switch as it stands plus a blank when not empty, then "/a " ... "/w "
// for the switches that are on.
std::string directoryFcSwitches(const CompareOptions& options);

// The switches handed to the single-file command file: the free-text switches
// with surrounding blanks removed (each followed by a blank when not empty), then
// the on/off switches as above.
std::string singleFcSwitches(const CompareOptions& options);

// The program named in a compare script's last line: the editor setting, except
// that "INTERNAL" (any case) and any name holding a blank give "Write.exe".
std::string scriptEditor(std::string_view editorSetting);

} // namespace pv
