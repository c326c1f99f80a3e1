#include "sim/setting_limits.h"

#include <functional>
#include <map>

namespace mq27sim {
namespace {

// `prefix` is the section or block of the value ("controller", "detectors[1]").
using RangeOf = std::function<Range(const ValueStore&, const std::string& prefix)>;

RangeOf fixed(double min, double max) {
    return [min, max](const ValueStore&, const std::string&) { return Range{min, max}; };
}

RangeOf reported(const std::string& minKey, const std::string& maxKey) {
    return [minKey, maxKey](const ValueStore& values, const std::string& prefix) {
        return Range{values.get(prefix + "." + minKey), values.get(prefix + "." + maxKey)};
    };
}

RangeOf fanVoltage() {
    return [](const ValueStore& values, const std::string&) {
        return Range{values.get("fans.uFanMin"), values.get("fans.uFanMax")};
    };
}

std::map<std::string, RangeOf> buildRanges() {
    constexpr double kResistorMax = 50000000;
    std::map<std::string, RangeOf> ranges = {
        {"controller.alarmDelaySetPoint", reported("alarmDelayMin", "alarmDelayMax")},
        {"controller.extinguishDelay", fixed(0, 60)},
        {"controller.alarmResistorValue", fixed(0, kResistorMax)},
        {"controller.normalResistorValue", fixed(0, kResistorMax)},
        {"controller.resistorValueTolerance", fixed(0, 99)},
        {"airFlow.staticFlowDevSetPoint", reported("staticFlowDevMin", "staticFlowDevMax")},
        {"airFlow.airFlowFailureDelaySetPoint",
         reported("airFlowFailureDelayMin", "airFlowFailureDelayMax")},
        {"airFlow.altitude", fixed(0, 9000)},
        {"airFlow.airPressureSetPoint", fixed(700, 1400)},
        {"detectors.smokeValue10SetPoint", reported("smokeValue10Min", "smokeValue10Max")},
        {"detectors.alarmThreshold", fixed(0, 100)},
        {"detectors.preAlarmThreshold", fixed(10, 80)},
        {"localisation.blowTime", fixed(10, 255)},
        {"localisation.blowLrnTime", fixed(10, 3600)},
        {"sensors.ntcAlarmValue", fixed(0, 100)},
        {"sensors.ntcBeta", fixed(3400, 4500)},
        {"modules.alarmResistorValue", fixed(0, kResistorMax)},
        {"modules.normalResistorValue", fixed(0, kResistorMax)},
        {"modules.resistorValueTolerance", fixed(0, 99)},
    };
    for (const char* fan : {"uFanSetPoint", "fanVoltage", "suckFanLrnVoltage", "blowFanLrnVoltage",
                            "suckFanLocVoltage", "blowFanVoltage"})
        ranges[std::string("fans.") + fan] = fanVoltage();
    for (int hole = 1; hole <= 5; ++hole) {
        const std::string name = "localisation.suckTime" + std::to_string(hole);
        ranges[name + "Max"] = fixed(0, 32766);
        ranges[name + "Min"] = fixed(0, 32766);
    }
    return ranges;
}

const std::map<std::string, RangeOf>& ranges() {
    static const std::map<std::string, RangeOf> table = buildRanges();
    return table;
}

} // namespace

std::optional<Range> settingRange(const ValueStore& values, const std::string& name,
                                  const NarrowedLimits& narrowed) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos) return std::nullopt;
    const std::string prefix = name.substr(0, dot);
    const std::string key = prefix.substr(0, prefix.find('[')) + name.substr(dot);
    if (const auto own = narrowed.find(key); own != narrowed.end()) return own->second;
    const auto it = ranges().find(key);
    if (it == ranges().end()) return std::nullopt;
    return it->second(values, prefix);
}

bool isLimitedSetting(const std::string& key) {
    return ranges().contains(key);
}

} // namespace mq27sim
