#include "app/ui/qtprompter.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace pv {

namespace {
QWidget* parentWindow() { return QApplication::activeWindow(); }
QString qs(const std::string& s) { return QString::fromStdString(s); }

QMessageBox::Icon boxIcon(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::Information: return QMessageBox::Information;
    case MessageIcon::Question: return QMessageBox::Question;
    case MessageIcon::Exclamation: return QMessageBox::Warning;
    case MessageIcon::Critical: return QMessageBox::Critical;
    case MessageIcon::None: break;
    }
    return QMessageBox::NoIcon;
}

// Messages are plain text with CR LF line ends; a file name such as "<b>.txt" must
// show as it is, not as markup, and a CR must not show as a stray glyph.
int showBox(MessageIcon icon, const std::string& title, const std::string& text,
            QMessageBox::StandardButtons buttons) {
    QString body = qs(text);
    body.replace("\r\n", "\n");
    QMessageBox box(boxIcon(icon), qs(title), body, buttons, parentWindow());
    box.setTextFormat(Qt::PlainText);
    return box.exec();
}
} // namespace

QtPrompter::QtPrompter() : m_previous(setPrompter(this)) {}
QtPrompter::~QtPrompter() { setPrompter(m_previous); }

void QtPrompter::message(const std::string& text, const std::string& title, MessageIcon icon) {
    showBox(icon, title, text, QMessageBox::Ok);
}

bool QtPrompter::confirm(const std::string& text, const std::string& title, MessageIcon icon) {
    return showBox(icon, title, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

Answer QtPrompter::ask(const std::string& text, const std::string& title, MessageIcon icon) {
    switch (showBox(icon, title, text,
                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel)) {
    case QMessageBox::Yes: return Answer::Yes;
    case QMessageBox::No: return Answer::No;
    default: return Answer::Cancel;
    }
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
