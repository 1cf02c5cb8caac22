#pragma once
// The bytes of a text file and the text an editor window holds. A file is read as
// UTF-8, or UTF-16 / UTF-8 with a byte-order mark; bytes that are not valid UTF-8
// are read as Latin-1, so every byte comes back on saving. The line end is the
// one the file uses; the editor's text has "\n" only.

#include <string>
#include <string_view>

namespace pv {

enum class TextEncoding { Utf8, Utf8Bom, Utf16LE, Utf16BE, Latin1 };
enum class LineEnd { CrLf, Lf, Cr };

// How a text is written back. A new document is UTF-8 with CR LF.
struct TextFormat {
    TextEncoding encoding = TextEncoding::Utf8;
    LineEnd lineEnd = LineEnd::CrLf;
    bool operator==(const TextFormat&) const = default;
};

struct DecodedText {
    std::string text; // UTF-8, "\n" line ends
    TextFormat format;
};

DecodedText decodeText(std::string_view bytes);

// The bytes of a text in a format. A text that Latin-1 cannot hold is written
// as UTF-8, and `format` says so afterwards.
std::string encodeText(std::string_view text, TextFormat& format);

// "UTF-8, CR LF", "Latin-1, LF", ...: how a document will be saved.
std::string formatDescription(const TextFormat& format);

std::string utf16ToUtf8(std::u16string_view text);
bool isValidUtf8(std::string_view bytes);

} // namespace pv
