#include "devicesettings/devicesettings.h"

#include "common/appstate.h"
#include "common/colors.h"
#include "common/fieldcheck.h"
#include "common/numberformat.h"
#include "common/stringtable.h"
#include "common/waitingnote.h"
#include "devicesettings/devicesettings_elements.h"
#include "display/mainview_elements.h"
#include "engine/commands.h"
#include "engine/pollengine.h"
#include "values/devicevalues.h"

#include <array>
#include <cmath>

namespace el = frmDeviceSettings;
using Page = DeviceSettings::Page;

namespace {

constexpr int kSensors = 5;

// The elements of one page: its rows, each a name, a label and its field on one spot, and
// a unit, then the page's buttons and what it says while it compares.
struct PageElements {
    ElementArray name, label, field, unit;
    int rows;
    QString open, assume, cancel, waiting;
    int command; // the write that goes out for the page
};

const PageElements& elementsOf(Page page) {
    static const PageElements resistors{el::lblParameterName,
                                        el::lblParameterValue,
                                        el::txtParameterValue,
                                        el::lblParameterUnit,
                                        3,
                                        el::cmdSettings,
                                        el::cmdSettingsAssume,
                                        el::cmdSettingsCancel,
                                        el::lblSettingsWaiting,
                                        129};
    static const PageElements betaValues{el::lblBetaFactorName,
                                         el::lblBetaFactor,
                                         el::txtBetaFactor,
                                         el::lblBetaFactorUnit,
                                         kSensors,
                                         el::cmdBetaSettings,
                                         el::cmdBetaSettingsAssume,
                                         el::cmdBetaSettingsCancel,
                                         el::lblBetaSettingsWaiting,
                                         137};
    return page == DeviceSettings::Resistors ? resistors : betaValues;
}

} // namespace

DeviceSettings::DeviceSettings(AppState& state, DeviceCommands& commands, PollEngine& engine,
                               DeviceValues& values)
    : QObject()
    , m_state(state)
    , m_commands(commands)
    , m_values(values) {
    Form& form = window();
    connect(&form, &Form::loaded, this, &DeviceSettings::onLoaded);
    connect(&form, &Form::clicked, this, &DeviceSettings::onClicked);
    // Closing by the window's frame is the close button; a comparison still runs on.
    form.setCloseHandler([this] {
        m_tmrRefresh.disable();
        return true;
    });
    connect(&m_state.forms.get(frmDisplay::kName), &Form::clicked, this,
            &DeviceSettings::onMainViewClicked);
    connect(&engine, &PollEngine::writeSent, this, &DeviceSettings::onWriteSent);
    connect(&m_tmrRefresh, &FormTimer::timeout, this, &DeviceSettings::GetDeviceSettings);
    connect(&m_tmrCompare[Resistors], &FormTimer::timeout, this,
            &DeviceSettings::tmrCompareSettings_Timer);
    connect(&m_tmrCompare[BetaValues], &FormTimer::timeout, this,
            &DeviceSettings::tmrCompareBetaSettings_Timer);
    // The window is made in the viewing state, whether or not a device is there.
    closePage(Resistors);
    closePage(BetaValues);
}

DeviceSettings::State DeviceSettings::state(Page page) const {
    if (!m_editing[page]) return State::Viewing;
    return m_tmrCompare[page].isEnabled() ? State::Comparing : State::Editing;
}

void DeviceSettings::onLoaded() {
    m_tmrRefresh.disable();
    m_tmrRefresh.setInterval(234);
    for (FormTimer& timer : m_tmrCompare) {
        timer.disable();
        timer.setInterval(100);
    }
}

void DeviceSettings::ShowDeviceSettings() {
    Form& w = window();
    w.load();
    using C = DeviceCommands;
    auto range = [&](const QString& field, double low, double high, const QString& unit) {
        w.setToolTip(field,
                     number(low) + QStringLiteral(" - ") + number(high) + u' ' + w.caption(unit));
    };
    range(el::txtParameterValue[0], C::kResistorMin, C::kResistorMax, el::lblParameterUnit[0]);
    range(el::txtParameterValue[1], C::kResistorMin, C::kResistorMax, el::lblParameterUnit[1]);
    range(el::txtParameterValue[2], C::kToleranceMin, C::kToleranceMax, el::lblParameterUnit[2]);
    for (int n = 0; n < kSensors; ++n)
        range(el::txtBetaFactor[n], C::kBetaMin, C::kBetaMax, el::lblBetaFactorUnit[n]);

    ValueStore* values = m_values.get();
    w.setVisible(el::fraDeviceSettings[1], values && values->GetHasTemperatureSensors() != 0);
    cmdSettingsCancel_Click();
    cmdBetaSettingsCancel_Click();
    m_tmrRefresh.enable();
}

void DeviceSettings::GetDeviceSettings() {
    ValueStore* values = m_values.get();
    if (!values) return; // no device yet: the labels keep what they show
    Form& w = window();
    w.setCaption(el::lblParameterValue[0], number(values->GetAlarmResistorValue()));
    w.setCaption(el::lblParameterValue[1], number(values->GetNormalResistorValue()));
    w.setCaption(el::lblParameterValue[2], number(values->GetResistorValueTolerance()));
    for (std::int16_t n = 0; n < kSensors; ++n)
        w.setCaption(el::lblBetaFactor[n], number(values->GetNTCbeta(n)));
}

void DeviceSettings::ApplyTexts(Language language) {
    const StringTable& table = StringTable::instance();
    auto s = [&](int index) { return table.text(language, index); };
    Form& w = window();
    QString title = m_state.forms.get(frmDisplay::kName).caption(frmDisplay::mnuDeviceSettings);
    w.setTitle(title.remove(u'&'));
    w.setCaption(el::lblDeviceSettings, s(412));
    w.setCaption(el::lblParameterName[0], s(413));
    w.setCaption(el::lblParameterUnit[0], s(414));
    w.setCaption(el::lblParameterName[1], s(415));
    w.setCaption(el::lblParameterUnit[1], s(414));
    w.setCaption(el::lblParameterName[2], s(416));
    w.setCaption(el::lblParameterUnit[2], QStringLiteral("%"));
    w.setCaption(el::lblBetaFactorSettings, s(417));
    for (int n = 0; n < kSensors; ++n) {
        w.setCaption(el::lblBetaFactorName[n], s(112) + u' ' + QString::number(n + 1));
        w.setCaption(el::lblBetaFactorUnit[n], QString());
    }
    for (Page page : {Resistors, BetaValues}) {
        const PageElements& e = elementsOf(page);
        w.setCaption(e.open, s(48));
        w.setCaption(e.assume, s(51));
        w.setCaption(e.cancel, s(49));
    }
    w.setCaption(el::cmdClose, s(76));
}

// Resistor page.

void DeviceSettings::cmdSettings_Click() {
    openPage(Resistors);
}

void DeviceSettings::cmdSettingsAssume_Click() {
    Form& w = window();
    DeviceCommands::Resistors resistors;
    for (int i = 0; i < 3; ++i)
        resistors.values[static_cast<std::size_t>(i)] = readNumber(w, el::txtParameterValue[i]);
    const auto block = m_commands.AdvancedSettingsAssume(resistors);
    for (int i = 0; i < 3; ++i)
        showVerdict(w, el::txtParameterValue[i], resistors.values[static_cast<std::size_t>(i)],
                    m_state.preferences.locale());
    if (!m_commands.Send(block)) return;
    m_sentAt[Resistors].start();
    m_tmrCompare[Resistors].enable();
    showWaiting(Resistors, differences(Resistors));
}

void DeviceSettings::cmdSettingsCancel_Click() {
    closePage(Resistors);
}

void DeviceSettings::tmrCompareSettings_Timer() {
    compare(Resistors);
}

// Beta page.

void DeviceSettings::cmdBetaSettings_Click() {
    openPage(BetaValues);
}

void DeviceSettings::cmdBetaSettingsAssume_Click() {
    Form& w = window();
    std::array<TypedNumber, kSensors> betas;
    for (int n = 0; n < kSensors; ++n)
        betas[static_cast<std::size_t>(n)] = readNumber(w, el::txtBetaFactor[n]);
    const auto block = m_commands.BetaFactorSettingsAssume(betas);
    for (int n = 0; n < kSensors; ++n)
        showVerdict(w, el::txtBetaFactor[n], betas[static_cast<std::size_t>(n)],
                    m_state.preferences.locale());
    if (!m_commands.Send(block)) return;
    m_sentAt[BetaValues].start();
    m_tmrCompare[BetaValues].enable();
    showWaiting(BetaValues, differences(BetaValues));
}

void DeviceSettings::cmdBetaSettingsCancel_Click() {
    closePage(BetaValues);
}

void DeviceSettings::tmrCompareBetaSettings_Timer() {
    compare(BetaValues);
}

void DeviceSettings::cmdClose_Click() {
    m_tmrRefresh.disable();
    window().hide();
}

// Common to the pages.

void DeviceSettings::onClicked(const QString& element) {
    using Handler = void (DeviceSettings::*)();
    static const std::pair<QString, Handler> handlers[] = {
        {el::cmdSettings, &DeviceSettings::cmdSettings_Click},
        {el::cmdSettingsAssume, &DeviceSettings::cmdSettingsAssume_Click},
        {el::cmdSettingsCancel, &DeviceSettings::cmdSettingsCancel_Click},
        {el::cmdBetaSettings, &DeviceSettings::cmdBetaSettings_Click},
        {el::cmdBetaSettingsAssume, &DeviceSettings::cmdBetaSettingsAssume_Click},
        {el::cmdBetaSettingsCancel, &DeviceSettings::cmdBetaSettingsCancel_Click},
        {el::cmdClose, &DeviceSettings::cmdClose_Click},
    };
    for (const auto& [name, handler] : handlers)
        if (name == element) (this->*handler)();
}

void DeviceSettings::onMainViewClicked(const QString& element) {
    if (element != frmDisplay::mnuDeviceSettings) return;
    ShowDeviceSettings();
    window().centreOver(m_state.forms.get(frmDisplay::kName));
    window().show(true);
}

// The age of a comparison counts from the telegram that carried the write.
void DeviceSettings::onWriteSent(int command) {
    for (Page page : {Resistors, BetaValues}) {
        if (elementsOf(page).command != command || state(page) != State::Comparing) continue;
        m_sentAt[page].start();
        showWaiting(page, differences(page));
    }
}

void DeviceSettings::openPage(Page page) {
    GetDeviceSettings();
    const PageElements& e = elementsOf(page);
    Form& w = window();
    for (int i = 0; i < e.rows; ++i) {
        w.setCaption(e.field[i], w.caption(e.label[i]));
        w.setBackColor(e.field[i], colors::kWindowBackground);
    }
    for (int i = 0; i < e.rows; ++i) {
        w.setVisible(e.label[i], false);
        w.setVisible(e.field[i], true);
    }
    w.setVisible(e.assume, true);
    w.setVisible(e.open, false);
    w.setVisible(e.cancel, true);
    m_editing[page] = true;
}

void DeviceSettings::closePage(Page page) {
    const PageElements& e = elementsOf(page);
    Form& w = window();
    for (int i = 0; i < e.rows; ++i) {
        w.setVisible(e.field[i], false);
        w.setVisible(e.label[i], true);
    }
    w.setVisible(e.assume, false);
    w.setVisible(e.open, true);
    w.setVisible(e.cancel, false);
    m_tmrCompare[page].disable();
    m_editing[page] = false;
    showWaiting(page, {});
    GetDeviceSettings();
}

void DeviceSettings::compare(Page page) {
    GetDeviceSettings();
    const QStringList differing = differences(page);
    if (differing.isEmpty()) {
        closePage(page);
        return;
    }
    showWaiting(page, differing);
}

// As texts: "100" and "100.0" differ, as they would on the device's own display.
QStringList DeviceSettings::differences(Page page) const {
    const PageElements& e = elementsOf(page);
    const Form& w = window();
    QStringList differing;
    for (int i = 0; i < e.rows; ++i)
        if (w.caption(e.field[i]) != w.caption(e.label[i])) differing << w.caption(e.name[i]);
    return differing;
}

void DeviceSettings::showWaiting(Page page, const QStringList& differing) {
    showWaitingNote(m_state.texts, window(), elementsOf(page).waiting,
                    state(page) == State::Comparing, m_sentAt[page], differing);
}

// A plain number: whole numbers in full, as they are typed, never in the exponent form that
// the shortest text gives a round 100000; the device's other values are singles.
QString DeviceSettings::number(double value) const {
    if (std::isfinite(value) && value == std::trunc(value) && std::fabs(value) < 1e15)
        return numberformat::fixed(value, 0, m_state.preferences.locale());
    return numberformat::plain(static_cast<float>(value), m_state.preferences.locale());
}

Form& DeviceSettings::window() const {
    return m_state.forms.get(frmDeviceSettings::kName);
}
