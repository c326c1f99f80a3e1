#include "shell/ui/frmabout.h"

#include "common/ui/artwork.h"
#include "common/ui/formview.h"
#include "common/ui/windowparts.h"
#include "shell/dialog_elements.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace windowparts;

frmAboutWindow::frmAboutWindow(Form& form, QWidget* parent)
    : QDialog(parent) {
    setObjectName(form.name());
    auto* version = label(frmAbout::lblKompaVersion);
    QFont heading = version->font();
    heading.setBold(true);
    heading.setPointSizeF(heading.pointSizeF() * 1.15);
    version->setFont(heading);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(version);
    texts->addWidget(label(frmAbout::lblDisplay));
    auto* autoSave = label(frmAbout::lblAutoSaveFolder);
    autoSave->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    texts->addWidget(autoSave);
    auto* manual = label(frmAbout::lblManual);
    manual->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    texts->addWidget(manual);
    texts->addSpacing(14);
    for (int i = 0; i < 2; ++i) {
        auto* rights = label(frmAbout::lblCopyright[i]);
        rights->setForegroundRole(QPalette::PlaceholderText);
        texts->addWidget(rights);
    }

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(24, 20, 24, 16);
    root->setSpacing(14);
    root->addWidget(new LogoView(48));
    root->addWidget(divider());
    root->addLayout(texts);
    root->addLayout(buttonRow({button(frmAbout::cmdOK, true)}));
    root->setSizeConstraint(QLayout::SetFixedSize);
    setMinimumWidth(380);

    m_view = std::make_unique<FormView>(form, this);
    m_view->setEscapeElement(frmAbout::cmdOK);
}

frmAboutWindow::~frmAboutWindow() = default;

#include "moc_frmabout.cpp"
