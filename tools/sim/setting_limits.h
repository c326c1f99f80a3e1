#pragma once

#include "sim/value_store.h"

#include <optional>
#include <string>

namespace mq27sim {

struct Range {
    double min = 0;
    double max = 0;

    bool contains(double value) const { return value >= min && value <= max; }
};

// The range the device accepts for a setting: a fixed limit, or the minimum and maximum
// it reports in its own telegrams. None for a value the device doesn't limit.
std::optional<Range> settingRange(const ValueStore& values, const std::string& name);

} // namespace mq27sim
