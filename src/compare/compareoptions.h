#pragma once
// The switches a compare reads from the settings file, as one value, and the
// texts built from them: the fc switches of a script line and the editor named
// in a script's last line.

#include <string>
#include <string_view>
#include <vector>

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

// The program named in a script's last line, which opens the script's report:
// the editor setting, except that "INTERNAL" (any case) gives "pairview --open"
// (the report opens in the running Pairview's own editor) and any other name
// holding a blank gives "Write.exe".
std::string scriptEditor(std::string_view editorSetting);

// The environment a started command file gets so that its "Write.exe" opens the
// report where the editor setting says: with "INTERNAL" (any case) it is handed
// to the running Pairview (`pairviewPath` --open); otherwise nothing is added.
std::vector<std::string> scriptEnvironment(std::string_view editorSetting,
                                           const std::string& pairviewPath);

} // namespace pv
