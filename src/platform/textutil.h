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

// The length of the valid UTF-8 sequence that starts at `at` (1 to 4), or 0 when
// the byte there does not start one (a stray byte, an overlong form, a surrogate).
inline size_t utf8SequenceLength(std::string_view bytes, size_t at) {
    const unsigned char c = static_cast<unsigned char>(bytes[at]);
    if (c < 0x80)
        return 1;
    const size_t len = (c >> 5) == 0x6 ? 2 : (c >> 4) == 0xE ? 3 : (c >> 3) == 0x1E ? 4 : 0;
    if (len == 0 || at + len > bytes.size())
        return 0;
    unsigned long cp = c & (0xFF >> (len + 1));
    for (size_t k = 1; k < len; ++k) {
        const unsigned char next = static_cast<unsigned char>(bytes[at + k]);
        if ((next & 0xC0) != 0x80)
            return 0;
        cp = (cp << 6) | (next & 0x3F);
    }
    static constexpr unsigned long kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return cp >= kSmallest[len] && cp <= 0x10FFFF && (cp < 0xD800 || cp > 0xDFFF) ? len : 0;
}

} // namespace pv
