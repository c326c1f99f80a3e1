#pragma once

#include <algorithm>
#include <cmath>

#include <QElapsedTimer>

namespace mq27sim {

// Monotonic time since the simulator started, and the device's own time, which --speed
// runs faster than the wall clock.
class SimClock {
public:
    explicit SimClock(double speed = 1.0)
        : m_speed(speed > 0 && std::isfinite(speed) ? speed : 1.0) {
        m_timer.start();
    }

    double elapsedMs() const { return static_cast<double>(m_timer.nsecsElapsed()) / 1e6; }
    double deviceSeconds() const { return elapsedMs() / 1000.0 * m_speed; }
    double speed() const { return m_speed; }

    // Wall-clock milliseconds for a span of device seconds, for a timer.
    int timerMs(double deviceSeconds) const {
        const double ms = deviceSeconds * 1000.0 / m_speed;
        return ms > 0 ? static_cast<int>(std::min(ms, 1e9)) : 0; // NaN is no time
    }

private:
    QElapsedTimer m_timer;
    double m_speed;
};

} // namespace mq27sim
