// The built program itself, started as an engineer starts it, against the virtual device:
// it finds the device, polls it and saves it beside itself; a sibling family's device makes
// it hand the line over and end.
#include "files/ko3format.h"
#include "support/simprocess.h"
#include "support/testsupport.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

namespace {

// A copy of the tool in its own folder, so that its AutoSave and a stand-in suite program
// lie beside it, with its settings in that folder too.
class InstalledTool {
public:
    InstalledTool() {
        QDir(m_folder.path()).mkpath(QStringLiteral("config/Halvorn"));
        QFile::copy(testsupport::programPath(QStringLiteral("mq27diag")), program());
        QFile settings(m_folder.filePath(QStringLiteral("config/Halvorn/Kompa3.conf")));
        if (settings.open(QIODevice::WriteOnly)) settings.write("[General]\nPort=1\n");
    }
    ~InstalledTool() {
        if (m_process.state() == QProcess::NotRunning) return;
        m_process.kill();
        m_process.waitForFinished(5000);
    }

    QString program() const { return m_folder.filePath(QStringLiteral("mq27diag")); }
    QString path(const QString& name) const { return m_folder.filePath(name); }

    void start(const QString& portPath) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("MQ27D_PORT1"), portPath);
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path(QStringLiteral("config")));
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(program(), {});
    }
    QProcess& process() { return m_process; }
    bool settingsHold(const QByteArray& text) const {
        QFile settings(m_folder.filePath(QStringLiteral("config/Halvorn/Kompa3.conf")));
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
    void findsPollsAndSavesTheDevice();
    void handsOverToTheSuiteProgramAndEnds();
    void hangUpAndInterruptEndItToo();
};

namespace {

// The tool ends by its own shutdown: a normal exit with code 0, its settings kept.
void expectOrderlyEnd(InstalledTool& tool, int signalNumber) {
    QVERIFY(::kill(static_cast<pid_t>(tool.process().processId()), signalNumber) == 0);
    QVERIFY(tool.process().waitForFinished(10000));
    QCOMPARE(tool.process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(tool.process().exitCode(), 0);
    QFile settings(tool.path(QStringLiteral("config/Halvorn/Kompa3.conf")));
    QVERIFY(settings.open(QIODevice::ReadOnly));
    QVERIFY(settings.readAll().contains("Port=1"));
}

} // namespace

void TestProgram::findsPollsAndSavesTheDevice() {
    SimProcess sim;
    QVERIFY(sim.start({"--profile", SimProcess::profile("minimal")}));
    InstalledTool tool;
    tool.start(sim.portPath());
    QVERIFY(tool.process().waitForStarted(5000));

    QVERIFY(QTest::qWaitFor(
        [&] {
            const auto requests = sim.requests();
            return std::count_if(requests.begin(), requests.end(),
                                 [](const auto& r) { return r.serial == 1001 && r.cmd == 5; }) >= 2;
        },
        20000));
    const QString saved =
        tool.path(QStringLiteral("AutoSave/") + ko3::AutoSaveFileName(1001, QDate::currentDate()));
    QVERIFY(QTest::qWaitFor([&] { return QFile::exists(saved); }, 5000));
    QCOMPARE(tool.process().state(), QProcess::Running);
    expectOrderlyEnd(tool, SIGTERM);
}

void TestProgram::handsOverToTheSuiteProgramAndEnds() {
    SimProcess sim;
    QVERIFY(sim.start({"--profile", SimProcess::profile("minlix")}));
    InstalledTool tool;
    {
        QFile script(tool.path(QStringLiteral("Kompa3")));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho \"$#\" > \"$(dirname \"$0\")/started.txt\"\n");
    }
    QFile::setPermissions(tool.path(QStringLiteral("Kompa3")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    tool.start(sim.portPath());

    QVERIFY(tool.process().waitForFinished(15000));
    QCOMPARE(tool.process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(tool.process().exitCode(), 0);
    const QString started = tool.path(QStringLiteral("started.txt"));
    QVERIFY(QTest::qWaitFor([&] { return QFile::exists(started); }, 5000));
}

void TestProgram::hangUpAndInterruptEndItToo() {
    for (const int signalNumber : {SIGHUP, SIGINT}) {
        InstalledTool tool;
        tool.start(tool.path(QStringLiteral("no-such-port")));
        QVERIFY(tool.process().waitForStarted(5000));
        // Its start-up stores the language, after the signals are caught.
        QVERIFY(QTest::qWaitFor([&] { return tool.settingsHold("Language="); }, 10000));
        expectOrderlyEnd(tool, signalNumber);
    }
}

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_program.moc"
