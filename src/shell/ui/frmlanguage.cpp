#include "shell/ui/frmlanguage.h"

#include "common/ui/accessibility.h"
#include "common/ui/artwork.h"
#include "common/ui/formview.h"
#include "common/ui/windowparts.h"
#include "shell/dialog_elements.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QKeyEvent>
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
    m_options = new QButtonGroup(this);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    grid->setColumnMinimumWidth(1, 140);
    const int flagHeight = fontMetrics().height();
    const QSize flagSize(flagHeight * 3 / 2, flagHeight);
    for (int i = 0; i <= 4; ++i) {
        auto* option =
            named<QRadioButton>(frmLanguage::optLanguage[i], QString::fromUtf8(kOptionTexts[i]));
        m_options->addButton(option, i);
        option->installEventFilter(this);
        grid->addWidget(option, i, 1);
        if (i == 0) continue;
        auto* flag = label(frmLanguage::imgFlag[i]);
        flag->setPixmap(artwork::flag(i, flagSize, devicePixelRatioF()));
        // The flag says again what its option says.
        accessibility::hideDecoration(flag);
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

bool frmLanguageWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->modifiers() & ~Qt::KeypadModifier) return false;
    int step = 0;
    if (key->key() == Qt::Key_Down || key->key() == Qt::Key_Right) step = 1;
    if (key->key() == Qt::Key_Up || key->key() == Qt::Key_Left) step = -1;
    const int from = m_options->id(qobject_cast<QAbstractButton*>(watched));
    if (step == 0 || from < 0) return false;
    const int count = static_cast<int>(m_options->buttons().size());
    QAbstractButton* next = m_options->button((from + step + count) % count);
    next->setFocus(Qt::TabFocusReason);
    // A click, so that the choice reaches the window model as the mouse's would.
    next->click();
    return true;
}

#include "moc_frmlanguage.cpp"
