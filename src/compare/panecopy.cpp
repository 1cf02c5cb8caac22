#include "compare/panecopy.h"

#include "compare/filelisting.h"
#include "platform/filecopy.h"
#include "platform/prompter.h"
#include "platform/runtimeerror.h"
#include "platform/textutil.h"

#include <sys/stat.h>

namespace pv {

const char* const kCopySelectFirst = "Please select an item form either of the file lists";
const char* const kCopySelectTitle = "Chose from lists";
const char* const kCopyConfirmTitle = "Copy Confirmation";
const char* const kCopyAborted = "Aborting copy by client request";
const char* const kCopySucceeded = "sucessful copy";

int normalizeCopyDirection(bool firstItemSelected) {
    return firstItemSelected ? kLeftToRight : kRightToLeft;
}

std::optional<CopyPlan> planCopy(const CopyPane& left, const CopyPane& right,
                                 std::optional<int> direction) {
    if ((!left.selected && !right.selected) || !direction)
        return std::nullopt;
    CopyPlan plan;
    plan.direction = *direction;
    if (!left.selected)
        plan.direction = kRightToLeft;
    else if (!right.selected)
        plan.direction = kLeftToRight;
    const CopyPane& from = plan.direction == kLeftToRight ? left : right;
    const CopyPane& to = plan.direction == kLeftToRight ? right : left;
    const std::string& name = *from.selected;
    plan.source = joinPath(from.path, name);
    plan.destination = joinPath(to.path, name);
    const std::string upper = toUpper(name);
    for (const std::string& existing : to.names)
        if (toUpper(existing) == upper)
            plan.overwrite = true;
    // The list may be older than the directory: a script or another program may
    // have made the file since it was read.
    struct stat st {};
    if (::lstat(plan.destination.c_str(), &st) == 0)
        plan.overwrite = true;
    return plan;
}

std::string copyConfirmationText(const CopyPlan& plan) {
    std::string text = "Confirm copy of " + plan.source + "\r\nTo " + plan.destination + "\r\n";
    if (plan.overwrite)
        text += "\r\n!!! THE DESTINATION file will be OVERLAYED !!!";
    return text;
}

std::string copyFailedText(int error) {
    return "failed 0\r\nresult 0\r\n" + RuntimeError::fromErrno(error).description();
}

std::optional<int> copySelected(const CopyPane& left, const CopyPane& right,
                                std::optional<int> direction) {
    const std::optional<CopyPlan> plan = planCopy(left, right, direction);
    if (!plan) {
        prompter().message(kCopySelectFirst, kCopySelectTitle, MessageIcon::Critical);
        return direction;
    }
    if (!prompter().confirm(copyConfirmationText(*plan), kCopyConfirmTitle)) {
        prompter().message(kCopyAborted);
        return plan->direction;
    }
    const FileCopyResult result = copyFileReplacing(plan->source, plan->destination);
    if (result.ok)
        prompter().message(kCopySucceeded);
    else
        prompter().message(copyFailedText(result.error));
    return plan->direction;
}

} // namespace pv
