#pragma once

#include "values/valuestore.h"

#include <memory>

// The one value store of the program. It exists from the first telegram of the own device
// kind on and lives to the end of the run; before that, there is nothing to show or save.
class DeviceValues {
public:
    ValueStore* get() { return m_values.get(); }
    const ValueStore* get() const { return m_values.get(); }
    ValueStore& create() {
        if (!m_values) m_values = std::make_unique<ValueStore>();
        return *m_values;
    }

private:
    std::unique_ptr<ValueStore> m_values;
};
