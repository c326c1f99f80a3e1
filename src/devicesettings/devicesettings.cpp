#include "devicesettings/devicesettings.h"

#include "common/colors.h"
#include "common/fieldcheck.h"
#include "common/formmodel.h"
#include "common/numberformat.h"
#include "common/services.h"
#include "common/stringtable.h"
#include "common/texts.h"
#include "common/waitingnote.h"
#include "devicesettings/devicesettings_elements.h"
#include "display/mainview_elements.h"
#include "engine/commands.h"
#include "engine/pollengine.h"
#include "values/devicevalues.h"

#include <array>
#include <cmath>

namespace ds = frmDeviceSettings;
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
    static const PageElements resistors{ds::lblParameterName,
                                        ds::lblParameterValue,
                                        ds::txtParameterValue,
                                        ds::lblParameterUnit,
                                        3,
                                        ds::cmdSettings,
                                        ds::cmdSettingsAssume,
                                        ds::cmdSettingsCancel,
                                        ds::lblSettingsWaiting,
                                        129};
    static const PageElements betaValues{ds::lblBetaFactorName,
                                         ds::lblBetaFactor,
                                         ds::txtBetaFactor,
                                         ds::lblBetaFactorUnit,
                                         kSensors,
                                         ds::cmdBetaSettings,
                                         ds::cmdBetaSettingsAssume,
                                         ds::cmdBetaSettingsCancel,
                                         ds::lblBetaSettingsWaiting,
                                         137};
    return page == DeviceSettings::Resistors ? resistors : betaValues;
}

} // namespace

DeviceSettings::DeviceSettings(Form& window, Form& display, const Preferences& preferences,
                               const Texts& texts, DeviceCommands& commands, PollEngine& engine,
                               DeviceValues& values)
    : QObject()
    , m_window(window)
    , m_display(display)
    , m_preferences(preferences)
    , m_texts(texts)
    , m_commands(commands)
    , m_values(values) {
    Form& form = Window();
    connect(&form, &Form::loaded, this, &DeviceSettings::OnLoaded);
    connect(&form, &Form::clicked, this, &DeviceSettings::OnClicked);
    // Closing by the window's frame is the close button; a comparison still runs on.
    form.setCloseHandler([this] {
        m_tmrRefresh.disable();
        return true;
    });
    connect(&m_display, &Form::clicked, this, &DeviceSettings::OnMainViewClicked);
    connect(&engine, &PollEngine::WriteSent, this, &DeviceSettings::OnWriteSent);
    connect(&m_tmrRefresh, &FormTimer::timeout, this, &DeviceSettings::GetDeviceSettings);
    connect(&m_tmrCompare[Resistors], &FormTimer::timeout, this,
            &DeviceSettings::tmrCompareSettings_Timer);
    connect(&m_tmrCompare[BetaValues], &FormTimer::timeout, this,
            &DeviceSettings::tmrCompareBetaSettings_Timer);
    // The window is made in the viewing state, whether or not a device is there.
    ClosePage(Resistors);
    ClosePage(BetaValues);
}

DeviceSettings::State DeviceSettings::StateOf(Page page) const {
    if (!m_editing[page]) return State::Viewing;
    return m_tmrCompare[page].isEnabled() ? State::Comparing : State::Editing;
}

void DeviceSettings::OnLoaded() {
    m_tmrRefresh.disable();
    m_tmrRefresh.setInterval(234);
    for (FormTimer& timer : m_tmrCompare) {
        timer.disable();
        timer.setInterval(100);
    }
}

void DeviceSettings::ShowDeviceSettings() {
    Form& w = Window();
    w.load();
    using C = DeviceCommands;
    auto range = [&](const QString& field, double low, double high, const QString& unit) {
        w.setToolTip(field,
                     Number(low) + QStringLiteral(" - ") + Number(high) + u' ' + w.caption(unit));
    };
    range(ds::txtParameterValue[0], C::kResistorMin, C::kResistorMax, ds::lblParameterUnit[0]);
    range(ds::txtParameterValue[1], C::kResistorMin, C::kResistorMax, ds::lblParameterUnit[1]);
    range(ds::txtParameterValue[2], C::kToleranceMin, C::kToleranceMax, ds::lblParameterUnit[2]);
    for (int n = 0; n < kSensors; ++n)
        range(ds::txtBetaFactor[n], C::kBetaMin, C::kBetaMax, ds::lblBetaFactorUnit[n]);

    ValueStore* values = m_values.get();
    w.setVisible(ds::fraDeviceSettings[1], values && values->GetHasTemperatureSensors() != 0);
    cmdSettingsCancel_Click();
    cmdBetaSettingsCancel_Click();
    m_tmrRefresh.enable();
}

void DeviceSettings::GetDeviceSettings() {
    ValueStore* values = m_values.get();
    if (!values) return; // no device yet: the labels keep what they show
    Form& w = Window();
    w.setCaption(ds::lblParameterValue[0], Number(values->GetAlarmResistorValue()));
    w.setCaption(ds::lblParameterValue[1], Number(values->GetNormalResistorValue()));
    w.setCaption(ds::lblParameterValue[2], Number(values->GetResistorValueTolerance()));
    for (std::int16_t n = 0; n < kSensors; ++n)
        w.setCaption(ds::lblBetaFactor[n], Number(values->GetNTCbeta(n)));
}

void DeviceSettings::ApplyTexts(Language language) {
    const StringTable& table = StringTable::instance();
    auto s = [&](int index) { return table.text(language, index); };
    Form& w = Window();
    QString title = m_display.caption(frmDisplay::mnuDeviceSettings);
    w.setTitle(title.remove(u'&'));
    w.setCaption(ds::lblDeviceSettings, s(412));
    w.setCaption(ds::lblParameterName[0], s(413));
    w.setCaption(ds::lblParameterUnit[0], s(414));
    w.setCaption(ds::lblParameterName[1], s(415));
    w.setCaption(ds::lblParameterUnit[1], s(414));
    w.setCaption(ds::lblParameterName[2], s(416));
    w.setCaption(ds::lblParameterUnit[2], QStringLiteral("%"));
    w.setCaption(ds::lblBetaFactorSettings, s(417));
    for (int n = 0; n < kSensors; ++n) {
        w.setCaption(ds::lblBetaFactorName[n], s(112) + u' ' + QString::number(n + 1));
        w.setCaption(ds::lblBetaFactorUnit[n], QString());
    }
    for (Page page : {Resistors, BetaValues}) {
        const PageElements& e = elementsOf(page);
        w.setCaption(e.open, s(48));
        w.setCaption(e.assume, s(51));
        w.setCaption(e.cancel, s(49));
    }
    w.setCaption(ds::cmdClose, s(76));
}

// Resistor page.

void DeviceSettings::cmdSettings_Click() {
    OpenPage(Resistors);
}

void DeviceSettings::cmdSettingsAssume_Click() {
    Form& w = Window();
    DeviceCommands::Resistors resistors;
    for (int i = 0; i < 3; ++i)
        resistors.values[static_cast<std::size_t>(i)] = readNumber(w, ds::txtParameterValue[i]);
    const auto block = m_commands.AdvancedSettingsAssume(resistors);
    for (int i = 0; i < 3; ++i)
        showVerdict(w, ds::txtParameterValue[i], resistors.values[static_cast<std::size_t>(i)],
                    m_preferences.locale());
    if (!m_commands.Send(block)) return;
    m_sentAt[Resistors].start();
    m_tmrCompare[Resistors].enable();
    ShowWaiting(Resistors, Differences(Resistors));
}

void DeviceSettings::cmdSettingsCancel_Click() {
    ClosePage(Resistors);
}

void DeviceSettings::tmrCompareSettings_Timer() {
    Compare(Resistors);
}

// Beta page.

void DeviceSettings::cmdBetaSettings_Click() {
    OpenPage(BetaValues);
}

void DeviceSettings::cmdBetaSettingsAssume_Click() {
    Form& w = Window();
    std::array<TypedNumber, kSensors> betas;
    for (int n = 0; n < kSensors; ++n)
        betas[static_cast<std::size_t>(n)] = readNumber(w, ds::txtBetaFactor[n]);
    const auto block = m_commands.BetaFactorSettingsAssume(betas);
    for (int n = 0; n < kSensors; ++n)
        showVerdict(w, ds::txtBetaFactor[n], betas[static_cast<std::size_t>(n)],
                    m_preferences.locale());
    if (!m_commands.Send(block)) return;
    m_sentAt[BetaValues].start();
    m_tmrCompare[BetaValues].enable();
    ShowWaiting(BetaValues, Differences(BetaValues));
}

void DeviceSettings::cmdBetaSettingsCancel_Click() {
    ClosePage(BetaValues);
}

void DeviceSettings::tmrCompareBetaSettings_Timer() {
    Compare(BetaValues);
}

void DeviceSettings::cmdClose_Click() {
    m_tmrRefresh.disable();
    Window().hide();
}

// Common to the pages.

void DeviceSettings::OnClicked(const QString& element) {
    using Handler = void (DeviceSettings::*)();
    static const std::pair<QString, Handler> handlers[] = {
        {ds::cmdSettings, &DeviceSettings::cmdSettings_Click},
        {ds::cmdSettingsAssume, &DeviceSettings::cmdSettingsAssume_Click},
        {ds::cmdSettingsCancel, &DeviceSettings::cmdSettingsCancel_Click},
        {ds::cmdBetaSettings, &DeviceSettings::cmdBetaSettings_Click},
        {ds::cmdBetaSettingsAssume, &DeviceSettings::cmdBetaSettingsAssume_Click},
        {ds::cmdBetaSettingsCancel, &DeviceSettings::cmdBetaSettingsCancel_Click},
        {ds::cmdClose, &DeviceSettings::cmdClose_Click},
    };
    for (const auto& [name, handler] : handlers)
        if (name == element) (this->*handler)();
}

void DeviceSettings::OnMainViewClicked(const QString& element) {
    if (element != frmDisplay::mnuDeviceSettings) return;
    ShowDeviceSettings();
    Window().centreOver(m_display);
    Window().show(true);
}

// The age of a comparison counts from the telegram that carried the write.
void DeviceSettings::OnWriteSent(int command) {
    for (Page page : {Resistors, BetaValues}) {
        if (elementsOf(page).command != command || StateOf(page) != State::Comparing) continue;
        m_sentAt[page].start();
        ShowWaiting(page, Differences(page));
    }
}

void DeviceSettings::OpenPage(Page page) {
    GetDeviceSettings();
    const PageElements& e = elementsOf(page);
    Form& w = Window();
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

void DeviceSettings::ClosePage(Page page) {
    const PageElements& e = elementsOf(page);
    Form& w = Window();
    for (int i = 0; i < e.rows; ++i) {
        w.setVisible(e.field[i], false);
        w.setVisible(e.label[i], true);
    }
    w.setVisible(e.assume, false);
    w.setVisible(e.open, true);
    w.setVisible(e.cancel, false);
    m_tmrCompare[page].disable();
    m_editing[page] = false;
    ShowWaiting(page, {});
    GetDeviceSettings();
}

void DeviceSettings::Compare(Page page) {
    GetDeviceSettings();
    const QStringList differing = Differences(page);
    if (differing.isEmpty()) {
        ClosePage(page);
        return;
    }
    ShowWaiting(page, differing);
}

// As texts: "100" and "100.0" differ, as they would on the device's own display.
QStringList DeviceSettings::Differences(Page page) const {
    const PageElements& e = elementsOf(page);
    const Form& w = Window();
    QStringList differing;
    for (int i = 0; i < e.rows; ++i)
        if (w.caption(e.field[i]) != w.caption(e.label[i])) differing << w.caption(e.name[i]);
    return differing;
}

void DeviceSettings::ShowWaiting(Page page, const QStringList& differing) {
    const PageElements& e = elementsOf(page);
    const bool waiting = StateOf(page) == State::Comparing;
    QList<ComparedRow> rows;
    for (int i = 0; i < e.rows; ++i)
        rows.append({e.name[i], e.label[i], e.field[i], e.unit[i]});
    const QStringList notes = markRefusedRows(m_texts, Window(), rows, differing, waiting);
    showWaitingNote(m_texts, Window(), e.waiting, waiting, m_sentAt[page], notes);
}

// A plain number: whole numbers in full, as they are typed, never in the exponent form that
// the shortest text gives a round 100000; the device's other values are singles.
QString DeviceSettings::Number(double value) const {
    if (std::isfinite(value) && value == std::trunc(value) && std::fabs(value) < 1e15)
        return numberformat::fixed(value, 0, m_preferences.locale());
    return numberformat::plain(static_cast<float>(value), m_preferences.locale());
}

Form& DeviceSettings::Window() const {
    return m_window;
}

#include "moc_devicesettings.cpp"
