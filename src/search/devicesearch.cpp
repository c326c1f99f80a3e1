#include "search/devicesearch.h"

#include "engine/pollengine.h"
#include "link/seriallink.h"
#include "shell/appcontext.h"
#include "shell/languages.h"
#include "shell/regsettings.h"

namespace {

const QString kDeviceList = QStringLiteral("lstDeviceList");
const QString kDataLED = QStringLiteral("picDataLED");
const QString kSerialNo = QStringLiteral("lblSerialNo_0");
const QString kConnection = QStringLiteral("lblConnection");
const QString kOK = QStringLiteral("cmdOK");
const QString kCancel = QStringLiteral("cmdCancel");

} // namespace

DeviceSearch::DeviceSearch(AppContext& app)
    : QObject()
    , m_app(app) {
    m_tmrDataLED.disable();
    m_tmrBlink.disable();
    connect(&m_tmrDataLED, &FormTimer::timeout, this, [this] {
        m_app.forms().frmDeviceSearch().setBackColor(kDataLED, colors::kDefault);
        m_tmrDataLED.disable();
    });
    connect(&m_tmrBlink, &FormTimer::timeout, this, [this] {
        Form& connectWindow = m_app.forms().frmConnect();
        connectWindow.setVisible(kConnection, !connectWindow.isVisible(kConnection));
    });

    Form& search = m_app.forms().frmDeviceSearch();
    connect(&search, &Form::clicked, this, &DeviceSearch::onSearchWindowClicked);
    connect(&search, &Form::doubleClicked, this, [this](const QString& element) {
        if (element == kDeviceList) selectListedDevice();
    });
    // Closing the window by its frame is a cancel: otherwise the poll would stay stopped
    // with the main view hidden.
    search.setCloseHandler([this] {
        if (!m_app.g.gClosing) selectPreviousDevice();
        return true;
    });

    Form& connectWindow = m_app.forms().frmConnect();
    connect(&connectWindow, &Form::clicked, this, &DeviceSearch::onConnectClicked);
    connect(&connectWindow, &Form::windowChanged, this, &DeviceSearch::onConnectWindowChanged);
    connectWindow.setCloseHandler([this] {
        if (!m_app.g.gClosing) cancelConnection();
        return true;
    });
}

void DeviceSearch::mnuDeviceSearch_Click() {
    m_app.engine().stop();
    SerialLink& link = m_app.link();
    if (!link.isPortOpen()) link.SwitchToComPort(m_app.settings().GetPort());

    Form& display = m_app.forms().frmDisplay();
    Form& search = m_app.forms().frmDeviceSearch();
    search.setTitle(m_app.g.gAppTitle + QStringLiteral(" - ") +
                    display.caption(QStringLiteral("mnuDeviceSelect")));
    search.setCaption(QStringLiteral("lblDataLEDLegend"),
                      display.caption(QStringLiteral("lblReceiveLEDLegend_0")));
    search.setCaption(kOK, display.caption(QStringLiteral("cmdSettingsAssume")));
    search.setCaption(kCancel, display.caption(QStringLiteral("cmdSettingsCancel")));
    // A search starts with an empty list, as a freshly opened window has it.
    search.setItems(kDeviceList, {});
    search.setValue(kDeviceList, -1);
    search.centreOver(display);
    search.show();

    AddDevice(display.caption(kSerialNo).toDouble());
    display.hide();
    m_app.g.gDeviceSearch = true;
}

void DeviceSearch::AddDevice(double serial) {
    Form& search = m_app.forms().frmDeviceSearch();
    search.setBackColor(kDataLED, colors::kGreen);
    m_tmrDataLED.enable();

    const QString text = QString::number(serial, 'f', 0);
    const QStringList listed = search.items(kDeviceList);
    if (listed.isEmpty()) {
        search.addItem(kDeviceList, text);
        search.setValue(kDeviceList, 0);
    } else if (!listed.contains(text)) {
        search.addItem(kDeviceList, text);
    }
}

void DeviceSearch::DeviceSelection(const QString& serial) {
    Form& display = m_app.forms().frmDisplay();
    PollEngine& engine = m_app.engine();
    if (serial == display.caption(kSerialNo)) {
        engine.miNextCommand = 2;
        display.show();
    } else {
        display.setCaption(kSerialNo, serial);
        engine.miNextCommand = 1;
        m_app.languages().SwitchToLanguage(m_app.g.gLanguage);
        ShowConnect(m_app.g.gAppTitle + QStringLiteral(" - ") + serial);
    }
    m_app.g.gDeviceSearch = false;
    engine.tmrAutoSend().enable();
}

void DeviceSearch::ShowConnect(const QString& title) {
    Forms& forms = m_app.forms();
    Form& connectWindow = forms.frmConnect();
    connectWindow.setTitle(title);
    connectWindow.centreOver(forms.frmMQ27D());
    connectWindow.show();
    connectWindow.bringToFront();
    m_tmrBlink.enable();
}

void DeviceSearch::onSearchWindowClicked(const QString& element) {
    if (element == kOK)
        selectListedDevice();
    else if (element == kCancel)
        selectPreviousDevice();
}

void DeviceSearch::onConnectClicked(const QString& element) {
    if (element == kCancel) cancelConnection();
}

// Without a selected row there is nothing to choose, and the window stays open.
void DeviceSearch::selectListedDevice() {
    Form& search = m_app.forms().frmDeviceSearch();
    const QStringList listed = search.items(kDeviceList);
    const double row = search.value(kDeviceList);
    if (!(row >= 0 && row < listed.size())) return;
    DeviceSelection(listed.at(static_cast<qsizetype>(row)));
    search.unload();
}

// Row 0 is the device that was selected when the search began.
void DeviceSearch::selectPreviousDevice() {
    Form& search = m_app.forms().frmDeviceSearch();
    const QStringList listed = search.items(kDeviceList);
    if (listed.isEmpty()) return;
    DeviceSelection(listed.first());
    search.unload();
}

void DeviceSearch::cancelConnection() {
    m_app.engine().stop();
    m_app.forms().frmMQ27D().show();
    m_app.forms().frmConnect().unload();
}

void DeviceSearch::onConnectWindowChanged(Form::WindowChange change) {
    if (change == Form::WindowChange::Shown) {
        m_tmrBlink.enable();
    } else if (change == Form::WindowChange::Hidden || change == Form::WindowChange::Unloaded) {
        m_tmrBlink.disable();
        m_app.forms().frmConnect().setVisible(kConnection, true);
    }
}
