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
    QMessageBox::Icon icon = QMessageBox::NoIcon;
};

// Answers the next message box with `button` and records what it showed.
void answerNextBox(Shown& shown, QMessageBox::StandardButton button) {
    QTimer::singleShot(0, [&shown, button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shown = {box->windowTitle(), box->text(), box->textFormat(), box->icon()};
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

// Each box shows the icon its caller names, and a three-way question tells Cancel apart.
TEST(QtPrompter, IconsAndThreeWayQuestions) {
    pv::QtPrompter prompter;
    Shown shown;
    answerNextBox(shown, QMessageBox::Ok);
    pv::prompter().message("gone", "Chose from lists", pv::MessageIcon::Critical);
    EXPECT_EQ(shown.icon, QMessageBox::Critical);
    answerNextBox(shown, QMessageBox::Ok);
    pv::prompter().message("plain");
    EXPECT_EQ(shown.icon, QMessageBox::NoIcon);

    answerNextBox(shown, QMessageBox::Cancel);
    EXPECT_EQ(pv::prompter().ask("Save?", "T", pv::MessageIcon::Exclamation), pv::Answer::Cancel);
    EXPECT_EQ(shown.icon, QMessageBox::Warning);
    answerNextBox(shown, QMessageBox::No);
    EXPECT_EQ(pv::prompter().ask("Save?", "T"), pv::Answer::No);
    answerNextBox(shown, QMessageBox::Yes);
    EXPECT_EQ(pv::prompter().ask("Save?", "T"), pv::Answer::Yes);
}
