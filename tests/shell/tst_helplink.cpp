#include "shell/helplink.h"
#include "shell/languages.h"
#include "support/fakes.h"

#include <QDir>
#include <QFile>
#include <QtTest>

class TestHelpLink : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fileNameHasThreePlaces_data();
    void fileNameHasThreePlaces();
    void modeTwoShowsWhatWouldOpen();
    void otherModesDoNothing_data();
    void otherModesDoNothing();
    void noViewerIsReportedEvenWithTheFile();
    void missingFileIsReportedWithItsPath();
    void viewerOpensAtTheDestination_data();
    void viewerOpensAtTheDestination();
    void failedStartIsSilent();

private:
    static void createHelpFile(const TestApp& t, const QString& name) {
        QFile file(QDir(t.programDir()).filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
};

void TestHelpLink::fileNameHasThreePlaces_data() {
    QTest::addColumn<int>("device");
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("name");
    QTest::newRow("this device, English") << 10 << 2 << "KompaHelp_010_002.pdf";
    QTest::newRow("small") << 1 << 1 << "KompaHelp_001_001.pdf";
    QTest::newRow("wide") << 1234 << 4 << "KompaHelp_1234_004.pdf";
    QTest::newRow("negative") << -5 << 3 << "KompaHelp_-005_003.pdf";
}

void TestHelpLink::fileNameHasThreePlaces() {
    QFETCH(int, device);
    QFETCH(int, language);
    QFETCH(QString, name);
    QCOMPARE(HelpLink::helpFileName(device, language), name);
}

void TestHelpLink::modeTwoShowsWhatWouldOpen() {
    TestApp t;
    Program& app = *t.app;
    app.languages().SwitchToLanguage(2);
    app.help().ShowHelp(10, 2, 7, "Air flow");

    QCOMPARE(t.dialogs.shown.size(), 1);
    const auto& box = t.dialogs.shown.first();
    const QString path = QDir(t.programDir()).filePath("KompaHelp_010_002.pdf");
    QCOMPARE(box.text, "Helptext No. :         7\r\n\r\n"
                       "PDF-File :                " +
                           path +
                           "\r\n\r\n"
                           "PDF-File Target :    007\r\n\r\n"
                           "Remark :                 Air flow");
    QCOMPARE(box.title, QStringLiteral("ORVANIS SHEL·LIX"));
    QCOMPARE(box.icon, UserDialogs::Icon::Information);
    QCOMPARE(box.buttons, UserDialogs::Buttons::Ok);
    QVERIFY(t.launcher.started.isEmpty());
}

void TestHelpLink::otherModesDoNothing_data() {
    QTest::addColumn<int>("mode");
    QTest::newRow("0") << 0;
    QTest::newRow("3") << 3;
    QTest::newRow("-1") << -1;
}

void TestHelpLink::otherModesDoNothing() {
    QFETCH(int, mode);
    TestApp t;
    t.launcher.onPath["evince"] = "/usr/bin/evince";
    createHelpFile(t, "KompaHelp_010_001.pdf");
    t.app->help().ShowHelp(10, mode, 1, QString());
    QVERIFY(t.dialogs.shown.isEmpty());
    QVERIFY(t.launcher.started.isEmpty());
}

void TestHelpLink::noViewerIsReportedEvenWithTheFile() {
    TestApp t;
    t.app->languages().SwitchToLanguage(1);
    t.launcher.onPath["xdg-open"] = "/usr/bin/xdg-open";
    createHelpFile(t, "KompaHelp_010_001.pdf");
    QCOMPARE(t.app->help().PdfViewer(), QString());

    t.app->help().ShowHelp(10, 1, 0, QString());
    QCOMPARE(t.dialogs.shown.size(), 1);
    QCOMPARE(t.dialogs.shown.first().text, QStringLiteral("PDF-Betrachter nicht gefunden"));
    QCOMPARE(t.dialogs.shown.first().title, QStringLiteral("ORVANIS SHEL·LIX"));
    QCOMPARE(t.dialogs.shown.first().icon, UserDialogs::Icon::Information);
    QVERIFY(t.launcher.started.isEmpty());
}

void TestHelpLink::missingFileIsReportedWithItsPath() {
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

void TestHelpLink::viewerOpensAtTheDestination_data() {
    QTest::addColumn<QStringList>("installed");
    QTest::addColumn<QString>("program");
    QTest::addColumn<bool>("destinationAsOption");
    QTest::newRow("evince") << QStringList{"evince"} << "/opt/bin/evince" << true;
    QTest::newRow("okular") << QStringList{"okular"} << "/opt/bin/okular" << false;
    QTest::newRow("both: evince first")
        << QStringList{"okular", "evince"} << "/opt/bin/evince" << true;
}

void TestHelpLink::viewerOpensAtTheDestination() {
    QFETCH(QStringList, installed);
    QFETCH(QString, program);
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
    QCOMPARE(t.launcher.started.first().program, program);
    const QStringList expected =
        destinationAsOption ? QStringList{"--named-dest=041", path} : QStringList{path + "#041"};
    QCOMPARE(t.launcher.started.first().arguments, expected);
}

void TestHelpLink::failedStartIsSilent() {
    TestApp t;
    t.app->languages().SwitchToLanguage(1);
    t.launcher.onPath["evince"] = "/usr/bin/evince";
    t.launcher.startSucceeds = false;
    createHelpFile(t, "KompaHelp_010_001.pdf");
    t.app->help().ShowHelp(10, 1, 3, QString());
    QCOMPARE(t.launcher.started.size(), 1);
    QVERIFY(t.dialogs.shown.isEmpty());
}

QTEST_GUILESS_MAIN(TestHelpLink)
#include "tst_helplink.moc"
