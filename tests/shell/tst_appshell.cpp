#include "link/seriallink.h"
#include "shell/appshell.h"
#include "shell/languages.h"
#include "support/fakes.h"
#include "values/valuestore.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace {

// The device reports its buzzer switched off (telegram 3, bit 0 of the flags byte 144).
void silenceBuzzer(Program& app) {
    ValueStore& values = app.createValues();
    Bytes telegram;
    QCOMPARE(values.GetDataArray(telegram, 3), 0);
    telegram.at(144) |= 1;
    QCOMPARE(values.SetDataArray(telegram, 3), 0);
    QCOMPARE(values.GetBuzzerShouldBeOff(), 1);
}

} // namespace

class TestAppShell : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void firstStartOnACleanStore() {
        TestApp t;
        Program& app = *t.app;
        start(t);
        QCOMPARE(app.preferences().language(), Language::German);
        QCOMPARE(app.preferences().temperatureUnit(), TemperatureUnit::Celsius);
        QCOMPARE(app.preferences().smokeUnit(), SmokeUnit::PercentPerMetre);
        QCOMPARE(t.settings.values.value("Language"), "1");
        QCOMPARE(t.settings.values.value("Port"), "0");
        QVERIFY(!t.port.isOpen());
        QVERIFY(app.forms().frmMQ27D().isShown() && !app.forms().frmMQ27D().isModal());
        QVERIFY(app.shell().TrayIconAdded());
        QVERIFY(app.link().tmrZeroCommand().isEnabled());

        // While the tool closes, a start does nothing.
        TestApp closing;
        closing.app->life().setClosing();
        start(closing);
        QVERIFY(!closing.app->forms().frmMQ27D().isShown());
        QVERIFY(closing.settings.values.isEmpty());
    }

    void startReadsTheStoredSettings() {
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
        QVERIFY(t.port.isOpen());
        QVERIFY(app.forms().frmAbout().caption("lblKompaVersion").endsWith("V1.23.45"));
        QCOMPARE(app.forms().frmMQ27D().caption("mnuFile"), "File");
    }

    void commandLineSplitsAtBlanksOnly_data() {
        QTest::addColumn<QString>("raw");
        QTest::addColumn<int>("maxArgs");
        QTest::addColumn<QStringList>("args");
        QTest::newRow("empty") << "" << 1 << QStringList();
        QTest::newRow("blanks only") << " \t " << 1 << QStringList();
        QTest::newRow("leading separators") << " \t a.ko3 " << 1 << QStringList{"a.ko3"};
        QTest::newRow("limit stops the scan") << "a b c" << 1 << QStringList{"a"};
        QTest::newRow("three of them") << "a\tbb  c d" << 3 << QStringList{"a", "bb", "c"};
        QTest::newRow("quotes don't group")
            << "\"/tmp/my file.ko3\"" << 2 << QStringList{"\"/tmp/my", "file.ko3\""};
        QTest::newRow("no arguments wanted") << "a" << 0 << QStringList();
    }

    void commandLineSplitsAtBlanksOnly() {
        QFETCH(QString, raw);
        QFETCH(int, maxArgs);
        QTEST(AppShell::GetCommandLineArgs(raw, maxArgs), "args");
    }

    void firstArgumentLoadsAFile_data() {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("commandLine");
        QTest::addColumn<bool>("loaded");
        const auto row = [](const char* name, const char* file, const char* line, bool loaded) {
            QTest::newRow(name) << QString(file) << QString(line) << loaded;
        };
        row("saved device file", "dev.ko3", "%1/dev.ko3", true);
        row("any fourth character", "x.ko9", "%1/x.ko9", true);
        row("only the first argument", "y.ko3", "%1/y.ko3 /LOGGER", true);
        row(".ko at the very end", "x.ko", "%1/x.ko", false);
        row("extension in capitals", "x.KO3", "%1/x.KO3", false);
        row("logger switch", "x.ko3", "/logger %1/x.ko3", false);
        row("logger switch, any case", "x.ko3", "/LoGgEr", false);
        row("quoted path", "x.ko3", "\"%1/x.ko3\"", false);
    }

    void firstArgumentLoadsAFile() {
        QFETCH(QString, fileName);
        QFETCH(QString, commandLine);
        QFETCH(bool, loaded);
        TestApp t;
        const QDir folder(t.folder.path());
        QVERIFY(!folder.path().contains(u' '));
        QFile file(folder.filePath(fileName)); // parses, but holds no telegram
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("&H00 &H00 &H00 \r\n");
        file.close();

        start(t, commandLine.arg(folder.path()));

        QCOMPARE(t.app->link().LoadedFileName(), loaded ? folder.filePath(fileName) : QString());
        QVERIFY(t.app->forms().frmMQ27D().isShown());
        // The logger switch opens the logger and nothing else.
        QCOMPARE(t.app->forms().frmLogdataDev().isShown(),
                 commandLine.toUpper().startsWith(u"/LOGGER"));
        QVERIFY(t.dialogs.shown.isEmpty());
    }

    void versionSuffix_data() {
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("suffix");
        const auto row = [](const char* version, const char* suffix) {
            QTest::newRow(version) << QString(version) << QString(suffix);
        };
        row("30105", ",  V3.01.05");
        row("120304", ",  V12.03.04");
        row("0", "");
        row("1234", "");
        row("1abcd", ",  V1.ab.cd");
    }

    void versionSuffix() {
        QFETCH(QString, version);
        QTEST(AppShell::VersionSuffix(version), "suffix");
    }

    // Closing asks only while the device's buzzer is off: No leaves everything running, Yes
    // takes every window down, and once closing a second request passes without a question.
    void closeAsksOnlyWhileTheBuzzerIsOff() {
        TestApp quiet;
        start(quiet);
        QVERIFY(quiet.app->values() == nullptr);
        QVERIFY(quiet.app->shell().CloseApplication());
        QVERIFY(quiet.dialogs.shown.isEmpty());
        QVERIFY(quiet.app->life().closing());

        TestApp t;
        t.settings.values["Port"] = "3";
        start(t);
        Program& app = *t.app;
        app.forms().frmDisplay().show();
        app.forms().frmConnect().show();
        silenceBuzzer(app);
        QSignalSpy quit(&app, &Program::quitRequested);
        t.dialogs.answers = {UserDialogs::Answer::No, UserDialogs::Answer::Yes};
        Form& startWindow = app.forms().frmMQ27D();
        QVERIFY(!startWindow.requestClose());
        const auto& box = t.dialogs.shown.first();
        QCOMPARE(box.text, "Summer im Gerät ist noch abgeschaltet!\r\n\r\n"
                           "Soll die Diagnosesoftware wirklich beendet werden?");
        QCOMPARE(box.buttons, UserDialogs::Buttons::YesNo);
        QCOMPARE(box.defaultAnswer, UserDialogs::Answer::No);
        QVERIFY(!app.life().closing() && t.port.isOpen() && startWindow.isShown());
        QCOMPARE(quit.count(), 0);

        app.link().tmrToRx().enable();
        QVERIFY(startWindow.requestClose());
        QVERIFY(app.life().closing());
        QVERIFY(!t.port.isOpen());
        QVERIFY(!app.link().tmrZeroCommand().isEnabled() && !app.link().tmrToRx().isEnabled());
        QVERIFY(!app.shell().TrayIconAdded() && !startWindow.isVisible("trayIcon"));
        for (Form* form : app.forms().all())
            QVERIFY2(!form->isLoaded(), qPrintable(form->name()));
        QCOMPARE(quit.count(), 1);
        QVERIFY(app.shell().CloseApplication());
        QCOMPARE(t.dialogs.shown.size(), 2);
        QCOMPARE(quit.count(), 1);
    }

    void startWindowMenus() {
        TestApp t;
        t.settings.values["Version"] = "30105";
        start(t);
        Program& app = *t.app;
        Form& startWindow = app.forms().frmMQ27D();
        startWindow.click("mnuLanguage");
        QVERIFY(app.forms().frmLanguage().isShown());
        startWindow.click("mnuInterface");
        QVERIFY(app.forms().frmInterface().isShown());
        startWindow.click("mnuLoad");
        QCOMPARE(t.dialogs.lastFilter, app.texts().messages.loadFilter);

        // The language changes behind the About box's back; showing it brings it up to date.
        app.preferences().setLanguage(languageFromNumber(2));
        startWindow.click("mnuInfo");
        Form& about = app.forms().frmAbout();
        QVERIFY(about.isShown() && about.isModal());
        QCOMPARE(about.caption("lblKompaVersion"), "Diagnosis program KOMPA 3,  V3.01.05");
        about.click("cmdOK");
        QVERIFY(!about.isLoaded());
    }

    void trayIconFollowsTheLink() {
        TestApp t;
        Program& app = *t.app;
        AllForms& forms = app.forms();
        const Form& startWindow = forms.frmMQ27D();
        app.shell().TrayIconUpdate();
        QVERIFY(!startWindow.isVisible("trayIcon"));
        app.shell().TrayIconAdd();
        app.shell().TrayIconAdd();
        QVERIFY(startWindow.isVisible("trayIcon"));
        QCOMPARE(startWindow.value("trayIcon"), 0.0);
        app.link().SendLEDOn();
        QCOMPARE(startWindow.value("trayIcon"), 2.0);
        app.shell().TrayIconRemove();
        QVERIFY(!startWindow.isVisible("trayIcon") && !app.shell().TrayIconAdded());
        app.link().SendLEDOff();
        QCOMPARE(startWindow.value("trayIcon"), 2.0);

        // A click on the icon raises the shown windows alone.
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

private:
    static void start(TestApp& t, const QString& commandLine = QString()) {
        t.app->shell().Startup(commandLine);
    }
};

QTEST_GUILESS_MAIN(TestAppShell)
#include "tst_appshell.moc"
