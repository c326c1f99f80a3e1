#include "common/ui/accessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QSet>

namespace {

// The caption a widget text shows: marks taken out, a doubled '&' single again.
QString plain(const QString& text) {
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == u'&' && ++i == text.size()) break;
        result += text.at(i);
    }
    return result;
}

QString withMnemonic(const QString& caption, QSet<QChar>& taken) {
    QString text = accessibility::literal(caption);
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == u'&') {
            ++i; // the second of a doubled one
            continue;
        }
        const QChar key = text.at(i).toCaseFolded();
        if (!key.isLetterOrNumber() || taken.contains(key)) continue;
        taken.insert(key);
        return text.insert(i, u'&');
    }
    return text;
}

QAccessibleInterface* imageFactory(const QString& className, QObject* object) {
    if (className != u"LogoView" && className != u"ColorBox") return nullptr;
    auto* widget = qobject_cast<QWidget*>(object);
    return widget ? new QAccessibleWidget(widget, QAccessible::Graphic) : nullptr;
}

} // namespace

namespace accessibility {

QString literal(const QString& caption) {
    QString text = caption;
    return text.replace(u'&', QStringLiteral("&&"));
}

void assignMnemonics(QWidget* window) {
    if (!qobject_cast<QDialog*>(window)) return;
    QSet<QChar> taken;
    auto mark = [&taken](auto* widget) {
        const QString text = withMnemonic(plain(widget->text()), taken);
        if (text != widget->text()) widget->setText(text);
    };
    for (QPushButton* button : window->findChildren<QPushButton*>())
        mark(button);
    // A label's mnemonic leads to its field; a picture label keeps its picture.
    for (QLabel* label : window->findChildren<QLabel*>()) {
        const QWidget* buddy = label->buddy();
        if (buddy && (buddy->focusPolicy() & Qt::TabFocus) && !label->text().isEmpty()) mark(label);
    }
}

void presentDrawnWidgetsAsImages() {
    static const bool installed = [] {
        QAccessible::installFactory(&imageFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

} // namespace accessibility
