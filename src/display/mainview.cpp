#include "display/mainview.h"

#include "common/appstate.h"
#include "common/mainview_elements.h"
#include "files/devicefiles.h"
#include "search/devicesearch.h"

namespace el = frmDisplay;

namespace {

// The help files of this device kind.
constexpr int kHelpDevice = 10;

// Topics without a page in the help file.
bool hasHelpPage(int topic) {
    if (topic < 0 || topic > 58) return false;
    return topic != 30 && !(topic >= 35 && topic <= 39) && !(topic >= 42 && topic <= 50);
}

} // namespace

MainView::MainView(AppState& state, DeviceFiles& files, DeviceSearch& search)
    : QObject()
    , m_state(state) {
    m_menuHandlers = {
        {el::mnuSave, [&files] { files.SaveDeviceData(0); }},
        {el::mnuDeviceSearch, [&search] { search.mnuDeviceSearch_Click(); }},
        {el::mnuPDFHelp, [this] { Help_Table(0, 0, QString()); }},
        {el::mnuCelsius, [this] { SwitchToTemperature(1); }},
        {el::mnuFahrenheit, [this] { SwitchToTemperature(2); }},
        {el::mnuPercentMeter, [this] { SwitchToSmokeUnit(1); }},
        {el::mnuPercentFeet, [this] { SwitchToSmokeUnit(2); }},
    };
    Form& view = m_state.forms.frmDisplay();
    connect(&view, &Form::loaded, this, &MainView::Form_Load);
    connect(&view, &Form::clicked, this, &MainView::onClicked);
}

void MainView::ShowData() {}

void MainView::SwitchToTemperature(int unit) {
    m_state.settings.SetTemperature(unit);
    m_state.g.gTemperatureUnit = unit == 2 ? 2 : 1;
    checkUnitMenus();
}

void MainView::SwitchToSmokeUnit(int unit) {
    m_state.settings.SetSmoke(unit);
    m_state.g.gSmokeUnit = unit == 2 ? 2 : 1;
    checkUnitMenus();
}

void MainView::Help_Table(int Button, int Topic, const QString& Text) {
    const int mode = Button == 1 ? 2 : 1;
    if (hasHelpPage(Topic)) Q_EMIT helpRequested(kHelpDevice, mode, Topic, Text);
}

void MainView::Form_Load() {
    Form& view = m_state.forms.frmDisplay();
    view.setVisible(el::mnuLogger, false);
    view.setVisible(el::mnuLogDataDev, false);
    view.setValue(el::tabDisplay.whole(), 0);
    checkUnitMenus();
}

void MainView::checkUnitMenus() {
    Form& view = m_state.forms.frmDisplay();
    const bool fahrenheit = m_state.g.gTemperatureUnit == 2;
    view.setChecked(el::mnuCelsius, !fahrenheit);
    view.setChecked(el::mnuFahrenheit, fahrenheit);
    const bool feet = m_state.g.gSmokeUnit == 2;
    view.setChecked(el::mnuPercentMeter, !feet);
    view.setChecked(el::mnuPercentFeet, feet);
}

void MainView::onClicked(const QString& element) {
    const auto handler = m_menuHandlers.constFind(element);
    if (handler != m_menuHandlers.constEnd()) (*handler)();
}
