#pragma once

#include <QWidget>

class Form;

// The aspiration pipe of the learn and test window, drawn from the window's model: the
// pipe runs from the device on the left past the five holes. Each hole stands for five
// line elements (linLocPipe 5i to 5i + 4: upper wall, lower wall, the opening, its bore,
// the run beyond it), and only the visible ones are drawn, so a pipe of three holes ends
// after the third. A hole whose seat-of-fire lamp is shown red is lit red; the hole chosen
// for a measurement is marked while the measurement runs. Vector drawing only, so it stays
// sharp at any scaling.
// The holes along the pipe.
inline constexpr int kPipeHoles = 5;

class PipeDrawing : public QWidget {
    Q_OBJECT

public:
    explicit PipeDrawing(Form& form, QWidget* parent = nullptr);

    // What the drawing shows of hole `hole` (0 to 4).
    bool holeDrawn(int hole) const;
    bool isSeatOfFire(int hole) const;
    bool isMeasured(int hole) const;
    // The horizontal centre of hole `hole`, so that a row of controls can line up with it.
    qreal holeCentre(int hole) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool lineShown(int hole, int part) const;
    void onElementChanged(const QString& element);

    Form& m_form;
};
