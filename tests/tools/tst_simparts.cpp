// The pieces of the virtual device that need no line: the frame reader, the offset table,
// the fault injector, the device's limits and the command line.
#include "sim/frame_reader.h"
#include "sim/setting_limits.h"
#include "sim/sim_options.h"
#include "sim/value_table.h"
#include "tools/simclient.h"

#include <map>

using namespace simtest;
using mq27sim::FrameReader;

namespace {

struct ReaderResult {
    int frames = 0;
    int noiseBytes = 0;
    bool pending = false;
};

ReaderResult feedAll(const std::vector<Bytes>& chunks, bool flushAtEnd) {
    FrameReader reader;
    ReaderResult r;
    auto count = [&r](const std::vector<FrameReader::Item>& items) {
        for (const auto& item : items) {
            if (item.isFrame)
                ++r.frames;
            else
                r.noiseBytes += int(item.bytes.size());
        }
    };
    for (const Bytes& chunk : chunks)
        count(reader.feed(chunk));
    if (flushAtEnd) count(reader.flush());
    r.pending = reader.hasPending();
    return r;
}

std::vector<Bytes> bytewise(const Bytes& bytes) {
    std::vector<Bytes> chunks;
    for (std::uint8_t b : bytes)
        chunks.push_back({b});
    return chunks;
}

} // namespace

using Chunks = std::vector<Bytes>;
Q_DECLARE_METATYPE(Chunks)

class TestSimParts : public QObject {
    Q_OBJECT

private slots:
    void frameReaderFindsFramesInAnyChunks_data() {
        QTest::addColumn<Chunks>("chunks");
        QTest::addColumn<bool>("flush");
        QTest::addColumn<int>("frames");
        QTest::addColumn<int>("noise");
        QTest::addColumn<bool>("pending");
        const Bytes read = readRequest(2, 1234567);
        const Bytes write = frameOf(Bytes(40, 7));
        const Bytes half(read.begin(), read.begin() + 5);
        QTest::newRow("one frame") << Chunks{read} << false << 1 << 0 << false;
        QTest::newRow("byte by byte") << bytewise(read) << false << 1 << 0 << false;
        QTest::newRow("two frames in one chunk")
            << Chunks{concat({read, write})} << false << 2 << 0 << false;
        QTest::newRow("noise around a frame")
            << Chunks{testsupport::bytes({0xFF, 0x13}), read, testsupport::bytes({0x55})} << false
            << 1 << 3 << false;
        QTest::newRow("half a frame waits") << Chunks{half} << false << 0 << 0 << true;
        QTest::newRow("half a frame, then quiet") << Chunks{half} << true << 0 << 5 << false;
        QTest::newRow("half a frame, then a whole one")
            << Chunks{half, read} << false << 1 << 5 << false;
        QTest::newRow("stray STX announcing a long frame")
            << Chunks{testsupport::bytes({0x02, 0xC8, 0x0A}), read} << false << 1 << 3 << false;
        QTest::newRow("extended header announcing too much")
            << Chunks{concat({testsupport::bytes({0x02, 0xFF, 0x7F, 0xFF}), read})} << false << 1
            << 4 << false;
        QTest::newRow("zero command")
            << Chunks{telegram::ZeroCommand()} << false << 1 << 0 << false;
    }

    void frameReaderFindsFramesInAnyChunks() {
        QFETCH(Chunks, chunks);
        QFETCH(bool, flush);
        const ReaderResult r = feedAll(chunks, flush);
        QTEST(r.frames, "frames");
        QTEST(r.noiseBytes, "noise");
        QTEST(r.pending, "pending");
    }

    void frameReaderDropsAFrameWithAWrongSum() {
        Bytes bad = readRequest(2, 1234567);
        bad.back() ^= 0x10;
        const ReaderResult r = feedAll({bad, readRequest(3, 1234567)}, false);
        QCOMPARE(r.frames, 1);
        QCOMPARE(r.noiseBytes, 12);
    }

    void frameReaderSurvivesRandomBytes() {
        QRandomGenerator random(42);
        FrameReader reader;
        for (int round = 0; round < 200; ++round) {
            Bytes chunk(random.bounded(1, 300));
            for (auto& b : chunk)
                b = std::uint8_t(random.bounded(256));
            reader.feed(chunk);
        }
        reader.flush();
        QVERIFY(!reader.hasPending());
        const auto items = reader.feed(readRequest(1, 5));
        QCOMPARE(int(items.size()), 1);
        QVERIFY(items[0].isFrame);
    }

    // Every value lies inside the data of its telegram, and no two values share a bit.
    void offsetTableFitsItsTelegrams() {
        std::map<int, std::vector<int>> owners; // telegram -> bit owner count
        for (int command : {2, 3, 5})
            owners[command].assign(std::size_t(mq27sim::dataSize(command)) * 8, 0);
        for (const auto& section : mq27sim::valueSections()) {
            for (int index = 0; index < section.count; ++index) {
                for (const auto& layout : section.values) {
                    const int start =
                        section.absoluteOffset(layout, index) - mq27sim::dataStart(section.command);
                    const int width = mq27sim::byteWidth(layout);
                    const QString name = QString::fromStdString(section.nameOf(layout, index));
                    QVERIFY2(start >= 0 && start + width <= mq27sim::dataSize(section.command),
                             qPrintable(name));
                    const bool bits = layout.encoding == mq27sim::Encoding::Bits;
                    const int first = start * 8 + (bits ? layout.firstBit : 0);
                    const int count = bits ? layout.width : width * 8;
                    for (int bit = first; bit < first + count; ++bit)
                        QVERIFY2(++owners[section.command][std::size_t(bit)] == 1,
                                 qPrintable(name));
                }
            }
        }
    }

    void encodingPutsNumbersBigEndianAndMasksLowByteFirst() {
        mq27sim::ValueStore v;
        v.define("airFlow.altitude", -100);
        v.define("airFlow.flowValue", 1.0);
        v.define("controller.softwareNum", mq27sim::packVersion(1234, 5, 12));
        v.define("faults.pending", double(1U << 31 | 1U << 3));
        v.define("detectors[1].preAlarmLED", 3);
        const Bytes t2 = mq27sim::encodeData(2, v, 0);
        QCOMPARE(t2[20 - 8], 0xFF);
        QCOMPARE(t2[21 - 8], 0x9C);
        QCOMPARE(t2[8 - 8], 0x3F);
        QCOMPARE(t2[9 - 8], 0x80);
        QCOMPARE(t2[135 + 24 - 8], 0x0C);
        const Bytes t3 = mq27sim::encodeData(3, v, 0);
        QCOMPARE(t3[8 - 8], 0x04); // 1234 = 0x04D2
        QCOMPARE(t3[9 - 8], 0xD2);
        QCOMPARE(t3[10 - 8], 5);
        QCOMPARE(t3[11 - 8], 12);
        QCOMPARE(t3[152 - 8], 0x08);
        QCOMPARE(t3[155 - 8], 0x80);
    }

    void driftStaysAroundTheValue() {
        mq27sim::ValueStore v;
        v.define("detectors[0].smokeValueRatio", 20);
        v.setDrift("detectors[0].smokeValueRatio", {5, 40});
        QCOMPARE(v.live("detectors[0].smokeValueRatio", 0), 20.0);
        QCOMPARE(v.live("detectors[0].smokeValueRatio", 10), 25.0);
        QCOMPARE(v.live("detectors[0].smokeValueRatio", 30), 15.0);
        v.define("detectors[0].smokeValueRatio", 250);
        v.setDrift("detectors[0].smokeValueRatio", {20, 40});
        const Bytes t2 = mq27sim::encodeData(2, v, 10); // 270 is clamped to the byte
        QCOMPARE(t2[99 + 23 - 8], 255);
    }

    void limitsComeFromTheDeviceOrAreFixed() {
        const DeviceProfile full = profile("full");
        const auto& v = full.values;
        const auto sensitivity = mq27sim::settingRange(v, "detectors[1].smokeValue10SetPoint");
        QVERIFY(sensitivity);
        QCOMPARE(sensitivity->min, 200.0);
        QCOMPARE(sensitivity->max, 8000.0);
        const auto fan = mq27sim::settingRange(v, "fans.blowFanLrnVoltage");
        QCOMPARE(fan->min, 9000.0);
        QCOMPARE(fan->max, 13500.0);
        QCOMPARE(mq27sim::settingRange(v, "airFlow.airPressureSetPoint")->min, 700.0);
        QVERIFY(!mq27sim::settingRange(v, "display.ledOp"));
    }

    void commandLine_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("outcome");
        using mq27sim::CommandLine;
        QTest::newRow("nothing") << QStringList{} << int(CommandLine::Run);
        QTest::newRow("help") << QStringList{"--help"} << int(CommandLine::Help);
        QTest::newRow("everything") << QStringList{"--profile",
                                                   "a.json",
                                                   "--profile",
                                                   "b.json",
                                                   "--delay",
                                                   "10",
                                                   "--speed",
                                                   "2.5",
                                                   "--unsolicited",
                                                   "3:1",
                                                   "--bad-crc-every",
                                                   "5",
                                                   "--noise",
                                                   "8",
                                                   "--split-gap",
                                                   "400",
                                                   "--silence",
                                                   "1:2",
                                                   "--pace",
                                                   "--close-after",
                                                   "9",
                                                   "--log",
                                                   "x.log",
                                                   "--link",
                                                   "/tmp/p",
                                                   "--no-drift"}
                                    << int(CommandLine::Run);
        QTest::newRow("speed 0") << QStringList{"--speed", "0"} << int(CommandLine::Error);
        QTest::newRow("delay not a number")
            << QStringList{"--delay", "x"} << int(CommandLine::Error);
        QTest::newRow("unsolicited command 9")
            << QStringList{"--unsolicited", "3:9"} << int(CommandLine::Error);
        QTest::newRow("silence of three parts")
            << QStringList{"--silence", "1:2:3"} << int(CommandLine::Error);
        QTest::newRow("unknown option") << QStringList{"--colour"} << int(CommandLine::Error);
        QTest::newRow("stray argument") << QStringList{"full.json"} << int(CommandLine::Error);
    }

    void commandLine() {
        QFETCH(QStringList, arguments);
        QFETCH(int, outcome);
        mq27sim::SimOptions options;
        QString message;
        const auto result =
            mq27sim::parseCommandLine(QStringList{"mq27sim"} + arguments, options, message);
        QCOMPARE(int(result), outcome);
        QCOMPARE(message.isEmpty(), outcome == int(mq27sim::CommandLine::Run));
    }

    void commandLineFillsTheOptions() {
        mq27sim::SimOptions o;
        QString message;
        mq27sim::parseCommandLine({"mq27sim", "--profile", "a.json", "--profile", "b.json",
                                   "--unsolicited", "2.5", "--silence", "4", "--pace"},
                                  o, message);
        QCOMPARE(int(o.profiles.size()), 2);
        QCOMPARE(o.unsolicitedSeconds, 2.5);
        QCOMPARE(o.unsolicitedCommand, 0);
        QCOMPARE(o.faults.silenceStart, 4.0);
        QVERIFY(o.faults.silentForever);
        QVERIFY(o.faults.pace);
        QCOMPARE(o.answerDelayMs, 30);
    }
};

QTEST_GUILESS_MAIN(TestSimParts)
#include "tst_simparts.moc"
