#include "display/mainview.h"

#include "files/devicefiles.h"
#include "search/devicesearch.h"
#include "shell/appcontext.h"
#include "shell/appshell.h"
#include "shell/helplink.h"
#include "shell/languages.h"

namespace {

// The help files of this device kind.
constexpr int kHelpDevice = 10;

// Topics without a page in the help file.
bool hasHelpPage(int topic) {
    if (topic < 0 || topic > 58) return false;
    return topic != 30 && !(topic >= 35 && topic <= 39) && !(topic >= 42 && topic <= 50);
}

} // namespace

MainView::MainView(AppContext& app)
    : QObject()
    , m_app(app) {
    // Switching a unit moves its check mark too.
    m_menuHandlers = {
        {QStringLiteral("mnuLoad"), [this] { m_app.shell().ShowLoadFile(); }},
        {QStringLiteral("mnuSave"), [this] { m_app.files().SaveDeviceData(0); }},
        {QStringLiteral("mnuExit"), [this] { m_app.shell().CloseApplication(); }},
        {QStringLiteral("mnuInterface"), [this] { m_app.shell().ShowInterface(); }},
        {QStringLiteral("mnuLanguage"), [this] { m_app.shell().ShowLanguage(); }},
        {QStringLiteral("mnuCelsius"), [this] { m_app.languages().SwitchToTemperature(1); }},
        {QStringLiteral("mnuFahrenheit"), [this] { m_app.languages().SwitchToTemperature(2); }},
        {QStringLiteral("mnuPercentMeter"), [this] { m_app.languages().SwitchToSmokeUnit(1); }},
        {QStringLiteral("mnuPercentFeet"), [this] { m_app.languages().SwitchToSmokeUnit(2); }},
        {QStringLiteral("mnuDeviceSearch"), [this] { m_app.search().mnuDeviceSearch_Click(); }},
        {QStringLiteral("mnuInfo"), [this] { m_app.shell().ShowInfo(); }},
        {QStringLiteral("mnuPDFHelp"), [this] { Help_Table(0, 0, QString()); }},
    };
    Form& view = m_app.forms().frmDisplay();
    connect(&view, &Form::loaded, this, &MainView::Form_Load);
    connect(&view, &Form::clicked, this, &MainView::onClicked);
    view.setCloseHandler([this] { return m_app.shell().CloseApplication(); });
}

void MainView::ShowData() {}

void MainView::Help_Table(int Button, int Topic, const QString& Text) {
    const int mode = Button == 1 ? 2 : 1;
    if (hasHelpPage(Topic)) m_app.help().ShowHelp(kHelpDevice, mode, Topic, Text);
}

void MainView::Form_Load() {
    Form& view = m_app.forms().frmDisplay();
    view.setVisible(QStringLiteral("mnuLogger"), false);
    view.setVisible(QStringLiteral("mnuLogDataDev"), false);
    view.setValue(QStringLiteral("tabDisplay"), 0);
    m_app.languages().checkUnitMenus();
}

void MainView::onClicked(const QString& element) {
    const auto handler = m_menuHandlers.constFind(element);
    if (handler != m_menuHandlers.constEnd()) (*handler)();
}
