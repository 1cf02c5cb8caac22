#pragma once
// The captions and messages of the editor windows.

#include <string>

namespace pv {

// The caption of a new document.
std::string untitledCaption(int slot);
// A caption that begins with "Untitled" belongs to a document never saved.
bool isNeverSaved(const std::string& caption);

// The question asked before a changed text is closed.
std::string closeQuestion(const std::string& caption);

inline constexpr const char* kCantOpenFile = "Can't open file: ";
inline constexpr const char* kFileTooLarge =
    "The file is too large to open with this tool. Change your editor to NotePad.exe";

} // namespace pv
