#pragma once
// Small text helpers with the program's rules: letter case folds ASCII letters only
// (names are compared by character code), and trimming removes blanks, not tabs.

#include <string>
#include <string_view>

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
    return a.size() == b.size() && toUpper(a) == toUpper(b);
}

} // namespace pv
