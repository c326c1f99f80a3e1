#pragma once

#include "common/bytes.h"
#include "common/fieldcheck.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include <QString>

class DeviceSession;
class DeviceValues;
class PollEngine;
class SettingLimits;
struct SettingDescriptor;

// What a settings page's fields and boxes hold for each setting of the table, as its window
// read them. A number goes in `number` (a time's minutes there, its seconds in `seconds`); a
// switch in `on`; a relay's events in bits 0 to 13 of `mask`, its OR and AND in bits 14, 15.
struct SettingInput {
    TypedNumber number;
    TypedNumber seconds;
    bool on = false;
    std::uint16_t mask = 0;

    bool refused() const { return number.refused() || seconds.refused(); }
};

class SettingInputs {
public:
    SettingInputs();
    SettingInput& operator[](const SettingDescriptor& setting);
    const SettingInput& operator[](const SettingDescriptor& setting) const;

private:
    std::vector<SettingInput> m_inputs;
};

// The device commands that the user gives. Each takes the values its window read from its
// fields and answers the write block, or nothing. Every number is checked, also after a bad
// one, and says what became of it (TypedNumber); a block can fail without a bad number too:
// no device yet, a serial number that is no number, a value that does not fit its bytes.
// The commands read no window: the window shows the verdicts. Send stores a block and asks
// the poll cycle to send it once.
class DeviceCommands {
public:
    // The limits of the other windows' fields.
    static constexpr double kResistorMin = 0, kResistorMax = 50000000; // Ohm
    static constexpr double kToleranceMin = 0, kToleranceMax = 99;     // %
    static constexpr double kBetaMin = 3400, kBetaMax = 4500;
    static constexpr double kBlowTimeMin = 10, kBlowTimeMax = 255; // s
    static constexpr int kHoles = 5;

    // The alarm resistor, the normal resistor (Ohm) and the tolerance (%).
    struct Resistors {
        std::array<TypedNumber, 3> values;
    };
    // The learn window: the time windows of the holes (0.01 s; a window beyond what the
    // device takes refuses its hole), the blow time and the fan voltages (V).
    struct LocalisationParameters {
        std::array<std::int32_t, kHoles> minimum{};
        std::array<std::int32_t, kHoles> maximum{};
        int holes = 0; // the holes the window works with
        std::array<bool, kHoles> holeRefused{};
        TypedNumber blowTime, blowFanVoltage, suckFanVoltage;
    };
    // One hole learned: how long to blow (minutes, seconds) and the fan voltages (V).
    struct HoleLearning {
        TypedNumber minutes, seconds, blowFanVoltage, suckFanVoltage;
    };

    DeviceCommands(const DeviceSession& session, PollEngine& engine, DeviceValues& values);

    // The main view's pages, from the table.
    std::optional<Bytes> SettingsAssume(SettingInputs& inputs, const SettingLimits& limits); // 129
    std::optional<Bytes> AirFlowInit(SettingInputs& inputs, const SettingLimits& limits);    // 130
    std::optional<Bytes> RelayAssume(const SettingInputs& inputs);                           // 138
    std::optional<Bytes> SensorTempAlarmAssume(SettingInputs& inputs,
                                               const SettingLimits& limits); // 137
    // Selection 0 to 15 names one item, 16 all of them.
    std::optional<Bytes> ResetAlarmAndFault(int selection); // 131
    std::optional<Bytes> ResetMessages(int selection);      // 132
    // The bus module of serial number `moduleSerialNo` makes itself known on the device.
    std::optional<Bytes> BusItemIdent(const QString& moduleSerialNo); // 139

    // The learn window; the fan voltages within the fan voltage's limits.
    std::optional<Bytes> LocParameterAssume(LocalisationParameters& parameters,
                                            const SettingLimits& limits); // 133
    std::optional<Bytes> LocParameterAbort();                             // 135
    // `start` false stops the learning.
    std::optional<Bytes> LocSingleHoleLearning(HoleLearning& learning, bool start,
                                               const SettingLimits& limits); // 134
    // The module settings window, for the module `moduleSerialNo` ("0" for none).
    std::optional<Bytes> BusItemSettings(const QString& moduleSerialNo,
                                         Resistors& resistors); // 136
    // The advanced settings window.
    std::optional<Bytes> AdvancedSettingsAssume(Resistors& resistors);                // 129
    std::optional<Bytes> BetaFactorSettingsAssume(std::array<TypedNumber, 5>& betas); // 137

    // Stores `block` by its Set...Parameter and queues it for the poll cycle; true when it
    // went to the queue. Nothing goes for no block.
    bool Send(const std::optional<Bytes>& block);

private:
    const DeviceSession& m_session;
    PollEngine& m_engine;
    DeviceValues& m_values;
};
