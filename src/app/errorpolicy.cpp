#include "app/errorpolicy.h"

#include "platform/prompter.h"
#include "platform/runtimeerror.h"

namespace pv {

std::string errorDescription(const std::exception& e) { return e.what(); }

int errorNumber(const std::exception& e) {
    if (auto* r = dynamic_cast<const RuntimeError*>(&e))
        return r->number();
    return 0;
}

bool skipOnError(const std::function<void()>& step) {
    try {
        step();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void dispatchCommand(const std::string& caption, const std::function<void()>& command) {
    try {
        command();
    } catch (const std::exception& e) {
        prompter().message(caption + "\r\n" + errorDescription(e));
    }
}

} // namespace pv
