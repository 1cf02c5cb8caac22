#include "results/resultsnavigation.h"
#include "results/linekind.h"
#include "platform/textutil.h"

#include <algorithm>
#include <cstdio>

namespace pv {

std::string fileNameOfLine(std::string_view line) {
    EntryFields fields = entryFields(line);
    if (fields.kind == LineKind::Matched || fields.kind == LineKind::Different)
        return std::string(fields.name);
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
