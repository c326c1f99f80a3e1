#include "display/ui/ledlamp.h"

#include "common/ui/accessibility.h"
#include "display/ui/instruments.h"

#include <cmath>

#include <QLinearGradient>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QRadialGradient>

namespace {

// An LED of `side` logical pixels: a lens in a rim, with a glow around it when `lit` is a
// colour. The greys are fixed: a dark LED is a piece of hardware, not a part of the theme,
// and its rim keeps it apart from light and dark windows alike.
void drawLed(QPainter& painter, qreal side, const QColor& lit) {
    const QPointF centre(side / 2, side / 2);
    const qreal outer = side / 2;
    const qreal rim = outer * 0.84;
    const qreal lens = rim * 0.8;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);

    if (lit.isValid()) {
        QColor glow = lit;
        glow.setAlpha(120);
        QColor none = lit;
        none.setAlpha(0);
        QRadialGradient halo(centre, outer);
        halo.setColorAt(rim / outer, glow);
        halo.setColorAt(1, none);
        painter.setBrush(halo);
        painter.drawEllipse(centre, outer, outer);
    }

    // A metal ring, lit from above, with a dark edge: it reads on light and dark windows.
    QLinearGradient bezel(centre - QPointF(0, rim), centre + QPointF(0, rim));
    bezel.setColorAt(0, QColor(196, 196, 196));
    bezel.setColorAt(1, QColor(84, 84, 84));
    painter.setPen(QPen(QColor(0, 0, 0, 120), side / 40));
    painter.setBrush(bezel);
    painter.drawEllipse(centre, rim, rim);
    painter.setPen(Qt::NoPen);

    QRadialGradient body(centre, lens, centre - QPointF(lens * 0.3, lens * 0.35));
    if (lit.isValid()) {
        body.setColorAt(0, instruments::mix(lit, Qt::white, 0.55));
        body.setColorAt(0.55, lit);
        body.setColorAt(1, lit.darker(135));
    } else {
        body.setColorAt(0, QColor(104, 104, 104));
        body.setColorAt(0.6, QColor(58, 58, 58));
        body.setColorAt(1, QColor(34, 34, 34));
    }
    painter.setBrush(body);
    painter.drawEllipse(centre, lens, lens);

    const QPointF shineCentre(centre.x(), centre.y() - lens * 0.45);
    QLinearGradient shine(shineCentre - QPointF(0, lens * 0.4),
                          shineCentre + QPointF(0, lens * 0.4));
    shine.setColorAt(0, QColor(255, 255, 255, lit.isValid() ? 170 : 80));
    shine.setColorAt(1, QColor(255, 255, 255, 0));
    painter.setBrush(shine);
    painter.drawEllipse(shineCentre, lens * 0.6, lens * 0.4);
}

bool isDark(std::uint32_t color) {
    return color == colors::kDefault || color == colors::kWindowBackground;
}

} // namespace

LedLamp::LedLamp(QWidget* parent)
    : QWidget(parent) {
    accessibility::presentAsIndicator(this);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::NoFocus);
}

void LedLamp::setBackColor(std::uint32_t color) {
    if (m_back == color) return;
    m_back = color;
    update();
}

void LedLamp::setDotColor(std::uint32_t color) {
    if (m_dot == color) return;
    m_dot = color;
    update();
}

// A dot in the window colour is the dark state of a lamp that is lit by its dot.
bool LedLamp::isLit() const {
    return m_dot != colors::kDefault ? !isDark(m_dot) : !isDark(m_back);
}

void LedLamp::applyElement(const Element& element, ElementProperty changed) {
    if (changed == ElementProperty::BackColor) setBackColor(element.backColor);
    if (changed == ElementProperty::Dot) setDotColor(element.dotColor);
}

QSize LedLamp::sizeHint() const {
    const int side = qRound(fontMetrics().height() * 1.3);
    return {side, side};
}

QSize LedLamp::minimumSizeHint() const {
    return sizeHint();
}

// The timers repaint every LED several times a second, so a drawn LED is kept per size and
// colour, at the screen's resolution, and painting is one copy.
void LedLamp::paintEvent(QPaintEvent*) {
    const qreal dpr = devicePixelRatioF();
    const int pixels = static_cast<int>(std::ceil(qMin(width(), height()) * dpr));
    if (pixels <= 0) return;
    const QColor lit = isLit() ? instruments::tone(m_dot != colors::kDefault ? m_dot : m_back,
                                                   palette(), QPalette::Base)
                               : QColor();
    const QString key = QStringLiteral("LedLamp/%1/%2/%3/%4")
                            .arg(pixels)
                            .arg(dpr)
                            .arg(lit.isValid() ? lit.rgba() : 0u, 0, 16)
                            .arg(isEnabled());
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QPixmap(pixels, pixels);
        pixmap.setDevicePixelRatio(dpr);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        if (!isEnabled()) painter.setOpacity(0.45);
        drawLed(painter, pixels / dpr, lit);
        painter.end();
        QPixmapCache::insert(key, pixmap);
    }
    // On whole device pixels, so that the copy stays as sharp as the drawing.
    const qreal x = std::round((width() - pixels / dpr) / 2 * dpr) / dpr;
    const qreal y = std::round((height() - pixels / dpr) / 2 * dpr) / dpr;
    QPainter painter(this);
    painter.drawPixmap(QPointF(x, y), pixmap);
}

#include "moc_ledlamp.cpp"
