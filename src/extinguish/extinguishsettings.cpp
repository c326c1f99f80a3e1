#include "extinguish/extinguishsettings.h"

#include "common/colors.h"
#include "common/fieldcheck.h"
#include "common/formmodel.h"
#include "common/numberformat.h"
#include "common/services.h"
#include "common/texts.h"
#include "common/waitingnote.h"
#include "display/mainview_elements.h"
#include "engine/commands.h"
#include "engine/pollengine.h"
#include "engine/settinglimits.h"
#include "extinguish/extinguish_elements.h"
#include "extinguish/modulechoice.h"
#include "values/devicevalues.h"

#include <cmath>

namespace es = frmExtinguishSettings;

namespace {

constexpr int kRows = 3;
constexpr int kModuleSettingsCommand = 136;
constexpr int kStringNoManualRelease = 541;
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

ExtinguishSettings::ExtinguishSettings(Form& window, Form& display, const Preferences& preferences,
                                       const Texts& texts, DeviceValues& values,
                                       DeviceCommands& commands, PollEngine& engine)
    : QObject()
    , m_window(window)
    , m_display(display)
    , m_preferences(preferences)
    , m_texts(texts)
    , m_values(values)
    , m_commands(commands) {
    Form& w = Window();
    connect(&w, &Form::loaded, this, &ExtinguishSettings::Form_Load);
    connect(&w, &Form::clicked, this, &ExtinguishSettings::OnClicked);
    connect(&w, &Form::edited, this, &ExtinguishSettings::OnEdited);
    connect(&w, &Form::windowChanged, this, &ExtinguishSettings::OnWindowChanged);
    connect(&engine, &PollEngine::WriteSent, this, &ExtinguishSettings::OnWriteSent);
    connect(&m_tmrRefresh, &FormTimer::timeout, this, &ExtinguishSettings::GetExtSettings);
    connect(&m_tmrCompareSettings, &FormTimer::timeout, this,
            &ExtinguishSettings::tmrCompareSettings_Timer);
    connect(&m_display, &Form::clicked, this, [this](const QString& element) {
        if (element == frmDisplay::mnuExtinguishSettings) ShowExtSettings(0);
    });
}

Form& ExtinguishSettings::Window() const {
    return m_window;
}

ExtinguishSettings::State ExtinguishSettings::CurrentState() const {
    if (!m_editing) return State::Viewing;
    return m_tmrCompareSettings.isEnabled() ? State::Waiting : State::Editing;
}

void ExtinguishSettings::ShowExtSettings(int Index) {
    Form& w = Window();
    w.load();
    ApplyTexts();
    m_extModuleIndex = modulechoice::clamped(Index);
    w.setValue(es::cboSerialNumber, m_extModuleIndex);
    SetHints();
    cmdSettingsCancel_Click();
    m_tmrRefresh.enable();
    w.centreOver(m_display);
    w.show(true);
}

void ExtinguishSettings::GetExtSettings() {
    ValueStore* values = m_values.get();
    if (!values) return;
    Form& w = Window();
    const QLocale& locale = m_preferences.locale();
    modulechoice::followBus(w, es::cboSerialNumber, *values, locale);
    const auto m = static_cast<std::int16_t>(m_extModuleIndex);
    const bool hasLine = values->EXT_GetHasManualActivationLine(m) != 0;
    if (!hasLine) {
        for (int i = 0; i < kRows; ++i)
            w.setCaption(es::lblParameterValue[i], QString());
    } else {
        w.setCaption(es::lblParameterValue[0], shown(values->EXT_GetAlarmResistorValue(m), locale));
        w.setCaption(es::lblParameterValue[1],
                     shown(values->EXT_GetNormalResistorValue(m), locale));
        w.setCaption(es::lblParameterValue[2],
                     shown(values->EXT_GetResistorValueTolerance(m), locale));
    }
    w.setVisible(es::fraButtons[0], hasLine);
    w.setVisible(es::fraButtons[1], !hasLine);
    const bool online = values->EXT_GetIsOnline(m) != 0;
    w.setBackColor(es::picExtOnline, online ? colors::kGreen : colors::kWindowBackground);
    w.setVisible(es::lblExtOfflineNote, !online);
    if (CurrentState() == State::Waiting) ShowWaiting(Differences());
}

void ExtinguishSettings::ApplyTexts() {
    Form& w = Window();
    // The window is named as the menu entry that opens it.
    QString title = m_display.caption(frmDisplay::mnuExtinguishSettings);
    w.setTitle(title.remove(u'&'));
    const std::pair<QString, int> texts[] = {
        {es::lblExtSettings, 412},
        {es::lblSerialNoLegend, 47},
        {es::lblExtOnlineLegend, 401},
        {es::lblParameterName[0], 413},
        {es::lblParameterName[1], 415},
        {es::lblParameterName[2], 416},
        {es::lblParameterUnit[0], kStringOhm},
        {es::lblParameterUnit[1], kStringOhm},
        {es::cmdSettings, 48},
        {es::cmdSettingsAssume, 51},
        {es::cmdSettingsCancel, 49},
        {es::cmdClose, 76},
        {es::lblExtOfflineNote, modulechoice::kStringOffline},
        {es::lblNoManualRelease, kStringNoManualRelease},
    };
    for (const auto& [element, index] : texts)
        w.setCaption(element, m_texts.str(index));
    w.setCaption(es::lblParameterUnit[2], QStringLiteral("%"));
    if (w.isLoaded()) SetHints();
    if (CurrentState() == State::Waiting) ShowWaiting(Differences());
}

// Each field tells its range: low bound, " - ", high bound, a blank and the unit.
void ExtinguishSettings::SetHints() {
    Form& w = Window();
    const QLocale& locale = m_preferences.locale();
    const struct {
        double low, high;
        QString unit;
    } ranges[kRows] = {
        {DeviceCommands::kResistorMin, DeviceCommands::kResistorMax,
         w.caption(es::lblParameterUnit[0])},
        {DeviceCommands::kResistorMin, DeviceCommands::kResistorMax,
         w.caption(es::lblParameterUnit[1])},
        {DeviceCommands::kToleranceMin, DeviceCommands::kToleranceMax,
         w.caption(es::lblParameterUnit[2])},
    };
    for (int i = 0; i < kRows; ++i)
        w.setToolTip(es::txtParameterValue[i],
                     shown(ranges[i].low, locale) + QStringLiteral(" - ") +
                         shown(ranges[i].high, locale) + u' ' + ranges[i].unit);
}

void ExtinguishSettings::cboSerialNumber_Click() {
    Form& w = Window();
    m_extModuleIndex = modulechoice::chosen(w, es::cboSerialNumber);
    GetExtSettings();
    for (int i = 0; i < kRows; ++i)
        w.setCaption(es::txtParameterValue[i], w.caption(es::lblParameterValue[i]));
}

void ExtinguishSettings::cmdSettings_Click() {
    GetExtSettings();
    Form& w = Window();
    for (int i = 0; i < kRows; ++i) {
        w.setCaption(es::txtParameterValue[i], w.caption(es::lblParameterValue[i]));
        w.setBackColor(es::txtParameterValue[i], colors::kWindowBackground);
        w.setVisible(es::lblParameterValue[i], false);
        w.setVisible(es::txtParameterValue[i], true);
    }
    w.setVisible(es::cmdSettingsAssume, true);
    w.setVisible(es::cmdSettingsCancel, true);
    w.setVisible(es::cmdSettings, false);
    w.setEnabled(es::cboSerialNumber, false);
    m_editing = true;
}

// A field that fails its check turns yellow and nothing goes out; the comparison runs all
// the same and finds no match until the field is corrected or the edit cancelled.
void ExtinguishSettings::cmdSettingsAssume_Click() {
    if (!m_editing) return;
    Form& w = Window();
    // The module chosen in the list, or none.
    const QStringList modules = w.items(es::cboSerialNumber);
    const double row = w.value(es::cboSerialNumber);
    const bool selected = row >= 0 && row < static_cast<double>(modules.size());
    DeviceCommands::Resistors resistors;
    for (int i = 0; i < kRows; ++i)
        resistors.values[static_cast<std::size_t>(i)] = readNumber(w, es::txtParameterValue[i]);
    const auto block = m_commands.BusItemSettings(
        selected ? modules[static_cast<qsizetype>(row)] : QStringLiteral("0"), resistors);
    for (int i = 0; i < kRows; ++i)
        showVerdict(w, es::txtParameterValue[i], resistors.values[static_cast<std::size_t>(i)],
                    m_preferences.locale());
    if (m_commands.Send(block)) m_sentAt.start();
    m_tmrCompareSettings.enable();
    ShowWaiting(Differences());
}

void ExtinguishSettings::tmrCompareSettings_Timer() {
    GetExtSettings();
    const QStringList differing = Differences();
    if (differing.isEmpty())
        cmdSettingsCancel_Click();
    else
        ShowWaiting(differing);
}

void ExtinguishSettings::cmdSettingsCancel_Click() {
    Form& w = Window();
    for (int i = 0; i < kRows; ++i) {
        w.setVisible(es::txtParameterValue[i], false);
        w.setVisible(es::lblParameterValue[i], true);
    }
    w.setVisible(es::cmdSettingsAssume, false);
    w.setVisible(es::cmdSettings, true);
    w.setVisible(es::cmdSettingsCancel, false);
    w.setEnabled(es::cboSerialNumber, true);
    m_tmrCompareSettings.disable();
    m_editing = false;
    m_sentAt.invalidate();
    ShowWaiting({});
    GetExtSettings();
}

QStringList ExtinguishSettings::Differences() const {
    const Form& w = Window();
    QStringList differing;
    for (int i = 0; i < kRows; ++i)
        if (w.caption(es::lblParameterValue[i]) != w.caption(es::txtParameterValue[i]))
            differing << w.caption(es::lblParameterName[i]);
    return differing;
}

void ExtinguishSettings::ShowWaiting(const QStringList& differing) {
    const bool waiting = CurrentState() == State::Waiting;
    QList<ComparedRow> rows;
    for (int i = 0; i < kRows; ++i)
        rows.append({es::lblParameterName[i], es::lblParameterValue[i], es::txtParameterValue[i],
                     es::lblParameterUnit[i]});
    const QStringList notes = markRefusedRows(m_texts, Window(), rows, differing, waiting);
    showWaitingNote(m_texts, Window(), es::lblSettingsWaiting, waiting, m_sentAt, notes);
}

void ExtinguishSettings::Form_Load() {
    Form& w = Window();
    m_tmrRefresh.disable();
    m_tmrCompareSettings.disable();
    m_tmrRefresh.setInterval(234);
    m_tmrCompareSettings.setInterval(100);
    m_editing = false;
    modulechoice::resetRows(w, es::cboSerialNumber);
    w.setVisible(es::fraButtons[1], false);
    w.setVisible(es::lblSettingsWaiting, false);
    w.setVisible(es::lblExtOfflineNote, false);
}

void ExtinguishSettings::OnClicked(const QString& element) {
    if (element == es::cmdSettings)
        cmdSettings_Click();
    else if (element == es::cmdSettingsAssume)
        cmdSettingsAssume_Click();
    else if (element == es::cmdSettingsCancel)
        cmdSettingsCancel_Click();
    else if (element == es::cmdClose)
        Window().unload();
}

void ExtinguishSettings::OnEdited(const QString& element) {
    if (element == es::cboSerialNumber) cboSerialNumber_Click();
}

void ExtinguishSettings::OnWindowChanged(Form::WindowChange change) {
    if (change != Form::WindowChange::Hidden && change != Form::WindowChange::Unloaded) return;
    m_tmrRefresh.disable();
    m_tmrCompareSettings.disable();
    m_editing = false;
}

// The age counts from the moment the block went out, not from the click.
void ExtinguishSettings::OnWriteSent(int command) {
    if (command != kModuleSettingsCommand || CurrentState() != State::Waiting) return;
    m_sentAt.start();
    ShowWaiting(Differences());
}

#include "moc_extinguishsettings.cpp"
