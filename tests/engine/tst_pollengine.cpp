#include "engine/pollengine.h"
#include "link/telegram.h"
#include "support/fakes.h"
#include "values/valuestore.h"

#include <QSignalSpy>
#include <QTest>

namespace {

using testsupport::kSerial;

Bytes readFrame(int command) {
    return telegram::MakeSendFrame({10, static_cast<std::uint8_t>(command), 0x00, 0x12, 0xD6, 0x87},
                                   true)
        .value();
}

Bytes writeBlock(int command) {
    return {10, static_cast<std::uint8_t>(command), 0x00, 0x12, 0xD6, 0x87, 0x01, 0x02};
}

Bytes writeFrame(int command) {
    return telegram::MakeSendFrame(writeBlock(command), true).value();
}

using Setter = std::int16_t (ValueStore::*)(Bytes);

// A program on fakes with its port open and device 1234567 shown.
struct PollRig {
    TestApp t;
    Program& app = *t.app;
    PollEngine& engine = app.engine();

    PollRig() {
        t.port.open(1);
        app.forms().frmMQ27D().setChecked(QStringLiteral("chkSendEnable"), true);
        app.session().setSerialNo(QString::number(kSerial));
    }

    QList<Bytes> takeSent() {
        QList<Bytes> frames;
        for (const QByteArray& w : t.port.written)
            frames << toBytes(w);
        t.port.written.clear();
        return frames;
    }

    void queueWrite(Setter set, int command) {
        (app.createValues().*set)(writeBlock(command));
        engine.SendCommand(command);
    }
};

} // namespace

Q_DECLARE_METATYPE(Setter)

class TestPollEngine : public QObject {
    Q_OBJECT

private slots:
    // Silence repeats the same read, and Stop halts both timers.
    void readTelegramGoesToTheShownSerialNumber() {
        PollRig rig;
        rig.engine.SetNextRead(4);
        rig.engine.tmrAutoSend().enable();
        for (int i = 0; i < 3; ++i) {
            rig.engine.tmrAutoSend_Timer();
            QCOMPARE(rig.takeSent(), QList<Bytes>{readFrame(4)});
            QVERIFY(rig.engine.tmrTimeout().isEnabled());
            QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
            rig.engine.tmrTimeout_Timer();
            QVERIFY(!rig.engine.tmrTimeout().isEnabled());
            QVERIFY(rig.engine.tmrAutoSend().isEnabled());
        }
        rig.engine.Stop();
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
        QVERIFY(!rig.engine.tmrTimeout().isEnabled());
    }

    void queuedWriteGoesOutOnceWithItsReadBack_data() {
        QTest::addColumn<int>("command");
        QTest::addColumn<Setter>("set");
        QTest::addColumn<int>("readBack");
        QTest::newRow("129") << 129 << &ValueStore::SetDeviceParameter << 2;
        QTest::newRow("130") << 130 << &ValueStore::SetAirFlowInitParameter << 2;
        QTest::newRow("131") << 131 << &ValueStore::SetResetAlarmAndFault << 2;
        QTest::newRow("132") << 132 << &ValueStore::SetResetMessages << 3;
        QTest::newRow("133") << 133 << &ValueStore::SetLocalizationParameter << 2;
        QTest::newRow("134") << 134 << &ValueStore::SetLocalizationParameterLearnMode << 2;
        QTest::newRow("135") << 135 << &ValueStore::SetLocalizationAbortLearnMode << 2;
        QTest::newRow("136") << 136 << &ValueStore::SetExtinguisherParameter << 5;
        QTest::newRow("137") << 137 << &ValueStore::SetTemperatureParameter << 3;
        QTest::newRow("138") << 138 << &ValueStore::SetRelayParameter << 3;
        QTest::newRow("139") << 139 << &ValueStore::SetExtinguisherIdent << 2;
    }
    void queuedWriteGoesOutOnceWithItsReadBack() {
        QFETCH(int, command);
        QFETCH(Setter, set);
        QFETCH(int, readBack);
        PollRig rig;
        QSignalSpy written(&rig.engine, &PollEngine::WriteSent);
        rig.queueWrite(set, command);
        QVERIFY(rig.engine.IsWriteQueued());
        QVERIFY(rig.engine.tmrAutoSend().isEnabled());
        QVERIFY2(rig.engine.tmrAutoSend().interval() > 99,
                 "a queued write waits longer than a read");

        rig.engine.tmrAutoSend_Timer();
        QCOMPARE(rig.takeSent(), QList<Bytes>{writeFrame(command)});
        QCOMPARE(written.size(), 1);
        QCOMPARE(written.first().first().toInt(), command);
        QCOMPARE(rig.engine.NextCommand(), readBack);
        QVERIFY(!rig.engine.IsWriteQueued());

        // The device stays silent: what is repeated is the read-back, never the write.
        for (int i = 0; i < 2; ++i) {
            rig.engine.tmrTimeout_Timer();
            rig.engine.tmrAutoSend_Timer();
            QCOMPARE(rig.takeSent(), QList<Bytes>{readFrame(readBack)});
        }
        QCOMPARE(written.size(), 1);
    }

    // A write never prepared still moves on to its read-back, an unknown command to 2, and a
    // serial number that is no number sends nothing; the poll ticks on all the same.
    void nothingToSendMovesOn_data() {
        QTest::addColumn<int>("command");
        QTest::addColumn<QString>("serial");
        QTest::addColumn<int>("next");
        const QString good = QString::number(kSerial);
        QTest::newRow("132 never prepared") << 132 << good << 3;
        for (int command : {0, 6, 128, 140, -1})
            QTest::addRow("%d", command) << command << good << 2;
        QTest::newRow("serial text") << 2 << "abc" << 2;
        QTest::newRow("serial beyond four bytes") << 2 << "4294967296" << 2;
        QTest::newRow("serial negative") << 2 << "-1" << 2;
    }
    void nothingToSendMovesOn() {
        QFETCH(int, command);
        QFETCH(QString, serial);
        PollRig rig;
        rig.app.session().setSerialNo(serial);
        QSignalSpy written(&rig.engine, &PollEngine::WriteSent);
        rig.engine.SendCommand(command);
        rig.engine.tmrAutoSend_Timer();
        QVERIFY(rig.takeSent().isEmpty());
        QTEST(rig.engine.NextCommand(), "next");
        QVERIFY(rig.engine.tmrTimeout().isEnabled());
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
        rig.engine.tmrTimeout_Timer();
        QVERIFY(rig.engine.tmrAutoSend().isEnabled());
        QVERIFY(written.isEmpty());
    }

    void secondSendCommandReplacesTheFirst() {
        PollRig rig;
        rig.queueWrite(&ValueStore::SetDeviceParameter, 129);
        rig.queueWrite(&ValueStore::SetTemperatureParameter, 137);
        rig.engine.tmrAutoSend_Timer();
        QCOMPARE(rig.takeSent(), QList<Bytes>{writeFrame(137)});
        QCOMPARE(rig.engine.NextCommand(), 3);
    }
};

QTEST_GUILESS_MAIN(TestPollEngine)
#include "tst_pollengine.moc"
