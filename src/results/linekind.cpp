#include "results/linekind.h"
#include "compare/fileattributes.h"
#include "platform/textutil.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace pv {

namespace {

constexpr size_t kTagWidth = 12;

struct Tag {
    std::string_view text;
    LineKind kind;
    bool leftEntry; // the line shows the left list's entry
};
constexpr std::array<Tag, 6> kTags{{
    {"-matched-   ", LineKind::Matched, true},
    {"-different- ", LineKind::Different, true},
    {"-one only-  ", LineKind::OneOnly, true},
    {"-two maxed- ", LineKind::OneOnly, true},
    {"-two only-  ", LineKind::TwoOnly, false},
    {"-one maxed- ", LineKind::TwoOnly, false},
}};

std::string_view rtrimmed(std::string_view s) {
    size_t e = s.find_last_not_of(' ');
    return e == std::string_view::npos ? std::string_view() : s.substr(0, e + 1);
}

// A sequence column: digits, then blanks up to `width`.
bool isSequenceField(std::string_view field) {
    // Plain loops: every line of a big compare passes through here.
    size_t i = 0;
    while (i < field.size() && field[i] >= '0' && field[i] <= '9')
        ++i;
    if (i == 0)
        return false;
    while (i < field.size() && field[i] == ' ')
        ++i;
    return i == field.size();
}

bool fitsAttributeColumn(std::string_view column) {
    return column.back() == ' ' && rtrimmed(column).find("  ") == std::string_view::npos;
}

// The shape of an attribute text, a letter per blank-separated word: D a date
// (2026\05\07), T a time, - the dash before the length, N a number, M a
// content marker ([contents]), W any other word (a failure text).
std::string shapeOf(std::string_view text) {
    std::string shape;
    for (size_t i = 0; i < text.size();) {
        // A marker is one word, blanks and all ("[not read]").
        size_t end = text[i] == '[' ? text.find(']', i) : i;
        end = end == std::string_view::npos ? end : text.find(' ', end);
        std::string_view word = text.substr(i, end == std::string_view::npos ? end : end - i);
        if (!word.empty())
            shape += word.find('\\') != std::string_view::npos ? 'D'
                     : word.find(':') != std::string_view::npos  ? 'T'
                     : word == "-"                               ? '-'
                     : word.front() == '['                       ? 'M'
                     : word.find_first_not_of("0123456789") == std::string_view::npos ? 'N'
                                                                                      : 'W';
        i = end == std::string_view::npos ? text.size() : end + 1;
    }
    return shape;
}

// Whether a column holds what an attribute text can be: nothing, date and time,
// with or without the length, the length alone (each perhaps followed by a
// content marker), or one of the failure texts.
bool attributeText(std::string_view column, std::string shape) {
    const std::string_view text = trimBlanks(column);
    for (std::string_view failure : {kCantFind, kCantOpen, kNotAvailable, kUnavailable})
        if (text == failure)
            return true;
    while (!shape.empty() && shape.back() == 'M')
        shape.pop_back();
    return shape.empty() || shape == "DT" || shape == "DT-N" || shape == "-N";
}

// Both attribute columns of a matched or different line are padded to one width
// (the block's longest attribute plus one). Attribute texts never hold two blanks
// in a row nor end in one, and both sides come from the same switches, so they
// have the same shape; a failure text on one side breaks that, so a second pass
// takes any two texts that each have the shape of an attribute text. The
// narrowest width that fits is taken.
bool splitPair(std::string_view rest, bool matched, EntryFields& out) {
    for (bool sameShape : {true, false})
        for (size_t width = 1; 2 * width < rest.size(); ++width) {
            std::string_view a1 = rest.substr(0, width), a2 = rest.substr(width, width);
            if (!fitsAttributeColumn(a1) || !fitsAttributeColumn(a2))
                continue;
            const std::string s1 = shapeOf(a1), s2 = shapeOf(a2);
            if (!attributeText(a1, s1) || !attributeText(a2, s2) ||
                (sameShape && (s1 != s2 || (a1.front() == ' ') != (a2.front() == ' '))))
                continue;
            if (matched && trimBlanks(a1) != trimBlanks(a2))
                continue;
            std::string_view name = trimBlanks(rest.substr(2 * width));
            if (name.empty())
                continue;
            out.attributes1 = rtrimmed(a1);
            out.attributes2 = rtrimmed(a2);
            out.name = name;
            return true;
        }
    return false;
}

bool startsWith(std::string_view s, std::string_view prefix) {
    return s.substr(0, prefix.size()) == prefix;
}

// The tag of an entry line and where its attribute columns start; null when
// the line is not an entry line.
const Tag* entryTag(std::string_view line, size_t& restStart) {
    size_t width = line.find('-');
    if (width == std::string_view::npos || width == 0 || !isSequenceField(line.substr(0, width)))
        return nullptr;
    std::string_view tagText = line.substr(width, kTagWidth);
    // The tags differ in their second or sixth character; one full compare follows.
    auto tag = std::find_if(kTags.begin(), kTags.end(), [&](const Tag& t) {
        return tagText.size() == kTagWidth && t.text[1] == tagText[1] &&
               t.text[5] == tagText[5] && t.text == tagText;
    });
    size_t second = width + kTagWidth;
    if (tag == kTags.end() || line.size() < second + width ||
        !isSequenceField(line.substr(second, width)))
        return nullptr;
    restStart = second + width;
    return &*tag;
}

} // namespace

EntryFields entryFields(std::string_view line) {
    EntryFields out;
    size_t restStart = 0;
    const Tag* tag = entryTag(line, restStart);
    if (!tag)
        return out;
    std::string_view rest = line.substr(restStart);
    if (tag->kind == LineKind::Matched || tag->kind == LineKind::Different) {
        if (!splitPair(rest, tag->kind == LineKind::Matched, out))
            return out;
    } else {
        // One side's attribute text, then at least three blanks, then the name.
        size_t gap = rest.find("   ");
        if (gap == std::string_view::npos)
            return out;
        std::string_view name = trimBlanks(rest.substr(gap));
        if (name.empty())
            return out;
        (tag->leftEntry ? out.attributes1 : out.attributes2) = rtrimmed(rest.substr(0, gap));
        out.name = name;
    }
    out.kind = tag->kind;
    return out;
}

LineKind lineKind(std::string_view line) {
    if (startsWith(line, "Unmatched sub directory :"))
        return LineKind::UnmatchedDirectory;
    // A loop or a directory too deep is not compared either: the user has to
    // look at it as at one that could not be read.
    if (startsWith(line, "Unreadable sub directory :") || startsWith(line, "Sub directory loop :") ||
        startsWith(line, "Directory is too deep"))
        return LineKind::UnreadableDirectory;
    size_t restStart = 0;
    const Tag* tag = line.empty() || line[0] < '0' || line[0] > '9' ? nullptr
                                                                   : entryTag(line, restStart);
    return tag ? tag->kind : LineKind::Plain;
}

std::string_view kindName(LineKind kind) {
    switch (kind) {
    case LineKind::Matched: return "matched";
    case LineKind::Different: return "different";
    case LineKind::OneOnly: return "one only";
    case LineKind::TwoOnly: return "two only";
    case LineKind::UnmatchedDirectory: return "unmatched directory";
    case LineKind::UnreadableDirectory: return "unreadable directory";
    case LineKind::Plain: break;
    }
    return "";
}

std::string_view directoryOfWalkLine(std::string_view line) {
    // Each form's path runs from its opening text to the last of its closing
    // text, so a path holding a quote comes whole.
    struct Form {
        std::string_view open, close;
    };
    static constexpr Form kForms[] = {
        {"Unmatched sub directory : '\t", "' does not exist"},
        {"Unmatched sub directory : '", "' exists only in directory 2"},
        {"Unmatched sub directory : 1:'", "' <> 2:'"},
        {"Unreadable sub directory : '", "' "},
        {"Sub directory loop : '", "' leads to '"},
    };
    for (const Form& f : kForms) {
        if (!startsWith(line, f.open))
            continue;
        const size_t close = line.rfind(f.close);
        if (close != std::string_view::npos && close >= f.open.size())
            return line.substr(f.open.size(), close - f.open.size());
    }
    return {};
}

} // namespace pv
