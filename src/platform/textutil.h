#pragma once
// Small text and path helpers with the program's rules: letter case folds ASCII
// letters only (names are compared by character code, whatever the locale), and
// trimming removes blanks, not tabs, unless told otherwise.

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace pv {

inline std::string toUpper(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return out;
}

inline std::string toLower(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return out;
}

inline std::string_view trimBlanks(std::string_view text, std::string_view blanks = " ") {
    std::size_t b = text.find_first_not_of(blanks);
    if (b == std::string_view::npos)
        return {};
    return text.substr(b, text.find_last_not_of(blanks) - b + 1);
}

inline bool equalsNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        char x = a[i], y = b[i];
        if (x >= 'a' && x <= 'z')
            x = static_cast<char>(x - 'a' + 'A');
        if (y >= 'a' && y <= 'z')
            y = static_cast<char>(y - 'a' + 'A');
        if (x != y)
            return false;
    }
    return true;
}

inline bool startsWithNoCase(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() && equalsNoCase(text.substr(0, prefix.size()), prefix);
}

// True when `path` names a directory, following symbolic links.
inline bool isDirectory(const std::string& path) {
    struct stat st {};
    return !path.empty() && ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

// `dir` + "/" + `name`, without doubling a separator; an empty or "." directory
// gives the name alone.
inline std::string joinPath(std::string_view dir, std::string_view name) {
    if (dir.empty() || dir == ".")
        return std::string(name);
    std::string out(dir);
    if (out.back() != '/')
        out += '/';
    out += name;
    return out;
}

} // namespace pv
