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
        createHelpFile(t, "KompaHelp_010_002.pdf");
        t.app->languages().SwitchToLanguage(2);
        for (int mode : {0, 3, -1})
            t.app->help().ShowHelp(10, mode, 1, QString());
        QVERIFY(t.dialogs.shown.isEmpty());
        t.app->help().ShowHelp(10, 2, 7, "Air flow");

        QCOMPARE(t.dialogs.shown.size(), 1);
        const auto& box = t.dialogs.shown.first();
        const QString path = QDir(t.programDir()).filePath("KompaHelp_010_002.pdf");
        QCOMPARE(box.text, "Helptext No. :         7\r\n\r\n"
                           "PDF-File :                " +
                               path +
                               "\r\n\r\n"
                               "PDF-File Target :    007\r\n\r\n"
                               "Remark :                 Air flow");
        QCOMPARE(box.title, "ORVANIS SHEL·LIX");
        QCOMPARE(box.icon, UserDialogs::Icon::Information);
        QCOMPARE(box.buttons, UserDialogs::Buttons::Ok);
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
        createHelpFile(t, "KompaHelp_010_001.pdf");
        QCOMPARE(t.app->help().PdfViewer(), QString());
        t.app->help().ShowHelp(10, 1, 4, QString());
        const QString file = QDir(t.programDir()).filePath("KompaHelp_010_001.pdf");
        QCOMPARE(t.launcher.openedDocuments, QStringList{file});
        QVERIFY(t.dialogs.shown.isEmpty());

        t.launcher.startSucceeds = false;
        t.app->help().ShowHelp(10, 1, 0, QString());
        QCOMPARE(t.dialogs.shown.size(), 1);
        QCOMPARE(t.dialogs.shown.first().text, "PDF-Betrachter nicht gefunden");
        QCOMPARE(t.dialogs.shown.first().icon, UserDialogs::Icon::Information);
        QVERIFY(t.launcher.started.isEmpty());
        t.launcher.onPath["evince"] = "/usr/bin/evince";
        t.app->help().ShowHelp(10, 1, 3, QString());
        QCOMPARE(t.launcher.started.size(), 1);
        QCOMPARE(t.dialogs.shown.size(), 1);
    }

    // An installation keeps the manual below share/, beside the program's own folder; the About
    // window names the file of the present language.
    void installedManualIsFoundAndNamed() {
        TestApp t;
        t.app->languages().SwitchToLanguage(2);
        const QString beside = QDir(t.programDir()).filePath("KompaHelp_010_002.pdf");
        const Form& about = t.app->forms().frmAbout();
        QCOMPARE(about.caption(frmAbout::lblManual), "Manual: " + QDir::toNativeSeparators(beside));

        const QString folder = QDir(t.programDir()).filePath("../share/mq27diag/manual");
        QVERIFY(QDir().mkpath(folder));
        const QString installed = QDir::cleanPath(folder + "/KompaHelp_010_002.pdf");
        QFile file(installed);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        t.launcher.onPath["okular"] = "/usr/bin/okular";
        t.app->help().ShowHelp(10, 1, 40, QString());
        QCOMPARE(t.launcher.started.size(), 1);
        QCOMPARE(t.launcher.started.first().arguments, QStringList{installed + "#040"});

        t.app->languages().SwitchToLanguage(2);
        QCOMPARE(about.caption(frmAbout::lblManual),
                 "Manual: " + QDir::toNativeSeparators(installed));
    }

    void missingFileIsReportedWithItsPath() {
        TestApp t;
        t.app->languages().SwitchToLanguage(4);
        t.launcher.onPath["okular"] = "/usr/bin/okular";
        t.app->help().ShowHelp(10, 1, 12, QString());

        QCOMPARE(t.dialogs.shown.size(), 1);
        QCOMPARE(t.dialogs.shown.first().text,
                 "Bestand niet gevonden\r\n\r\n" +
                     QDir(t.programDir()).filePath("KompaHelp_010_004.pdf"));
        QCOMPARE(t.dialogs.shown.first().icon, UserDialogs::Icon::Information);
        QVERIFY(t.launcher.started.isEmpty());
    }

    void viewerOpensAtTheDestination_data() {
        QTest::addColumn<QStringList>("installed");
        QTest::addColumn<QString>("program");
        QTest::addColumn<bool>("destinationAsOption");
        QTest::newRow("evince") << QStringList{"evince"} << "/opt/bin/evince" << true;
        QTest::newRow("okular") << QStringList{"okular"} << "/opt/bin/okular" << false;
        QTest::newRow("both: evince first")
            << QStringList{"okular", "evince"} << "/opt/bin/evince" << true;
    }

    void viewerOpensAtTheDestination() {
        QFETCH(QStringList, installed);
        QFETCH(bool, destinationAsOption);
        TestApp t;
        t.app->languages().SwitchToLanguage(3);
        for (const QString& name : installed)
            t.launcher.onPath[name] = "/opt/bin/" + name;
        createHelpFile(t, "KompaHelp_010_003.pdf");

        t.app->help().ShowHelp(10, 1, 41, "Chamber");

        const QString path = QDir(t.programDir()).filePath("KompaHelp_010_003.pdf");
        QVERIFY(t.dialogs.shown.isEmpty());
        QCOMPARE(t.launcher.started.size(), 1);
        QTEST(t.launcher.started.first().program, "program");
        const QStringList expected = destinationAsOption ? QStringList{"--named-dest=041", path}
                                                         : QStringList{path + "#041"};
        QCOMPARE(t.launcher.started.first().arguments, expected);
    }

private:
    static void createHelpFile(const TestApp& t, const QString& name) {
        QFile file(QDir(t.programDir()).filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
};

QTEST_GUILESS_MAIN(TestHelpLink)
#include "tst_helplink.moc"
