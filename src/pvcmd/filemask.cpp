#include "pvcmd/filemask.h"

#include "platform/wildcard.h"

#include <algorithm>
#include <dirent.h>
#include <sys/stat.h>

namespace pvcmd {

FileMask::FileMask(std::string mask) {
    size_t slash = mask.rfind('/');
    if (slash == std::string::npos) {
        m_pattern = std::move(mask);
    } else {
        m_directory = mask.substr(0, slash + 1);
        m_pattern = mask.substr(slash + 1);
    }
}

bool FileMask::hasWildcard(const std::string& text) { return pv::hasWildcard(text); }

bool FileMask::matches(const std::string& name) const { return pv::wildcardMatch(name, m_pattern); }

std::vector<std::string> FileMask::expand() const {
    std::vector<std::string> names;
    std::string dirPath = m_directory.empty() ? std::string(".") : m_directory;
    DIR* dir = ::opendir(dirPath.c_str());
    if (!dir)
        return {};
    while (const dirent* entry = ::readdir(dir)) {
        std::string name = entry->d_name;
        if (name == "." || name == ".." || !matches(name))
            continue;
        struct stat st {};
        if (::stat((m_directory + name).c_str(), &st) != 0 || !S_ISREG(st.st_mode))
            continue;
        names.push_back(name);
    }
    ::closedir(dir);
    std::sort(names.begin(), names.end());
    for (std::string& name : names)
        name = m_directory + name;
    return names;
}

std::string FileMask::mapName(const std::string& mask, const std::string& source) {
    std::string result;
    size_t s = 0;
    for (size_t i = 0; i < mask.size(); ++i) {
        char c = mask[i];
        if (c == '?') {
            if (s < source.size())
                result += source[s++];
        } else if (c == '*') {
            size_t next = i + 1;
            while (next < mask.size() && (mask[next] == '*' || mask[next] == '?'))
                ++next;
            size_t stop = source.size();
            if (next < mask.size()) {
                size_t found = source.rfind(mask[next]);
                if (found != std::string::npos && found >= s)
                    stop = found;
            }
            result += source.substr(s, stop - s);
            s = stop;
        } else {
            result += c;
            if (s < source.size())
                ++s;
        }
    }
    // "name.*" against a source without an extension leaves a dangling dot.
    if (!result.empty() && result.back() == '.')
        result.pop_back();
    return result;
}

} // namespace pvcmd
