#include "common/forms.h"

Form& Forms::get(const QString& name) {
    auto it = m_forms.find(name);
    if (it == m_forms.end()) {
        it = m_forms.insert(name, new Form(name, this));
        Q_EMIT created(**it);
    }
    return **it;
}
