#pragma once

#include "common/colors.h"

#include <cstdint>

#include <QWidget>

// A drawn element that takes its colours as the window model's numbers and paints them
// itself, instead of through its palette: lamps and the LED pair.
class ColorBox : public QWidget {
    Q_OBJECT

public:
    explicit ColorBox(QWidget* parent = nullptr);

    std::uint32_t backColor() const { return m_back; }
    std::uint32_t foreColor() const { return m_fore; }
    void setBackColor(std::uint32_t color);
    void setForeColor(std::uint32_t color);

protected:
    // The colour `color` stands for; `colors::kDefault` gives `fallback`.
    QColor resolve(std::uint32_t color, const QColor& fallback) const;

private:
    std::uint32_t m_back = colors::kDefault;
    std::uint32_t m_fore = colors::kDefault;
};
