#include "display/mainview_elements.h"
#include "display/ui/mainpages.h"
#include "display/ui/pageparts.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace el = frmDisplay;

namespace {

using el::kRelayBoxes;
using el::kRelayOptions;

} // namespace

// One column per relay, one row per event; the last two rows link the chosen events.
QWidget* buildRelaysPage(PageParts& p) {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    QGroupBox* box = p.frame(el::fraRelaySettings);
    auto* grid = new QGridLayout(box);
    grid->setHorizontalSpacing(grid->horizontalSpacing() * 3);
    for (int r = 0; r < 5; ++r)
        grid->addWidget(p.legend(el::lblRelayNumber[r]), 0, r + 1, Qt::AlignHCenter);
    for (int i = 0; i < 14; ++i) {
        grid->addWidget(p.legend(el::lblRelais[i]), i + 1, 0);
        for (int r = 0; r < 5; ++r)
            grid->addWidget(p.check(kRelayBoxes[r][i], el::lblRelais[i], {}, el::lblRelayNumber[r]),
                            i + 1, r + 1, Qt::AlignHCenter);
    }
    for (int r = 0; r < 5; ++r) {
        auto* group = new QButtonGroup(box);
        for (int i = 0; i < 2; ++i) {
            QRadioButton* option =
                p.option(kRelayOptions[r][i], el::lblRelais[14 + i], el::lblRelayNumber[r]);
            group->addButton(option);
            grid->addWidget(option, 15 + i, r + 1, Qt::AlignHCenter);
        }
    }
    grid->addWidget(p.legend(el::lblRelais[14]), 15, 0);
    grid->addWidget(p.legend(el::lblRelais[15]), 16, 0);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (const QString& name :
         {el::cmdRelaySet.name(), el::cmdRelayAssume.name(), el::cmdRelayCancel.name()})
        buttons->addWidget(p.button(name, el::fraRelaySettings));
    // The table keeps its own width; the buttons stand under its right edge.
    auto* table = new QVBoxLayout;
    table->addWidget(box);
    table->addLayout(buttons);
    table->addWidget(p.waitingNote(el::lblRelayWaiting));
    auto* row = new QHBoxLayout;
    row->addLayout(table);
    row->addStretch(1);
    column->addLayout(row);
    column->addStretch(1);
    return page;
}
