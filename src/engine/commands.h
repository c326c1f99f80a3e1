#pragma once

#include "common/bytes.h"

#include <array>
#include <cstdint>
#include <optional>

#include <QString>

class AppState;
class DeviceSession;
class DeviceValues;
class Form;
class PollEngine;
struct SettingLimits;

// The device commands that the user gives: each checks the fields of its window, fills its
// write block, stores it in the value store and asks the poll cycle to send it once. A
// field that fails its check turns yellow and keeps the user's text; then nothing is sent
// and nothing else is said. Each routine answers whether its block went to the poll cycle.
class DeviceCommands {
public:
    // The localisation's time windows that the learn window wants written, in 0.01 s.
    struct LocalisationWindows {
        std::array<std::int32_t, 5> minimum{};
        std::array<std::int32_t, 5> maximum{};
        int holes = 0;                // the number of holes the window works with
        bool learnModeActive = false; // the device is in learn mode: ask before leaving it
    };

    DeviceCommands(AppState& state, const DeviceSession& session, PollEngine& engine,
                   DeviceValues& values);

    // The one input check: true when the text of `field` is bad. A comma counts as the
    // decimal mark; a good value is written back in the form `decimals` asks for (with the
    // window's decimal mark) and the field gets the window colour, a bad one turns yellow.
    bool CheckTextInput(Form& form, const QString& field, double minimum, double maximum,
                        int decimals);

    // The main view's pages.
    bool SettingsAssume(const SettingLimits& limits);        // 129
    bool AirFlowInit(const SettingLimits& limits);           // 130
    bool RelayAssume();                                      // 138
    bool SensorTempAlarmAssume(const SettingLimits& limits); // 137
    // Selection 0 to 15 names one item, 16 all of them.
    bool ResetAlarmAndFault(int selection); // 131
    bool ResetMessages(int selection);      // 132
    // The bus module `index` of the main view makes itself known on the device.
    bool BusItemIdent(int index); // 139

    // The learn window. The fan voltages are checked against the limits' fan range.
    bool LocParameterAssume(const LocalisationWindows& windows, const SettingLimits& limits); // 133
    bool LocParameterAbort();                                                                 // 135
    bool LocSingleHoleLearning(bool start, const SettingLimits& limits);                      // 134
    // The module settings window.
    bool BusItemSettings(const SettingLimits& limits); // 136
    // The advanced settings window.
    bool AdvancedSettingsAssume(const SettingLimits& limits);   // 129
    bool BetaFactorSettingsAssume(const SettingLimits& limits); // 137

private:
    AppState& m_state;
    const DeviceSession& m_session;
    PollEngine& m_engine;
    DeviceValues& m_values;
};
