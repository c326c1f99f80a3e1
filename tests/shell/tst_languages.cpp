#include "common/regsettings.h"
#include "common/stringtable.h"
#include "display/mainview.h"
#include "shell/languages.h"
#include "support/fakes.h"

#include <QtTest>

namespace {

// The elements that take a string of the table, window by window.
const QHash<QString, QStringList> kTranslatedElements = {
    {"frmMQ27D",
     {"mnuFile", "mnuLoad", "mnuCloseApp", "mnuSettings", "mnuInterface", "mnuLanguage", "mnuHelp",
      "mnuInfo", "lblReceive", "lblSend"}},
    {"frmInterface", {"lblCOMPort", "cmdOKButton", "cmdCancelButton"}},
    {"frmLanguage", {"cmdOK"}},
    {"frmDisplay",
     {"mnuFile", "mnuLoad", "mnuSave", "mnuExit", "mnuSettings", "mnuInterface", "mnuLanguage",
      "mnuDeviceSelect", "mnuDeviceSearch", "mnuHelp", "mnuPDFHelp", "mnuInfo",
      "lblReceiveLEDLegend_0", "lblReceiveLEDLegend_7", "lblSerialNoLegend_0",
      "lblSerialNoLegend_7"}},
    {"frmAbout", {"lblKompaVersion", "lblDisplay", "lblCopyright_0", "lblCopyright_1", "cmdOK"}},
    {"frmConnect", {"lblConnection", "cmdCancel"}},
    {"frmDeviceSearch", {"lblDataLEDLegend", "cmdOK", "cmdCancel"}},
};

const QStringList kTitledWindows = {"frmMQ27D", "frmInterface", "frmLanguage", "frmAbout"};

QString text(int language, int index) {
    return StringTable::instance().text(languageFromNumber(language), index);
}

} // namespace

class TestLanguages : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyWindowSpeaksEachLanguage_data();
    void everyWindowSpeaksEachLanguage();
    void messagesAreComposed();
    void unknownLanguageIsGermanAndStored_data();
    void unknownLanguageIsGermanAndStored();
    void unchangedLanguageIsNotWrittenAgain();
    void switchRewritesOpenAndClosedWindowsAtOnce();
    void startWindowMonitorStaysHidden();
    void portListKeepsItsNumbers();
    void versionFollowsTheBuild();
    void unitsAreStoredAsGivenButUsedAsKnown_data();
    void unitsAreStoredAsGivenButUsedAsKnown();
    void languageDialogChecksTheCurrentLanguage();
    void languageDialogSwitchesToTheCheckedOption_data();
    void languageDialogSwitchesToTheCheckedOption();
    void choosingAnOptionClearsTheOthers();
};

void TestLanguages::everyWindowSpeaksEachLanguage_data() {
    QTest::addColumn<int>("language");
    QTest::newRow("German") << 1;
    QTest::newRow("English") << 2;
    QTest::newRow("French") << 3;
    QTest::newRow("Dutch") << 4;
}

void TestLanguages::everyWindowSpeaksEachLanguage() {
    QFETCH(int, language);
    TestApp t;
    Program& app = *t.app;
    app.languages().SwitchToLanguage(language);

    for (auto it = kTranslatedElements.cbegin(); it != kTranslatedElements.cend(); ++it) {
        const Form& form = app.forms().get(it.key());
        for (const QString& element : it.value())
            QVERIFY2(!form.caption(element).isEmpty(), qPrintable(it.key() + "." + element));
    }
    for (const QString& name : kTitledWindows)
        QVERIFY2(!app.forms().get(name).title().isEmpty(), qPrintable(name));
    Form& view = app.forms().frmDisplay();
    for (int i = 0; i < 8; ++i)
        QVERIFY(!view.caption(Form::indexed(u"tabDisplay", i)).isEmpty());
    // The A and B pages share a text.
    QCOMPARE(view.caption("tabDisplay_4"), text(language, 11) + " B");
    QCOMPARE(view.caption("tabDisplay_6"), text(language, 369) + " A");
    QCOMPARE(languageNumber(app.preferences().language()), language);
    QCOMPARE(app.settings().GetLanguage(), language);
}

void TestLanguages::messagesAreComposed() {
    TestApp t;
    Program& app = *t.app;
    app.languages().SwitchToLanguage(1);
    const AppMessages& m = app.texts().messages;
    QCOMPARE(app.texts().appTitle, QStringLiteral("ORVANIS SHEL·LIX"));
    QCOMPARE(m.normalModeWarning,
             QStringLiteral("ORVANIS SHEL·LIX wechselt jetzt in den normalen Betriebsmodus.\r\n"
                            "Noch vorhandener Rauchpegel kann zur Alarmauslösung führen!\r\n\r\n"
                            "Wollen Sie in den normalen Betriebsmodus wechseln?"));
    QCOMPARE(m.loadFilter, QStringLiteral("KOMPA Dateien (*.ko3)|*.ko3|Alle Dateien (*.*)|*.*|"));
    QCOMPARE(m.notPossibleWithReason, QStringLiteral("Vorgang zur Zeit nicht möglich.\r\n"
                                                     "Schalten Sie zuvor SPOT·FIND im Register "
                                                     "Einstellungen ein."));

    app.languages().SwitchToLanguage(2);
    QCOMPARE(m.closeQuestion,
             QStringLiteral("Do you really want to terminate the diagnosis software ?"));
}

void TestLanguages::unknownLanguageIsGermanAndStored_data() {
    QTest::addColumn<int>("language");
    QTest::newRow("default 0") << 0;
    QTest::newRow("9") << 9;
    QTest::newRow("negative") << -3;
}

void TestLanguages::unknownLanguageIsGermanAndStored() {
    QFETCH(int, language);
    TestApp t;
    Program& app = *t.app;
    app.languages().SwitchToLanguage(2);
    app.languages().SwitchToLanguage(language);
    QCOMPARE(app.preferences().language(), Language::German);
    QCOMPARE(t.settings.values.value("Language"), QStringLiteral("1"));
    QCOMPARE(app.forms().frmMQ27D().caption("mnuFile"), QStringLiteral("Datei"));
}

void TestLanguages::unchangedLanguageIsNotWrittenAgain() {
    TestApp t;
    t.settings.values["Language"] = "3 ";
    t.app->languages().SwitchToLanguage(3);
    QCOMPARE(t.settings.values.value("Language"), QStringLiteral("3 "));
}

void TestLanguages::switchRewritesOpenAndClosedWindowsAtOnce() {
    TestApp t;
    Program& app = *t.app;
    app.languages().SwitchToLanguage(1);
    Form& view = app.forms().frmDisplay();
    view.show();
    app.forms().frmMQ27D().show();
    // A view has written its own text over a legend meanwhile.
    view.setCaption("lblSerialNoLegend_3", "12345");

    QSignalSpy switched(&app.languages(), &Languages::LanguageSwitched);
    app.languages().SwitchToLanguage(2);

    QCOMPARE(switched.count(), 1);
    QCOMPARE(switched.first().first().toInt(), 2);
    QCOMPARE(view.caption("lblSerialNoLegend_3"), QStringLiteral("Serial No."));
    QCOMPARE(view.caption("mnuPDFHelp"), QStringLiteral("Help"));
    QVERIFY(!app.forms().frmAbout().isLoaded());
    QCOMPARE(app.forms().frmAbout().title(), QStringLiteral("About KOMPA 3"));
}

void TestLanguages::startWindowMonitorStaysHidden() {
    TestApp t;
    Form& start = t.app->forms().frmMQ27D();
    start.setCaption("lblDevice", "COM port OFF");
    start.setCaption("txtComReceive", "02 0C");
    start.setVisible("fraComSend", true);
    t.app->languages().SwitchToLanguage(4);
    QCOMPARE(start.caption("lblDevice"), QString());
    QCOMPARE(start.caption("txtComReceive"), QString());
    QVERIFY(!start.isVisible("fraComSend"));
    QVERIFY(!start.isVisible("fraComReceive"));
}

void TestLanguages::portListKeepsItsNumbers() {
    TestApp t;
    Form& ports = t.app->forms().frmInterface();
    t.app->languages().SwitchToLanguage(2);
    QVERIFY(ports.items("cboPort").isEmpty());

    ports.setItems("cboPort", {"Aus", "1", "--", "3"});
    t.app->languages().SwitchToLanguage(3);
    QCOMPARE(ports.items("cboPort"), QStringList({"Arrêt", "1", "--", "3"}));
}

void TestLanguages::versionFollowsTheBuild() {
    const QString version = QStringLiteral("%1.%2.%3")
                                .arg(MQ27_VERSION_MAJOR)
                                .arg(MQ27_VERSION_MINOR, 2, 10, QLatin1Char('0'))
                                .arg(MQ27_VERSION_PATCH, 2, 10, QLatin1Char('0'));
    QCOMPARE(Languages::VersionText(), " - V" + version);

    TestApp t;
    Program& app = *t.app;
    app.texts().versionSuffix = ",  V3.01.05";
    app.languages().SwitchToLanguage(1);
    QCOMPARE(app.forms().frmMQ27D().title(), "ORVANIS SHEL·LIX - V" + version);
    QCOMPARE(app.forms().frmAbout().caption("lblKompaVersion"),
             QStringLiteral("Diagnoseprogramm KOMPA 3,  V3.01.05"));
    QCOMPARE(app.forms().frmAbout().caption("lblDisplay"),
             "Anzeigemodul ORVANIS SHEL·LIX,  V" + version);
}

void TestLanguages::unitsAreStoredAsGivenButUsedAsKnown_data() {
    QTest::addColumn<int>("unit");
    QTest::addColumn<int>("used");
    QTest::newRow("1") << 1 << 1;
    QTest::newRow("2") << 2 << 2;
    QTest::newRow("3") << 3 << 1;
    QTest::newRow("0") << 0 << 1;
}

void TestLanguages::unitsAreStoredAsGivenButUsedAsKnown() {
    QFETCH(int, unit);
    QFETCH(int, used);
    TestApp t;
    Program& app = *t.app;
    app.mainView().SwitchToTemperature(unit);
    app.mainView().SwitchToSmokeUnit(unit);
    QCOMPARE(t.settings.values.value("Temperature"), QString::number(unit));
    QCOMPARE(t.settings.values.value("Smoke"), QString::number(unit));
    QCOMPARE(static_cast<int>(app.preferences().temperatureUnit()), used);
    QCOMPARE(static_cast<int>(app.preferences().smokeUnit()), used);

    const Form& view = app.forms().frmDisplay();
    QCOMPARE(view.isChecked("mnuCelsius"), used == 1);
    QCOMPARE(view.isChecked("mnuFahrenheit"), used == 2);
    QCOMPARE(view.isChecked("mnuPercentMeter"), used == 1);
    QCOMPARE(view.isChecked("mnuPercentFeet"), used == 2);
}

void TestLanguages::languageDialogChecksTheCurrentLanguage() {
    TestApp t;
    Program& app = *t.app;
    app.languages().SwitchToLanguage(3);
    app.languages().ShowLanguage();
    const Form& dialog = app.forms().frmLanguage();
    QVERIFY(dialog.isShown());
    QVERIFY(!dialog.isModal());
    for (int i = 0; i < 5; ++i)
        QCOMPARE(dialog.value(Form::indexed(u"optLanguage", i)), i == 3 ? 1.0 : 0.0);
}

void TestLanguages::languageDialogSwitchesToTheCheckedOption_data() {
    QTest::addColumn<int>("option");
    QTest::addColumn<int>("language");
    QTest::newRow("Dutch") << 4 << 4;
    QTest::newRow("Default is German") << 0 << 1;
}

void TestLanguages::languageDialogSwitchesToTheCheckedOption() {
    QFETCH(int, option);
    QFETCH(int, language);
    TestApp t;
    Program& app = *t.app;
    app.languages().SwitchToLanguage(2);
    app.languages().ShowLanguage();
    Form& dialog = app.forms().frmLanguage();
    dialog.userSetValue(Form::indexed(u"optLanguage", option), 1);
    dialog.click("cmdOK");
    QCOMPARE(languageNumber(app.preferences().language()), language);
    QCOMPARE(t.settings.values.value("Language"), QString::number(language));
    QVERIFY(!dialog.isShown());

    // Shown again, it checks the language now in use.
    app.languages().ShowLanguage();
    QVERIFY(dialog.isChecked(Form::indexed(u"optLanguage", language)));
    QVERIFY(!dialog.isChecked("optLanguage_2"));
}

void TestLanguages::choosingAnOptionClearsTheOthers() {
    TestApp t;
    t.app->languages().ShowLanguage();
    Form& dialog = t.app->forms().frmLanguage();
    dialog.userSetValue("optLanguage_2", 1);
    dialog.userSetValue("optLanguage_4", 1);
    for (int i = 0; i < 5; ++i)
        QCOMPARE(dialog.isChecked(Form::indexed(u"optLanguage", i)), i == 4);
}

QTEST_GUILESS_MAIN(TestLanguages)
#include "tst_languages.moc"
