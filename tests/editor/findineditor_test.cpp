#include "editor/findineditor.h"
#include "support/recordingprompter.h"

#include <gtest/gtest.h>

using namespace pv;

namespace {

// A text box: the text, the selection.
struct Box : FindTarget {
    std::u16string content;
    int start = 0, length = 0;
    std::u16string text() const override { return content; }
    int caret() const override { return start; }
    void select(int s, int n) override { start = s, length = n; }
};

FindState state(std::u16string text, int direction = 1, bool fresh = true) {
    FindState s;
    s.findText = std::move(text);
    s.findDirection = direction;
    s.findFresh = fresh;
    return s;
}

} // namespace

TEST(FindInEditor, MatchPositions) {
    struct Row {
        const char* name;
        std::u16string text, find;
        int caret, lastPos;
        bool fresh;
        int direction;
        bool matchCase;
        int expected;
    } rows[] = {
        {"down from 0, fresh", u"xxab", u"ab", 0, 0, true, 1, false, 2},
        {"down, not fresh, caret where the last search left it", u"abab", u"ab", 0, 0, false, 1,
         false, 2},
        {"down, caret moved since the last search", u"abab", u"ab", 2, 0, false, 1, false, 2},
        {"down, none after the caret", u"abxx", u"ab", 1, 0, true, 1, false, -1},
        {"down ignores case", u"xAB", u"ab", 0, 0, true, 1, false, 1},
        {"down with match case", u"xABab", u"ab", 0, 0, true, 1, true, 3},
        {"up finds the match that ends at the caret", u"abab", u"ab", 4, 0, true, 0, false, 2},
        {"up misses a match that begins at the caret", u"xxab", u"ab", 2, 0, true, 0, false, -1},
        {"up reaches position 1", u"abxx", u"ab", 2, 0, true, 0, false, 0},
        {"up, not fresh: one further on", u"abx", u"ab", 1, 1, false, 0, false, 0},
        {"up past the end of the text", u"ab", u"ab", 9, 0, true, 0, false, 0},
        {"empty find text", u"ab", u"", 0, 0, true, 1, false, -1},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        FindState s = state(r.find, r.direction, r.fresh);
        s.findLastPos = r.lastPos;
        s.findMatchCase = r.matchCase;
        EXPECT_EQ(findMatch(r.text, r.caret, s), r.expected);
    }
}

TEST(FindInEditor, LatinLettersFoldWithoutChangingPositions) {
    EXPECT_EQ(foldLatin1(u'\u00e9'), u'\u00c9');
    EXPECT_EQ(foldLatin1(u'\u00f7'), u'\u00f7'); // division sign
    EXPECT_EQ(foldLatin1(u'z'), u'Z');
    EXPECT_EQ(findMatch(u"caf\u00c9 caf\u00e9", 1, state(u"CAF\u00e9")), 5);
}

TEST(FindInEditor, RepeatedSearchMovesOnAndAsksAtTheEnd) {
    pvtest::RecordingPrompter prompts;
    Box box;
    box.content = u"ab ab";
    FindState s = state(u"ab");
    FindInEditor(box, s);
    EXPECT_EQ(box.start, 0);
    EXPECT_EQ(box.length, 2);
    EXPECT_EQ(s.findLastPos, 0);
    EXPECT_FALSE(s.findFresh);
    FindInEditor(box, s); // the caret has not moved: the next one
    EXPECT_EQ(box.start, 3);
    EXPECT_TRUE(prompts.messages.empty());

    prompts.confirmAnswers = {false};
    FindInEditor(box, s);
    ASSERT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(prompts.messages[0],
              "Cannot find \"ab\"\r\nWould you like to start from the top of the file?");
    EXPECT_EQ(prompts.titles[0], kProgramTitle);
    EXPECT_EQ(box.start, 3); // No: the selection stays

    prompts.confirmAnswers = {true};
    FindInEditor(box, s);
    EXPECT_EQ(box.start, 0);
    EXPECT_EQ(box.length, 0);
    FindInEditor(box, s); // from the top, the first character included
    EXPECT_EQ(box.start, 0);
    EXPECT_EQ(box.length, 2);
}

TEST(FindInEditor, DeleteTakesACrLfPairTogether) {
    struct Row {
        const char* name;
        TextRange selection, expected;
    } rows[] = {
        {"at CR LF", {1, 0}, {1, 2}},           {"on a plain character", {0, 0}, {0, 1}},
        {"at the LF", {2, 0}, {2, 1}},          {"a selection is cleared as it is", {0, 3}, {0, 3}},
        {"at the end nothing", {4, 0}, {4, 0}},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        TextRange got = deleteRange(u"a\r\nb", r.selection);
        EXPECT_EQ(got.start, r.expected.start);
        EXPECT_EQ(got.length, r.expected.length);
    }
}
