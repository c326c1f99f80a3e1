#pragma once

#include "common/colors.h"
#include "common/ui/elementwidget.h"

#include <cstdint>
#include <optional>

#include <QFont>
#include <QPolygonF>
#include <QRect>
#include <QRectF>
#include <QStringList>
#include <QWidget>

// A pointer gauge: an arc scale from minimum over centre to maximum, labelled at its two
// ends and at the centre mark, and a needle. Each half of the scale is linear on its own,
// so the centre label stands at the top whatever the range. The needle stops at the ends;
// without a reading (a value that is not a number) it is not drawn.
class ExtGauge : public QWidget, public ElementWidget {
    Q_OBJECT
    Q_PROPERTY(double value READ value)
    Q_PROPERTY(double minimum READ minimum)
    Q_PROPERTY(double maximum READ maximum)

public:
    explicit ExtGauge(QWidget* parent = nullptr);

    double value() const { return m_value; }
    double minimum() const { return m_minimum; }
    double centre() const { return m_centre; }
    double maximum() const { return m_maximum; }
    QStringList labels() const { return m_labels; }

    void setValue(double value);
    void setRange(double minimum, double centre, double maximum);
    // Lower end, centre and upper end; missing ones stay empty.
    void setLabels(const QStringList& labels);
    // Colours of the dial face and of its scale and needle, as model numbers.
    void setColors(std::uint32_t face, std::uint32_t ink);

    // Where the needle stands: -1 at the lower end, 0 at the centre mark, 1 at the upper end;
    // NaN without a reading.
    double deflection() const;

    void applyElement(const Element& element, ElementProperty changed) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Dial {
        QPointF pivot;
        qreal radius = 0; // of the scale's arc, from which the ticks point outwards
        qreal scale = 1;  // of ticks and hub, against their preferred size
        qreal weight = 1; // of strokes and labels, which grow slower
        QFont font;
        QRectF face;
        QRectF labels[3]; // lower end, centre, upper end
    };
    // The dial for a scale of `radius`, around a pivot at the origin.
    Dial measure(qreal radius, bool forHint) const;
    // The dial laid out in `area`, as large as it fits.
    Dial layout(const QRectF& area) const;
    const Dial& dial() const;
    QPolygonF needle() const;
    QRect needleArea(double deflection) const;
    QString label(int index) const { return m_labels.value(index); }

    double m_value = 0;
    double m_minimum = 0;
    double m_centre = 0;
    double m_maximum = 0;
    QStringList m_labels;
    std::uint32_t m_face = colors::kDefault;
    std::uint32_t m_ink = colors::kDefault;
    // The layout of the last paint, kept while size, font and labels stay.
    mutable std::optional<Dial> m_dial;
    mutable QSize m_dialSize;
};
