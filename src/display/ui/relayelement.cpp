#include "display/ui/relayelement.h"

#include "common/colors.h"
#include "common/ui/accessibility.h"
#include "display/ui/instruments.h"

#include <cmath>

#include <QPainter>

namespace {

// How far an open blade stands off its contact.
constexpr qreal kOpenAngle = 28.0;

} // namespace

RelayElement::RelayElement(QWidget* parent)
    : QWidget(parent) {
    accessibility::presentAsIndicator(this);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::NoFocus);
}

void RelayElement::setClosed(bool closed) {
    if (m_closed == closed) return;
    m_closed = closed;
    update();
}

void RelayElement::applyElement(const Element& element, ElementProperty changed) {
    if (changed == ElementProperty::Value) setClosed(element.value != 0);
}

QSize RelayElement::sizeHint() const {
    const qreal line = fontMetrics().height();
    return {qRound(line * 3), qRound(line * 1.8)};
}

QSize RelayElement::minimumSizeHint() const {
    return sizeHint();
}

void RelayElement::paintEvent(QPaintEvent*) {
    const QPalette& pal = palette();
    const qreal line = instruments::lineWidth(this);
    const QRectF frame = QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2);
    QColor green = instruments::tone(colors::kGreen, pal, QPalette::Base).darker(115);
    if (!isEnabled()) green = instruments::mix(green, pal.color(QPalette::Window), 0.5);
    const QColor ink = m_closed ? green : pal.color(QPalette::WindowText);

    // The contact alone, on the window: a housing with a frame would read as a button.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    // The contact sits low in its housing, leaving the open blade room above.
    const qreal w = frame.width();
    const qreal y = std::round(frame.top() + frame.height() * 0.66);
    const QPointF pivot(frame.left() + w * 0.3, y);
    const QPointF contact(frame.left() + w * 0.7, y);
    const qreal terminal = frame.height() * 0.1;
    const qreal stroke = line * 2;

    painter.setPen(QPen(ink, stroke, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(frame.left() + w * 0.1, y), pivot - QPointF(terminal, 0));
    painter.drawLine(contact + QPointF(terminal, 0), QPointF(frame.left() + w * 0.9, y));

    const qreal blade = contact.x() - pivot.x();
    const qreal angle = m_closed ? 0 : kOpenAngle * M_PI / 180;
    painter.drawLine(pivot, pivot + QPointF(std::cos(angle), -std::sin(angle)) * blade);

    painter.setPen(QPen(ink, line));
    painter.setBrush(m_closed ? QBrush(ink) : QBrush(pal.color(QPalette::Window)));
    painter.drawEllipse(pivot, terminal, terminal);
    painter.drawEllipse(contact, terminal, terminal);
}

#include "moc_relayelement.cpp"
