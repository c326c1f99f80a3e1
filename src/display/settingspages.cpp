#include "display/settingspages.h"

#include "common/fieldcheck.h"
#include "common/formmodel.h"
#include "common/numberformat.h"
#include "common/preferences.h"
#include "common/services.h"
#include "common/texts.h"
#include "common/waitingnote.h"
#include "display/mainview_elements.h"
#include "engine/commands.h"
#include "engine/pollengine.h"
#include "engine/settinglimits.h"
#include "engine/settingswriter.h"
#include "values/devicevalues.h"

namespace el = frmDisplay;
using Page = SettingsPages::Page;
using Kind = SettingDescriptor::Kind;

namespace {

// Where a unit stands, in twips from the left edge of its value: after the label that shows
// the device's value, or after the field and its up/down element while editing.
constexpr int kUnitAfterLabel = 850;
constexpr int kUnitAfterField = 1080;
constexpr int kStringOn = 52;
constexpr int kStringOff = 53;
constexpr int kStringDeviceReports = 823;

int at(Page page) {
    return static_cast<int>(page);
}

struct Buttons {
    QString open;
    QStringList editing;
};

Buttons buttonsOf(Page page) {
    switch (page) {
    case Page::Settings:
        return {el::cmdSettings,
                {el::cmdSettingsCancel, el::cmdSettingsAssume, el::cmdSettingsStandard}};
    case Page::AirFlow:
        return {el::cmdAirFlowSet,
                {el::cmdAirFlowCancel, el::cmdAirFlowInit, el::cmdAirFlowStandard}};
    case Page::Relays:
        return {el::cmdRelaySet, {el::cmdRelayCancel, el::cmdRelayAssume}};
    default:
        return {el::cmdSensorTempAlarmSet,
                {el::cmdSensorTempAlarmCancel, el::cmdSensorTempAlarmAssume}};
    }
}

// A time's fields count whole minutes and seconds; a number's field has its decimals, and
// its up/down element the value times the setting's scale.
int decimalsOf(const SettingDescriptor& s) {
    return s.kind == Kind::MinutesSeconds ? 0 : s.decimals;
}

double upDownScaleOf(const SettingDescriptor& s) {
    return s.kind == Kind::MinutesSeconds ? 1 : s.upDownScale;
}

TypedNumber& numberOf(SettingInput& input, int field) {
    return field == 0 ? input.number : input.seconds;
}

const TypedNumber& numberOf(const SettingInput& input, int field) {
    return field == 0 ? input.number : input.seconds;
}

} // namespace

SettingsPages::SettingsPages(Form& view, const Preferences& preferences, const Texts& texts,
                             UserDialogs* dialogs, SettingsWriter& writer, PollEngine& engine,
                             DeviceValues& values, const SettingLimits& limits,
                             std::function<void()> refresh)
    : QObject()
    , m_view(view)
    , m_preferences(preferences)
    , m_texts(texts)
    , m_dialogs(dialogs)
    , m_writer(writer)
    , m_values(values)
    , m_limits(limits)
    , m_refresh(std::move(refresh)) {
    connect(&m_view, &Form::clicked, this, &SettingsPages::onClicked);
    connect(&m_view, &Form::edited, this, &SettingsPages::onEdited);
    connect(&engine, &PollEngine::WriteSent, this, &SettingsPages::onWriteSent);
    connect(&m_tmrCompareSettings, &FormTimer::timeout, this,
            &SettingsPages::tmrCompareSettings_Timer);
    connect(&m_tmrCompareAirFlowSet, &FormTimer::timeout, this,
            &SettingsPages::tmrCompareAirFlowSet_Timer);
    connect(&m_tmrCompareRelaySet, &FormTimer::timeout, this,
            &SettingsPages::tmrCompareRelaySet_Timer);
    connect(&m_tmrCompareSensorTempAlarmSet, &FormTimer::timeout, this,
            &SettingsPages::tmrCompareSensorTempAlarmSet_Timer);
}

std::vector<SettingsPages::TextField> SettingsPages::textFields(Page page) {
    std::vector<TextField> fields;
    for (const SettingDescriptor* s : settingsOf(page))
        for (int field = 0; field < s->fieldCount(); ++field)
            fields.push_back({s, field});
    return fields;
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
    if (!m_editing[at(page)]) return State::Viewing;
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
    openFields(Settings);
    for (const SettingDescriptor* s : settingsOf(Settings)) {
        if (s->kind != Kind::Switch) continue;
        view().setChecked(s->copyBox(), view().isChecked(s->shownBox()));
        view().setVisible(s->copyBox(), true);
        view().setVisible(s->shownBox(), false);
    }
    setToolTips(Settings);
    showButtons(Settings, true);
}

void SettingsPages::cmdSettingsStandard_Click() {
    fillStandards(Settings);
}

void SettingsPages::cmdSettingsAssume_Click() {
    m_writeQueued[at(Settings)] = assume(Settings);
}

void SettingsPages::cmdSettingsCancel_Click() {
    closeFields(Settings);
    for (const SettingDescriptor* s : settingsOf(Settings)) {
        if (s->kind != Kind::Switch) continue;
        view().setVisible(s->shownBox(), true);
        view().setVisible(s->copyBox(), false);
    }
}

void SettingsPages::tmrCompareSettings_Timer() {
    finishIfEqual(Settings);
}

// Air-flow page.

void SettingsPages::cmdAirFlowSet_Click() {
    openFields(AirFlow);
    setToolTips(AirFlow);
    showButtons(AirFlow, true);
}

void SettingsPages::cmdAirFlowStandard_Click() {
    fillStandards(AirFlow);
}

void SettingsPages::cmdAirFlowInit_Click() {
    m_writeQueued[at(AirFlow)] = assume(AirFlow);
}

void SettingsPages::cmdAirFlowCancel_Click() {
    closeFields(AirFlow);
}

void SettingsPages::tmrCompareAirFlowSet_Timer() {
    finishIfEqual(AirFlow);
}

// Relay page: while it is edited its boxes take input, and the refresh leaves them alone.

void SettingsPages::cmdRelaySet_Click() {
    for (const SettingDescriptor* relay : settingsOf(Relays)) {
        for (int i = 0; i < kRelayEvents; ++i)
            view().setEnabled(relay->eventBox(i), true);
        for (int i = 0; i < 2; ++i)
            view().setEnabled(relay->optionBox(i), true);
    }
    m_editing[at(Relays)] = true;
    showButtons(Relays, true);
}

void SettingsPages::cmdRelayAssume_Click() {
    if (!m_values.get()) return;
    // A hidden event must not stay in a mask unseen.
    for (const SettingDescriptor* relay : settingsOf(Relays))
        for (int i = 0; i < kRelayEvents; ++i)
            if (!view().isVisible(relay->eventBox(i))) view().setValue(relay->eventBox(i), 0);
    m_writeQueued[at(Relays)] = assume(Relays);
}

void SettingsPages::cmdRelayCancel_Click() {
    m_tmrCompareRelaySet.disable();
    for (const SettingDescriptor* relay : settingsOf(Relays)) {
        for (int i = 0; i < kRelayEvents; ++i)
            view().setEnabled(relay->eventBox(i), false);
        for (int i = 0; i < 2; ++i)
            view().setEnabled(relay->optionBox(i), false);
    }
    m_editing[at(Relays)] = false;
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
    openFields(Temperatures);
    setToolTips(Temperatures);
    showButtons(Temperatures, true);
}

void SettingsPages::cmdSensorTempAlarmAssume_Click() {
    m_writeQueued[at(Temperatures)] = assume(Temperatures);
}

void SettingsPages::cmdSensorTempAlarmCancel_Click() {
    closeFields(Temperatures);
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
    for (const SettingDescriptor& s : settingTable()) {
        for (int field = 0; field < s.fieldCount(); ++field) {
            if (s.upDownElement(field) != element) continue;
            view().setCaption(s.fieldElement(field),
                              numberformat::fixed(view().value(element) / upDownScaleOf(s),
                                                  decimalsOf(s), m_preferences.locale()));
            return;
        }
    }
}

// The tick that sends a page's command starts its comparison.
void SettingsPages::onWriteSent(int command) {
    for (int p = 0; p < kPageCount; ++p) {
        const auto page = static_cast<Page>(p);
        if (commandOf(page) != command) continue;
        // The advanced settings window writes commands 129 and 137 too: only the page that
        // queued the write waits for it.
        if (!m_writeQueued[p]) return;
        m_writeQueued[p] = false;
        compareTimer(page).enable();
        m_sentAt[p].start();
        if (m_editing[p]) showWaiting(page, differences(page));
    }
}

void SettingsPages::openFields(Page page) {
    Form& v = view();
    for (const TextField& t : textFields(page)) {
        const SettingDescriptor& s = *t.setting;
        const QString field = s.fieldElement(t.field);
        v.setLeft(s.unitElement(t.field), v.left(field) + kUnitAfterField);
        const QString caption = v.caption(s.labelElement(t.field));
        v.setBackColor(field, colors::kWindowBackground);
        v.setCaption(field, caption);
        bool isNumber = false;
        const double value = m_preferences.locale().toDouble(caption, &isNumber);
        if (const auto whole = numberformat::toInt32(value * upDownScaleOf(s)); isNumber && whole)
            v.setValue(s.upDownElement(t.field), *whole);
        v.setVisible(field, true);
        v.setVisible(s.upDownElement(t.field), true);
        v.setVisible(s.labelElement(t.field), false);
    }
}

void SettingsPages::closeFields(Page page) {
    compareTimer(page).disable();
    Form& v = view();
    for (const TextField& t : textFields(page)) {
        const SettingDescriptor& s = *t.setting;
        v.setLeft(s.unitElement(t.field), v.left(s.labelElement(t.field)) + kUnitAfterLabel);
        v.setVisible(s.labelElement(t.field), true);
        v.setVisible(s.fieldElement(t.field), false);
        v.setVisible(s.upDownElement(t.field), false);
    }
    showButtons(page, false);
    showWaiting(page, {});
}

// Nothing is sent yet: the engineer still accepts.
void SettingsPages::fillStandards(Page page) {
    Form& v = view();
    ValueStore* values = m_values.get();
    for (const SettingDescriptor* s : settingsOf(page)) {
        const double standard = !s->reportedStandard ? s->standard
                                : values             ? s->reportedStandard(*values)
                                                     : 0;
        if (s->kind == Kind::Switch) {
            v.setChecked(s->copyBox(), standard != 0);
            continue;
        }
        const int whole = static_cast<int>(standard);
        const QString texts[] = {s->kind == Kind::MinutesSeconds
                                     ? QString::number(whole / 60)
                                     : numberformat::fixed(standard / s->upDownScale, s->decimals,
                                                           m_preferences.locale()),
                                 QString::number(whole % 60)};
        for (int field = 0; field < s->fieldCount(); ++field) {
            v.setBackColor(s->fieldElement(field), colors::kWindowBackground);
            v.setCaption(s->fieldElement(field), texts[field]);
        }
    }
    m_dialogs->information(m_texts.messages.standardValuesRemark, m_texts.appTitle);
}

// Every field is checked, also after a bad one; only a page that is good as a whole goes
// out.
bool SettingsPages::assume(Page page) {
    SettingInputs typed = inputs(page);
    const std::optional<Bytes> block = m_writer.check(page, typed);
    for (const TextField& t : textFields(page))
        showVerdict(view(), t.setting->fieldElement(t.field), numberOf(typed[*t.setting], t.field),
                    m_preferences.locale());
    return block && m_writer.send(*block);
}

SettingInputs SettingsPages::inputs(Page page) const {
    const Form& v = view();
    SettingInputs typed;
    for (const SettingDescriptor* s : settingsOf(page)) {
        SettingInput& input = typed[*s];
        for (int field = 0; field < s->fieldCount(); ++field)
            numberOf(input, field) = readNumber(v, s->fieldElement(field));
        if (s->kind == Kind::Switch) input.on = v.isChecked(s->copyBox());
        if (s->kind != Kind::Relay) continue;
        for (int i = 0; i < kRelayEvents; ++i)
            if (v.isChecked(s->eventBox(i))) input.mask |= static_cast<std::uint16_t>(1u << i);
        for (int i = 0; i < 2; ++i)
            if (v.isChecked(s->optionBox(i)))
                input.mask |= static_cast<std::uint16_t>(1u << (kRelayEvents + i));
    }
    return typed;
}

void SettingsPages::showButtons(Page page, bool editing) {
    m_editing[at(page)] = editing;
    const Buttons buttons = buttonsOf(page);
    view().setVisible(buttons.open, !editing);
    for (const QString& button : buttons.editing)
        view().setVisible(button, editing);
}

QString SettingsPages::rangeText(const SettingDescriptor& s, const SettingLimits& limits,
                                 const QLocale& locale) {
    if (s.kind == Kind::MinutesSeconds) {
        auto minutesAndSeconds = [&s](double seconds) {
            const int whole = numberformat::toInt32(seconds).value_or(0);
            return QString::number(whole / 60) + u' ' + s.unitText(0) + u' ' +
                   QString::number(whole % 60) + u' ' + s.unitText(1);
        };
        const SettingLimits::Range range = limits.of(s);
        return minutesAndSeconds(range.minimum) + QStringLiteral(" - ") +
               minutesAndSeconds(range.maximum);
    }
    const SettingLimits::Range range = limits.ofField(s);
    return numberformat::fixed(range.minimum, s.decimals, locale) + QStringLiteral(" - ") +
           numberformat::fixed(range.maximum, s.decimals, locale) + u' ' + s.unitText();
}

// Each field tells its limits and unit.
void SettingsPages::setToolTips(Page page) {
    for (const TextField& t : textFields(page))
        view().setToolTip(t.setting->fieldElement(t.field),
                          rangeText(*t.setting, m_limits, m_preferences.locale()));
}

QStringList SettingsPages::differences(Page page) {
    return differences(view(), m_values.get(), page, inputs(page));
}

QStringList SettingsPages::differences(const Form& view, ValueStore* values, Page page,
                                       const SettingInputs& typed) {
    QStringList differing;
    auto note = [&](const SettingDescriptor& s) {
        const QString legend = view.caption(s.legendElement());
        if (!differing.contains(legend)) differing << legend;
    };
    for (const TextField& t : textFields(page))
        if (numberOf(typed[*t.setting], t.field).text !=
            view.caption(t.setting->labelElement(t.field)))
            note(*t.setting);
    for (const SettingDescriptor* s : settingsOf(page)) {
        const SettingInput& input = typed[*s];
        if (s->kind == Kind::Switch && input.on != view.isChecked(s->shownBox())) note(*s);
        if (s->kind != Kind::Relay || !values) continue;
        const auto r = static_cast<std::int16_t>(s->index);
        for (std::int16_t bit = 0; bit < 16; ++bit)
            if (((input.mask >> bit) & 1u) !=
                (values->GetRelayCombineMask(r, bit) != 0 ? 1u : 0u)) {
                note(*s);
                break;
            }
    }
    return differing;
}

// The note names what the device reports for each field it has not taken, and those fields
// stay marked while the page waits, so that a refused value is seen at once.
void SettingsPages::showWaiting(Page page, const QStringList& differing) {
    Form& v = view();
    const bool waiting = state(page) == State::Waiting;
    QStringList notes;
    for (const QString& legend : differing) {
        QString reported;
        for (const SettingDescriptor* s : settingsOf(page)) {
            if (v.caption(s->legendElement()) != legend) continue;
            if (s->kind == Kind::Switch) {
                reported = m_texts.str(v.isChecked(s->shownBox()) ? kStringOn : kStringOff);
                continue;
            }
            if (s->kind == Kind::Relay) continue;
            QStringList parts;
            for (int field = 0; field < s->fieldCount(); ++field)
                parts << v.caption(s->labelElement(field)) + u' ' +
                             v.caption(s->unitElement(field));
            reported = parts.join(u' ');
        }
        notes << (reported.isEmpty() ? legend
                                     : m_texts.str(kStringDeviceReports).arg(legend, reported));
    }
    for (const TextField& t : textFields(page)) {
        const bool refused = waiting && differing.contains(v.caption(t.setting->legendElement()));
        v.setBackColor(t.setting->fieldElement(t.field),
                       refused ? colors::kYellow : colors::kWindowBackground);
    }
    showWaitingNote(m_texts, v, waitingLabel(page), waiting, m_sentAt[at(page)], notes);
}

bool SettingsPages::finishIfEqual(Page page) {
    const QStringList differing = differences(page);
    if (!differing.isEmpty()) {
        if (m_editing[at(page)]) showWaiting(page, differing);
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
    return m_view;
}

#include "moc_settingspages.cpp"
