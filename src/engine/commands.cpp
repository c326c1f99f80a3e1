#include "engine/commands.h"

#include "common/numberformat.h"
#include "engine/pollengine.h"
#include "engine/settinglimits.h"
#include "engine/settingtable.h"
#include "link/devicesession.h"
#include "link/telegram.h"
#include "values/conversions.h"
#include "values/devicevalues.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

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
// The largest window bound, in 0.01 s, that the device takes.
constexpr std::int32_t kLargestBound = 32766;
constexpr int kFlowBit = 4;

using Setter = std::int16_t (ValueStore::*)(Bytes);
using Kind = SettingDescriptor::Kind;
using Encoding = SettingDescriptor::Encoding;

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
    std::optional<Bytes> result() const {
        if (!ready()) return std::nullopt;
        return m_bytes;
    }

private:
    Bytes m_bytes;
    std::vector<bool> m_set;
    bool m_fieldBad = false;
    bool m_conversionFailed = false;
};

std::uint8_t clearedUnless(std::uint8_t flags, int bit, bool keep) {
    return keep ? flags : static_cast<std::uint8_t>(flags & ~(1u << bit));
}

// Puts the settings of one page into their block: from the page's inputs, checked against
// their limits, or as the device has them. The flags are gathered apart and put last.
class Packer {
public:
    Packer(Block& block, ValueStore& values)
        : m_block(block)
        , m_values(values) {}

    void fromInput(const SettingDescriptor& s, SettingInput& input, const SettingLimits& limits) {
        switch (s.kind) {
        case Kind::Number: {
            const SettingLimits::Range range = limits.ofField(s);
            if (const auto value =
                    fieldcheck::check(input.number, range.minimum, range.maximum, s.decimals))
                put(s, *value * s.scale);
            else
                m_block.fieldBad();
            break;
        }
        case Kind::MinutesSeconds:
            time(s, input, limits);
            break;
        case Kind::Switch:
            m_flags = clearedUnless(m_flags, s.bit, input.on);
            break;
        case Kind::Relay:
            mask(s, input.mask);
            break;
        }
    }

    void mask(const SettingDescriptor& s, std::uint16_t bits) {
        const auto offset = static_cast<std::size_t>(s.offset);
        m_block.put(offset, static_cast<std::uint8_t>(bits & 0xFFu));
        m_block.put(offset + 1, static_cast<std::uint8_t>(bits >> 8));
    }

    // The device's own value goes out again, exactly as it sent it.
    void fromDevice(const SettingDescriptor& s) {
        if (s.kind == Kind::Switch) {
            m_flags = clearedUnless(m_flags, s.bit, s.isOn(m_values));
            return;
        }
        const float value = s.value(m_values);
        if (s.encoding == Encoding::Single)
            m_block.single(static_cast<std::size_t>(s.offset), value);
        else
            put(s, value);
    }

    std::uint8_t flags() const { return m_flags; }
    void flag(int bit, bool on) { m_flags = clearedUnless(m_flags, bit, on); }

private:
    void put(const SettingDescriptor& s, double value) {
        const auto offset = static_cast<std::size_t>(s.offset);
        switch (s.encoding) {
        case Encoding::Byte:
            m_block.byte(offset, value);
            break;
        case Encoding::Word:
            m_block.word(offset, value);
            break;
        case Encoding::Single:
            m_block.single(offset, value);
            break;
        default:
            break;
        }
    }

    // Minutes and seconds each within their own limits, and together within the setting's.
    void time(const SettingDescriptor& s, SettingInput& input, const SettingLimits& limits) {
        const SettingLimits::Range range = limits.of(s);
        const double minutesMax = numberformat::toInt32(range.maximum / 60).value_or(0);
        const auto minutes = fieldcheck::check(input.number, 0, minutesMax, 0);
        const auto seconds = fieldcheck::check(input.seconds, 0, 59, 0);
        const double total = minutes && seconds ? *minutes * 60 + *seconds : -1;
        if (minutes && seconds && total >= range.minimum && total <= range.maximum) {
            put(s, total);
            return;
        }
        for (TypedNumber* n : {&input.number, &input.seconds})
            if (!n->refused()) n->refusal = Refusal::Together;
        m_block.fieldBad();
    }

    Block& m_block;
    ValueStore& m_values;
    std::uint8_t m_flags = 255;
};

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

// A number checked into the block: bad, it marks the block.
std::optional<double> checked(Block& block, TypedNumber& n, double minimum, double maximum,
                              int decimals) {
    const std::optional<double> value = fieldcheck::check(n, minimum, maximum, decimals);
    if (!value) block.fieldBad();
    return value;
}

// A fan voltage in V, as the air-flow page's field takes it, sent in mV.
void fanVoltage(Block& block, std::size_t offset, TypedNumber& volts, const SettingLimits& limits) {
    static const SettingDescriptor& fan = settingNamed(QStringLiteral("fan-voltage"));
    const SettingLimits::Range range = limits.ofField(fan);
    if (const auto value = checked(block, volts, range.minimum, range.maximum, fan.decimals))
        block.word(offset, *value * fan.scale);
}

// The resistors as floats and the tolerance as a byte, in that order from `offset`.
void resistorFields(Block& block, std::size_t offset, DeviceCommands::Resistors& resistors) {
    using C = DeviceCommands;
    auto& [alarm, normal, tolerance] = resistors.values;
    if (const auto value = checked(block, alarm, C::kResistorMin, C::kResistorMax, 0))
        block.single(offset, *value);
    if (const auto value = checked(block, normal, C::kResistorMin, C::kResistorMax, 0))
        block.single(offset + 4, *value);
    if (const auto value = checked(block, tolerance, C::kToleranceMin, C::kToleranceMax, 0))
        block.byte(offset + 8, *value);
}

Setter setterOf(int command) {
    switch (command) {
    case kDeviceParameter:
        return &ValueStore::SetDeviceParameter;
    case kAirFlowInit:
        return &ValueStore::SetAirFlowInitParameter;
    case kResetAlarmAndFault:
        return &ValueStore::SetResetAlarmAndFault;
    case kResetMessages:
        return &ValueStore::SetResetMessages;
    case kLocalizationParameter:
        return &ValueStore::SetLocalizationParameter;
    case kLocalizationLearnMode:
        return &ValueStore::SetLocalizationParameterLearnMode;
    case kLocalizationAbort:
        return &ValueStore::SetLocalizationAbortLearnMode;
    case kExtinguisherParameter:
        return &ValueStore::SetExtinguisherParameter;
    case kTemperatureParameter:
        return &ValueStore::SetTemperatureParameter;
    case kRelayParameter:
        return &ValueStore::SetRelayParameter;
    case kExtinguisherIdent:
        return &ValueStore::SetExtinguisherIdent;
    default:
        return nullptr;
    }
}

} // namespace

SettingInputs::SettingInputs()
    : m_inputs(settingTable().size()) {}

SettingInput& SettingInputs::operator[](const SettingDescriptor& setting) {
    return m_inputs.at(static_cast<std::size_t>(setting.id));
}

const SettingInput& SettingInputs::operator[](const SettingDescriptor& setting) const {
    return m_inputs.at(static_cast<std::size_t>(setting.id));
}

DeviceCommands::DeviceCommands(const DeviceSession& session, PollEngine& engine,
                               DeviceValues& values)
    : m_session(session)
    , m_engine(engine)
    , m_values(values) {}

std::optional<Bytes> DeviceCommands::SettingsAssume(SettingInputs& inputs,
                                                    const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return std::nullopt;
    Block block(kDeviceParameter, 40, m_session.serialNo());
    Packer packer(block, *values);
    const bool twoDetectors = values->GetHasTwoDetectors() == 1;
    block.single(6, values->GetAlarmResistorValue());
    block.single(10, values->GetNormalResistorValue());
    block.byte(14, values->GetResistorValueTolerance());
    for (const SettingDescriptor* s : settingsOf(SettingPage::Settings)) {
        if (s->secondDetector && !twoDetectors)
            packer.fromDevice(*s);
        else
            packer.fromInput(*s, inputs[*s], limits);
    }
    block.byte(23, values->DET_GetAlarmThreshold(0));
    block.byte(24, values->DET_GetAlarmThreshold(1));
    // The page offers no switch for the air-flow monitoring: the device's state goes back.
    packer.flag(kFlowBit, values->DET_GetFlowShouldBeOn() != 0);
    block.put(kParameterFlags, packer.flags());
    block.put(29, twoDetectors ? 255 : 0);
    block.zeroFrom(30);
    return block.result();
}

std::optional<Bytes> DeviceCommands::AdvancedSettingsAssume(Resistors& resistors) {
    ValueStore* values = m_values.get();
    if (!values) return std::nullopt;
    Block block(kDeviceParameter, 40, m_session.serialNo());
    resistorFields(block, 6, resistors);
    // Everything else as the device has it, so that this write changes the resistors alone.
    Packer packer(block, *values);
    for (const SettingDescriptor* s : settingsOf(SettingPage::Settings))
        packer.fromDevice(*s);
    block.byte(23, values->DET_GetAlarmThreshold(0));
    block.byte(24, values->DET_GetAlarmThreshold(1));
    packer.flag(kFlowBit, values->DET_GetFlowShouldBeOn() != 0);
    block.put(kParameterFlags, packer.flags());
    block.put(29, values->GetHasTwoDetectors() == 1 ? 255 : 0);
    block.zeroFrom(30);
    return block.result();
}

std::optional<Bytes> DeviceCommands::AirFlowInit(SettingInputs& inputs,
                                                 const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return std::nullopt;
    Block block(kAirFlowInit, 22, m_session.serialNo());
    Packer packer(block, *values);
    for (const SettingDescriptor* s : settingsOf(SettingPage::AirFlow))
        packer.fromInput(*s, inputs[*s], limits);
    block.zeroFrom(12);
    return block.result();
}

std::optional<Bytes> DeviceCommands::RelayAssume(const SettingInputs& inputs) {
    ValueStore* values = m_values.get();
    if (!values) return std::nullopt;
    Block block(kRelayParameter, 26, m_session.serialNo());
    Packer packer(block, *values);
    for (const SettingDescriptor* s : settingsOf(SettingPage::Relays))
        packer.mask(*s, inputs[*s].mask);
    block.zeroFrom(16);
    return block.result();
}

std::optional<Bytes> DeviceCommands::SensorTempAlarmAssume(SettingInputs& inputs,
                                                           const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return std::nullopt;
    Block block(kTemperatureParameter, 46, m_session.serialNo());
    Packer packer(block, *values);
    for (std::int16_t n = 0; n < kSensors; ++n)
        block.word(26 + 2 * static_cast<std::size_t>(n), values->GetNTCbeta(n));
    // The field is in the unit chosen for display; it goes out as it stands.
    for (const SettingDescriptor* s : settingsOf(SettingPage::Temperatures))
        packer.fromInput(*s, inputs[*s], limits);
    block.zeroFrom(36);
    return block.result();
}

std::optional<Bytes> DeviceCommands::BetaFactorSettingsAssume(std::array<TypedNumber, 5>& betas) {
    ValueStore* values = m_values.get();
    if (!values) return std::nullopt;
    Block block(kTemperatureParameter, 46, m_session.serialNo());
    Packer packer(block, *values);
    for (const SettingDescriptor* s : settingsOf(SettingPage::Temperatures))
        packer.fromDevice(*s);
    for (std::size_t n = 0; n < betas.size(); ++n)
        if (const auto beta = checked(block, betas[n], kBetaMin, kBetaMax, 0))
            block.word(26 + 2 * n, *beta);
    block.zeroFrom(36);
    return block.result();
}

std::optional<Bytes> DeviceCommands::ResetAlarmAndFault(int selection) {
    Block block(kResetAlarmAndFault, 8, m_session.serialNo());
    putSelection(block, selection);
    return block.result();
}

std::optional<Bytes> DeviceCommands::ResetMessages(int selection) {
    Block block(kResetMessages, 8, m_session.serialNo());
    putSelection(block, selection);
    return block.result();
}

std::optional<Bytes> DeviceCommands::BusItemIdent(const QString& moduleSerialNo) {
    Block block(kExtinguisherIdent, 10, m_session.serialNo());
    block.serialNumber(6, moduleSerialNo);
    return block.result();
}

std::optional<Bytes> DeviceCommands::LocParameterAssume(LocalisationParameters& parameters,
                                                        const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return std::nullopt;
    Block block(kLocalizationParameter, 42, m_session.serialNo());
    const int holes = std::clamp(parameters.holes, 0, kHoles);
    const auto inRange = [](std::int32_t bound) { return bound >= 0 && bound <= kLargestBound; };
    for (std::size_t i = 0; i < kHoles; ++i) {
        const bool refused = static_cast<int>(i) < holes &&
                             (!inRange(parameters.minimum[i]) || !inRange(parameters.maximum[i]));
        parameters.holeRefused[i] = refused;
        if (refused) block.fieldBad();
        // The upper bound stands ahead of the lower one, as the device reports them.
        block.word(6 + 4 * i, parameters.maximum[i]);
        block.word(8 + 4 * i, parameters.minimum[i]);
    }
    if (const auto blowTime = checked(block, parameters.blowTime, kBlowTimeMin, kBlowTimeMax, 0))
        block.word(26, *blowTime);
    fanVoltage(block, 28, parameters.blowFanVoltage, limits);
    fanVoltage(block, 30, parameters.suckFanVoltage, limits);
    block.zeroFrom(32);
    return block.result();
}

std::optional<Bytes> DeviceCommands::LocParameterAbort() {
    Block block(kLocalizationAbort, 16, m_session.serialNo());
    block.zeroFrom(6);
    return block.result();
}

std::optional<Bytes> DeviceCommands::LocSingleHoleLearning(HoleLearning& learning, bool start,
                                                           const SettingLimits& limits) {
    ValueStore* values = m_values.get();
    if (!values) return std::nullopt;
    Block block(kLocalizationLearnMode, 23, m_session.serialNo());
    const auto minutes = checked(block, learning.minutes, 0, 60, 0);
    const auto seconds = checked(block, learning.seconds, 0, 59, 0);
    if (minutes && seconds) block.word(6, *minutes * 60 + *seconds);
    fanVoltage(block, 8, learning.blowFanVoltage, limits);
    fanVoltage(block, 10, learning.suckFanVoltage, limits);
    block.put(12, start ? 255 : 0);
    block.zeroFrom(13);
    return block.result();
}

std::optional<Bytes> DeviceCommands::BusItemSettings(const QString& moduleSerialNo,
                                                     Resistors& resistors) {
    ValueStore* values = m_values.get();
    if (!values) return std::nullopt;
    Block block(kExtinguisherParameter, 29, m_session.serialNo());
    block.serialNumber(6, moduleSerialNo);
    resistorFields(block, 10, resistors);
    block.zeroFrom(19);
    return block.result();
}

bool DeviceCommands::Send(const std::optional<Bytes>& block) {
    ValueStore* values = m_values.get();
    if (!block || block->size() < 2 || !values) return false;
    const int command = (*block)[1];
    const Setter setter = setterOf(command);
    if (!setter || (values->*setter)(*block) != 0) return false;
    m_engine.SendCommand(command);
    return true;
}
