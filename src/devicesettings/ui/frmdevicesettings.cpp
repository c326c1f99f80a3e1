#include "devicesettings/ui/frmdevicesettings.h"

#include "common/ui/formview.h"
#include "common/ui/windowparts.h"
#include "devicesettings/devicesettings_elements.h"
#include "display/ui/accessiblenames.h"
#include "display/ui/pageparts.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ds = frmDeviceSettings;

namespace {

// The longest value a row shows: a resistor of up to 50 MOhm.
const QString kWidest = QStringLiteral("88888888");

struct PageLayout {
    QString frame, head;
    ElementArray name, label, field, unit;
    int rows;
    QString open, assume, cancel, waiting;
};

QGroupBox* page(PageParts& p, const PageLayout& l) {
    QGroupBox* box = p.frame(l.frame);
    auto* column = new QVBoxLayout(box);
    QLabel* head = p.legend(l.head);
    QFont bold = head->font();
    bold.setBold(true);
    head->setFont(bold);
    column->addWidget(head);

    auto* grid = new QGridLayout;
    for (int i = 0; i < l.rows; ++i) {
        QLabel* name = p.legend(l.name[i]);
        // The value and its field share one spot: viewing shows the one, editing the other.
        QLineEdit* field = p.field(l.field[i], l.name[i], kWidest);
        name->setBuddy(field);
        grid->addWidget(name, i, 0);
        grid->addWidget(field, i, 1);
        grid->addWidget(p.value(l.label[i], l.name[i], kWidest), i, 1);
        // A unit of its own width: "Ohm" is wider than the main view's units.
        QLabel* unit = windowparts::label(l.unit[i]);
        unit->setForegroundRole(QPalette::PlaceholderText);
        grid->addWidget(unit, i, 2);
    }
    grid->setColumnStretch(0, 1);
    column->addLayout(grid);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    // The two pages have the same buttons; each says in its description which page it is on.
    for (const QString& name : {l.open, l.assume, l.cancel})
        buttons->addWidget(p.button(name, l.head));
    column->addLayout(buttons);
    column->addWidget(p.waitingNote(l.waiting));
    column->addStretch(1);
    return box;
}

} // namespace

frmDeviceSettingsWindow::frmDeviceSettingsWindow(Form& form, std::function<QString(int)> text,
                                                 QWidget* parent)
    : QDialog(parent)
    , m_names(std::make_unique<AccessibleNames>(form, std::move(text))) {
    setObjectName(form.name());
    PageParts parts(*m_names);

    auto* pages = new QHBoxLayout;
    pages->setSpacing(12);
    pages->addWidget(
        page(parts, {ds::fraDeviceSettings[0], ds::lblDeviceSettings, ds::lblParameterName,
                     ds::lblParameterValue, ds::txtParameterValue, ds::lblParameterUnit, 3,
                     ds::cmdSettings, ds::cmdSettingsAssume, ds::cmdSettingsCancel,
                     ds::lblSettingsWaiting}),
        1);
    pages->addWidget(
        page(parts,
             {ds::fraDeviceSettings[1], ds::lblBetaFactorSettings, ds::lblBetaFactorName,
              ds::lblBetaFactor, ds::txtBetaFactor, ds::lblBetaFactorUnit, 5, ds::cmdBetaSettings,
              ds::cmdBetaSettingsAssume, ds::cmdBetaSettingsCancel, ds::lblBetaSettingsWaiting}),
        1);

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(16, 16, 16, 14);
    root->setSpacing(12);
    root->addLayout(pages, 1);
    root->addLayout(windowparts::buttonRow({windowparts::button(ds::cmdClose)}));
    root->setSizeConstraint(QLayout::SetMinimumSize);

    m_view = std::make_unique<FormView>(form, this);
    m_view->setEscapeElement(ds::cmdClose);
}

frmDeviceSettingsWindow::~frmDeviceSettingsWindow() = default;

#include "moc_frmdevicesettings.cpp"
