#include "display/ui/frmdisplay.h"

#include "common/ui/formview.h"
#include "common/ui/lamp.h"
#include "common/ui/windowparts.h"
#include "display/mainview_elements.h"
#include "display/ui/accessiblenames.h"
#include "display/ui/mainpages.h"
#include "display/ui/pageparts.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <QPalette>
#include <QScrollArea>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace windowparts;
namespace el = frmDisplay;

namespace {

// Two menu entries of which exactly one carries the check mark.
void makeExclusive(QMenu* menu, QAction* first, QAction* second) {
    auto* group = new QActionGroup(menu);
    group->setExclusive(true);
    group->addAction(first);
    group->addAction(second);
}

} // namespace

frmDisplayWindow::frmDisplayWindow(Form& form, std::function<QString(int)> text, QWidget* parent)
    : QMainWindow(parent)
    , m_names(std::make_unique<AccessibleNames>(form, std::move(text))) {
    setObjectName(form.name());
    buildMenus();
    m_tabs = named<QTabWidget>(el::tabDisplay.whole());
    m_tabs->setDocumentMode(true);
    // The tab bar takes the focus and names the pages; the widget around it need not.
    m_tabs->setFocusPolicy(Qt::NoFocus);
    PageParts parts(*m_names);
    QWidget* pages[kPageCount] = {buildStatusPage(parts),     buildMeasurementPage(parts),
                                  buildMessagesPage(parts),   buildSettingsPage(parts),
                                  buildRelaysPage(parts),     buildLocalisationPage(parts),
                                  buildModulesPage(parts, 0), buildModulesPage(parts, 5)};
    for (int page = 0; page < kPageCount; ++page)
        m_tabs->addTab(buildPage(page, pages[page]), QString());
    setCentralWidget(m_tabs);
    resize(1200, 760);
    m_view = std::make_unique<FormView>(form, this);
    // Values of a device that no longer answers stand back behind the banner: their texts
    // take the style's colour of disabled text, while the controls stay usable. (An opacity
    // effect over a scrolled page leaves half-painted texts behind as values change.)
    connect(&form, &Form::elementChanged, this,
            [this, &form](const QString& element, ElementProperty property) {
                if (property != ElementProperty::Value || element != el::lblStateBanner[0]) return;
                const bool silent = form.value(element) == 1;
                for (QWidget* content : std::as_const(m_contents)) {
                    if (!silent) {
                        content->setPalette(QPalette());
                        continue;
                    }
                    QPalette dimmed = content->palette();
                    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
                        for (auto group : {QPalette::Active, QPalette::Inactive})
                            dimmed.setColor(group, role, dimmed.color(QPalette::Disabled, role));
                    content->setPalette(dimmed);
                }
            });
}

frmDisplayWindow::~frmDisplayWindow() = default;

void frmDisplayWindow::buildMenus() {
    QMenu* file = namedMenu(menuBar(), el::mnuFile);
    namedEntry(file, el::mnuLoad)->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    namedEntry(file, el::mnuSave)->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    namedSeparator(file);
    namedEntry(file, el::mnuExit)->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

    QMenu* settings = namedMenu(menuBar(), el::mnuSettings);
    namedEntry(settings, el::mnuInterface);
    namedEntry(settings, el::mnuLanguage);
    namedSeparator(settings);
    makeExclusive(settings, namedEntry(settings, el::mnuCelsius, true),
                  namedEntry(settings, el::mnuFahrenheit, true));
    namedSeparator(settings);
    makeExclusive(settings, namedEntry(settings, el::mnuPercentMeter, true),
                  namedEntry(settings, el::mnuPercentFeet, true));

    QMenu* extended = namedMenu(menuBar(), el::mnuExtended);
    namedEntry(extended, el::mnuDeviceSettings);
    namedEntry(extended, el::mnuExtinguishSettings);
    QMenu* record = namedMenu(menuBar(), el::mnuProtocol);
    namedEntry(record, el::mnuProtocolCreate);
    QMenu* select = namedMenu(menuBar(), el::mnuDeviceSelect);
    namedEntry(select, el::mnuDeviceSearch);
    QMenu* logger = namedMenu(menuBar(), el::mnuLogger);
    namedEntry(logger, el::mnuLogDataDev);
    QMenu* help = namedMenu(menuBar(), el::mnuHelp);
    namedEntry(help, el::mnuPDFHelp)->setShortcut(QKeySequence(Qt::Key_F1));
    namedEntry(help, el::mnuInfo);
}

QWidget* frmDisplayWindow::buildPage(int page, QWidget* content) {
    auto* serial = label(el::lblSerialNo[page]);
    QFont bold = serial->font();
    bold.setBold(true);
    serial->setFont(bold);
    serial->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_names->add(serial, el::lblSerialNo[page], el::lblSerialNoLegend[page], {},
                 AccessibleNames::Says::Value);
    auto* lamp = named<Lamp>(el::picReceiveLED[page]);
    m_names->add(lamp, el::picReceiveLED[page], el::lblReceiveLEDLegend[page], {},
                 AccessibleNames::Says::LampState);

    auto* header = new QHBoxLayout;
    header->addWidget(label(el::lblSerialNoLegend[page]));
    header->addWidget(serial);
    header->addStretch(1);
    header->addWidget(lamp);
    header->addWidget(label(el::lblReceiveLEDLegend[page]));

    // Says on every page when the values are not those of a device that answers now.
    auto* banner = label(el::lblStateBanner[page]);
    banner->setWordWrap(true);
    banner->setTextInteractionFlags(Qt::TextSelectableByMouse);
    banner->setAutoFillBackground(true);
    banner->setFrameShape(QFrame::StyledPanel);
    banner->setMargin(style()->pixelMetric(QStyle::PM_LayoutTopMargin) / 2);
    banner->setFont(bold);
    m_contents << content;

    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(content);

    auto* tab = named<QWidget>(el::tabDisplay[page]);
    auto* layout = new QVBoxLayout(tab);
    layout->addLayout(header);
    layout->addWidget(banner);
    layout->addWidget(divider());
    layout->addWidget(scroll, 1);
    return tab;
}

#include "moc_frmdisplay.cpp"
