#pragma once
// The open forms of the program, each with its name (objectName) and window tag
// (dynamic property "tag"), in opening order. Forms register when they open and
// leave the registry when they are destroyed.

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

class QAction;

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

    // A form's menu item by name (not an array item), or the item of a menu control
    // array by name and index; nullptr when there is none.
    static QAction* menuItem(const QObject* form, const QString& name);
    static QAction* menuArrayItem(const QObject* form, const QString& arrayName, int index);
};

} // namespace pv
