#include "common/ui/accessibility.h"

#include <algorithm>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QHash>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QProxyStyle>
#include <QPushButton>
#include <QSet>
#include <QStyleOptionButton>
#include <QTabWidget>
#include <QToolButton>

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

// The letters one set of mnemonics has given out. A caption gets a free letter of its own
// if it has one. A button must have a mark: else it takes the letter of an earlier twin (the
// same caption), else its first letter that no tab and no menu holds, else its first letter
// that no menu holds. Qt then lets the shared key move the focus between them instead of
// pressing; the menus keep theirs alone.
class Mnemonics {
public:
    QString mark(const QString& caption, bool mustHave = true) {
        const QString text = accessibility::literal(caption);
        qsizetype fallback = -1;
        qsizetype shared = -1;
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (text.at(i) == u'&') {
                ++i; // the second of a doubled one
                continue;
            }
            const QChar key = text.at(i).toCaseFolded();
            if (!key.isLetterOrNumber()) continue;
            if (fallback < 0 && !m_reserved.contains(key)) fallback = i;
            if (shared < 0 && !m_menus.contains(key)) shared = i;
            if (m_taken.contains(key)) continue;
            m_taken.insert(key);
            m_twins.insert(caption, i);
            return QString(text).insert(i, u'&');
        }
        if (!mustHave) return text;
        if (const auto twin = m_twins.constFind(caption); twin != m_twins.cend())
            return QString(text).insert(*twin, u'&');
        // A caption without a letter ("?") is reached by its first sign.
        if (fallback < 0 && !text.isEmpty() && !text.front().isLetterOrNumber() &&
            text.front() != u'&' && !text.front().isSpace())
            fallback = 0;
        if (fallback < 0) fallback = shared;
        return fallback < 0 ? text : QString(text).insert(fallback, u'&');
    }

    // The letters of the menu titles, given out so far, stay theirs alone.
    void reserveMenus() { m_menus = m_taken; }

    // What is given out so far stays out of every later fallback.
    void reserveTaken() {
        m_reserved = m_taken;
        m_twins.clear();
    }

private:
    QSet<QChar> m_taken;
    QSet<QChar> m_reserved;
    QSet<QChar> m_menus;
    QHash<QString, qsizetype> m_twins;
};

// How many letters `caption` could be reached by.
qsizetype letterCount(const QString& caption) {
    QSet<QChar> letters;
    for (QChar c : caption)
        if (c.isLetterOrNumber()) letters.insert(c.toCaseFolded());
    return letters.size();
}

// The entries with the fewest letters choose first ("%/ft" before "Taal"), so that a short
// entry is not left without a letter of its own.
void markMenu(QMenu* menu) {
    QList<QAction*> entries;
    for (QAction* action : menu->actions())
        if (!action->isSeparator() && !action->text().isEmpty()) entries << action;
    std::stable_sort(entries.begin(), entries.end(), [](QAction* a, QAction* b) {
        return letterCount(plain(a->text())) < letterCount(plain(b->text()));
    });
    Mnemonics letters;
    for (QAction* action : entries) {
        const QString text = letters.mark(plain(action->text()));
        if (text != action->text()) action->setText(text);
    }
}

// Titles share the bar's letters with the rest of the window, `titles`; the entries of each
// menu share that menu's.
void markMenuBar(QMenuBar* bar, Mnemonics& titles) {
    for (QAction* action : bar->actions()) {
        QMenu* menu = action->menu();
        if (!menu) continue;
        if (!menu->title().isEmpty()) {
            const QString text = titles.mark(plain(menu->title()));
            if (text != menu->title()) menu->setTitle(text);
        }
        markMenu(menu);
    }
}

constexpr const char* kIndicator = "mq27Indicator";

bool isIndicator(const QObject* object) {
    return object->property(kIndicator).toBool();
}

class IndicatorAccessible : public QAccessibleWidget {
public:
    explicit IndicatorAccessible(QWidget* widget)
        : QAccessibleWidget(widget, QAccessible::Indicator) {}

    QString text(QAccessible::Text kind) const override {
        const QString name = QAccessibleWidget::text(QAccessible::Name);
        const QString state = widget()->accessibleDescription();
        switch (kind) {
        case QAccessible::Name:
            return state.isEmpty() || name.isEmpty() ? name : name + QStringLiteral(": ") + state;
        case QAccessible::Value:
            return state;
        case QAccessible::Description:
            return widget()->toolTip();
        default:
            return QAccessibleWidget::text(kind);
        }
    }
};

constexpr const char* kDecoration = "mq27Decoration";

class DecorationAccessible : public QAccessibleWidget {
public:
    explicit DecorationAccessible(QWidget* widget)
        : QAccessibleWidget(widget, QAccessible::Graphic) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = true;
        return state;
    }
};

QAccessibleInterface* drawnFactory(const QString& className, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (!widget) return nullptr;
    if (isIndicator(object)) return new IndicatorAccessible(widget);
    if (object->property(kDecoration).toBool()) return new DecorationAccessible(widget);
    if (className == u"LogoView") return new QAccessibleWidget(widget, QAccessible::Graphic);
    return nullptr;
}

void installDrawnFactory() {
    static const bool installed = [] {
        QAccessible::installFactory(&drawnFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

class FocusStyle : public QProxyStyle {
public:
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        QProxyStyle::drawControl(element, option, painter, widget);
        if (!(option->state & State_HasFocus) || !(option->state & State_KeyboardFocusChange))
            return;
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        const bool defaultButton = element == CE_PushButtonLabel && button &&
                                   (button->features & QStyleOptionButton::DefaultButton);
        // A list shows its focus on its current row; an empty one has none.
        const bool list =
            element == CE_ShapedFrame && qobject_cast<const QAbstractItemView*>(widget);
        // A tick box without a caption (the relay table's) has only its small square to show
        // the focus on, and the style's own ring around it is faint.
        const bool bareTick = element == CE_CheckBox && button && button->text.isEmpty();
        if (!defaultButton && !list && !bareTick) return;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing, false);
        painter->setPen(QPen(option->palette.color(QPalette::Highlight), bareTick ? 2 : 1,
                             defaultButton ? Qt::DotLine : Qt::SolidLine));
        painter->setBrush(Qt::NoBrush);
        const QRect frame = bareTick ? subElementRect(SE_CheckBoxIndicator, option, widget)
                                           .adjusted(-1, -1, 1, 1)
                                           .intersected(option->rect.adjusted(1, 1, -1, -1))
                                     : option->rect.adjusted(0, 0, -1, -1);
        painter->drawRect(frame);
        painter->restore();
    }
};

} // namespace

namespace accessibility {

void showFocusOnDefaultButtons() {
    if (QApplication::style()->property("mq27FocusStyle").toBool()) return;
    auto* style = new FocusStyle;
    style->setProperty("mq27FocusStyle", true);
    QApplication::setStyle(style);
}

QString literal(const QString& caption) {
    QString text = caption;
    return text.replace(u'&', QStringLiteral("&&"));
}

void assignMnemonics(QWidget* window) {
    auto mark = [](auto* widget, Mnemonics& taken) {
        if (widget->text().isEmpty()) return;
        // A label only leads to its field; it never takes a key that a button needs.
        const bool mustHave = !qobject_cast<const QLabel*>(widget);
        const QString text = taken.mark(plain(widget->text()), mustHave);
        if (text != widget->text()) widget->setText(text);
    };
    // The menu titles come first: Alt and a letter opens a menu in every window alike.
    Mnemonics tabLetters;
    if (auto* main = qobject_cast<QMainWindow*>(window); main && main->menuWidget())
        if (auto* bar = qobject_cast<QMenuBar*>(main->menuWidget())) markMenuBar(bar, tabLetters);
    tabLetters.reserveMenus();
    // A label's mnemonic leads to its field; a picture label keeps its picture.
    auto leadsToField = [](const QLabel* label) {
        const QWidget* buddy = label->buddy();
        return buddy && (buddy->focusPolicy() & Qt::TabFocus) && !label->text().isEmpty();
    };
    // A dialog, or a window without pages: its few buttons, then the labels of its fields.
    const auto tabWidgets = window->findChildren<QTabWidget*>();
    if (qobject_cast<QDialog*>(window) || tabWidgets.isEmpty()) {
        Mnemonics& taken = tabLetters;
        for (QAbstractButton* button : window->findChildren<QAbstractButton*>())
            if (qobject_cast<QPushButton*>(button) || qobject_cast<QToolButton*>(button))
                mark(button, taken);
        for (QLabel* label : window->findChildren<QLabel*>())
            if (leadsToField(label)) mark(label, taken);
        return;
    }
    // A window of tab pages: the tabs take their letters first, as they are always there;
    // each page then shares out the rest among its own buttons, tick boxes and labels, since
    // only the page in view answers its keys.
    for (QTabWidget* tabs : tabWidgets) {
        for (int i = 0; i < tabs->count(); ++i) {
            const QString text = tabLetters.mark(plain(tabs->tabText(i)));
            if (text != tabs->tabText(i)) tabs->setTabText(i, text);
        }
    }
    tabLetters.reserveTaken();
    for (QTabWidget* tabs : tabWidgets) {
        for (int i = 0; i < tabs->count(); ++i) {
            QWidget* page = tabs->widget(i);
            Mnemonics taken = tabLetters;
            for (QAbstractButton* button : page->findChildren<QAbstractButton*>())
                if (button->focusPolicy() & Qt::TabFocus) mark(button, taken);
            for (QLabel* label : page->findChildren<QLabel*>())
                if (leadsToField(label)) mark(label, taken);
        }
    }
}

void presentDrawnWidgetsAsImages() {
    installDrawnFactory();
}

void presentAsIndicator(QWidget* widget) {
    installDrawnFactory();
    widget->setProperty(kIndicator, true);
}

void hideDecoration(QWidget* widget) {
    installDrawnFactory();
    widget->setProperty(kDecoration, true);
}

void indicatorStateChanged(QWidget* widget) {
    if (!isIndicator(widget) || !QAccessible::isActive()) return;
    QAccessibleEvent event(widget, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

} // namespace accessibility
