#pragma once

#include "common/ui/elementwidget.h"

#include <QWidget>

class QToolButton;

// The up/down element beside a setting's field: two arrows that step a whole number within
// its range; the logic writes the number into the field as the field's own text. It takes
// no keyboard focus of its own, so that a field is one Tab stop: in its field, the arrow keys
// and Page Up/Down step it.
class UpDown : public QWidget, public ElementWidget {
    Q_OBJECT

public:
    explicit UpDown(QWidget* parent = nullptr);

    double value() const { return m_value; }
    void stepBy(int steps);
    // The arrow keys and Page Up/Down pressed in `field` step this element.
    void driveFrom(QWidget* field);
    QToolButton* upArrow() const { return m_up; }
    QToolButton* downArrow() const { return m_down; }

    void applyElement(const Element& element, ElementProperty changed) override;
    void reportValuesTo(std::function<void(double)> report) override {
        m_report = std::move(report);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QToolButton* arrow(Qt::ArrowType type, int steps);

    QToolButton* m_up = nullptr;
    QToolButton* m_down = nullptr;

    double m_value = 0;
    double m_minimum = 0;
    double m_maximum = 0;
    double m_step = 1;
    std::function<void(double)> m_report;
};
