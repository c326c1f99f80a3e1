#pragma once

#include "sim/value_store.h"

#include <map>
#include <optional>
#include <string>

namespace mq27sim {

struct Range {
    double min = 0;
    double max = 0;

    bool contains(double value) const { return value >= min && value <= max; }
};

// Narrower limits of one device, by the setting's name without its index
// ("controller.extinguishDelay", "modules.alarmResistorValue").
using NarrowedLimits = std::map<std::string, Range>;

// The range the device accepts for a setting: a fixed limit, or the minimum and maximum
// it reports in its own telegrams, unless `narrowed` names it. None for a value the device
// doesn't limit.
std::optional<Range> settingRange(const ValueStore& values, const std::string& name,
                                  const NarrowedLimits& narrowed = {});
// Whether the device limits a setting of this name (without its index).
bool isLimitedSetting(const std::string& key);

} // namespace mq27sim
