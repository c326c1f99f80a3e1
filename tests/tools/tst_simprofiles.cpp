// Device profiles and the program itself: the shipped profiles, what a bad profile is told,
// the exit status, the port link.
#include "sim/device_profile.h"
#include "tools/simclient.h"

#include <csignal>

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

using namespace simtest;
using mq27sim::ProfileLoader;

namespace {

QString loadError(const QByteArray& json) {
    QString error;
    const auto p = ProfileLoader::parse(json, "bad.json", error);
    return p ? QString() : error;
}

// Starts the program and reads the port path from its first line.
QString startProgram(QProcess& process, const QStringList& arguments) {
    process.start(testsupport::programPath("mq27sim"), arguments);
    if (!process.waitForStarted(5000) || !process.waitForReadyRead(5000)) return {};
    return QString::fromLocal8Bit(process.readLine()).trimmed();
}

} // namespace

class TestSimProfiles : public QObject {
    Q_OBJECT

private slots:
    void shippedProfilesLoad_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("kind");
        QTest::addColumn<double>("serial");
        QTest::addColumn<int>("modules");
        QTest::newRow("minimal") << "minimal" << 10 << 1001.0 << 0;
        QTest::newRow("full") << "full" << 10 << 1234567.0 << 4;
        QTest::newRow("ten modules") << "tenmodules" << 10 << 3100010.0 << 10;
        QTest::newRow("first family") << "varlix" << 1 << 3001.0 << 0;
        QTest::newRow("seventh family") << "minlix" << 7 << 7001.0 << 0;
    }

    void shippedProfilesLoad() {
        QFETCH(QString, name);
        const DeviceProfile p = profile(name);
        QTEST(p.kind, "kind");
        QTEST(double(p.serialNumber), "serial");
        int modules = 0;
        for (int m = 0; m < 10; ++m)
            modules += p.values.get(mq27sim::valueName("modules", m, "serialNum")) != 0;
        QTEST(modules, "modules");
        if (p.kind == 10) QCOMPARE(p.values.get("controller.numOfExtModulesSet"), double(modules));
    }

    void omittedFieldsTakeDefaults() {
        const DeviceProfile p = ProfileLoader::defaults();
        QCOMPARE(p.kind, 10);
        QCOMPARE(p.serialNumber, 1001u);
        QCOMPARE(p.values.get("controller.hasTwoDetectors"), 0.0);
        QVERIFY(p.values.has("detectors[0].alarmThreshold"));
        QVERIFY(!p.values.has("detectors[1].alarmThreshold"));
        QVERIFY(!p.values.has("modules[0].serialNum"));
        QCOMPARE(p.values.get("sensors[4].ntcBeta"), 3977.0);
        QCOMPARE(p.values.get("sensors[4].hasNTC"), 0.0);
        QCOMPARE(p.values.get("features.hasTemperatureSensors"), 0.0);
        QCOMPARE(p.values.get("display.ledOp"), 3.0);
        QCOMPARE(p.values.get("faults.valid"), 4294967295.0);
    }

    void listedSensorsAreThere() {
        QString error;
        const auto p =
            ProfileLoader::parse(R"({"sensors":[{}, {"hasNTC": false}, {}]})", "s.json", error);
        QVERIFY2(p, qPrintable(error));
        const double present[] = {1, 0, 1, 0, 0};
        for (int n = 0; n < 5; ++n)
            QCOMPARE(p->values.get(mq27sim::valueName("sensors", n, "hasNTC")), present[n]);
        QCOMPARE(p->values.get("features.hasTemperatureSensors"), 1.0);
    }

    void badProfileNamesTheField_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("field");
        QTest::newRow("not JSON") << QByteArray("{\"serialNumber\": ") << "not valid JSON";
        QTest::newRow("not an object") << QByteArray("[1, 2]") << "expected a JSON object";
        QTest::newRow("unknown field") << QByteArray(R"({"colour": 1})") << "field 'colour'";
        QTest::newRow("unknown field in a section")
            << QByteArray(R"({"airFlow": {"flowVelocity": 1}})") << "field 'airFlow.flowVelocity'";
        QTest::newRow("byte out of range")
            << QByteArray(R"({"controller": {"alarmDelaySetPoint": 300}})")
            << "field 'controller.alarmDelaySetPoint'";
        QTest::newRow("outside the device's own limits")
            << QByteArray(R"({"controller": {"alarmDelaySetPoint": 70}})") << "limits 0 to 60";
        QTest::newRow("fraction for a whole number")
            << QByteArray(R"({"airFlow": {"altitude": 10.5}})") << "field 'airFlow.altitude'";
        QTest::newRow("text for a flag")
            << QByteArray(R"({"airFlow": {"hasFlow": "yes"}})") << "field 'airFlow.hasFlow'";
        QTest::newRow("drift on a flag")
            << QByteArray(R"({"airFlow": {"hasFlow": {"value": 1}}})") << "field 'airFlow.hasFlow'";
        QTest::newRow("LED state 4")
            << QByteArray(R"({"display": {"ledOp": 4}})") << "field 'display.ledOp'";
        QTest::newRow("fault bit 32")
            << QByteArray(R"({"faults": {"pending": [32]}})") << "field 'faults.pending'";
        QTest::newRow("software number of two parts")
            << QByteArray(R"({"controller": {"softwareNum": "27.10"}})")
            << "field 'controller.softwareNum'";
        QTest::newRow("three detectors")
            << QByteArray(R"({"detectors": [{}, {}, {}]})") << "field 'detectors'";
        QTest::newRow("eleven modules")
            << QByteArray(R"({"modules": [{"serialNum":1},{"serialNum":2},{"serialNum":3},
                {"serialNum":4},{"serialNum":5},{"serialNum":6},{"serialNum":7},{"serialNum":8},
                {"serialNum":9},{"serialNum":10},{"serialNum":11}]})")
            << "field 'modules'";
        QTest::newRow("module without serial number")
            << QByteArray(R"({"modules": [{"ledOp": 3}]})") << "field 'modules[0].serialNum'";
        QTest::newRow("two modules of one serial number")
            << QByteArray(R"({"modules": [{"serialNum": 5}, {"serialNum": 5}]})")
            << "field 'modules[1].serialNum'";
        QTest::newRow("internal module with a short serial number")
            << QByteArray(R"({"modules": [{"serialNum": 12345, "internal": true}]})")
            << "field 'modules[0].internal'";
        QTest::newRow("unknown field in a module")
            << QByteArray(R"({"modules": [{"serialNum": 12345, "colour": 1}]})")
            << "field 'modules[0].colour'";
        QTest::newRow("two-detector flag against the list")
            << QByteArray(R"({"controller": {"hasTwoDetectors": true}})")
            << "field 'controller.hasTwoDetectors'";
        QTest::newRow("empty hole times") << QByteArray(R"({"localisation": {"holeTimes": []}})")
                                          << "field 'localisation.holeTimes'";
        QTest::newRow("serial number 0")
            << QByteArray(R"({"serialNumber": 0})") << "field 'serialNumber'";
        QTest::newRow("kind 5") << QByteArray(R"({"kind": 5})") << "field 'kind'";
        QTest::newRow("section for another family")
            << QByteArray(R"({"kind": 1, "airFlow": {}})") << "field 'airFlow'";
        QTest::newRow("unsolicited command 6")
            << QByteArray(R"({"unsolicited": {"everySeconds": 2, "command": 6}})")
            << "field 'unsolicited.command'";
        QTest::newRow("telegram 4 too short")
            << QByteArray(R"({"telegram4": "00 01"})") << "field 'telegram4'";
    }

    void badProfileNamesTheField() {
        QFETCH(QByteArray, json);
        QFETCH(QString, field);
        const QString error = loadError(json);
        QVERIFY2(error.startsWith("profile bad.json: "), qPrintable(error));
        QVERIFY2(error.contains(field), qPrintable(error));
    }

    void twoDevicesWithOneSerialNumberConflict() {
        QVERIFY(ProfileLoader::conflicts({profile("full"), profile("minimal")}).isEmpty());
        QVERIFY(ProfileLoader::conflicts({profile("full"), profile("full")}).contains("1234567"));
    }

    void programRefusesABadProfileWithStatusTwo_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("message");
        QTest::newRow("bad value")
            << QByteArray(R"({"display": {"ledOp": 7}})") << "field 'display.ledOp'";
        QTest::newRow("bad JSON") << QByteArray("{") << "not valid JSON";
    }

    void programRefusesABadProfileWithStatusTwo() {
        QFETCH(QByteArray, json);
        QFETCH(QString, message);
        QTemporaryDir dir;
        const QString path = dir.filePath("broken.json");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(json);
        file.close();
        QProcess process;
        process.start(testsupport::programPath("mq27sim"), {"--profile", path});
        QVERIFY(process.waitForFinished(10000));
        QCOMPARE(process.exitCode(), 2);
        const QString err = QString::fromLocal8Bit(process.readAllStandardError());
        QVERIFY2(err.contains(path) && err.contains(message), qPrintable(err));
        QVERIFY(process.readAllStandardOutput().isEmpty());
    }

    void programRefusesBadArgumentsWithStatusTwo_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("missing profile") << QStringList{"--profile", "/nonexistent/x.json"};
        QTest::newRow("serial number twice")
            << QStringList{"--profile", testsupport::sourcePath("tools/profiles/full.json"),
                           "--profile", testsupport::sourcePath("tools/profiles/full.json")};
        QTest::newRow("bad option value") << QStringList{"--split-gap", "-5"};
    }

    void programRefusesBadArgumentsWithStatusTwo() {
        QFETCH(QStringList, arguments);
        QProcess process;
        process.start(testsupport::programPath("mq27sim"), arguments);
        QVERIFY(process.waitForFinished(10000));
        QCOMPARE(process.exitCode(), 2);
        QVERIFY(!process.readAllStandardError().isEmpty());
    }

    void helpListsTheOptions() {
        QProcess process;
        process.start(testsupport::programPath("mq27sim"), {"--help"});
        QVERIFY(process.waitForFinished(10000));
        QCOMPARE(process.exitCode(), 0);
        const QByteArray help = process.readAllStandardOutput();
        for (const char* option :
             {"--profile", "--link", "--delay", "--speed", "--unsolicited", "--bad-crc-every",
              "--noise", "--split-gap", "--silence", "--pace", "--close-after", "--log"})
            QVERIFY2(help.contains(option), option);
    }

    // The program as `make run` starts it: a link to the port, a complete read-out through it,
    // and the link gone after the end.
    void programAnswersThroughItsLinkAndRemovesIt() {
        QTemporaryDir dir;
        const QString link = dir.filePath("mq27port");
        QVERIFY(QFile::link("/dev/pts/nonexistent", link)); // a stale link to replace
        QProcess process;
        const QString port =
            startProgram(process, {"--profile", testsupport::sourcePath("tools/profiles/full.json"),
                                   "--link", link, "--delay", "5"});
        QVERIFY(port.startsWith("/dev/"));
        QCOMPARE(QFileInfo(link).symLinkTarget(), port);
        {
            SimClient client(link);
            const int sizes[] = {12, 195, 204, 47, 414};
            for (int command = 1; command <= 5; ++command) {
                const auto answer = client.request(readRequest(command, 1234567), 1000);
                QVERIFY(answer);
                QCOMPARE(int(answer->size()), sizes[command - 1]);
            }
        }
        ::kill(pid_t(process.processId()), SIGTERM);
        QVERIFY(process.waitForFinished(5000));
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(!QFileInfo(link).isSymLink());
    }

    void programEndsAfterClosingTheLine() {
        QProcess process;
        const QString port = startProgram(process, {"--close-after", "0.2"});
        QVERIFY(!port.isEmpty());
        QVERIFY(process.waitForFinished(5000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
    }
};

QTEST_GUILESS_MAIN(TestSimProfiles)
#include "tst_simprofiles.moc"
