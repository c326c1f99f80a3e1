// The command line on saved read-outs, without a device: dump, view and record, and how
// each refuses what it cannot do.
#include "files/ko3format.h"
#include "link/checksum.h"
#include "link/telegram.h"
#include "support/testsupport.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Run = testsupport::ProgramRun;

Run cli(const QString& command, const QStringList& args) {
    return testsupport::runProgram(QStringLiteral("mq27diag-cli"), QStringList{command} + args);
}

QString sample() {
    return testsupport::sourcePath(QStringLiteral("samples/full.ko3"));
}

QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& content) {
    const QString path = dir.filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) file.write(content);
    return path;
}

} // namespace

class TestCli : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The sample was made by hand from the byte tables; every value of the dump must be the
    // one written into the bytes.
    void dumpShowsEveryValueOfTheSample() {
        const Run run = cli("dump", {sample()});
        QCOMPARE(run.exitCode, 0);
        QFile expectedFile(testsupport::sourcePath(QStringLiteral("samples/full.values.txt")));
        QVERIFY(expectedFile.open(QIODevice::ReadOnly));
        const QStringList expected =
            QString::fromUtf8(expectedFile.readAll()).split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(run.out.size(), expected.size());
        for (int i = 0; i < expected.size(); ++i)
            QVERIFY2(run.out[i].section(u'\t', 1) == expected[i].section(u'\t', 1),
                     qPrintable(expected[i] + QStringLiteral(" | ") + run.out[i]));
        QCOMPARE(run.out.first(), QStringLiteral("Seriennummer des MQ27D\t1234567"));

        const Run json = cli("dump", {sample(), "--json"});
        const QJsonArray rows = QJsonDocument::fromJson(json.out.join(u'\n').toUtf8()).array();
        QCOMPARE(rows.size(), run.out.size());
        QCOMPARE(rows[3][QStringLiteral("text")].toString() + u'\t' +
                     rows[3][QStringLiteral("value")].toString(),
                 run.out[3]);
        QCOMPARE(rows[1][QStringLiteral("type")].toString(), QStringLiteral("S"));
    }

    void dumpRefusesFilesThatHoldNoDevice_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("blank line") << QByteArray("\r\n");
        QTest::newRow("garbage") << QByteArray("this is no device file\r\n");
        QTest::newRow("binary") << QByteArray("\x00\xff\x02\x08\x0a\x01", 6);
        QTest::newRow("header only") << QByteArray("&H00 &H05 &H00 &H13 \r\n");
    }
    void dumpRefusesFilesThatHoldNoDevice() {
        QFETCH(QByteArray, content);
        QTemporaryDir dir;
        const Run run = cli("dump", {writeFile(dir, QStringLiteral("x.ko3"), content)});
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.out.isEmpty());
        QCOMPARE(run.err.count(u'\n'), 1);
    }

    void dumpOfAnOldFormFileAndOfAnotherFamily() {
        QTemporaryDir dir;
        const QString old = ko3::MakeHexLine(testsupport::ownTelegram(1, 42));
        Run run = cli("dump", {writeFile(dir, QStringLiteral("old.ko3"), old.toLatin1())});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out.first(), QStringLiteral("Seriennummer des MQ27D\t42"));

        Bytes foreign(52, 0x11);
        foreign[0] = 2;
        foreign[1] = 48;
        foreign[2] = 1;
        checksum::AddSumOfBytes(foreign);
        const Bytes stamped = telegram::StampTelegram(foreign, testsupport::kRecorded).value();
        run = cli("dump", {writeFile(dir, QStringLiteral("varlix.ko3"),
                                     ko3::MakeHexLine(stamped).toLatin1())});
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.err.contains(QStringLiteral("VARLIX")));
    }

    // The text snapshot of a window: what scripts read of the main view.
    void viewOfTheSample() {
        const Run run = cli("view", {sample()});
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.err.isEmpty());
        QStringList sorted = run.out;
        sorted.sort();
        QCOMPARE(run.out, sorted);
        QVERIFY(run.out.contains(QStringLiteral("lblSerialNo_0\tcaption\t1234567")));
        QVERIFY(run.out.contains(QStringLiteral("tabDisplay_1\tcaption\tSmoke measurement")));
        QVERIFY(run.out.contains(QStringLiteral("picDisplay_0\tledstate\t3")));
        QVERIFY(run.out.filter(QStringLiteral("lblSmokeLevel_0\tcaption\t"))
                    .first()
                    .endsWith(QStringLiteral(" %/m")));
        // A label in its own colours shows the system colours that stand for them.
        QVERIFY(run.out.contains(QStringLiteral("lblAlarmDelay\tforecolor\t2147483666")));
        for (const QString& line : run.out)
            QVERIFY2(line.count(u'\t') == 2 && !line.endsWith(QStringLiteral("\t4294967295")),
                     qPrintable(line));

        // The learn window's lamps report the state the rhythms paint from.
        const Run learn = cli("view", {sample(), "--form", "frmLocalizeLearn"});
        QVERIFY(learn.out.contains(QStringLiteral("picLocLearnModeLED\tledstate\t0")));
    }

    void viewInAnotherLanguageAndUnits() {
        const Run run = cli("view", {sample(), "--language", "de", "--temperature-unit", "F",
                                     "--smoke-unit", "ft"});
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.contains(QStringLiteral("tabDisplay_1\tcaption\tRauchmessung")));
        QVERIFY(run.out.filter(QStringLiteral("lblTemperature\tcaption\t"))
                    .first()
                    .endsWith(QStringLiteral(" °F")));
        QVERIFY(run.out.filter(QStringLiteral("lblSmokeLevel_0\tcaption\t"))
                    .first()
                    .endsWith(QStringLiteral(" %/ft")));
    }

    // Both pages in one PDF whose text holds the serial number and the lines of page two.
    void recordAsPdf() {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("record.pdf"));
        const Run run = cli("record", {sample(), "--pdf", path});
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.isEmpty());
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray pdf = file.readAll();
        QVERIFY(pdf.startsWith("%PDF-"));
        const QRegularExpression page(QStringLiteral("/Type\\s*/Page(?!s)"));
        QCOMPARE(QString::fromLatin1(pdf).count(page), 2);

        const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
        if (pdftotext.isEmpty()) QSKIP("pdftotext (poppler-utils) is not installed");
        QProcess extract;
        extract.start(pdftotext, {QStringLiteral("-layout"), path, QStringLiteral("-")});
        QVERIFY(extract.waitForFinished(30000));
        const QStringList pages = QString::fromUtf8(extract.readAllStandardOutput()).split(u'\f');
        QVERIFY(pages.size() >= 2);
        QVERIFY(pages[0].contains(QStringLiteral("1234567")));
        QVERIFY(pages[1].contains(QStringLiteral("1234567")));
        QVERIFY(pages[1].contains(QStringLiteral("Manual release settings")));
    }

    // Each refusal says why and writes nothing on standard output.
    void refusals_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("why");
        const QString file = sample();
        const auto row = [](const char* name, const QStringList& args, int exitCode,
                            const char* why) {
            QTest::newRow(name) << args << exitCode << QString(why);
        };
        row("dump: missing file", {"dump", "/nonexistent.ko3"}, 1, "no such file");
        row("dump: no file", {"dump"}, 2, "one file");
        row("view: missing file", {"view", "/nonexistent.ko3"}, 1, "no such file");
        // A file that is there but no regular file is not called missing.
        row("view: device file", {"view", "/dev/zero"}, 1, "not a regular file");
        row("view: folder", {"view", "/"}, 1, "a folder");
        row("view: unknown option", {"view", file, "--colour"}, 2, "unknown option");
        row("view: unknown language", {"view", file, "--language", "xx"}, 2, "--language");
        row("view: unknown window", {"view", file, "--form", "frmNone"}, 2, "no such window");
        row("record: missing file", {"record", "/nonexistent.ko3"}, 1, "no such file");
        row("record: no file", {"record"}, 2, "no file given");
        row("record: unknown option", {"record", file, "--colour"}, 2, "--colour");
        row("record: unknown language", {"record", file, "--language", "xx"}, 2, "--language");
        row("record: three comments",
            {"record", file, "--comment", "a", "--comment", "b", "--comment", "c"}, 2,
            "two comment");
        row("record: pdf on a full disk", {"record", file, "--pdf", "/dev/full"}, 3,
            "No space left");
        row("record: pdf into a missing folder", {"record", file, "--pdf", "/nonexistent/r.pdf"}, 3,
            "No such file");
    }
    void refusals() {
        QFETCH(QStringList, args);
        QFETCH(QString, why);
        const QString command = args.takeFirst();
        const Run run = cli(command, args);
        QTEST(run.exitCode, "exitCode");
        QVERIFY(run.out.isEmpty());
        QVERIFY2(run.err.contains(why), qPrintable(run.err));
    }
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
