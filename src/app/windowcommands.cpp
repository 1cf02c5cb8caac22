#include "app/windowcommands.h"

namespace pv {

std::string parallelLocation(const std::string& sourceDirectory,
                             const std::string& targetDirectory) {
    const std::size_t slash = sourceDirectory.rfind('/');
    const std::string tail =
        slash == std::string::npos ? sourceDirectory : sourceDirectory.substr(slash);
    return targetDirectory + tail;
}

std::string additionalCompareCaption(int index) {
    return "Additional Pairview:" + std::to_string(index);
}

} // namespace pv
