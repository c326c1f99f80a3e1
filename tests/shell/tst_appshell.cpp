#include "link/seriallink.h"
#include "shell/appshell.h"
#include "shell/languages.h"
#include "support/fakes.h"
#include "values/valuestore.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace {

constexpr int kBuzzerFlagOffset = 144;

// The device reports its buzzer switched off (telegram 3, bit 0 of the flags byte).
void silenceBuzzer(Program& app) {
    ValueStore& values = app.createValues();
    Bytes telegram;
    QCOMPARE(values.GetDataArray(telegram, 3), 0);
    QVERIFY(telegram.size() > kBuzzerFlagOffset);
    telegram[kBuzzerFlagOffset] |= 1;
    QCOMPARE(values.SetDataArray(telegram, 3), 0);
    QCOMPARE(values.GetBuzzerShouldBeOff(), 1);
}

// A device file that parses but holds no telegram.
void writeEmptyDeviceFile(const QString& path) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("&H00 &H00 &H00 \r\n");
}

} // namespace

class TestAppShell : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void firstStartOnACleanStore();
    void startReadsTheStoredSettings();
    void startIsSkippedWhileClosing();
    void commandLineSplitsAtBlanksOnly_data();
    void commandLineSplitsAtBlanksOnly();
    void firstArgumentLoadsAFile_data();
    void firstArgumentLoadsAFile();
    void versionSuffix_data();
    void versionSuffix();
    void closeWithSilencedBuzzerAsks();
    void answerNoLeavesEverythingRunning();
    void closeWithoutValueStoreAsksNothing();
    void closeTakesEveryWindowDown();
    void startWindowCloseButtonAsks();
    void startWindowMenus();
    void aboutBoxIsModalAndClosesOnOk();
    void trayIconFollowsTheLink();
    void trayClickRaisesTheVisibleWindows();

private:
    static void start(TestApp& t, const QString& commandLine = QString()) {
        t.app->shell().Startup(commandLine);
    }
};

void TestAppShell::firstStartOnACleanStore() {
    TestApp t;
    Program& app = *t.app;
    start(t);

    QCOMPARE(app.preferences().language(), Language::German);
    QCOMPARE(app.preferences().temperatureUnit(), TemperatureUnit::Celsius);
    QCOMPARE(app.preferences().smokeUnit(), SmokeUnit::PercentPerMetre);
    QCOMPARE(app.texts().versionSuffix, QString());
    QCOMPARE(t.settings.values.value("Language"), QStringLiteral("1"));
    QCOMPARE(t.settings.values.value("Port"), QStringLiteral("0"));
    QVERIFY(!t.settings.values.contains("Temperature"));
    QVERIFY(!t.port.isOpen());

    const Form& startWindow = app.forms().frmMQ27D();
    QVERIFY(startWindow.isShown());
    QVERIFY(!startWindow.isModal());
    QVERIFY(startWindow.title().startsWith("ORVANIS SHEL·LIX - V"));
    QVERIFY(app.forms().frmDisplay().isLoaded());
    QVERIFY(!app.forms().frmDisplay().isShown());
    QVERIFY(app.forms().frmDisplay().isChecked("mnuCelsius"));
    QVERIFY(app.shell().TrayIconAdded());

    SerialLink& link = app.link();
    QVERIFY(link.tmrZeroCommand().isEnabled());
    QVERIFY(!link.tmrToRx().isEnabled());
    QVERIFY(!link.tmrReceiveLED().isEnabled());
    QVERIFY(!link.tmrSendLED().isEnabled());
}

void TestAppShell::startReadsTheStoredSettings() {
    TestApp t;
    t.settings.values = {{"Language", "2"},
                         {"Port", "2"},
                         {"Temperature", "3"},
                         {"Smoke", "2"},
                         {"Version", "12345"}};
    start(t);
    Program& app = *t.app;
    QCOMPARE(app.preferences().language(), Language::English);
    // A unit outside 1 and 2 is the metric one.
    QCOMPARE(app.preferences().temperatureUnit(), TemperatureUnit::Celsius);
    QCOMPARE(app.preferences().smokeUnit(), SmokeUnit::PercentPerFoot);
    QVERIFY(app.forms().frmDisplay().isChecked("mnuPercentFeet"));
    QVERIFY(!app.forms().frmDisplay().isChecked("mnuPercentMeter"));
    QVERIFY(t.port.isOpen());
    QCOMPARE(t.port.portNumber(), 2);
    QVERIFY(app.forms().frmAbout().caption("lblKompaVersion").endsWith("V1.23.45"));
    QCOMPARE(app.forms().frmMQ27D().caption("mnuFile"), QStringLiteral("File"));
}

void TestAppShell::startIsSkippedWhileClosing() {
    TestApp t;
    t.app->life().setClosing();
    start(t);
    QVERIFY(!t.app->forms().frmMQ27D().isShown());
    QVERIFY(!t.app->link().tmrZeroCommand().isEnabled());
    QVERIFY(t.settings.values.isEmpty());
}

void TestAppShell::commandLineSplitsAtBlanksOnly_data() {
    QTest::addColumn<QString>("raw");
    QTest::addColumn<int>("maxArgs");
    QTest::addColumn<QStringList>("args");
    QTest::newRow("empty") << "" << 1 << QStringList();
    QTest::newRow("blanks only") << " \t " << 1 << QStringList();
    QTest::newRow("one") << "a.ko3" << 1 << QStringList{"a.ko3"};
    QTest::newRow("leading separators") << " \t a.ko3 " << 1 << QStringList{"a.ko3"};
    QTest::newRow("limit stops the scan") << "a b c" << 1 << QStringList{"a"};
    QTest::newRow("three of them") << "a\tbb  c d" << 3 << QStringList{"a", "bb", "c"};
    QTest::newRow("quotes don't group")
        << "\"/tmp/my file.ko3\"" << 2 << QStringList{"\"/tmp/my", "file.ko3\""};
    QTest::newRow("no arguments wanted") << "a" << 0 << QStringList();
}

void TestAppShell::commandLineSplitsAtBlanksOnly() {
    QFETCH(QString, raw);
    QFETCH(int, maxArgs);
    QFETCH(QStringList, args);
    QCOMPARE(AppShell::GetCommandLineArgs(raw, maxArgs), args);
}

void TestAppShell::firstArgumentLoadsAFile_data() {
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("commandLine");
    QTest::addColumn<bool>("loaded");
    QTest::newRow("saved device file") << "dev.ko3"
                                       << "%1/dev.ko3" << true;
    QTest::newRow("any fourth character") << "x.ko9"
                                          << "%1/x.ko9" << true;
    QTest::newRow("only the first argument") << "y.ko3"
                                             << "%1/y.ko3 /LOGGER" << true;
    QTest::newRow(".ko at the very end") << "x.ko"
                                         << "%1/x.ko" << false;
    QTest::newRow("extension in capitals") << "x.KO3"
                                           << "%1/x.KO3" << false;
    QTest::newRow("logger switch") << "x.ko3"
                                   << "/logger %1/x.ko3" << false;
    QTest::newRow("logger switch, any case") << "x.ko3"
                                             << "/LoGgEr" << false;
    QTest::newRow("quoted path") << "x.ko3"
                                 << "\"%1/x.ko3\"" << false;
}

void TestAppShell::firstArgumentLoadsAFile() {
    QFETCH(QString, fileName);
    QFETCH(QString, commandLine);
    QFETCH(bool, loaded);
    TestApp t;
    const QString folder = t.folder.path();
    QVERIFY(!folder.contains(u' '));
    writeEmptyDeviceFile(QDir(folder).filePath(fileName));

    start(t, commandLine.arg(folder));

    const QString expected = loaded ? QDir(folder).filePath(fileName) : QString();
    QCOMPARE(t.app->link().LoadedFileName(), expected);
    QVERIFY(t.app->forms().frmMQ27D().isShown());
    // The logger switch opens the logger and nothing else.
    QCOMPARE(t.app->forms().frmLogdataDev().isShown(),
             commandLine.toUpper().startsWith(u"/LOGGER"));
    QVERIFY(t.dialogs.shown.isEmpty());
}

void TestAppShell::versionSuffix_data() {
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("suffix");
    QTest::newRow("suite 3.01.05") << "30105"
                                   << ",  V3.01.05";
    QTest::newRow("12345") << "12345"
                           << ",  V1.23.45";
    QTest::newRow("two-digit major") << "120304"
                                     << ",  V12.03.04";
    QTest::newRow("default") << "0"
                             << "";
    QTest::newRow("four characters") << "1234"
                                     << "";
    QTest::newRow("not digits") << "1abcd"
                                << ",  V1.ab.cd";
}

void TestAppShell::versionSuffix() {
    QFETCH(QString, version);
    QFETCH(QString, suffix);
    QCOMPARE(AppShell::VersionSuffix(version), suffix);
}

void TestAppShell::closeWithSilencedBuzzerAsks() {
    TestApp t;
    start(t);
    silenceBuzzer(*t.app);
    t.dialogs.answers = {UserDialogs::Answer::Yes};

    QVERIFY(t.app->shell().CloseApplication());

    QCOMPARE(t.dialogs.shown.size(), 1);
    const auto& box = t.dialogs.shown.first();
    QCOMPARE(box.text, QStringLiteral("Summer im Gerät ist noch abgeschaltet!\r\n\r\n"
                                      "Soll die Diagnosesoftware wirklich beendet werden?"));
    QCOMPARE(box.title, QStringLiteral("ORVANIS SHEL·LIX"));
    QCOMPARE(box.buttons, UserDialogs::Buttons::YesNo);
    QCOMPARE(box.icon, UserDialogs::Icon::Warning);
    QCOMPARE(box.defaultAnswer, UserDialogs::Answer::No);
    QVERIFY(t.app->life().closing());
}

void TestAppShell::answerNoLeavesEverythingRunning() {
    TestApp t;
    t.settings.values["Port"] = "1";
    start(t);
    silenceBuzzer(*t.app);
    Program& app = *t.app;
    QSignalSpy quit(&app, &Program::quitRequested);
    t.dialogs.answers = {UserDialogs::Answer::No};

    QVERIFY(!app.shell().CloseApplication());

    QCOMPARE(t.dialogs.shown.size(), 1);
    QVERIFY(!app.life().closing());
    QVERIFY(t.port.isOpen());
    QVERIFY(app.link().tmrZeroCommand().isEnabled());
    QVERIFY(app.forms().frmMQ27D().isShown());
    QVERIFY(app.forms().frmDisplay().isLoaded());
    QVERIFY(app.shell().TrayIconAdded());
    QCOMPARE(quit.count(), 0);
}

void TestAppShell::closeWithoutValueStoreAsksNothing() {
    TestApp t;
    start(t);
    QVERIFY(t.app->values() == nullptr);
    QVERIFY(t.app->shell().CloseApplication());
    QVERIFY(t.dialogs.shown.isEmpty());
    QVERIFY(t.app->life().closing());
}

void TestAppShell::closeTakesEveryWindowDown() {
    TestApp t;
    t.settings.values["Port"] = "3";
    start(t);
    Program& app = *t.app;
    app.forms().frmDisplay().show();
    app.forms().frmConnect().show();
    silenceBuzzer(app);
    t.dialogs.answers = {UserDialogs::Answer::Yes};
    app.link().tmrToRx().enable();
    QSignalSpy quit(&app, &Program::quitRequested);

    QVERIFY(app.shell().CloseApplication());

    QVERIFY(!t.port.isOpen());
    QVERIFY(!app.link().tmrZeroCommand().isEnabled());
    QVERIFY(!app.link().tmrToRx().isEnabled());
    for (Form* form : app.forms().all())
        QVERIFY2(!form->isLoaded(), qPrintable(form->name()));
    QVERIFY(!app.shell().TrayIconAdded());
    QVERIFY(!app.forms().frmMQ27D().isVisible("trayIcon"));
    QCOMPARE(quit.count(), 1);

    // Once closing, a second request passes without a question.
    QVERIFY(app.shell().CloseApplication());
    QCOMPARE(t.dialogs.shown.size(), 1);
    QCOMPARE(quit.count(), 1);
}

void TestAppShell::startWindowCloseButtonAsks() {
    TestApp t;
    start(t);
    silenceBuzzer(*t.app);
    Form& startWindow = t.app->forms().frmMQ27D();
    t.dialogs.answers = {UserDialogs::Answer::No, UserDialogs::Answer::Yes};
    QVERIFY(!startWindow.requestClose());
    QVERIFY(startWindow.isShown());
    QVERIFY(startWindow.requestClose());
    QVERIFY(!startWindow.isLoaded());
    QVERIFY(t.app->life().closing());
}

void TestAppShell::startWindowMenus() {
    TestApp t;
    start(t);
    Program& app = *t.app;
    Form& startWindow = app.forms().frmMQ27D();

    startWindow.click("mnuLanguage");
    QVERIFY(app.forms().frmLanguage().isShown());
    QVERIFY(app.forms().frmLanguage().isChecked("optLanguage_1"));

    startWindow.click("mnuInterface");
    QVERIFY(app.forms().frmInterface().isShown());

    startWindow.click("mnuLoad");
    QCOMPARE(t.dialogs.lastFilter, app.texts().messages.loadFilter);

    QSignalSpy quit(&app, &Program::quitRequested);
    startWindow.click("mnuCloseApp");
    QCOMPARE(quit.count(), 1);
    QVERIFY(app.life().closing());
}

void TestAppShell::aboutBoxIsModalAndClosesOnOk() {
    TestApp t;
    t.settings.values["Version"] = "30105";
    start(t);
    Program& app = *t.app;
    // The language changes behind the About box's back; showing it brings it up to date.
    app.preferences().setLanguage(languageFromNumber(2));
    app.forms().frmMQ27D().click("mnuInfo");
    Form& about = app.forms().frmAbout();
    QVERIFY(about.isShown());
    QVERIFY(about.isModal());
    QCOMPARE(about.caption("lblKompaVersion"),
             QStringLiteral("Diagnosis program KOMPA 3,  V3.01.05"));
    about.click("cmdOK");
    QVERIFY(!about.isShown());
    QVERIFY(!about.isLoaded());
}

void TestAppShell::trayIconFollowsTheLink() {
    TestApp t;
    Program& app = *t.app;
    const Form& startWindow = app.forms().frmMQ27D();
    QVERIFY(!startWindow.isVisible("trayIcon"));
    app.shell().TrayIconUpdate();
    QVERIFY(!startWindow.isVisible("trayIcon"));

    app.shell().TrayIconAdd();
    app.shell().TrayIconAdd();
    QVERIFY(startWindow.isVisible("trayIcon"));
    QCOMPARE(startWindow.value("trayIcon"), 0.0);

    app.link().SendLEDOn();
    QCOMPARE(startWindow.value("trayIcon"), double(app.link().IconIndex()));
    QCOMPARE(app.link().IconIndex(), 2);

    app.shell().TrayIconRemove();
    QVERIFY(!startWindow.isVisible("trayIcon"));
    QVERIFY(!app.shell().TrayIconAdded());
    app.link().SendLEDOff();
    QCOMPARE(startWindow.value("trayIcon"), 2.0);
}

void TestAppShell::trayClickRaisesTheVisibleWindows() {
    TestApp t;
    Program& app = *t.app;
    AllForms& forms = app.forms();
    forms.frmConnect().show();
    forms.frmMQ27D().show();
    forms.frmDisplay().load();
    QStringList raised;
    for (Form* form : {&forms.frmMQ27D(), &forms.frmDisplay(), &forms.frmConnect()}) {
        connect(form, &Form::windowChanged, this, [&raised, form](Form::WindowChange change) {
            if (change == Form::WindowChange::Raised) raised << form->name();
        });
    }
    app.shell().TrayIconActivated();
    QCOMPARE(raised, QStringList({"frmMQ27D", "frmConnect"}));
}

QTEST_GUILESS_MAIN(TestAppShell)
#include "tst_appshell.moc"
