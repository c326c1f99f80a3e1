#pragma once

#include "common/ui/colorbox.h"

// A signal lamp: a box filled with its back colour, drawn as a lit dome. Unlit, with the
// default colour or the window's, it is a dark lens.
class Lamp : public ColorBox {
    Q_OBJECT

public:
    enum class Shape { Circle, RoundedBox };

    explicit Lamp(QWidget* parent = nullptr, Shape shape = Shape::Circle);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Shape m_shape;
};
