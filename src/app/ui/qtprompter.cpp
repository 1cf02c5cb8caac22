#include "app/ui/qtprompter.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace pv {

namespace {
QWidget* parentWindow() { return QApplication::activeWindow(); }
QString qs(const std::string& s) { return QString::fromStdString(s); }
} // namespace

QtPrompter::QtPrompter() : m_previous(setPrompter(this)) {}
QtPrompter::~QtPrompter() { setPrompter(m_previous); }

void QtPrompter::message(const std::string& text, const std::string& title) {
    QMessageBox::information(parentWindow(), qs(title), qs(text));
}

bool QtPrompter::confirm(const std::string& text, const std::string& title) {
    return QMessageBox::question(parentWindow(), qs(title), qs(text),
                                 QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
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
