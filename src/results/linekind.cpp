#include "results/linekind.h"
#include "platform/textutil.h"

#include <algorithm>
#include <array>
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
    size_t digits = field.find_first_not_of("0123456789");
    return digits != 0 && (digits == std::string_view::npos ||
                           field.find_first_not_of(' ', digits) == std::string_view::npos);
}

bool fitsAttributeColumn(std::string_view column) {
    return column.back() == ' ' && rtrimmed(column).find("  ") == std::string_view::npos;
}

// Both attribute columns of a matched or different line are padded to one width
// (the block's longest attribute plus one). Attribute texts never hold two blanks
// in a row nor end in one, and both sides start alike and have the same number of
// blanks (they come from the same switches; a failure text may break the count):
// the narrowest width that fits is taken.
bool splitPair(std::string_view rest, bool matched, EntryFields& out) {
    auto blanks = [](std::string_view a) { return std::count(a.begin(), a.end(), ' '); };
    // A failure text ("Can't find the file") on one side breaks the equal blank
    // count, so a second pass goes without it.
    for (bool sameShape : {true, false})
        for (size_t width = 1; 2 * width < rest.size(); ++width) {
            std::string_view a1 = rest.substr(0, width), a2 = rest.substr(width, width);
            if (!fitsAttributeColumn(a1) || !fitsAttributeColumn(a2))
                continue;
            if ((a1.front() == ' ') != (a2.front() == ' ') ||
                (sameShape && blanks(rtrimmed(a1)) != blanks(rtrimmed(a2))))
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
    auto tag = std::find_if(kTags.begin(), kTags.end(),
                            [&](const Tag& t) { return t.text == tagText; });
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

} // namespace pv
