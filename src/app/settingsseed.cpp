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
    return true;
}

} // namespace pv
