#include "compare/scripttext.h"

namespace pv {

std::string scriptRefusal(std::string_view path) {
    if (path.find_first_of("\r\n") != std::string_view::npos)
        return "the name holds a line break";
    if (path.find('"') != std::string_view::npos)
        return "the name holds a double quote";
    return {};
}

} // namespace pv
