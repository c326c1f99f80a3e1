#include "display/settingspages.h"

#include "common/appstate.h"
#include "common/numberformat.h"
#include "common/waitingnote.h"
#include "display/mainview_elements.h"
#include "engine/commands.h"
#include "engine/pollengine.h"
#include "engine/settinglimits.h"
#include "values/devicevalues.h"

#include <cmath>

namespace el = frmDisplay;
using Page = SettingsPages::Page;
using TextSetting = SettingsPages::TextSetting;

namespace {

// Where a unit stands, in twips from the left edge of its value: after the label that shows
// the device's value, or after the field and its up/down element while editing.
constexpr int kUnitAfterLabel = 850;
constexpr int kUnitAfterField = 1080;

using el::kRelayBoxes;
using el::kRelayOptions;

// The settings page's fields in the order they are compared.
const std::vector<TextSetting>& settingsFields() {
    static const std::vector<TextSetting> fields = [] {
        std::vector<TextSetting> f = {
            {el::lblAlarmDelayLegend, el::lblAlarmDelay, el::txtAlarmDelay, el::ctrAlarmDelay,
             el::lblAlarmDelayUnit},
            {el::lblExtinguishDelayLegend, el::lblExtinguishDelay, el::txtExtinguishDelay,
             el::ctrExtinguishDelay, el::lblExtinguishDelayUnit},
            {el::lblAirFlowRangeLegend, el::lblAirFlowRange, el::txtAirFlowRange,
             el::ctrAirFlowRange, el::lblAirFlowRangeUnit},
            {el::lblFaultDelayLegend, el::lblFaultDelayMinutes, el::txtFaultDelayMinutes,
             el::ctrFaultDelayMinutes, el::lblFaultDelayMinutesUnit},
            {el::lblFaultDelayLegend, el::lblFaultDelaySeconds, el::txtFaultDelaySeconds,
             el::ctrFaultDelaySeconds, el::lblFaultDelaySecondsUnit},
        };
        for (int d = 0; d < 2; ++d) {
            f.push_back({el::lblSensitivityLegend[d], el::lblSensitivity[d], el::txtSensitivity[d],
                         el::ctrSensitivity[d], el::lblSensitivityUnit[d], 1000, 3});
            f.push_back({el::lblPreAlarmThresholdLegend[d], el::lblPreAlarmThreshold[d],
                         el::txtPreAlarmThreshold[d], el::ctrPreAlarmThreshold[d],
                         el::lblPreAlarmThresholdUnit[d]});
        }
        return f;
    }();
    return fields;
}

struct Switch {
    QString legend, shown, copy;
};

// The settings page's switches: the device's box and its editable copy.
const std::vector<Switch>& settingsSwitches() {
    static const std::vector<Switch> switches = {
        {el::lblBuzzerLegend, el::chkBuzzer[0], el::chkBuzzer[1]},
        {el::lblFaultStoreLegend, el::chkFaultStore[0], el::chkFaultStore[1]},
        {el::lblDynamicAirflowLegend, el::chkDynamicAirflow[0], el::chkDynamicAirflow[1]},
        {el::lblLocalizationLegend, el::chkLocalization[0], el::chkLocalization[1]},
        {el::lblTrueLixLegend[0], el::chkTrueLix[0], el::chkTrueLix[1]},
        {el::lblTrueLixLegend[1], el::chkTrueLix[2], el::chkTrueLix[3]},
        {el::lblAlarmAfterLocLegend, el::chkAlarmAfterLoc[0], el::chkAlarmAfterLoc[1]},
    };
    return switches;
}

const std::vector<TextSetting>& airFlowFields() {
    static const std::vector<TextSetting> fields = {
        {el::lblAltitudeLegend, el::lblAltitude, el::txtAltitude, el::ctrAltitude,
         el::lblAltitudeUnit},
        {el::lblAirPressureLegend, el::lblAirPressure, el::txtAirPressure, el::ctrAirPressure,
         el::lblAirPressureUnit},
        {el::lblFanVoltageNormalLegend, el::lblFanVoltageNormal, el::txtFanVoltageNormal,
         el::ctrFanVoltageNormal, el::lblFanVoltageNormalUnit, 1000, 1},
    };
    return fields;
}

const std::vector<TextSetting>& temperatureFields() {
    static const std::vector<TextSetting> fields = [] {
        std::vector<TextSetting> f;
        for (int n = 0; n < 5; ++n)
            f.push_back({el::lblSensorTempAlarmLegend[n], el::lblSensorTempAlarm[n],
                         el::txtSensorTempAlarm[n], el::ctrSensorTempAlarm[n],
                         el::lblSensorTempAlarmUnit[n], 10, 1});
        return f;
    }();
    return fields;
}

struct Buttons {
    QString open;
    QStringList editing;
};

Buttons buttonsOf(Page page) {
    switch (page) {
    case SettingsPages::Settings:
        return {el::cmdSettings,
                {el::cmdSettingsCancel, el::cmdSettingsAssume, el::cmdSettingsStandard}};
    case SettingsPages::AirFlow:
        return {el::cmdAirFlowSet,
                {el::cmdAirFlowCancel, el::cmdAirFlowInit, el::cmdAirFlowStandard}};
    case SettingsPages::Relays:
        return {el::cmdRelaySet, {el::cmdRelayCancel, el::cmdRelayAssume}};
    default:
        return {el::cmdSensorTempAlarmSet,
                {el::cmdSensorTempAlarmCancel, el::cmdSensorTempAlarmAssume}};
    }
}

} // namespace

SettingsPages::SettingsPages(AppState& state, DeviceCommands& commands, PollEngine& engine,
                             DeviceValues& values, SettingLimits& limits,
                             std::function<void()> refresh)
    : QObject()
    , m_state(state)
    , m_commands(commands)
    , m_values(values)
    , m_limits(limits)
    , m_refresh(std::move(refresh)) {
    connect(&view(), &Form::clicked, this, &SettingsPages::onClicked);
    connect(&view(), &Form::edited, this, &SettingsPages::onEdited);
    connect(&engine, &PollEngine::writeSent, this, &SettingsPages::onWriteSent);
    connect(&m_tmrCompareSettings, &FormTimer::timeout, this,
            &SettingsPages::tmrCompareSettings_Timer);
    connect(&m_tmrCompareAirFlowSet, &FormTimer::timeout, this,
            &SettingsPages::tmrCompareAirFlowSet_Timer);
    connect(&m_tmrCompareRelaySet, &FormTimer::timeout, this,
            &SettingsPages::tmrCompareRelaySet_Timer);
    connect(&m_tmrCompareSensorTempAlarmSet, &FormTimer::timeout, this,
            &SettingsPages::tmrCompareSensorTempAlarmSet_Timer);
}

FormTimer& SettingsPages::compareTimer(Page page) {
    switch (page) {
    case Settings:
        return m_tmrCompareSettings;
    case AirFlow:
        return m_tmrCompareAirFlowSet;
    case Relays:
        return m_tmrCompareRelaySet;
    default:
        return m_tmrCompareSensorTempAlarmSet;
    }
}

const FormTimer& SettingsPages::timerOf(Page page) const {
    return const_cast<SettingsPages*>(this)->compareTimer(page);
}

SettingsPages::State SettingsPages::state(Page page) const {
    if (!m_editing[page]) return State::Viewing;
    return timerOf(page).isEnabled() ? State::Waiting : State::Editing;
}

bool SettingsPages::anyWaiting() const {
    for (int page = 0; page < kPageCount; ++page)
        if (state(static_cast<Page>(page)) == State::Waiting) return true;
    return false;
}

QString SettingsPages::waitingLabel(Page page) {
    switch (page) {
    case Settings:
        return el::lblSettingsWaiting;
    case AirFlow:
        return el::lblAirFlowWaiting;
    case Relays:
        return el::lblRelayWaiting;
    default:
        return el::lblSensorTempAlarmWaiting;
    }
}

// Settings page.

void SettingsPages::cmdSettings_Click() {
    openFields(settingsFields());
    for (const Switch& s : settingsSwitches()) {
        view().setChecked(s.copy, view().isChecked(s.shown));
        view().setVisible(s.copy, true);
        view().setVisible(s.shown, false);
    }
    setToolTips(Settings);
    showButtons(Settings, true);
}

void SettingsPages::cmdSettingsStandard_Click() {
    Form& v = view();
    const SettingLimits& l = m_limits;
    const double standardFaultDelay = l.faultDelayStandard;
    ValueStore* values = m_values.get();
    const double sensitivity = values ? values->DET_GetSmokeValue10Min(0) / 1000.0 : 0;
    const std::pair<QString, QString> texts[] = {
        {el::txtAlarmDelay, text(l.alarmDelayStandard, 0)},
        {el::txtExtinguishDelay, text(l.extinguishDelayStandard, 0)},
        {el::txtAirFlowRange, text(l.airFlowRangeStandard, 0)},
        {el::txtFaultDelayMinutes, QString::number(static_cast<int>(standardFaultDelay) / 60)},
        {el::txtFaultDelaySeconds, QString::number(static_cast<int>(standardFaultDelay) % 60)},
        {el::txtSensitivity[0], text(sensitivity, 3)},
        {el::txtSensitivity[1], text(sensitivity, 3)},
        {el::txtPreAlarmThreshold[0], text(l.preAlarmThresholdStandard, 0)},
        {el::txtPreAlarmThreshold[1], text(l.preAlarmThresholdStandard, 0)},
    };
    for (const auto& [field, value] : texts) {
        v.setBackColor(field, colors::kWindowBackground);
        v.setCaption(field, value);
    }
    v.setChecked(el::chkBuzzer[1], l.buzzerStandard);
    v.setChecked(el::chkFaultStore[1], l.faultStoreStandard);
    v.setChecked(el::chkDynamicAirflow[1], l.dynamicAirFlowStandard);
    v.setChecked(el::chkLocalization[1], l.localisationStandard);
    v.setChecked(el::chkAlarmAfterLoc[1], l.alarmAfterLocStandard);
    v.setChecked(el::chkTrueLix[1], l.trueLixStandard);
    v.setChecked(el::chkTrueLix[3], l.trueLixStandard);
    m_state.services.dialogs->information(m_state.texts.messages.standardValuesRemark,
                                          m_state.texts.appTitle);
}

void SettingsPages::cmdSettingsAssume_Click() {
    m_writeQueued[Settings] = m_commands.SettingsAssume(m_limits);
}

void SettingsPages::cmdSettingsCancel_Click() {
    closeFields(Settings, settingsFields());
    for (const Switch& s : settingsSwitches()) {
        view().setVisible(s.shown, true);
        view().setVisible(s.copy, false);
    }
}

void SettingsPages::tmrCompareSettings_Timer() {
    finishIfEqual(Settings);
}

// Air-flow page.

void SettingsPages::cmdAirFlowSet_Click() {
    openFields(airFlowFields());
    setToolTips(AirFlow);
    showButtons(AirFlow, true);
}

void SettingsPages::cmdAirFlowStandard_Click() {
    const SettingLimits& l = m_limits;
    const std::pair<QString, QString> texts[] = {
        {el::txtAltitude, text(l.altitudeStandard, 0)},
        {el::txtAirPressure, text(l.airPressureStandard, 0)},
        {el::txtFanVoltageNormal, text(l.fanVoltageStandard / 1000, 1)},
    };
    for (const auto& [field, value] : texts) {
        view().setBackColor(field, colors::kWindowBackground);
        view().setCaption(field, value);
    }
    m_state.services.dialogs->information(m_state.texts.messages.standardValuesRemark,
                                          m_state.texts.appTitle);
}

void SettingsPages::cmdAirFlowInit_Click() {
    m_writeQueued[AirFlow] = m_commands.AirFlowInit(m_limits);
}

void SettingsPages::cmdAirFlowCancel_Click() {
    closeFields(AirFlow, airFlowFields());
}

void SettingsPages::tmrCompareAirFlowSet_Timer() {
    finishIfEqual(AirFlow);
}

// Relay page: while it is edited its boxes take input, and the refresh leaves them alone.

void SettingsPages::cmdRelaySet_Click() {
    for (int r = 0; r < 5; ++r) {
        for (int i = 0; i < 14; ++i)
            view().setEnabled(kRelayBoxes[r][i], true);
        for (int i = 0; i < 2; ++i)
            view().setEnabled(kRelayOptions[r][i], true);
    }
    m_editing[Relays] = true;
    showButtons(Relays, true);
}

void SettingsPages::cmdRelayAssume_Click() {
    m_writeQueued[Relays] = m_commands.RelayAssume();
}

void SettingsPages::cmdRelayCancel_Click() {
    m_tmrCompareRelaySet.disable();
    for (int r = 0; r < 5; ++r) {
        for (int i = 0; i < 14; ++i)
            view().setEnabled(kRelayBoxes[r][i], false);
        for (int i = 0; i < 2; ++i)
            view().setEnabled(kRelayOptions[r][i], false);
    }
    m_editing[Relays] = false;
    showButtons(Relays, false);
    showWaiting(Relays, {});
    if (view().isShown() && m_refresh) m_refresh();
}

void SettingsPages::tmrCompareRelaySet_Timer() {
    finishIfEqual(Relays);
}

// Temperature page: the alarm temperatures stay in degrees Celsius, whatever the display's
// unit.

void SettingsPages::cmdSensorTempAlarmSet_Click() {
    openFields(temperatureFields());
    setToolTips(Temperatures);
    showButtons(Temperatures, true);
}

void SettingsPages::cmdSensorTempAlarmAssume_Click() {
    m_writeQueued[Temperatures] = m_commands.SensorTempAlarmAssume(m_limits);
}

void SettingsPages::cmdSensorTempAlarmCancel_Click() {
    closeFields(Temperatures, temperatureFields());
}

void SettingsPages::tmrCompareSensorTempAlarmSet_Timer() {
    finishIfEqual(Temperatures);
}

// Common to the pages.

void SettingsPages::onClicked(const QString& element) {
    using Handler = void (SettingsPages::*)();
    static const std::pair<QString, Handler> handlers[] = {
        {el::cmdSettings, &SettingsPages::cmdSettings_Click},
        {el::cmdSettingsStandard, &SettingsPages::cmdSettingsStandard_Click},
        {el::cmdSettingsAssume, &SettingsPages::cmdSettingsAssume_Click},
        {el::cmdSettingsCancel, &SettingsPages::cmdSettingsCancel_Click},
        {el::cmdAirFlowSet, &SettingsPages::cmdAirFlowSet_Click},
        {el::cmdAirFlowStandard, &SettingsPages::cmdAirFlowStandard_Click},
        {el::cmdAirFlowInit, &SettingsPages::cmdAirFlowInit_Click},
        {el::cmdAirFlowCancel, &SettingsPages::cmdAirFlowCancel_Click},
        {el::cmdRelaySet, &SettingsPages::cmdRelaySet_Click},
        {el::cmdRelayAssume, &SettingsPages::cmdRelayAssume_Click},
        {el::cmdRelayCancel, &SettingsPages::cmdRelayCancel_Click},
        {el::cmdSensorTempAlarmSet, &SettingsPages::cmdSensorTempAlarmSet_Click},
        {el::cmdSensorTempAlarmAssume, &SettingsPages::cmdSensorTempAlarmAssume_Click},
        {el::cmdSensorTempAlarmCancel, &SettingsPages::cmdSensorTempAlarmCancel_Click},
    };
    for (const auto& [name, handler] : handlers)
        if (name == element) (this->*handler)();
}

// An up/down element writes its value into its field, as the field's own text.
void SettingsPages::onEdited(const QString& element) {
    for (const auto* fields : {&settingsFields(), &airFlowFields(), &temperatureFields()}) {
        for (const TextSetting& s : *fields) {
            if (s.upDown != element) continue;
            view().setCaption(s.field, text(view().value(s.upDown) / s.scale, s.decimals));
            return;
        }
    }
}

// The tick that sends a page's command starts its comparison.
void SettingsPages::onWriteSent(int command) {
    Page page;
    switch (command) {
    case 129:
        page = Settings;
        break;
    case 130:
        page = AirFlow;
        break;
    case 137:
        page = Temperatures;
        break;
    case 138:
        page = Relays;
        break;
    default:
        return;
    }
    // The advanced settings window writes commands 129 and 137 too: only the page that
    // queued the write waits for it.
    if (!m_writeQueued[page]) return;
    m_writeQueued[page] = false;
    compareTimer(page).enable();
    m_sentAt[page].start();
    if (m_editing[page]) showWaiting(page, differences(page));
}

void SettingsPages::openFields(const std::vector<TextSetting>& settings) {
    Form& v = view();
    for (const TextSetting& s : settings) {
        v.setLeft(s.unit, v.left(s.field) + kUnitAfterField);
        const QString caption = v.caption(s.label);
        v.setBackColor(s.field, colors::kWindowBackground);
        v.setCaption(s.field, caption);
        bool isNumber = false;
        const double value = m_state.preferences.locale().toDouble(caption, &isNumber);
        if (const auto whole = numberformat::toInt32(value * s.scale); isNumber && whole)
            v.setValue(s.upDown, *whole);
        v.setVisible(s.field, true);
        v.setVisible(s.upDown, true);
        v.setVisible(s.label, false);
    }
}

void SettingsPages::closeFields(Page page, const std::vector<TextSetting>& settings) {
    compareTimer(page).disable();
    Form& v = view();
    for (const TextSetting& s : settings) {
        v.setLeft(s.unit, v.left(s.label) + kUnitAfterLabel);
        v.setVisible(s.label, true);
        v.setVisible(s.field, false);
        v.setVisible(s.upDown, false);
    }
    showButtons(page, false);
    showWaiting(page, {});
}

void SettingsPages::showButtons(Page page, bool editing) {
    m_editing[page] = editing;
    const Buttons buttons = buttonsOf(page);
    view().setVisible(buttons.open, !editing);
    for (const QString& button : buttons.editing)
        view().setVisible(button, editing);
}

// Each field tells its limits and unit: "min - max unit".
void SettingsPages::setToolTips(Page page) {
    Form& v = view();
    const SettingLimits& l = m_limits;
    const QLocale& locale = m_state.preferences.locale();
    auto range = [&](const QString& field, double low, double high, int decimals,
                     const QString& unit) {
        v.setToolTip(field, text(low, decimals) + QStringLiteral(" - ") + text(high, decimals) +
                                u' ' + unit);
    };
    auto plain = [&](double value) { return numberformat::plain(value, locale); };
    switch (page) {
    case Settings: {
        v.setToolTip(el::txtAlarmDelay, plain(l.alarmDelayMin) + QStringLiteral(" - ") +
                                            plain(l.alarmDelayMax) + u' ' +
                                            v.caption(el::lblAlarmDelayUnit));
        range(el::txtExtinguishDelay, l.extinguishDelayMin, l.extinguishDelayMax, 0,
              v.caption(el::lblExtinguishDelayUnit));
        v.setToolTip(el::txtAirFlowRange, plain(l.airFlowRangeMin) + QStringLiteral(" - ") +
                                              plain(l.airFlowRangeMax) + u' ' +
                                              v.caption(el::lblAirFlowRangeUnit));
        auto minutesAndSeconds = [&](double seconds) {
            const int whole = numberformat::toInt32(seconds).value_or(0);
            return QString::number(whole / 60) + u' ' + v.caption(el::lblFaultDelayMinutesUnit) +
                   u' ' + QString::number(whole % 60) + u' ' +
                   v.caption(el::lblFaultDelaySecondsUnit);
        };
        const QString faultDelay = minutesAndSeconds(l.faultDelayMin) + QStringLiteral(" - ") +
                                   minutesAndSeconds(l.faultDelayMax);
        v.setToolTip(el::txtFaultDelayMinutes, faultDelay);
        v.setToolTip(el::txtFaultDelaySeconds, faultDelay);
        for (int d = 0; d < 2; ++d) {
            const Element& upDown = v.element(el::ctrSensitivity[d]);
            range(el::txtSensitivity[d], upDown.minimum / 1000, upDown.maximum / 1000, 3,
                  QStringLiteral("%/m"));
            range(el::txtPreAlarmThreshold[d], l.preAlarmThresholdMin, l.preAlarmThresholdMax, 0,
                  v.caption(el::lblPreAlarmThresholdUnit[d]));
        }
        break;
    }
    case AirFlow:
        v.setToolTip(el::txtAltitude, plain(l.altitudeMin) + QStringLiteral(" - ") +
                                          plain(l.altitudeMax) + u' ' +
                                          v.caption(el::lblAltitudeUnit));
        v.setToolTip(el::txtAirPressure, plain(l.airPressureMin) + QStringLiteral(" - ") +
                                             plain(l.airPressureMax) + u' ' +
                                             v.caption(el::lblAirPressureUnit));
        range(el::txtFanVoltageNormal, l.fanVoltageMin / 1000, l.fanVoltageMax / 1000, 1,
              v.caption(el::lblFanVoltageNormalUnit));
        break;
    case Temperatures:
        for (int n = 0; n < 5; ++n)
            range(el::txtSensorTempAlarm[n], l.sensorTempAlarmMin / 10, l.sensorTempAlarmMax / 10,
                  1, v.caption(el::lblSensorTempAlarmUnit[n]));
        break;
    default:
        break;
    }
}

// What still differs, by legend: texts against the labels, switches against the device's
// boxes, relay choices against the value store itself.
QStringList SettingsPages::differences(Page page) {
    const Form& v = m_state.forms.get(frmDisplay::kName);
    QStringList differing;
    auto note = [&differing](const QString& what) {
        if (!differing.contains(what)) differing << what;
    };
    auto legend = [&v](const QString& element, const QString& suffix = {}) {
        return suffix.isEmpty() ? v.caption(element) : v.caption(element) + u' ' + suffix;
    };
    const std::vector<TextSetting>* fields = page == Settings       ? &settingsFields()
                                             : page == AirFlow      ? &airFlowFields()
                                             : page == Temperatures ? &temperatureFields()
                                                                    : nullptr;
    if (fields) {
        for (const TextSetting& s : *fields)
            if (v.caption(s.field) != v.caption(s.label)) note(legend(s.legend));
    }
    if (page == Settings) {
        for (const Switch& s : settingsSwitches())
            if (v.value(s.copy) != v.value(s.shown)) note(legend(s.legend));
    }
    if (page == Relays) {
        ValueStore* values = m_values.get();
        for (std::int16_t r = 0; r < 5 && values; ++r) {
            bool same = true;
            for (std::int16_t i = 0; i < 14; ++i)
                same = same &&
                       v.isChecked(kRelayBoxes[r][i]) == (values->GetRelayCombineMask(r, i) != 0);
            for (std::int16_t i = 0; i < 2; ++i)
                same = same &&
                       v.isChecked(kRelayOptions[r][i]) ==
                           (values->GetRelayCombineMask(r, static_cast<std::int16_t>(i + 14)) != 0);
            if (!same) note(legend(el::lblRelayNumber[r]));
        }
    }
    return differing;
}

void SettingsPages::showWaiting(Page page, const QStringList& differing) {
    showWaitingNote(m_state.texts, view(), waitingLabel(page), state(page) == State::Waiting,
                    m_sentAt[page], differing);
}

bool SettingsPages::finishIfEqual(Page page) {
    const QStringList differing = differences(page);
    if (!differing.isEmpty()) {
        if (m_editing[page]) showWaiting(page, differing);
        return false;
    }
    compareTimer(page).disable();
    switch (page) {
    case Settings:
        cmdSettingsCancel_Click();
        break;
    case AirFlow:
        cmdAirFlowCancel_Click();
        break;
    case Relays:
        cmdRelayCancel_Click();
        break;
    default:
        cmdSensorTempAlarmCancel_Click();
        break;
    }
    return true;
}

Form& SettingsPages::view() const {
    return m_state.forms.get(frmDisplay::kName);
}

QString SettingsPages::text(double value, int decimals) const {
    return numberformat::fixed(value, decimals, m_state.preferences.locale());
}
