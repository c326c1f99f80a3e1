#pragma once

#include "common/colors.h"
#include "common/ui/elementwidget.h"

#include <cstdint>

#include <QWidget>

// A round LED. Its back colour lights it; the window colour or none leaves it dark, a dark
// grey lens in a rim that stands apart from a light and a dark window alike. A dot colour
// lights it in that colour whatever the back colour is: that is how a lamp arrives whose
// logic draws a dot into its box.
class LedLamp : public QWidget, public ElementWidget {
    Q_OBJECT

public:
    explicit LedLamp(QWidget* parent = nullptr);

    void setBackColor(std::uint32_t color);
    void setDotColor(std::uint32_t color);
    bool isLit() const;

    void applyElement(const Element& element, ElementProperty changed) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::uint32_t m_back = colors::kDefault;
    std::uint32_t m_dot = colors::kDefault;
};
