#include "display/mainview_elements.h"
#include "display/ui/mainpages.h"
#include "display/ui/pageparts.h"
#include "engine/settingtable.h"

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

// The rows of the settings that stand in `group`, in the table's order. Rows that share a
// part of the frame (what comes and goes with a feature of the device) share its grid.
void addRows(PageParts& p, QVBoxLayout* column, const QString& group, const QString& suffix = {}) {
    QString part;
    QGridLayout* grid = nullptr;
    int row = 0;
    for (const SettingDescriptor& s : settingTable()) {
        if (s.group != group) continue;
        if (!grid || s.part != part) {
            part = s.part;
            row = 0;
            if (part.isEmpty()) {
                grid = new QGridLayout;
                column->addLayout(grid);
            } else {
                column->addWidget(p.part(part, &grid));
            }
            grid->setColumnStretch(0, 1);
        }
        switch (s.kind) {
        case SettingDescriptor::Kind::Switch:
            p.switchRow(grid, row++, s.legendElement(), s.shownBox(), s.copyBox(), suffix);
            break;
        case SettingDescriptor::Kind::MinutesSeconds:
            p.settingRow(grid, row, s.legendElement(), s.labelElement(0), s.fieldElement(0),
                         s.upDownElement(0), s.unitElement(0), kWidest, suffix);
            // The seconds stand under the minutes.
            p.settingCells(grid, row + 1, 1, s.legendElement(), s.labelElement(1),
                           s.fieldElement(1), s.upDownElement(1), s.unitElement(1), kWidest,
                           suffix);
            row += 2;
            break;
        default:
            p.settingRow(grid, row++, s.legendElement(), s.labelElement(), s.fieldElement(),
                         s.upDownElement(), s.unitElement(), kWidest, suffix);
            break;
        }
    }
}

QGroupBox* general(PageParts& p) {
    QGroupBox* box = p.frame(el::fraSettings);
    auto* column = new QVBoxLayout(box);
    addRows(p, column, el::fraSettings);
    column->addStretch(1);
    return box;
}

QGroupBox* detector(PageParts& p, int d) {
    QGroupBox* box = p.frame(el::fraDetectorSettings[d]);
    auto* column = new QVBoxLayout(box);
    addRows(p, column, el::fraDetectorSettings[d], QString::number(d + 1));
    return box;
}

QGroupBox* airFlowInit(PageParts& p) {
    QGroupBox* box = p.frame(el::fraAirFlowInit);
    auto* column = new QVBoxLayout(box);
    addRows(p, column, el::fraAirFlowInit);
    column->addLayout(buttons(
        p, el::fraAirFlowInit,
        {el::cmdAirFlowSet, el::cmdAirFlowStandard, el::cmdAirFlowInit, el::cmdAirFlowCancel}));
    column->addWidget(p.waitingNote(el::lblAirFlowWaiting));
    return box;
}

QGroupBox* temperatureAlarms(PageParts& p) {
    QGroupBox* box = p.frame(el::fraSensorTemp[1]);
    auto* column = new QVBoxLayout(box);
    addRows(p, column, el::fraSensorTemp[1]);
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
