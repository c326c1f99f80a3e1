#include "engine/pollengine.h"
#include "engine/telegramdecoder.h"
#include "link/seriallink.h"
#include "link/telegram.h"
#include "support/fakes.h"
#include "support/testsupport.h"
#include "values/valuestore.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

namespace {

constexpr std::uint32_t kSerial = 1234567; // 00 12 D6 87
using testsupport::kRecorded;

Bytes serialBytes(std::uint32_t serial) {
    return {static_cast<std::uint8_t>(serial >> 24), static_cast<std::uint8_t>(serial >> 16),
            static_cast<std::uint8_t>(serial >> 8), static_cast<std::uint8_t>(serial)};
}

Bytes deviceFrame(int command, std::uint32_t serial = kSerial) {
    return testsupport::deviceFrame(command, serial);
}

Bytes ownTelegram(int command, std::uint32_t serial = kSerial) {
    return testsupport::ownTelegram(command, serial);
}

Bytes readFrame(int command, std::uint32_t serial = kSerial) {
    Bytes body{10, static_cast<std::uint8_t>(command)};
    const Bytes serialPart = serialBytes(serial);
    body.insert(body.end(), serialPart.begin(), serialPart.end());
    return telegram::MakeSendFrame(body, true).value();
}

Bytes writeBlock(int command) {
    return {10, static_cast<std::uint8_t>(command), 0x00, 0x12, 0xD6, 0x87, 0x01, 0x02};
}

Bytes writeFrame(int command) {
    return telegram::MakeSendFrame(writeBlock(command), true).value();
}

using Setter = std::int16_t (ValueStore::*)(Bytes);

Setter setterOf(int command) {
    switch (command) {
    case 129:
        return &ValueStore::SetDeviceParameter;
    case 130:
        return &ValueStore::SetAirFlowInitParameter;
    case 131:
        return &ValueStore::SetResetAlarmAndFault;
    case 132:
        return &ValueStore::SetResetMessages;
    case 133:
        return &ValueStore::SetLocalizationParameter;
    case 134:
        return &ValueStore::SetLocalizationParameterLearnMode;
    case 135:
        return &ValueStore::SetLocalizationAbortLearnMode;
    case 136:
        return &ValueStore::SetExtinguisherParameter;
    case 137:
        return &ValueStore::SetTemperatureParameter;
    case 138:
        return &ValueStore::SetRelayParameter;
    default:
        return &ValueStore::SetExtinguisherIdent;
    }
}

// A program on fakes with its port open and device 1234567 shown.
struct Rig {
    TestApp t;
    Program& app = *t.app;
    PollEngine& engine = app.engine();

    Rig() {
        t.port.open(1);
        app.forms().frmMQ27D().setChecked(QStringLiteral("chkSendEnable"), true);
        app.session().setSerialNo(QString::number(kSerial));
    }

    QList<Bytes> takeSent() {
        QList<Bytes> frames;
        for (const QByteArray& w : t.port.written)
            frames << Bytes(w.begin(), w.end());
        t.port.written.clear();
        return frames;
    }

    void answer(int command) { app.decoder().DataDecoder(ownTelegram(command)); }

    void queueWrite(int command) {
        (app.createValues().*setterOf(command))(writeBlock(command));
        engine.SendCommand(command);
    }
};

} // namespace

class TestPollEngine : public QObject {
    Q_OBJECT

private slots:
    void bothTimersStopAtStart() {
        Rig rig;
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
        QVERIFY(!rig.engine.tmrTimeout().isEnabled());
    }

    void readTelegramGoesToTheShownSerialNumber() {
        Rig rig;
        rig.engine.SetNextRead(4);
        rig.engine.tmrAutoSend().enable();
        rig.engine.tmrAutoSend_Timer();
        QCOMPARE(rig.takeSent(), QList<Bytes>{readFrame(4)});
        QCOMPARE(rig.engine.NextCommand(), 4);
        QVERIFY(rig.engine.tmrTimeout().isEnabled());
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());

        rig.answer(1);
        rig.answer(4);
        QCOMPARE(rig.engine.NextCommand(), 5);
    }

    void steadyCycleIsTwoThreeFive() {
        Rig rig;
        rig.answer(1);
        QList<int> asked;
        for (int i = 0; i < 6; ++i) {
            rig.engine.tmrAutoSend_Timer();
            const QList<Bytes> sent = rig.takeSent();
            QCOMPARE(sent.size(), 1);
            const int command = sent.first()[3];
            QCOMPARE(sent.first(), readFrame(command));
            asked << command;
            rig.answer(command);
            QVERIFY(rig.engine.tmrAutoSend().isEnabled());
            QCOMPARE(rig.engine.tmrAutoSend().interval(), 99);
        }
        QCOMPARE(asked, (QList<int>{2, 3, 5, 2, 3, 5}));
    }

    // The same cycle with the device's answers coming in over the line, stamped on arrival.
    void answersFromTheLineDriveTheCycle() {
        Rig rig;
        auto deliver = [&](int command) {
            const Bytes frame = deviceFrame(command);
            rig.t.port.deliver(QByteArray(reinterpret_cast<const char*>(frame.data()),
                                          static_cast<qsizetype>(frame.size())));
            rig.app.link().RcvDataGet();
        };
        deliver(1);
        QList<int> asked;
        for (int i = 0; i < 4; ++i) {
            rig.engine.tmrAutoSend_Timer();
            const QList<Bytes> sent = rig.takeSent();
            QCOMPARE(sent.size(), 1);
            asked << sent.first()[3];
            deliver(sent.first()[3]);
        }
        QCOMPARE(asked, (QList<int>{2, 3, 5, 2}));
        QCOMPARE(rig.app.session().telegramTime(), rig.t.clock.time);
        QVERIFY(rig.app.forms().frmDisplay().isShown());
    }

    void silenceRepeatsTheSameRead() {
        Rig rig;
        rig.engine.SetNextRead(3);
        for (int i = 0; i < 3; ++i) {
            rig.engine.tmrAutoSend_Timer();
            QCOMPARE(rig.takeSent(), QList<Bytes>{readFrame(3)});
            rig.engine.tmrTimeout_Timer();
            QVERIFY(!rig.engine.tmrTimeout().isEnabled());
            QVERIFY(rig.engine.tmrAutoSend().isEnabled());
        }
    }

    void queuedWriteGoesOutOnceWithItsReadBack_data() {
        QTest::addColumn<int>("command");
        QTest::addColumn<int>("readBack");
        for (int command = 129; command <= 139; ++command) {
            const int readBack = command == 136                                       ? 5
                                 : command == 132 || command == 137 || command == 138 ? 3
                                                                                      : 2;
            QTest::addRow("%d", command) << command << readBack;
        }
    }
    void queuedWriteGoesOutOnceWithItsReadBack() {
        QFETCH(int, command);
        QFETCH(int, readBack);
        Rig rig;
        QSignalSpy written(&rig.engine, &PollEngine::WriteSent);
        rig.queueWrite(command);
        QVERIFY(rig.engine.IsWriteQueued());
        QCOMPARE(rig.engine.tmrAutoSend().interval(), 299);
        QVERIFY(rig.engine.tmrAutoSend().isEnabled());

        rig.engine.tmrAutoSend_Timer();
        QCOMPARE(rig.takeSent(), QList<Bytes>{writeFrame(command)});
        QCOMPARE(written.size(), 1);
        QCOMPARE(written.first().first().toInt(), command);
        QCOMPARE(rig.engine.NextCommand(), readBack);
        QVERIFY(!rig.engine.IsWriteQueued());
        QCOMPARE(rig.engine.tmrAutoSend().interval(), 99);

        // The device stays silent: what is repeated is the read-back, never the write.
        for (int i = 0; i < 2; ++i) {
            rig.engine.tmrTimeout_Timer();
            rig.engine.tmrAutoSend_Timer();
            QCOMPARE(rig.takeSent(), QList<Bytes>{readFrame(readBack)});
        }
        QCOMPARE(written.size(), 1);
    }

    void writeNeverPreparedSendsNothing() {
        Rig rig;
        QSignalSpy written(&rig.engine, &PollEngine::WriteSent);
        rig.engine.SendCommand(132);
        rig.engine.tmrAutoSend_Timer();
        QVERIFY(rig.takeSent().isEmpty());
        QVERIFY(written.isEmpty());
        QCOMPARE(rig.engine.NextCommand(), 3);
        QVERIFY(rig.engine.tmrTimeout().isEnabled());
    }

    void unknownCommandSendsNothingAndFallsBackToTwo_data() {
        QTest::addColumn<int>("command");
        for (int command : {0, 6, 100, 128, 140, -1, 1000})
            QTest::addRow("%d", command) << command;
    }
    void unknownCommandSendsNothingAndFallsBackToTwo() {
        QFETCH(int, command);
        Rig rig;
        rig.engine.SendCommand(command);
        rig.engine.tmrAutoSend_Timer();
        QVERIFY(rig.takeSent().isEmpty());
        QCOMPARE(rig.engine.NextCommand(), 2);
        QVERIFY(rig.engine.tmrTimeout().isEnabled());
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
        QCOMPARE(rig.engine.tmrAutoSend().interval(), 99);
    }

    void serialNumberThatIsNoNumberSendsNothingButTicksOn_data() {
        QTest::addColumn<QString>("caption");
        QTest::newRow("empty") << QString();
        QTest::newRow("text") << QStringLiteral("abc");
        QTest::newRow("beyond four bytes") << QStringLiteral("4294967296");
        QTest::newRow("negative") << QStringLiteral("-1");
    }
    void serialNumberThatIsNoNumberSendsNothingButTicksOn() {
        QFETCH(QString, caption);
        Rig rig;
        rig.app.session().setSerialNo(caption);
        rig.engine.SetNextRead(2);
        for (int i = 0; i < 2; ++i) {
            rig.engine.tmrAutoSend_Timer();
            QVERIFY(rig.takeSent().isEmpty());
            QVERIFY(rig.engine.tmrTimeout().isEnabled());
            rig.engine.tmrTimeout_Timer();
            QVERIFY(rig.engine.tmrAutoSend().isEnabled());
        }
        QCOMPARE(rig.engine.NextCommand(), 2);
    }

    void answerInFlightDoesNotDisplaceAQueuedWrite() {
        Rig rig;
        rig.answer(1);
        rig.engine.tmrAutoSend_Timer(); // read 2 in flight
        rig.takeSent();
        rig.queueWrite(131);

        const Bytes answer2 = ownTelegram(2);
        rig.app.decoder().DataDecoder(answer2);
        Bytes stored;
        rig.app.values()->GetDataArray(stored, 2);
        QCOMPARE(stored, answer2);
        QCOMPARE(rig.engine.NextCommand(), 131);
        QVERIFY(rig.engine.IsWriteQueued());

        rig.engine.tmrAutoSend_Timer();
        QCOMPARE(rig.takeSent(), QList<Bytes>{writeFrame(131)});
    }

    void secondSendCommandReplacesTheFirst() {
        Rig rig;
        (rig.app.createValues().*setterOf(129))(writeBlock(129));
        rig.engine.SendCommand(129);
        rig.queueWrite(137);
        rig.engine.tmrAutoSend_Timer();
        QCOMPARE(rig.takeSent(), QList<Bytes>{writeFrame(137)});
        QCOMPARE(rig.engine.NextCommand(), 3);
    }

    void stopHaltsBothTimers() {
        Rig rig;
        rig.engine.SendCommand(2);
        rig.engine.tmrTimeout().enable();
        rig.engine.Stop();
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
        QVERIFY(!rig.engine.tmrTimeout().isEnabled());
    }

    // The real timers: a write 299 ms after SendCommand, then, with the device silent, the
    // read-back after 888 + 99 ms.
    void queuedWriteOnASilentLineKeepsItsPace() {
        Rig rig;
        struct Tick {
            qint64 ms;
            QList<Bytes> sent;
            int interval;
        };
        QList<Tick> ticks;
        QElapsedTimer clock;
        connect(&rig.engine.tmrAutoSend(), &FormTimer::timeout, this, [&] {
            ticks << Tick{clock.elapsed(), rig.takeSent(), rig.engine.tmrAutoSend().interval()};
        });
        clock.start();
        rig.queueWrite(131);
        QTRY_COMPARE_WITH_TIMEOUT(ticks.size(), 2, 4000);
        rig.engine.Stop();

        QCOMPARE(ticks[0].sent, QList<Bytes>{writeFrame(131)});
        QVERIFY2(ticks[0].ms >= 299 && ticks[0].ms < 299 + 250,
                 qPrintable(QString::number(ticks[0].ms)));
        QCOMPARE(ticks[1].sent, QList<Bytes>{readFrame(2)});
        const qint64 gap = ticks[1].ms - ticks[0].ms;
        QVERIFY2(gap >= 888 + 99 - 5 && gap < 888 + 99 + 250, qPrintable(QString::number(gap)));
        QCOMPARE(ticks[1].interval, 99);
    }
};

QTEST_GUILESS_MAIN(TestPollEngine)
#include "tst_pollengine.moc"
