#include "sim/simulator.h"

#include "sim/sim_device.h"

#include <algorithm>

namespace mq27sim {
namespace {

// A frame that has begun but stays incomplete this long is given up as noise.
constexpr int kIdleMs = 300;

// NaN fails every comparison, so it counts as no time rather than reaching the cast.
int wallMs(double seconds) {
    return seconds > 0 ? static_cast<int>(std::min(seconds * 1000.0, 1e9)) : 0;
}

} // namespace

Simulator::Simulator(std::vector<DeviceProfile> profiles, SimOptions options, QObject* parent)
    : QObject(parent)
    , m_options(std::move(options))
    , m_clock(m_options.speed)
    , m_log(m_clock)
    , m_line(this)
    , m_faults(m_options.faults) {
    m_idle.setSingleShot(true);
    m_idle.setTimerType(Qt::PreciseTimer);
    m_idle.setInterval(kIdleMs);
    connect(&m_idle, &QTimer::timeout, this, [this] { handleItems(m_reader.flush()); });
    connect(&m_line, &PtyLine::received, this, &Simulator::onReceived);
    connect(&m_line, &PtyLine::closed, this, &Simulator::lineClosed);
    m_line.setPaced(m_options.faults.pace);
    for (DeviceProfile& profile : profiles) {
        BusDevice* device = profile.kind == kOwnKind
                                ? static_cast<BusDevice*>(new SimDevice(std::move(profile), m_clock,
                                                                        m_options.drift, this))
                                : new ForeignDevice(profile, this);
        connect(device, &BusDevice::notable, this,
                [this](const QString& event, const QJsonObject& details) {
                    m_log.event(event, details);
                });
        m_devices.push_back(device);
    }
}

SimDevice* Simulator::ownDevice() const {
    for (BusDevice* device : m_devices)
        if (auto* own = qobject_cast<SimDevice*>(device)) return own;
    return nullptr;
}

bool Simulator::start(QString& error) {
    if (!m_options.logPath.isEmpty() && !m_log.open(m_options.logPath, error)) return false;
    if (!m_line.open(error)) return false;
    m_log.event("start", {{"port", m_line.portPath()}, {"devices", deviceCount()}});
    for (BusDevice* device : m_devices)
        startUnsolicited(device);
    startSilenceEvents();
    if (m_options.faults.closeAfterSeconds > 0)
        QTimer::singleShot(wallMs(m_options.faults.closeAfterSeconds), Qt::PreciseTimer, this,
                           &Simulator::closeLine);
    return true;
}

void Simulator::onReceived(const Bytes& bytes) {
    handleItems(m_reader.feed(bytes));
    if (m_reader.hasPending())
        m_idle.start();
    else
        m_idle.stop();
}

void Simulator::handleItems(const std::vector<FrameReader::Item>& items) {
    for (const FrameReader::Item& item : items) {
        if (item.isFrame)
            dispatch(item.bytes);
        else
            m_log.noise("in", item.bytes);
    }
}

// Every device hears every frame; each answers after the answer delay, the later devices a
// little later still, so that the answers to a search telegram don't run into each other.
void Simulator::dispatch(const Bytes& frame) {
    m_log.frame("in", frame);
    const Telegram telegram = Telegram::fromFrame(frame);
    constexpr int kFirstWrite = 129;
    if (telegram.hasAddress() && telegram.command() >= kFirstWrite &&
        m_writesLost < m_options.faults.loseWrites) {
        ++m_writesLost;
        m_log.event("lost", {{"cmd", telegram.command()}});
        return;
    }
    for (std::size_t i = 0; i < m_devices.size(); ++i) {
        const auto answer = m_devices[i]->respond(telegram);
        if (!answer) continue;
        const int delay = m_options.answerDelayMs + m_options.staggerMs * static_cast<int>(i);
        QTimer::singleShot(delay, Qt::PreciseTimer, this,
                           [this, frame = *answer] { transmit(frame, {}); });
    }
}

void Simulator::transmit(const Bytes& frame, const QJsonObject& tags) {
    if (!m_line.isOpen()) return;
    if (m_faults.silentAt(m_clock.elapsedMs() / 1000.0)) {
        m_log.event("silent", {{"hex", SimLog::hex(frame)}});
        return;
    }
    bool corrupted = false;
    const std::vector<Burst> bursts = m_faults.shape(frame, corrupted);
    std::size_t size = 0;
    for (const Burst& burst : bursts)
        size += burst.bytes.size();
    if (!m_line.hasRoomFor(size)) {
        m_log.event("dropped", {{"hex", SimLog::hex(frame)}});
        return;
    }
    QJsonObject logTags = tags;
    if (corrupted) logTags.insert("fault", "bad-crc");
    if (bursts.size() > 1 && m_options.faults.splitGapMs > 0)
        logTags.insert("splitGapMs", m_options.faults.splitGapMs);
    Bytes sent;
    for (const Burst& burst : bursts)
        if (!burst.isNoise) sent.insert(sent.end(), burst.bytes.begin(), burst.bytes.end());
    for (const Burst& burst : bursts) {
        if (burst.isNoise)
            m_log.noise("out", burst.bytes);
        else if (burst.delayMs == 0)
            m_log.frame("out", sent, logTags);
        if (burst.delayMs == 0)
            m_line.send(burst.bytes);
        else
            QTimer::singleShot(burst.delayMs, Qt::PreciseTimer, this,
                               [this, bytes = burst.bytes] { m_line.send(bytes); });
    }
}

void Simulator::startUnsolicited(BusDevice* device) {
    Unsolicited u = device->unsolicited();
    if (m_options.unsolicitedSeconds > 0) u.everySeconds = m_options.unsolicitedSeconds;
    if (m_options.unsolicitedCommand > 0) u.command = m_options.unsolicitedCommand;
    device->setUnsolicited(u);
    if (!(u.everySeconds > 0)) return;
    auto* timer = new QTimer(this);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setInterval(wallMs(std::max(u.everySeconds, Unsolicited::kMinEverySeconds)));
    connect(timer, &QTimer::timeout, this, [this, device] {
        if (const auto frame = device->unsolicitedFrame())
            transmit(*frame, {{"unsolicited", true}});
    });
    timer->start();
}

void Simulator::startSilenceEvents() {
    const FaultOptions& f = m_options.faults;
    if (!f.silentForever && f.silenceSeconds <= 0) return;
    QTimer::singleShot(wallMs(f.silenceStart), Qt::PreciseTimer, this,
                       [this] { m_log.event("silence-start"); });
    if (!f.silentForever)
        QTimer::singleShot(wallMs(f.silenceStart + f.silenceSeconds), Qt::PreciseTimer, this,
                           [this] { m_log.event("silence-end"); });
}

void Simulator::closeLine() {
    m_log.event("line-closed");
    m_line.close();
}

} // namespace mq27sim

#include "moc_simulator.cpp"
