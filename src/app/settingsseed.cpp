#include "app/settingsseed.h"

#include "settings/settings.h"

#include <filesystem>

namespace pv {

bool seedNewSettingsFile(const Settings& settings) {
    std::error_code ec;
    if (settings.path().empty() || std::filesystem::exists(settings.path(), ec) || ec)
        return false;
    settings.write("APPLICATION", "FILEPATTERNLIST", kSeedPatternList);
    settings.write("EDITORS", "ITEM0", kSeedEditor);
    // A first compare tells changed files apart by their time and length.
    settings.write("COMPARECONTROL", "LIST_DateTime", "True");
    settings.write("COMPARECONTROL", "LIST_Length", "True");
    return true;
}

} // namespace pv
