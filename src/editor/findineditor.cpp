#include "editor/findineditor.h"

#include "editor/textcodec.h"
#include "platform/prompter.h"

#include <algorithm>

#include <string>

namespace pv {

char16_t foldLatin1(char16_t c) {
    if (c >= u'a' && c <= u'z')
        return char16_t(c - u'a' + u'A');
    // à..þ fold to À..Þ, except ÷; ÿ has no upper case in Latin-1.
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7)
        return char16_t(c - 0x20);
    return c;
}

namespace {

std::u16string folded(std::u16string_view text, CaseFold fold) {
    std::u16string out(text);
    for (char16_t& c : out)
        c = fold(c);
    return out;
}

} // namespace

int findMatch(std::u16string_view text, int caret, const FindState& state, CaseFold fold) {
    if (state.findText.empty())
        return -1;
    const int offset = (caret == state.findLastPos && !state.findFresh) ? 1 : 0;
    const int start = caret + offset;
    std::u16string hay, needle;
    if (state.findMatchCase) {
        hay = text;
        needle = state.findText;
    } else {
        hay = folded(text, fold);
        needle = folded(state.findText, fold);
    }
    if (state.findDirection == 1) {
        if (start < 0 || size_t(start) > hay.size())
            return -1;
        size_t m = hay.find(needle, size_t(start));
        return m == std::u16string::npos ? -1 : int(m);
    }
    // Positions start - 1 down to 1, counted from 1.
    for (int p = std::min(start - 1, int(hay.size())); p >= 1; --p)
        if (hay.compare(size_t(p - 1), needle.size(), needle) == 0)
            return p - 1;
    return -1;
}

void FindInEditor(FindTarget& target, FindState& state, CaseFold fold) {
    if (state.findText.empty())
        return;
    const std::u16string text = target.text();
    const int m = findMatch(text, target.caret(), state, fold);
    bool fromTop = false;
    if (m >= 0) {
        target.select(m, int(state.findText.size()));
    } else if (prompter().confirm("Cannot find \"" + utf16ToUtf8(state.findText) +
                                  "\"\r\nWould you like to start from the top of the file?")) {
        target.select(0, 0);
        fromTop = true;
    }
    state.findLastPos = target.caret();
    // After going back to the top the next search starts at the first character
    // itself, so a match right at the top is not passed over.
    state.findFresh = fromTop;
}

TextRange deleteRange(std::u16string_view text, TextRange selection) {
    if (selection.start < 0 || size_t(selection.start) >= text.size())
        return {selection.start, 0};
    if (selection.length > 0)
        return selection;
    const bool pair =
        text[size_t(selection.start)] == u'\r' && size_t(selection.start) + 1 < text.size();
    return {selection.start, pair ? 2 : 1};
}

} // namespace pv
