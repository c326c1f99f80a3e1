#pragma once

#include "sim/bus_device.h"
#include "sim/device_profile.h"
#include "sim/sim_clock.h"
#include "sim/value_store.h"

#include <array>
#include <map>
#include <string>
#include <vector>

#include <QTimer>

namespace mq27sim {

// The virtual device of this family: its values, the read telegrams encoded from them, and
// the write telegrams applied to them the way the device does it.
class SimDevice : public BusDevice {
    Q_OBJECT

public:
    // Without `drift` every value stays exactly as the profile gives it.
    SimDevice(DeviceProfile profile, const SimClock& clock, bool drift, QObject* parent);

    std::optional<Bytes> respond(const Telegram& t) override;
    std::optional<Bytes> unsolicitedFrame() override;

    const ValueStore& values() const { return m_values; }
    // The complete frame of read telegram `command` (1 to 5) as of now.
    std::optional<Bytes> readTelegram(int command) const;

private:
    struct Change {
        std::string name;
        double value = 0;
    };
    using Changes = std::vector<Change>;

    // sim_writes.cpp: one routine per write command.
    void applyWrite(int command, const Bytes& block);
    void writeDeviceParameters(const Bytes& block);
    void startAirFlowInit(const Bytes& block);
    void resetAlarmAndFault(const Bytes& block);
    void resetMessages(const Bytes& block);
    void writeLocalisation(const Bytes& block);
    void learnMode(const Bytes& block);
    void abortLearnMode();
    void writeModuleParameters(const Bytes& block);
    void writeTemperatures(const Bytes& block);
    void writeRelayMasks(const Bytes& block);
    void identifyModule(const Bytes& block);

    // Applies all changes, or none when one lies outside the device's limits.
    bool commit(int command, const Changes& changes);
    QString violation(const Changes& changes) const;
    void apply(const Changes& changes);
    void refuse(int command, const QString& reason);
    void report(const QString& event, QJsonObject details = {});

    void finishAirFlowInit();
    void finishMeasurement();
    void stopMeasurement();
    void finishIdentify(int module);
    void applyScheduled();
    void armSchedule();

    double value(const std::string& name) const { return m_values.get(name); }
    bool flag(const std::string& name) const { return m_values.get(name) != 0; }
    int detectorCount() const;
    int moduleIndex(std::uint32_t serial) const;
    int firePlaceOf(int suckTime) const;
    QTimer* singleShot(QObject* owner);

    const SimClock& m_clock;
    ValueStore m_values;
    Bytes m_telegram4;
    Behaviour m_behaviour;

    QTimer* m_airFlowInit;
    Changes m_airFlowSetPoints;
    double m_operatingLedBeforeInit = 3;

    QTimer* m_measurement;
    int m_measurementsDone = 0;

    NarrowedLimits m_limits;
    std::vector<ScheduledChange> m_schedule;
    std::size_t m_scheduled = 0; // changes applied so far
    QTimer* m_scheduleTimer;

    std::array<QTimer*, 10> m_identify{};
    std::map<int, std::vector<double>> m_ledsBeforeIdentify;
};

} // namespace mq27sim
