#include "common/forms.h"

Form& Forms::add(const QString& name, FormDeclaration declaration) {
    auto it = m_forms.find(name);
    if (it == m_forms.end()) {
        it = m_forms.insert(name, new Form(name, declaration, this));
        m_order.append(*it);
    }
    return **it;
}

Form& Forms::get(const QString& name) {
    if (!m_forms.contains(name)) reportUndeclaredElement(name, QStringLiteral("(window)"));
    return add(name, {});
}

#include "moc_forms.cpp"
