#pragma once

#include "sim/bus_device.h"
#include "sim/device_profile.h"
#include "sim/fault_injector.h"
#include "sim/frame_reader.h"
#include "sim/pty_line.h"
#include "sim/sim_clock.h"
#include "sim/sim_log.h"

#include <vector>

#include <QObject>
#include <QTimer>

namespace mq27sim {

class SimDevice;

struct SimOptions {
    std::vector<QString> profiles;
    int answerDelayMs = 30;
    int staggerMs = 15; // further delay of each next device on the line
    double speed = 1.0;
    bool drift = true;
    double unsolicitedSeconds = 0; // for every device; 0 leaves the profiles' setting
    int unsolicitedCommand = 0;    // 0 leaves the profiles' command
    FaultOptions faults;
    QString logPath;
    QString linkPath;
};

// The line with its devices: reads what the tool sends, lets every device answer what is
// meant for it, and puts the answers on the line with their delays and faults.
class Simulator : public QObject {
    Q_OBJECT

public:
    Simulator(std::vector<DeviceProfile> profiles, SimOptions options, QObject* parent = nullptr);

    // Opens the pseudo-terminal and the log; starts the timers of the options.
    bool start(QString& error);
    QString portPath() const { return m_line.portPath(); }

    int deviceCount() const { return static_cast<int>(m_devices.size()); }
    BusDevice* device(int index) const { return m_devices.at(static_cast<std::size_t>(index)); }
    // The first device of this family, if there is one.
    SimDevice* ownDevice() const;
    const SimClock& clock() const { return m_clock; }

signals:
    void lineClosed();

private:
    void onReceived(const Bytes& bytes);
    void handleItems(const std::vector<FrameReader::Item>& items);
    void dispatch(const Bytes& frame);
    void transmit(const Bytes& frame, const QJsonObject& tags);
    void startUnsolicited(BusDevice* device);
    void startSilenceEvents();
    void closeLine();

    SimOptions m_options;
    SimClock m_clock;
    SimLog m_log;
    PtyLine m_line;
    FrameReader m_reader;
    FaultInjector m_faults;
    QTimer m_idle;
    std::vector<BusDevice*> m_devices;
    int m_writesLost = 0;
};

} // namespace mq27sim
