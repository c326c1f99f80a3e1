#include "search/ui/frmdevicesearch.h"

#include "common/dialog_elements.h"
#include "common/ui/formview.h"
#include "common/ui/lamp.h"
#include "common/ui/windowparts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace windowparts;

frmDeviceSearchWindow::frmDeviceSearchWindow(Form& form, QWidget* parent)
    : QDialog(parent) {
    setObjectName(form.name());
    auto* devices = named<QListWidget>(frmDeviceSearch::lstDeviceList);
    devices->setSelectionMode(QAbstractItemView::SingleSelection);
    devices->setMinimumHeight(devices->fontMetrics().lineSpacing() * 9);
    devices->setAlternatingRowColors(true);

    auto* bottom = new QHBoxLayout;
    bottom->setSpacing(8);
    bottom->addWidget(named<Lamp>(frmDeviceSearch::picDataLED));
    bottom->addWidget(label(frmDeviceSearch::lblDataLEDLegend));
    bottom->addSpacing(24);
    bottom->addLayout(
        buttonRow({button(frmDeviceSearch::cmdOK, true), button(frmDeviceSearch::cmdCancel)}), 1);

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(16, 16, 16, 14);
    root->setSpacing(12);
    root->addWidget(devices, 1);
    root->addLayout(bottom);
    setMinimumSize(380, 320);

    m_view = std::make_unique<FormView>(form, this);
    m_view->setEscapeElement(frmDeviceSearch::cmdCancel);
}

frmDeviceSearchWindow::~frmDeviceSearchWindow() = default;
