#pragma once
// Searching the text of an editor window. The find state is shared by every
// editor window for the program's run; positions are character positions of the
// text box (UTF-16 code units), the caret being the start of the selection.

#include <string>
#include <string_view>

namespace pv {

struct FindState {
    std::u16string findText;
    bool findMatchCase = false;
    int findDirection = 1;  // 1 searches towards the end, anything else towards the start
    int findLastPos = 0;    // caret position after the last search
    bool findFresh = false; // the find text changed since the last search
};

// Upper-cases one code unit; the search must not change the text's length, so
// letters fold one unit at a time.
using CaseFold = char16_t (*)(char16_t);
// ASCII and Latin-1 letters.
char16_t foldLatin1(char16_t c);

// The text box the search works on.
class FindTarget {
  public:
    virtual ~FindTarget() = default;
    virtual std::u16string text() const = 0;
    virtual int caret() const = 0;
    virtual void select(int start, int length) = 0;
};

// Where the next match starts (0-based), or -1. A search that does not start
// fresh from where the last one left the caret starts one character further on,
// so a repeated search moves on instead of finding the same match again.
// Towards the start, the search begins two characters before that start: a
// match that begins at the caret is not found.
int findMatch(std::u16string_view text, int caret, const FindState& state,
              CaseFold fold = foldLatin1);

// Finds the next match and selects it. When there is none, asks whether to go on
// from the top of the file; Yes puts the caret at the start. The state remembers
// where the caret is afterwards.
void FindInEditor(FindTarget& target, FindState& state, CaseFold fold = foldLatin1);

// The range the Delete command clears: the selection, or with none the character
// at the caret, two when it is a carriage return (a CR LF pair goes together).
// Nothing (length 0) when the caret is at the end of the text.
struct TextRange {
    int start = 0;
    int length = 0;
};
TextRange deleteRange(std::u16string_view text, TextRange selection);

} // namespace pv
