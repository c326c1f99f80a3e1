#include "display/ui/faultbox.h"

#include "common/ui/accessibility.h"
#include "display/ui/instruments.h"

#include <cmath>

#include <QPainter>

namespace {

bool isEmpty(std::uint32_t color) {
    return color == colors::kDefault || color == colors::kWindowBackground;
}

} // namespace

FaultBox::FaultBox(QWidget* parent)
    : QWidget(parent) {
    accessibility::presentAsIndicator(this);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::NoFocus);
}

void FaultBox::setBackColor(std::uint32_t color) {
    if (m_back == color) return;
    m_back = color;
    update();
}

void FaultBox::setDotColor(std::uint32_t color) {
    if (m_dot == color) return;
    m_dot = color;
    update();
}

void FaultBox::applyElement(const Element& element, ElementProperty changed) {
    if (changed == ElementProperty::BackColor) setBackColor(element.backColor);
    if (changed == ElementProperty::Dot) setDotColor(element.dotColor);
}

// A little smaller than a line of text, so that it stands beside its text like a tick box.
QSize FaultBox::sizeHint() const {
    const int side = qRound(fontMetrics().height() * 0.85);
    return {side, side};
}

QSize FaultBox::minimumSizeHint() const {
    return sizeHint();
}

void FaultBox::paintEvent(QPaintEvent*) {
    const QPalette& pal = palette();
    const qreal line = instruments::lineWidth(this);
    const qreal side = qMin(width(), height());
    const qreal left = std::floor((width() - side) / 2);
    const qreal top = std::floor((height() - side) / 2);
    const QRectF box(left + line / 2, top + line / 2, side - line, side - line);

    // An empty box is a shade of the window, sunk into it, not the white field of a tick box
    // with its frame: it shows a state and takes no input.
    const QColor window = pal.color(QPalette::Window);
    const QColor fill = isEmpty(m_back)
                            ? instruments::mix(window, pal.color(QPalette::WindowText), 0.14)
                            : instruments::tone(m_back, pal, QPalette::Base);

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRect(box);
    // A shadow along the upper and left edge sinks the square in.
    painter.setPen(QPen(fill.darker(isEmpty(m_back) ? 125 : 140), line));
    painter.drawPolyline(QPolygonF({box.bottomLeft(), box.topLeft(), box.topRight()}));

    if (m_dot == colors::kDefault) return;
    const QColor dot = instruments::tone(m_dot, pal, QPalette::Base);
    const qreal radius = side / 3;
    painter.setPen(QPen(dot.darker(130), line * 0.75));
    painter.setBrush(dot);
    painter.drawEllipse(box.center(), radius - line * 0.375, radius - line * 0.375);
}

#include "moc_faultbox.cpp"
