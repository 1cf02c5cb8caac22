#include "pvcmd/wildcard.h"

namespace pvcmd {

namespace {

char fold(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

// Iterative glob match with single-star backtracking: linear in practice.
bool globMatch(std::string_view pattern, std::string_view name) {
    size_t p = 0, n = 0;
    size_t starP = std::string_view::npos, starN = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            starP = p++;
            starN = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || fold(pattern[p]) == fold(name[n]))) {
            ++p;
            ++n;
        } else if (starP != std::string_view::npos) {
            p = starP + 1;
            n = ++starN;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*')
        ++p;
    return p == pattern.size();
}

} // namespace

Wildcard::Wildcard(std::string pattern) : m_pattern(std::move(pattern)) {}

bool Wildcard::matches(std::string_view name) const {
    std::string_view pattern = m_pattern;
    if (globMatch(pattern, name))
        return true;
    if (pattern.size() >= 2 && pattern.substr(pattern.size() - 2) == ".*")
        return name.find('.') == std::string_view::npos &&
               globMatch(pattern.substr(0, pattern.size() - 2), name);
    return false;
}

bool Wildcard::hasWildcard(std::string_view text) {
    return text.find_first_of("*?") != std::string_view::npos;
}

} // namespace pvcmd
