#pragma once

#include "common/colors.h"
#include "common/ui/elementwidget.h"

#include <cstdint>

#include <QList>
#include <QObject>
#include <QRectF>
#include <QWidget>

class BarGraph;

// A threshold across a bar graph. The logic places it as an element of its own, by its top
// in twips; the line stands at the percentage of the bar that top means. A top beyond the
// bar, such as the zero of a line that has not been placed yet, leaves the line out rather
// than show a threshold where there is none.
class ThresholdLine : public QObject, public ElementWidget {
    Q_OBJECT

public:
    enum class Kind { FireAlarm, ActionAlarm };

    ThresholdLine(const QString& elementName, Kind kind, BarGraph* bar);

    Kind kind() const { return m_kind; }
    // Its height on the bar, 0 to 100; NaN while it has no place on the bar.
    double percent() const { return m_percent; }
    void setTop(int twips);

    void applyElement(const Element& element, ElementProperty changed) override;

private:
    Kind m_kind;
    double m_percent;
};

// A vertical bar on a percentage scale, for a smoke level: the value within the element's
// range (0 to 100 without a usable one), with its threshold lines drawn across it.
class BarGraph : public QWidget, public ElementWidget {
    Q_OBJECT
    Q_PROPERTY(double value READ value)
    Q_PROPERTY(double minimum READ minimum)
    Q_PROPERTY(double maximum READ maximum)

public:
    explicit BarGraph(QWidget* parent = nullptr);

    double value() const { return m_value; }
    // The ends of the scale.
    double minimum() const;
    double maximum() const;
    // How much of the bar the value fills, 0 to 1.
    double level() const;

    void setValue(double value);
    void setRange(double minimum, double maximum);
    // Colours of the trough and of the bar, as model numbers.
    void setColors(std::uint32_t trough, std::uint32_t bar);

    // A line of `kind` across the bar, a child named `elementName` for the view to find.
    ThresholdLine* addThresholdLine(const QString& elementName, ThresholdLine::Kind kind);
    QList<ThresholdLine*> thresholdLines() const;

    void applyElement(const Element& element, ElementProperty changed) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    bool hasOwnRange() const;
    qreal contentWidth() const;
    // The trough, in the widget's coordinates.
    QRectF barRect() const;

    double m_value = 0;
    double m_minimum = 0;
    double m_maximum = 0;
    std::uint32_t m_trough = colors::kDefault;
    std::uint32_t m_bar = colors::kDefault;
};
