// How the virtual device refuses a bad command line or profile: one message naming the
// option or the file and field, which scripts rely on and the end-to-end tests never try.
#include "sim/device_profile.h"
#include "sim/sim_options.h"

#include <QTest>

using mq27sim::CommandLine;
using mq27sim::ProfileLoader;
using mq27sim::SimOptions;

class TestSimOptions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Numbers that no int holds, that make a timer of 0 ms, or that mean nothing.
    void badValuesAreRefused_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named");
        const QStringList rows = {
            "delay 1e300",        "delay nan",          "delay -inf",        "delay -1",
            "delay 2.5",          "stagger 1001",       "speed 0",           "speed nan",
            "speed inf",          "unsolicited 0.0001", "unsolicited nan",   "unsolicited 1e300",
            "unsolicited 3:9",    "unsolicited 3:1.5",  "unsolicited 3:1:1", "bad-crc-every 0",
            "bad-crc-every 1e10", "noise 4097",         "split-gap 0",       "silence nan",
            "silence -1",         "silence 1:0",        "silence 1:inf",     "silence 1:2:3",
            "close-after nan",    "close-after 1e300",  "close-after 0"};
        for (const QString& row : rows) {
            const QString option = "--" + row.section(' ', 0, 0);
            QTest::newRow(qPrintable(row)) << QStringList{option, row.section(' ', 1)} << option;
        }
        QTest::newRow("unknown option") << QStringList{"--colour"} << "colour";
        QTest::newRow("stray argument") << QStringList{"full.json"} << "full.json";
    }

    void badValuesAreRefused() {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        SimOptions options;
        QString message;
        QCOMPARE(mq27sim::parseCommandLine(QStringList{"mq27sim"} + arguments, options, message),
                 CommandLine::Error);
        QVERIFY2(message.contains(named), qPrintable(message));
    }

    void badProfileNamesTheField_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("named");
        const QList<std::pair<const char*, const char*>> rows = {
            {R"({"serialNumber": )", "not valid JSON"},
            {"[1, 2]", "expected a JSON object"},
            {R"({"colour": 1})", "field 'colour'"},
            {R"({"airFlow": {"flowVelocity": 1}})", "field 'airFlow.flowVelocity'"},
            {R"({"controller": {"alarmDelaySetPoint": 300}})",
             "field 'controller.alarmDelaySetPoint'"},
            {R"({"controller": {"alarmDelaySetPoint": 70}})", "limits 0 to 60"},
            {R"({"airFlow": {"altitude": 10.5}})", "field 'airFlow.altitude'"},
            {R"({"airFlow": {"hasFlow": "yes"}})", "field 'airFlow.hasFlow'"},
            {R"({"detectors": [{"smokeValueRatio": {"value": 20, "drift": 1e300}}]})",
             "field 'detectors[0].smokeValueRatio.drift'"},
            {R"({"faults": {"pending": [32]}})", "field 'faults.pending'"},
            {R"({"controller": {"softwareNum": "27.10"}})", "field 'controller.softwareNum'"},
            {R"({"detectors": [{}, {}, {}]})", "field 'detectors'"},
            {R"({"modules": [{"serialNum": 5}, {"serialNum": 5}]})",
             "field 'modules[1].serialNum'"},
            {R"({"modules": [{"serialNum": 12345, "internal": true}]})",
             "field 'modules[0].internal'"},
            {R"({"controller": {"hasTwoDetectors": true}})", "field 'controller.hasTwoDetectors'"},
            {R"({"localisation": {"holeTimes": []}})", "field 'localisation.holeTimes'"},
            {R"({"serialNumber": 4294967296})", "field 'serialNumber'"},
            {R"({"kind": 1, "airFlow": {}})", "field 'airFlow'"},
            {R"({"unsolicited": {"everySeconds": 0.0001}})", "field 'unsolicited.everySeconds'"},
            {R"({"unsolicited": {"everySeconds": 2, "command": 6}})",
             "field 'unsolicited.command'"},
            {R"({"telegram4": "00 01"})", "field 'telegram4'"},
            {R"({"schedule": [{"afterSeconds": 1, "value": "detectors[1].alarmThreshold", "to": 5}]})",
             "field 'schedule[0].value'"},
            {R"({"schedule": [{"afterSeconds": 1, "value": "faults.pending", "to": [32]}]})",
             "field 'schedule[0].to'"},
        };
        for (const auto& [json, named] : rows)
            QTest::newRow(named) << QByteArray(json) << QString::fromLatin1(named);
    }

    void badProfileNamesTheField() {
        QFETCH(QByteArray, json);
        QFETCH(QString, named);
        QString error;
        QVERIFY(!ProfileLoader::parse(json, QStringLiteral("bad.json"), error));
        QVERIFY2(error.startsWith(QStringLiteral("profile bad.json: ")) && error.contains(named),
                 qPrintable(error));
    }
};

QTEST_GUILESS_MAIN(TestSimOptions)
#include "tst_simoptions.moc"
