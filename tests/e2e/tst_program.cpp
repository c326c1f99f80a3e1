// The built program itself, started as an engineer starts it: a stop signal ends it in order.
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

namespace {

// The built tool on a port that is not there, with its settings in a folder of its own.
class InstalledTool {
public:
    InstalledTool() {
        QDir(m_folder.path()).mkpath(QStringLiteral("Halvorn"));
        QFile settings(path("Halvorn/Kompa3.conf"));
        if (settings.open(QIODevice::WriteOnly)) settings.write("[General]\nPort=1\n");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("MQ27D_PORT1"), path("no-such-port"));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(testsupport::programPath(QStringLiteral("mq27diag")), {});
    }
    ~InstalledTool() {
        if (m_process.state() == QProcess::NotRunning) return;
        m_process.kill();
        m_process.waitForFinished(5000);
    }

    QString path(const char* name) const { return m_folder.filePath(QString::fromLatin1(name)); }
    QProcess& process() { return m_process; }
    bool settingsHold(const QByteArray& text) const {
        QFile settings(path("Halvorn/Kompa3.conf"));
        return settings.open(QIODevice::ReadOnly) && settings.readAll().contains(text);
    }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};

} // namespace

class TestProgram : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The tool ends by its own shutdown: a normal exit with code 0, its settings kept.
    void stopSignalsEndItInOrder() {
        for (const int signalNumber : {SIGTERM, SIGHUP, SIGINT}) {
            InstalledTool tool;
            QVERIFY(tool.process().waitForStarted(5000));
            // Its start-up stores the language, after the signals are caught.
            QVERIFY(QTest::qWaitFor([&] { return tool.settingsHold("Language="); }, 10000));
            QVERIFY(::kill(static_cast<pid_t>(tool.process().processId()), signalNumber) == 0);
            QVERIFY(tool.process().waitForFinished(10000));
            QCOMPARE(tool.process().exitStatus(), QProcess::NormalExit);
            QCOMPARE(tool.process().exitCode(), 0);
            QVERIFY(tool.settingsHold("Port=1"));
        }
    }
};

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_program.moc"
