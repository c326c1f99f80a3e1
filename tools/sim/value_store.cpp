#include "sim/value_store.h"

#include <cmath>
#include <numbers>

namespace mq27sim {

void ValueStore::define(const std::string& name, double value) {
    entries_[name] = Entry{value, {}};
}

bool ValueStore::set(const std::string& name, double value) {
    const auto it = entries_.find(name);
    if (it == entries_.end()) return false;
    it->second.value = value;
    return true;
}

bool ValueStore::setDrift(const std::string& name, Drift drift) {
    const auto it = entries_.find(name);
    if (it == entries_.end()) return false;
    it->second.drift = drift;
    return true;
}

bool ValueStore::has(const std::string& name) const {
    return entries_.find(name) != entries_.end();
}

double ValueStore::get(const std::string& name) const {
    const auto it = entries_.find(name);
    return it == entries_.end() ? 0.0 : it->second.value;
}

double ValueStore::live(const std::string& name, double seconds) const {
    const auto it = entries_.find(name);
    if (it == entries_.end()) return 0.0;
    const Entry& e = it->second;
    if (!e.drift.active()) return e.value;
    return e.value +
           e.drift.amplitude * std::sin(2 * std::numbers::pi * seconds / e.drift.periodSeconds);
}

std::vector<std::string> ValueStore::names() const {
    std::vector<std::string> out;
    out.reserve(entries_.size());
    for (const auto& [name, entry] : entries_)
        out.push_back(name);
    return out;
}

std::string valueName(const std::string& section, const std::string& key) {
    return section + "." + key;
}

std::string valueName(const std::string& group, int index, const std::string& key) {
    return group + "[" + std::to_string(index) + "]." + key;
}

} // namespace mq27sim
