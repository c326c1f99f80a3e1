#include "display/mainview_elements.h"
#include "record/record_elements.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"
#include "support/livetool.h"

#include <unistd.h>

#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <memory>

namespace {

bool write(const QString& path, const QString& text) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0;
}

QString output(const QString& program, const QStringList& arguments, bool* ok = nullptr) {
    QProcess process;
    process.start(program, arguments);
    const bool ended = process.waitForFinished();
    if (ok) *ok = ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return QString::fromLocal8Bit(process.readAllStandardOutput());
}

// A print server of the test's own, with a PDF printer as its default. It listens on a
// socket in a folder of the test, so a print system of the machine is neither used nor
// disturbed. The PDF printer's backend runs only for root, and reads its settings from
// /etc/cups; the filters run as a user of their own, reading the spool and writing `out`.
struct PrintServer {
    QTemporaryDir dir;
    QProcess server;
    QString pdfConfig;
    QString out = dir.filePath("out");

    // Why the server cannot run here, or nothing once it runs.
    QString start() {
        const QStringList sbin = {"/usr/sbin", "/usr/bin"};
        const QString cupsd = QStandardPaths::findExecutable("cupsd", sbin);
        const QString lpadmin = QStandardPaths::findExecutable("lpadmin", sbin);
        if (cupsd.isEmpty() || lpadmin.isEmpty() ||
            !QFile::exists("/usr/lib/cups/backend/cups-pdf") ||
            QStandardPaths::findExecutable("pdftotext").isEmpty())
            return "CUPS with the cups-pdf printer is not installed (scripts/install-deps.sh)";
        if (geteuid() != 0) return "CUPS cannot start a PDF printer for a user other than root";
        const QString printer =
            QStringLiteral("mq27test%1").arg(QCoreApplication::applicationPid());
        for (const char* sub : {"out", "root", "spool/tmp", "cache", "state", "log"})
            QDir(dir.path()).mkpath(sub);
        for (const char* sub : {"", "root", "spool", "cache", "state", "log"})
            QFile::setPermissions(dir.filePath(sub), QFile::Permissions(0x7755));
        for (const char* sub : {"out", "spool/tmp"})
            QFile::setPermissions(dir.filePath(sub), QFile::Permissions(0x7777));
        pdfConfig = "/etc/cups/cups-pdf-" + printer + ".conf";
        if (!write(pdfConfig, "Out " + out + "\nLabel 1\nLog " + dir.filePath("log") + "\n"))
            return "CUPS cannot start a PDF printer: /etc/cups is not writable";
        const QString socket = dir.filePath("cups.sock");
        const QString root = dir.filePath("root");
        write(root + "/cupsd.conf", "Listen " + socket +
                                        "\nLogLevel warn\nWebInterface No\nBrowsing No\n"
                                        "<Location />\n  Order allow,deny\n  Allow all\n"
                                        "</Location>\n");
        write(root + "/cups-files.conf",
              QStringLiteral("ServerRoot %1\nRequestRoot %2/spool\nTempDir %2/spool/tmp\nCacheDir "
                             "%2/cache\nStateDir %2/state\nErrorLog %2/log/error_log\nAccessLog "
                             "%2/log/access_log\nPageLog %2/log/page_log\nSystemGroup root\n")
                  .arg(root, dir.path()));
        server.start(cupsd, {"-f", "-c", root + "/cupsd.conf", "-s", root + "/cups-files.conf"});
        if (!server.waitForStarted()) return "CUPS did not start: " + server.errorString();
        QDeadlineTimer deadline(20000);
        while (!QFile::exists(socket) && server.state() != QProcess::NotRunning &&
               !deadline.hasExpired())
            server.waitForFinished(100);
        if (!QFile::exists(socket))
            return "CUPS ended at its start: " +
                   QString::fromLocal8Bit(server.readAllStandardError());
        qputenv("CUPS_SERVER", socket.toLocal8Bit());
        // The printer takes PostScript; made by cairo, its text still says which characters
        // it shows, so that the PDF's text can be read back.
        bool added = false;
        bool chosen = false;
        output(lpadmin,
               {"-p", printer, "-v", "cups-pdf:/" + printer, "-P",
                "/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd", "-o",
                "pdftops-renderer-default=pdftocairo", "-E"},
               &added);
        output(lpadmin, {"-d", printer}, &chosen);
        return added && chosen ? QString() : "lpadmin could not add the PDF printer";
    }

    // The PDFs the printer has finished and handed over.
    QStringList pdfs() const {
        QStringList done;
        for (const QString& name : QDir(out).entryList({"*.pdf"}, QDir::Files))
            if (output("pdfinfo", {QDir(out).filePath(name)}).contains("Pages:"))
                done << QDir(out).filePath(name);
        return done;
    }

    ~PrintServer() {
        if (server.state() != QProcess::NotRunning) {
            server.terminate();
            server.waitForFinished();
        }
        if (!pdfConfig.isEmpty()) QFile::remove(pdfConfig);
    }
};

} // namespace

// The record window as the engineer sees it: the menu entry, the comment lines, the pages,
// the PDF, and the record through a real print system.
class TestFrmProtocol : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Before the first printer dialog, which settles the print system Qt talks to.
    void initTestCase() { cupsMissing = cups.start(); }
    void init() {
        rig = std::make_unique<LiveTool>();
        forms().frmDisplay().load();
    }
    void cleanup() { rig.reset(); }

    void recordShowsItsPages() {
        forms().frmDisplay().click(frmDisplay::mnuProtocolCreate);
        QWidget* comment = window(frmProtocolComment::kName);
        QVERIFY(comment->isVisible());
        auto* line = comment->findChild<QLineEdit*>(QString(frmProtocolComment::txtComment1));
        QCOMPARE(line->maxLength(), 84);
        QTest::keyClicks(line, QStringLiteral("Visit"));
        comment->findChild<QPushButton*>(QString(frmProtocolComment::cmdOK))->click();
        QVERIFY(!comment->isVisible());

        QWidget* record = window(frmProtocol::kName);
        QVERIFY(record->isVisible());
        for (int i = 0; i < 3; ++i) {
            auto* view = record->findChild<QPlainTextEdit*>(frmProtocol::rtxtProtocol[i]);
            QVERIFY(view->isReadOnly());
            QVERIFY(QFontInfo(view->font()).fixedPitch());
            QString text = forms().frmProtocol().caption(frmProtocol::rtxtProtocol[i]);
            QCOMPARE(view->toPlainText(), text.replace("\r\n", "\n"));
            QCOMPARE(view->document()->blockCount(), i == 0 ? 161 : 81);
        }
        QVERIFY(
            forms().frmProtocol().caption(frmProtocol::rtxtProtocol[1]).startsWith("       Visit"));
        QCOMPARE(forms().frmProtocol().caption(frmProtocol::rtxtProtocol[0]),
                 forms().frmProtocol().caption(frmProtocol::rtxtProtocol[1]) +
                     forms().frmProtocol().caption(frmProtocol::rtxtProtocol[2]));

        // A printer dialog the user cancels leaves the window as it was.
        QTimer::singleShot(0, [] {
            if (QWidget* dialog = QApplication::activeModalWidget()) dialog->close();
        });
        record->findChild<QPushButton*>(QString(frmProtocol::cmdPrint))->click();
        QVERIFY(record->isVisible() && record->isEnabled());
        QVERIFY(rig->dialogs.shown.isEmpty());

        const QString pdf = rig->folder.filePath(QStringLiteral("record.pdf"));
        rig->dialogs.saveName = pdf;
        record->findChild<QPushButton*>(QString(frmProtocol::cmdPdf))->click();
        QFile written(pdf);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QVERIFY(written.readAll().startsWith("%PDF-"));

        record->findChild<QPushButton*>(QString(frmProtocol::cmdCancel))->click();
        QVERIFY(!record->isVisible());
    }

    // The printer dialog offers the server's default printer; the user takes it, and the
    // record goes out as two jobs of one page each.
    void recordPrintsAsTwoPages() {
        if (!cupsMissing.isEmpty()) QSKIP(qPrintable(cupsMissing));
        forms().frmDisplay().setCaption(frmDisplay::lblSerialNo[0], "7654321");
        forms().frmDisplay().click(frmDisplay::mnuProtocolCreate);
        window(frmProtocolComment::kName)
            ->findChild<QPushButton*>(QString(frmProtocolComment::cmdOK))
            ->click();
        QTimer::singleShot(0, [] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                dialog->accept();
        });
        window(frmProtocol::kName)
            ->findChild<QPushButton*>(QString(frmProtocol::cmdPrint))
            ->click();
        QVERIFY2(rig->dialogs.shown.isEmpty(),
                 qPrintable(rig->dialogs.shown.isEmpty() ? QString() : rig->dialogs.shown[0].text));
        QTRY_COMPARE_WITH_TIMEOUT(cups.pdfs().size(), 2, 120000);
        QString text;
        for (const QString& pdf : cups.pdfs()) {
            const QString pages = output("pdfinfo", {pdf});
            QVERIFY2(pages.contains(QRegularExpression("Pages:\\s+1\\n")), qPrintable(pages));
            text += output("pdftotext", {pdf, "-"});
        }
        QVERIFY2(text.contains("7654321"), qPrintable(text));
    }

private:
    AllForms& forms() { return rig->app().forms(); }
    QWidget* window(const QString& name) { return rig->runtime().window(name); }

    std::unique_ptr<LiveTool> rig;
    PrintServer cups;
    QString cupsMissing;
};

QTEST_MAIN(TestFrmProtocol)
#include "tst_frmprotocol.moc"
