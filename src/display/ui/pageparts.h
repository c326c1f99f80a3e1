#pragma once

#include "display/ui/accessiblenames.h"
#include "display/ui/unitlabel.h"

#include <QString>

class BarGraph;
class ExtGauge;
class FaultBox;
class LedLamp;
class QCheckBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QWidget;
class RelayElement;
class UpDown;

// The pieces the main view's pages are made of, each named after its element and known to
// screen readers by its legend. Values use figures of equal width and keep a width that
// fits their longest text, so that nothing moves as the numbers change.
class PageParts {
public:
    explicit PageParts(AccessibleNames& names);

    QGroupBox* frame(const QString& name);
    // A part of a page that comes and goes with a feature of the device, without a frame
    // of its own; its grid has no margins.
    QWidget* part(const QString& name, QGridLayout** grid);
    QLabel* legend(const QString& name);
    // A value shown by the logic; `widest` is its longest text, for its width.
    // Wide enough for a smoke level in either unit: "%/m" sets wider than "%/ft" in most fonts.
    static void reserveSmokeWidth(QLabel* label);
    QLabel* value(const QString& name, const QString& legendName, const QString& widest,
                  const QString& suffix = {});
    UnitLabel* unit(const QString& name);
    LedLamp* led(const QString& name, const QString& legendName, const QString& suffix = {},
                 AccessibleNames::Says says = AccessibleNames::Says::LedState);
    FaultBox* faultBox(const QString& name, const QString& legendName);
    RelayElement* relay(const QString& name, const QString& legendName, const QString& suffix = {});
    ExtGauge* gauge(const QString& name, const QString& legendName, const QString& suffix = {});
    BarGraph* barGraph(const QString& name, const QString& legendName, const QString& suffix = {});
    QPushButton* button(const QString& name, const QString& purpose = {},
                        const QString& suffix = {});
    // A tick box that shows the device's setting: it looks alive but takes no input.
    QCheckBox* shownCheck(const QString& name, const QString& legendName,
                          const QString& suffix = {});
    QCheckBox* check(const QString& name, const QString& legendName, const QString& suffix = {},
                     const QString& columnLegend = {});
    QRadioButton* option(const QString& name, const QString& legendName,
                         const QString& columnLegend);
    QLineEdit* field(const QString& name, const QString& legendName, const QString& widest,
                     const QString& suffix = {});
    UpDown* upDown(const QString& name, const QString& legendName, const QString& suffix = {});
    // What a page says while it waits for the device's read-back.
    QLabel* waitingNote(const QString& name);

    // A setting's row: legend, the label and its field on one spot, the up/down element,
    // the unit.
    void settingRow(QGridLayout* grid, int row, const QString& legendName, const QString& label,
                    const QString& field, const QString& upDown, const QString& unitName,
                    const QString& widest, const QString& suffix = {});
    // The same without the legend, from `column` on: a second value in a row.
    void settingCells(QGridLayout* grid, int row, int column, const QString& legendName,
                      const QString& label, const QString& field, const QString& upDown,
                      const QString& unitName, const QString& widest, const QString& suffix = {});
    // A switch's row: legend, the device's box and its editable copy on one spot.
    void switchRow(QGridLayout* grid, int row, const QString& legendName, const QString& shown,
                   const QString& copy, const QString& suffix = {});

    // A part made by one of the above turned into a second view of its element, for a
    // summary elsewhere in the window; it keeps no name of its own and takes no input.
    template <typename T>
    T* mirrored(T* widget) {
        mirror(widget);
        return widget;
    }

    AccessibleNames& names() { return m_names; }

private:
    static void mirror(QObject* widget);

    AccessibleNames& m_names;
};

// A font whose figures all have the same width, for values that change every telegram.
QFont valueFont(const QFont& base);
