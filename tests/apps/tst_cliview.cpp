#include "support/testsupport.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Run = testsupport::ProgramRun;

Run view(const QStringList& args) {
    return testsupport::runProgram(QStringLiteral("mq27diag-cli"),
                                   QStringList{QStringLiteral("view")} + args);
}

QString sample() {
    return testsupport::sourcePath(QStringLiteral("samples/full.ko3"));
}

} // namespace

// The text snapshot of a window: what scripts read of the main view.
class TestCliView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void mainViewOfTheSample() {
        const Run run = view({sample()});
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.err.isEmpty());
        QStringList sorted = run.out;
        sorted.sort();
        QCOMPARE(run.out, sorted);
        QVERIFY(run.out.contains(QStringLiteral("lblSerialNo_0\tcaption\t1234567")));
        QVERIFY(run.out.contains(QStringLiteral("tabDisplay_1\tcaption\tSmoke measurement")));
        QVERIFY(run.out.contains(QStringLiteral("picDisplay_0\tledstate\t3")));
        QVERIFY(run.out.contains(QStringLiteral("linFireAlarm_0\ttop\t1871")));
        QVERIFY(run.out.contains(QStringLiteral("ctlSmokeLevel_0\tmax\t100")));
        QVERIFY(run.out.contains(QStringLiteral("lblAlarmDelayUnit\tleft\t850")));
        // A label in its own colours shows the system colours that stand for them.
        QVERIFY(run.out.contains(QStringLiteral("lblAlarmDelay\tforecolor\t2147483666")));
        for (const QString& line : run.out)
            QVERIFY2(!line.endsWith(QStringLiteral("\t4294967295")), qPrintable(line));
        for (const QString& line : run.out)
            QCOMPARE(line.count(u'\t'), 2);
    }

    void languageAndUnits() {
        const Run run = view({sample(), QStringLiteral("--language"), QStringLiteral("de"),
                              QStringLiteral("--temperature-unit"), QStringLiteral("F")});
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.contains(QStringLiteral("tabDisplay_1\tcaption\tRauchmessung")));
        const auto temperature = run.out.filter(QStringLiteral("lblTemperature\tcaption\t"));
        QCOMPARE(temperature.size(), 1);
        QVERIFY(temperature.first().endsWith(QStringLiteral(" °F")));
    }

    // The learn window's lamps report the state the rhythms paint from.
    void learnWindowLamps() {
        const Run run =
            view({sample(), QStringLiteral("--form"), QStringLiteral("frmLocalizeLearn")});
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.contains(QStringLiteral("picLocLearnModeLED\tledstate\t0")));
    }

    // Each refusal says why on one line: a file that is there but no regular file is not
    // called missing.
    void refusals_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("why");
        QTest::newRow("missing file")
            << QStringList{QStringLiteral("/nonexistent.ko3")} << 1 << "no such file";
        QTest::newRow("device file")
            << QStringList{QStringLiteral("/dev/zero")} << 1 << "not a regular file";
        QTest::newRow("folder") << QStringList{QStringLiteral("/")} << 1 << "a folder";
        QTest::newRow("unknown option")
            << QStringList{sample(), QStringLiteral("--colour")} << 2 << "unknown option";
        QTest::newRow("unknown language")
            << QStringList{sample(), QStringLiteral("--language"), QStringLiteral("xx")} << 2
            << "--language";
        QTest::newRow("unknown window")
            << QStringList{sample(), QStringLiteral("--form"), QStringLiteral("frmNone")} << 2
            << "no such window";
    }
    void refusals() {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        QFETCH(QString, why);
        const Run run = view(args);
        QCOMPARE(run.exitCode, exitCode);
        QVERIFY(run.out.isEmpty());
        QVERIFY2(run.err.contains(why), qPrintable(run.err));
    }
};

QTEST_GUILESS_MAIN(TestCliView)
#include "tst_cliview.moc"
