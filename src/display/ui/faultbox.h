#pragma once

#include "common/colors.h"
#include "common/ui/elementwidget.h"

#include <cstdint>

#include <QWidget>

// A fault box of the fault list: a small square, empty in the window colour, filled with
// its back colour (yellow: the fault is pending), and with a dot of the dot colour at its
// centre, a third of its height in radius (yellow: the fault is latched).
class FaultBox : public QWidget, public ElementWidget {
    Q_OBJECT

public:
    explicit FaultBox(QWidget* parent = nullptr);

    void setBackColor(std::uint32_t color);
    void setDotColor(std::uint32_t color);

    void applyElement(const Element& element, ElementProperty changed) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::uint32_t m_back = colors::kDefault;
    std::uint32_t m_dot = colors::kDefault;
};
