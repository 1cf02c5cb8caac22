#include "platform/wildcard.h"

namespace pv {

namespace {

char fold(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

// Iterative match with one back-tracking point for the last "*": linear in
// practice and never exponential for hostile masks such as "*a*a*a*a*b".
bool globMatch(std::string_view name, std::string_view pattern) {
    std::size_t n = 0, p = 0, starP = std::string_view::npos, starN = 0;
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

bool wildcardMatch(std::string_view name, std::string_view pattern) {
    if (pattern == "*.*" || pattern == "*")
        return true;
    if (globMatch(name, pattern))
        return true;
    // Without an extension a name still fits "x.*", and "*." asks for exactly that.
    if (name.find('.') != std::string_view::npos)
        return false;
    if (pattern.size() > 2 && pattern.substr(pattern.size() - 2) == ".*")
        return globMatch(name, pattern.substr(0, pattern.size() - 2));
    return pattern.size() > 1 && pattern.back() == '.' &&
           globMatch(name, pattern.substr(0, pattern.size() - 1));
}

bool hasWildcard(std::string_view text) {
    return text.find_first_of("*?") != std::string_view::npos;
}

} // namespace pv
