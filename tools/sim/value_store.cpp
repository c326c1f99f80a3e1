#include "sim/value_store.h"

#include <cmath>
#include <numbers>

namespace mq27sim {

void ValueStore::define(const std::string& name, double value) {
    m_entries[name] = Entry{value, {}};
}

bool ValueStore::set(const std::string& name, double value) {
    const auto it = m_entries.find(name);
    if (it == m_entries.end()) return false;
    it->second.value = value;
    return true;
}

bool ValueStore::setDrift(const std::string& name, Drift drift) {
    const auto it = m_entries.find(name);
    if (it == m_entries.end()) return false;
    it->second.drift = drift;
    return true;
}

bool ValueStore::has(const std::string& name) const {
    return m_entries.find(name) != m_entries.end();
}

double ValueStore::get(const std::string& name) const {
    const auto it = m_entries.find(name);
    return it == m_entries.end() ? 0.0 : it->second.value;
}

double ValueStore::live(const std::string& name, double seconds) const {
    const auto it = m_entries.find(name);
    if (it == m_entries.end()) return 0.0;
    const Entry& e = it->second;
    if (!e.drift.active()) return e.value;
    return e.value +
           e.drift.amplitude * std::sin(2 * std::numbers::pi * seconds / e.drift.periodSeconds);
}

std::vector<std::string> ValueStore::names() const {
    std::vector<std::string> out;
    out.reserve(m_entries.size());
    for (const auto& [name, entry] : m_entries)
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
