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

void Lamp::paintEvent(QPaintEvent*) {
    const QColor unlit = palette().color(QPalette::Base);
    QColor fill = resolve(backColor(), unlit);
    if (!isEnabled()) fill = fill.toHsv().darker(115);
    const QRectF box = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    const qreal side = qMin(box.width(), box.height());

    QPainterPath outline;
    if (m_shape == Shape::Circle)
        outline.addEllipse(QRectF(box.center() - QPointF(side / 2, side / 2), QSizeF(side, side)));
    else
        outline.addRoundedRect(box, side / 4, side / 4);

    QRadialGradient dome(outline.boundingRect().topLeft() + QPointF(side * 0.35, side * 0.3),
                         side * 0.9);
    dome.setColorAt(0, fill.lighter(fill == unlit ? 100 : 135));
    dome.setColorAt(1, fill);

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Mid).darker(110), 1));
    painter.setBrush(dome);
    painter.drawPath(outline);
}
