#pragma once

#include "values/mq27values.h"

#include <memory>

// The one value store of the program. It exists from the first telegram of the own device
// kind on and lives to the end of the run; before that, there is nothing to show or save.
class DeviceValues {
public:
    clsMQ27Values* get() { return m_values.get(); }
    const clsMQ27Values* get() const { return m_values.get(); }
    clsMQ27Values& create() {
        if (!m_values) m_values = std::make_unique<clsMQ27Values>();
        return *m_values;
    }

private:
    std::unique_ptr<clsMQ27Values> m_values;
};
