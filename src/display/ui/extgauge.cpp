#include "display/ui/extgauge.h"

#include "display/ui/instruments.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>
#include <QTransform>

namespace {

// Half the sweep of the scale, from the centre mark to either end, in degrees.
constexpr qreal kHalfSweep = 45.0;
// Divisions of each half of the scale, fine where they have room, else coarse; a long tick
// stands at the middle and the end of each half.
constexpr int kFineDivisions = 10;
constexpr int kCoarseDivisions = 4;
// The least distance of two ticks, in lines of text.
constexpr qreal kTickSpacing = 0.4;

// Proportions of the dial, in lines of text.
constexpr qreal kDialLongTick = 0.5;
constexpr qreal kDialShortTick = 0.28;
constexpr qreal kDialLabelGap = 0.2;
constexpr qreal kHub = 0.36;
constexpr qreal kDialPadding = 0.35;
// The scale's radius at the preferred size, and the least it keeps when squeezed.
constexpr qreal kPreferredRadius = 3.1;
constexpr qreal kLeastRadius = 1.5;
// How much larger than the window's font the labels of a large dial may grow.
constexpr qreal kMostLabelGrowth = 1.5;

qreal radians(qreal degrees) {
    return degrees * M_PI / 180.0;
}

} // namespace

ExtGauge::ExtGauge(QWidget* parent)
    : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    setFocusPolicy(Qt::NoFocus);
    // Opaque, so that a new value repaints the gauge alone and not the page beneath it.
    setAutoFillBackground(true);
    instruments::registerValueAccessible<ExtGauge, QAccessible::Indicator>();
}

// Only where the needle was and where it goes is repainted: the whole dial at every telegram
// cost more than all the rest of the page's refresh.
void ExtGauge::setValue(double value) {
    if (m_value == value) return;
    // A gauge on a page not in view has no needle to move; it paints anew when shown.
    if (!isVisible()) {
        m_value = value;
        instruments::announceValue(this, value);
        return;
    }
    const QRect before = needleArea(deflection());
    m_value = value;
    update(before.united(needleArea(deflection())));
    instruments::announceValue(this, value);
}

void ExtGauge::setRange(double minimum, double centre, double maximum) {
    m_minimum = minimum;
    m_centre = centre;
    m_maximum = maximum;
    update();
}

void ExtGauge::setLabels(const QStringList& labels) {
    if (m_labels == labels) return;
    m_labels = labels;
    m_dial.reset();
    updateGeometry();
    update();
}

void ExtGauge::setColors(std::uint32_t face, std::uint32_t ink) {
    m_face = face;
    m_ink = ink;
    update();
}

double ExtGauge::deflection() const {
    if (std::isnan(m_value)) return std::numeric_limits<double>::quiet_NaN();
    const double low = m_minimum;
    const double high = m_maximum;
    if (!std::isfinite(low) || !std::isfinite(high) || !(low < high)) return 0;
    // Halved, so that no difference of two finite numbers overflows.
    double centre = m_centre;
    if (!(centre > low && centre < high)) centre = low / 2 + high / 2;
    const double value = std::clamp(m_value, low, high);
    const double offset = value / 2 - centre / 2;
    const double span = offset >= 0 ? high / 2 - centre / 2 : centre / 2 - low / 2;
    const double fraction = offset / span;
    return std::isnan(fraction) ? 0.0 : std::clamp(fraction, -1.0, 1.0);
}

void ExtGauge::applyElement(const Element& element, ElementProperty changed) {
    switch (changed) {
    case ElementProperty::Value:
        setValue(element.value);
        break;
    case ElementProperty::Range:
        setRange(element.minimum, element.centre, element.maximum);
        break;
    case ElementProperty::Items:
        setLabels(element.items);
        break;
    case ElementProperty::BackColor:
    case ElementProperty::ForeColor:
        setColors(element.backColor, element.foreColor);
        break;
    default:
        break;
    }
}

// A dial larger than its preferred size grows its ticks with it, its strokes, hub and
// labels slower, so that it does not turn coarse.
ExtGauge::Dial ExtGauge::measure(qreal radius, bool forHint) const {
    const qreal line = QFontMetricsF(font()).height();
    Dial dial;
    dial.radius = radius;
    dial.scale = std::max<qreal>(1, radius / (kPreferredRadius * line));
    dial.weight = std::sqrt(dial.scale);
    dial.font = font();
    if (dial.weight > 1.05) {
        const qreal size = dial.font.pointSizeF();
        if (size > 0)
            dial.font.setPointSizeF(size * std::min<qreal>(dial.weight, kMostLabelGrowth));
        else
            dial.font.setPixelSize(
                qRound(dial.font.pixelSize() * std::min<qreal>(dial.weight, kMostLabelGrowth)));
    }
    const QFontMetricsF metrics(dial.font);
    const qreal sine = std::sin(radians(kHalfSweep));
    const qreal cosine = std::cos(radians(kHalfSweep));
    // Before the labels arrive, a hint holds room for labels like "-100 %".
    const qreal least = forHint ? metrics.horizontalAdvance(QStringLiteral("-100 %")) : 0;
    // The labels stand clear of the circle through the tips of the long ticks.
    const qreal clear = radius + kDialLongTick * line * dial.scale + kDialLabelGap * line;
    const qreal centreWidth = std::max(least, metrics.horizontalAdvance(label(1)));
    const qreal text = metrics.height();
    dial.labels[1] = QRectF(-centreWidth / 2, -clear - text, centreWidth, text);
    qreal above = clear + text;
    qreal half = centreWidth / 2;
    for (int end : {0, 2}) {
        // An end label on the line of its end tick, as near as its box leaves that circle
        // free: its inner corner lies on the circle.
        const qreal a = std::max(least, metrics.horizontalAdvance(label(end))) / 2;
        const qreal b = text / 2;
        const qreal p = a * sine + b * cosine;
        const qreal q = a * cosine - b * sine;
        qreal along = p + std::sqrt(std::max<qreal>(0, clear * clear - q * q));
        if (along * sine < a) along = std::max(along, (clear + b) / cosine);
        const QPointF centre((end == 0 ? -sine : sine) * along, -cosine * along);
        dial.labels[end] = QRectF(centre.x() - a, centre.y() - b, 2 * a, 2 * b);
        above = std::max(above, along * cosine + b);
        half = std::max(half, along * sine + a);
    }
    const qreal pad = kDialPadding * line;
    const qreal below = kHub * line * dial.weight;
    dial.face = QRectF(-half - pad, -above - pad, 2 * (half + pad), above + below + 2 * pad);
    return dial;
}

ExtGauge::Dial ExtGauge::layout(const QRectF& area) const {
    // Everything grows with the radius: the largest that fits, found by halving.
    const qreal line = QFontMetricsF(font()).height();
    qreal low = kLeastRadius * line;
    qreal high = std::max(low, std::max(area.width(), area.height()));
    for (int i = 0; i < 24; ++i) {
        const qreal mid = (low + high) / 2;
        const QSizeF size = measure(mid, false).face.size();
        (size.width() <= area.width() && size.height() <= area.height() ? low : high) = mid;
    }
    Dial dial = measure(low, false);
    // Centred in the area.
    const QPointF shift = area.center() - dial.face.center();
    dial.pivot = shift;
    dial.face.translate(shift);
    for (QRectF& box : dial.labels)
        box.translate(shift);
    return dial;
}

const ExtGauge::Dial& ExtGauge::dial() const {
    if (!m_dial || m_dialSize != size()) {
        m_dial = layout(QRectF(rect()));
        m_dialSize = size();
    }
    return *m_dial;
}

QSize ExtGauge::sizeHint() const {
    return measure(kPreferredRadius * QFontMetricsF(font()).height(), true).face.size().toSize();
}

QSize ExtGauge::minimumSizeHint() const {
    return measure(kLeastRadius * 1.4 * QFontMetricsF(font()).height(), true).face.size().toSize();
}

void ExtGauge::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        m_dial.reset();
        updateGeometry();
    }
    QWidget::changeEvent(event);
}

// The needle standing upright around the pivot at the origin. It reaches into the long
// ticks, so that it reads against them.
QPolygonF ExtGauge::needle() const {
    const qreal line = QFontMetricsF(font()).height();
    const Dial& dial = this->dial();
    const qreal stroke = instruments::lineWidth(this) * dial.weight;
    const qreal hub = kHub * line * dial.weight;
    const qreal length = dial.radius + kDialLongTick * line * dial.scale * 0.7;
    const qreal root = std::max(stroke * 1.4, hub * 0.3);
    const qreal tip = stroke * 0.45;
    const qreal tail = hub * 0.8;
    return QPolygonF(
        {QPointF(-root, tail), QPointF(-tip, -length), QPointF(tip, -length), QPointF(root, tail)});
}

// Where the needle and its shadow lie at `deflection`, with a margin for antialiasing.
QRect ExtGauge::needleArea(double deflection) const {
    if (std::isnan(deflection)) return rect();
    const qreal stroke = instruments::lineWidth(this) * dial().weight;
    QTransform at;
    at.translate(dial().pivot.x(), dial().pivot.y());
    at.rotate(kHalfSweep * deflection);
    const QRectF needle = at.map(this->needle()).boundingRect();
    return needle.united(needle.translated(stroke * 0.8, stroke * 1.2))
        .adjusted(-2, -2, 2, 2)
        .toAlignedRect();
}

void ExtGauge::paintEvent(QPaintEvent*) {
    const QPalette& pal = palette();
    const QColor face = instruments::tone(m_face, pal, QPalette::Base);
    const QColor ink = instruments::tone(m_ink, pal, QPalette::Text);
    const qreal line = QFontMetricsF(font()).height();
    const Dial& dial = this->dial();
    const qreal frame = instruments::lineWidth(this);
    const qreal stroke = frame * dial.weight;
    const qreal r = dial.radius;

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    // The face, like the window of a panel meter.
    painter.setPen(
        QPen(instruments::mix(pal.color(QPalette::Window), pal.color(QPalette::WindowText), 0.35),
             frame));
    painter.setBrush(face);
    const qreal corner = line * 0.4;
    painter.drawRoundedRect(dial.face.adjusted(frame / 2, frame / 2, -frame / 2, -frame / 2),
                            corner, corner);

    // The scale: an arc with the ticks standing outwards on it; the centre mark, bolder,
    // also reaches inwards.
    painter.setPen(QPen(ink, stroke, Qt::SolidLine, Qt::FlatCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(QRectF(dial.pivot - QPointF(r, r), QSizeF(2 * r, 2 * r)),
                    qRound((90 - kHalfSweep) * 16), qRound(2 * kHalfSweep * 16));
    const int divisions = r * radians(kHalfSweep) / kFineDivisions >= kTickSpacing * line
                              ? kFineDivisions
                              : kCoarseDivisions;
    painter.save();
    painter.translate(dial.pivot);
    for (int step = -divisions; step <= divisions; ++step) {
        const bool major = step % (divisions / 2) == 0;
        const bool centre = step == 0;
        const qreal length = (major ? kDialLongTick : kDialShortTick) * line * dial.scale;
        const qreal inner = centre ? r - kDialShortTick * line * dial.scale : r;
        painter.save();
        painter.rotate(kHalfSweep * step / divisions);
        const qreal boldness = centre ? 2.4 : major ? 1.6 : 1.0;
        painter.setPen(QPen(ink, stroke * boldness, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(QPointF(0, -inner), QPointF(0, -(r + length)));
        painter.restore();
    }
    painter.restore();

    painter.setPen(ink);
    painter.setFont(dial.font);
    for (int i = 0; i < 3; ++i)
        painter.drawText(dial.labels[i], Qt::AlignCenter | Qt::TextDontClip, label(i));

    const qreal hub = kHub * line * dial.weight;
    const double deflection = this->deflection();
    if (!std::isnan(deflection)) {
        const QPolygonF needle = this->needle();
        painter.save();
        painter.translate(dial.pivot);
        painter.setPen(Qt::NoPen);
        QColor shadow = ink;
        shadow.setAlpha(50);
        painter.setBrush(shadow);
        painter.save();
        painter.translate(stroke * 0.8, stroke * 1.2);
        painter.rotate(kHalfSweep * deflection);
        painter.drawPolygon(needle);
        painter.restore();
        painter.rotate(kHalfSweep * deflection);
        painter.setBrush(ink);
        painter.drawPolygon(needle);
        painter.restore();
    }

    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawEllipse(dial.pivot, hub, hub);
    painter.setBrush(instruments::mix(ink, face, 0.55));
    painter.drawEllipse(dial.pivot, hub * 0.4, hub * 0.4);
}

#include "moc_extgauge.cpp"
