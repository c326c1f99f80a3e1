#include "common/ui/ledpair.h"

#include <QPainter>

LedPair::LedPair(QWidget* parent)
    : ColorBox(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LedPair::sizeHint() const {
    const int line = fontMetrics().height();
    return {line * 2, line * 2 + 6};
}

void LedPair::paintEvent(QPaintEvent*) {
    const QColor area = palette().color(QPalette::Base);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const QRectF inner = frame.adjusted(2.5, 2.5, -2.5, -2.5);
    const qreal half = inner.top() + inner.height() / 2;

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(area);
    painter.drawRoundedRect(frame, 3, 3);

    painter.setPen(Qt::NoPen);
    painter.setBrush(resolve(backColor(), area));
    painter.drawRoundedRect(QRectF(inner.topLeft(), QPointF(inner.right(), half)), 2, 2);

    const qreal lineWidth = qMax<qreal>(2, inner.height() / 8);
    painter.setBrush(resolve(foreColor(), area));
    painter.drawRect(QRectF(inner.left(), half, inner.width(), lineWidth));
}

#include "moc_ledpair.cpp"
