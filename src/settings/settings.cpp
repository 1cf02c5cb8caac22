#include "settings/settings.h"
#include "platform/textutil.h"

#include "platform/textfile.h"
#include "settings/inifile.h"

#include <cctype>
#include <filesystem>

namespace pv {

std::string Settings::read(std::string_view section, std::string_view key) const {
    std::string text;
    if (m_path.empty() || !tryReadFileBytes(m_path, text))
        return {};
    return ini::readValue(text, section, key);
}

std::string Settings::GetIniValue(std::string_view section, std::string_view key,
                                  std::string_view def) const {
    std::string value = read(section, key);
    return value.empty() ? std::string(def) : value;
}

std::string Settings::GetIniValueMin2(std::string_view section, std::string_view key,
                                      std::string_view def) const {
    std::string value = read(section, key);
    return ini::characterCount(value) < 2 ? std::string(def) : value;
}

bool Settings::write(std::string_view section, std::string_view key,
                     std::string_view value) const {
    if (m_path.empty())
        return false;
    // The file is replaced by renaming a new one over it; a settings file that is a
    // symbolic link must stay one, so the link's target is what gets replaced.
    std::string target = m_path;
    std::error_code ec;
    if (std::filesystem::is_symlink(target, ec)) {
        std::filesystem::path resolved = std::filesystem::weakly_canonical(target, ec);
        if (!ec)
            target = resolved.string();
    }
    std::string text;
    tryReadFileBytes(target, text); // a missing file is created by the first write
    try {
        writeFileAtomic(target, ini::writeValue(text, section, key, value));
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool IniBool(std::string_view text) { return toUpper(text) == "TRUE"; }

bool IniYes(std::string_view text) { return toUpper(text) != "NO"; }

} // namespace pv
