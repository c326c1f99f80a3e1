#pragma once

#include <cstdint>

#include <QAccessible>
#include <QAccessibleValueInterface>
#include <QAccessibleWidget>
#include <QColor>
#include <QPalette>

// What the drawn instruments of the main view share: the tones of the colours that carry a
// meaning, a line width that follows the font, and their face towards screen readers.
namespace instruments {

// The colour a model number stands for. Green, yellow and red come a shade deeper than the
// pure primaries, which glare on a light window and bleed on a dark one, and stay
// unmistakably what they are; every other number is taken as it is.
QColor tone(std::uint32_t color, const QPalette& palette, QPalette::ColorRole ownRole);

// `a` moved towards `b` by `t`, from 0 (all `a`) to 1 (all `b`): a shade between two
// colours of the palette that suits a light and a dark theme alike.
QColor mix(const QColor& a, const QColor& b, qreal t);

// The width of a fine line of a drawing, in logical pixels: it grows with the font, so that
// the drawings keep their proportions at any font size and scale.
qreal lineWidth(const QWidget* widget);

// Tells a screen reader that the value shown by `widget` changed.
void announceValue(QWidget* widget, double value);

// A widget with the properties value, minimum and maximum, as a screen reader sees it: its
// role, its tool tip as description, and its current value.
class ValueAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    ValueAccessible(QWidget* widget, QAccessible::Role role)
        : QAccessibleWidget(widget, role) {}

    void* interface_cast(QAccessible::InterfaceType type) override;
    QString text(QAccessible::Text kind) const override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant&) override {}
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override { return 0.0; }
};

template <typename W, QAccessible::Role role>
QAccessibleInterface* valueAccessibleFactory(const QString&, QObject* object) {
    auto* widget = qobject_cast<W*>(object);
    return widget ? new ValueAccessible(widget, role) : nullptr;
}

// Once per class: a widget of class W is known to screen readers as `role` with a value.
template <typename W, QAccessible::Role role>
void registerValueAccessible() {
    static const bool registered = [] {
        QAccessible::installFactory(&valueAccessibleFactory<W, role>);
        return true;
    }();
    (void)registered;
}

} // namespace instruments
