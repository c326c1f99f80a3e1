#include "display/ui/bargraph.h"

#include "display/thresholdscale.h"
#include "display/ui/instruments.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <QEvent>
#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QPolygonF>
#include <QtMath>

namespace {

// Proportions, in lines of text.
constexpr qreal kPadding = 0.3;
constexpr qreal kLabelGap = 0.25;
constexpr qreal kLongTick = 0.35;
constexpr qreal kShortTick = 0.2;
constexpr qreal kBarWidth = 1.4;
constexpr qreal kMarker = 0.85; // room right of the bar for the thresholds' arrow heads
constexpr qreal kPreferredHeight = 10;
constexpr qreal kLeastHeight = 5;

// The logic places a line on whole twips; a top that far beyond an end still means the end.
constexpr double kRounding = 0.5 / thresholdscale::kTwipsPerPercent;

const QString& topLabel() {
    static const QString label = QStringLiteral("100 %");
    return label;
}

QColor lineColor(ThresholdLine::Kind kind, const QPalette& palette) {
    if (kind == ThresholdLine::Kind::FireAlarm)
        return instruments::tone(colors::kRed, palette, QPalette::Text);
    return QColor(240, 136, 0);
}

} // namespace

ThresholdLine::ThresholdLine(const QString& elementName, Kind kind, BarGraph* bar)
    : QObject(bar)
    , m_kind(kind)
    , m_percent(std::numeric_limits<double>::quiet_NaN()) {
    setObjectName(elementName);
}

void ThresholdLine::setTop(int twips) {
    double percent = thresholdscale::twipsToPercent(twips);
    if (percent < -kRounding || percent > 100 + kRounding)
        percent = std::numeric_limits<double>::quiet_NaN();
    else
        percent = std::clamp(percent, 0.0, 100.0);
    if (percent == m_percent || (std::isnan(percent) && std::isnan(m_percent))) return;
    m_percent = percent;
    if (auto* bar = qobject_cast<BarGraph*>(parent())) bar->update();
}

void ThresholdLine::applyElement(const Element& element, ElementProperty changed) {
    if (changed == ElementProperty::Top) setTop(element.top);
}

BarGraph::BarGraph(QWidget* parent)
    : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    setFocusPolicy(Qt::NoFocus);
    // Opaque, so that a new value repaints the graph alone and not the page beneath it.
    setAutoFillBackground(true);
    instruments::registerValueAccessible<BarGraph, QAccessible::ProgressBar>();
}

bool BarGraph::hasOwnRange() const {
    return std::isfinite(m_minimum) && std::isfinite(m_maximum) && m_minimum < m_maximum;
}

double BarGraph::minimum() const {
    return hasOwnRange() ? m_minimum : 0.0;
}

double BarGraph::maximum() const {
    return hasOwnRange() ? m_maximum : 100.0;
}

double BarGraph::level() const {
    if (std::isnan(m_value)) return 0;
    const double low = minimum();
    const double high = maximum();
    // Halved, so that no difference of two finite numbers overflows.
    const double value = std::clamp(m_value, low, high);
    const double fraction = (value / 2 - low / 2) / (high / 2 - low / 2);
    return std::isnan(fraction) ? 0.0 : std::clamp(fraction, 0.0, 1.0);
}

// Only the band between the old and the new top of the bar is repainted: the whole graph at
// every telegram cost more than all the rest of the page's refresh.
void BarGraph::setValue(double value) {
    if (m_value == value) return;
    const double before = level();
    m_value = value;
    // A graph on a page not in view has nothing to repaint; it paints anew when shown.
    if (!isVisible()) {
        instruments::announceValue(this, value);
        return;
    }
    const QRectF bar = barRect();
    const qreal high = bar.bottom() - bar.height() * std::max(before, level());
    const qreal low = bar.bottom() - bar.height() * std::min(before, level());
    const qreal margin = 2 * instruments::lineWidth(this) + 1;
    update(QRectF(bar.left() - margin, high - margin, bar.width() + 2 * margin,
                  low - high + 2 * margin)
               .toAlignedRect());
    instruments::announceValue(this, value);
}

QRectF BarGraph::barRect() const {
    const QFontMetricsF metrics(font());
    const qreal line = metrics.height();
    const qreal width = instruments::lineWidth(this);
    const qreal left = std::max<qreal>(0, (this->width() - contentWidth()) / 2) + kPadding * line;
    const qreal labelsRight = left + metrics.horizontalAdvance(topLabel());
    // The trough's edges on whole pixels, so that its rim stays sharp.
    const qreal barLeft = std::round(labelsRight + (kLabelGap + kLongTick) * line) + width / 2;
    const qreal top = std::round(kPadding * line + line / 2) + width / 2;
    const qreal bottom = std::round(height() - kPadding * line - line / 2) - width / 2;
    return {barLeft, top, std::round(kBarWidth * line), std::max<qreal>(0, bottom - top)};
}

void BarGraph::setRange(double minimum, double maximum) {
    m_minimum = minimum;
    m_maximum = maximum;
    update();
}

void BarGraph::setColors(std::uint32_t trough, std::uint32_t bar) {
    m_trough = trough;
    m_bar = bar;
    update();
}

ThresholdLine* BarGraph::addThresholdLine(const QString& elementName, ThresholdLine::Kind kind) {
    return new ThresholdLine(elementName, kind, this);
}

QList<ThresholdLine*> BarGraph::thresholdLines() const {
    return findChildren<ThresholdLine*>(QString(), Qt::FindDirectChildrenOnly);
}

void BarGraph::applyElement(const Element& element, ElementProperty changed) {
    switch (changed) {
    case ElementProperty::Value:
        setValue(element.value);
        break;
    case ElementProperty::Range:
        setRange(element.minimum, element.maximum);
        break;
    case ElementProperty::BackColor:
    case ElementProperty::ForeColor:
        setColors(element.backColor, element.foreColor);
        break;
    default:
        break;
    }
}

qreal BarGraph::contentWidth() const {
    const QFontMetricsF metrics(font());
    const qreal line = metrics.height();
    return metrics.horizontalAdvance(topLabel()) +
           (2 * kPadding + kLabelGap + kLongTick + kBarWidth + kMarker) * line;
}

QSize BarGraph::sizeHint() const {
    return {qCeil(contentWidth()), qCeil(kPreferredHeight * QFontMetricsF(font()).height())};
}

QSize BarGraph::minimumSizeHint() const {
    return {qCeil(contentWidth()), qCeil(kLeastHeight * QFontMetricsF(font()).height())};
}

void BarGraph::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) updateGeometry();
    QWidget::changeEvent(event);
}

void BarGraph::paintEvent(QPaintEvent*) {
    const QPalette& pal = palette();
    const QFontMetricsF metrics(font());
    const qreal line = metrics.height();
    const qreal width = instruments::lineWidth(this);
    const QColor ink = pal.color(QPalette::WindowText);
    const QColor trough = instruments::tone(m_trough, pal, QPalette::Base);
    const QColor fill = instruments::tone(m_bar, pal, QPalette::Highlight);

    // Left to right: labels, ticks, bar, arrow heads; the whole centred in a wider cell.
    const qreal left = std::max<qreal>(0, (this->width() - contentWidth()) / 2) + kPadding * line;
    const qreal labelsRight = left + metrics.horizontalAdvance(topLabel());
    const QRectF bar = barRect();
    auto yOf = [&](double percent) { return bar.bottom() - bar.height() * percent / 100; };

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    // Labels where there is room for them, ticks at every tenth where those fit.
    const int labelStep = bar.height() >= 5 * line * 1.3 ? 20 : 50;
    const bool tenths = bar.height() >= 10 * line * 0.35;
    const QColor grid = instruments::mix(trough, ink, 0.12);
    for (int percent = 0; percent <= 100; percent += 10) {
        const bool labelled = percent % labelStep == 0;
        if (!labelled && !tenths) continue;
        const qreal y = yOf(percent);
        const qreal length = (labelled ? kLongTick : kShortTick) * line;
        painter.setPen(QPen(ink, width * (labelled ? 1.4 : 1.0), Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(QPointF(bar.left() - length, y), QPointF(bar.left(), y));
        if (!labelled) continue;
        const QString text = percent == 100 ? topLabel() : QString::number(percent);
        painter.drawText(QRectF(left, y - line / 2, labelsRight - left, line),
                         Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, text);
    }

    painter.setPen(Qt::NoPen);
    painter.setBrush(trough);
    painter.drawRect(bar);
    painter.setPen(QPen(grid, width));
    for (int percent = labelStep; percent < 100; percent += labelStep)
        painter.drawLine(QPointF(bar.left(), yOf(percent)), QPointF(bar.right(), yOf(percent)));

    const qreal level = this->level();
    if (level > 0) {
        const QRectF filled(bar.left(), yOf(level * 100), bar.width(), bar.height() * level);
        QLinearGradient body(filled.topLeft(), filled.topRight());
        body.setColorAt(0, instruments::mix(fill, Qt::white, 0.2));
        body.setColorAt(0.4, fill);
        body.setColorAt(1, fill.darker(118));
        painter.setPen(Qt::NoPen);
        painter.setBrush(body);
        painter.drawRect(filled);
        painter.setPen(QPen(fill.darker(140), width, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(filled.topLeft(), filled.topRight());
    }

    painter.setPen(QPen(instruments::mix(pal.color(QPalette::Window), ink, 0.45), width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(bar);

    // Thresholds: the action alarm first, so that the fire alarm stays on top where they
    // meet. A halo of the trough's colour keeps them legible on the bar.
    QList<ThresholdLine*> lines = thresholdLines();
    std::stable_sort(lines.begin(), lines.end(), [](ThresholdLine* a, ThresholdLine* b) {
        return a->kind() == ThresholdLine::Kind::ActionAlarm &&
               b->kind() == ThresholdLine::Kind::FireAlarm;
    });
    const qreal overhang = 0.2 * line;
    for (const ThresholdLine* threshold : lines) {
        if (std::isnan(threshold->percent())) continue;
        const qreal y = yOf(threshold->percent());
        const QColor color = lineColor(threshold->kind(), pal);
        const QPointF from(bar.left() - overhang, y);
        const QPointF to(bar.right() + overhang, y);
        painter.setPen(QPen(trough, width * 4, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(from, to);
        QPen pen(color, width * 2, Qt::SolidLine, Qt::FlatCap);
        if (threshold->kind() == ThresholdLine::Kind::ActionAlarm) pen.setDashPattern({3, 1.5});
        painter.setPen(pen);
        painter.drawLine(from, to);

        const qreal head = 0.3 * line;
        const QPointF tip(bar.right() + overhang, y);
        painter.setPen(QPen(color.darker(130), width * 0.75));
        painter.setBrush(color);
        painter.drawPolygon(
            QPolygonF({tip, tip + QPointF(2 * head, -head), tip + QPointF(2 * head, head)}));
    }
}

#include "moc_bargraph.cpp"
