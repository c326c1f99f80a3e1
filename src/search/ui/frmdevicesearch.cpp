#include "search/ui/frmdevicesearch.h"

#include "common/colors.h"
#include "common/formmodel.h"
#include "common/ui/accessibility.h"
#include "common/ui/formview.h"
#include "common/ui/lamp.h"
#include "common/ui/windowparts.h"
#include "search/search_elements.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace windowparts;

frmDeviceSearchWindow::frmDeviceSearchWindow(Form& form, std::function<QString(int)> text,
                                             QWidget* parent)
    : QDialog(parent) {
    setObjectName(form.name());
    auto* devices = named<QListWidget>(frmDeviceSearch::lstDeviceList);
    devices->setSelectionMode(QAbstractItemView::SingleSelection);
    devices->setMinimumHeight(devices->fontMetrics().lineSpacing() * 9);
    devices->setAlternatingRowColors(true);
    // The list has no label of its own: it is what the window is about.
    connect(this, &QWidget::windowTitleChanged, devices, &QWidget::setAccessibleName);

    auto* bottom = new QHBoxLayout;
    bottom->setSpacing(8);
    auto* lamp = named<Lamp>(frmDeviceSearch::picDataLED);
    // The legend names the lamp for assistive tools.
    auto* legend = label(frmDeviceSearch::lblDataLEDLegend);
    legend->setBuddy(lamp);
    bottom->addWidget(lamp);
    bottom->addWidget(legend);
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

    // A screen reader cannot see the lamp's colour: it hears the state in words.
    if (!text) return;
    const auto describe = [&form, lamp, text] {
        const auto color = form.backColor(frmDeviceSearch::picDataLED);
        const bool lit = color != colors::kDefault && color != colors::kWindowBackground;
        lamp->setAccessibleDescription(
            text(lit ? accessibility::kOnText : accessibility::kOffText));
        accessibility::indicatorStateChanged(lamp);
    };
    connect(&form, &Form::elementChanged, lamp, [describe](const QString& element) {
        // The legend's caption changes with the language.
        if (element == frmDeviceSearch::picDataLED || element == frmDeviceSearch::lblDataLEDLegend)
            describe();
    });
    describe();
}

frmDeviceSearchWindow::~frmDeviceSearchWindow() = default;

#include "moc_frmdevicesearch.cpp"
