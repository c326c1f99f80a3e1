#include "common/elementdecl.h"

#include <QSet>
#include <QtGlobal>

#include <string>

QString ElementName::name() const {
    const auto length = static_cast<qsizetype>(std::char_traits<char16_t>::length(m_name));
    return QString::fromRawData(reinterpret_cast<const QChar*>(m_name), length);
}

QString ElementArray::operator[](int index) const {
    return indexedName(QStringView(m_base), index);
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
