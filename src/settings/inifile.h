#pragma once
// The private-profile format on bytes: the reader and the writer work on the
// file's text, so they are tested without touching disk.

#include <string>
#include <string_view>

namespace pv::ini {

// Longest value a read returns, in characters, as the platform's 255-character
// read buffer allows. The file is UTF-8 where the platform's was one byte per
// character, so characters are counted, not bytes: a long non-ASCII path reads
// back whole as long as it has no more than 254 characters.
inline constexpr std::size_t kMaxValueLength = 254;

// The number of characters of UTF-8 text (bytes that do not continue a sequence).
std::size_t characterCount(std::string_view text);

// The value of the first matching key in the first matching section (names
// compared without regard to ASCII case), cut at a NUL and at kMaxValueLength characters,
// surrounding blanks and tabs trimmed. Empty when not found.
std::string readValue(std::string_view text, std::string_view section, std::string_view key);

// The text with KEY=value set: an existing key's line is replaced in place; a new
// key goes after the last entry of its section; a new section is added at the end.
// Every other line is kept; all line ends come out as CR LF.
std::string writeValue(std::string_view text, std::string_view section, std::string_view key,
                       std::string_view value);

// How a settings file's bytes are stored: as they are (UTF-8 or the system's
// 8-bit code page), or with a byte-order mark the file is written back with.
enum class FileEncoding { Bytes, Utf8Bom, Utf16LE, Utf16BE };

struct FileText {
    std::string text; // what readValue and writeValue work on
    FileEncoding encoding = FileEncoding::Bytes;
    // Why the bytes are not text this reader understands (binary data, UTF-16
    // without a byte-order mark), or empty.
    std::string foreign;
};

FileText decodeFile(std::string_view bytes);
// The bytes of a text in the encoding it was read in.
std::string encodeFile(std::string_view text, FileEncoding encoding);

// Why a section or key name cannot be written, or empty: a line break, a NUL
// byte, "=" or "[" at its start or "]" in it would let the name add lines or
// sections to the file. A key name may not hold "=" anywhere either: the reader
// would end the name there and never find it again.
std::string nameRefusal(std::string_view name, bool isKey);

} // namespace pv::ini
