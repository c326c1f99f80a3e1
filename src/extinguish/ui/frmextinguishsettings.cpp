#include "extinguish/ui/frmextinguishsettings.h"

#include "common/ui/formview.h"
#include "common/ui/windowparts.h"
#include "display/ui/accessiblenames.h"
#include "display/ui/ledlamp.h"
#include "display/ui/pageparts.h"
#include "extinguish/extinguish_elements.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace es = frmExtinguishSettings;
using Says = AccessibleNames::Says;
using namespace windowparts;

frmExtinguishSettingsWindow::frmExtinguishSettingsWindow(Form& form,
                                                         std::function<QString(int)> text,
                                                         QWidget* parent)
    : QDialog(parent)
    , m_names(std::make_unique<AccessibleNames>(form, std::move(text))) {
    setObjectName(form.name());
    PageParts p(*m_names);

    auto* top = new QHBoxLayout;
    QLabel* serialLegend = p.legend(es::lblSerialNoLegend);
    auto* choice = named<QComboBox>(es::cboSerialNumber);
    choice->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    choice->setMinimumContentsLength(10);
    m_names->add(choice, es::cboSerialNumber, es::lblSerialNoLegend);
    serialLegend->setBuddy(choice);
    top->addWidget(serialLegend);
    top->addWidget(choice);
    top->addSpacing(16);
    top->addWidget(p.led(es::picExtOnline, es::lblExtOnlineLegend, {}, Says::LampState));
    top->addWidget(p.legend(es::lblExtOnlineLegend));
    top->addStretch(1);

    // Each setting: its name, the device's value and the field on one spot, its unit.
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->addWidget(p.legend(es::lblExtSettings), 0, 0, 1, 3);
    for (int i = 0; i < 3; ++i) {
        QLabel* name = p.legend(es::lblParameterName[i]);
        const QString widest = QStringLiteral("88888888");
        QLineEdit* field = p.field(es::txtParameterValue[i], es::lblParameterName[i], widest);
        name->setBuddy(field);
        grid->addWidget(name, i + 1, 0);
        grid->addWidget(field, i + 1, 1);
        grid->addWidget(p.value(es::lblParameterValue[i], es::lblParameterName[i], widest), i + 1,
                        1);
        grid->addWidget(p.unit(es::lblParameterUnit[i]), i + 1, 2);
    }
    grid->setColumnStretch(3, 1);

    // The buttons, or in their place the note that the module has nothing to set.
    auto* buttons = named<QWidget>(es::fraButtons[0]);
    auto* buttonLayout = buttonRow({button(es::cmdSettings), button(es::cmdSettingsAssume, true),
                                    button(es::cmdSettingsCancel)});
    buttonLayout->setContentsMargins(0, 0, 0, 0);
    buttons->setLayout(buttonLayout);
    auto* nothingToSet = named<QWidget>(es::fraButtons[1]);
    auto* noteLayout = new QHBoxLayout(nothingToSet);
    noteLayout->setContentsMargins(0, 0, 0, 0);
    QLabel* note = label(es::lblNoManualRelease);
    note->setWordWrap(true);
    noteLayout->addWidget(note);

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(16, 16, 16, 14);
    root->setSpacing(12);
    root->addLayout(top);
    root->addWidget(divider());
    root->addLayout(grid);
    root->addWidget(buttons);
    root->addWidget(nothingToSet);
    root->addWidget(p.waitingNote(es::lblSettingsWaiting));
    root->addWidget(p.waitingNote(es::lblExtOfflineNote));
    root->addStretch(1);
    root->addWidget(divider());
    root->addLayout(buttonRow({static_cast<QWidget*>(button(es::cmdClose))}));
    setMinimumWidth(420);

    m_view = std::make_unique<FormView>(form, this);
    m_view->setEscapeElement(es::cmdClose);
}

frmExtinguishSettingsWindow::~frmExtinguishSettingsWindow() = default;

#include "moc_frmextinguishsettings.cpp"
