#include "display/ui/instruments.h"

#include "common/colors.h"
#include "common/ui/formview.h"

#include <cmath>

#include <QFontMetricsF>
#include <QLocale>
#include <QWidget>

namespace instruments {

QColor tone(std::uint32_t color, const QPalette& palette, QPalette::ColorRole ownRole) {
    switch (color) {
    case colors::kGreen:
        return QColor(28, 196, 52);
    case colors::kYellow:
        return QColor(255, 221, 0);
    case colors::kRed:
        return QColor(228, 28, 28);
    default:
        return modelColor(color, palette, ownRole);
    }
}

QColor mix(const QColor& a, const QColor& b, qreal t) {
    return QColor::fromRgbF(a.redF() + (b.redF() - a.redF()) * t,
                            a.greenF() + (b.greenF() - a.greenF()) * t,
                            a.blueF() + (b.blueF() - a.blueF()) * t);
}

qreal lineWidth(const QWidget* widget) {
    return qMax<qreal>(1.0, QFontMetricsF(widget->font()).height() / 16.0);
}

void announceValue(QWidget* widget, double value) {
    if (!QAccessible::isActive()) return;
    QAccessibleValueChangeEvent event(widget, value);
    QAccessible::updateAccessibility(&event);
}

void* ValueAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QString ValueAccessible::text(QAccessible::Text kind) const {
    if (kind != QAccessible::Value) return QAccessibleWidget::text(kind);
    const double value = currentValue().toDouble();
    return std::isfinite(value) ? QLocale().toString(value, 'g', 6) : QString();
}

QVariant ValueAccessible::currentValue() const {
    return widget()->property("value");
}

QVariant ValueAccessible::maximumValue() const {
    return widget()->property("maximum");
}

QVariant ValueAccessible::minimumValue() const {
    return widget()->property("minimum");
}

} // namespace instruments
