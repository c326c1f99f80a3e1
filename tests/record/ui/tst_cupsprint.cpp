#include "display/mainview_elements.h"
#include "record/record_elements.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"
#include "support/fakes.h"

#include <unistd.h>

#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

// The record through a real print system: a print server of the test's own, with a PDF
// printer as its default, takes the record from its window as two jobs of one page each.
// The server listens on a socket in a folder of the test, so a print system of the machine
// is neither used nor disturbed.
class TestCupsPrint : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        const QStringList sbin = {QStringLiteral("/usr/sbin"), QStringLiteral("/usr/bin")};
        m_cupsd = QStandardPaths::findExecutable(QStringLiteral("cupsd"), sbin);
        m_lpadmin = QStandardPaths::findExecutable(QStringLiteral("lpadmin"), sbin);
        if (m_cupsd.isEmpty() || m_lpadmin.isEmpty() ||
            !QFile::exists(QStringLiteral("/usr/lib/cups/backend/cups-pdf")) ||
            QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("CUPS with the cups-pdf printer is not installed (scripts/install-deps.sh "
                  "installs it)");
        // The PDF printer's backend runs only for root, and reads its settings from /etc/cups.
        if (geteuid() != 0) QSKIP("CUPS cannot start a PDF printer for a user other than root");
        m_instance = QStringLiteral("mq27test%1").arg(QCoreApplication::applicationPid());
        m_pdfConfig = QStringLiteral("/etc/cups/cups-pdf-%1.conf").arg(m_instance);
        m_out = m_dir.filePath(QStringLiteral("out"));
        for (const char* sub : {"out", "root", "spool/tmp", "cache", "state", "log"})
            QVERIFY(QDir(m_dir.path()).mkpath(QString::fromLatin1(sub)));
        // The filters run as a user of their own: they read the spool and write the output.
        const auto open = QFile::Permissions(0x7755);
        for (const char* sub : {"", "root", "spool", "cache", "state", "log"})
            QFile::setPermissions(m_dir.filePath(QString::fromLatin1(sub)), open);
        for (const char* sub : {"out", "spool/tmp"})
            QFile::setPermissions(m_dir.filePath(QString::fromLatin1(sub)),
                                  QFile::Permissions(0x7777));
        if (!write(m_pdfConfig, QStringLiteral("Out %1\nLabel 1\nLog %2\n")
                                    .arg(m_out, m_dir.filePath(QStringLiteral("log")))))
            QSKIP("CUPS cannot start a PDF printer: /etc/cups is not writable");

        m_socket = m_dir.filePath(QStringLiteral("cups.sock"));
        const QString root = m_dir.filePath(QStringLiteral("root"));
        QVERIFY(write(root + QStringLiteral("/cupsd.conf"),
                      QStringLiteral("Listen %1\nLogLevel warn\nWebInterface No\nBrowsing No\n"
                                     "<Location />\n  Order allow,deny\n  Allow all\n"
                                     "</Location>\n")
                          .arg(m_socket)));
        QVERIFY(write(root + QStringLiteral("/cups-files.conf"),
                      QStringLiteral("ServerRoot %1\nRequestRoot %2/spool\nTempDir "
                                     "%2/spool/tmp\nCacheDir %2/cache\nStateDir %2/state\n"
                                     "ErrorLog %2/log/error_log\nAccessLog %2/log/access_log\n"
                                     "PageLog %2/log/page_log\nSystemGroup root\n")
                          .arg(root, m_dir.path())));
        m_server.start(m_cupsd, {QStringLiteral("-f"), QStringLiteral("-c"),
                                 root + QStringLiteral("/cupsd.conf"), QStringLiteral("-s"),
                                 root + QStringLiteral("/cups-files.conf")});
        if (!m_server.waitForStarted())
            QSKIP(qPrintable(QStringLiteral("CUPS did not start: ") + m_server.errorString()));
        QTRY_VERIFY_WITH_TIMEOUT(
            QFile::exists(m_socket) || m_server.state() == QProcess::NotRunning, 20000);
        if (m_server.state() == QProcess::NotRunning)
            QSKIP(qPrintable(QStringLiteral("CUPS ended at its start: ") +
                             QString::fromLocal8Bit(m_server.readAllStandardError())));
        qputenv("CUPS_SERVER", m_socket.toLocal8Bit());
        // The printer takes PostScript; made by cairo, its text still says which characters
        // it shows, so that the PDF's text can be read back.
        QVERIFY2(
            run(m_lpadmin,
                {QStringLiteral("-p"), m_instance, QStringLiteral("-v"),
                 QStringLiteral("cups-pdf:/") + m_instance, QStringLiteral("-P"),
                 QStringLiteral("/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd"), QStringLiteral("-o"),
                 QStringLiteral("pdftops-renderer-default=pdftocairo"), QStringLiteral("-E")}),
            "lpadmin could not add the PDF printer");
        QVERIFY(run(m_lpadmin, {QStringLiteral("-d"), m_instance}));
    }

    void cleanupTestCase() {
        if (m_server.state() != QProcess::NotRunning) {
            m_server.terminate();
            m_server.waitForFinished();
        }
        if (!m_pdfConfig.isEmpty()) QFile::remove(m_pdfConfig);
    }

    void recordPrintsAsTwoPages() {
        FakeSerialPort port;
        ScriptedDialogs dialogs;
        MemorySettings settings;
        FakeLauncher launcher;
        QTemporaryDir folder;
        ToolRuntime::Options options;
        options.port = &port;
        options.dialogs = &dialogs;
        options.settings = &settings;
        options.launcher = &launcher;
        options.programDir = folder.path();
        options.dataDir = folder.path();
        options.exitEventLoop = false;
        ToolRuntime runtime(options);
        AllForms& forms = runtime.app().forms();
        forms.frmDisplay().load();
        forms.frmDisplay().setCaption(frmDisplay::lblSerialNo[0], QStringLiteral("7654321"));
        forms.frmDisplay().click(frmDisplay::mnuProtocolCreate);
        runtime.window(frmProtocolComment::kName)
            ->findChild<QPushButton*>(QString(frmProtocolComment::cmdOK))
            ->click();
        QWidget* record = runtime.window(frmProtocol::kName);
        QVERIFY(record->isVisible());

        // The printer dialog offers the server's default printer; the user takes it.
        QTimer::singleShot(0, [] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                dialog->accept();
        });
        record->findChild<QPushButton*>(QString(frmProtocol::cmdPrint))->click();
        QVERIFY2(dialogs.shown.isEmpty(),
                 qPrintable(dialogs.shown.isEmpty() ? QString() : dialogs.shown[0].text));

        QTRY_COMPARE_WITH_TIMEOUT(pdfs().size(), 2, 120000);
        QString text;
        for (const QString& pdf : pdfs()) {
            const QString pages = output(QStringLiteral("pdfinfo"), {pdf});
            QVERIFY2(pages.contains(QRegularExpression(QStringLiteral("Pages:\\s+1\\n"))),
                     qPrintable(pages));
            text += output(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
        }
        QVERIFY2(text.contains(QStringLiteral("7654321")), qPrintable(text));
    }

private:
    static bool write(const QString& path, const QString& text) {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0;
    }
    static QString output(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        process.waitForFinished();
        return QString::fromLocal8Bit(process.readAllStandardOutput());
    }
    static bool run(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
               process.exitCode() == 0;
    }
    // A file is counted once the PDF printer has finished and handed it over.
    QStringList pdfs() const {
        QStringList done;
        const QDir out(m_out);
        for (const QString& name : out.entryList({QStringLiteral("*.pdf")}, QDir::Files)) {
            const QString path = out.filePath(name);
            if (output(QStringLiteral("pdfinfo"), {path}).contains(QStringLiteral("Pages:")))
                done << path;
        }
        return done;
    }

    QTemporaryDir m_dir;
    QProcess m_server;
    QString m_cupsd, m_lpadmin, m_instance, m_pdfConfig, m_out, m_socket;
};

QTEST_MAIN(TestCupsPrint)
#include "tst_cupsprint.moc"
