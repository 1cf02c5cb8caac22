#include "app/ui/formregistry.h"

#include <QAction>
#include <QMdiSubWindow>
#include <QVariant>

namespace pv {

namespace {
QList<QPointer<QWidget>>& forms() {
    static QList<QPointer<QWidget>> list;
    return list;
}
} // namespace

void FormRegistry::add(QWidget* form) {
    for (const auto& f : forms())
        if (f == form)
            return;
    forms().append(form);
}

QList<QWidget*> FormRegistry::openForms() {
    QList<QWidget*> out;
    auto& list = forms();
    list.removeAll(QPointer<QWidget>());
    for (const auto& f : list)
        if (f)
            out.append(f.data());
    return out;
}

QString FormRegistry::tagOf(const QWidget* form) { return form->property("tag").toString(); }

void FormRegistry::setTag(QWidget* form, const QString& tag) { form->setProperty("tag", tag); }

void FormRegistry::unload(QWidget* form) {
    if (!form)
        return;
    form->setAttribute(Qt::WA_DeleteOnClose);
    bool closed;
    if (auto* sub = qobject_cast<QMdiSubWindow*>(form->parentWidget())) {
        sub->setAttribute(Qt::WA_DeleteOnClose);
        closed = sub->close();
    } else {
        closed = form->close();
    }
    // The widget is deleted later, but it is unloaded now; a form that refused to
    // close stays open and registered.
    if (closed)
        forms().removeAll(QPointer<QWidget>(form));
}

QAction* FormRegistry::menuItem(const QObject* form, const QString& name) {
    for (QAction* a : form->findChildren<QAction*>(name))
        if (!a->property("index").isValid())
            return a;
    return nullptr;
}

QAction* FormRegistry::menuArrayItem(const QObject* form, const QString& arrayName, int index) {
    for (QAction* a : form->findChildren<QAction*>(arrayName))
        if (a->property("index").isValid() && a->property("index").toInt() == index)
            return a;
    return nullptr;
}

} // namespace pv
