#include "editor/editortexts.h"

#include <algorithm>

namespace pv {

std::string untitledCaption(int slot) {
    return "Untitled:" + std::to_string(slot);
}

bool isNeverSaved(const std::string& caption) {
    return caption.rfind("Untitled", 0) == 0;
}

std::string closeQuestion(const std::string& caption) {
    return "The text in [" + caption + "] has changed.\r\nDo you want to save the changes?";
}

} // namespace pv
