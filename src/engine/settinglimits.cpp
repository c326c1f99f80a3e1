#include "engine/settinglimits.h"

#include "engine/settingtable.h"

SettingLimits::SettingLimits() {
    for (const SettingDescriptor& s : settingTable())
        m_ranges.push_back({s.minimum, s.maximum});
}

SettingLimits::Range SettingLimits::of(const SettingDescriptor& setting) const {
    return m_ranges.at(static_cast<std::size_t>(setting.id));
}

SettingLimits::Range SettingLimits::ofField(const SettingDescriptor& setting) const {
    const Range range = of(setting);
    return {range.minimum / setting.upDownScale, range.maximum / setting.upDownScale};
}

void SettingLimits::set(const SettingDescriptor& setting, Range range) {
    m_ranges.at(static_cast<std::size_t>(setting.id)) = range;
}

void SettingLimits::takeReported(ValueStore& values) {
    for (const SettingDescriptor& s : settingTable()) {
        Range range = of(s);
        if (s.reportedMinimum) range.minimum = s.reportedMinimum(values);
        if (s.reportedMaximum) range.maximum = s.reportedMaximum(values);
        set(s, range);
    }
}
