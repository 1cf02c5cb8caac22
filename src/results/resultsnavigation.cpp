#include "results/resultsnavigation.h"
#include "platform/textutil.h"

#include <algorithm>
#include <cstdio>

namespace pv {

namespace {

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

// Where the attribute columns of a matched or different line start; npos when
// the line is not of that form.
size_t attributesStart(std::string_view line, bool& matched) {
    static constexpr std::string_view kMatched = "-matched-   ", kDifferent = "-different- ";
    static_assert(kMatched.size() == kDifferent.size());
    size_t width = line.find('-');
    if (width == std::string_view::npos || width == 0 || !isSequenceField(line.substr(0, width)))
        return std::string_view::npos;
    std::string_view tag = line.substr(width, kMatched.size());
    matched = tag == kMatched;
    if (!matched && tag != kDifferent)
        return std::string_view::npos;
    size_t second = width + kMatched.size();
    if (line.size() < second + width || !isSequenceField(line.substr(second, width)))
        return std::string_view::npos;
    return second + width;
}

bool fitsAttributeColumn(std::string_view column) {
    return column.back() == ' ' && rtrimmed(column).find("  ") == std::string_view::npos;
}

} // namespace

std::string fileNameOfLine(std::string_view line) {
    bool matched = false;
    size_t start = attributesStart(line, matched);
    if (start != std::string_view::npos) {
        std::string_view rest = line.substr(start);
        auto blanks = [](std::string_view a) { return std::count(a.begin(), a.end(), ' '); };
        // A failure text ("Can't find the file") on one side breaks the equal
        // blank count, so a second pass goes without it.
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
                if (!name.empty())
                    return std::string(name);
            }
    }
    size_t p = line.find_last_of(' ');
    return std::string(trimBlanks(p == std::string_view::npos ? line : line.substr(p + 1)));
}

bool lineNamesPair(std::string_view line) {
    return line.find("different-") != std::string_view::npos ||
           line.find("matched-") != std::string_view::npos;
}

LineDirectories directoriesOfLine(const ResultLines& lines, long index) {
    LineDirectories d;
    bool have1 = false, have2 = false;
    static constexpr std::string_view k1 = "Directory 1:", k2 = "Directory 2:";
    if (index >= lines.size())
        index = lines.size() - 1;
    for (long n = index; n >= 1 && !(have1 && have2); --n) {
        std::string_view line = lines[n];
        if (!have1) {
            size_t p = line.find(k1);
            if (p != std::string_view::npos) {
                d.dir1 = trimBlanks(line.substr(p + k1.size()));
                have1 = true;
            }
        }
        if (!have2) {
            size_t p = line.find(k2);
            if (p != std::string_view::npos) {
                d.dir2 = trimBlanks(line.substr(p + k2.size()));
                have2 = true;
            }
        }
    }
    return d;
}

NextDifference findNextDifference(const ResultLines& lines, long selected) {
    long start = selected < 0 ? 0 : selected + 1;
    for (long n = start; n < lines.size(); ++n)
        if (lines[n].find("-different-") != std::string_view::npos)
            return {NextDifference::Kind::Found, n};
    if (start < 2)
        return {NextDifference::Kind::NotFound, -1};
    return {NextDifference::Kind::Wrapped, 1};
}

std::string progressPercentText(long value, long maximum) {
    // The quotient is taken in double precision and only the result is single.
    float percent = static_cast<float>(static_cast<double>(value) / maximum * 100.0);
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.7g", static_cast<double>(percent));
    return buf;
}

std::string printListText(const ResultLines& lines) {
    std::string text = "Print file compare:Start\r\n\r\n";
    for (long n = 0; n < lines.size(); ++n) {
        text += lines[n];
        text += "\r\n";
    }
    return text;
}

} // namespace pv
