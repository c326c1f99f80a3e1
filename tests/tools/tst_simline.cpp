// The line of the virtual device: bad input, several devices, devices of other families,
// telegrams sent unasked, the injected faults and the log.
#include "sim/sim_device.h"
#include "tools/simclient.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace simtest;

namespace {

constexpr std::uint32_t kFull = 1234567;

// Every acceptable frame in a burst, in order.
std::vector<Bytes> framesIn(Bytes burst) {
    std::vector<Bytes> frames;
    std::int32_t first = 0, last = 0;
    while (modChecksum::FindTelegram(burst, first, last) >= 0) {
        frames.insert(frames.begin(), Bytes(burst.begin() + first, burst.begin() + last + 1));
        burst.resize(std::size_t(first));
    }
    return frames;
}

std::uint32_t serialOf(const Bytes& frame) {
    return be32(frame, telegram::HeaderLength(frame) + 2);
}

QList<QJsonObject> logLines(const QString& path) {
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    QList<QJsonObject> lines;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (!line.isEmpty()) lines << QJsonDocument::fromJson(line).object();
    return lines;
}

} // namespace

class TestSimLine : public QObject {
    Q_OBJECT

private slots:
    void badInputLeavesTheDeviceAnswering_data() {
        QTest::addColumn<Bytes>("garbage");
        QRandomGenerator random(7);
        Bytes noise(600);
        for (auto& b : noise)
            b = std::uint8_t(random.bounded(256));
        const Bytes request = readRequest(2, kFull);
        QTest::newRow("random bytes") << noise;
        QTest::newRow("half a frame") << Bytes(request.begin(), request.begin() + 6);
        QTest::newRow("stray STX announcing a long frame")
            << testsupport::bytes({0x02, 0xC8, 0x0A});
        QTest::newRow("frame for another device") << readRequest(2, 4711);
        QTest::newRow("write with a short block")
            << frameOf(concat({body(10, 129, kFull), {1, 2}}));
        QTest::newRow("write with a wrong CRC")
            << telegram::MakeSendFrame(concat({body(10, 131, kFull), {255, 255, 0, 0}}), false)
                   .value();
        QTest::newRow("only STX bytes") << Bytes(50, 0x02);
        QTest::newRow("extended header of 65535 bytes")
            << testsupport::bytes({0x02, 0xFF, 0xFF, 0xFF, 0x0A});
    }

    void badInputLeavesTheDeviceAnswering() {
        QFETCH(Bytes, garbage);
        auto sim = startSimulator({profile("full")});
        SimClient client(sim->portPath());
        const auto before = sim->ownDevice()->values().names().size();
        client.send(garbage);
        QVERIFY(!client.awaitFrame(100));
        const auto answer = client.request(readRequest(2, kFull), 800);
        QVERIFY(answer);
        QCOMPARE(int(answer->size()), 195);
        QCOMPARE(sim->ownDevice()->values().get("faults.pending"), 2147483648.0 + 4194304 + 8);
        QCOMPARE(sim->ownDevice()->values().names().size(), before);
    }

    void requestInSmallPiecesIsAnswered() {
        auto sim = startSimulator({profile("full")});
        SimClient client(sim->portPath());
        for (std::uint8_t b : readRequest(3, kFull)) {
            client.send({b});
            QTest::qWait(3);
        }
        const auto answer = client.awaitFrame();
        QVERIFY(answer);
        QCOMPARE(int(answer->size()), 204);
    }

    void portCanBeClosedAndOpenedAgain() {
        auto sim = startSimulator({profile("minimal")});
        for (int round = 0; round < 3; ++round) {
            SimClient client(sim->portPath());
            QVERIFY(client.isOpen());
            QVERIFY(client.request(readRequest(1, 1001)));
        }
    }

    void everyDeviceAnswersTheSearchAndOnlyItsOwnSerialNumber() {
        auto sim = startSimulator({profile("minimal"), profile("full"), profile("tenmodules")});
        SimClient client(sim->portPath());
        client.send(readRequest(1, 0));
        const std::vector<Bytes> answers = framesIn(client.readFor(150));
        QCOMPARE(int(answers.size()), 3);
        QCOMPARE(serialOf(answers[0]), 1001u);
        QCOMPARE(serialOf(answers[1]), kFull);
        QCOMPARE(serialOf(answers[2]), 3100010u);
        for (std::uint32_t serial : {1001u, kFull, 3100010u}) {
            client.send(readRequest(5, serial));
            const std::vector<Bytes> one = framesIn(client.readFor(120));
            QCOMPARE(int(one.size()), 1);
            QCOMPARE(serialOf(one[0]), serial);
        }
    }

    void deviceSendsByItselfWhenAsked() {
        SimOptions options = quickOptions();
        options.unsolicitedSeconds = 0.1;
        auto sim = startSimulator({profile("minimal"), profile("full")}, options);
        SimClient client(sim->portPath());
        const std::vector<Bytes> frames = framesIn(client.readFor(550));
        QVERIFY(frames.size() >= 6);
        QSet<std::uint32_t> serials;
        for (const Bytes& f : frames) {
            QCOMPARE(int(f.size()), 195);
            serials.insert(serialOf(f));
        }
        QCOMPARE(serials, (QSet<std::uint32_t>{1001, kFull}));
    }

    void profileCanAskForTelegramOneUnasked() {
        DeviceProfile p = profile("minimal");
        p.unsolicited = {0.1, 1};
        auto sim = startSimulator({std::move(p)});
        SimClient client(sim->portPath());
        const auto frame = client.awaitFrame(500);
        QVERIFY(frame);
        QCOMPARE(*frame, readRequest(1, 1001)); // telegram 1 has the shape of the request
    }

    void firstFamilyAnswersTheZeroCommand() {
        auto sim = startSimulator({profile("varlix"), profile("full")});
        SimClient client(sim->portPath());
        QVERIFY(!client.request(readRequest(2, 3001), 150));
        const auto answer = client.request(telegram::ZeroCommand());
        QVERIFY(answer);
        QCOMPARE(int(answer->size()), 52);
        QCOMPARE(int((*answer)[1]), 48);
        QCOMPARE(int((*answer)[2]), 1);
        QCOMPARE(serialOf(*answer), 3001u);
        client.send(readRequest(1, 0));
        const auto search = framesIn(client.readFor(120));
        QCOMPARE(int(search.size()), 1); // only the device of this family
        QCOMPARE(serialOf(search[0]), kFull);
    }

    void seventhFamilyAnswersItsSearch() {
        auto sim = startSimulator({profile("minlix")});
        SimClient client(sim->portPath());
        QVERIFY(!client.request(readRequest(1, 0), 150));
        const Bytes search =
            testsupport::bytes({0x02, 0x08, 0x07, 0x01, 0, 0, 0, 0, 0x62, 0x10, 0x00, 0x84});
        const auto answer = client.request(search);
        QVERIFY(answer);
        QCOMPARE(int(answer->size()), 32);
        QCOMPARE(serialOf(*answer), 7001u);
        const auto stamped = telegram::StampTelegram(*answer, QDateTime::currentDateTime());
        const auto accepted = telegram::AcceptStampedTelegram(stamped.value());
        QVERIFY(accepted);
        QCOMPARE(accepted->deviceKind, 7);
    }

    void everyNthAnswerHasAWrongCrc() {
        SimOptions options = quickOptions();
        options.faults.badCrcEvery = 3;
        auto sim = startSimulator({profile("full")}, options);
        SimClient client(sim->portPath());
        for (int answer = 1; answer <= 6; ++answer) {
            const auto frame = client.request(readRequest(2, kFull));
            QVERIFY(frame); // the sum is right: the finder takes it
            QCOMPARE(modChecksum::CheckCRC(*frame, 2, int(frame->size()) - 3) != 0,
                     answer % 3 == 0);
        }
    }

    void noiseComesBeforeTheAnswer() {
        SimOptions options = quickOptions();
        options.faults.noiseBytes = 25;
        auto sim = startSimulator({profile("full")}, options);
        SimClient client(sim->portPath());
        client.send(readRequest(3, kFull));
        const Bytes burst = client.readFor(100);
        QCOMPARE(int(burst.size()), 25 + 204);
        std::int32_t first = 0, last = 0;
        QCOMPARE(modChecksum::FindTelegram(burst, first, last), 25);
    }

    void answerComesInTwoBurstsFarApart() {
        SimOptions options = quickOptions();
        options.faults.splitGapMs = 400;
        auto sim = startSimulator({profile("full")}, options);
        SimClient client(sim->portPath());
        client.send(readRequest(2, kFull));
        const Bytes firstBurst = client.readFor(321);
        QCOMPARE(int(firstBurst.size()), 97);
        std::int32_t first = 0, last = 0;
        QVERIFY(modChecksum::FindTelegram(firstBurst, first, last) < 0);
        const Bytes secondBurst = client.readFor(250);
        QCOMPARE(int(secondBurst.size()), 98);
        QCOMPARE(modChecksum::FindTelegram(concat({firstBurst, secondBurst}), first, last), 0);
    }

    void silentForAWhile() {
        SimOptions options = quickOptions();
        options.faults.silenceStart = 0;
        options.faults.silenceSeconds = 0.5;
        auto sim = startSimulator({profile("full")}, options);
        SimClient client(sim->portPath());
        QVERIFY(!client.request(readRequest(1, kFull), 200));
        QTest::qWait(350);
        QVERIFY(client.request(readRequest(1, kFull)));
    }

    void pacedLikeNineteenThousandBaud() {
        SimOptions options = quickOptions();
        options.faults.pace = true;
        auto sim = startSimulator({profile("full")}, options);
        SimClient client(sim->portPath());
        client.send(readRequest(5, kFull));
        Bytes in;
        QElapsedTimer clock;
        qint64 firstByte = -1;
        clock.start();
        while (in.size() < 414 && clock.elapsed() < 2000) {
            const Bytes more = client.readFor(1);
            if (!more.empty() && firstByte < 0) firstByte = clock.elapsed();
            in.insert(in.end(), more.begin(), more.end());
        }
        QCOMPARE(int(in.size()), 414);
        const qint64 span = clock.elapsed() - firstByte;
        QVERIFY2(span >= 180 && span < 600, qPrintable(QString::number(span))); // 414 * 0.52 ms
    }

    void closingTheLineIsSurvived() {
        SimOptions options = quickOptions();
        options.faults.closeAfterSeconds = 0.2;
        auto sim = startSimulator({profile("full")}, options);
        QSignalSpy closed(sim.get(), &Simulator::lineClosed);
        SimClient client(sim->portPath());
        QVERIFY(client.request(readRequest(1, kFull)));
        QVERIFY(closed.wait(1000));
        std::uint8_t buffer[16];
        errno = 0;
        const auto n = client.readOnce(buffer, sizeof buffer);
        QVERIFY(n == 0 || (n < 0 && errno != EAGAIN)); // hung up, not merely quiet
        client.send(readRequest(1, kFull));
        QVERIFY(!client.awaitFrame(100));
    }

    void logHoldsFramesNoiseAndEvents() {
        QTemporaryDir dir;
        SimOptions options = quickOptions();
        options.logPath = dir.filePath("sim.log");
        options.faults.badCrcEvery = 2;
        auto sim = startSimulator({profile("full")}, options);
        SimClient client(sim->portPath());
        QVERIFY(client.request(readRequest(2, kFull)));
        client.send(testsupport::bytes({0x55, 0xAA}));
        QTest::qWait(350);
        client.send(frameOf(concat({body(10, 139, kFull), {0, 0, 0, 7}})));
        QVERIFY(client.request(readRequest(1, kFull)));

        const QList<QJsonObject> lines = logLines(options.logPath);
        QCOMPARE(lines.first().value("event").toString(), QString("start"));
        double t = 0;
        QStringList kinds;
        for (const QJsonObject& line : lines) {
            QVERIFY(line.value("t").toDouble() >= t);
            t = line.value("t").toDouble();
            kinds << (line.contains("event")   ? line.value("event").toString()
                      : line.contains("noise") ? line.value("dir").toString() + " noise"
                                               : line.value("dir").toString() +
                                                     QString::number(line.value("cmd").toInt()));
        }
        QCOMPARE(kinds, (QStringList{"start", "in2", "out2", "in noise", "in139", "refused", "in1",
                                     "out1"}));
        const QJsonObject in2 = lines[1];
        QCOMPARE(in2.value("hex").toString(), mq27sim::SimLog::hex(readRequest(2, kFull)));
        QCOMPARE(in2.value("serial").toDouble(), double(kFull));
        QCOMPARE(in2.value("kind").toInt(), 10);
        QCOMPARE(lines[2].value("hex").toString().size(), 195 * 3 - 1);
        QCOMPARE(lines[3].value("noise").toString(), QString("55 AA"));
        QVERIFY(lines[5].value("reason").toString().contains("no module"));
        QCOMPARE(lines[7].value("fault").toString(), QString("bad-crc"));
    }
};

QTEST_GUILESS_MAIN(TestSimLine)
#include "tst_simline.moc"
