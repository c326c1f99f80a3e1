#include "display/mainview.h"
#include "engine/pollengine.h"
#include "engine/telegramdecoder.h"
#include "files/devicefiles.h"
#include "link/telegram.h"
#include "support/fakes.h"
#include "support/testsupport.h"
#include "values/valuestore.h"

#include <QLocale>
#include <QSignalSpy>
#include <QTest>

namespace {

using testsupport::kSerial;

constexpr std::uint32_t kOtherSerial = 7654321;
using testsupport::kRecorded;
using testsupport::ownTelegram;

bool allZero(const Bytes& b) {
    return std::all_of(b.begin(), b.end(), [](std::uint8_t v) { return v == 0; });
}

QString expectedTitle(const QString& appTitle, const QDateTime& when) {
    const QLocale locale = QLocale::system();
    return appTitle + " - [" + locale.toString(when.date(), QLocale::ShortFormat) + " " +
           locale.toString(when.time(), QLocale::LongFormat) + "]";
}

struct DecoderRig {
    TestApp t;
    Program& app = *t.app;
    TelegramDecoder& decoder = app.decoder();
    PollEngine& engine = app.engine();
    Form& display = app.forms().frmDisplay();

    DecoderRig() { app.texts().appTitle = QStringLiteral("KOMPA MQ27D"); }

    void feed(const Bytes& t) { decoder.DataDecoder(t); }
    // Telegrams 1, 2, 3 and 5 of a device: its complete read-out.
    void readOut(std::uint32_t serial = kSerial, std::uint8_t fill = 0x33) {
        for (int command : {1, 2, 3, 5})
            feed(ownTelegram(command, serial, fill));
    }
};

} // namespace

class TestTelegramDecoder : public QObject {
    Q_OBJECT

private slots:
    // Also for telegrams that are dropped.
    void titleShowsTheRecordedTime_data() {
        QTest::addColumn<Bytes>("telegram");
        QTest::addColumn<QDateTime>("when");
        QTest::addColumn<bool>("taken");
        const QDateTime turn(QDate(1999, 12, 31), QTime(23, 59, 59));
        QTest::newRow("command 1") << ownTelegram(1, kSerial, 0x33, turn) << turn << true;
        QTest::newRow("command 6") << ownTelegram(6) << kRecorded << false;
        QTest::newRow("command 0") << ownTelegram(0) << kRecorded << false;
        QTest::newRow("unknown device, command 2")
            << ownTelegram(2, kOtherSerial) << kRecorded << false;
    }
    void titleShowsTheRecordedTime() {
        QFETCH(Bytes, telegram);
        QFETCH(QDateTime, when);
        QFETCH(bool, taken);
        DecoderRig rig;
        rig.feed(telegram);
        QCOMPARE(rig.app.session().telegramTime(), when);
        QCOMPARE(rig.display.title(), expectedTitle(rig.app.texts().appTitle, when));
        QVERIFY(allZero(stored(rig.app, 2)));
        QCOMPARE(rig.app.session().takenOnSerialNo().isEmpty(), !taken);
        QCOMPARE(rig.engine.tmrAutoSend().isEnabled(), taken);
    }

    void stampThatIsNoTimeEndsSilently_data() {
        QTest::addColumn<int>("fromEnd");
        QTest::addColumn<int>("value");
        QTest::newRow("month 13") << 7 << 13;
        QTest::newRow("day 0") << 6 << 0;
        QTest::newRow("century 255") << 9 << 255;
    }
    void stampThatIsNoTimeEndsSilently() {
        QFETCH(int, fromEnd);
        QFETCH(int, value);
        DecoderRig rig;
        Bytes t = ownTelegram(1);
        t[t.size() - static_cast<std::size_t>(fromEnd)] = static_cast<std::uint8_t>(value);
        rig.feed(t);
        QVERIFY(rig.display.title().isEmpty());
        QVERIFY(allZero(stored(rig.app, 1)));
    }

    // Telegram 5 comes in the extended form, its kind, command and serial number two bytes
    // further back.
    void answerChoosesTheNextTelegram_data() {
        QTest::addColumn<int>("answer");
        QTest::addColumn<int>("next");
        QTest::newRow("1") << 1 << 2;
        QTest::newRow("2") << 2 << 3;
        QTest::newRow("3") << 3 << 5;
        QTest::newRow("4") << 4 << 5;
        QTest::newRow("5") << 5 << 2;
    }
    void answerChoosesTheNextTelegram() {
        QFETCH(int, answer);
        DecoderRig rig;
        rig.feed(ownTelegram(1));
        rig.engine.SetNextRead(99);
        const Bytes t = ownTelegram(answer, kSerial, 0x44);
        rig.feed(t);
        QCOMPARE(stored(rig.app, answer), t);
        QTEST(rig.engine.NextCommand(), "next");
        QVERIFY(rig.engine.tmrAutoSend().isEnabled());

        // A queued command keeps its place; the answer is stored all the same.
        rig.engine.SendCommand(131);
        const Bytes again = ownTelegram(answer, kSerial, 0x55);
        rig.feed(again);
        QCOMPARE(stored(rig.app, answer), again);
        QCOMPARE(rig.engine.NextCommand(), 131);
    }

    void newDeviceIsTakenOnOnlyWithTelegramOne() {
        DecoderRig rig;
        rig.readOut();
        rig.engine.SetNextRead(3);
        const Bytes before2 = stored(rig.app, 2);
        rig.engine.tmrAutoSend().disable();

        rig.feed(ownTelegram(2, kOtherSerial, 0x77));
        QCOMPARE(stored(rig.app, 2), before2);
        QCOMPARE(rig.engine.NextCommand(), 3);
        QCOMPARE(rig.app.session().takenOnSerialNo(), QString::number(kSerial));
        QVERIFY(rig.display.isShown());
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());

        // Telegram 1 of a size the store does not take still takes the new device on.
        rig.feed(ownTelegram(1, kOtherSerial, 0x33, kRecorded, 2));
        QVERIFY(!rig.display.isShown());
        QCOMPARE(rig.app.session().takenOnSerialNo(), QString::number(kOtherSerial));
        QVERIFY(allZero(stored(rig.app, 1)));
        QCOMPARE(rig.display.caption("lblSerialNo_0"), QString::number(kSerial));
    }

    void sameDeviceWithTelegramOneIsAnOrdinaryTelegram() {
        DecoderRig rig;
        rig.readOut();
        QSignalSpy takenOn(&rig.decoder, &TelegramDecoder::DeviceTakenOn);
        rig.display.setValue("tabDisplay", 3);
        const Bytes t1 = ownTelegram(1, kSerial, 0x44);
        rig.feed(t1);
        QCOMPARE(stored(rig.app, 1), t1);
        QVERIFY(!allZero(stored(rig.app, 2)));
        QVERIFY(rig.display.isShown());
        QCOMPARE(rig.display.value("tabDisplay"), 3.0);
        QVERIFY(takenOn.isEmpty());
        QVERIFY(!rig.app.files().AutoSavePending());
    }

    void replacedDeviceIsReadOutBehindTheScenes() {
        DecoderRig rig;
        rig.readOut();
        QVERIFY(rig.display.isShown());
        rig.display.setValue("tabDisplay", 4);
        rig.app.forms().frmMQ27D().show();
        QSignalSpy takenOn(&rig.decoder, &TelegramDecoder::DeviceTakenOn);

        rig.feed(ownTelegram(1, kOtherSerial));
        QCOMPARE(takenOn.size(), 1);
        QVERIFY(rig.app.files().AutoSavePending());
        QVERIFY(!rig.display.isShown());
        QCOMPARE(rig.display.value("tabDisplay"), 0.0);
        for (int command : {2, 3, 4, 5})
            QVERIFY(allZero(stored(rig.app, command)));
        QCOMPARE(rig.display.caption("lblSerialNo_7"), QString::number(kOtherSerial));

        rig.app.forms().frmConnect().show();
        rig.feed(ownTelegram(2, kOtherSerial));
        rig.feed(ownTelegram(3, kOtherSerial));
        QVERIFY(!rig.display.isShown());
        QVERIFY(rig.app.forms().frmConnect().isShown());

        rig.feed(ownTelegram(5, kOtherSerial));
        QVERIFY(rig.display.isShown());
        QVERIFY(!rig.app.forms().frmMQ27D().isShown());
        QVERIFY(!rig.app.forms().frmConnect().isLoaded());
    }

    void connectionPhaseWaitsWhileACommandIsQueued() {
        DecoderRig rig;
        for (int command : {1, 2, 3})
            rig.feed(ownTelegram(command));
        rig.engine.SendCommand(131);
        rig.feed(ownTelegram(5));
        QVERIFY(!rig.display.isShown());
        rig.engine.CancelWrite();
        rig.feed(ownTelegram(5));
        QVERIFY(rig.display.isShown());
    }

    void wrongSizeIsRefusedAndThePollWaits_data() {
        QTest::addColumn<int>("extra");
        QTest::newRow("one byte longer") << 1;
        QTest::newRow("one byte shorter") << -1;
    }
    void wrongSizeIsRefusedAndThePollWaits() {
        QFETCH(int, extra);
        DecoderRig rig;
        rig.feed(ownTelegram(1));
        const Bytes good2 = ownTelegram(2);
        rig.feed(good2);
        rig.engine.SetNextRead(3);
        rig.engine.tmrAutoSend().disable();
        rig.app.mainView().tmrReceiveLED().disable();
        rig.display.setBackColor("picReceiveLED_0", colors::kWindowBackground);

        rig.feed(ownTelegram(2, kSerial, 0x66, kRecorded, extra));
        QCOMPARE(stored(rig.app, 2), good2);
        QCOMPARE(rig.engine.NextCommand(), 3);
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
        QCOMPARE(rig.display.backColor("picReceiveLED_0"), colors::kWindowBackground);
    }

    void receiveLampsLightAndFallBack() {
        DecoderRig rig;
        rig.feed(ownTelegram(1));
        QCOMPARE(rig.display.backColor("picReceiveLED_7"), colors::kGreen);
        Q_EMIT rig.app.mainView().tmrReceiveLED().timeout();
        QCOMPARE(rig.display.backColor("picReceiveLED_7"), colors::kWindowBackground);
        QVERIFY(!rig.app.mainView().tmrReceiveLED().isEnabled());
    }
};

QTEST_GUILESS_MAIN(TestTelegramDecoder)
#include "tst_telegramdecoder.moc"
