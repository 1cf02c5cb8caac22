#include "pvcmd/findstrsearch.h"

#include <algorithm>
#include <cstring>

namespace pvcmd {

namespace {

size_t lineStartBefore(std::string_view buffer, size_t floor, size_t pos) {
    if (pos <= floor)
        return floor;
    const void* nl = ::memrchr(buffer.data() + floor, '\n', pos - floor);
    return nl ? static_cast<size_t>(static_cast<const char*>(nl) - buffer.data()) + 1 : floor;
}

// Index just past the line end of the line holding `pos` (buffer size when none).
size_t lineEndAfter(std::string_view buffer, size_t pos) {
    if (pos >= buffer.size())
        return buffer.size();
    const void* nl = ::memchr(buffer.data() + pos, '\n', buffer.size() - pos);
    return nl ? static_cast<size_t>(static_cast<const char*>(nl) - buffer.data()) + 1
              : buffer.size();
}

} // namespace

bool hasNonPrintable(std::string_view bytes) {
    for (char ch : bytes) {
        auto c = static_cast<unsigned char>(ch);
        if ((c < 0x20 && !(c >= '\t' && c <= '\r')) || c == 0x7f)
            return true;
    }
    return false;
}

bool FindstrSearch::finish(std::string_view name, const FindstrScanState& state,
                           std::string& out) const {
    if (state.reported && m_options.namesOnly) {
        out.append(name);
        out += "\r\n";
    }
    return state.reported;
}

void FindstrSearch::scanChunk(std::string_view name, std::string_view buffer, bool last,
                              FindstrScanState& state, std::string& out) const {
    if (state.done)
        return;
    size_t lineNumber = state.lineNumber; // number of the line starting at `counted`
    size_t counted = 0;
    auto report = [&](size_t start, size_t end) {
        state.reported = true;
        if (m_options.namesOnly) {
            state.done = true;
            return;
        }
        if (m_options.showNames) {
            out.append(name);
            out += ':';
        }
        if (m_options.lineNumbers) {
            lineNumber += static_cast<size_t>(
                std::count(buffer.data() + counted, buffer.data() + start, '\n'));
            counted = start;
            out += std::to_string(lineNumber);
            out += ':';
        }
        if (m_options.offsets) {
            out += std::to_string(state.offset + start);
            out += ':';
        }
        out.append(buffer.substr(start, end - start));
    };

    // A position at the very end is inside a line only when the last line has no
    // newline; an empty match there must not invent a line.
    const bool openLastLine = last && !buffer.empty() && buffer.back() != '\n';
    // After PCRE2 gave up somewhere ahead, lines are searched one at a time up to
    // the one it gives up on, which is noted and passed over.
    bool lineByLine = false;
    size_t pos = 0;
    while (pos < buffer.size() && !state.done) {
        if (lineByLine) {
            size_t end = lineEndAfter(buffer, pos);
            std::string_view line = buffer.substr(0, end);
            try {
                size_t match = m_matcher.find(line, pos);
                bool hit = match != std::string_view::npos &&
                           (match < end || (end == buffer.size() && openLastLine));
                if (hit != m_options.invert)
                    report(pos, end);
            } catch (const FindstrMatcher::TooComplex&) {
                state.tooComplexLines.push_back(
                    state.lineNumber +
                    static_cast<size_t>(std::count(buffer.data(), buffer.data() + pos, '\n')));
                lineByLine = false;
            }
            pos = end;
            continue;
        }
        size_t match = std::string_view::npos;
        try {
            match = m_matcher.find(buffer, pos);
        } catch (const FindstrMatcher::TooComplex&) {
            lineByLine = true;
            continue;
        }
        bool valid = match != std::string_view::npos &&
                     (match < buffer.size() || (match == buffer.size() && openLastLine));
        size_t matchLine = valid ? lineStartBefore(buffer, pos, match) : buffer.size();
        if (m_options.invert) {
            while (pos < matchLine && !state.done) {
                size_t end = lineEndAfter(buffer, pos);
                report(pos, end);
                pos = end;
            }
            if (!valid)
                break;
            pos = lineEndAfter(buffer, matchLine);
        } else {
            if (!valid)
                break;
            size_t end = lineEndAfter(buffer, match);
            report(matchLine, end);
            pos = end;
        }
    }
    // Kept also without /n: a line the search gives up on is named by its number.
    state.lineNumber =
        lineNumber + static_cast<size_t>(
                         std::count(buffer.data() + counted, buffer.data() + buffer.size(), '\n'));
    state.offset += buffer.size();
}

} // namespace pvcmd
