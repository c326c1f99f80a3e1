#include "shell/ui/frminterface.h"

#include "common/ui/formview.h"
#include "common/ui/windowparts.h"
#include "shell/dialog_elements.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace windowparts;

frmInterfaceWindow::frmInterfaceWindow(Form& form, QWidget* parent)
    : QDialog(parent) {
    setObjectName(form.name());
    auto* port = named<QComboBox>(frmInterface::cboPort);
    port->setMinimumContentsLength(22);
    port->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    port->setMaxVisibleItems(17);

    auto* caption = label(frmInterface::lblCOMPort);
    caption->setBuddy(port);

    auto* reason = label(frmInterface::lblPortReason);
    reason->setWordWrap(true);
    reason->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    reason->setMaximumWidth(port->fontMetrics().averageCharWidth() * 60);

    auto* fields = new QFormLayout;
    fields->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    fields->addRow(caption, port);

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(18, 16, 18, 14);
    root->setSpacing(16);
    root->addLayout(fields);
    root->addWidget(reason);
    root->addLayout(buttonRow(
        {button(frmInterface::cmdOKButton, true), button(frmInterface::cmdCancelButton)}));
    root->setSizeConstraint(QLayout::SetFixedSize);

    m_view = std::make_unique<FormView>(form, this);
    m_view->setEscapeElement(frmInterface::cmdCancelButton);
}

frmInterfaceWindow::~frmInterfaceWindow() = default;

#include "moc_frminterface.cpp"
