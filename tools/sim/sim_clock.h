#pragma once

#include <algorithm>

#include <QElapsedTimer>

namespace mq27sim {

// Monotonic time since the simulator started, and the device's own time, which --speed
// runs faster than the wall clock.
class SimClock {
public:
    explicit SimClock(double speed = 1.0)
        : speed_(speed > 0 ? speed : 1.0) {
        timer_.start();
    }

    double elapsedMs() const { return static_cast<double>(timer_.nsecsElapsed()) / 1e6; }
    double deviceSeconds() const { return elapsedMs() / 1000.0 * speed_; }
    double speed() const { return speed_; }

    // Wall-clock milliseconds for a span of device seconds, for a timer.
    int timerMs(double deviceSeconds) const {
        return static_cast<int>(std::clamp(deviceSeconds * 1000.0 / speed_, 0.0, 1e9));
    }

private:
    QElapsedTimer timer_;
    double speed_;
};

} // namespace mq27sim
