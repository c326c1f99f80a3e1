#include "display/ui/updown.h"

#include <algorithm>
#include <cmath>

#include <QKeyEvent>
#include <QToolButton>
#include <QVBoxLayout>

UpDown::UpDown(QWidget* parent)
    : QWidget(parent) {
    setFocusPolicy(Qt::NoFocus);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_up = arrow(Qt::UpArrow, 1);
    m_down = arrow(Qt::DownArrow, -1);
    column->addWidget(m_up);
    column->addWidget(m_down);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QToolButton* UpDown::arrow(Qt::ArrowType type, int steps) {
    auto* button = new QToolButton(this);
    button->setArrowType(type);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    const int side = fontMetrics().height() * 2 / 3;
    button->setFixedSize(side * 3 / 2, side);
    connect(button, &QToolButton::clicked, this, [this, steps] { stepBy(steps); });
    return button;
}

void UpDown::stepBy(int steps) {
    if (!std::isfinite(m_value) || !(m_maximum >= m_minimum)) return;
    const double next = std::clamp(m_value + steps * m_step, m_minimum, m_maximum);
    if (next == m_value) return;
    m_value = next;
    if (m_report) m_report(m_value);
}

void UpDown::applyElement(const Element& element, ElementProperty changed) {
    if (changed == ElementProperty::Value) m_value = element.value;
    if (changed == ElementProperty::Range) {
        m_minimum = element.minimum;
        m_maximum = element.maximum;
        m_step = element.step > 0 ? element.step : 1;
    }
}

void UpDown::driveFrom(QWidget* field) {
    field->installEventFilter(this);
}

bool UpDown::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !isVisible() || !isEnabled())
        return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->modifiers() & ~Qt::KeypadModifier) return false;
    switch (key->key()) {
    case Qt::Key_Up:
        stepBy(1);
        return true;
    case Qt::Key_Down:
        stepBy(-1);
        return true;
    case Qt::Key_PageUp:
        stepBy(10);
        return true;
    case Qt::Key_PageDown:
        stepBy(-10);
        return true;
    default:
        return false;
    }
}

#include "moc_updown.cpp"
