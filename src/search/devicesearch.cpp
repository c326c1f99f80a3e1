#include "search/devicesearch.h"

#include "common/lifetime.h"
#include "common/regsettings.h"
#include "common/texts.h"
#include "display/mainview_elements.h"
#include "engine/pollengine.h"
#include "link/devicesession.h"
#include "link/seriallink.h"
#include "search/search_elements.h"

namespace {

using namespace frmDeviceSearch;

} // namespace

DeviceSearch::DeviceSearch(Form& searchWindow, Form& connectWindow, Form& mainView,
                           const Form& startWindow, const Texts& texts, const RegSettings& settings,
                           const Lifetime& life, DeviceSession& session, SerialLink& link,
                           PollEngine& engine)
    : QObject()
    , m_searchWindow(searchWindow)
    , m_connectWindow(connectWindow)
    , m_mainView(mainView)
    , m_startWindow(startWindow)
    , m_texts(texts)
    , m_settings(settings)
    , m_life(life)
    , m_session(session)
    , m_link(link)
    , m_engine(engine) {
    m_tmrDataLED.disable();
    m_tmrBlink.disable();
    connect(&m_tmrDataLED, &FormTimer::timeout, this, [this] {
        m_searchWindow.setBackColor(picDataLED, colors::kDefault);
        m_tmrDataLED.disable();
    });
    connect(&m_tmrBlink, &FormTimer::timeout, this, [this] {
        Form& connectWindow = m_connectWindow;
        connectWindow.setVisible(frmConnect::lblConnection,
                                 !connectWindow.isVisible(frmConnect::lblConnection));
    });

    Form& search = m_searchWindow;
    connect(&search, &Form::clicked, this, &DeviceSearch::OnSearchWindowClicked);
    connect(&search, &Form::doubleClicked, this, [this](const QString& element) {
        if (element == lstDeviceList) SelectListedDevice();
    });
    // Closing the window by its frame is a cancel: otherwise the poll would stay stopped
    // with the main view hidden.
    search.setCloseHandler([this] {
        if (!m_life.closing()) SelectPreviousDevice();
        return true;
    });

    connect(&connectWindow, &Form::clicked, this, &DeviceSearch::OnConnectClicked);
    connect(&connectWindow, &Form::windowChanged, this, &DeviceSearch::OnConnectWindowChanged);
    connectWindow.setCloseHandler([this] {
        if (!m_life.closing()) CancelConnection();
        return true;
    });
}

void DeviceSearch::mnuDeviceSearch_Click() {
    m_engine.Stop();
    if (!m_link.IsPortOpen()) m_link.SwitchToComPort(m_settings.GetPort());

    Form& display = m_mainView;
    Form& search = m_searchWindow;
    search.setTitle(m_texts.appTitle + QStringLiteral(" - ") +
                    display.caption(frmDisplay::mnuDeviceSelect));
    search.setCaption(lblDataLEDLegend, display.caption(frmDisplay::lblReceiveLEDLegend[0]));
    search.setCaption(cmdOK, display.caption(frmDisplay::cmdSettingsAssume));
    search.setCaption(cmdCancel, display.caption(frmDisplay::cmdSettingsCancel));
    // A search starts with an empty list, as a freshly opened window has it.
    search.setItems(lstDeviceList, {});
    search.setValue(lstDeviceList, -1);
    search.centreOver(display);
    search.show();

    // Row 0 is the device shown, the one that Cancel goes back to; before any device has been
    // shown there is none.
    bool shownIsNumber = false;
    const double shown = m_session.serialNo().toDouble(&shownIsNumber);
    if (shownIsNumber) AddDevice(shown);
    display.hide();
    m_session.setSearchRunning(true);
}

void DeviceSearch::AddDevice(double serial) {
    Form& search = m_searchWindow;
    search.setBackColor(picDataLED, colors::kGreen);
    m_tmrDataLED.enable();

    const QString text = QString::number(serial, 'f', 0);
    const QStringList listed = search.items(lstDeviceList);
    if (listed.isEmpty()) {
        search.addItem(lstDeviceList, text);
        search.setValue(lstDeviceList, 0);
    } else if (!listed.contains(text)) {
        search.addItem(lstDeviceList, text);
    }
}

void DeviceSearch::DeviceSelection(const QString& serial) {
    Form& display = m_mainView;
    if (serial == m_session.serialNo()) {
        m_engine.SetNextRead(2);
        display.show();
    } else {
        m_session.setSerialNo(serial);
        m_engine.SetNextRead(1);
        m_session.awaitChosenDevice(serial);
        Q_EMIT LanguageRefreshNeeded();
        ShowConnect(m_texts.appTitle + QStringLiteral(" - ") + serial);
    }
    m_session.setSearchRunning(false);
    m_engine.tmrAutoSend().enable();
}

void DeviceSearch::ShowConnect(const QString& title) {
    Form& connectWindow = m_connectWindow;
    connectWindow.setTitle(title);
    connectWindow.centreOver(m_startWindow);
    connectWindow.show();
    connectWindow.bringToFront();
    m_tmrBlink.enable();
}

void DeviceSearch::OnSearchWindowClicked(const QString& element) {
    if (element == cmdOK)
        SelectListedDevice();
    else if (element == cmdCancel)
        SelectPreviousDevice();
}

void DeviceSearch::OnConnectClicked(const QString& element) {
    if (element == frmConnect::cmdCancel) CancelConnection();
}

// Without a selected row there is nothing to choose, and the window stays open.
void DeviceSearch::SelectListedDevice() {
    Form& search = m_searchWindow;
    const QStringList listed = search.items(lstDeviceList);
    const double row = search.value(lstDeviceList);
    if (!(row >= 0 && row < listed.size())) return;
    DeviceSelection(listed.at(static_cast<qsizetype>(row)));
    search.unload();
}

// Row 0 is the device that was selected when the search began.
void DeviceSearch::SelectPreviousDevice() {
    Form& search = m_searchWindow;
    const QStringList listed = search.items(lstDeviceList);
    if (listed.isEmpty()) return;
    DeviceSelection(listed.first());
    search.unload();
}

void DeviceSearch::CancelConnection() {
    m_engine.Stop();
    m_session.awaitChosenDevice(QString());
    Q_EMIT ConnectionCancelled();
    m_connectWindow.unload();
}

void DeviceSearch::OnConnectWindowChanged(Form::WindowChange change) {
    if (change == Form::WindowChange::Shown) {
        m_tmrBlink.enable();
    } else if (change == Form::WindowChange::Hidden || change == Form::WindowChange::Unloaded) {
        m_tmrBlink.disable();
        m_connectWindow.setVisible(frmConnect::lblConnection, true);
    }
}

#include "moc_devicesearch.cpp"
