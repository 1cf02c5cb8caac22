#pragma once
// The open forms of the program, each with its name (objectName) and window tag
// (dynamic property "tag"), in opening order. Forms register when they open and
// leave the registry when they are destroyed.

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

namespace pv {

class FormRegistry {
public:
    static void add(QWidget* form);
    static QList<QWidget*> openForms();
    static QString tagOf(const QWidget* form);
    static void setTag(QWidget* form, const QString& tag);
    // "Unloads" a form: closes its MDI sub-window (or the form itself); forms are
    // deleted on close, so they leave the registry. A form may refuse to close.
    static void unload(QWidget* form);
};

} // namespace pv
