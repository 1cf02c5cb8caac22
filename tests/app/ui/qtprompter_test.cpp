#include "app/ui/qtprompter.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

struct Shown {
    QString title;
    QString text;
    Qt::TextFormat format = Qt::AutoText;
};

// Answers the next message box with `button` and records what it showed.
void answerNextBox(Shown& shown, QMessageBox::StandardButton button) {
    QTimer::singleShot(0, [&shown, button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shown = {box->windowTitle(), box->text(), box->textFormat()};
        box->button(button)->click();
    });
}

} // namespace

// Message texts name files and carry CR LF: they show as plain text, line by line.
TEST(QtPrompter, MessagesShowPlainTextWithLineBreaks) {
    pv::QtPrompter prompter;
    Shown shown;
    answerNextBox(shown, QMessageBox::Ok);
    pv::prompter().message("Can't open file: /tmp/<b>x</b>.txt\r\nNo such file", "Pairview");
    EXPECT_EQ(shown.title, "Pairview");
    EXPECT_EQ(shown.format, Qt::PlainText);
    EXPECT_EQ(shown.text, "Can't open file: /tmp/<b>x</b>.txt\nNo such file");

    answerNextBox(shown, QMessageBox::No);
    EXPECT_FALSE(pv::prompter().confirm("<i>Overwrite</i>?\r\n/a", "Copy"));
    EXPECT_EQ(shown.format, Qt::PlainText);
    EXPECT_EQ(shown.text, "<i>Overwrite</i>?\n/a");
    answerNextBox(shown, QMessageBox::Yes);
    EXPECT_TRUE(pv::prompter().confirm("Overwrite?", "Copy"));
}
