#include "search/ui/frmconnect.h"

#include "common/ui/artwork.h"
#include "common/ui/formview.h"
#include "common/ui/windowparts.h"
#include "search/search_elements.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace windowparts;

frmConnectWindow::frmConnectWindow(Form& form, QWidget* parent)
    : QDialog(parent) {
    setObjectName(form.name());
    auto* device = new QLabel;
    device->setPixmap(artwork::deviceIcon(1, 40, devicePixelRatioF()));

    auto* connection = label(frmConnect::lblConnection);
    QFont large = connection->font();
    large.setPointSizeF(large.pointSizeF() * 1.15);
    connection->setFont(large);
    // The label blinks by hiding; its place stays.
    QSizePolicy keepPlace = connection->sizePolicy();
    keepPlace.setRetainSizeWhenHidden(true);
    connection->setSizePolicy(keepPlace);
    // The picture shows the device being reached; the message names it for assistive tools.
    connection->setBuddy(device);

    auto* message = new QHBoxLayout;
    message->setSpacing(14);
    message->addWidget(device);
    message->addWidget(connection, 1);

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(20, 18, 20, 14);
    root->setSpacing(16);
    root->addLayout(message);
    root->addLayout(buttonRow({button(frmConnect::cmdCancel, true)}));
    setMinimumWidth(360);

    m_view = std::make_unique<FormView>(form, this);
    m_view->setEscapeElement(frmConnect::cmdCancel);
}

frmConnectWindow::~frmConnectWindow() = default;

#include "moc_frmconnect.cpp"
