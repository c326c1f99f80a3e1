#include "common/ui/colorbox.h"

#include "common/ui/accessibility.h"
#include "common/ui/formview.h"

ColorBox::ColorBox(QWidget* parent)
    : QWidget(parent) {
    accessibility::presentAsIndicator(this);
}

void ColorBox::setBackColor(std::uint32_t color) {
    if (m_back == color) return;
    m_back = color;
    update();
}

void ColorBox::setForeColor(std::uint32_t color) {
    if (m_fore == color) return;
    m_fore = color;
    update();
}

QColor ColorBox::resolve(std::uint32_t color, const QColor& fallback) const {
    if (color == colors::kDefault) return fallback;
    return modelColor(color, palette(), QPalette::Window);
}

#include "moc_colorbox.cpp"
