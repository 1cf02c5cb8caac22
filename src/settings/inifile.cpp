#include "settings/inifile.h"

#include "editor/textcodec.h"
#include "platform/textutil.h"

#include <algorithm>
#include <vector>

namespace pv::ini {

namespace {

std::string_view trim(std::string_view s) { return trimBlanks(s, " \t"); }

std::vector<std::string_view> splitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t nl = text.find('\n', start);
        std::size_t end = nl == std::string_view::npos ? text.size() : nl;
        std::string_view line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        lines.push_back(line);
        if (nl == std::string_view::npos)
            break;
        start = nl + 1;
    }
    return lines;
}

// The section name of a "[name]" line, or false when the line is no section header.
bool sectionName(std::string_view line, std::string_view& name) {
    line = trim(line);
    if (line.empty() || line.front() != '[')
        return false;
    std::size_t close = line.find(']');
    name = trim(line.substr(1, close == std::string_view::npos ? std::string_view::npos
                                                                 : close - 1));
    return true;
}

// The key of a "key=value" line, or false when the line holds no "=".
bool keyName(std::string_view line, std::string_view& key, std::string_view& value) {
    std::size_t eq = line.find('=');
    if (eq == std::string_view::npos)
        return false;
    key = trim(line.substr(0, eq));
    value = line.substr(eq + 1);
    return true;
}

bool continuesSequence(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// Cuts after kMaxValueLength characters without splitting a UTF-8 sequence.
std::string_view cutValue(std::string_view v) {
    std::size_t characters = 0;
    for (std::size_t i = 0; i < v.size(); ++i) {
        if (continuesSequence(v[i]))
            continue;
        if (characters == kMaxValueLength)
            return v.substr(0, i);
        ++characters;
    }
    return v;
}

} // namespace

std::size_t characterCount(std::string_view text) {
    std::size_t n = 0;
    for (char c : text)
        n += continuesSequence(c) ? 0 : 1;
    return n;
}

std::string readValue(std::string_view text, std::string_view section, std::string_view key) {
    section = trim(section);
    key = trim(key);
    bool inSection = false;
    bool seenSection = false;
    for (std::string_view line : splitLines(text)) {
        std::string_view name;
        if (sectionName(line, name)) {
            // Only the first section of a name counts, as the platform reads it.
            if (inSection)
                return {};
            inSection = !seenSection && equalsNoCase(name, section);
            seenSection = seenSection || inSection;
            continue;
        }
        if (!inSection)
            continue;
        std::string_view k, v;
        if (keyName(line, k, v) && equalsNoCase(k, key)) {
            if (std::size_t nul = v.find('\0'); nul != std::string_view::npos)
                v = v.substr(0, nul);
            v = trim(v);
            return std::string(trim(cutValue(v)));
        }
    }
    return {};
}

std::string writeValue(std::string_view text, std::string_view section, std::string_view key,
                       std::string_view value) {
    // A line break inside a value would turn the rest of it into a line of its
    // own; keep the file's structure intact by writing blanks instead.
    std::string cleanValue(value);
    for (char& c : cleanValue)
        if (c == '\r' || c == '\n' || c == '\0')
            c = ' ';
    std::string entry = std::string(trim(key)) + "=" + cleanValue;

    std::vector<std::string_view> lines = splitLines(text);
    std::ptrdiff_t sectionLine = -1;
    std::ptrdiff_t lastEntry = -1;
    std::ptrdiff_t keyLine = -1;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string_view name;
        if (sectionName(lines[i], name)) {
            if (sectionLine >= 0)
                break;
            if (equalsNoCase(name, trim(section))) {
                sectionLine = static_cast<std::ptrdiff_t>(i);
                lastEntry = sectionLine;
            }
            continue;
        }
        if (sectionLine < 0)
            continue;
        std::string_view k, v;
        if (keyName(lines[i], k, v)) {
            if (equalsNoCase(k, trim(key))) {
                keyLine = static_cast<std::ptrdiff_t>(i);
                break;
            }
        }
        if (!trim(lines[i]).empty())
            lastEntry = static_cast<std::ptrdiff_t>(i);
    }

    std::string out;
    out.reserve(text.size() + entry.size() + section.size() + 8);
    auto emit = [&out](std::string_view line) {
        out.append(line);
        out.append("\r\n");
    };
    if (sectionLine < 0) {
        for (std::string_view line : lines)
            emit(line);
        emit("[" + std::string(trim(section)) + "]");
        emit(entry);
        return out;
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        auto idx = static_cast<std::ptrdiff_t>(i);
        if (idx == keyLine) {
            emit(entry);
            continue;
        }
        emit(lines[i]);
        if (keyLine < 0 && idx == lastEntry)
            emit(entry);
    }
    return out;
}

namespace {

constexpr std::string_view kUtf8Bom = "\xEF\xBB\xBF";

// Control bytes no settings text holds: everything below a blank but tab, line
// ends, form feed and the old end-of-file mark.
bool isBinaryByte(char c) {
    const auto b = static_cast<unsigned char>(c);
    return b < 0x20 && b != '\t' && b != '\n' && b != '\r' && b != '\f' && b != 0x1A;
}

} // namespace

FileText decodeFile(std::string_view bytes) {
    FileText f;
    if (bytes.substr(0, 2) == "\xFF\xFE" || bytes.substr(0, 2) == "\xFE\xFF") {
        DecodedText d = decodeText(bytes);
        f.text = std::move(d.text);
        f.encoding = d.format.encoding == TextEncoding::Utf16BE ? FileEncoding::Utf16BE
                                                                : FileEncoding::Utf16LE;
    } else if (bytes.substr(0, 3) == kUtf8Bom) {
        f.text = bytes.substr(3);
        f.encoding = FileEncoding::Utf8Bom;
    } else {
        f.text = bytes;
    }
    if (f.text.find('\0') != std::string::npos)
        f.foreign = "it is not a text file (NUL bytes: UTF-16 text needs a byte-order mark)";
    else if (std::any_of(f.text.begin(), f.text.end(), isBinaryByte))
        f.foreign = "it is not a text file (control characters)";
    return f;
}

std::string encodeFile(std::string_view text, FileEncoding encoding) {
    switch (encoding) {
    case FileEncoding::Bytes:
        break;
    case FileEncoding::Utf8Bom:
        return std::string(kUtf8Bom) + std::string(text);
    case FileEncoding::Utf16LE:
    case FileEncoding::Utf16BE: {
        // The text's own CR LF stay as they are.
        TextFormat format{encoding == FileEncoding::Utf16BE ? TextEncoding::Utf16BE
                                                            : TextEncoding::Utf16LE,
                          LineEnd::Lf};
        return encodeText(text, format);
    }
    }
    return std::string(text);
}

std::string nameRefusal(std::string_view name, bool isKey) {
    const std::string_view what = isKey ? "the key" : "the section";
    std::string_view trimmed = trim(name);
    std::string why;
    if (name.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos)
        why = "holds a line break";
    else if (!trimmed.empty() && trimmed.front() == '=')
        why = "begins with \"=\"";
    else if (!trimmed.empty() && trimmed.front() == '[')
        why = "begins with \"[\"";
    else if (name.find(']') != std::string_view::npos)
        why = "holds \"]\"";
    else if (isKey && name.find('=') != std::string_view::npos)
        why = "holds \"=\"";
    return why.empty() ? why : std::string(what) + " " + why;
}

} // namespace pv::ini
