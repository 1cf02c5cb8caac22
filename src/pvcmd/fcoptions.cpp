#include "pvcmd/fcoptions.h"

#include <cctype>

namespace pvcmd {

namespace {

// Parses a decimal count in 1..kMaxLines; false for anything else.
bool parseCount(const std::string& digits, int& value) {
    if (digits.empty() || digits.size() > 6)
        return false;
    int n = 0;
    for (char c : digits) {
        if (c < '0' || c > '9')
            return false;
        n = n * 10 + (c - '0');
    }
    if (n < 1 || n > FcOptions::kMaxLines)
        return false;
    value = n;
    return true;
}

} // namespace

FcOptions::Switch FcOptions::apply(const std::string& word, bool looksLikePath) {
    if (word.size() < 2 || word[0] != '/')
        return Switch::NotASwitch;
    std::string name;
    for (size_t i = 1; i < word.size(); ++i)
        name += static_cast<char>(std::tolower(static_cast<unsigned char>(word[i])));

    if (name == "?")
        return Switch::Help;
    if (name.size() == 1) {
        switch (name[0]) {
        case 'a':
            abbreviate = true;
            return Switch::Applied;
        case 'b':
            binary = true;
            return Switch::Applied;
        case 'c':
            ignoreCase = true;
            return Switch::Applied;
        case 'l':
            forceText = true;
            return Switch::Applied;
        case 'n':
            lineNumbers = true;
            return Switch::Applied;
        case 't':
            keepTabs = true;
            return Switch::Applied;
        case 'u':
            unicode = true;
            return Switch::Applied;
        case 'w':
            compressBlanks = true;
            return Switch::Applied;
        default:
            break;
        }
    }
    if (name == "off" || name == "offline")
        return Switch::Applied; // offline files mean nothing on POSIX
    if (name.size() > 2 && name.compare(0, 2, "lb") == 0 && parseCount(name.substr(2), lineBuffer))
        return Switch::Applied;
    if (parseCount(name, resyncLines))
        return Switch::Applied;
    if (looksLikePath || name.find('/') != std::string::npos)
        return Switch::NotASwitch;
    return Switch::Invalid;
}

} // namespace pvcmd
