#pragma once

#include "common/ui/colorbox.h"

// The start window's LED pair: the upper half lit in the back colour shows reception, a
// line at half height in the fore colour shows sending. The default colour of either is
// the area's own background, so an idle pair is an empty box.
class LedPair : public ColorBox {
    Q_OBJECT

public:
    explicit LedPair(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
