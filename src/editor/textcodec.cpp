#include "editor/textcodec.h"

#include <vector>

namespace pv {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += char(c);
    } else if (c < 0x800) {
        out += char(0xC0 | (c >> 6));
        out += char(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += char(0xE0 | (c >> 12));
        out += char(0x80 | ((c >> 6) & 0x3F));
        out += char(0x80 | (c & 0x3F));
    } else {
        out += char(0xF0 | (c >> 18));
        out += char(0x80 | ((c >> 12) & 0x3F));
        out += char(0x80 | ((c >> 6) & 0x3F));
        out += char(0x80 | (c & 0x3F));
    }
}

// The length of the valid UTF-8 sequence at `i` and its code point, or 0 when the
// bytes there are not one (overlong forms, surrogates and values past U+10FFFF
// included).
size_t utf8Sequence(std::string_view s, size_t i, char32_t& c) {
    const auto b = [&](size_t k) { return static_cast<unsigned char>(s[k]); };
    const unsigned char lead = b(i);
    size_t n;
    char32_t min;
    if (lead < 0x80) {
        c = lead;
        return 1;
    } else if ((lead & 0xE0) == 0xC0) {
        n = 2, c = lead & 0x1F, min = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        n = 3, c = lead & 0x0F, min = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        n = 4, c = lead & 0x07, min = 0x10000;
    } else {
        return 0;
    }
    if (i + n > s.size())
        return 0;
    for (size_t k = 1; k < n; ++k) {
        if ((b(i + k) & 0xC0) != 0x80)
            return 0;
        c = (c << 6) | (b(i + k) & 0x3F);
    }
    if (c < min || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
        return 0;
    return n;
}

// Code points of a valid UTF-8 text (the editor's own text always is).
std::vector<char32_t> codePoints(std::string_view s) {
    std::vector<char32_t> out;
    for (size_t i = 0; i < s.size();) {
        char32_t c;
        size_t n = utf8Sequence(s, i, c);
        if (n == 0) {
            c = kReplacement;
            n = 1;
        }
        out.push_back(c);
        i += n;
    }
    return out;
}

std::string fromUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string units;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto hi = static_cast<unsigned char>(bytes[bigEndian ? i : i + 1]);
        const auto lo = static_cast<unsigned char>(bytes[bigEndian ? i + 1 : i]);
        units += char16_t((hi << 8) | lo);
    }
    std::string out = utf16ToUtf8(units);
    if (bytes.size() % 2 != 0) // a lone last byte is not a character
        appendUtf8(out, kReplacement);
    return out;
}

LineEnd detectLineEnd(std::string_view text) {
    const size_t k = text.find_first_of("\r\n");
    if (k == std::string_view::npos)
        return LineEnd::CrLf;
    if (text[k] == '\n')
        return LineEnd::Lf;
    return k + 1 < text.size() && text[k + 1] == '\n' ? LineEnd::CrLf : LineEnd::Cr;
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string out;
    size_t pos = 0;
    for (size_t k; (k = text.find(from, pos)) != std::string_view::npos; pos = k + from.size()) {
        out.append(text.substr(pos, k - pos));
        out.append(to);
    }
    out.append(text.substr(pos));
    return out;
}

} // namespace

std::string utf16ToUtf8(std::u16string_view text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] <= 0xDFFF)
            c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
        else if (c >= 0xD800 && c <= 0xDFFF)
            c = kReplacement;
        appendUtf8(out, c);
    }
    return out;
}

std::string formatDescription(const TextFormat& format) {
    const char* encoding = "UTF-8";
    switch (format.encoding) {
    case TextEncoding::Utf8:
        break;
    case TextEncoding::Utf8Bom:
        encoding = "UTF-8 with BOM";
        break;
    case TextEncoding::Utf16LE:
        encoding = "UTF-16 LE";
        break;
    case TextEncoding::Utf16BE:
        encoding = "UTF-16 BE";
        break;
    case TextEncoding::Latin1:
        encoding = "Latin-1";
        break;
    }
    const char* lineEnd = format.lineEnd == LineEnd::CrLf ? "CR LF"
                          : format.lineEnd == LineEnd::Lf ? "LF"
                                                          : "CR";
    return std::string(encoding) + ", " + lineEnd;
}

bool isValidUtf8(std::string_view bytes) {
    char32_t c;
    for (size_t i = 0, n; i < bytes.size(); i += n)
        if ((n = utf8Sequence(bytes, i, c)) == 0)
            return false;
    return true;
}

DecodedText decodeText(std::string_view bytes) {
    DecodedText d;
    std::string text;
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF" && isValidUtf8(bytes)) {
        d.format.encoding = TextEncoding::Utf8Bom;
        text = bytes.substr(3);
    } else if (bytes.substr(0, 2) == "\xFF\xFE") {
        d.format.encoding = TextEncoding::Utf16LE;
        text = fromUtf16(bytes.substr(2), false);
    } else if (bytes.substr(0, 2) == "\xFE\xFF") {
        d.format.encoding = TextEncoding::Utf16BE;
        text = fromUtf16(bytes.substr(2), true);
    } else if (isValidUtf8(bytes)) {
        text = bytes;
    } else {
        d.format.encoding = TextEncoding::Latin1;
        for (char b : bytes)
            appendUtf8(text, static_cast<unsigned char>(b));
    }
    d.format.lineEnd = detectLineEnd(text);
    switch (d.format.lineEnd) {
    case LineEnd::CrLf:
        d.text = replaceAll(text, "\r\n", "\n");
        break;
    case LineEnd::Cr:
        d.text = replaceAll(text, "\r", "\n");
        break;
    case LineEnd::Lf:
        d.text = std::move(text);
        break;
    }
    return d;
}

std::string encodeText(std::string_view text, TextFormat& format) {
    const std::string lines = format.lineEnd == LineEnd::Lf   ? std::string(text)
                              : format.lineEnd == LineEnd::Cr ? replaceAll(text, "\n", "\r")
                                                              : replaceAll(text, "\n", "\r\n");
    switch (format.encoding) {
    case TextEncoding::Utf8:
        return lines;
    case TextEncoding::Utf8Bom:
        return "\xEF\xBB\xBF" + lines;
    case TextEncoding::Latin1: {
        std::string out;
        for (char32_t c : codePoints(lines)) {
            if (c > 0xFF) {
                format.encoding = TextEncoding::Utf8;
                return lines;
            }
            out += char(c);
        }
        return out;
    }
    case TextEncoding::Utf16LE:
    case TextEncoding::Utf16BE: {
        const bool be = format.encoding == TextEncoding::Utf16BE;
        std::string out = be ? "\xFE\xFF" : "\xFF\xFE";
        const auto unit = [&](char32_t u) {
            const char hi = char((u >> 8) & 0xFF), lo = char(u & 0xFF);
            out += be ? hi : lo;
            out += be ? lo : hi;
        };
        for (char32_t c : codePoints(lines)) {
            if (c >= 0x10000) {
                unit(0xD800 + ((c - 0x10000) >> 10));
                unit(0xDC00 + ((c - 0x10000) & 0x3FF));
            } else {
                unit(c);
            }
        }
        return out;
    }
    }
    return lines;
}

} // namespace pv
