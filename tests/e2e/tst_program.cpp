// The built program itself, started as an engineer starts it: a sibling family's device
// makes it hand the line over and end; a stop signal ends it in order.
#include "support/simprocess.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

namespace {

// A copy of the tool in its own folder, so that a stand-in suite program lies beside it,
// with its settings in that folder too.
class InstalledTool {
public:
    InstalledTool() {
        QDir(m_folder.path()).mkpath(QStringLiteral("config/Halvorn"));
        QFile::copy(testsupport::programPath(QStringLiteral("mq27diag")), path("mq27diag"));
        QFile settings(path("config/Halvorn/Kompa3.conf"));
        if (settings.open(QIODevice::WriteOnly)) settings.write("[General]\nPort=1\n");
    }
    ~InstalledTool() {
        if (m_process.state() == QProcess::NotRunning) return;
        m_process.kill();
        m_process.waitForFinished(5000);
    }

    QString path(const char* name) const { return m_folder.filePath(QString::fromLatin1(name)); }

    void start(const QString& portPath) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("MQ27D_PORT1"), portPath);
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path("config"));
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(path("mq27diag"), {});
    }
    QProcess& process() { return m_process; }
    bool settingsHold(const QByteArray& text) const {
        QFile settings(path("config/Halvorn/Kompa3.conf"));
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
    void handsOverToTheSuiteProgramAndEnds() {
        SimProcess sim;
        QVERIFY(sim.start({"--profile", SimProcess::profile("minlix")}));
        InstalledTool tool;
        {
            QFile script(tool.path("Kompa3"));
            QVERIFY(script.open(QIODevice::WriteOnly));
            script.write("#!/bin/sh\necho \"$#\" > \"$(dirname \"$0\")/started.txt\"\n");
        }
        QFile::setPermissions(tool.path("Kompa3"),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        tool.start(sim.portPath());

        QVERIFY(tool.process().waitForFinished(15000));
        QCOMPARE(tool.process().exitStatus(), QProcess::NormalExit);
        QCOMPARE(tool.process().exitCode(), 0);
        // Started without arguments: the suite program finds the device itself.
        QFile started(tool.path("started.txt"));
        QVERIFY(QTest::qWaitFor([&] { return started.size() > 0; }, 5000));
        QVERIFY(started.open(QIODevice::ReadOnly));
        QCOMPARE(started.readAll(), QByteArray("0\n"));
    }

    // The tool ends by its own shutdown: a normal exit with code 0, its settings kept.
    void stopSignalsEndItInOrder() {
        for (const int signalNumber : {SIGTERM, SIGHUP, SIGINT}) {
            InstalledTool tool;
            tool.start(tool.path("no-such-port"));
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
