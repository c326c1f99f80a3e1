#include "link/recognition.h"
#include "link/seriallink.h"
#include "link/telegram.h"
#include "support/fakes.h"
#include "support/testsupport.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using testsupport::bytes;
using testsupport::concat;
using testsupport::frameOf;

namespace {

const QString kLblDevice = QStringLiteral("lblDevice");
const QString kPicReceive = QStringLiteral("picReceive");
const QString kCboPort = QStringLiteral("cboPort");

// The poll telegram for device 1 with `command`, as the tool sends it.
Bytes pollFrame(int command) {
    return frameOf(bytes({0x0A, command, 0x00, 0x00, 0x00, 0x01}));
}

// An answer of device 1234567 (00 12 D6 87) with some data.
Bytes answerFrame(int command) {
    return frameOf(bytes({0x0A, command, 0x00, 0x12, 0xD6, 0x87, 0x11, 0x22, 0x33}));
}

// A context with port 1 open and the search timer at rest.
struct OpenLink {
    LinkRig t;
    SerialLink& link = t.link;
    Form& start = t.forms.frmMQ27D();

    OpenLink() {
        t.settings.values[QStringLiteral("Port")] = QStringLiteral("1");
        link.SwitchToComPort(1);
        link.StopTimers();
    }
    // A burst arrives and its collecting window ends.
    void receive(const Bytes& burst) {
        t.port.deliver(toByteArray(burst));
        link.RcvDataGet();
    }
    bool recognized() const { return start.caption(kLblDevice).endsWith(u" recognized"); }
};

} // namespace

class TestSerialLink : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sendPutsFrameOnLine() {
        OpenLink l;
        QSignalSpy icon(&l.link, &SerialLink::IconIndexChanged);
        l.link.MakeSendString(bytes({0x0A, 0x01, 0, 0, 0, 0}), true);

        const Bytes frame = bytes({0x02, 0x08, 0x0A, 0x01, 0, 0, 0, 0, 0x2C, 0x53, 0x00, 0x94});
        QCOMPARE(l.t.port.written, QList<QByteArray>{toByteArray(frame)});
        const QString monitor = l.start.caption(QStringLiteral("txtComSend"));
        QVERIFY2(monitor.endsWith(u"\r\n\r\n02 08 0A 01 00 00 00 00 2C 53 00 94 "),
                 qPrintable(monitor));
        QVERIFY(monitor.contains(u"09:30:15"));
        QCOMPARE(l.start.foreColor(kPicReceive), colors::kRed);
        // The search step lasts 1789 ms from the last telegram sent: never more is
        // left of it.
        const int left = l.link.tmrZeroCommand().remainingTime();
        QVERIFY2(left > 0 && left <= 1789, qPrintable(QString::number(left)));
        QCOMPARE(l.link.IconIndex(), 2);
        QCOMPARE(icon.count(), 1);

        Q_EMIT l.link.tmrSendLED().timeout();
        QCOMPARE(l.start.foreColor(kPicReceive), colors::kDefault);
        QCOMPARE(l.link.IconIndex(), 0);
        QCOMPARE(icon.count(), 2);
    }

    void sendWithSendEnableCleared() {
        OpenLink l;
        l.start.userSetValue(QStringLiteral("chkSendEnable"), 0);
        const Bytes frame = pollFrame(2);
        l.link.DataTx(frame);
        QVERIFY(l.t.port.written.isEmpty());
        QCOMPARE(l.link.LastSent(), frame);
        QVERIFY(!l.start.caption(QStringLiteral("txtComSend")).isEmpty());
        QCOMPARE(l.start.foreColor(kPicReceive), colors::kDefault);
        QCOMPARE(l.link.IconIndex(), 0);
        QVERIFY(l.link.tmrZeroCommand().isEnabled());
    }

    // With the port closed, and a frame whose sum would need more than two bytes.
    void nothingGoesOut() {
        LinkRig t;
        t.link.DataTx(pollFrame(2));
        QVERIFY(t.forms.frmMQ27D().caption(QStringLiteral("txtComSend")).isEmpty());
        OpenLink l;
        l.link.MakeSendString(Bytes(300, 0xFF), false);
        for (SerialLink* link : {&t.link, &l.link}) {
            QVERIFY(link->LastSent().empty());
            QVERIFY(!link->tmrZeroCommand().isEnabled());
            QVERIFY(!link->tmrSendLED().isEnabled());
        }
        QVERIFY(t.port.written.isEmpty() && l.t.port.written.isEmpty());
    }

    void receiveFilters_data() {
        QTest::addColumn<Bytes>("lastSent");
        QTest::addColumn<Bytes>("burst");
        QTest::addColumn<bool>("handled");

        const Bytes searchOwn = frameOf(bytes({0x0A, 0x01, 0, 0, 0, 0}));
        const Bytes searchSecond = frameOf(bytes({0x07, 0x01, 0, 0, 0, 0}));

        QTest::newRow("echo of a poll with command 2") << pollFrame(2) << pollFrame(2) << false;
        QTest::newRow("echo of a command 1 passes") << pollFrame(1) << pollFrame(1) << true;
        QTest::newRow("answer after a poll") << pollFrame(2) << answerFrame(2) << true;
        QTest::newRow("search telegram of the own family") << Bytes() << searchOwn << false;
        QTest::newRow("search telegram of the second family") << Bytes() << searchSecond << false;
        QTest::newRow("serial 0 with a data byte")
            << searchOwn << frameOf(bytes({0x0A, 0x01, 0, 0, 0, 0, 0x55})) << true;
        QTest::newRow("zero command echo")
            << telegram::ZeroCommand() << telegram::ZeroCommand() << false;
        QTest::newRow("complete frame, then the start of the next")
            << Bytes() << concat({answerFrame(3), bytes({0x02, 0x08, 0x0A})}) << true;
    }

    void receiveFilters() {
        QFETCH(Bytes, lastSent);
        QFETCH(Bytes, burst);
        QFETCH(bool, handled);
        OpenLink l;
        if (!lastSent.empty()) l.link.DataTx(lastSent);
        l.link.StopTimers();

        l.receive(burst);
        // A new device's telegram 1 switches the language, which clears the monitor
        // and the status line; the green LED and the restarted search stay.
        QCOMPARE(l.link.tmrZeroCommand().isEnabled(), handled);
        QCOMPARE(l.start.backColor(kPicReceive), handled ? colors::kGreen : colors::kYellow);
        QVERIFY(l.t.port.incoming.isEmpty());
    }

    void stampedTelegramAndFileFlag() {
        OpenLink l;
        QSignalSpy own(&l.t.recognition, &Recognition::OwnTelegramAccepted);
        l.link.SetDataFromFile(true);

        l.receive(bytes({0x02, 0x00, 0x13}));
        QVERIFY2(l.link.DataFromFile(), "bytes without a telegram leave the flag");

        const Bytes frame = answerFrame(1);
        l.receive(frame);
        QVERIFY(!l.link.DataFromFile());
        QCOMPARE(own.count(), 1);
        const Bytes stamped = own.at(0).at(0).value<Bytes>();
        QVERIFY(std::equal(frame.begin(), frame.end() - 2, stamped.begin()));
        const Bytes stamp(stamped.end() - 9, stamped.end() - 2);
        QCOMPARE(stamp, bytes({20, 26, 11, 23, 9, 30, 15}));
    }

    // A clock that gives no time, and a telegram split over two reads.
    void telegramsThatAreLost() {
        OpenLink l;
        l.link.SetDataFromFile(true);
        l.t.clock.time = QDateTime();
        l.receive(answerFrame(1));
        QVERIFY(!l.recognized());
        QVERIFY(l.link.DataFromFile());

        OpenLink split;
        const Bytes frame = answerFrame(2);
        split.receive(Bytes(frame.begin(), frame.begin() + 5));
        split.receive(Bytes(frame.begin() + 5, frame.end()));
        QVERIFY(!split.recognized());
    }

    void collectingWindowCountsFromFirstByte() {
        OpenLink l;
        const Bytes frame = answerFrame(2);
        QElapsedTimer clock;
        qint64 tickAfter = -1;
        connect(&l.link.tmrToRx(), &FormTimer::timeout, this, [&] { tickAfter = clock.elapsed(); });

        clock.start();
        l.t.port.deliver(toByteArray(Bytes(frame.begin(), frame.begin() + 4)));
        QVERIFY(l.link.tmrToRx().isEnabled());
        // The window lasts 321 ms from the first byte: never more is left of it.
        const int left = l.link.tmrToRx().remainingTime();
        QVERIFY2(left > 0 && left <= 321, qPrintable(QString::number(left)));
        // The second part comes when half the window has run.
        QVERIFY(QTest::qWaitFor([&] { return l.link.tmrToRx().remainingTime() <= 160; }, 5000));
        const qint64 secondPart = clock.elapsed();
        QVERIFY2(tickAfter < 0, "the machine stalled longer than the whole window");
        l.t.port.deliver(toByteArray(Bytes(frame.begin() + 4, frame.end())));
        QTRY_VERIFY_WITH_TIMEOUT(tickAfter >= 0, 5000);

        // Had the second part started the window again, the tick would come a whole
        // window after it.
        QVERIFY2(tickAfter >= 300 && tickAfter < secondPart + 321,
                 qPrintable(QStringLiteral("tick after %1 ms, second part after %2 ms")
                                .arg(tickAfter)
                                .arg(secondPart)));
        QVERIFY(!l.link.tmrToRx().isEnabled());
        QCOMPARE(l.start.caption(kLblDevice), QStringLiteral("SHELLIX recognized"));
    }

    void receiveLedAndIconIndex() {
        OpenLink l;
        QSignalSpy icon(&l.link, &SerialLink::IconIndexChanged);

        l.receive(bytes({0x55, 0x66, 0x0A}));
        QVERIFY(l.start.caption(QStringLiteral("txtComReceive")).endsWith(u"\r\n\r\n55 66 0A "));
        QCOMPARE(l.start.backColor(kPicReceive), colors::kYellow);
        QVERIFY(l.link.tmrReceiveLED().isEnabled());
        QCOMPARE(l.link.IconIndex(), 0);

        l.receive(answerFrame(1));
        QCOMPARE(l.start.backColor(kPicReceive), colors::kGreen);
        QCOMPARE(l.link.IconIndex(), 1);

        l.link.SendLEDOn();
        QCOMPARE(l.link.IconIndex(), 3);

        Q_EMIT l.link.tmrReceiveLED().timeout();
        QCOMPARE(l.start.backColor(kPicReceive), colors::kDefault);
        QCOMPARE(l.link.IconIndex(), 2);
        QCOMPARE(icon.count(), 3);
    }

    // What the end-to-end tests cannot see: the bytes of a window that was collecting when
    // the adapter went are not read from the closed port.
    void lostPortLeavesToolRunning() {
        OpenLink l;
        l.t.port.deliver(toByteArray(answerFrame(2)));
        l.t.port.pull();
        QVERIFY(!l.link.IsPortOpen());
        Q_EMIT l.link.tmrToRx().timeout();
        QVERIFY2(!l.t.port.incoming.isEmpty(), "a closed port is not read");
        QVERIFY(!l.t.life.closing());
    }

    void switchToComPort_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("port");
        QTest::addColumn<bool>("open");
        QTest::addColumn<QString>("storedAfter");

        QTest::newRow("another free port") << "1" << 2 << true << "2";
        QTest::newRow("the same port") << "1" << 1 << true << "1";
        QTest::newRow("absent port keeps the setting") << "1" << 5 << false << "1";
        QTest::newRow("0 switches off") << "1" << 0 << false << "0";
        QTest::newRow("17 is no port") << "1" << 17 << false << "0";
        QTest::newRow("setting absent at start") << QString() << -1 << false << "0";
    }

    void switchToComPort() {
        QFETCH(QString, stored);
        QFETCH(int, port);
        QFETCH(bool, open);
        LinkRig t;
        QVERIFY(t.port.open(1));
        if (!stored.isNull()) t.settings.values[QStringLiteral("Port")] = stored;

        t.link.SwitchToComPort(port);
        QCOMPARE(t.link.IsPortOpen(), open);
        if (open) QCOMPARE(t.port.portNumber(), port);
        QTEST(t.settings.values.value(QStringLiteral("Port")), "storedAfter");
    }

    void portList() {
        OpenLink l;
        l.link.SwitchToComPort(2);
        Form& window = l.t.forms.frmInterface();

        l.t.portWindow.ShowCOMPort();
        const QStringList entries = window.items(kCboPort);
        QCOMPARE(entries.size(), 17);
        QCOMPARE(entries.at(0), l.t.texts.str(53));
        QCOMPARE(entries.at(3), QStringLiteral("3  (/dev/fake3)"));
        QCOMPARE(entries.at(16), QStringLiteral("--"));
        QCOMPARE(window.value(kCboPort), 2.0);
        QVERIFY2(l.link.IsPortOpen() && l.t.port.portNumber() == 2, "probing gives the port back");

        l.link.SwitchToComPort(0);
        l.t.portWindow.ShowCOMPort();
        QCOMPARE(window.value(kCboPort), 0.0);
        QVERIFY(!l.link.IsPortOpen());
    }

    // The reason stands beside "COM port OFF" in both windows, follows the
    // language, says when an open port went away, and disappears once the port is
    // open.
    void portReasons() {
        OpenLink l;
        const QString reason = QStringLiteral("lblPortReason");
        Form& ports = l.t.forms.frmInterface();

        l.t.preferences.setLanguage(Language::English);
        l.t.port.failure =
            PortOpenFailure::of(PortOpenFailure::Kind::Permission, QStringLiteral("/dev/ttyUSB7"));
        l.t.port.failure.group = QStringLiteral("dialout");
        l.t.port.failure.user = QStringLiteral("anna");
        l.link.SwitchToComPort(5);
        const QString permission = QStringLiteral(
            "Permission denied for /dev/ttyUSB7 (group dialout). To fix: sudo adduser anna "
            "dialout and log in again");
        QCOMPARE(l.start.caption(reason), permission);
        QVERIFY(l.start.isVisible(reason));
        QCOMPARE(ports.caption(reason), permission);

        // The probe keeps each absent port's reason for the list entry the user picks.
        l.t.preferences.setLanguage(Language::German);
        l.link.SwitchToComPort(1);
        QVERIFY(!l.start.isVisible(reason));
        l.t.port.failure =
            PortOpenFailure::of(PortOpenFailure::Kind::Other, QStringLiteral("/dev/ttyS4"));
        l.t.port.failure.systemText = QStringLiteral("Input/output error");
        l.t.portWindow.ShowCOMPort();
        ports.userSetValue(kCboPort, 9);
        QCOMPARE(ports.caption(reason),
                 QStringLiteral("/dev/ttyS4 lässt sich nicht öffnen: Input/output error"));

        l.t.preferences.setLanguage(Language::English);
        l.t.port.failure =
            PortOpenFailure::of(PortOpenFailure::Kind::NoDevice, QStringLiteral("/dev/ttyUSB0"));
        l.t.port.pull();
        QCOMPARE(l.start.caption(reason), QStringLiteral("Connection lost, waiting for it to "
                                                         "return. No such device: /dev/ttyUSB0"));
    }

    void interfaceButtons_data() {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("entry");
        QTest::addColumn<bool>("busyMeanwhile");
        QTest::addColumn<bool>("windowStays");
        QTest::addColumn<int>("openPort");
        QTest::addColumn<QString>("storedAfter");

        QTest::newRow("OK on --") << "cmdOKButton" << 5 << false << true << 2 << "2";
        QTest::newRow("OK on a port") << "cmdOKButton" << 3 << false << false << 3 << "3";
        QTest::newRow("OK on off") << "cmdOKButton" << 0 << false << false << 0 << "0";
        QTest::newRow("OK on a port busy since the list was filled")
            << "cmdOKButton" << 3 << true << false << 0 << "2";
        QTest::newRow("Cancel") << "cmdCancelButton" << 3 << false << false << 2 << "2";
    }

    void interfaceButtons() {
        QFETCH(QString, button);
        QFETCH(int, entry);
        QFETCH(bool, busyMeanwhile);
        QFETCH(int, openPort);
        OpenLink l;
        l.link.SwitchToComPort(2);
        Form& window = l.t.forms.frmInterface();
        window.show();
        l.t.portWindow.ShowCOMPort();

        if (busyMeanwhile) l.t.port.available.remove(entry);
        window.userSetValue(kCboPort, entry);
        window.click(button);

        QTEST(window.isShown(), "windowStays");
        QCOMPARE(l.link.IsPortOpen(), openPort != 0);
        if (openPort != 0) QCOMPARE(l.t.port.portNumber(), openPort);
        QTEST(l.t.settings.values.value(QStringLiteral("Port")), "storedAfter");
        if (openPort == 0) {
            l.t.recognition.SearchStep();
            QCOMPARE(l.start.caption(kLblDevice), QStringLiteral("COM port OFF"));
        }
    }
};

QTEST_GUILESS_MAIN(TestSerialLink)
#include "tst_seriallink.moc"
