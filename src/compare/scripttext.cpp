#include "compare/scripttext.h"

#include "platform/prompter.h"
#include "platform/textutil.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace pv {

std::string scriptRefusal(std::string_view path) {
    if (path.find_first_of("\r\n") != std::string_view::npos)
        return "the name holds a line break";
    if (path.find('"') != std::string_view::npos)
        return "the name holds a double quote";
    return {};
}

std::string scriptArgument(std::string_view path) {
    size_t trailing = 0;
    while (trailing < path.size() && path[path.size() - 1 - trailing] == '\\')
        ++trailing;
    return "\"" + std::string(path) + std::string(trailing, '\\') + "\"";
}

std::string scriptTextRefusal(std::string_view text) {
    if (text.find_first_of("\r\n") != std::string_view::npos)
        return "the text holds a line break";
    if (std::count(text.begin(), text.end(), '"') % 2 != 0)
        return "the text holds an unmatched double quote";
    return {};
}

std::string scriptEscaped(std::string_view text) {
    std::string out;
    out.reserve(text.size() + 8);
    bool quoted = false;
    for (char c : text) {
        if (c == '"')
            quoted = !quoted;
        else if (!quoted && c == '%')
            out += '%';
        else if (!quoted && std::string_view("^<>|&").find(c) != std::string_view::npos)
            out += '^';
        out += c;
    }
    return out;
}

namespace {

bool allDigits(std::string_view s) {
    return !s.empty() && std::all_of(s.begin(), s.end(), [](char c) {
        return std::isdigit(static_cast<unsigned char>(c)) != 0;
    });
}

} // namespace

std::string wellFormedFcSwitch(std::string_view key, std::string_view text) {
    const std::string upper = toUpper(text);
    const bool lineBuffer = toUpper(key) == "FC_LB";
    const bool wellFormed =
        text.empty() || (lineBuffer ? upper.rfind("/LB", 0) == 0 && allDigits(text.substr(3))
                                    : text.front() == '/' && allDigits(text.substr(1)));
    if (wellFormed)
        return std::string(text);
    static std::set<std::string> reported;
    std::string entry = std::string(key) + "=" + std::string(text);
    if (reported.insert(entry).second)
        prompter().message("Ignored fc switch from the settings file: " + entry, kProgramTitle,
                           MessageIcon::Exclamation);
    return {};
}

} // namespace pv
