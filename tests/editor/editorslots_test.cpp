#include "editor/editorslots.h"

#include <gtest/gtest.h>

using pv::EditorSlots;

TEST(EditorSlots, FreedSlotIsReusedBeforeTheTableGrows) {
    EditorSlots t;
    EXPECT_FALSE(t.AnyEditorOpen());
    EXPECT_EQ(t.TakeEditorSlot(), 1);
    EXPECT_EQ(t.TakeEditorSlot(), 2);
    EXPECT_EQ(t.TakeEditorSlot(), 3);
    t.release(2);
    EXPECT_EQ(t.TakeEditorSlot(), 2);
    EXPECT_EQ(t.TakeEditorSlot(), 4);
    for (int slot : {1, 2, 3, 4})
        t.release(slot);
    EXPECT_FALSE(t.AnyEditorOpen());
    t.release(7); // never handed out: nothing happens
    EXPECT_EQ(t.TakeEditorSlot(), 1);
    EXPECT_TRUE(t.AnyEditorOpen());
}

TEST(EditorSlots, ModifiedFlagBelongsToTheSlotAndEndsWithIt) {
    EditorSlots t;
    int a = t.TakeEditorSlot(), b = t.TakeEditorSlot();
    t.setModified(a, true);
    EXPECT_TRUE(t.isModified(a));
    EXPECT_FALSE(t.isModified(b));
    t.release(a);
    EXPECT_FALSE(t.isModified(a));
    EXPECT_EQ(t.TakeEditorSlot(), a);
    EXPECT_FALSE(t.isModified(a)); // a new window starts unmodified
}
