#include "link/checksum.h"
#include "link/recognition.h"
#include "link/seriallink.h"
#include "link/telegram.h"
#include "support/fakes.h"
#include "support/testsupport.h"
#include "values/valuestore.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

using testsupport::bytes;

namespace {

const QString kDeviceLine = QStringLiteral("lblDevice");
const QDateTime kReceived(QDate(2026, 11, 23), QTime(9, 30, 15));

Bytes stamp(const Bytes& frame) {
    return telegram::StampTelegram(frame, kReceived).value();
}

// A stamped telegram of the own family from device 1234567 (00 12 D6 87).
Bytes ownTelegram(int command, std::size_t dataBytes = 3) {
    Bytes data = bytes({0x0A, command, 0x00, 0x12, 0xD6, 0x87});
    data.resize(data.size() + dataBytes, 0x21);
    return stamp(telegram::MakeSendFrame(data, true).value());
}

// A stamped telegram of kind `kind` whose payload is `length` bytes; kinds 7
// and 10 carry the inner CRC inside those bytes.
Bytes kindTelegram(int kind, std::size_t length) {
    const bool withCrc = kind == 7 || kind == 10;
    Bytes payload(withCrc ? length - 2 : length, 0x00);
    payload[0] = static_cast<std::uint8_t>(kind);
    return stamp(telegram::MakeSendFrame(payload, withCrc).value());
}

// The second family announces 173 payload bytes and sends 171.
Bytes secondFamilyTelegram(int lengthByte) {
    Bytes payload(171, 0x00);
    payload[0] = 2;
    Bytes frame = telegram::MakeSendFrame(payload, false).value();
    frame[1] = static_cast<std::uint8_t>(lengthByte);
    checksum::AddSumOfBytes(frame);
    return stamp(frame);
}

Bytes withFixedSum(Bytes t) {
    checksum::AddSumOfBytes(t);
    return t;
}

// Port 1 open.
struct Context {
    LinkRig t;
    Recognition& recognition = t.recognition;
    SerialLink& link = t.link;
    Form& start = t.forms.frmMQ27D();

    Context() { link.SwitchToComPort(1); }
};

} // namespace

class TestRecognition : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The frames themselves are worked out in the telegram test.
    void searchCycle() {
        Context c;
        const std::tuple<const char*, int, int> steps[] = {{"searching for MQ27..//....", 0x0A, 1},
                                                           {"searching for MQ20....//..", 0x07, 2},
                                                           {"searching for MQLR......//", 0x00, 0},
                                                           {"searching for MQ27..//....", 0x0A, 1}};
        for (const auto& [text, kind, counter] : steps) {
            c.link.StopTimers();
            c.recognition.SearchStep();
            QCOMPARE(c.start.caption(kDeviceLine), QString::fromLatin1(text));
            QCOMPARE(int(c.t.port.written.last().at(2)), kind);
            QCOMPARE(c.recognition.SearchCounter(), counter);
            QVERIFY2(c.link.tmrZeroCommand().isEnabled(), "each step restarts the search timer");
        }
        QCOMPARE(
            c.t.port.written.last(),
            toByteArray(telegram::MakeSendFrame(bytes({0x0A, 0x01, 0, 0, 0, 0}), true).value()));

        // With the port closed the search stands still and keeps its place.
        c.link.ClosePort();
        c.recognition.SearchStep();
        QCOMPARE(c.start.caption(kDeviceLine), QStringLiteral("COM port OFF"));
        QCOMPARE(c.recognition.SearchCounter(), 1);
        QCOMPARE(c.t.port.written.size(), 4);
    }

    // A flipped bit in an own telegram is the telegram test's; a refused telegram leaves no
    // trace.
    void rejected_data() {
        QTest::addColumn<Bytes>("telegram");

        Bytes minlixWrongCrc = kindTelegram(7, 20);
        minlixWrongCrc[5] ^= 0x01;
        Bytes unknownKind = kindTelegram(10, 20);
        unknownKind[2] = 3;

        QTest::newRow("empty") << Bytes();
        QTest::newRow("unstamped frame")
            << telegram::MakeSendFrame(bytes({0x0A, 1, 0, 0, 0, 1}), true).value();
        QTest::newRow("fourth family, wrong inner CRC") << withFixedSum(minlixWrongCrc);
        QTest::newRow("kind 3") << withFixedSum(unknownKind);
        QTest::newRow("second family, length byte 171") << secondFamilyTelegram(171);
    }

    void rejected() {
        QFETCH(Bytes, telegram);
        Context c;
        c.link.StopTimers();
        QSignalSpy own(&c.recognition, &Recognition::OwnTelegramAccepted);

        c.recognition.RcvDataHandle(telegram);
        QVERIFY(c.start.caption(kDeviceLine).isEmpty());
        QCOMPARE(c.start.backColor(QStringLiteral("picReceive")), colors::kDefault);
        QVERIFY(!c.link.tmrZeroCommand().isEnabled());
        QVERIFY(c.link.IsPortOpen() && c.t.launcher.started.isEmpty());
        QCOMPARE(own.count(), 0);
        QVERIFY(!c.t.values.get());
    }

    void ignoredWhileClosing() {
        Context c;
        c.t.installSuite();
        c.link.StopTimers();
        c.t.life.setClosing();
        c.recognition.RcvDataHandle(kindTelegram(1, 48));
        c.recognition.RcvDataHandle(ownTelegram(1));
        c.recognition.StartExtKOMPA(QStringLiteral("x.ko3"));
        QVERIFY(c.start.caption(kDeviceLine).isEmpty());
        QVERIFY(c.t.launcher.started.isEmpty());
        QVERIFY(c.t.dialogs.shown.isEmpty());
        QVERIFY(!c.t.values.get());
    }

    void otherFamiliesHandOver_data() {
        QTest::addColumn<Bytes>("telegram");
        QTest::addColumn<QString>("text");

        QTest::newRow("1") << kindTelegram(1, 48) << "VARLIX recognized";
        QTest::newRow("2") << secondFamilyTelegram(173) << "DURLIX recognized";
        QTest::newRow("5") << kindTelegram(5, 269) << "VARLIX NET recognized";
        QTest::newRow("7, extended form") << kindTelegram(7, 300) << "MINLIX recognized";
        QTest::newRow("8") << kindTelegram(8, 291) << "DURLIX LSN recognized";
        QTest::newRow("12") << kindTelegram(12, 273) << "VARLIX/a recognized";
    }

    void otherFamiliesHandOver() {
        QFETCH(Bytes, telegram);
        Context c;
        c.t.installSuite();
        c.link.StopTimers();
        QSignalSpy own(&c.recognition, &Recognition::OwnTelegramAccepted);

        c.recognition.RcvDataHandle(telegram);
        QTEST(c.start.caption(kDeviceLine), "text");
        QCOMPARE(c.start.backColor(QStringLiteral("picReceive")), colors::kGreen);
        QVERIFY2(!c.link.IsPortOpen(), "the suite opens the port itself");
        QCOMPARE(c.t.launcher.started.size(), 1);
        QCOMPARE(c.t.launcher.started[0].program, c.t.suitePath());
        QVERIFY(c.t.launcher.started[0].arguments.isEmpty());
        QCOMPARE(own.count(), 0);
    }

    void suiteNotStarted_data() {
        QTest::addColumn<bool>("installed");
        QTest::addColumn<QString>("text");
        QTest::newRow("not found") << false << "Program not found";
        QTest::newRow("start failed") << true << "Program could not be started";
    }

    void suiteNotStarted() {
        QFETCH(bool, installed);
        QFETCH(QString, text);
        Context c;
        if (installed) c.t.installSuite();
        c.t.launcher.startSucceeds = false;
        QSignalSpy closing(&c.recognition, &Recognition::CloseRequested);
        c.recognition.RcvDataHandle(kindTelegram(9, 291));

        QCOMPARE(c.t.launcher.started.size(), installed ? 1 : 0);
        QCOMPARE(closing.count(), 1);
        QCOMPARE(c.t.dialogs.shown.size(), 1);
        const ScriptedDialogs::Shown& box = c.t.dialogs.shown[0];
        QCOMPARE(box.text, text + "\r\n\r\n" + QDir::toNativeSeparators(c.t.suitePath()));
        QCOMPARE(box.icon, UserDialogs::Icon::Critical);
        QVERIFY(!c.link.IsPortOpen());
    }

    void ownTelegramRoutes_data() {
        QTest::addColumn<QString>("shownSerial");
        QTest::addColumn<bool>("deviceSearch");
        QTest::addColumn<int>("command");
        QTest::addColumn<bool>("decoded");
        QTest::addColumn<bool>("connecting");
        QTest::addColumn<int>("dataBytes"); // 300: the extended form, serial behind a longer header

        QTest::newRow("new device, telegram 1") << "" << false << 1 << true << true << 3;
        QTest::newRow("new device, telegram 2") << "" << false << 2 << false << false << 3;
        QTest::newRow("known device, telegram 2") << "1234567" << false << 2 << true << false << 3;
        QTest::newRow("known device, telegram 1") << "1234567" << false << 1 << true << false << 3;
        QTest::newRow("another device, telegram 1") << "7654321" << false << 1 << true << true << 3;
        QTest::newRow("another device, extended form")
            << "7654321" << false << 1 << true << true << 300;
        QTest::newRow("another device, telegram 5")
            << "7654321" << false << 5 << false << false << 3;
        QTest::newRow("device search, telegram 3") << "7654321" << true << 3 << true << false << 3;
    }

    void ownTelegramRoutes() {
        QFETCH(QString, shownSerial);
        QFETCH(bool, deviceSearch);
        QFETCH(int, command);
        QFETCH(bool, decoded);
        QFETCH(bool, connecting);
        QFETCH(int, dataBytes);
        Context c;
        c.link.StopTimers();
        c.t.session.setSerialNo(shownSerial);
        c.t.session.setSearchRunning(deviceSearch);
        QSignalSpy own(&c.recognition, &Recognition::OwnTelegramAccepted);
        QSignalSpy connectWindow(&c.recognition, &Recognition::ConnectionWindowRequested);
        const Bytes telegram = ownTelegram(command, std::size_t(dataBytes));

        c.recognition.RcvDataHandle(telegram);
        QCOMPARE(c.start.caption(kDeviceLine), QStringLiteral("SHELLIX recognized"));
        QVERIFY2(c.t.values.get(), "the first own telegram creates the value store");
        QCOMPARE(own.count(), decoded ? 1 : 0);
        if (decoded) QCOMPARE(own.at(0).at(0).value<Bytes>(), telegram);
        QCOMPARE(connectWindow.count(), connecting ? 1 : 0);
        if (connecting) QCOMPARE(connectWindow.at(0).at(0).toString(), QStringLiteral("1234567"));
        QVERIFY(c.link.IsPortOpen());
    }

    // A late answer to a search telegram must not take over the device the user
    // has chosen.
    void chosenDeviceIsNotTakenOver() {
        Context c;
        c.link.StopTimers();
        QSignalSpy own(&c.recognition, &Recognition::OwnTelegramAccepted);

        // 7654321 chosen; 1234567 answers late.
        c.t.session.setSerialNo(QStringLiteral("7654321"));
        c.t.session.awaitChosenDevice(QStringLiteral("7654321"));
        c.recognition.RcvDataHandle(ownTelegram(1));
        QCOMPARE(own.count(), 0);

        // 1234567 chosen: its telegram 1 ends the wait, and later another device
        // may call.
        c.t.session.setSerialNo(QStringLiteral("1234567"));
        c.t.session.awaitChosenDevice(QStringLiteral("1234567"));
        c.recognition.RcvDataHandle(ownTelegram(1));
        c.t.session.setSerialNo(QStringLiteral("7654321"));
        c.recognition.RcvDataHandle(ownTelegram(1));
        QCOMPARE(own.count(), 2);
    }
};

QTEST_GUILESS_MAIN(TestRecognition)
#include "tst_recognition.moc"
