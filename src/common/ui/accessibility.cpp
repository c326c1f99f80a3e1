#include "common/ui/accessibility.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QTabWidget>

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
    auto mark = [](auto* widget, QSet<QChar>& taken) {
        const QString text = withMnemonic(plain(widget->text()), taken);
        if (text != widget->text()) widget->setText(text);
    };
    // A label's mnemonic leads to its field; a picture label keeps its picture.
    auto leadsToField = [](const QLabel* label) {
        const QWidget* buddy = label->buddy();
        return buddy && (buddy->focusPolicy() & Qt::TabFocus) && !label->text().isEmpty();
    };
    if (qobject_cast<QDialog*>(window)) {
        QSet<QChar> taken;
        for (QPushButton* button : window->findChildren<QPushButton*>())
            mark(button, taken);
        for (QLabel* label : window->findChildren<QLabel*>())
            if (leadsToField(label)) mark(label, taken);
        return;
    }
    // A window of tab pages: the tabs take their letters first, as they are always there;
    // each page then shares out the rest among its own buttons, tick boxes and labels, since
    // only the page in view answers its keys.
    const auto tabWidgets = window->findChildren<QTabWidget*>();
    if (tabWidgets.isEmpty()) return;
    QSet<QChar> tabLetters;
    for (QTabWidget* tabs : tabWidgets) {
        for (int i = 0; i < tabs->count(); ++i) {
            const QString text = withMnemonic(plain(tabs->tabText(i)), tabLetters);
            if (text != tabs->tabText(i)) tabs->setTabText(i, text);
        }
    }
    for (QTabWidget* tabs : tabWidgets) {
        for (int i = 0; i < tabs->count(); ++i) {
            QWidget* page = tabs->widget(i);
            QSet<QChar> taken = tabLetters;
            for (QAbstractButton* button : page->findChildren<QAbstractButton*>())
                if (button->focusPolicy() & Qt::TabFocus) mark(button, taken);
            for (QLabel* label : page->findChildren<QLabel*>())
                if (leadsToField(label)) mark(label, taken);
        }
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
