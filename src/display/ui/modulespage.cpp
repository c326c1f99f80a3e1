#include "display/mainview_elements.h"
#include "display/ui/ledlamp.h"
#include "display/ui/mainpages.h"
#include "display/ui/pageparts.h"
#include "display/ui/relayelement.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace el = frmDisplay;
using Says = AccessibleNames::Says;

namespace {

// One module as a card: its serial number, its lamps, its lines and its buttons.
QGroupBox* module(PageParts& p, int m) {
    const QString number = QString::number(m + 1);
    QGroupBox* box = p.frame(el::fraExtStatus[m]);
    auto* grid = new QGridLayout(box);
    // The legend and the number share a row without sharing a cell: the legend spans the
    // lamps' columns, the number the column of the line elements at the right.
    grid->addWidget(p.legend(el::lblExtSerialNoLegend[m]), 0, 0, 1, 2);
    grid->addWidget(p.value(el::lblExtSerialNo[m], el::lblExtSerialNoLegend[m],
                            QStringLiteral("8888888888"), number),
                    0, 2);
    struct Lamp {
        QString lamp, legend;
        Says says;
    };
    const Lamp lamps[] = {
        {el::picExtOnline[m], el::lblExtOnlineLegend[m], Says::LampState},
        {el::picExtOperating[m], el::lblExtOperatingLegend[m], Says::LedState},
        {el::picExtReleased[m], el::lblExtReleasedLegend[m], Says::LedState},
        {el::picExtFault[m], el::lblExtFaultLegend[m], Says::LedState},
        {el::picExtBlocked[m], el::lblExtBlockedLegend[m], Says::LedState},
        {el::picExtIgnition[m], el::lblExtIgnitionLegend[m], Says::LampState},
        {el::picExtCutOff[m], el::lblExtCutOffLegend[m], Says::LampState},
    };
    int row = 1;
    for (const Lamp& lamp : lamps) {
        grid->addWidget(p.led(lamp.lamp, lamp.legend, number, lamp.says), row, 0, Qt::AlignCenter);
        grid->addWidget(p.legend(lamp.legend), row, 1, 1, 2);
        ++row;
    }
    // The lines of the module: the relay element at the end of the row shows their state.
    grid->addWidget(p.led(el::picManAct[m], el::lblManActLegend[m], number, Says::LampState), row,
                    0, Qt::AlignCenter);
    grid->addWidget(p.legend(el::lblManActLegend[m]), row, 1);
    grid->addWidget(p.relay(el::ctlManAct[m], el::lblManActLegend[m], number), row++, 2);
    grid->addWidget(p.legend(el::lblEnableLegend[m]), row, 1);
    grid->addWidget(p.relay(el::ctlEnable[m], el::lblEnableLegend[m], number), row++, 2);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(p.button(el::cmdExtinguisherIdent[m], el::fraExtStatus[m]));
    buttons->addWidget(p.legend(el::lblExtinguishIsIntern[m]));
    buttons->addStretch(1);
    buttons->addWidget(p.button(el::cmdExtinguisherMessages[m], el::fraExtStatus[m]));
    grid->addLayout(buttons, row++, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    return box;
}

} // namespace

QWidget* buildModulesPage(PageParts& p, int first) {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    auto* row = new QHBoxLayout;
    for (int m = first; m < first + 5; ++m)
        row->addWidget(module(p, m), 1, Qt::AlignTop);
    row->addStretch(0);
    column->addLayout(row);
    column->addStretch(1);
    return page;
}
