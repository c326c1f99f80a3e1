#pragma once

#include <QIcon>
#include <QPixmap>
#include <QWidget>

// The team's own pictures, drawn in code: the company logo, the language flags and the
// notification-area icons.
namespace artwork {

// Width of the logo at `height`, mark and name together.
qreal logoWidth(qreal height);
// The logo, left-aligned and vertically centred in `box`.
void paintLogo(QPainter& painter, const QRectF& box);

// The flag of language 1 (German), 2 (English), 3 (French) or 4 (Dutch); anything else
// gives a transparent picture.
QPixmap flag(int language, const QSize& size, qreal devicePixelRatio = 1.0);

// The device with its receive and send lamps; state bit 0 lights reception, bit 1 sending.
QPixmap deviceIcon(int state, int side, qreal devicePixelRatio = 1.0);
QIcon trayIcon(int state);

} // namespace artwork

// The logo as an element of a window (picHALVORN).
class LogoView : public QWidget {
    Q_OBJECT

public:
    explicit LogoView(int height, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_height;
};
