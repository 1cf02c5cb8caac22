#include "platform/runtimeerror.h"

#include <cstring>

namespace pv {

RuntimeError RuntimeError::fromErrno(int err, const std::string& context) {
    std::string text = std::strerror(err);
    if (!context.empty())
        text = context + ": " + text;
    return RuntimeError(err, text);
}

} // namespace pv
