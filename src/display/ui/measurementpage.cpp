#include "display/mainview_elements.h"
#include "display/ui/bargraph.h"
#include "display/ui/extgauge.h"
#include "display/ui/ledlamp.h"
#include "display/ui/mainpages.h"
#include "display/ui/pageparts.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace el = frmDisplay;

namespace {

const QString kWidestPercent = QStringLiteral("-888 %");

// The smoke level of one detector: the bar with its alarm lines, the value, and the two
// alarm lamps as the key of the lines.
QGroupBox* smokeLevel(PageParts& p, int d) {
    const QString number = QString::number(d + 1);
    QGroupBox* box = p.frame(el::fraSmokeLevel[d]);
    BarGraph* bar = p.barGraph(el::ctlSmokeLevel[d], el::lblSmokeLevelLegend[d], number);
    bar->addThresholdLine(el::linFireAlarm[d], ThresholdLine::Kind::FireAlarm);
    bar->addThresholdLine(el::linActionAlarm[d], ThresholdLine::Kind::ActionAlarm);

    auto* key = new QGridLayout;
    key->addWidget(p.legend(el::lblSmokeLevelLegend[d]), 0, 0, 1, 2);
    // The smoke level is what the engineer came to read: larger than the other values.
    QLabel* smoke = p.value(el::lblSmokeLevel[d], el::lblSmokeLevelLegend[d],
                            QStringLiteral("-888.888 %/ft"), number);
    QFont large = smoke->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    smoke->setFont(large);
    PageParts::reserveSmokeWidth(smoke);
    key->addWidget(smoke, 1, 0, 1, 2);
    key->addWidget(p.led(el::picFireAlarm[d], el::lblFireAlarmLegend[d], number), 2, 0);
    key->addWidget(p.legend(el::lblFireAlarmLegend[d]), 2, 1);
    QGridLayout* actionRow = nullptr;
    QWidget* action = p.part(el::fraActionAlarm[d], &actionRow);
    actionRow->addWidget(p.led(el::picActionAlarm[d], el::lblActionAlarmLegend[d], number), 0, 0);
    actionRow->addWidget(p.legend(el::lblActionAlarmLegend[d]), 0, 1);
    actionRow->setColumnStretch(1, 1);
    key->addWidget(action, 3, 0, 1, 2);
    key->setRowStretch(4, 1);
    key->setColumnStretch(1, 1);

    auto* row = new QHBoxLayout(box);
    row->addWidget(bar, 1);
    row->addLayout(key);
    return box;
}

QGroupBox* chamber(PageParts& p, int d) {
    const QString number = QString::number(d + 1);
    QGroupBox* box = p.frame(el::fraChamber[d]);
    auto* column = new QVBoxLayout(box);
    column->addWidget(p.gauge(el::ctlChamber[d], el::lblChamberLegend[d], number), 1);
    auto* row = new QHBoxLayout;
    row->addWidget(p.legend(el::lblChamberLegend[d]));
    row->addStretch(1);
    row->addWidget(p.value(el::lblChamber[d], el::lblChamberLegend[d], kWidestPercent, number));
    column->addLayout(row);
    return box;
}

QGroupBox* airFlow(PageParts& p) {
    QGroupBox* box = p.frame(el::fraAirFlow);
    auto* column = new QVBoxLayout(box);
    ExtGauge* gauge = p.gauge(el::ctlAirFlow, el::lblAirFlowLegend);
    gauge->setMinimumHeight(gauge->fontMetrics().height() * 9);
    column->addWidget(gauge);
    auto* grid = new QGridLayout;
    grid->addWidget(p.legend(el::lblAirFlowLegend), 0, 0);
    grid->addWidget(p.value(el::lblAirFlow, el::lblAirFlowLegend, kWidestPercent), 0, 1);
    grid->addWidget(
        p.value(el::lblAirflowMeterPerSecond, el::lblAirFlowLegend, QStringLiteral("-888.88 m/s")),
        1, 1);
    grid->setColumnStretch(0, 1);
    column->addLayout(grid);
    return box;
}

// Both legends of the air temperature stand on one spot: one with air flow, one without.
QLayout* airTemperature(PageParts& p) {
    auto* grid = new QGridLayout;
    grid->addWidget(p.legend(el::lblTemperatureLegend[0]), 0, 0);
    grid->addWidget(p.legend(el::lblTemperatureLegend[1]), 0, 0);
    grid->addWidget(
        p.value(el::lblTemperature, el::lblTemperatureLegend[1], QStringLiteral("-888.8 °F")), 0,
        1);
    grid->setColumnStretch(0, 1);
    return grid;
}

QGroupBox* sensorTemperatures(PageParts& p) {
    QGroupBox* box = p.frame(el::fraSensorTemp[0]);
    auto* grid = new QGridLayout(box);
    for (int n = 0; n < 5; ++n) {
        grid->addWidget(p.legend(el::lblSensorTempLegend[n]), n, 0);
        QLabel* temperature = p.value(el::lblSensorTemp[n], el::fraSensorTemp[0],
                                      QStringLiteral("-888.8 °F"), QString::number(n + 1));
        // The logic colours the value by the sensor's state.
        temperature->setMargin(temperature->fontMetrics().averageCharWidth() / 2);
        grid->addWidget(temperature, n, 1);
    }
    grid->setColumnStretch(0, 1);
    return box;
}

// The columns share the page by their frames' wish to grow, not by stretch factors: an
// empty column, whose frames are hidden, then takes no room.
QWidget* widen(QWidget* frame) {
    frame->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    return frame;
}

// A detector's column; on a device with one detector the second column goes, and the
// others close up.
QVBoxLayout* detectorColumn(PageParts& p, int d) {
    auto* column = new QVBoxLayout;
    column->addWidget(widen(smokeLevel(p, d)), 3);
    column->addWidget(widen(chamber(p, d)), 2);
    return column;
}

} // namespace

QWidget* buildMeasurementPage(PageParts& p) {
    auto* page = new QWidget;
    auto* row = new QHBoxLayout(page);
    row->setContentsMargins(0, 0, 0, 0);
    for (int d = 0; d < 2; ++d)
        row->addLayout(detectorColumn(p, d));
    auto* right = new QVBoxLayout;
    right->addWidget(widen(airFlow(p)));
    right->addLayout(airTemperature(p));
    right->addWidget(widen(sensorTemperatures(p)));
    right->addStretch(1);
    row->addLayout(right);
    return page;
}
