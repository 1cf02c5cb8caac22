#pragma once
// The private-profile format on bytes: the reader and the writer work on the
// file's text, so they are tested without touching disk.

#include <string>
#include <string_view>

namespace pv::ini {

// Longest value a read returns, as the platform's 255-character read buffer allows.
inline constexpr std::size_t kMaxValueLength = 254;

// The value of the first matching key in the first matching section (names
// compared without regard to ASCII case), cut at a NUL and at kMaxValueLength,
// surrounding blanks and tabs trimmed. Empty when not found.
std::string readValue(std::string_view text, std::string_view section, std::string_view key);

// The text with KEY=value set: an existing key's line is replaced in place; a new
// key goes after the last entry of its section; a new section is added at the end.
// Every other line is kept; all line ends come out as CR LF.
std::string writeValue(std::string_view text, std::string_view section, std::string_view key,
                       std::string_view value);

} // namespace pv::ini
