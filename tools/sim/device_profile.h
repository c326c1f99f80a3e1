#pragma once

#include "common/bytes.h"
#include "sim/setting_limits.h"
#include "sim/value_store.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QByteArray>
#include <QString>

namespace mq27sim {

constexpr int kOwnKind = 10;
constexpr int kVarlixKind = 1;
constexpr int kMinlixKind = 7;

// How the device behaves beyond its values. Times are device seconds, shortened by --speed.
struct Behaviour {
    double airFlowInitSeconds = 8;
    double identifySeconds = 10;
    // Transport times that the learn measurements report in turn, in seconds.
    std::vector<double> holeTimes = {10.0, 14.0, 20.0, 26.0, 32.0};
};

// A telegram the device sends by itself every few seconds (0: never).
struct Unsolicited {
    // A shorter interval would flood the line, and one under a millisecond made a timer of
    // 0 ms that fires without pause.
    static constexpr double kMinEverySeconds = 0.01;
    static constexpr double kMaxEverySeconds = 3600;

    double everySeconds = 0;
    int command = 2;
};

// A value the device changes by itself at a device second, as a fault that comes and goes.
struct ScheduledChange {
    double afterSeconds = 0;
    std::string name; // as the value store names it: "faults.pending"
    double value = 0;
};

struct DeviceProfile {
    QString source; // the file, for messages
    int kind = kOwnKind;
    std::uint32_t serialNumber = 1001;
    Unsolicited unsolicited;
    ValueStore values;
    Bytes telegram4 = Bytes(35, 0);
    Behaviour behaviour;
    std::vector<ScheduledChange> schedule; // in order of time, stable for one moment
    NarrowedLimits limits;                 // a device that takes less than the family's limits
    int dataBytes = 0;                     // kind 7: data bytes of its telegrams
};

// Reads device profiles from JSON files; docs/virtual-device.md lists every field.
class ProfileLoader {
public:
    // None on failure, with `error` naming the file and the field.
    static std::optional<DeviceProfile> load(const QString& path, QString& error);
    static std::optional<DeviceProfile> parse(const QByteArray& json, const QString& source,
                                              QString& error);
    // A device of this family made of defaults alone.
    static DeviceProfile defaults();
    // Devices of one kind on one line need serial numbers of their own; empty when they
    // have them.
    static QString conflicts(const std::vector<DeviceProfile>& profiles);
};

} // namespace mq27sim
