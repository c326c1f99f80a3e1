#include "common/stringtable.h"
#include "link/portopenerror.h"
#include "link/qtserialportdevice.h"
#include "support/testsupport.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <fcntl.h>
#include <pwd.h>
#include <stdlib.h>
#include <unistd.h>

namespace {

// The device's side of a pseudo-terminal; the tool opens the other side by its
// path.
class PseudoTerminal {
public:
    PseudoTerminal() {
        m_master = posix_openpt(O_RDWR | O_NOCTTY);
        if (m_master < 0) return;
        char name[128] = {};
        if (grantpt(m_master) != 0 || unlockpt(m_master) != 0 ||
            ptsname_r(m_master, name, sizeof name) != 0) {
            closeMaster();
            return;
        }
        fcntl(m_master, F_SETFL, fcntl(m_master, F_GETFL) | O_NONBLOCK);
        m_path = QString::fromLocal8Bit(name);
    }
    ~PseudoTerminal() { closeMaster(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    bool isValid() const { return m_master >= 0; }
    QString path() const { return m_path; }

    bool send(const QByteArray& data) {
        return ::write(m_master, data.constData(), static_cast<size_t>(data.size())) == data.size();
    }
    // What the tool wrote, once `count` bytes are there or the time is up.
    QByteArray receive(qsizetype count, int timeoutMs = 3000) {
        QByteArray out;
        const QDeadlineTimer deadline(timeoutMs);
        while (out.size() < count && !deadline.hasExpired()) {
            char buffer[256];
            const ssize_t n = ::read(m_master, buffer, sizeof buffer);
            if (n > 0)
                out.append(buffer, n);
            else
                QTest::qWait(5);
        }
        return out;
    }
    void closeMaster() {
        if (m_master >= 0) ::close(m_master);
        m_master = -1;
    }

private:
    int m_master = -1;
    QString m_path;
};

void mapPort(int number, const QString& path) {
    qputenv(QStringLiteral("MQ27D_PORT%1").arg(number).toLatin1().constData(), path.toLocal8Bit());
}

} // namespace

class TestQtSerialPort : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() {
        for (int n = 1; n <= 3; ++n)
            qunsetenv(QStringLiteral("MQ27D_PORT%1").arg(n).toLatin1().constData());
    }

    // The environment names the ports; a new open closes the old port.
    void bytesBothWays() {
        PseudoTerminal line;
        QVERIFY(line.isValid());
        mapPort(1, line.path());
        QtSerialPortDevice device;
        QCOMPARE(device.deviceName(1), line.path());
        QVERIFY(device.deviceName(17).isEmpty() && !device.open(17));
        QVERIFY(device.open(1));
        QCOMPARE(device.portNumber(), 1);

        // Every byte value, the frame's STX and the flow-control characters among
        // them.
        QByteArray data;
        for (int i = 0; i < 256; ++i)
            data.append(static_cast<char>(i));
        QVERIFY(line.send(data));
        QByteArray in;
        QTRY_VERIFY_WITH_TIMEOUT((in += device.readAll(), in.size() >= data.size()), 3000);
        QCOMPARE(in, data);

        device.write(data);
        QCOMPARE(line.receive(data.size()), data);
        mapPort(2, QStringLiteral("/nonexistent/ttyMQ"));
        QVERIFY(!device.open(2) && !device.isOpen());
        QCOMPARE(device.portNumber(), 2);
    }

    // No device, a device held by another port (lock file and exclusive open),
    // the holder named.
    void openFailuresSayWhy() {
        mapPort(2, QStringLiteral("/nonexistent/ttyMQ"));
        QtSerialPortDevice device;
        QVERIFY(!device.open(2));
        QCOMPARE(describePortOpenError(device.openFailure(), Language::English),
                 QStringLiteral("No such device: /nonexistent/ttyMQ"));
        QVERIFY(!device.open(9));
        QCOMPARE(describePortOpenError(device.openFailure(), Language::German),
                 QStringLiteral("Für Port 9 gibt es kein Gerät"));

        PseudoTerminal line;
        QVERIFY(line.isValid());
        mapPort(1, line.path());
        QtSerialPortDevice holder;
        QVERIFY(holder.open(1));
        QVERIFY(!device.open(1));
        const PortOpenFailure busy = device.openFailure();
        QCOMPARE(busy.kind, PortOpenFailure::Kind::Busy);
        QVERIFY2(busy.holder.contains(QString::number(QCoreApplication::applicationPid())),
                 qPrintable(busy.holder));
        QVERIFY(describePortOpenError(busy, Language::English)
                    .startsWith(line.path() + QStringLiteral(" is busy: held by ")));
        holder.close();
        QVERIFY2(device.open(1), "free again once the other lets go");
        QVERIFY(!device.openFailure().failed());
    }

    // A user outside the device's group is told the group and the command that lets him in.
    // Root passes every permission check, so as root the check runs as nobody.
    void permissionForAnotherUser() {
        PseudoTerminal line;
        QVERIFY(line.isValid());
        QVERIFY(QFile::setPermissions(line.path(), QFileDevice::Permissions()));
        mapPort(1, line.path());
        const testsupport::AsNobody nobody;
        QtSerialPortDevice device;
        QVERIFY(!device.open(1));
        QCOMPARE(device.openFailure().kind, PortOpenFailure::Kind::Permission);
        const QString output = describePortOpenError(device.openFailure(), Language::English);
        const QString group = QFileInfo(line.path()).group();
        const QString user = QString::fromLocal8Bit(::getpwuid(::geteuid())->pw_name);
        QVERIFY2(output == QStringLiteral("Permission denied for %1 (group %2). To fix: sudo "
                                          "adduser %3 %2 and log in again")
                               .arg(line.path(), group, user),
                 qPrintable(output));
    }
};

QTEST_GUILESS_MAIN(TestQtSerialPort)
#include "tst_qtserialport.moc"
