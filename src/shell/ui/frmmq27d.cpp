#include "shell/ui/frmmq27d.h"

#include "common/colors.h"
#include "common/ui/accessibility.h"
#include "common/ui/artwork.h"
#include "common/ui/formview.h"
#include "common/ui/ledpair.h"
#include "common/ui/windowparts.h"
#include "shell/startwindow_elements.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QVBoxLayout>

using namespace windowparts;

frmMQ27DWindow::frmMQ27DWindow(Form& form, std::function<QString(int)> text, QWidget* parent)
    : QMainWindow(parent)
    , m_text(std::move(text)) {
    setObjectName(form.name());
    buildMenus();
    setCentralWidget(buildLinkPanel());
    // The window keeps the size of what it shows; the monitor frames would widen it.
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    m_view = std::make_unique<FormView>(form, this);
    connect(&form, &Form::elementChanged, this, [this](const QString& element) {
        if (element == frmMQ27D::picReceive || element == frmMQ27D::lblReceive ||
            element == frmMQ27D::lblSend)
            describeLeds();
    });
    describeLeds();
}

frmMQ27DWindow::~frmMQ27DWindow() = default;

void frmMQ27DWindow::buildMenus() {
    QMenu* file = namedMenu(menuBar(), frmMQ27D::mnuFile);
    namedEntry(file, frmMQ27D::mnuLoad)->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    namedEntry(file, frmMQ27D::mnuAutoSaveFolder);
    namedSeparator(file, frmMQ27D::mnuSep1);
    namedEntry(file, frmMQ27D::mnuCloseApp)->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    QMenu* settings = namedMenu(menuBar(), frmMQ27D::mnuSettings);
    namedEntry(settings, frmMQ27D::mnuInterface);
    namedEntry(settings, frmMQ27D::mnuLanguage);
    QMenu* help = namedMenu(menuBar(), frmMQ27D::mnuHelp);
    namedEntry(help, frmMQ27D::mnuInfo);
}

QWidget* frmMQ27DWindow::buildLinkPanel() {
    auto* panel = new QWidget;
    auto* leds = new QGridLayout;
    leds->setHorizontalSpacing(8);
    leds->setVerticalSpacing(0);
    leds->addWidget(named<LedPair>(frmMQ27D::picReceive), 0, 0, 2, 1);
    leds->addWidget(label(frmMQ27D::lblReceive), 0, 1, Qt::AlignVCenter);
    leds->addWidget(label(frmMQ27D::lblSend), 1, 1, Qt::AlignVCenter);

    auto* appName = label(frmMQ27D::lblAppName);
    QFont large = appName->font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    large.setBold(true);
    appName->setFont(large);

    auto* top = new QHBoxLayout;
    top->addWidget(named<LogoView>(frmMQ27D::picHALVORN, 40));
    top->addSpacing(12);
    top->addWidget(appName, 1);
    top->addLayout(leds);

    auto* device = label(frmMQ27D::lblDevice);
    device->setFrameShape(QFrame::StyledPanel);
    device->setFrameShadow(QFrame::Sunken);
    device->setMargin(6);
    // Status texts come and go; they must not resize the window.
    device->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    device->setMinimumWidth(device->fontMetrics().averageCharWidth() * 60);
    device->setMinimumHeight(device->sizeHint().height());

    // Why the port is off: a sentence with a path and perhaps a command to copy.
    auto* reason = label(frmMQ27D::lblPortReason);
    reason->setWordWrap(true);
    reason->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    reason->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    reason->setMinimumWidth(device->minimumWidth());

    auto* root = new QVBoxLayout(panel);
    root->setContentsMargins(16, 14, 16, 14);
    root->setSpacing(12);
    root->addLayout(top);
    root->addWidget(buildMonitorFrame(frmMQ27D::fraComSend, frmMQ27D::txtComSend,
                                      QStringLiteral("COM Port output (sent data bytes, HEX)")));
    root->addWidget(buildMonitorFrame(frmMQ27D::fraComReceive, frmMQ27D::txtComReceive,
                                      QStringLiteral("COM Port input (received data bytes, HEX)")));
    root->addWidget(device);
    root->addWidget(reason);
    return panel;
}

// The pair is named after its two captions, and says the state of each in words (without the
// texts, which of them is lit): a screen reader cannot see the colours.
void frmMQ27DWindow::describeLeds() {
    const Form& form = m_view->form();
    const QString receive = form.caption(frmMQ27D::lblReceive);
    const QString send = form.caption(frmMQ27D::lblSend);
    const bool receiving = form.backColor(frmMQ27D::picReceive) != colors::kDefault;
    const bool sending = form.foreColor(frmMQ27D::picReceive) != colors::kDefault;
    QStringList states;
    const auto say = [&](const QString& caption, bool lit) {
        if (m_text)
            states << caption + QStringLiteral(": ") +
                          m_text(lit ? accessibility::kOnText : accessibility::kOffText);
        else if (lit)
            states << caption;
    };
    say(receive, receiving);
    say(send, sending);
    auto* leds = qobject_cast<QWidget*>(m_view->target(frmMQ27D::picReceive));
    leds->setAccessibleName(receive + QStringLiteral(" / ") + send);
    leds->setAccessibleDescription(states.join(QStringLiteral(", ")));
    accessibility::indicatorStateChanged(leds);
}

QWidget* frmMQ27DWindow::buildMonitorFrame(const QString& frame, const QString& text,
                                           const QString& title) {
    auto* box = named<QGroupBox>(frame, title);
    auto* hex = named<QPlainTextEdit>(text);
    hex->setReadOnly(true);
    hex->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    hex->setFixedHeight(hex->fontMetrics().lineSpacing() * 5);
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(hex);
    if (frame == frmMQ27D::fraComSend)
        layout->addWidget(named<QCheckBox>(frmMQ27D::chkSendEnable, QStringLiteral("Send Enable")));
    box->setVisible(false);
    return box;
}

#include "moc_frmmq27d.cpp"
