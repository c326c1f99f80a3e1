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

// The transport time of each aspiration hole, the number of holes, the blow time and the
// fan voltages, as the device holds them; learning and testing open from here.
QWidget* buildLocalisationPage(PageParts& p) {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    QGroupBox* box = p.frame(el::fraLocalization);
    auto* boxColumn = new QVBoxLayout(box);
    auto* holes = new QGridLayout;
    for (int i = 0; i < 5; ++i) {
        holes->addWidget(p.legend(el::lblLocHole[i]), 0, 2 * i, 1, 2, Qt::AlignHCenter);
        holes->addWidget(p.value(el::lblLocTime[i], el::lblLocHole[i], QStringLiteral("888.8")), 1,
                         2 * i);
        holes->addWidget(p.unit(el::lblLocTimeUnit[i]), 1, 2 * i + 1);
    }
    holes->setColumnStretch(10, 1);
    boxColumn->addLayout(holes);

    auto* grid = new QGridLayout;
    struct Row {
        QString legend, value, unit;
    };
    grid->addWidget(p.legend(el::lblLocNumberOfHolesLegend), 0, 0);
    grid->addWidget(
        p.value(el::lblLocNumberOfHoles, el::lblLocNumberOfHolesLegend, QStringLiteral("8")), 0, 1);
    const Row rows[] = {
        {el::lblBlowTimeLegend, el::lblBlowTime, el::lblBlowTimeUnit},
        {el::lblSuckFanVoltageLegend, el::lblSuckFanVoltage, el::lblSuckFanVoltageUnit},
        {el::lblBlowFanVoltageLegend, el::lblBlowFanVoltage, el::lblBlowFanVoltageUnit}};
    int row = 1;
    for (const Row& r : rows) {
        grid->addWidget(p.legend(r.legend), row, 0);
        grid->addWidget(p.value(r.value, r.legend, QStringLiteral("888.8")), row, 1);
        grid->addWidget(p.unit(r.unit), row, 2);
        ++row;
    }
    grid->setColumnStretch(3, 1);
    boxColumn->addLayout(grid);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (int i = 0; i < 2; ++i)
        buttons->addWidget(p.button(el::cmdShowLocLearnMode[i]));
    boxColumn->addLayout(buttons);
    column->addWidget(box);
    column->addStretch(1);
    return page;
}
