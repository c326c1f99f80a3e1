#include "engine/commands.h"

#include "common/appstate.h"
#include "common/colors.h"
#include "common/numberformat.h"
#include "devicesettings/devicesettings_elements.h"
#include "display/mainview_elements.h"
#include "engine/pollengine.h"
#include "engine/settinglimits.h"
#include "extinguish/extinguish_elements.h"
#include "link/devicesession.h"
#include "link/telegram.h"
#include "localize/localize_elements.h"
#include "values/conversions.h"
#include "values/devicevalues.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <exception>
#include <limits>
#include <string>

namespace {

namespace el = frmDisplay;

constexpr int kDeviceParameter = 129;
constexpr int kAirFlowInit = 130;
constexpr int kResetAlarmAndFault = 131;
constexpr int kResetMessages = 132;
constexpr int kLocalizationParameter = 133;
constexpr int kLocalizationLearnMode = 134;
constexpr int kLocalizationAbort = 135;
constexpr int kExtinguisherParameter = 136;
constexpr int kTemperatureParameter = 137;
constexpr int kRelayParameter = 138;
constexpr int kExtinguisherIdent = 139;

constexpr int kAllItems = 16;
constexpr int kSensors = 5;
constexpr int kHoles = 5;
constexpr int kModules = 10;
// Longer texts are refused before they are read as a number.
constexpr qsizetype kLongestText = 16;
// The largest window bound, in 0.01 s, that the device takes.
constexpr std::int32_t kLargestBound = 32766;
constexpr double kBlowTimeMin = 10, kBlowTimeMax = 255;

using Setter = std::int16_t (ValueStore::*)(Bytes);

// The check behind CheckTextInput: the value as the field shows it afterwards, or nothing
// when the text is bad.
std::optional<double> checkedValue(Form& form, const QString& field, double minimum, double maximum,
                                   int decimals, const QLocale& locale) {
    std::optional<double> shown;
    try {
        QString text = form.caption(field);
        if (!text.isEmpty() && text.size() <= kLongestText) {
            text.replace(u',', u'.');
            if (text.count(u'.') <= 1) {
                const std::optional<double> value = numberformat::plainDecimal(text);
                if (value && *value >= minimum && *value <= maximum) {
                    if (decimals >= 0 && decimals <= 5) {
                        // Later steps read the field, so they get the value as written back.
                        shown = numberformat::plainDecimal(
                            numberformat::fixed(*value, decimals, QLocale::c()));
                        if (shown)
                            form.setCaption(field, numberformat::fixed(*value, decimals, locale));
                    } else {
                        shown = value;
                        form.setCaption(field, numberformat::plain(*value, locale));
                    }
                }
            }
        }
    } catch (const std::exception&) {
        shown.reset();
    }
    form.setBackColor(field, shown ? colors::kWindowBackground : colors::kYellow);
    return shown;
}

std::optional<std::uint8_t> wholeByte(double value) {
    const std::optional<std::int32_t> whole = numberformat::toInt32(value);
    if (!whole || *whole < 0 || *whole > 255) return std::nullopt;
    return static_cast<std::uint8_t>(*whole);
}

// A write block under construction. Every byte must be set before it may go out: the bytes
// of a bad field stay unset, and a block with a bad field or a failed conversion is kept
// back whole.
class Block {
public:
    Block(int command, std::size_t size, const QString& serial)
        : m_bytes(size, 0)
        , m_set(size, false) {
        put(0, telegram::kOwnDeviceKind);
        put(1, static_cast<std::uint8_t>(command));
        serialNumber(2, serial);
    }

    void put(std::size_t offset, std::uint8_t value) {
        if (offset >= m_bytes.size()) {
            m_conversionFailed = true;
            return;
        }
        m_bytes[offset] = value;
        m_set[offset] = true;
    }

    void byte(std::size_t offset, double value) {
        if (const auto b = wholeByte(value))
            put(offset, *b);
        else
            m_conversionFailed = true;
    }

    // A whole number of 0 to 65535 in two bytes.
    void word(std::size_t offset, double value) {
        const std::optional<std::int32_t> whole = numberformat::toInt32(value);
        std::uint8_t high = 0;
        std::uint8_t low = 0;
        if (!whole || UInt2Byte(*whole, high, low) != 0) {
            m_conversionFailed = true;
            return;
        }
        put(offset, high);
        put(offset + 1, low);
    }

    void single(std::size_t offset, float value) {
        std::uint8_t b[4] = {};
        if (Single2Byte(value, b[0], b[1], b[2], b[3]) != 0) {
            m_conversionFailed = true;
            return;
        }
        for (std::size_t i = 0; i < 4; ++i)
            put(offset + i, b[i]);
    }

    void single(std::size_t offset, double value) {
        if (!(std::fabs(value) <= std::numeric_limits<float>::max())) {
            m_conversionFailed = true;
            return;
        }
        single(offset, static_cast<float>(value));
    }

    void serialNumber(std::size_t offset, const QString& text) {
        std::uint8_t b[4] = {};
        if (ULong2Byte(text, b[0], b[1], b[2], b[3]) != 0) {
            m_conversionFailed = true;
            return;
        }
        for (std::size_t i = 0; i < 4; ++i)
            put(offset + i, b[i]);
    }

    void zeroFrom(std::size_t offset) {
        for (std::size_t i = offset; i < m_bytes.size(); ++i)
            put(i, 0);
    }

    void fieldBad() { m_fieldBad = true; }

    bool ready() const {
        return !m_fieldBad && !m_conversionFailed &&
               std::all_of(m_set.begin(), m_set.end(), [](bool set) { return set; });
    }
    const Bytes& bytes() const { return m_bytes; }

private:
    Bytes m_bytes;
    std::vector<bool> m_set;
    bool m_fieldBad = false;
    bool m_conversionFailed = false;
};

// Checks the fields of one window into one block: a bad field marks the block.
class FieldCheck {
public:
    FieldCheck(Form& form, Block& block, const QLocale& locale)
        : m_form(form)
        , m_block(block)
        , m_locale(locale) {}

    std::optional<double> operator()(const QString& field, double minimum, double maximum,
                                     int decimals) {
        const std::optional<double> value =
            checkedValue(m_form, field, minimum, maximum, decimals, m_locale);
        if (!value) m_block.fieldBad();
        return value;
    }

    void markBad(const QString& field) {
        m_form.setBackColor(field, colors::kYellow);
        m_block.fieldBad();
    }

private:
    Form& m_form;
    Block& m_block;
    const QLocale& m_locale;
};

// Stores the block and queues it, only when it is whole and good.
bool deliver(PollEngine& engine, ValueStore& values, const Block& block, Setter setter) {
    if (!block.ready()) return false;
    if ((values.*setter)(block.bytes()) != 0) return false;
    engine.SendCommand(block.bytes()[1]);
    return true;
}

// Items 0 to 7 in offset 6, 8 to 15 in offset 7; all of them for selection 16.
void putSelection(Block& block, int selection) {
    std::uint16_t bits = 0xFFFF;
    if (selection != kAllItems) {
        for (int item = 0; item < 16; ++item)
            if (item != selection) bits &= static_cast<std::uint16_t>(~(1u << item));
    }
    block.put(6, static_cast<std::uint8_t>(bits & 0xFFu));
    block.put(7, static_cast<std::uint8_t>(bits >> 8));
}

// The fan voltage, shown in V with one decimal and sent in mV.
void fanVoltage(FieldCheck& check, Block& block, std::size_t offset, const QString& field,
                const SettingLimits& limits) {
    if (const auto volts =
            check(field, limits.fanVoltageMin / 1000, limits.fanVoltageMax / 1000, 1))
        block.word(offset, *volts * 1000);
}

// The resistors as floats and the tolerance as a byte, in that order from `offset`.
void resistorFields(FieldCheck& check, Block& block, std::size_t offset, const ElementArray& fields,
                    const SettingLimits& limits) {
    if (const auto alarm = check(fields[0], limits.resistorMin, limits.resistorMax, 0))
        block.single(offset, *alarm);
    if (const auto normal = check(fields[1], limits.resistorMin, limits.resistorMax, 0))
        block.single(offset + 4, *normal);
    if (const auto tolerance = check(fields[2], limits.toleranceMin, limits.toleranceMax, 0))
        block.byte(offset + 8, *tolerance);
}

std::uint8_t clearedUnless(std::uint8_t flags, int bit, bool keep) {
    return keep ? flags : static_cast<std::uint8_t>(flags & ~(1u << bit));
}

} // namespace

DeviceCommands::DeviceCommands(AppState& state, const DeviceSession& session, PollEngine& engine,
                               DeviceValues& values)
    : m_state(state)
    , m_session(session)
    , m_engine(engine)
    , m_values(values) {}

bool DeviceCommands::CheckTextInput(Form& form, const QString& field, double minimum,
                                    double maximum, int decimals) {
    return !checkedValue(form, field, minimum, maximum, decimals, m_state.preferences.locale())
                .has_value();
}

bool DeviceCommands::SettingsAssume(const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return false;
    Form& view = m_state.forms.get(frmDisplay::kName);
    Block block(kDeviceParameter, 40, m_session.serialNo());
    FieldCheck check(view, block, m_state.preferences.locale());
    const bool twoDetectors = values->GetHasTwoDetectors() == 1;

    block.single(6, values->GetAlarmResistorValue());
    block.single(10, values->GetNormalResistorValue());
    block.byte(14, values->GetResistorValueTolerance());

    if (const auto range =
            check(el::txtAirFlowRange, limits.airFlowRangeMin, limits.airFlowRangeMax, 0))
        block.byte(15, *range);

    const double minutesMax = numberformat::toInt32(limits.faultDelayMax / 60).value_or(0);
    const auto minutes = check(el::txtFaultDelayMinutes, 0, minutesMax, 0);
    const auto seconds = check(el::txtFaultDelaySeconds, 0, 59, 0);
    const double faultDelay = minutes && seconds ? *minutes * 60 + *seconds : -1;
    if (minutes && seconds && faultDelay >= limits.faultDelayMin &&
        faultDelay <= limits.faultDelayMax) {
        block.word(16, faultDelay);
    } else {
        check.markBad(el::txtFaultDelayMinutes);
        check.markBad(el::txtFaultDelaySeconds);
    }

    const auto sensitivity = [&](int d, std::size_t offset) {
        const Element& range = view.element(el::ctrSensitivity[d]);
        if (const auto value =
                check(el::txtSensitivity[d], range.minimum / 1000, range.maximum / 1000, 3))
            block.word(offset, *value * 1000);
    };
    sensitivity(0, 18);
    if (twoDetectors)
        sensitivity(1, 20);
    else
        block.word(20, values->DET_GetSmokeValue10SetPoint(1));

    if (const auto delay = check(el::txtAlarmDelay, limits.alarmDelayMin, limits.alarmDelayMax, 0))
        block.byte(22, *delay);
    block.byte(23, values->DET_GetAlarmThreshold(0));
    block.byte(24, values->DET_GetAlarmThreshold(1));
    const auto preAlarm = [&](int d, std::size_t offset) {
        if (const auto value = check(el::txtPreAlarmThreshold[d], limits.preAlarmThresholdMin,
                                     limits.preAlarmThresholdMax, 0))
            block.byte(offset, *value);
    };
    preAlarm(0, 25);
    if (twoDetectors)
        preAlarm(1, 26);
    else
        block.byte(26, values->DET_GetPreAlarmThreshold(1));
    if (const auto delay =
            check(el::txtExtinguishDelay, limits.extinguishDelayMin, limits.extinguishDelayMax, 0))
        block.byte(27, *delay);

    std::uint8_t flags = 255;
    flags = clearedUnless(flags, 0, view.isChecked(el::chkLocalization[1]));
    flags = clearedUnless(flags, 1, view.isChecked(el::chkTrueLix[1]));
    flags = clearedUnless(flags, 2, view.isChecked(el::chkTrueLix[3]));
    flags = clearedUnless(flags, 3, view.isChecked(el::chkFaultStore[1]));
    flags = clearedUnless(flags, 4, values->DET_GetFlowShouldBeOn() != 0);
    flags = clearedUnless(flags, 5, view.isChecked(el::chkDynamicAirflow[1]));
    flags = clearedUnless(flags, 6, view.isChecked(el::chkAlarmAfterLoc[1]));
    // A ticked buzzer box means the buzzer sounds, as the status display shows it.
    flags = clearedUnless(flags, 7, view.isChecked(el::chkBuzzer[1]));
    block.put(28, flags);
    block.put(29, twoDetectors ? 255 : 0);
    block.zeroFrom(30);
    return deliver(m_engine, *values, block, &ValueStore::SetDeviceParameter);
}

bool DeviceCommands::AdvancedSettingsAssume(const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return false;
    Form& window = m_state.forms.get(frmDeviceSettings::kName);
    Block block(kDeviceParameter, 40, m_session.serialNo());
    FieldCheck check(window, block, m_state.preferences.locale());
    resistorFields(check, block, 6, frmDeviceSettings::txtParameterValue, limits);

    // Everything else as the device has it, so that this write changes the resistors alone.
    block.byte(15, values->DET_GetStaticFlowDevSetPoint());
    block.word(16, values->DET_GetAirFlowFailureDelaySetPoint());
    block.word(18, values->DET_GetSmokeValue10SetPoint(0));
    block.word(20, values->DET_GetSmokeValue10SetPoint(1));
    block.byte(22, values->DET_GetAlarmDelaySetPoint());
    block.byte(23, values->DET_GetAlarmThreshold(0));
    block.byte(24, values->DET_GetAlarmThreshold(1));
    block.byte(25, values->DET_GetPreAlarmThreshold(0));
    block.byte(26, values->DET_GetPreAlarmThreshold(1));
    block.byte(27, values->GetExtinguishDelay());

    std::uint8_t flags = 255;
    flags = clearedUnless(flags, 0, values->DET_GetLocShouldBeOn() != 0);
    flags = clearedUnless(flags, 1, values->DET_GetTrueLixShouldBeOn(0) != 0);
    flags = clearedUnless(flags, 2, values->DET_GetTrueLixShouldBeOn(1) != 0);
    flags = clearedUnless(flags, 3, values->DET_GetFailureStorageIsOn() != 0);
    flags = clearedUnless(flags, 4, values->DET_GetFlowShouldBeOn() != 0);
    flags = clearedUnless(flags, 5, values->DET_GetDynFlowShouldBeOn() != 0);
    flags = clearedUnless(flags, 6, values->DET_GetAlarmAfterLoc(0) != 0);
    flags = clearedUnless(flags, 7, values->GetBuzzerShouldBeOff() != 1);
    block.put(28, flags);
    block.put(29, values->GetHasTwoDetectors() == 1 ? 255 : 0);
    block.zeroFrom(30);
    return deliver(m_engine, *values, block, &ValueStore::SetDeviceParameter);
}

bool DeviceCommands::AirFlowInit(const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return false;
    Form& view = m_state.forms.get(frmDisplay::kName);
    Block block(kAirFlowInit, 22, m_session.serialNo());
    FieldCheck check(view, block, m_state.preferences.locale());
    fanVoltage(check, block, 6, el::txtFanVoltageNormal, limits);
    if (const auto altitude = check(el::txtAltitude, limits.altitudeMin, limits.altitudeMax, 0))
        block.word(8, *altitude);
    if (const auto pressure =
            check(el::txtAirPressure, limits.airPressureMin, limits.airPressureMax, 0))
        block.word(10, *pressure);
    block.zeroFrom(12);
    return deliver(m_engine, *values, block, &ValueStore::SetAirFlowInitParameter);
}

bool DeviceCommands::RelayAssume() {
    ValueStore* values = m_values.get();
    if (!values) return false;
    Form& view = m_state.forms.get(frmDisplay::kName);
    Block block(kRelayParameter, 26, m_session.serialNo());
    for (std::size_t r = 0; r < 5; ++r) {
        unsigned mask = 0;
        for (int i = 0; i < 2; ++i)
            if (view.isChecked(el::kRelayOptions[r][i])) mask |= 1u << (14 + i);
        for (int i = 0; i < 14; ++i) {
            const QString box = el::kRelayBoxes[r][i];
            // A hidden event must not stay in a mask unseen.
            if (!view.isVisible(box)) view.setValue(box, 0);
            if (view.isVisible(box) && view.isChecked(box)) mask |= 1u << i;
        }
        block.put(6 + 2 * r, static_cast<std::uint8_t>(mask & 0xFFu));
        block.put(7 + 2 * r, static_cast<std::uint8_t>(mask >> 8));
    }
    block.zeroFrom(16);
    return deliver(m_engine, *values, block, &ValueStore::SetRelayParameter);
}

bool DeviceCommands::SensorTempAlarmAssume(const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return false;
    Form& view = m_state.forms.get(frmDisplay::kName);
    Block block(kTemperatureParameter, 46, m_session.serialNo());
    FieldCheck check(view, block, m_state.preferences.locale());
    for (std::int16_t n = 0; n < kSensors; ++n) {
        const auto offset = static_cast<std::size_t>(n);
        block.word(26 + 2 * offset, values->GetNTCbeta(n));
        // The field is in the unit chosen for display; it goes out as it stands.
        if (const auto alarm = check(el::txtSensorTempAlarm[n], limits.sensorTempAlarmMin / 10,
                                     limits.sensorTempAlarmMax / 10, 1))
            block.single(6 + 4 * offset, *alarm);
    }
    block.zeroFrom(36);
    return deliver(m_engine, *values, block, &ValueStore::SetTemperatureParameter);
}

bool DeviceCommands::BetaFactorSettingsAssume(const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return false;
    Form& window = m_state.forms.get(frmDeviceSettings::kName);
    Block block(kTemperatureParameter, 46, m_session.serialNo());
    FieldCheck check(window, block, m_state.preferences.locale());
    for (std::int16_t n = 0; n < kSensors; ++n) {
        const auto offset = static_cast<std::size_t>(n);
        block.single(6 + 4 * offset, values->GetNTCAlarmValue(n));
        if (const auto beta =
                check(frmDeviceSettings::txtBetaFactor[n], limits.betaMin, limits.betaMax, 0))
            block.word(26 + 2 * offset, *beta);
    }
    block.zeroFrom(36);
    return deliver(m_engine, *values, block, &ValueStore::SetTemperatureParameter);
}

bool DeviceCommands::ResetAlarmAndFault(int selection) {
    ValueStore* values = m_values.get();
    if (!values) return false;
    Block block(kResetAlarmAndFault, 8, m_session.serialNo());
    putSelection(block, selection);
    return deliver(m_engine, *values, block, &ValueStore::SetResetAlarmAndFault);
}

bool DeviceCommands::ResetMessages(int selection) {
    ValueStore* values = m_values.get();
    if (!values) return false;
    Block block(kResetMessages, 8, m_session.serialNo());
    putSelection(block, selection);
    return deliver(m_engine, *values, block, &ValueStore::SetResetMessages);
}

bool DeviceCommands::BusItemIdent(int index) {
    ValueStore* values = m_values.get();
    if (!values || index < 0 || index >= kModules) return false;
    Form& view = m_state.forms.get(frmDisplay::kName);
    Block block(kExtinguisherIdent, 10, m_session.serialNo());
    block.serialNumber(6, view.caption(el::lblExtSerialNo[index]));
    return deliver(m_engine, *values, block, &ValueStore::SetExtinguisherIdent);
}

bool DeviceCommands::LocParameterAssume(const LocalisationWindows& windows,
                                        const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return false;
    Form& window = m_state.forms.get(frmLocalizeLearn::kName);
    Block block(kLocalizationParameter, 42, m_session.serialNo());
    FieldCheck check(window, block, m_state.preferences.locale());
    const int holes = std::clamp(windows.holes, 0, kHoles);
    for (int i = 0; i < holes; ++i) {
        const auto inRange = [](std::int32_t bound) {
            return bound >= 0 && bound <= kLargestBound;
        };
        const auto hole = static_cast<std::size_t>(i);
        if (!inRange(windows.minimum[hole]) || !inRange(windows.maximum[hole]))
            check.markBad(frmLocalizeLearn::txtLocTime[i]);
    }
    // The upper bound stands ahead of the lower one, as the device reports them.
    for (std::size_t i = 0; i < kHoles; ++i) {
        block.word(6 + 4 * i, windows.maximum[i]);
        block.word(8 + 4 * i, windows.minimum[i]);
    }
    if (const auto blowTime = check(frmLocalizeLearn::txtBlowTime, kBlowTimeMin, kBlowTimeMax, 0))
        block.word(26, *blowTime);
    fanVoltage(check, block, 28, frmLocalizeLearn::txtBlowFanVoltage, limits);
    fanVoltage(check, block, 30, frmLocalizeLearn::txtSuckFanVoltage, limits);
    block.zeroFrom(32);
    if (!block.ready()) return false;

    if (windows.learnModeActive) {
        UserDialogs* dialogs = m_state.services.dialogs;
        if (!dialogs) return false;
        const UserDialogs::Answer answer = dialogs->messageBox(
            m_state.texts.messages.normalModeWarning, m_state.texts.appTitle,
            UserDialogs::Buttons::YesNo, UserDialogs::Icon::Warning, UserDialogs::Answer::No);
        if (answer != UserDialogs::Answer::Yes) return false;
    }
    return deliver(m_engine, *values, block, &ValueStore::SetLocalizationParameter);
}

bool DeviceCommands::LocParameterAbort() {
    ValueStore* values = m_values.get();
    if (!values) return false;
    Block block(kLocalizationAbort, 16, m_session.serialNo());
    block.zeroFrom(6);
    return deliver(m_engine, *values, block, &ValueStore::SetLocalizationAbortLearnMode);
}

bool DeviceCommands::LocSingleHoleLearning(bool start, const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return false;
    Form& window = m_state.forms.get(frmLocalizeLearn::kName);
    Block block(kLocalizationLearnMode, 23, m_session.serialNo());
    FieldCheck check(window, block, m_state.preferences.locale());
    const auto minutes = check(frmLocalizeLearn::txtLocTemporaryBlowTimeMinutes, 0, 60, 0);
    const auto seconds = check(frmLocalizeLearn::txtLocTemporaryBlowTimeSeconds, 0, 59, 0);
    if (minutes && seconds) block.word(6, *minutes * 60 + *seconds);
    fanVoltage(check, block, 8, frmLocalizeLearn::txtBlowFanVoltage, limits);
    fanVoltage(check, block, 10, frmLocalizeLearn::txtSuckFanVoltage, limits);
    block.put(12, start ? 255 : 0);
    block.zeroFrom(13);
    return deliver(m_engine, *values, block, &ValueStore::SetLocalizationParameterLearnMode);
}

bool DeviceCommands::BusItemSettings(const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return false;
    Form& window = m_state.forms.get(frmExtinguishSettings::kName);
    Block block(kExtinguisherParameter, 29, m_session.serialNo());
    const QStringList modules = window.items(frmExtinguishSettings::cboSerialNumber);
    const double row = window.value(frmExtinguishSettings::cboSerialNumber);
    const bool selected = row >= 0 && row < static_cast<double>(modules.size());
    block.serialNumber(6, selected ? modules[static_cast<qsizetype>(row)] : QStringLiteral("0"));
    FieldCheck check(window, block, m_state.preferences.locale());
    resistorFields(check, block, 10, frmExtinguishSettings::txtParameterValue, limits);
    block.zeroFrom(19);
    return deliver(m_engine, *values, block, &ValueStore::SetExtinguisherParameter);
}
