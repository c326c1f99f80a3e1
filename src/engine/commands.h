#pragma once

#include "common/bytes.h"

#include <optional>

class AppState;
class DeviceValues;
class PollEngine;

// The device commands that the user gives: each fills its write block, stores it in the
// value store and asks the poll cycle to send it once.
class DeviceCommands {
public:
    DeviceCommands(AppState& state, PollEngine& engine, DeviceValues& values);

    // Selection 0 to 15 names one item, 16 all of them.
    void ResetAlarmAndFault(int selection);
    void ResetMessages(int selection);
    // The bus module `index` makes itself known on the device.
    void BusItemIdent(int index);

private:
    // Device kind, command and the serial number shown; nothing when that is no number.
    std::optional<Bytes> blockHead(int command) const;
    // Stores `block` by its command and queues it; a store that fails sends nothing.
    void send(const Bytes& block);

    AppState& m_state;
    PollEngine& m_engine;
    DeviceValues& m_values;
};
