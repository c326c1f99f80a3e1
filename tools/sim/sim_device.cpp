#include "sim/sim_device.h"

#include "sim/setting_limits.h"
#include "sim/value_table.h"

namespace mq27sim {
namespace {

// A read telegram from the tool is the six-byte body and its CRC.
constexpr std::size_t kReadPayload = 8;

bool isRead(int command) {
    return command >= 1 && command <= 5;
}

bool isWrite(int command) {
    return command >= 129 && command <= 139;
}

} // namespace

SimDevice::SimDevice(DeviceProfile profile, const SimClock& clock, bool drift, QObject* parent)
    : BusDevice(kOwnKind, profile.serialNumber, profile.unsolicited, parent)
    , m_clock(clock)
    , m_values(std::move(profile.values))
    , m_telegram4(std::move(profile.telegram4))
    , m_behaviour(std::move(profile.behaviour))
    , m_airFlowInit(singleShot(this))
    , m_measurement(singleShot(this))
    , m_limits(std::move(profile.limits))
    , m_schedule(std::move(profile.schedule))
    , m_scheduleTimer(singleShot(this)) {
    if (!drift)
        for (const std::string& name : m_values.names())
            m_values.setDrift(name, Drift{});
    connect(m_airFlowInit, &QTimer::timeout, this, &SimDevice::finishAirFlowInit);
    connect(m_measurement, &QTimer::timeout, this, &SimDevice::finishMeasurement);
    for (int m = 0; m < static_cast<int>(m_identify.size()); ++m) {
        m_identify[m] = singleShot(this);
        connect(m_identify[m], &QTimer::timeout, this, [this, m] { finishIdentify(m); });
    }
    connect(m_scheduleTimer, &QTimer::timeout, this, &SimDevice::applyScheduled);
    armSchedule();
}

QTimer* SimDevice::singleShot(QObject* owner) {
    auto* timer = new QTimer(owner);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    return timer;
}

std::optional<Bytes> SimDevice::respond(const Telegram& t) {
    if (!t.hasAddress() || t.kind() != kOwnKind || !t.crcIsRight()) return std::nullopt;
    const int command = t.command();
    const bool readShape = t.payload.size() == kReadPayload;
    if (t.serial() == 0) return command == 1 && readShape ? readTelegram(1) : std::nullopt;
    if (t.serial() != serialNumber()) return std::nullopt;
    if (isRead(command) && readShape) return readTelegram(command);
    if (isWrite(command))
        applyWrite(command, t.block());
    else
        report("ignored", {{"cmd", command}, {"reason", "unknown command or length"}});
    return std::nullopt;
}

std::optional<Bytes> SimDevice::unsolicitedFrame() {
    return readTelegram(unsolicited().command);
}

std::optional<Bytes> SimDevice::readTelegram(int command) const {
    if (!isRead(command)) return std::nullopt;
    const Bytes data = command == 1   ? Bytes{}
                       : command == 4 ? m_telegram4
                                      : encodeData(command, m_values, m_clock.deviceSeconds());
    return deviceFrame(kOwnKind, command, serialNumber(), data, true);
}

bool SimDevice::commit(int command, const Changes& changes) {
    const QString reason = violation(changes);
    if (!reason.isEmpty()) {
        refuse(command, reason);
        return false;
    }
    apply(changes);
    report("applied", {{"cmd", command}});
    return true;
}

QString SimDevice::violation(const Changes& changes) const {
    for (const Change& c : changes) {
        const auto range = settingRange(m_values, c.name, m_limits);
        if (range && !range->contains(c.value))
            return QStringLiteral("%1 %2 outside %3 to %4")
                .arg(QString::fromStdString(c.name))
                .arg(c.value, 0, 'g', 9)
                .arg(range->min, 0, 'g', 12)
                .arg(range->max, 0, 'g', 12);
    }
    return {};
}

void SimDevice::apply(const Changes& changes) {
    for (const Change& c : changes) {
        const bool held = m_values.set(c.name, c.value);
        Q_ASSERT_X(held, "SimDevice::apply", c.name.c_str());
    }
}

void SimDevice::refuse(int command, const QString& reason) {
    report("refused", {{"cmd", command}, {"reason", reason}});
}

void SimDevice::report(const QString& event, QJsonObject details) {
    details.insert("serial", static_cast<double>(serialNumber()));
    emit notable(event, details);
}

// The changes of one moment in the profile's order, then a timer for the next moment.
void SimDevice::applyScheduled() {
    if (m_scheduled >= m_schedule.size()) return;
    const double due = m_schedule[m_scheduled].afterSeconds;
    for (; m_scheduled < m_schedule.size() && m_schedule[m_scheduled].afterSeconds == due;
         ++m_scheduled) {
        const ScheduledChange& c = m_schedule[m_scheduled];
        apply({{c.name, c.value}});
        report("scheduled", {{"value", QString::fromStdString(c.name)}, {"to", c.value}});
    }
    armSchedule();
}

void SimDevice::armSchedule() {
    if (m_scheduled < m_schedule.size())
        m_scheduleTimer->start(
            m_clock.timerMs(m_schedule[m_scheduled].afterSeconds - m_clock.deviceSeconds()));
}

int SimDevice::detectorCount() const {
    return flag("controller.hasTwoDetectors") ? 2 : 1;
}

int SimDevice::moduleIndex(std::uint32_t serial) const {
    for (int m = 0; serial != 0 && m < 10; ++m)
        if (value(valueName("modules", m, "serialNum")) == serial) return m;
    return -1;
}

// The hole (1 to 5) whose window holds the suck time, or 0.
int SimDevice::firePlaceOf(int suckTime) const {
    for (int hole = 1; hole <= 5; ++hole) {
        const std::string name = "localisation.suckTime" + std::to_string(hole);
        const double max = value(name + "Max");
        if (max > 0 && suckTime >= value(name + "Min") && suckTime <= max) return hole;
    }
    return 0;
}

} // namespace mq27sim

#include "moc_sim_device.cpp"
