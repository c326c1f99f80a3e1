#include "display/mainview.h"

#include "common/colors.h"
#include "common/formmodel.h"
#include "common/preferences.h"
#include "common/regsettings.h"
#include "common/texts.h"
#include "display/customize.h"
#include "display/faultlist.h"
#include "display/mainview_elements.h"
#include "engine/commands.h"
#include "link/devicesession.h"
#include "values/devicevalues.h"

namespace el = frmDisplay;

namespace {

// The help files of this device kind.
constexpr int kHelpDevice = 10;
constexpr int kAllItems = 16;
// Item 4 of the alarm reset, beside the service/blocked lamp.
constexpr int kBlockedItem = 4;
constexpr int kAirFlowTopic = 40;
constexpr int kChamberTopic = 41;

// Topics without a page in the help file.
bool hasHelpPage(int topic) {
    if (topic < 0 || topic > 58) return false;
    return topic != 30 && !(topic >= 35 && topic <= 39) && !(topic >= 42 && topic <= 50);
}

} // namespace

MainView::MainView(Form& view, Preferences& preferences, RegSettings& settings, const Texts& texts,
                   const DeviceSession& session, DeviceValues& values, DeviceCommands& commands,
                   PollEngine& engine, UserDialogs* dialogs)
    : QObject()
    , m_view(view)
    , m_preferences(preferences)
    , m_settings(settings)
    , m_texts(texts)
    , m_values(values)
    , m_writer(commands, m_limits)
    , m_status(view, m_limits)
    , m_leds(view)
    , m_pages(view, preferences, texts, dialogs, m_writer, engine, values, m_limits,
              [this] { ShowData(); }) {
    m_clickHandlers = {
        {el::mnuSave, [this] { Q_EMIT SaveRequested(); }},
        {el::mnuDeviceSearch, [this] { Q_EMIT DeviceSearchRequested(); }},
        {el::mnuPDFHelp, [this] { Help_Table(0, 0, QString()); }},
        {el::mnuCelsius, [this] { SwitchToTemperature(1); }},
        {el::mnuFahrenheit, [this] { SwitchToTemperature(2); }},
        {el::mnuPercentMeter, [this] { SwitchToSmokeUnit(1); }},
        {el::mnuPercentFeet, [this] { SwitchToSmokeUnit(2); }},
        {el::cmdErrReset, [&commands] { commands.Send(commands.ResetMessages(kAllItems)); }},
        {el::cmdAlarmReset[0],
         [&commands] { commands.Send(commands.ResetAlarmAndFault(kAllItems)); }},
        {el::cmdAlarmReset[1],
         [&commands] { commands.Send(commands.ResetAlarmAndFault(kBlockedItem)); }},
    };
    // The module makes itself known by the serial number its page shows.
    for (int m = 0; m < 10; ++m)
        m_clickHandlers.insert(el::cmdExtinguisherIdent[m], [this, &commands, m] {
            commands.Send(commands.BusItemIdent(m_view.caption(el::lblExtSerialNo[m])));
        });
    connect(&view, &Form::loaded, this, &MainView::Form_Load);
    connect(&view, &Form::clicked, this, &MainView::OnClicked);
    connect(&view, &Form::mouseClicked, this, &MainView::OnMouseClicked);
    connect(&session, &DeviceSession::serialNoChanged, this, &MainView::ShowSerialNo);
    m_tmrReceiveLED.disable();
    connect(&m_tmrReceiveLED, &FormTimer::timeout, this, [this] {
        for (int page = el::picReceiveLED.first(); page <= el::picReceiveLED.last(); ++page)
            m_view.setBackColor(el::picReceiveLED[page], colors::kWindowBackground);
        m_tmrReceiveLED.disable();
    });
}

void MainView::ShowTelegramTime(const QDateTime& time) {
    const QLocale locale = QLocale::system();
    m_view.setTitle(m_texts.appTitle + QStringLiteral(" - [") +
                    locale.toString(time.date(), QLocale::ShortFormat) + QLatin1Char(' ') +
                    locale.toString(time.time(), QLocale::LongFormat) + QLatin1Char(']'));
}

void MainView::ShowReceiveActivity() {
    for (int page = el::picReceiveLED.first(); page <= el::picReceiveLED.last(); ++page)
        m_view.setBackColor(el::picReceiveLED[page], colors::kGreen);
    m_tmrReceiveLED.enable();
}

void MainView::TakeOn() {
    m_view.hide();
    m_view.setValue(el::tabDisplay.whole(), 0);
}

void MainView::ShowDevice() {
    if (!m_view.isShown()) m_view.show();
}

// Every page names the device in its header.
void MainView::ShowSerialNo(const QString& serialNo) {
    for (int page = el::lblSerialNo.first(); page <= el::lblSerialNo.last(); ++page)
        m_view.setCaption(el::lblSerialNo[page], serialNo);
}

void MainView::ShowData() {
    ValueStore* values = m_values.get();
    if (!values) return;
    const QLocale& locale = m_preferences.locale();
    Q_EMIT AboutToShowData();
    m_features = DeviceFeatures::read(*values);
    CustomizeForm(m_view, m_features, *values, locale);
    if (!m_status.ShowSmokeThresholds(*values)) return;
    const StatusDisplay::Units units{m_preferences.fahrenheit(), m_preferences.perFoot()};
    m_status.ShowMeasurements(*values, units, locale);
    ShowMessages(m_view, *values);
    m_status.ShowIdentityAndSettings(*values, locale);
}

void MainView::SwitchToTemperature(int unit) {
    m_settings.SetTemperature(unit);
    m_preferences.setTemperatureUnit(temperatureUnitFromNumber(unit));
    CheckUnitMenus();
    RefreshIfShown();
}

void MainView::SwitchToSmokeUnit(int unit) {
    m_settings.SetSmoke(unit);
    m_preferences.setSmokeUnit(smokeUnitFromNumber(unit));
    CheckUnitMenus();
    RefreshIfShown();
}

void MainView::Help_Table(int Button, int Topic, const QString& Text) {
    const int mode = Button == 1 ? 2 : 1;
    if (hasHelpPage(Topic)) Q_EMIT HelpRequested(kHelpDevice, mode, Topic, Text);
}

void MainView::Form_Load() {
    Form& view = m_view;
    m_limits = SettingLimits{};
    view.setValue(el::tabDisplay.whole(), 0);
    view.setDot(el::picFireAlarm[4], colors::kWindowBackground);
    for (int i = 0; i < 5; ++i)
        view.setCaption(el::lblLocTime[i], QStringLiteral("0"));
    for (const QString& element :
         {el::lblAirflowMeterPerSecond.name(), el::lblTemperature.name(), el::lblAirFlow.name(),
          el::lblChamber[0], el::lblChamber[1], el::lblChamberLegend[0], el::lblChamberLegend[1]})
        view.setBackColor(element, colors::kButtonFace);
    view.setEnabled(el::picManAct[20], false);
    InitLegendFonts();
    // The chamber gauges span -100 % to 100 %; the air-flow gauge takes its range from the
    // device at every refresh.
    // The smoke bars show the percentage of the alarm threshold, 0 to 100.
    for (int d = 0; d < 2; ++d)
        view.setRange(el::ctlSmokeLevel[d], 0, 100);
    for (int d = 0; d < 2; ++d)
        view.setItems(el::ctlChamber[d],
                      {QStringLiteral("-100 %"), QStringLiteral("0 %"), QStringLiteral("100 %")});
    // The key of the fault list: a box as a pending fault shows, and one as a latched.
    view.setBackColor(el::picErrLegend[0], colors::kYellow);
    view.setBackColor(el::picErrLegend[1], colors::kWindowBackground);
    view.setDot(el::picErrLegend[1], colors::kYellow);
    view.setVisible(el::ctlManAct[20], true);
    // Every settings page starts showing the device's values.
    m_pages.cmdAirFlowCancel_Click();
    m_pages.cmdSettingsCancel_Click();
    m_pages.cmdRelayCancel_Click();
    m_pages.cmdSensorTempAlarmCancel_Click();
    CheckUnitMenus();
}

// What a click opens help on shows it by the pointer.
void MainView::InitLegendFonts() {
    Form& view = m_view;
    for (const QString& element :
         {el::lblAirFlowLegend.name(), el::lblAirFlow.name(), el::lblChamberLegend[0],
          el::lblChamberLegend[1], el::lblChamber[0], el::lblChamber[1]})
        view.setMousePointer(element, MousePointer::HelpLink);
    for (int i = 0; i < 34; ++i)
        view.setMousePointer(el::picErr[i], MousePointer::HelpLink);
}

void MainView::CheckUnitMenus() {
    Form& view = m_view;
    const bool fahrenheit = m_preferences.fahrenheit();
    view.setChecked(el::mnuCelsius, !fahrenheit);
    view.setChecked(el::mnuFahrenheit, fahrenheit);
    const bool feet = m_preferences.perFoot();
    view.setChecked(el::mnuPercentMeter, !feet);
    view.setChecked(el::mnuPercentFeet, feet);
}

void MainView::OnClicked(const QString& element) {
    const auto handler = m_clickHandlers.constFind(element);
    if (handler != m_clickHandlers.constEnd()) (*handler)();
}

// The fault boxes, the air-flow value and the chamber values lead to their help pages.
void MainView::OnMouseClicked(const QString& element, int button) {
    const Form& view = m_view;
    for (int i = 0; i < 34; ++i)
        if (element == el::picErr[i]) Help_Table(button, i + 1, view.caption(el::lblErr[i]));
    if (element == el::lblAirFlow || element == el::lblAirFlowLegend)
        Help_Table(button, kAirFlowTopic, view.caption(el::lblAirFlowLegend));
    for (int d = 0; d < 2; ++d)
        if (element == el::lblChamber[d] || element == el::lblChamberLegend[d])
            Help_Table(button, kChamberTopic, view.caption(el::lblChamberLegend[d]));
}

void MainView::RefreshIfShown() {
    if (m_view.isShown()) ShowData();
}

#include "moc_mainview.cpp"
