#include "extinguish/extinguishsettings.h"

#include "common/appstate.h"
#include "common/colors.h"
#include "common/fieldcheck.h"
#include "common/numberformat.h"
#include "common/waitingnote.h"
#include "display/mainview_elements.h"
#include "engine/commands.h"
#include "engine/pollengine.h"
#include "engine/settinglimits.h"
#include "extinguish/extinguish_elements.h"
#include "extinguish/modulechoice.h"
#include "values/devicevalues.h"

#include <cmath>

namespace el = frmExtinguishSettings;

namespace {

constexpr int kRows = 3;
constexpr int kModuleSettingsCommand = 136;
constexpr int kStringOffline = 540;
constexpr int kStringNoManualRelease = 541;
constexpr int kStringBusModules = 369;
constexpr int kStringOhm = 414;

// A whole number in full, as the field's check writes it back ("50000000", never "5e+07"),
// so that a value the device took reads back as the text that was sent; anything else as
// the shortest text of its value, which then differs from any field.
QString shown(double value, const QLocale& locale) {
    if (std::isfinite(value) && value == std::trunc(value) && std::fabs(value) < 1e15)
        return numberformat::fixed(value, 0, locale);
    return numberformat::plain(static_cast<float>(value), locale);
}

} // namespace

ExtinguishSettings::ExtinguishSettings(AppState& state, DeviceValues& values,
                                       DeviceCommands& commands, PollEngine& engine)
    : QObject()
    , m_state(state)
    , m_values(values)
    , m_commands(commands) {
    Form& w = window();
    connect(&w, &Form::loaded, this, &ExtinguishSettings::Form_Load);
    connect(&w, &Form::clicked, this, &ExtinguishSettings::onClicked);
    connect(&w, &Form::edited, this, &ExtinguishSettings::onEdited);
    connect(&w, &Form::windowChanged, this, &ExtinguishSettings::onWindowChanged);
    connect(&engine, &PollEngine::writeSent, this, &ExtinguishSettings::onWriteSent);
    connect(&m_tmrRefresh, &FormTimer::timeout, this, &ExtinguishSettings::GetExtSettings);
    connect(&m_tmrCompareSettings, &FormTimer::timeout, this,
            &ExtinguishSettings::tmrCompareSettings_Timer);
    connect(&m_state.forms.get(frmDisplay::kName), &Form::clicked, this,
            [this](const QString& element) {
                if (element == frmDisplay::mnuExtinguishSettings) ShowExtSettings(0);
            });
}

Form& ExtinguishSettings::window() const {
    return m_state.forms.get(frmExtinguishSettings::kName);
}

ExtinguishSettings::State ExtinguishSettings::state() const {
    if (!m_editing) return State::Viewing;
    return m_tmrCompareSettings.isEnabled() ? State::Waiting : State::Editing;
}

void ExtinguishSettings::ShowExtSettings(int Index) {
    Form& w = window();
    w.load();
    applyTexts();
    m_extModuleIndex = modulechoice::clamped(Index);
    w.setValue(el::cboSerialNumber, m_extModuleIndex);
    setHints();
    cmdSettingsCancel_Click();
    m_tmrRefresh.enable();
    w.centreOver(m_state.forms.get(frmDisplay::kName));
    w.show(true);
}

void ExtinguishSettings::GetExtSettings() {
    ValueStore* values = m_values.get();
    if (!values) return;
    Form& w = window();
    const QLocale& locale = m_state.preferences.locale();
    modulechoice::followBus(w, el::cboSerialNumber, *values, locale);
    const auto m = static_cast<std::int16_t>(m_extModuleIndex);
    const bool hasLine = values->EXT_GetHasManualActivationLine(m) != 0;
    if (!hasLine) {
        for (int i = 0; i < kRows; ++i)
            w.setCaption(el::lblParameterValue[i], QString());
    } else {
        w.setCaption(el::lblParameterValue[0], shown(values->EXT_GetAlarmResistorValue(m), locale));
        w.setCaption(el::lblParameterValue[1],
                     shown(values->EXT_GetNormalResistorValue(m), locale));
        w.setCaption(el::lblParameterValue[2],
                     shown(values->EXT_GetResistorValueTolerance(m), locale));
    }
    w.setVisible(el::fraButtons[0], hasLine);
    w.setVisible(el::fraButtons[1], !hasLine);
    const bool online = values->EXT_GetIsOnline(m) != 0;
    w.setBackColor(el::picExtOnline, online ? colors::kGreen : colors::kWindowBackground);
    w.setVisible(el::lblExtOfflineNote, !online);
    if (state() == State::Waiting) showWaiting(differences());
}

void ExtinguishSettings::applyTexts() {
    Form& w = window();
    const AppState& s = m_state;
    w.setTitle(s.texts.appTitle + QStringLiteral(" - ") + s.texts.str(kStringBusModules));
    const std::pair<QString, int> texts[] = {
        {el::lblExtSettings, 412},
        {el::lblSerialNoLegend, 47},
        {el::lblExtOnlineLegend, 401},
        {el::lblParameterName[0], 413},
        {el::lblParameterName[1], 415},
        {el::lblParameterName[2], 416},
        {el::lblParameterUnit[0], kStringOhm},
        {el::lblParameterUnit[1], kStringOhm},
        {el::cmdSettings, 48},
        {el::cmdSettingsAssume, 51},
        {el::cmdSettingsCancel, 49},
        {el::cmdClose, 76},
        {el::lblExtOfflineNote, kStringOffline},
        {el::lblNoManualRelease, kStringNoManualRelease},
    };
    for (const auto& [element, index] : texts)
        w.setCaption(element, s.texts.str(index));
    w.setCaption(el::lblParameterUnit[2], QStringLiteral("%"));
    if (w.isLoaded()) setHints();
    if (state() == State::Waiting) showWaiting(differences());
}

// Each field tells its range: low bound, " - ", high bound, a blank and the unit.
void ExtinguishSettings::setHints() {
    Form& w = window();
    const QLocale& locale = m_state.preferences.locale();
    const struct {
        double low, high;
        QString unit;
    } ranges[kRows] = {
        {DeviceCommands::kResistorMin, DeviceCommands::kResistorMax,
         w.caption(el::lblParameterUnit[0])},
        {DeviceCommands::kResistorMin, DeviceCommands::kResistorMax,
         w.caption(el::lblParameterUnit[1])},
        {DeviceCommands::kToleranceMin, DeviceCommands::kToleranceMax,
         w.caption(el::lblParameterUnit[2])},
    };
    for (int i = 0; i < kRows; ++i)
        w.setToolTip(el::txtParameterValue[i],
                     shown(ranges[i].low, locale) + QStringLiteral(" - ") +
                         shown(ranges[i].high, locale) + u' ' + ranges[i].unit);
}

void ExtinguishSettings::cboSerialNumber_Click() {
    Form& w = window();
    m_extModuleIndex = modulechoice::chosen(w, el::cboSerialNumber);
    GetExtSettings();
    for (int i = 0; i < kRows; ++i)
        w.setCaption(el::txtParameterValue[i], w.caption(el::lblParameterValue[i]));
}

void ExtinguishSettings::cmdSettings_Click() {
    GetExtSettings();
    Form& w = window();
    for (int i = 0; i < kRows; ++i) {
        w.setCaption(el::txtParameterValue[i], w.caption(el::lblParameterValue[i]));
        w.setBackColor(el::txtParameterValue[i], colors::kWindowBackground);
        w.setVisible(el::lblParameterValue[i], false);
        w.setVisible(el::txtParameterValue[i], true);
    }
    w.setVisible(el::cmdSettingsAssume, true);
    w.setVisible(el::cmdSettingsCancel, true);
    w.setVisible(el::cmdSettings, false);
    w.setEnabled(el::cboSerialNumber, false);
    m_editing = true;
}

// A field that fails its check turns yellow and nothing goes out; the comparison runs all
// the same and finds no match until the field is corrected or the edit cancelled.
void ExtinguishSettings::cmdSettingsAssume_Click() {
    if (!m_editing) return;
    Form& w = window();
    // The module chosen in the list, or none.
    const QStringList modules = w.items(el::cboSerialNumber);
    const double row = w.value(el::cboSerialNumber);
    const bool selected = row >= 0 && row < static_cast<double>(modules.size());
    DeviceCommands::Resistors resistors;
    for (int i = 0; i < kRows; ++i)
        resistors.values[static_cast<std::size_t>(i)] = readNumber(w, el::txtParameterValue[i]);
    const auto block = m_commands.BusItemSettings(
        selected ? modules[static_cast<qsizetype>(row)] : QStringLiteral("0"), resistors);
    for (int i = 0; i < kRows; ++i)
        showVerdict(w, el::txtParameterValue[i], resistors.values[static_cast<std::size_t>(i)],
                    m_state.preferences.locale());
    if (m_commands.Send(block)) m_sentAt.start();
    m_tmrCompareSettings.enable();
    showWaiting(differences());
}

void ExtinguishSettings::tmrCompareSettings_Timer() {
    GetExtSettings();
    const QStringList differing = differences();
    if (differing.isEmpty())
        cmdSettingsCancel_Click();
    else
        showWaiting(differing);
}

void ExtinguishSettings::cmdSettingsCancel_Click() {
    Form& w = window();
    for (int i = 0; i < kRows; ++i) {
        w.setVisible(el::txtParameterValue[i], false);
        w.setVisible(el::lblParameterValue[i], true);
    }
    w.setVisible(el::cmdSettingsAssume, false);
    w.setVisible(el::cmdSettings, true);
    w.setVisible(el::cmdSettingsCancel, false);
    w.setEnabled(el::cboSerialNumber, true);
    m_tmrCompareSettings.disable();
    m_editing = false;
    m_sentAt.invalidate();
    showWaiting({});
    GetExtSettings();
}

QStringList ExtinguishSettings::differences() const {
    const Form& w = window();
    QStringList differing;
    for (int i = 0; i < kRows; ++i)
        if (w.caption(el::lblParameterValue[i]) != w.caption(el::txtParameterValue[i]))
            differing << w.caption(el::lblParameterName[i]);
    return differing;
}

void ExtinguishSettings::showWaiting(const QStringList& differing) {
    showWaitingNote(m_state.texts, window(), el::lblSettingsWaiting, state() == State::Waiting,
                    m_sentAt, differing);
}

void ExtinguishSettings::Form_Load() {
    Form& w = window();
    m_tmrRefresh.disable();
    m_tmrCompareSettings.disable();
    m_tmrRefresh.setInterval(234);
    m_tmrCompareSettings.setInterval(100);
    m_editing = false;
    modulechoice::resetRows(w, el::cboSerialNumber);
    w.setVisible(el::fraButtons[1], false);
    w.setVisible(el::lblSettingsWaiting, false);
    w.setVisible(el::lblExtOfflineNote, false);
}

void ExtinguishSettings::onClicked(const QString& element) {
    if (element == el::cmdSettings)
        cmdSettings_Click();
    else if (element == el::cmdSettingsAssume)
        cmdSettingsAssume_Click();
    else if (element == el::cmdSettingsCancel)
        cmdSettingsCancel_Click();
    else if (element == el::cmdClose)
        window().unload();
}

void ExtinguishSettings::onEdited(const QString& element) {
    if (element == el::cboSerialNumber) cboSerialNumber_Click();
}

void ExtinguishSettings::onWindowChanged(Form::WindowChange change) {
    if (change != Form::WindowChange::Hidden && change != Form::WindowChange::Unloaded) return;
    m_tmrRefresh.disable();
    m_tmrCompareSettings.disable();
    m_editing = false;
}

// The age counts from the moment the block went out, not from the click.
void ExtinguishSettings::onWriteSent(int command) {
    if (command != kModuleSettingsCommand || state() != State::Waiting) return;
    m_sentAt.start();
    showWaiting(differences());
}
