#include "sim/simulator.h"

#include "sim/sim_device.h"

namespace mq27sim {
namespace {

// A frame that has begun but stays incomplete this long is given up as noise.
constexpr int kIdleMs = 300;

int wallMs(double seconds) {
    return static_cast<int>(std::clamp(seconds * 1000.0, 0.0, 1e9));
}

} // namespace

Simulator::Simulator(std::vector<DeviceProfile> profiles, SimOptions options, QObject* parent)
    : QObject(parent)
    , options_(std::move(options))
    , clock_(options_.speed)
    , log_(clock_)
    , line_(this)
    , faults_(options_.faults) {
    idle_.setSingleShot(true);
    idle_.setTimerType(Qt::PreciseTimer);
    idle_.setInterval(kIdleMs);
    connect(&idle_, &QTimer::timeout, this, [this] { handleItems(reader_.flush()); });
    connect(&line_, &PtyLine::received, this, &Simulator::onReceived);
    connect(&line_, &PtyLine::closed, this, &Simulator::lineClosed);
    line_.setPaced(options_.faults.pace);
    for (DeviceProfile& profile : profiles) {
        BusDevice* device = profile.kind == kOwnKind
                                ? static_cast<BusDevice*>(new SimDevice(std::move(profile), clock_,
                                                                        options_.drift, this))
                                : new ForeignDevice(profile, this);
        connect(device, &BusDevice::notable, this,
                [this](const QString& event, const QJsonObject& details) {
                    log_.event(event, details);
                });
        devices_.push_back(device);
    }
}

SimDevice* Simulator::ownDevice() const {
    for (BusDevice* device : devices_)
        if (auto* own = qobject_cast<SimDevice*>(device)) return own;
    return nullptr;
}

bool Simulator::start(QString& error) {
    if (!options_.logPath.isEmpty() && !log_.open(options_.logPath, error)) return false;
    if (!line_.open(error)) return false;
    log_.event("start", {{"port", line_.portPath()}, {"devices", deviceCount()}});
    for (BusDevice* device : devices_)
        startUnsolicited(device);
    startSilenceEvents();
    if (options_.faults.closeAfterSeconds > 0)
        QTimer::singleShot(wallMs(options_.faults.closeAfterSeconds), Qt::PreciseTimer, this,
                           &Simulator::closeLine);
    return true;
}

void Simulator::onReceived(const Bytes& bytes) {
    handleItems(reader_.feed(bytes));
    if (reader_.hasPending())
        idle_.start();
    else
        idle_.stop();
}

void Simulator::handleItems(const std::vector<FrameReader::Item>& items) {
    for (const FrameReader::Item& item : items) {
        if (item.isFrame)
            dispatch(item.bytes);
        else
            log_.noise("in", item.bytes);
    }
}

// Every device hears every frame; each answers after the answer delay, the later devices a
// little later still, so that the answers to a search telegram don't run into each other.
void Simulator::dispatch(const Bytes& frame) {
    log_.frame("in", frame);
    const Telegram telegram = Telegram::fromFrame(frame);
    for (std::size_t i = 0; i < devices_.size(); ++i) {
        const auto answer = devices_[i]->respond(telegram);
        if (!answer) continue;
        const int delay = options_.answerDelayMs + options_.staggerMs * static_cast<int>(i);
        QTimer::singleShot(delay, Qt::PreciseTimer, this,
                           [this, frame = *answer] { transmit(frame, {}); });
    }
}

void Simulator::transmit(const Bytes& frame, const QJsonObject& tags) {
    if (!line_.isOpen()) return;
    if (faults_.silentAt(clock_.elapsedMs() / 1000.0)) {
        log_.event("silent", {{"hex", SimLog::hex(frame)}});
        return;
    }
    bool corrupted = false;
    const std::vector<Burst> bursts = faults_.shape(frame, corrupted);
    QJsonObject logTags = tags;
    if (corrupted) logTags.insert("fault", "bad-crc");
    if (bursts.size() > 1 && options_.faults.splitGapMs > 0)
        logTags.insert("splitGapMs", options_.faults.splitGapMs);
    Bytes sent;
    for (const Burst& burst : bursts)
        if (!burst.isNoise) sent.insert(sent.end(), burst.bytes.begin(), burst.bytes.end());
    for (const Burst& burst : bursts) {
        if (burst.isNoise)
            log_.noise("out", burst.bytes);
        else if (burst.delayMs == 0)
            log_.frame("out", sent, logTags);
        if (burst.delayMs == 0)
            line_.send(burst.bytes);
        else
            QTimer::singleShot(burst.delayMs, Qt::PreciseTimer, this,
                               [this, bytes = burst.bytes] { line_.send(bytes); });
    }
}

void Simulator::startUnsolicited(BusDevice* device) {
    Unsolicited u = device->unsolicited();
    if (options_.unsolicitedSeconds > 0) u.everySeconds = options_.unsolicitedSeconds;
    if (options_.unsolicitedCommand > 0) u.command = options_.unsolicitedCommand;
    device->setUnsolicited(u);
    if (u.everySeconds <= 0) return;
    auto* timer = new QTimer(this);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setInterval(wallMs(u.everySeconds));
    connect(timer, &QTimer::timeout, this, [this, device] {
        if (const auto frame = device->unsolicitedFrame())
            transmit(*frame, {{"unsolicited", true}});
    });
    timer->start();
}

void Simulator::startSilenceEvents() {
    const FaultOptions& f = options_.faults;
    if (!f.silentForever && f.silenceSeconds <= 0) return;
    QTimer::singleShot(wallMs(f.silenceStart), Qt::PreciseTimer, this,
                       [this] { log_.event("silence-start"); });
    if (!f.silentForever)
        QTimer::singleShot(wallMs(f.silenceStart + f.silenceSeconds), Qt::PreciseTimer, this,
                           [this] { log_.event("silence-end"); });
}

void Simulator::closeLine() {
    log_.event("line-closed");
    line_.close();
}

} // namespace mq27sim
