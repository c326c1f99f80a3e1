#include "localize/ui/pipedrawing.h"

#include "common/formmodel.h"
#include "common/ui/formview.h"
#include "localize/localize_elements.h"

#include <QPainter>
#include <QPainterPath>

namespace ll = frmLocalizeLearn;

namespace {

constexpr int kLinesPerHole = 5;
// The parts of a hole, in the order of its five line elements.
enum Part { UpperWall, LowerWall, Opening, Bore, Beyond };

} // namespace

PipeDrawing::PipeDrawing(Form& form, QWidget* parent)
    : QWidget(parent)
    , m_form(form) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    // Each line element is a part of the drawing under its own name, as a threshold line is
    // of its bar graph; the drawing reads the parts' visibility from the model.
    for (int line = 0; line < kPipeHoles * kLinesPerHole; ++line)
        named<QObject>(ll::linLocPipe[line], this);
    connect(&m_form, &Form::elementChanged, this,
            [this](const QString& element, ElementProperty) { onElementChanged(element); });
    connect(&m_form, &Form::edited, this, &PipeDrawing::onElementChanged);
}

void PipeDrawing::onElementChanged(const QString& element) {
    if (element.startsWith(u"linLocPipe_") || element.startsWith(u"picLocFirePlaceTest_") ||
        element.startsWith(u"optLocHole_") || element == ll::picLocLearnActivLED)
        update();
}

bool PipeDrawing::lineShown(int hole, int part) const {
    return m_form.isVisible(ll::linLocPipe[hole * kLinesPerHole + part]);
}

bool PipeDrawing::holeDrawn(int hole) const {
    return lineShown(hole, Opening);
}

bool PipeDrawing::isSeatOfFire(int hole) const {
    const QString lamp = ll::picLocFirePlaceTest[hole];
    return holeDrawn(hole) && m_form.isVisible(lamp) && m_form.backColor(lamp) == colors::kRed;
}

// The lamp of a running measurement holds its LED state, 0 while none runs.
bool PipeDrawing::isMeasured(int hole) const {
    return holeDrawn(hole) && m_form.value(ll::picLocLearnActivLED) != 0 &&
           m_form.isChecked(ll::optLocHole[hole]);
}

qreal PipeDrawing::holeCentre(int hole) const {
    return width() * (hole + 0.5) / kPipeHoles;
}

QSize PipeDrawing::sizeHint() const {
    const int line = fontMetrics().height();
    return {line * 5 * kPipeHoles, line * 5};
}

QSize PipeDrawing::minimumSizeHint() const {
    const int line = fontMetrics().height();
    return {line * 2 * kPipeHoles, line * 5};
}

void PipeDrawing::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QPalette& pal = palette();
    const qreal unit = fontMetrics().height() * 1.25;
    const qreal bore = unit * 0.3;             // half the width of a hole's bore
    const qreal top = unit * 0.5;              // the pipe's upper wall
    const qreal bottom = top + unit * 1.2;     // its lower wall
    const qreal boreEnd = bottom + unit * 0.6; // where a hole's bore ends below the pipe
    const qreal wall = qMax<qreal>(1.5, unit / 7);
    const qreal stub = width() / (kPipeHoles * 4.0); // the pipe's run beyond a hole
    const QColor ink = pal.color(QPalette::WindowText);
    // Runs of the wall meet without overlap; corners close with square ends.
    const QPen wallPen(ink, wall, Qt::SolidLine, Qt::FlatCap);
    const QPen cornerPen(ink, wall, Qt::SolidLine, Qt::SquareCap);

    // The pipe reaches as far as its last shown part; its inside is filled in one piece, so
    // that no seam shows where two parts meet. Then its walls, part by part.
    qreal end = 0;
    for (int h = 0; h < kPipeHoles; ++h) {
        if (lineShown(h, UpperWall) || lineShown(h, LowerWall)) end = qMax(end, holeCentre(h));
        if (lineShown(h, Beyond)) end = qMax(end, holeCentre(h) + stub);
    }
    p.fillRect(QRectF(0, top, end, bottom - top), pal.color(QPalette::Base));
    p.setPen(wallPen);
    for (int h = 0; h < kPipeHoles; ++h) {
        // The lower wall opens where a hole leaves it.
        const qreal from = h == 0 ? 0 : holeCentre(h - 1);
        const qreal after = h == 0 ? 0 : from + (holeDrawn(h - 1) ? bore : 0);
        const qreal to = holeCentre(h);
        const qreal gap = holeDrawn(h) ? bore : 0;
        if (lineShown(h, UpperWall)) p.drawLine(QPointF(from, top), QPointF(to, top));
        if (lineShown(h, LowerWall)) p.drawLine(QPointF(after, bottom), QPointF(to - gap, bottom));
        // The run beyond a hole draws only what the next hole's walls leave out, so that no
        // wall is drawn twice.
        const bool last = h == kPipeHoles - 1;
        if (lineShown(h, Beyond) && (last || !lineShown(h + 1, UpperWall)))
            p.drawLine(QPointF(to, top), QPointF(to + stub, top));
        if (lineShown(h, Beyond) && (last || !lineShown(h + 1, LowerWall)))
            p.drawLine(QPointF(to + gap, bottom), QPointF(to + stub, bottom));
    }
    // The closed end of the pipe.
    p.setPen(cornerPen);
    if (end > 0) p.drawLine(QPointF(end, top), QPointF(end, bottom));

    // The holes: a bore under the pipe that ends in a wider mouth, lit red at the seat of
    // the fire and ringed in the highlight colour while its transport time is measured.
    for (int h = 0; h < kPipeHoles; ++h) {
        if (!holeDrawn(h)) continue;
        const qreal x = holeCentre(h);
        if (isSeatOfFire(h)) {
            const QColor fire(220, 20, 10);
            p.fillRect(QRectF(x - bore, bottom - wall / 2, 2 * bore, boreEnd - bottom),
                       fire.lighter(130));
            p.setPen(QPen(fire.darker(140), wall / 2));
            p.setBrush(fire);
            p.drawEllipse(QPointF(x, boreEnd + unit * 0.55), unit * 0.45, unit * 0.45);
        }
        if (lineShown(h, Bore)) {
            p.setPen(cornerPen);
            p.drawLine(QPointF(x - bore, bottom), QPointF(x - bore, boreEnd));
            p.drawLine(QPointF(x + bore, bottom), QPointF(x + bore, boreEnd));
            p.drawLine(QPointF(x - bore * 2, boreEnd), QPointF(x - bore, boreEnd));
            p.drawLine(QPointF(x + bore, boreEnd), QPointF(x + bore * 2, boreEnd));
        }
        if (isMeasured(h)) {
            p.setPen(QPen(pal.color(QPalette::Highlight), wall * 1.5));
            p.setBrush(Qt::NoBrush);
            p.drawEllipse(QPointF(x, (top + boreEnd) / 2), bore * 2 + unit * 0.4,
                          (boreEnd - top) / 2 + unit * 0.35);
        }
    }

    // The air flows to the device on the left.
    if (end <= 0) return;
    const qreal mid = (top + bottom) / 2;
    const qreal arrow = unit * 0.3;
    const QColor flow = pal.color(QPalette::PlaceholderText);
    p.setPen(QPen(flow, wall));
    p.drawLine(QPointF(arrow * 2, mid), QPointF(arrow * 5, mid));
    QPainterPath head;
    head.moveTo(arrow * 0.6, mid);
    head.lineTo(arrow * 2, mid - arrow * 0.7);
    head.lineTo(arrow * 2, mid + arrow * 0.7);
    head.closeSubpath();
    p.fillPath(head, flow);
}

#include "moc_pipedrawing.cpp"
