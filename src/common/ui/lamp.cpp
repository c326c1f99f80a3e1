#include "common/ui/lamp.h"

#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

Lamp::Lamp(QWidget* parent, Shape shape)
    : ColorBox(parent)
    , m_shape(shape) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Lamp::sizeHint() const {
    const int side = fontMetrics().height();
    return m_shape == Shape::Circle ? QSize(side, side) : QSize(side * 3 / 2, side);
}

// Unlit, a dark grey lens: a lamp is a piece of hardware, and a light disc in a thin ring
// would read as an option to choose.
void Lamp::paintEvent(QPaintEvent*) {
    const QColor dark(64, 64, 64);
    const bool lit = backColor() != colors::kDefault && backColor() != colors::kWindowBackground;
    QColor fill = lit ? resolve(backColor(), dark) : dark;
    if (!isEnabled()) fill = fill.toHsv().darker(115);
    const QRectF box = QRectF(rect()).adjusted(1, 1, -1, -1);
    const qreal side = qMin(box.width(), box.height());

    QPainterPath outline;
    if (m_shape == Shape::Circle)
        outline.addEllipse(QRectF(box.center() - QPointF(side / 2, side / 2), QSizeF(side, side)));
    else
        outline.addRoundedRect(box, side / 4, side / 4);

    QRadialGradient dome(outline.boundingRect().topLeft() + QPointF(side * 0.35, side * 0.3),
                         side * 0.9);
    dome.setColorAt(0, fill.lighter(lit ? 150 : 170));
    dome.setColorAt(0.5, fill);
    dome.setColorAt(1, fill.darker(lit ? 130 : 160));

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0, 0, 0, 150), qMax<qreal>(1, side / 12)));
    painter.setBrush(dome);
    painter.drawPath(outline);
}

#include "moc_lamp.cpp"
