#include "common/ui/artwork.h"

#include "common/ui/accessibility.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include <cmath>

namespace artwork {
namespace {

const QColor kBrandRed(0xC6, 0x28, 0x28);
const QColor kBrandInk(0x26, 0x32, 0x38);
const QString kBrandName = QStringLiteral("HALVORN");

QFont logoFont(qreal height) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(qMax(1, qRound(height * 0.46)));
    font.setBold(true);
    font.setLetterSpacing(QFont::PercentageSpacing, 112);
    return font;
}

// A rounded square with an H whose bar is a rising wave of smoke.
void paintMark(QPainter& p, const QRectF& square) {
    const qreal s = square.width();
    QLinearGradient fill(square.topLeft(), square.bottomLeft());
    fill.setColorAt(0, kBrandRed.lighter(115));
    fill.setColorAt(1, kBrandRed.darker(110));
    p.setPen(Qt::NoPen);
    p.setBrush(fill);
    p.drawRoundedRect(square, s * 0.22, s * 0.22);

    QPen pen(Qt::white, s * 0.13, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    const qreal left = square.left() + s * 0.3;
    const qreal right = square.right() - s * 0.3;
    const qreal top = square.top() + s * 0.24;
    const qreal bottom = square.bottom() - s * 0.24;
    p.drawLine(QPointF(left, top), QPointF(left, bottom));
    p.drawLine(QPointF(right, top), QPointF(right, bottom));
    QPainterPath wave(QPointF(left, square.center().y() + s * 0.05));
    const qreal third = (right - left) / 3;
    wave.cubicTo(QPointF(left + third, square.center().y() - s * 0.14),
                 QPointF(right - third, square.center().y() + s * 0.14),
                 QPointF(right, square.center().y() - s * 0.05));
    p.drawPath(wave);
}

// The flag's stripes, `vertical` for the tricolour of France.
void paintTricolour(QPainter& p, const QRectF& r, const QColor (&colours)[3], bool vertical) {
    for (int i = 0; i < 3; ++i) {
        const QRectF band =
            vertical ? QRectF(r.left() + r.width() * i / 3, r.top(), r.width() / 3, r.height())
                     : QRectF(r.left(), r.top() + r.height() * i / 3, r.width(), r.height() / 3);
        p.fillRect(band.adjusted(0, 0, 0.5, 0.5), colours[i]);
    }
}

// The union flag in its 60 x 30 grid, stretched to the picture.
void paintUnionFlag(QPainter& p, const QRectF& r) {
    const QColor blue(0x01, 0x21, 0x69);
    const QColor red(0xC8, 0x10, 0x2E);
    p.save();
    p.setClipRect(r);
    p.translate(r.topLeft());
    p.scale(r.width() / 60.0, r.height() / 30.0);
    p.fillRect(QRectF(0, 0, 60, 30), blue);
    p.setPen(QPen(Qt::white, 6));
    p.drawLine(QPointF(0, 0), QPointF(60, 30));
    p.drawLine(QPointF(60, 0), QPointF(0, 30));
    p.setPen(QPen(red, 2));
    p.drawLine(QPointF(0, 0), QPointF(60, 30));
    p.drawLine(QPointF(60, 0), QPointF(0, 30));
    p.fillRect(QRectF(25, 0, 10, 30), Qt::white);
    p.fillRect(QRectF(0, 10, 60, 10), Qt::white);
    p.fillRect(QRectF(27, 0, 6, 30), red);
    p.fillRect(QRectF(0, 12, 60, 6), red);
    p.restore();
}

QPixmap blank(const QSize& size, qreal dpr) {
    QPixmap pixmap(size * dpr);
    pixmap.setDevicePixelRatio(dpr);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

} // namespace

qreal logoWidth(qreal height) {
    const QFontMetricsF metrics(logoFont(height));
    return height + height * 0.3 + metrics.horizontalAdvance(kBrandName);
}

void paintLogo(QPainter& p, const QRectF& box) {
    const qreal h = qMin(box.height(), box.width());
    const QRectF square(box.left(), box.center().y() - h / 2, h, h);
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    paintMark(p, square);
    p.setFont(logoFont(h));
    p.setPen(kBrandInk);
    const QRectF text(square.right() + h * 0.3, square.top(), box.right() - square.right(), h);
    p.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, kBrandName);
    p.restore();
}

QPixmap flag(int language, const QSize& size, qreal dpr) {
    QPixmap pixmap = blank(size, dpr);
    if (language < 1 || language > 4) return pixmap;
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF r(0, 0, size.width(), size.height());
    static const QColor german[3] = {Qt::black, QColor(0xDD, 0, 0), QColor(0xFF, 0xCE, 0)};
    static const QColor french[3] = {QColor(0, 0x55, 0xA4), Qt::white, QColor(0xEF, 0x41, 0x35)};
    static const QColor dutch[3] = {QColor(0xAE, 0x1C, 0x28), Qt::white, QColor(0x21, 0x46, 0x8B)};
    switch (language) {
    case 1:
        paintTricolour(p, r, german, false);
        break;
    case 2:
        paintUnionFlag(p, r);
        break;
    case 3:
        paintTricolour(p, r, french, true);
        break;
    default:
        paintTricolour(p, r, dutch, false);
        break;
    }
    p.setPen(QPen(QColor(0, 0, 0, 70), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(r.adjusted(0.5, 0.5, -0.5, -0.5));
    return pixmap;
}

QPixmap deviceIcon(int state, int side, qreal dpr) {
    QPixmap pixmap = blank(QSize(side, side), dpr);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal s = side;
    const QRectF body(s * 0.06, s * 0.14, s * 0.88, s * 0.76);
    QLinearGradient shell(body.topLeft(), body.bottomLeft());
    shell.setColorAt(0, QColor(0x5A, 0x67, 0x72));
    shell.setColorAt(1, QColor(0x33, 0x3D, 0x46));
    p.setPen(QPen(QColor(0x1E, 0x25, 0x2B), qMax(1.0, s / 24)));
    p.setBrush(shell);
    p.drawRoundedRect(body, s * 0.14, s * 0.14);

    const qreal grille = s * 0.07;
    p.setPen(QPen(QColor(0x8A, 0x96, 0xA0), qMax(1.0, s / 20), Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 2; ++i) {
        const qreal y = body.top() + s * 0.17 + i * grille * 1.8;
        p.drawLine(QPointF(body.left() + s * 0.17, y), QPointF(body.right() - s * 0.17, y));
    }

    const qreal r = s * 0.12;
    const QPointF receive(body.left() + body.width() * 0.3, body.bottom() - s * 0.2);
    const QPointF send(body.left() + body.width() * 0.7, body.bottom() - s * 0.2);
    const bool receiving = (state & 1) != 0;
    const bool sending = (state & 2) != 0;
    p.setPen(Qt::NoPen);
    p.setBrush(receiving ? QColor(0x4C, 0xE0, 0x5A) : QColor(0x1F, 0x3A, 0x24));
    p.drawEllipse(receive, r, r);
    p.setBrush(sending ? QColor(0xFF, 0x45, 0x3A) : QColor(0x45, 0x22, 0x22));
    p.drawEllipse(send, r, r);
    return pixmap;
}

QIcon trayIcon(int state) {
    QIcon icon;
    for (int side : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(deviceIcon(state, side));
    return icon;
}

} // namespace artwork

LogoView::LogoView(int height, QWidget* parent)
    : QWidget(parent)
    , m_height(height) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::NoFocus);
    // The logo is the company's name, the same in every language; spelt as a word, not in
    // the capitals of the mark, so that a screen reader says it rather than spells it.
    setAccessibleName(QStringLiteral("Halvorn"));
    accessibility::presentDrawnWidgetsAsImages();
}

QSize LogoView::sizeHint() const {
    return {qCeil(artwork::logoWidth(m_height)) + 2, m_height};
}

void LogoView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    artwork::paintLogo(painter, QRectF(rect()));
}

#include "moc_artwork.cpp"
