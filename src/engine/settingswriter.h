#pragma once

#include "common/bytes.h"
#include "engine/settingtable.h"

#include <optional>

class DeviceCommands;
class SettingInputs;
class SettingLimits;

// The one writer of the main view's settings pages, for the pages and the command line's
// set alike: it checks a page's inputs against the table and the limits into the page's
// block, and sends a block, stored by its Set...Parameter and queued for the poll cycle.
class SettingsWriter {
public:
    SettingsWriter(DeviceCommands& commands, const SettingLimits& limits);

    // The block of `page`, or nothing; each number of `inputs` says what became of it.
    std::optional<Bytes> check(SettingPage page, SettingInputs& inputs);
    // True when the block went to the poll cycle.
    bool send(const Bytes& block);

private:
    DeviceCommands& m_commands;
    const SettingLimits& m_limits;
};
