#include "display/mainview_elements.h"
#include "display/ui/mainpages.h"
#include "display/ui/pageparts.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace el = frmDisplay;

namespace {

QHBoxLayout* buttons(PageParts& p, const QString& purpose, std::initializer_list<QString> names) {
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    for (const QString& name : names)
        row->addWidget(p.button(name, purpose));
    return row;
}

// Every value of the page takes the width of the widest, so that the columns of separate
// grids line up.
const QString kWidest = QStringLiteral("-8888.888");

QGroupBox* general(PageParts& p) {
    QGroupBox* box = p.frame(el::fraSettings);
    auto* column = new QVBoxLayout(box);
    auto* grid = new QGridLayout;
    p.settingRow(grid, 0, el::lblAlarmDelayLegend, el::lblAlarmDelay, el::txtAlarmDelay,
                 el::ctrAlarmDelay, el::lblAlarmDelayUnit, kWidest);
    p.settingRow(grid, 1, el::lblExtinguishDelayLegend, el::lblExtinguishDelay,
                 el::txtExtinguishDelay, el::ctrExtinguishDelay, el::lblExtinguishDelayUnit,
                 kWidest);
    grid->setColumnStretch(0, 1);
    column->addLayout(grid);

    QGridLayout* flowGrid = nullptr;
    QWidget* flow = p.part(el::fraHasAirFlow[0], &flowGrid);
    p.settingRow(flowGrid, 0, el::lblAirFlowRangeLegend, el::lblAirFlowRange, el::txtAirFlowRange,
                 el::ctrAirFlowRange, el::lblAirFlowRangeUnit, kWidest);
    p.settingRow(flowGrid, 1, el::lblFaultDelayLegend, el::lblFaultDelayMinutes,
                 el::txtFaultDelayMinutes, el::ctrFaultDelayMinutes, el::lblFaultDelayMinutesUnit,
                 kWidest);
    // The seconds of the fault delay stand under its minutes.
    p.settingCells(flowGrid, 2, 1, el::lblFaultDelayLegend, el::lblFaultDelaySeconds,
                   el::txtFaultDelaySeconds, el::ctrFaultDelaySeconds, el::lblFaultDelaySecondsUnit,
                   kWidest);
    flowGrid->setColumnStretch(0, 1);
    column->addWidget(flow);

    auto* switches = new QGridLayout;
    p.switchRow(switches, 0, el::lblBuzzerLegend, el::chkBuzzer[0], el::chkBuzzer[1]);
    p.switchRow(switches, 1, el::lblFaultStoreLegend, el::chkFaultStore[0], el::chkFaultStore[1]);
    switches->setColumnStretch(0, 1);
    column->addLayout(switches);
    struct Switch {
        QString part, legend, shown, copy;
    };
    const Switch optional[] = {
        {el::fraHasAirFlow[1], el::lblDynamicAirflowLegend, el::chkDynamicAirflow[0],
         el::chkDynamicAirflow[1]},
        {el::fraHasLocalization, el::lblLocalizationLegend, el::chkLocalization[0],
         el::chkLocalization[1]},
        {el::fraAlarmAfterLoc, el::lblAlarmAfterLocLegend, el::chkAlarmAfterLoc[0],
         el::chkAlarmAfterLoc[1]},
    };
    for (const Switch& row : optional) {
        QGridLayout* grid = nullptr;
        QWidget* part = p.part(row.part, &grid);
        p.switchRow(grid, 0, row.legend, row.shown, row.copy);
        grid->setColumnStretch(0, 1);
        column->addWidget(part);
    }
    column->addStretch(1);
    return box;
}

QGroupBox* detector(PageParts& p, int d) {
    const QString number = QString::number(d + 1);
    QGroupBox* box = p.frame(el::fraDetectorSettings[d]);
    auto* column = new QVBoxLayout(box);
    auto* grid = new QGridLayout;
    p.settingRow(grid, 0, el::lblSensitivityLegend[d], el::lblSensitivity[d], el::txtSensitivity[d],
                 el::ctrSensitivity[d], el::lblSensitivityUnit[d], kWidest, number);
    grid->setColumnStretch(0, 1);
    column->addLayout(grid);
    QGridLayout* thresholdGrid = nullptr;
    QWidget* threshold = p.part(el::fraPreAlarmThreshold[d], &thresholdGrid);
    p.settingRow(thresholdGrid, 0, el::lblPreAlarmThresholdLegend[d], el::lblPreAlarmThreshold[d],
                 el::txtPreAlarmThreshold[d], el::ctrPreAlarmThreshold[d],
                 el::lblPreAlarmThresholdUnit[d], kWidest, number);
    thresholdGrid->setColumnStretch(0, 1);
    column->addWidget(threshold);
    QGridLayout* trueLixGrid = nullptr;
    QWidget* trueLix = p.part(el::fraHasTrueLix[d], &trueLixGrid);
    p.switchRow(trueLixGrid, 0, el::lblTrueLixLegend[d], el::chkTrueLix[2 * d],
                el::chkTrueLix[2 * d + 1], number);
    trueLixGrid->setColumnStretch(0, 1);
    column->addWidget(trueLix);
    return box;
}

QGroupBox* airFlowInit(PageParts& p) {
    QGroupBox* box = p.frame(el::fraAirFlowInit);
    auto* column = new QVBoxLayout(box);
    QGridLayout* flowGrid = nullptr;
    QWidget* flow = p.part(el::fraHasAirFlow[2], &flowGrid);
    p.settingRow(flowGrid, 0, el::lblAltitudeLegend, el::lblAltitude, el::txtAltitude,
                 el::ctrAltitude, el::lblAltitudeUnit, kWidest);
    p.settingRow(flowGrid, 1, el::lblAirPressureLegend, el::lblAirPressure, el::txtAirPressure,
                 el::ctrAirPressure, el::lblAirPressureUnit, kWidest);
    flowGrid->setColumnStretch(0, 1);
    column->addWidget(flow);
    auto* grid = new QGridLayout;
    p.settingRow(grid, 0, el::lblFanVoltageNormalLegend, el::lblFanVoltageNormal,
                 el::txtFanVoltageNormal, el::ctrFanVoltageNormal, el::lblFanVoltageNormalUnit,
                 kWidest);
    grid->setColumnStretch(0, 1);
    column->addLayout(grid);
    column->addLayout(buttons(
        p, el::fraAirFlowInit,
        {el::cmdAirFlowSet, el::cmdAirFlowStandard, el::cmdAirFlowInit, el::cmdAirFlowCancel}));
    column->addWidget(p.waitingNote(el::lblAirFlowWaiting));
    return box;
}

QGroupBox* temperatureAlarms(PageParts& p) {
    QGroupBox* box = p.frame(el::fraSensorTemp[1]);
    auto* column = new QVBoxLayout(box);
    for (int n = 0; n < 5; ++n) {
        QGridLayout* grid = nullptr;
        QWidget* row = p.part(el::fraSensorTemp[n + 2], &grid);
        p.settingRow(grid, 0, el::lblSensorTempAlarmLegend[n], el::lblSensorTempAlarm[n],
                     el::txtSensorTempAlarm[n], el::ctrSensorTempAlarm[n],
                     el::lblSensorTempAlarmUnit[n], kWidest);
        grid->setColumnStretch(0, 1);
        column->addWidget(row);
    }
    column->addLayout(buttons(
        p, el::fraSensorTemp[1],
        {el::cmdSensorTempAlarmSet, el::cmdSensorTempAlarmAssume, el::cmdSensorTempAlarmCancel}));
    column->addWidget(p.waitingNote(el::lblSensorTempAlarmWaiting));
    return box;
}

} // namespace

QWidget* buildSettingsPage(PageParts& p) {
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    grid->setContentsMargins(0, 0, 0, 0);
    auto* left = new QVBoxLayout;
    left->addWidget(general(p));
    auto* detectors = new QHBoxLayout;
    for (int d = 0; d < 2; ++d)
        detectors->addWidget(detector(p, d), 1);
    left->addLayout(detectors);
    left->addLayout(buttons(
        p, el::fraSettings,
        {el::cmdSettings, el::cmdSettingsStandard, el::cmdSettingsAssume, el::cmdSettingsCancel}));
    left->addWidget(p.waitingNote(el::lblSettingsWaiting));
    left->addStretch(1);
    auto* right = new QVBoxLayout;
    right->addWidget(airFlowInit(p));
    right->addWidget(temperatureAlarms(p));
    right->addStretch(1);
    grid->addLayout(left, 0, 0);
    grid->addLayout(right, 0, 1);
    grid->setColumnStretch(0, 3);
    grid->setColumnStretch(1, 2);
    return page;
}
