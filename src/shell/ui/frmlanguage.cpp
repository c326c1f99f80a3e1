#include "shell/ui/frmlanguage.h"

#include "common/ui/artwork.h"
#include "common/ui/formview.h"
#include "common/ui/windowparts.h"
#include "shell/dialog_elements.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace windowparts;

namespace {
// The languages by their own names; they read the same in every language.
const char* const kOptionTexts[] = {"Default", "Deutsch", "English", "Français", "Nederlands"};
} // namespace

frmLanguageWindow::frmLanguageWindow(Form& form, QWidget* parent)
    : QDialog(parent) {
    setObjectName(form.name());
    auto* options = new QButtonGroup(this);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    grid->setColumnMinimumWidth(1, 140);
    const int flagHeight = fontMetrics().height();
    const QSize flagSize(flagHeight * 3 / 2, flagHeight);
    for (int i = 0; i <= 4; ++i) {
        auto* option =
            named<QRadioButton>(frmLanguage::optLanguage[i], QString::fromUtf8(kOptionTexts[i]));
        options->addButton(option, i);
        grid->addWidget(option, i, 1);
        if (i == 0) continue;
        auto* flag = label(frmLanguage::imgFlag[i]);
        flag->setPixmap(artwork::flag(i, flagSize, devicePixelRatioF()));
        flag->setAccessibleName(option->text());
        flag->setBuddy(option);
        flag->setFixedSize(flagSize);
        grid->addWidget(flag, i, 0);
    }

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(20, 16, 20, 14);
    root->setSpacing(16);
    root->addLayout(grid);
    root->addLayout(buttonRow({button(frmLanguage::cmdOK, true)}));
    root->setSizeConstraint(QLayout::SetFixedSize);

    m_view = std::make_unique<FormView>(form, this);
}

frmLanguageWindow::~frmLanguageWindow() = default;
