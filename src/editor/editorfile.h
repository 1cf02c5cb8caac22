#pragma once
// Reading and writing the files of the editor windows.

#include "editor/textcodec.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace pv {

// The Open dialog refuses files of this size or more; a text box this large is
// no longer an editor a person can use.
inline constexpr std::uintmax_t kEditorOpenLimit = 16u * 1024u * 1024u;

// The whole file, decoded. Throws RuntimeError when it cannot be read (a
// directory included).
DecodedText loadEditorFile(const std::string& path);

// Writes the text in its format through a temporary file and a rename, so a
// failed save leaves the old file whole. A symbolic link is kept and its target
// written; an existing file keeps its permissions. Throws RuntimeError.
void saveEditorFile(const std::string& path, std::string_view text, TextFormat& format);

} // namespace pv
