#include "settings/settings.h"
#include "platform/textutil.h"

#include "platform/textfile.h"
#include "settings/inifile.h"

#include <cctype>

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
    std::string text;
    tryReadFileBytes(m_path, text); // a missing file is created by the first write
    try {
        writeFileAtomic(m_path, ini::writeValue(text, section, key, value));
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool IniBool(std::string_view text) { return toUpper(text) == "TRUE"; }

bool IniYes(std::string_view text) { return toUpper(text) != "NO"; }

} // namespace pv
