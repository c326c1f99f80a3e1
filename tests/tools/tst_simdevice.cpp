// The parts of the virtual device whose faults the end-to-end tests would not notice: a
// write beyond the device's limits taken all the same, injected faults that inject
// nothing, and a frame reader stuck after garbage.
#include "link/checksum.h"
#include "link/telegram.h"
#include "sim/sim_device.h"
#include "sim/simulator.h"
#include "support/testsupport.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>

#include <QSignalSpy>
#include <QTest>

using namespace mq27sim;
using testsupport::frameOf;

namespace {

constexpr std::uint32_t kFull = 1234567;

// A write block as the tool fills it, offsets from the device kind on.
class Block {
public:
    Block(int command, std::size_t size, std::uint32_t serial = kFull)
        : m_bytes(size, 0) {
        u8(0, 10).u8(1, command).u32(2, serial);
    }
    Block& u8(int at, double v) {
        m_bytes.at(std::size_t(at)) = std::uint8_t(static_cast<unsigned>(v));
        return *this;
    }
    Block& u16(int at, double v) {
        const auto n = static_cast<unsigned>(v);
        return u8(at, n >> 8).u8(at + 1, n & 255);
    }
    Block& u32(int at, std::uint32_t v) { return u16(at, v >> 16).u16(at + 2, v & 0xFFFF); }
    Block& f32(int at, double v) { return u32(at, std::bit_cast<std::uint32_t>(float(v))); }
    Bytes frame() const { return frameOf(m_bytes); }

private:
    Bytes m_bytes;
};

// Command 129 with every limited field as the device reports it.
Block deviceParameters(const ValueStore& v) {
    Block b(129, 40);
    b.f32(6, v.get("controller.alarmResistorValue"))
        .f32(10, v.get("controller.normalResistorValue"))
        .u16(16, v.get("airFlow.airFlowFailureDelaySetPoint"))
        .u16(18, v.get("detectors[0].smokeValue10SetPoint"))
        .u16(20, v.get("detectors[1].smokeValue10SetPoint"))
        .u8(29, 255);
    const std::pair<int, const char*> bytes[] = {
        {14, "controller.resistorValueTolerance"}, {15, "airFlow.staticFlowDevSetPoint"},
        {22, "controller.alarmDelaySetPoint"},     {23, "detectors[0].alarmThreshold"},
        {24, "detectors[1].alarmThreshold"},       {25, "detectors[0].preAlarmThreshold"},
        {26, "detectors[1].preAlarmThreshold"},    {27, "controller.extinguishDelay"}};
    for (const auto& [at, name] : bytes)
        b.u8(at, v.get(name));
    return b;
}

Block localisation(const std::vector<int>& windows, int blowTime) {
    Block b(133, 42);
    for (std::size_t i = 0; i < windows.size(); ++i)
        b.u16(6 + 2 * int(i), windows[i]);
    return std::move(b.u16(26, blowTime).u16(28, 12000).u16(30, 10000));
}

Block module(std::uint32_t serial, int tolerance) {
    return std::move(Block(136, 29).u32(6, serial).f32(10, 1000).f32(14, 5600).u8(18, tolerance));
}

Block temperatures(double firstAlarm, int firstBeta) {
    Block b(137, 46);
    const double alarms[] = {firstAlarm, 45.5, 70, 55, 100};
    const int betas[] = {firstBeta, 3950, 4100, 3435, 4500};
    for (int n = 0; n < 5; ++n)
        b.f32(6 + 4 * n, alarms[n]).u16(26 + 2 * n, betas[n]);
    return b;
}

DeviceProfile load(const QString& name) {
    QString error;
    auto p = ProfileLoader::load(
        testsupport::sourcePath(QStringLiteral("tools/profiles/%1.json").arg(name)), error);
    if (!p) qFatal("%s", qPrintable(error));
    return std::move(*p);
}

using Write = std::function<Bytes(const ValueStore&)>;
using Snapshot = QMap<QString, double>;

Snapshot snapshot(const ValueStore& values) {
    Snapshot s;
    for (const std::string& name : values.names())
        s.insert(QString::fromStdString(name), values.get(name));
    return s;
}

} // namespace

Q_DECLARE_METATYPE(Write)

class TestSimDevice : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The search is answered with telegram 1, a read only at the device's own serial number;
    // the second detector's block starts 36 bytes after the first's.
    void readsAnsweredWhereTheToolLooks() {
        const SimClock clock;
        SimDevice device(load(QStringLiteral("full")), clock, false, nullptr);
        const auto read = [&](int command, std::uint32_t serial) {
            return device.respond(Telegram::fromFrame(Block(command, 6, serial).frame()));
        };
        QCOMPARE(read(1, 0).value().at(3), 1);
        QVERIFY(!read(2, 7654321));
        // The detectors' smoke set points, 1500 and 2500, at 99 + 17 and 99 + 36 + 17.
        const Bytes t2 = read(2, kFull).value();
        QCOMPARE(Bytes(t2.begin() + 116, t2.begin() + 118), testsupport::bytes({0x05, 0xDC}));
        QCOMPARE(Bytes(t2.begin() + 152, t2.begin() + 154), testsupport::bytes({0x09, 0xC4}));
    }

    // Each refusal has an accepted neighbour, so that a device that takes no write at all
    // fails too.
    void writeBeyondTheLimitsIsRefused_data() {
        QTest::addColumn<QString>("profile");
        QTest::addColumn<Write>("write");
        QTest::addColumn<Snapshot>("taken"); // empty: nothing changes
        auto fixed = [](const Block& b) {
            return Write([b](const ValueStore&) { return b.frame(); });
        };
        auto parameters = [](int at, int width, int v) {
            return Write([=](const ValueStore& values) {
                Block b = deviceParameters(values);
                return (width == 1 ? b.u8(at, v) : b.u16(at, v)).frame();
            });
        };
        const auto row = [](const char* name, const Write& write, const Snapshot& taken,
                            const char* profile = "full") {
            QTest::newRow(name) << QString(profile) << write << taken;
        };
        row("129 alarm delay within the device's limits", parameters(22, 1, 30),
            {{"controller.alarmDelaySetPoint", 30}});
        row("129 alarm delay above the device's maximum", parameters(22, 1, 61), {});
        row("129 sensitivity below the device's minimum", parameters(18, 2, 99), {});
        row("129 block a byte short", fixed(Block(129, 39)), {});
        row("130 set points within the limits",
            fixed(Block(130, 22).u16(6, 11000).u16(8, 500).u16(10, 1000)),
            {{"airFlow.flowInitIsActive", 1}});
        row("130 air pressure 699", fixed(Block(130, 22).u16(6, 11000).u16(8, 500).u16(10, 699)),
            {});
        row("133 three holes", fixed(localisation({1200, 500, 1600, 1201, 2000, 1601}, 50)),
            {{"localisation.suckTime3Min", 1601}, {"localisation.blowTime", 50}});
        row("133 window upside down", fixed(localisation({500, 1200}, 40)), {});
        row("133 blow time 256", fixed(localisation({1200, 500}, 256)), {});
        row("136 second module", fixed(module(23456, 25)),
            {{"modules[1].resistorValueTolerance", 25}});
        row("136 tolerance 100", fixed(module(23456, 100)), {});
        row("137 first sensor", fixed(temperatures(50.5, 4000)), {{"sensors[0].ntcBeta", 4000}});
        row("137 beta 3399", fixed(temperatures(60, 3399)), {});
        row("137 alarm temperature not a number", fixed(temperatures(std::nan(""), 3977)), {});
        row("138 relay masks", fixed(Block(138, 26).u8(6, 7).u8(7, 0x40)),
            {{"relays.combineMask1", 0x4007}});
        row("138 relay masks of a device without them",
            fixed(Block(138, 26, 1001).u8(6, 7).u8(7, 0x40)), {}, "minimal");
    }

    void writeBeyondTheLimitsIsRefused() {
        QFETCH(QString, profile);
        QFETCH(Write, write);
        QFETCH(Snapshot, taken);
        const SimClock clock;
        SimDevice device(load(profile), clock, false, nullptr);
        QSignalSpy events(&device, &BusDevice::notable);
        const Snapshot before = snapshot(device.values());
        QVERIFY(!device.respond(Telegram::fromFrame(write(device.values())))); // never answered
        const Snapshot after = snapshot(device.values());
        if (taken.isEmpty()) QCOMPARE(after, before);
        for (auto it = taken.begin(); it != taken.end(); ++it)
            QCOMPARE(after.value(it.key()), it.value());
        const bool refused =
            std::any_of(events.begin(), events.end(), [](const QList<QVariant>& e) {
                return e.first().toString() == u"refused";
            });
        QCOMPARE(refused, taken.isEmpty()); // the log tells why the tool's verify loop waits
    }

    void faultsShapeTheAnswers() {
        FaultOptions options;
        options.badCrcEvery = 2;
        options.noiseBytes = 5;
        options.splitGapMs = 60;
        options.silenceStart = 1;
        options.silenceSeconds = 2;
        FaultInjector faults(options);
        const Bytes answer = deviceFrame(10, 2, kFull, Bytes(183, 7), true).value();
        for (int n = 1; n <= 4; ++n) {
            bool corrupted = false;
            const std::vector<Burst> bursts = faults.shape(answer, corrupted);
            QCOMPARE(bursts.size(), std::size_t(3));
            QVERIFY(bursts[0].isNoise && bursts[0].bytes.size() == 5 && bursts[0].delayMs == 0);
            QVERIFY(!bursts[1].isNoise && bursts[1].delayMs == 0 && !bursts[2].isNoise);
            QCOMPARE(bursts[2].delayMs, 60);
            Bytes sent = bursts[1].bytes;
            sent.insert(sent.end(), bursts[2].bytes.begin(), bursts[2].bytes.end());
            QCOMPARE(corrupted, n % 2 == 0);
            QVERIFY(checksum::CheckSumOfBytes(sent)); // the tool's finder takes it
            QCOMPARE(checksum::CheckCRC(sent, 2, int(sent.size()) - 3) == 0, !corrupted);
        }
        QVERIFY(!faults.silentAt(0.9) && faults.silentAt(1.1) && faults.silentAt(2.9));
        QVERIFY(!faults.silentAt(3.1));
    }

    // Garbage, given up on once the line is quiet, leaves the reader ready for the next frame
    // in chunks of any size.
    void frameReaderRecoversFromAnyBytes() {
        constexpr quint32 kSeed = 20070315;
        QRandomGenerator random(kSeed);
        const Bytes frames[] = {frameOf(testsupport::bytes({10, 2, 0, 0x12, 0xD6, 0x87})),
                                frameOf(Bytes(40, 0x02)), telegram::ZeroCommand()};
        FrameReader reader;
        for (int round = 0; round < 300; ++round) {
            const QString where = QStringLiteral("seed %1, round %2").arg(kSeed).arg(round);
            Bytes garbage(std::size_t(random.bounded(0, 300)));
            for (std::uint8_t& b : garbage)
                b = std::uint8_t(random.bounded(256));
            reader.feed(garbage);
            reader.flush();
            QVERIFY2(!reader.hasPending(), qPrintable(where));
            const Bytes& frame = frames[random.bounded(3)];
            std::vector<FrameReader::Item> items;
            for (std::size_t at = 0; at < frame.size();) {
                const auto n = std::min(frame.size() - at, std::size_t(random.bounded(1, 9)));
                for (FrameReader::Item& item :
                     reader.feed(Bytes(frame.begin() + std::ptrdiff_t(at),
                                       frame.begin() + std::ptrdiff_t(at + n))))
                    items.push_back(std::move(item));
                at += n;
            }
            QVERIFY2(items.size() == 1 && items[0].isFrame && items[0].bytes == frame,
                     qPrintable(where));
        }
    }
};

QTEST_GUILESS_MAIN(TestSimDevice)
#include "tst_simdevice.moc"
