#include "display/mainview_elements.h"
#include "extinguish/extinguish_elements.h"
#include "shell/dialog_elements.h"
#include "shell/helplink.h"
#include "shell/languages.h"
#include "support/fakes.h"

#include <functional>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

namespace {

QString run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(30000) || process.exitCode() != 0) return {};
    return QString::fromUtf8(process.readAllStandardOutput());
}

// The page of each named destination of a PDF.
QHash<QString, int> destinationPages(const QString& pdf) {
    QHash<QString, int> pages;
    static const QRegularExpression line(QStringLiteral("^\\s*(\\d+)\\s+\\[.*\\]\\s+\"([^\"]+)\"$"),
                                         QRegularExpression::MultilineOption);
    for (const auto& m : line.globalMatch(run("pdfinfo", {"-dests", pdf})))
        pages.insert(m.captured(2), m.captured(1).toInt());
    return pages;
}

QString pageText(const QString& pdf, int page) {
    const QString n = QString::number(page);
    return run("pdftotext", {"-f", n, "-l", n, pdf, "-"}).simplified();
}

} // namespace

class TestHelpLink : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void modeTwoShowsWhatWouldOpenOthersNothing() {
        TestApp t;
        t.launcher.onPath["evince"] = "/usr/bin/evince";
        const QString path = createFile(t.programDir(), "KompaHelp_010_002.pdf");
        t.app->languages().SwitchToLanguage(2);
        for (int mode : {0, 3, -1})
            t.app->help().ShowHelp(10, mode, 1, QString());
        QVERIFY(t.dialogs.shown.isEmpty());
        t.app->help().ShowHelp(10, 2, 7, "Air flow");

        QCOMPARE(t.dialogs.shown.size(), 1);
        const auto& box = t.dialogs.shown.first();
        QCOMPARE(box.text,
                 QStringLiteral("Helptext No. :         7\r\n\r\nPDF-File :                %1"
                                "\r\n\r\nPDF-File Target :    007\r\n\r\n"
                                "Remark :                 Air flow")
                     .arg(path));
        QCOMPARE(box.title, "ORVANIS SHEL·LIX");
        QVERIFY(t.launcher.started.isEmpty());
    }

    void everyRequestOpensAPageWithItsHeading_data() {
        QTest::addColumn<int>("language");
        for (int language = 1; language <= 4; ++language)
            QTest::addRow("%d", language) << language;
    }

    // Each request the user can make, in each language, opens the manual the build put beside the
    // program at a destination whose page shows what the user clicked on, as the tool names it.
    void everyRequestOpensAPageWithItsHeading() {
        QFETCH(int, language);
        TestApp t;
        t.app->languages().SwitchToLanguage(language);
        t.launcher.onPath["evince"] = "/usr/bin/evince";
        const QString name = HelpLink::HelpFileName(10, languageFromNumber(language));
        const QString built = QDir(QStringLiteral(MQ27_BIN_DIR)).filePath(name);
        const QString file = QDir(t.programDir()).filePath(name);
        QVERIFY(QFile::copy(built, file));
        const QHash<QString, int> pages = destinationPages(built);

        Form& view = t.app->forms().frmDisplay();
        Form& module = t.app->forms().frmExtinguishDetails();
        struct Request {
            std::function<void()> click;
            QString heading;
        };
        QList<Request> requests{
            {[&] { view.click(frmDisplay::mnuPDFHelp); }, view.caption(frmDisplay::mnuPDFHelp)},
            {[&] { view.mouseClick(frmDisplay::lblAirFlow, 2); },
             view.caption(frmDisplay::lblAirFlowLegend)},
            {[&] { view.mouseClick(frmDisplay::lblChamber[1], 2); },
             view.caption(frmDisplay::lblChamberLegend[1])}};
        for (int i = 0; i < 34; ++i)
            requests.append({[&, i] { view.mouseClick(frmDisplay::picErr[i], 2); },
                             view.caption(frmDisplay::lblErr[i])});
        for (int i = 0; i < 8; ++i)
            requests.append({[&, i] { module.mouseClick(frmExtinguishDetails::picErr[i], 2); },
                             module.caption(frmExtinguishDetails::lblErr[i])});

        int opened = 0;
        for (const Request& request : requests) {
            t.launcher.started.clear();
            request.click();
            if (t.launcher.started.isEmpty()) continue;
            ++opened;
            const QStringList arguments = t.launcher.started.first().arguments;
            QCOMPARE(arguments.size(), 2);
            QCOMPARE(arguments[1], file);
            const QString destination = arguments[0].mid(QStringLiteral("--named-dest=").size());
            const int page = pages.value(destination);
            QVERIFY2(page > 0, qPrintable(name + ": no destination " + destination));
            QVERIFY2(pageText(built, page).contains(request.heading.simplified()),
                     qPrintable(name + " page " + QString::number(page) + " (" + destination +
                                ") lacks " + request.heading));
        }
        // All but the box of bit 29, which has no page.
        QCOMPARE(opened, requests.size() - 1);
        QVERIFY(t.dialogs.shown.isEmpty());
    }

    // Without a viewer that can jump to a page, the desktop's own PDF viewer opens the file; only
    // when nothing opens it, the user is told. A viewer that fails to start is not reported.
    void withoutViewerTheDesktopOpensTheFile() {
        TestApp t;
        t.app->languages().SwitchToLanguage(1);
        const QString file = createFile(t.programDir(), "KompaHelp_010_001.pdf");
        QCOMPARE(t.app->help().PdfViewer(), QString());
        t.app->help().ShowHelp(10, 1, 4, QString());
        QCOMPARE(t.launcher.openedDocuments, QStringList{file});
        QVERIFY(t.dialogs.shown.isEmpty());

        t.launcher.startSucceeds = false;
        t.app->help().ShowHelp(10, 1, 0, QString());
        QCOMPARE(t.dialogs.shown.size(), 1);
        QCOMPARE(t.dialogs.shown.first().text, "PDF-Betrachter nicht gefunden");
        QVERIFY(t.launcher.started.isEmpty());
        // With both viewers on the path, the one that takes the destination as an option.
        t.launcher.onPath["okular"] = "/opt/bin/okular";
        t.launcher.onPath["evince"] = "/opt/bin/evince";
        t.app->help().ShowHelp(10, 1, 3, QString());
        QCOMPARE(t.launcher.started.size(), 1);
        QCOMPARE(t.launcher.started.first().program, "/opt/bin/evince");
        QCOMPARE(t.launcher.started.first().arguments, (QStringList{"--named-dest=003", file}));
        QCOMPARE(t.dialogs.shown.size(), 1);
    }

    // An installation keeps the manual below share/, beside the program's own folder; the About
    // window names the file of the present language, and a missing one is reported with it.
    void installedManualIsFoundAndNamed() {
        TestApp t;
        t.app->languages().SwitchToLanguage(2);
        const QString beside = QDir(t.programDir()).filePath("KompaHelp_010_002.pdf");
        const Form& about = t.app->forms().frmAbout();
        QCOMPARE(about.caption(frmAbout::lblManual), "Manual: " + QDir::toNativeSeparators(beside));
        t.launcher.onPath["okular"] = "/usr/bin/okular";
        t.app->help().ShowHelp(10, 1, 12, QString());
        QCOMPARE(t.dialogs.shown.size(), 1);
        QVERIFY(t.dialogs.shown.first().text.endsWith("\r\n\r\n" + beside));
        QVERIFY(t.launcher.started.isEmpty());

        const QString folder = QDir(t.programDir()).filePath("../share/mq27diag/manual");
        QVERIFY(QDir().mkpath(folder));
        const QString installed = createFile(folder, "KompaHelp_010_002.pdf");
        t.app->help().ShowHelp(10, 1, 40, QString());
        QCOMPARE(t.launcher.started.size(), 1);
        QCOMPARE(t.launcher.started.first().program, "/usr/bin/okular");
        QCOMPARE(t.launcher.started.first().arguments, QStringList{installed + "#040"});

        t.app->languages().SwitchToLanguage(2);
        QCOMPARE(about.caption(frmAbout::lblManual),
                 "Manual: " + QDir::toNativeSeparators(installed));
    }

private:
    // An empty file; its path, or nothing if it cannot be made.
    static QString createFile(const QString& folder, const QString& name) {
        const QString path = QDir::cleanPath(folder + u'/' + name);
        QFile file(path);
        return file.open(QIODevice::WriteOnly) ? path : QString();
    }
};

QTEST_GUILESS_MAIN(TestHelpLink)
#include "tst_helplink.moc"
