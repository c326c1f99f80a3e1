#pragma once

#include "common/ui/elementwidget.h"

#include <QWidget>

class QToolButton;

// The up/down element beside a setting's field: two arrows that step a whole number within
// its range; the logic writes the number into the field as the field's own text. With the
// keyboard focus, the arrow keys and Page Up/Down step it as well.
class UpDown : public QWidget, public ElementWidget {
    Q_OBJECT

public:
    explicit UpDown(QWidget* parent = nullptr);

    double value() const { return m_value; }
    void stepBy(int steps);

    void applyElement(const Element& element, ElementProperty changed) override;
    void reportValuesTo(std::function<void(double)> report) override {
        m_report = std::move(report);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QToolButton* arrow(Qt::ArrowType type, int steps);

    double m_value = 0;
    double m_minimum = 0;
    double m_maximum = 0;
    double m_step = 1;
    std::function<void(double)> m_report;
};
