#pragma once

#include "common/formmodel.h"

#include <QHash>
#include <QObject>

// The window models of the program by name. The composition root adds each window once,
// with its declaration, before any part uses it; the parts get the models they work with in
// their constructors, and the widgets find theirs here by name.
class Forms : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // Makes the model of window `name`; a window is added once.
    Form& add(const QString& name, FormDeclaration declaration);
    // A window never added is refused (reportUndeclaredElement) and answers as an empty one.
    Form& get(const QString& name);
    bool exists(const QString& name) const { return m_forms.contains(name); }
    // Every window, in the order they were added.
    const QList<Form*>& all() const { return m_order; }

private:
    QHash<QString, Form*> m_forms;
    QList<Form*> m_order;
};
