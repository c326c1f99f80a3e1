#include "extinguish/ui/frmextinguishdetails.h"

#include "common/ui/formview.h"
#include "common/ui/windowparts.h"
#include "display/ui/accessiblenames.h"
#include "display/ui/faultbox.h"
#include "display/ui/ledlamp.h"
#include "display/ui/pageparts.h"
#include "extinguish/extinguish_elements.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ed = frmExtinguishDetails;
using Says = AccessibleNames::Says;
using namespace windowparts;

frmExtinguishDetailsWindow::frmExtinguishDetailsWindow(Form& form, std::function<QString(int)> text,
                                                       QWidget* parent)
    : QDialog(parent)
    , m_names(std::make_unique<AccessibleNames>(form, std::move(text))) {
    setObjectName(form.name());
    PageParts p(*m_names);

    // The module chosen by its serial number, and whether it answers on the bus.
    auto* top = new QHBoxLayout;
    auto* choice = named<QComboBox>(ed::cboSerialNumber);
    choice->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    choice->setMinimumContentsLength(10);
    m_names->add(choice, ed::cboSerialNumber, ed::lblSerialNoLegend);
    top->addWidget(choice);
    top->addSpacing(16);
    top->addWidget(p.led(ed::picExtOnline, ed::lblExtOnlineLegend, {}, Says::LampState));
    top->addWidget(p.legend(ed::lblExtOnlineLegend));
    top->addStretch(1);

    auto* faults = new QGridLayout;
    faults->setHorizontalSpacing(8);
    faults->addWidget(p.legend(ed::lblMessages), 0, 0, 1, 2);
    for (int i = 0; i < 8; ++i) {
        faults->addWidget(p.faultBox(ed::picErr[i], ed::lblErr[i]), i + 1, 0);
        faults->addWidget(p.legend(ed::lblErr[i]), i + 1, 1);
    }
    faults->setColumnStretch(1, 1);

    auto* numbers = new QGridLayout;
    numbers->setHorizontalSpacing(12);
    const std::pair<QString, QString> rows[] = {
        {ed::lblSoftwareNoLegend, ed::lblSoftwareNo},
        {ed::lblParameterNoLegend, ed::lblParameterNo},
        {ed::lblSerialNoLegend, ed::lblSerialNo},
    };
    int row = 0;
    for (const auto& [legend, value] : rows) {
        numbers->addWidget(p.legend(legend), row, 0);
        numbers->addWidget(p.value(value, legend, QStringLiteral("8888.888.888")), row++, 1);
    }
    numbers->setColumnStretch(2, 1);

    auto* key = new QHBoxLayout;
    for (int i = 0; i < 2; ++i) {
        key->addWidget(p.faultBox(ed::picLegend[i], ed::lblLegend[i]));
        key->addWidget(p.legend(ed::lblLegend[i]));
        key->addSpacing(16);
    }
    key->addStretch(1);

    QLabel* offline = p.waitingNote(ed::lblExtOfflineNote);

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(16, 16, 16, 14);
    root->setSpacing(12);
    root->addLayout(top);
    root->addWidget(divider());
    root->addLayout(faults);
    root->addLayout(key);
    root->addWidget(divider());
    root->addLayout(numbers);
    root->addWidget(offline);
    root->addStretch(1);
    root->addLayout(buttonRow({static_cast<QWidget*>(button(ed::cmdClose, true))}));

    m_view = std::make_unique<FormView>(form, this);
    m_view->setEscapeElement(ed::cmdClose);
}

frmExtinguishDetailsWindow::~frmExtinguishDetailsWindow() = default;

#include "moc_frmextinguishdetails.cpp"
