#include "shell/ui/frminterface.h"

#include "common/ui/formview.h"
#include "common/ui/windowparts.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace windowparts;

frmInterfaceWindow::frmInterfaceWindow(Form& form, QWidget* parent)
    : QDialog(parent) {
    setObjectName(form.name());
    auto* port = named<QComboBox>(QStringLiteral("cboPort"));
    port->setMinimumContentsLength(22);
    port->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    port->setMaxVisibleItems(17);

    auto* fields = new QFormLayout;
    fields->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    fields->addRow(label(QStringLiteral("lblCOMPort")), port);

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(18, 16, 18, 14);
    root->setSpacing(16);
    root->addLayout(fields);
    root->addLayout(buttonRow(
        {button(QStringLiteral("cmdOKButton"), true), button(QStringLiteral("cmdCancelButton"))}));
    root->setSizeConstraint(QLayout::SetFixedSize);

    m_view = std::make_unique<FormView>(form, this);
    m_view->setEscapeElement(QStringLiteral("cmdCancelButton"));
}

frmInterfaceWindow::~frmInterfaceWindow() = default;
