#pragma once
// What a new settings file starts with: the longer file-pattern list, an
// editors list, so that a first start offers more than "*.*" and a user who
// picks another editor can go back to "Write.exe" from the list, and the compare
// on time and length switched on, so that a first compare finds changed files.

#include <string_view>

namespace pv {

class Settings;

inline constexpr std::string_view kSeedPatternList =
    "*.*,*.asp,*.cls,*.dll,*.frm,*.inc,*.ini,*.txt,*.java,*.doc,*.wri,*.aspx,*.cs,"
    "*.aspx;*.cs,*.cpp;*.h,*.py";
inline constexpr std::string_view kSeedEditor = "Write.exe";

// Writes "APPLICATION"/"FILEPATTERNLIST", "EDITORS"/"ITEM0" and
// "COMPARECONTROL"/"LIST_DateTime" and "LIST_Length" ("True") when the settings
// file does not exist yet; a file that exists, even an empty one, is left as it
// is. Returns true when it seeded the file.
bool seedNewSettingsFile(const Settings& settings);

} // namespace pv
