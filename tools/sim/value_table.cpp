#include "sim/value_table.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>

namespace mq27sim {
namespace {

ValueLayout number(std::string key, int offset, Encoding encoding, double defaultValue = 0) {
    return ValueLayout{std::move(key), offset, encoding, 0, 0, defaultValue};
}

ValueLayout bits(std::string key, int offset, int firstBit, int width, double defaultValue = 0) {
    return ValueLayout{std::move(key), offset, Encoding::Bits, firstBit, width, defaultValue};
}

ValueLayout flag(std::string key, int offset, int bit, bool on = false) {
    return bits(std::move(key), offset, bit, 1, on ? 1 : 0);
}

ValueLayout state(std::string key, int offset, int firstBit, int defaultState = 0) {
    return bits(std::move(key), offset, firstBit, 2, defaultState);
}

using E = Encoding;

// Command 2: air flow, fans, localisation and the two detector blocks.
std::vector<ValueSection> telegram2() {
    ValueSection airFlow{"airFlow", 2, 1, 0, 0, {}};
    airFlow.values = {
        number("flowValue", 8, E::Float32, 1.25),
        number("flowRefValue", 12, E::Float32, 1.25),
        number("airTemperature", 16, E::Float32, 21.5),
        number("altitude", 20, E::Int16, 0),
        number("airPressureSetPoint", 22, E::UInt16, 1013),
        number("airFlowFailureDelayMax", 24, E::UInt16, 3600),
        number("airFlowFailureDelayMin", 26, E::UInt16, 30),
        number("airFlowFailureDelaySetPoint", 28, E::UInt16, 100),
        number("staticFlowDevMax", 30, E::UInt8, 95),
        number("staticFlowDevMin", 31, E::UInt8, 10),
        number("staticFlowDevSetPoint", 32, E::UInt8, 30),
        flag("flowInitIsActive", 33, 1),
        flag("hasFlow", 33, 2, true),
        flag("flowShouldBeOn", 33, 3, true),
        flag("flowIsOn", 33, 4, true),
        flag("hasDynFlow", 33, 5),
        flag("dynFlowShouldBeOn", 33, 6),
        flag("dynFlowIsOn", 33, 7),
        flag("flowInitAborted", 34, 0),
        flag("airFlowError", 34, 1),
        flag("flowDynDevPlus", 34, 2),
        flag("flowDynDevMinus", 34, 3),
        flag("flowStatDevPlus", 34, 4),
        flag("flowStatDevMinus", 34, 5),
        flag("temperatureIsHigh", 34, 6),
        flag("temperatureIsLow", 34, 7),
    };
    ValueSection fans{"fans", 2, 1, 0, 0, {}};
    fans.values = {
        number("uFanMax", 45, E::UInt16, 13500),
        number("uFanMin", 47, E::UInt16, 9000),
        number("uFanSetPoint", 49, E::UInt16, 10000),
        number("fanVoltage", 51, E::UInt16, 10000),
        number("suckFanLrnVoltage", 53, E::UInt16, 10000),
        number("blowFanLrnVoltage", 55, E::UInt16, 12000),
        number("suckFanLocVoltage", 57, E::UInt16, 10000),
        number("blowFanVoltage", 59, E::UInt16, 12000),
        flag("fanError", 88, 5),
    };
    ValueSection localisation{"localisation", 2, 1, 0, 0, {}};
    localisation.values = {
        number("blowTime", 61, E::UInt16, 30),
        number("blowLrnTime", 63, E::UInt16, 30),
    };
    for (int hole = 1; hole <= 5; ++hole) {
        const int at = 65 + 4 * (hole - 1);
        const std::string name = "suckTime" + std::to_string(hole);
        localisation.values.push_back(number(name + "Max", at, E::UInt16));
        localisation.values.push_back(number(name + "Min", at + 2, E::UInt16));
    }
    localisation.values.insert(localisation.values.end(),
                               {
                                   number("firePlaceSuckTime", 85, E::UInt16),
                                   number("firePlace", 87, E::UInt8),
                                   flag("hasSingleHoleDetection", 88, 0),
                                   flag("locShouldBeOn", 88, 1),
                                   flag("locIsActive", 88, 2),
                                   flag("learningIsOn", 88, 3),
                                   flag("locError", 88, 4),
                                   flag("locLocalized", 88, 6),
                               });
    ValueSection detectors{"detectors", 2, 2, 99, 36, {}};
    detectors.values = {
        number("detSerialNum", 0, E::UInt32, 50001),
        number("detSoftwareNum", 4, E::Version, packVersion(3110, 2, 7)),
        number("detParameterID", 8, E::ParameterId, packParameterId(1, 1, 1)),
        number("smokeValue10Max", 13, E::UInt16, 10000),
        number("smokeValue10Min", 15, E::UInt16, 100),
        number("smokeValue10SetPoint", 17, E::UInt16, 1000),
        number("chamberValueRatio", 19, E::Int16, 0),
        number("alarmThreshold", 21, E::UInt8, 80),
        number("preAlarmThreshold", 22, E::UInt8, 60),
        number("smokeValueRatio", 23, E::UInt8, 5),
        state("alarmLED", 24, 0),
        state("preAlarmLED", 24, 2),
        state("failureLED", 24, 4),
        flag("chamberIsDirty", 24, 6),
        flag("lightTooDark", 24, 7),
        flag("smokeError", 25, 0),
        flag("detDataStorageError", 25, 1),
        flag("detProgramStorageError", 25, 2),
        flag("detProgramError", 25, 3),
        flag("detCommError", 25, 4),
        flag("hasTrueLix", 25, 5),
        flag("trueLixShouldBeOn", 25, 6),
        flag("alarmAfterLoc", 25, 7),
    };
    return {airFlow, fans, localisation, detectors};
}

// Command 3: controller, temperature sensors, relays, display, faults and features.
std::vector<ValueSection> telegram3() {
    ValueSection controller{"controller", 3, 1, 0, 0, {}};
    controller.values = {
        number("softwareNum", 8, E::Version, packVersion(2710, 3, 21)),
        number("parameterID", 12, E::ParameterId, packParameterId(1, 1, 1)),
        number("uinBitVoltage", 17, E::Float32, 0.0322),
        number("uinVoltage", 21, E::Float32, 24.0),
        number("alarmResistorValue", 25, E::Float32, 1000),
        number("normalResistorValue", 29, E::Float32, 4700),
        number("numWriteFailureStorage", 33, E::UInt32, 12),
        number("numWriteParameterStorage", 37, E::UInt32, 34),
        number("numResets", 41, E::UInt32, 5),
        number("uinADC", 45, E::UInt16, 745),
        number("uinMinADC", 47, E::UInt16, 560),
        number("uNTCMax", 49, E::UInt16, 1000),
        number("uNTCMin", 51, E::UInt16, 20),
        number("resetCounter", 53, E::UInt8, 0),
        number("numOfExtModulesSet", 54, E::Int8, 0),
        number("alarmDelayMax", 55, E::UInt8, 60),
        number("alarmDelayMin", 56, E::UInt8, 0),
        number("alarmDelaySetPoint", 57, E::UInt8, 10),
        number("extinguishDelay", 58, E::UInt8, 10),
        number("resistorValueTolerance", 59, E::UInt8, 10),
        number("ntcDisplayed", 60, E::UInt8, 0),
        flag("resetInput", 61, 0),
        flag("enableInputState", 61, 1),
        state("manActLineState", 61, 2),
        flag("mainFailureFlag", 61, 4),
        flag("failureStorageIsOn", 61, 5),
        flag("hasTwoDetectors", 61, 6),
        flag("activated", 62, 0),
        flag("released", 62, 1),
        flag("isReleased", 62, 2),
        state("stateOfChoice", 63, 0),
        flag("constDataError", 63, 2),
        flag("parameterStorageError", 63, 3),
        flag("programStorageError", 63, 4),
        flag("programError", 63, 5),
        flag("hasBattery", 63, 6),
        flag("batteryIsOn", 63, 7),
    };
    ValueSection sensors{"sensors", 3, 5, 64, 13, {}};
    sensors.values = {
        number("ntcTemperature", 0, E::Float32, 22.0),
        number("ntcAlarmValue", 4, E::Float32, 60.0),
        number("ntcBeta", 8, E::UInt16, 3977),
        number("ntcVoltageADC", 10, E::UInt16, 512),
        flag("hasNTC", 12, 0),
        state("ntcState", 12, 1),
    };
    ValueSection relays{"relays", 3, 1, 0, 0, {}};
    relays.values = {bits("relayStates", 62, 3, 5)};
    for (int relay = 1; relay <= 5; ++relay)
        relays.values.push_back(
            bits("combineMask" + std::to_string(relay), 129 + 2 * (relay - 1), 0, 16, 1 << 14));
    relays.values.push_back(bits("eventMask", 139, 0, 16));
    ValueSection display{"display", 3, 1, 0, 0, {}};
    display.values = {
        number("twoButtonDelay", 141, E::UInt8, 50),
        number("resetButtonDelay", 142, E::UInt8, 200),
        flag("resetButton", 143, 0),
        flag("temperatureButton", 143, 1),
        flag("keySwitch", 143, 2),
        flag("virtualConfigButton", 143, 3),
        flag("virtualAirFlowInitButton", 143, 4),
        flag("virtualResetButton", 143, 5),
        flag("virtualTempChoiceButton", 143, 6),
        flag("virtualSoundOffButton", 143, 7),
        flag("buzzerShouldBeOff", 144, 0),
        state("buzzerState", 144, 1),
        state("ledOp", 146, 0, 3),
        state("ledFailure", 146, 2),
        state("ledBatt", 146, 4),
        state("ledMainsFailure", 146, 6),
        state("ledBlocked", 147, 0),
        state("ledReleased", 147, 2),
        state("ledMainAlarm", 147, 4),
        state("ledAlarm1", 147, 6),
        state("ledAlarm2", 148, 0),
        state("ledPreAlarm1", 148, 2),
        state("ledPreAlarm2", 148, 4),
        state("ledA", 148, 6),
        state("ledB", 149, 0),
        state("ledC", 149, 2),
        state("ledD", 149, 4),
        state("ledE", 149, 6),
        number("bargraphLevel", 150, E::UInt8, 0),
        number("temperatureCode", 151, E::UInt8, 0),
    };
    ValueSection firePanel{"firePanel", 3, 1, 0, 0, {}};
    firePanel.values = {
        flag("blockedState", 145, 0),   flag("alarmState1", 145, 1),    flag("alarmState2", 145, 2),
        flag("preAlarmState1", 145, 3), flag("preAlarmState2", 145, 4), flag("faultState", 145, 5),
        flag("releasedState", 145, 6),
    };
    ValueSection faults{"faults", 3, 1, 0, 0, {}};
    faults.values = {bits("pending", 152, 0, 32), bits("latched", 156, 0, 32),
                     bits("valid", 160, 0, 32, 4294967295.0)};
    ValueSection messages{"messages", 3, 1, 0, 0, {}};
    messages.values = {bits("pending", 164, 0, 16), bits("latched", 166, 0, 16),
                       bits("valid", 168, 0, 16, 65535)};
    ValueSection features{"features", 3, 1, 0, 0, {}};
    features.values = {
        flag("defaultValuesUsed", 170, 0),  flag("hasBatteryLoader", 170, 1),
        flag("hasNetworkModule", 170, 2),   flag("hasBargraphDisplay", 170, 3, true),
        flag("hasPreAlarmDisplay", 170, 4), flag("hasTemperatureSensors", 170, 5),
        flag("hasProgRel", 170, 6),
    };
    return {controller, sensors, relays, display, firePanel, faults, messages, features};
}

// Command 5: ten module blocks of 40 bytes.
ValueSection telegram5() {
    ValueSection modules{"modules", 5, 10, 10, 40, {}};
    modules.values = {
        number("serialNum", 0, E::UInt32),
        number("softwareNum", 4, E::Version, packVersion(4410, 1, 3)),
        number("parameterID", 8, E::ParameterId, packParameterId(1, 1, 1)),
        number("alarmResistorValue", 13, E::Float32, 1000),
        number("normalResistorValue", 17, E::Float32, 4700),
        number("ignitionVoltage", 21, E::Float32, 24.0),
        number("ignitionVoltageMin", 25, E::Float32, 18.0),
        number("resistorValueTolerance", 29, E::UInt8, 10),
        state("ledOp", 30, 0, 3),
        state("ledBlocked", 30, 2),
        state("ledFailure", 30, 4),
        state("ledReleased", 30, 6),
        flag("isOnline", 31, 0, true),
        flag("isBlocked", 31, 1),
        flag("isIsolated", 31, 2),
        flag("doActivate", 31, 3),
        flag("isActivated", 31, 4),
        flag("doRelease", 31, 5),
        flag("isReleased", 31, 6),
        bits("actualFailures", 32, 0, 8),
        bits("savedFailures", 33, 0, 8),
        bits("validFailureMask", 34, 0, 8, 255),
        state("ignitionLineState", 35, 0),
        state("manActLineState", 35, 2),
        flag("enableInputState", 35, 4),
        state("cutOffRelState", 35, 6),
        flag("hasIgnition", 36, 0, true),
        flag("hasCutOffRelay", 36, 1, true),
        flag("hasManualActivationLine", 36, 2, true),
        flag("hasEnableInput", 36, 3, true),
    };
    return modules;
}

std::vector<ValueSection> buildSections() {
    std::vector<ValueSection> all = telegram2();
    for (ValueSection& s : telegram3())
        all.push_back(std::move(s));
    all.push_back(telegram5());
    return all;
}

std::uint32_t wholeNumber(const ValueLayout& layout, double value) {
    const double clamped = std::clamp(std::round(value), minimumOf(layout), maximumOf(layout));
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(clamped));
}

void putBigEndian(Bytes& data, std::size_t at, std::uint32_t value, int width) {
    for (int i = 0; i < width; ++i)
        data[at + static_cast<std::size_t>(i)] =
            static_cast<std::uint8_t>(value >> (8 * (width - 1 - i)));
}

void putBits(Bytes& data, std::size_t at, const ValueLayout& layout, std::uint32_t value) {
    for (int k = 0; k < layout.width; ++k) {
        if (((value >> k) & 1U) == 0) continue;
        const int bit = layout.firstBit + k;
        data[at + static_cast<std::size_t>(bit / 8)] |= static_cast<std::uint8_t>(1U << (bit % 8));
    }
}

void putFloat(Bytes& data, std::size_t at, double value) {
    const double finite =
        std::isfinite(value) ? std::clamp(value, -double(FLT_MAX), double(FLT_MAX)) : 0.0;
    putBigEndian(data, at, std::bit_cast<std::uint32_t>(static_cast<float>(finite)), 4);
}

void putVersion(Bytes& data, std::size_t at, double packed, bool parameterId) {
    const auto whole = static_cast<std::uint64_t>(std::clamp(packed, 0.0, 1e14));
    if (parameterId) {
        putBigEndian(data, at, static_cast<std::uint32_t>(whole / 1000000000 % 65536), 2);
        putBigEndian(data, at + 2, static_cast<std::uint32_t>(whole / 1000 % 1000000 % 65536), 2);
        data[at + 4] = static_cast<std::uint8_t>(whole % 1000 % 256);
    } else {
        putBigEndian(data, at, static_cast<std::uint32_t>(whole / 1000000 % 65536), 2);
        data[at + 2] = static_cast<std::uint8_t>(whole / 1000 % 1000 % 256);
        data[at + 3] = static_cast<std::uint8_t>(whole % 1000 % 256);
    }
}

void putValue(Bytes& data, std::size_t at, const ValueLayout& layout, double value) {
    switch (layout.encoding) {
    case E::UInt8:
    case E::Int8:
        putBigEndian(data, at, wholeNumber(layout, value), 1);
        break;
    case E::UInt16:
    case E::Int16:
        putBigEndian(data, at, wholeNumber(layout, value), 2);
        break;
    case E::UInt32:
        putBigEndian(data, at, wholeNumber(layout, value), 4);
        break;
    case E::Float32:
        putFloat(data, at, value);
        break;
    case E::Version:
        putVersion(data, at, value, false);
        break;
    case E::ParameterId:
        putVersion(data, at, value, true);
        break;
    case E::Bits:
        putBits(data, at, layout, wholeNumber(layout, value));
        break;
    }
}

} // namespace

std::string ValueSection::nameOf(const ValueLayout& layout, int index) const {
    return isGroup() ? valueName(name, index, layout.key) : valueName(name, layout.key);
}

int ValueSection::absoluteOffset(const ValueLayout& layout, int index) const {
    return isGroup() ? base + stride * index + layout.offset : layout.offset;
}

const std::vector<ValueSection>& valueSections() {
    static const std::vector<ValueSection> sections = buildSections();
    return sections;
}

int dataSize(int command) {
    switch (command) {
    case 2:
        return 183;
    case 3:
        return 192;
    case 4:
        return 35;
    case 5:
        return 400;
    default:
        return 0;
    }
}

int dataStart(int command) {
    // Command 5 is the only one in the extended frame, with a header of four bytes.
    return command == 5 ? 10 : 8;
}

double minimumOf(const ValueLayout& layout) {
    switch (layout.encoding) {
    case E::Int8:
        return -128;
    case E::Int16:
        return -32768;
    case E::Float32:
        return -double(FLT_MAX);
    default:
        return 0;
    }
}

double maximumOf(const ValueLayout& layout) {
    switch (layout.encoding) {
    case E::UInt8:
        return 255;
    case E::Int8:
        return 127;
    case E::UInt16:
        return 65535;
    case E::Int16:
        return 32767;
    case E::UInt32:
        return 4294967295.0;
    case E::Float32:
        return double(FLT_MAX);
    case E::Version:
    case E::ParameterId:
        return 1e14;
    case E::Bits:
        return std::ldexp(1.0, layout.width) - 1;
    }
    return 0;
}

int byteWidth(const ValueLayout& layout) {
    switch (layout.encoding) {
    case E::UInt8:
    case E::Int8:
        return 1;
    case E::UInt16:
    case E::Int16:
        return 2;
    case E::UInt32:
    case E::Float32:
    case E::Version:
        return 4;
    case E::ParameterId:
        return 5;
    case E::Bits:
        return (layout.firstBit + layout.width + 7) / 8;
    }
    return 0;
}

double packVersion(unsigned major, unsigned minor, unsigned build) {
    return major * 1e6 + minor * 1e3 + build;
}

double packParameterId(unsigned set, unsigned variant, unsigned revision) {
    return set * 1e9 + variant * 1e3 + revision;
}

Bytes encodeData(int command, const ValueStore& values, double seconds) {
    Bytes data(static_cast<std::size_t>(dataSize(command)), 0);
    const int start = dataStart(command);
    for (const ValueSection& section : valueSections()) {
        if (section.command != command) continue;
        for (int index = 0; index < section.count; ++index) {
            for (const ValueLayout& layout : section.values) {
                const std::string name = section.nameOf(layout, index);
                if (!values.has(name)) continue;
                const int at = section.absoluteOffset(layout, index) - start;
                if (at < 0 || at + byteWidth(layout) > static_cast<int>(data.size())) continue;
                putValue(data, static_cast<std::size_t>(at), layout, values.live(name, seconds));
            }
        }
    }
    return data;
}

} // namespace mq27sim
