#pragma once

#include <map>
#include <string>
#include <vector>

namespace mq27sim {

// A slow sine around the stored value, so that a demonstration looks alive.
struct Drift {
    double amplitude = 0;
    double periodSeconds = 0;

    bool active() const { return amplitude != 0 && periodSeconds > 0; }
};

// The device's state as named values ("airFlow.altitude", "detectors[1].alarmThreshold").
// A value that is not held reads as 0: an absent detector or module block stays all zero
// in its telegram.
class ValueStore {
public:
    // Adds the value or replaces it, dropping any drift.
    void define(const std::string& name, double value);
    // Changes a held value and keeps its drift; false (and no change) for a value not held.
    bool set(const std::string& name, double value);
    bool setDrift(const std::string& name, Drift drift);

    bool has(const std::string& name) const;
    double get(const std::string& name) const;
    // The value with its drift at `seconds` of simulated time.
    double live(const std::string& name, double seconds) const;
    std::vector<std::string> names() const;

private:
    struct Entry {
        double value = 0;
        Drift drift;
    };
    std::map<std::string, Entry, std::less<>> m_entries;
};

// "airFlow.altitude"
std::string valueName(const std::string& section, const std::string& key);
// "detectors[1].alarmThreshold"
std::string valueName(const std::string& group, int index, const std::string& key);

} // namespace mq27sim
