#pragma once

#include <vector>

class ValueStore;
struct SettingDescriptor;

// The limits of the settings pages' fields, in the unit of each setting's up/down element.
// They start at the table's defaults when the main view loads; every display refresh
// replaces those that the device reports.
class SettingLimits {
public:
    struct Range {
        double minimum = 0;
        double maximum = 0;
    };

    SettingLimits();

    Range of(const SettingDescriptor& setting) const;
    // The limits of the field itself: a number's range over its up/down element's scale.
    Range ofField(const SettingDescriptor& setting) const;
    void set(const SettingDescriptor& setting, Range range);
    // Those the device reports.
    void takeReported(ValueStore& values);

private:
    std::vector<Range> m_ranges;
};
