#include "common/elementdecl.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QtGlobal>

QString ElementName::name() const {
    return QString::fromRawData(reinterpret_cast<const QChar*>(m_name), m_length);
}

QString ElementArray::operator[](int index) const {
    // The views ask for the same members at every refresh, so each name is built once and
    // then handed out as a shared copy. The program has one thread.
    constexpr int kKeptIndexes = 64;
    if (index < 0 || index >= kKeptIndexes) return indexedName(m_base.name(), index);
    // Keyed by where the base name lies, which saves hashing it.
    static QHash<const char16_t*, QList<QString>> built;
    QList<QString>& names = built[m_base.characters()];
    if (names.size() <= index) names.resize(index + 1);
    QString& name = names[index];
    if (name.isNull()) name = indexedName(m_base.name(), index);
    return name;
}

QString indexedName(QStringView base, int index) {
    return base.toString() + u'_' + QString::number(index);
}

namespace {
UndeclaredElementHandler customHandler = nullptr;
}

void setUndeclaredElementHandler(UndeclaredElementHandler handler) {
    customHandler = handler;
}

void reportUndeclaredElement(const QString& form, const QString& element) {
    if (customHandler) {
        customHandler(form, element);
        return;
    }
    static const bool strict = qEnvironmentVariableIsSet("MQ27_STRICT_ELEMENTS");
#ifdef QT_DEBUG
    constexpr bool debugBuild = true;
#else
    constexpr bool debugBuild = false;
#endif
    const QString where = form.isEmpty() ? element : form + u'.' + element;
    if (strict || debugBuild) qFatal("undeclared window element %s", qUtf8Printable(where));
    static QSet<QString> reported;
    if (reported.contains(where)) return;
    reported.insert(where);
    qWarning("undeclared window element %s", qUtf8Printable(where));
}
