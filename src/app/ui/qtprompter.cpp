#include "app/ui/qtprompter.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace pv {

namespace {
QWidget* parentWindow() { return QApplication::activeWindow(); }
QString qs(const std::string& s) { return QString::fromStdString(s); }

// Messages are plain text with CR LF line ends; a file name such as "<b>.txt" must
// show as it is, not as markup, and a CR must not show as a stray glyph.
int showBox(QMessageBox::Icon icon, const std::string& title, const std::string& text,
            QMessageBox::StandardButtons buttons) {
    QString body = qs(text);
    body.replace("\r\n", "\n");
    QMessageBox box(icon, qs(title), body, buttons, parentWindow());
    box.setTextFormat(Qt::PlainText);
    return box.exec();
}
} // namespace

QtPrompter::QtPrompter() : m_previous(setPrompter(this)) {}
QtPrompter::~QtPrompter() { setPrompter(m_previous); }

void QtPrompter::message(const std::string& text, const std::string& title) {
    showBox(QMessageBox::Information, title, text, QMessageBox::Ok);
}

bool QtPrompter::confirm(const std::string& text, const std::string& title) {
    return showBox(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No) ==
           QMessageBox::Yes;
}

std::optional<std::string> QtPrompter::input(const std::string& prompt, const std::string& title,
                                             const std::string& defaultText) {
    bool ok = false;
    QString answer = QInputDialog::getText(parentWindow(), qs(title), qs(prompt),
                                           QLineEdit::Normal, qs(defaultText), &ok);
    if (!ok)
        return std::nullopt;
    return answer.toStdString();
}

std::optional<std::string> QtPrompter::openFileName(const std::string& title,
                                                    const std::string& directory,
                                                    const std::string& filter) {
    QString f = QFileDialog::getOpenFileName(parentWindow(), qs(title), qs(directory), qs(filter));
    if (f.isEmpty())
        return std::nullopt;
    return f.toStdString();
}

std::optional<std::string> QtPrompter::saveFileName(const std::string& title,
                                                    const std::string& directory,
                                                    const std::string& filter) {
    QString f = QFileDialog::getSaveFileName(parentWindow(), qs(title), qs(directory), qs(filter));
    if (f.isEmpty())
        return std::nullopt;
    return f.toStdString();
}

} // namespace pv
