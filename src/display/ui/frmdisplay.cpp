#include "display/ui/frmdisplay.h"

#include "common/mainview_elements.h"
#include "common/ui/formview.h"
#include "common/ui/lamp.h"
#include "common/ui/windowparts.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace windowparts;

namespace {

// Two menu entries of which exactly one carries the check mark.
void makeExclusive(QMenu* menu, QAction* first, QAction* second) {
    auto* group = new QActionGroup(menu);
    group->setExclusive(true);
    group->addAction(first);
    group->addAction(second);
}

} // namespace

frmDisplayWindow::frmDisplayWindow(Form& form, QWidget* parent)
    : QMainWindow(parent) {
    setObjectName(form.name());
    buildMenus();
    m_tabs = named<QTabWidget>(frmDisplay::tabDisplay.whole());
    m_tabs->setDocumentMode(true);
    for (int page = 0; page < kPageCount; ++page)
        m_tabs->addTab(buildPage(page), QString());
    setCentralWidget(m_tabs);
    resize(1000, 700);
    m_view = std::make_unique<FormView>(form, this);
}

frmDisplayWindow::~frmDisplayWindow() = default;

QWidget* frmDisplayWindow::pageBody(int page) const {
    return m_bodies.value(page);
}

void frmDisplayWindow::buildMenus() {
    QMenu* file = namedMenu(menuBar(), frmDisplay::mnuFile);
    namedEntry(file, frmDisplay::mnuLoad);
    namedEntry(file, frmDisplay::mnuSave);
    namedSeparator(file);
    namedEntry(file, frmDisplay::mnuExit);

    QMenu* settings = namedMenu(menuBar(), frmDisplay::mnuSettings);
    namedEntry(settings, frmDisplay::mnuInterface);
    namedEntry(settings, frmDisplay::mnuLanguage);
    namedSeparator(settings);
    makeExclusive(settings, namedEntry(settings, frmDisplay::mnuCelsius, true),
                  namedEntry(settings, frmDisplay::mnuFahrenheit, true));
    namedSeparator(settings);
    makeExclusive(settings, namedEntry(settings, frmDisplay::mnuPercentMeter, true),
                  namedEntry(settings, frmDisplay::mnuPercentFeet, true));

    QMenu* select = namedMenu(menuBar(), frmDisplay::mnuDeviceSelect);
    namedEntry(select, frmDisplay::mnuDeviceSearch);
    QMenu* logger = namedMenu(menuBar(), frmDisplay::mnuLogger);
    namedEntry(logger, frmDisplay::mnuLogDataDev);
    QMenu* help = namedMenu(menuBar(), frmDisplay::mnuHelp);
    namedEntry(help, frmDisplay::mnuPDFHelp);
    namedEntry(help, frmDisplay::mnuInfo);
}

QWidget* frmDisplayWindow::buildPage(int page) {
    auto* serial = label(frmDisplay::lblSerialNo[page]);
    QFont bold = serial->font();
    bold.setBold(true);
    serial->setFont(bold);
    serial->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* header = new QHBoxLayout;
    header->setSpacing(8);
    header->addWidget(label(frmDisplay::lblSerialNoLegend[page]));
    header->addWidget(serial);
    header->addStretch(1);
    header->addWidget(named<Lamp>(frmDisplay::picReceiveLED[page]));
    header->addWidget(label(frmDisplay::lblReceiveLEDLegend[page]));

    auto* body = new QWidget;
    auto* bodyLayout = new QVBoxLayout(body);
    bodyLayout->setContentsMargins(0, 0, 0, 0);
    m_bodies.append(body);

    auto* tab = named<QWidget>(frmDisplay::tabDisplay[page]);
    auto* layout = new QVBoxLayout(tab);
    layout->setContentsMargins(14, 10, 14, 14);
    layout->setSpacing(10);
    layout->addLayout(header);
    layout->addWidget(divider());
    layout->addWidget(body, 1);
    return tab;
}
