#include "compare/scripttext.h"

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

} // namespace pv
