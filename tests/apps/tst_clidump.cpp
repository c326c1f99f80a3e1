#include "files/ko3format.h"
#include "link/checksum.h"
#include "link/telegram.h"
#include "support/testsupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Run = testsupport::ProgramRun;

Run dump(const QStringList& args) {
    return testsupport::runProgram(QStringLiteral("mq27diag-cli"),
                                   QStringList{QStringLiteral("dump")} + args);
}

QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& content) {
    const QString path = dir.filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) file.write(content);
    return path;
}

QByteArray sampleBytes() {
    QFile file(testsupport::sourcePath(QStringLiteral("samples/full.ko3")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestCliDump : public QObject {
    Q_OBJECT

private slots:
    // The sample was made by hand from the byte tables; every value of the dump must be the
    // one written into the bytes.
    void sampleShowsEveryValueRight() {
        const Run run = dump({testsupport::sourcePath(QStringLiteral("samples/full.ko3"))});
        QCOMPARE(run.exitCode, 0);
        QFile expectedFile(testsupport::sourcePath(QStringLiteral("samples/full.values.txt")));
        QVERIFY(expectedFile.open(QIODevice::ReadOnly));
        const QStringList expected =
            QString::fromUtf8(expectedFile.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QCOMPARE(run.out.size(), expected.size());
        for (int i = 0; i < expected.size(); ++i) {
            const QString want = expected[i].section(QLatin1Char('\t'), 1);
            const QString got = run.out[i].section(QLatin1Char('\t'), 1);
            if (got != want)
                QFAIL(qPrintable(QStringLiteral("row %1 %2: dump says \"%3\"")
                                     .arg(i)
                                     .arg(expected[i])
                                     .arg(run.out[i])));
        }
        QCOMPARE(run.out.first(), QStringLiteral("Seriennummer des MQ27D\t1234567"));
        QVERIFY(run.out.contains(QStringLiteral("Akt. Lufttemperatur [°C]\t21.25")));
    }

    void jsonGivesTheSameRows() {
        const QString path = testsupport::sourcePath(QStringLiteral("samples/full.ko3"));
        QProcess process;
        process.start(testsupport::programPath(QStringLiteral("mq27diag-cli")),
                      {QStringLiteral("dump"), path, QStringLiteral("--json")});
        QVERIFY(process.waitForFinished(20000));
        QCOMPARE(process.exitCode(), 0);
        const QJsonArray rows = QJsonDocument::fromJson(process.readAllStandardOutput()).array();
        const Run plain = dump({path});
        QCOMPARE(rows.size(), plain.out.size());
        QCOMPARE(rows[3][QStringLiteral("text")].toString() + QLatin1Char('\t') +
                     rows[3][QStringLiteral("value")].toString(),
                 plain.out[3]);
        QCOMPARE(rows[1][QStringLiteral("type")].toString(), QStringLiteral("S"));
    }

    void filesThatHoldNoDevice_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("blank line") << QByteArray("\r\n");
        QTest::newRow("garbage") << QByteArray("this is no device file\r\n");
        QTest::newRow("binary") << QByteArray("\x00\xff\x02\x08\x0a\x01", 6);
        QTest::newRow("header only") << QByteArray("&H00 &H05 &H00 &H13 \r\n");
    }
    void filesThatHoldNoDevice() {
        QFETCH(QByteArray, content);
        QTemporaryDir dir;
        const Run run = dump({writeFile(dir, QStringLiteral("x.ko3"), content)});
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.out.isEmpty());
        QCOMPARE(run.err.count(QLatin1Char('\n')), 1);
    }

    void missingFileAndBadArguments() {
        QTemporaryDir dir;
        const Run missing = dump({dir.filePath(QStringLiteral("nothing.ko3"))});
        QCOMPARE(missing.exitCode, 1);
        QCOMPARE(missing.err.count(QLatin1Char('\n')), 1);
        QCOMPARE(dump({}).exitCode, 2);
    }

    // Every cut of the sample file loads without a crash; what is whole is shown.
    void truncatedFiles() {
        const QByteArray whole = sampleBytes();
        QTemporaryDir dir;
        const qsizetype rows = dump({writeFile(dir, QStringLiteral("whole.ko3"), whole)}).out.size();
        for (int cut : {5, 60, 100, 1200, 2000, 3000, 4500}) {
            const Run run = dump({writeFile(dir, QStringLiteral("cut.ko3"), whole.left(cut))});
            QVERIFY2(run.exitCode == 0 || run.exitCode == 1, qPrintable(QString::number(cut)));
            if (run.exitCode == 0) QCOMPARE(run.out.size(), rows);
        }
    }

    void oldFormAndOtherFamilies() {
        QTemporaryDir dir;
        const QDateTime when(QDate(2007, 7, 4), QTime(12, 0));
        const Bytes own =
            telegram::StampTelegram(
                telegram::MakeSendFrame(testsupport::bytes({10, 1, 0, 0, 0, 42}), true).value(),
                when)
                .value();
        Run run =
            dump({writeFile(dir, QStringLiteral("old.ko3"), ko3::MakeHexLine(own).toLatin1())});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out.first(), QStringLiteral("Seriennummer des MQ27D\t42"));

        Bytes foreign(52, 0x11);
        foreign[0] = 2;
        foreign[1] = 48;
        foreign[2] = 1;
        checksum::AddSumOfBytes(foreign);
        const Bytes stamped = telegram::StampTelegram(foreign, when).value();
        run = dump(
            {writeFile(dir, QStringLiteral("varlix.ko3"), ko3::MakeHexLine(stamped).toLatin1())});
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.err.contains(QStringLiteral("VARLIX")));
    }
};

QTEST_GUILESS_MAIN(TestCliDump)
#include "tst_clidump.moc"
