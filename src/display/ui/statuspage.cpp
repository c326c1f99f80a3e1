#include "display/mainview_elements.h"
#include "display/ui/bargraph.h"
#include "display/ui/extgauge.h"
#include "display/ui/faultsummary.h"
#include "display/ui/ledlamp.h"
#include "display/ui/mainpages.h"
#include "display/ui/pageparts.h"
#include "display/ui/relayelement.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace el = frmDisplay;
using Says = AccessibleNames::Says;

namespace {

// A lamp and its legend in one row of a grid.
void lampRow(PageParts& p, QGridLayout* grid, int row, QWidget* lamp, const QString& legend) {
    grid->addWidget(lamp, row, 0, Qt::AlignCenter);
    grid->addWidget(p.legend(legend), row, 1);
}

QGroupBox* deviceState(PageParts& p) {
    QGroupBox* box = p.frame(el::fraDeviceState);
    auto* grid = new QGridLayout(box);
    for (int i = 0; i < 6; ++i)
        lampRow(p, grid, i, p.led(el::picDisplay[i], el::lblDisplayLegend[i]),
                el::lblDisplayLegend[i]);
    // Item 4 of the alarm reset clears the service/blocked state beside it.
    grid->addWidget(p.button(el::cmdAlarmReset[1], el::lblDisplayLegend[4]), 4, 2);
    lampRow(p, grid, 6, p.led(el::picAirFlowInitLED, el::lblAirFlowInitLEDLegend),
            el::lblAirFlowInitLEDLegend);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(7, 1);
    return box;
}

// The alarms are the brightest thing on the page when present: their lamps are larger.
QGroupBox* alarms(PageParts& p) {
    QGroupBox* box = p.frame(el::fraAlarm);
    auto* grid = new QGridLayout(box);
    auto large = [](LedLamp* lamp) {
        const int side = lamp->fontMetrics().height() * 3 / 2;
        lamp->setMinimumSize(side, side);
        return lamp;
    };
    lampRow(p, grid, 0, large(p.led(el::picFireAlarm[4], el::lblFireAlarmLegend[4])),
            el::lblFireAlarmLegend[4]);
    for (int d = 0; d < 2; ++d) {
        lampRow(p, grid, 1 + d,
                large(p.led(el::picFireAlarm[d + 2], el::lblFireAlarmLegend[d + 2])),
                el::lblFireAlarmLegend[d + 2]);
        lampRow(p, grid, 3 + d,
                large(p.led(el::picActionAlarm[d + 2], el::lblActionAlarmLegend[d + 2])),
                el::lblActionAlarmLegend[d + 2]);
    }
    auto* reset = new QHBoxLayout;
    reset->addStretch(1);
    reset->addWidget(p.button(el::cmdAlarmReset[0], el::fraAlarm));
    grid->addLayout(reset, 5, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(6, 1);
    return box;
}

QGroupBox* relayStates(PageParts& p) {
    QGroupBox* box = p.frame(el::fraRelayState[0]);
    auto* grid = new QGridLayout(box);
    grid->addWidget(p.legend(el::lblRelayStateLegend[6]), 1, 0);
    for (int r = 0; r < 5; ++r) {
        grid->addWidget(p.legend(el::lblRelayStateLegend[r]), 0, r + 1, Qt::AlignHCenter);
        grid->addWidget(
            p.relay(el::ctlRelayState[r], el::lblRelayStateLegend[6], QString::number(r + 1)), 1,
            r + 1, Qt::AlignHCenter);
    }
    grid->setColumnStretch(6, 1);
    return box;
}

QGroupBox* panelOutputs(PageParts& p) {
    QGroupBox* box = p.frame(el::fraRelayState[1]);
    auto* grid = new QGridLayout(box);
    for (int i = 8; i <= 14; ++i) {
        const int row = (i - 8) % 4;
        const int column = (i - 8) / 4 * 2;
        grid->addWidget(p.relay(el::ctlRelayState[i], el::lblRelayStateLegend[i]), row, column);
        grid->addWidget(p.legend(el::lblRelayStateLegend[i]), row, column + 1);
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return box;
}

QGroupBox* inputs(PageParts& p) {
    QGroupBox* box = p.frame(el::fraInputs);
    auto* grid = new QGridLayout(box);
    grid->addWidget(p.relay(el::ctlManAct[20], el::lblManActLegend[20]), 0, 0);
    grid->addWidget(p.led(el::picManAct[20], el::lblManActLegend[20], {}, Says::LampState), 0, 1);
    grid->addWidget(p.legend(el::lblManActLegend[20]), 0, 2);
    grid->addWidget(p.relay(el::ctlEnable[20], el::lblEnableLegend[20]), 1, 0);
    grid->addWidget(p.legend(el::lblEnableLegend[20]), 1, 2);
    grid->setColumnStretch(2, 1);
    return box;
}

QGroupBox* firePlace(PageParts& p) {
    QGroupBox* box = p.frame(el::fraFirePlace);
    auto* row = new QHBoxLayout(box);
    for (int i = 0; i < 5; ++i) {
        row->addWidget(p.legend(el::lblFirePlaceLegend[i]));
        row->addWidget(p.led(el::picFirePlace[i], el::fraFirePlace, QString(QChar(u'A' + i))));
        row->addSpacing(row->spacing() * 2);
    }
    row->addStretch(1);
    return box;
}

// The controller's numbers first, one to a row; then a small table of both detectors under
// their names. Legends in one column, values right-aligned under their heading, with room
// between the columns so that the names of the detectors never run into each other.
QGroupBox* identification(PageParts& p) {
    QGroupBox* box = p.frame(el::fraIdentification);
    auto* grid = new QGridLayout(box);
    grid->setHorizontalSpacing(grid->horizontalSpacing() * 3);
    const QString widest = QStringLiteral("8888.888.888");
    grid->addWidget(p.legend(el::lblSoftwareNoLegend[0]), 0, 0);
    grid->addWidget(p.value(el::lblSoftwareNo[0], el::lblSoftwareNoLegend[0], widest), 0, 1);
    grid->addWidget(p.legend(el::lblParameterNoLegend[0]), 1, 0);
    grid->addWidget(p.value(el::lblParameterNo[0], el::lblParameterNoLegend[0], widest), 1, 1);
    // The logic keeps this copy of the device's serial number hidden: the page's head shows it.
    grid->addWidget(p.value(el::lblSerialNo2[0], el::lblSerialNo2Legend[1], widest), 0, 2);

    grid->setRowMinimumHeight(2, grid->verticalSpacing());
    grid->addWidget(p.legend(el::lblSerialNo2Legend[1]), 4, 0);
    grid->addWidget(p.legend(el::lblSoftwareNoLegend[1]), 5, 0);
    grid->addWidget(p.legend(el::lblParameterNoLegend[1]), 6, 0);
    for (int d = 1; d <= 2; ++d) {
        grid->addWidget(p.legend(el::lblDetectorName[d + 1]), 3, d, Qt::AlignRight);
        const QString number = QString::number(d);
        grid->addWidget(p.value(el::lblSerialNo2[d], el::lblSerialNo2Legend[1], widest, number), 4,
                        d);
        grid->addWidget(p.value(el::lblSoftwareNo[d], el::lblSoftwareNoLegend[1], widest, number),
                        5, d);
        grid->addWidget(p.value(el::lblParameterNo[d], el::lblParameterNoLegend[1], widest, number),
                        6, d);
    }
    grid->setColumnStretch(0, 1);
    return box;
}

// The smoke level of both detectors as the measurement page shows it, in small: the bar
// with its alarm lines, the value, the chamber's deviation. Each part is a second view of
// the measurement page's element, so a detector the device lacks goes here too.
QGroupBox* smokeSummary(PageParts& p, int d) {
    const QString number = QString::number(d + 1);
    QGroupBox* box = p.mirrored(p.frame(el::fraSmokeLevel[d]));
    auto* grid = new QGridLayout(box);
    BarGraph* bar =
        p.mirrored(p.barGraph(el::ctlSmokeLevel[d], el::lblSmokeLevelLegend[d], number));
    bar->setMinimumHeight(bar->fontMetrics().height() * 8);
    p.mirrored(bar->addThresholdLine(el::linFireAlarm[d], ThresholdLine::Kind::FireAlarm));
    p.mirrored(bar->addThresholdLine(el::linActionAlarm[d], ThresholdLine::Kind::ActionAlarm));
    grid->addWidget(bar, 0, 0, 1, 2);
    QLabel* smoke = p.mirrored(p.value(el::lblSmokeLevel[d], el::lblSmokeLevelLegend[d],
                                       QStringLiteral("-888.888 %/ft"), number));
    QFont bold = smoke->font();
    bold.setBold(true);
    smoke->setFont(bold);
    PageParts::reserveSmokeWidth(smoke);
    grid->addWidget(smoke, 1, 0, 1, 2);
    grid->addWidget(p.mirrored(p.legend(el::lblChamberLegend[d])), 2, 0);
    grid->addWidget(p.mirrored(p.value(el::lblChamber[d], el::lblChamberLegend[d],
                                       QStringLiteral("-888 %"), number)),
                    2, 1);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(0, 1);
    return box;
}

// Air flow and air temperature, as the measurement page shows them.
QWidget* airSummary(PageParts& p) {
    auto* column = new QWidget;
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    QGroupBox* box = p.mirrored(p.frame(el::fraAirFlow));
    auto* grid = new QGridLayout(box);
    ExtGauge* gauge = p.mirrored(p.gauge(el::ctlAirFlow, el::lblAirFlowLegend));
    gauge->setMinimumHeight(gauge->fontMetrics().height() * 6);
    grid->addWidget(gauge, 0, 0, 1, 2);
    grid->addWidget(p.mirrored(p.legend(el::lblAirFlowLegend)), 1, 0);
    grid->addWidget(
        p.mirrored(p.value(el::lblAirFlow, el::lblAirFlowLegend, QStringLiteral("-888 %"))), 1, 1);
    grid->addWidget(p.mirrored(p.value(el::lblAirflowMeterPerSecond, el::lblAirFlowLegend,
                                       QStringLiteral("-888.88 m/s"))),
                    2, 1);
    grid->setColumnStretch(0, 1);
    layout->addWidget(box);
    auto* temperature = new QGridLayout;
    temperature->addWidget(p.mirrored(p.legend(el::lblTemperatureLegend[0])), 0, 0);
    temperature->addWidget(p.mirrored(p.legend(el::lblTemperatureLegend[1])), 0, 0);
    temperature->addWidget(p.mirrored(p.value(el::lblTemperature, el::lblTemperatureLegend[1],
                                              QStringLiteral("-888.8 °F"))),
                           0, 1);
    temperature->setColumnStretch(0, 1);
    layout->addLayout(temperature);
    return column;
}

QGroupBox* pendingFaults(PageParts& p) {
    QGroupBox* box = p.mirrored(p.frame(el::lblErrLegend[0]));
    auto* layout = new QVBoxLayout(box);
    auto* summary = new FaultSummary(p.names().form(), el::lblErrNone);
    p.names().add(summary, QString(), el::lblErrLegend[0]);
    layout->addWidget(summary);
    layout->addStretch(1);
    return box;
}

} // namespace

QWidget* buildStatusPage(PageParts& p) {
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    grid->setContentsMargins(0, 0, 0, 0);
    // State first: alarms and the device's lamps on the left; then what is measured,
    // the pending faults beneath it; the outputs on the right.
    auto* state = new QVBoxLayout;
    state->addWidget(alarms(p));
    state->addWidget(deviceState(p));
    state->addStretch(1);
    grid->addLayout(state, 0, 0, 2, 1);
    auto* smoke = new QHBoxLayout;
    for (int d = 0; d < 2; ++d)
        smoke->addWidget(smokeSummary(p, d), 1);
    smoke->addWidget(airSummary(p), 1);
    grid->addLayout(smoke, 0, 1, 1, 2);
    grid->addWidget(pendingFaults(p), 1, 1);
    auto* relays = new QVBoxLayout;
    relays->addWidget(relayStates(p));
    relays->addWidget(panelOutputs(p));
    relays->addStretch(1);
    grid->addLayout(relays, 1, 2);
    grid->addWidget(inputs(p), 2, 0);
    grid->addWidget(firePlace(p), 2, 1);
    grid->addWidget(identification(p), 2, 2);
    grid->setRowStretch(3, 1);
    for (int c = 0; c < 3; ++c)
        grid->setColumnStretch(c, 1);
    return page;
}
