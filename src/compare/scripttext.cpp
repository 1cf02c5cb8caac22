#include "compare/scripttext.h"

namespace pv {

std::string scriptRefusal(std::string_view path) {
    if (path.find_first_of("\r\n") != std::string_view::npos)
        return "the name holds a line break";
    if (path.find('"') != std::string_view::npos)
        return "the name holds a double quote";
    return {};
}

std::string scriptQuoted(std::string_view path) {
    std::string s;
    s.reserve(path.size() + 2);
    for (char c : path) {
        s += c;
        if (c == '%')
            s += '%';
    }
    return s;
}

std::string joinDirName(std::string_view dir, std::string_view name) {
    std::string s(dir);
    if (s.empty() || s.back() != '/')
        s += '/';
    s += name;
    return s;
}

} // namespace pv
