#pragma once
// Copying the selected file of one pane into the other pane's directory: the
// direction rule, the overwrite test, the confirmation and the copy itself.

#include <optional>
#include <string>
#include <vector>

namespace pv {

// The direction list's items: 0 "left to right", 1 "right to left".
inline constexpr int kLeftToRight = 0;
inline constexpr int kRightToLeft = 1;

extern const char* const kCopySelectFirst;  // "Please select an item form either ..."
extern const char* const kCopySelectTitle;  // "Chose from lists"
extern const char* const kCopyConfirmTitle; // "Copy Confirmation"
extern const char* const kCopyAborted;      // "Aborting copy by client request"
extern const char* const kCopySucceeded;    // "sucessful copy"

// A pane as the copy sees it.
struct CopyPane {
    std::string path;                    // the file list's directory
    std::optional<std::string> selected; // the selected file, if any
    std::vector<std::string> names;      // every file the list shows
};

// The direction list's selection after a click: item 0 when it is selected, else 1.
int normalizeCopyDirection(bool firstItemSelected);

struct CopyPlan {
    int direction = kLeftToRight;
    std::string source;
    std::string destination;
    // The destination list shows the name (any case) or the destination exists.
    bool overwrite = false;
};

// The plan for a press of "Copy Selected"; nullopt when no file is selected or no
// direction is chosen. A selection on one side only decides the direction.
std::optional<CopyPlan> planCopy(const CopyPane& left, const CopyPane& right,
                                 std::optional<int> direction);

// The question asked before the copy.
std::string copyConfirmationText(const CopyPlan& plan);

// The message after a failed copy, with the system's reason.
std::string copyFailedText(int error);

// The whole command: plans, asks, copies and reports through the prompter.
// Returns the direction the list shows afterwards.
std::optional<int> copySelected(const CopyPane& left, const CopyPane& right,
                                std::optional<int> direction);

} // namespace pv
