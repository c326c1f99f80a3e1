#include "support/testsupport.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Run = testsupport::ProgramRun;

Run record(const QStringList& args) {
    return testsupport::runProgram(QStringLiteral("mq27diag-cli"),
                                   QStringList{QStringLiteral("record")} + args);
}

QString sample() {
    return testsupport::sourcePath(QStringLiteral("samples/full.ko3"));
}

} // namespace

// The record of a saved read-out without a window: as text, as PDF, and the exit codes.
class TestCliRecord : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void textOnStandardOutput() {
        const Run run = record({sample(), QStringLiteral("--language"), QStringLiteral("de"),
                                QStringLiteral("--comment"), QStringLiteral("Wartung"),
                                QStringLiteral("--comment"), QStringLiteral("Zweite Zeile")});
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.err.isEmpty());
        // Split at LF, each line still ends in its CR: two pages of 80.
        QCOMPARE(run.out.size(), 160);
        for (const QString& line : run.out)
            QVERIFY(line.endsWith(u'\r'));
        QCOMPARE(run.out[0], QStringLiteral("       Wartung\r"));
        QCOMPARE(run.out[1], QStringLiteral("       Zweite Zeile\r"));
        QVERIFY(run.out[5].contains(QStringLiteral("1234567")));
    }

    // Both pages in one PDF whose text holds the serial number and the lines of page two.
    void pdfOfBothPages() {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("record.pdf"));
        const Run run = record({sample(), QStringLiteral("--pdf"), path});
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
        const QString text = QString::fromUtf8(extract.readAllStandardOutput());
        const QStringList pages = text.split(u'\f');
        QVERIFY(pages.size() >= 2);
        QVERIFY(pages[0].contains(QStringLiteral("1234567")));
        QVERIFY(pages[1].contains(QStringLiteral("1234567")));
        for (const QString& line :
             {QStringLiteral("Advanced settings"), QStringLiteral("Manual release settings"),
              QStringLiteral("Alarm resistance")}) {
            QVERIFY2(pages[1].contains(line), qPrintable(line));
        }
    }

    // A folder the user may not write in: the reason, and nothing left in it. Root writes
    // everywhere, so there the command runs as nobody.
    void pdfIntoAFolderTheUserMayNotWrite() {
        QTemporaryDir folder;
        QVERIFY(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner |
                                                         QFile::ReadOther | QFile::ExeOther));
        const QString path = folder.filePath(QStringLiteral("record.pdf"));
        const QStringList args = {QStringLiteral("record"), sample(), QStringLiteral("--pdf"),
                                  path};
        QProcess run;
        if (::geteuid() == 0) {
            const QString setpriv = QStandardPaths::findExecutable(QStringLiteral("setpriv"));
            if (setpriv.isEmpty()) QSKIP("setpriv is not installed");
            run.start(setpriv,
                      QStringList{QStringLiteral("--reuid=nobody"),
                                  QStringLiteral("--regid=nogroup"),
                                  QStringLiteral("--clear-groups"),
                                  testsupport::programPath(QStringLiteral("mq27diag-cli"))} +
                          args);
        } else {
            run.start(testsupport::programPath(QStringLiteral("mq27diag-cli")), args);
        }
        QVERIFY(run.waitForFinished(30000));
        const QString err = QString::fromLocal8Bit(run.readAllStandardError());
        QCOMPARE(run.exitCode(), 3);
        QVERIFY2(err.contains(QStringLiteral("ermission denied")), qPrintable(err));
        QVERIFY(QDir(folder.path()).isEmpty());
        QFile::setPermissions(folder.path(),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void exitCodes_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("missing file") << QStringList{QStringLiteral("/nonexistent.ko3")} << 1;
        QTest::newRow("no file") << QStringList{} << 2;
        QTest::newRow("unknown option") << QStringList{sample(), QStringLiteral("--colour")} << 2;
        QTest::newRow("unknown language")
            << QStringList{sample(), QStringLiteral("--language"), QStringLiteral("xx")} << 2;
        QTest::newRow("three comments")
            << QStringList{sample(), "--comment", "a", "--comment", "b", "--comment", "c"} << 2;
        QTest::newRow("pdf on a full disk")
            << QStringList{sample(), QStringLiteral("--pdf"), QStringLiteral("/dev/full")} << 3;
        QTest::newRow("pdf into a missing folder")
            << QStringList{sample(), QStringLiteral("--pdf"), QStringLiteral("/nonexistent/r.pdf")}
            << 3;
    }
    void exitCodes() {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        const Run run = record(args);
        QCOMPARE(run.exitCode, exitCode);
        QVERIFY(run.out.isEmpty());
        QVERIFY(!run.err.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestCliRecord)
#include "tst_clirecord.moc"
