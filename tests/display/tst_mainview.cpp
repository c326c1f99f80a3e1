#include "display/mainview.h"
#include "shell/appshell.h"
#include "shell/languages.h"
#include "shell/livestate.h"
#include "support/fakes.h"
#include "values/valuestore.h"

#include <QtTest>

class TestMainView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void loadPreparesMenusAndTabs();
    void unitMenusSwapAndStore();
    void menusReachTheirParts();
    void exitIgnoresTheAnswer();
    void closeButtonFollowsTheAnswer();
    void helpTopics_data();
    void helpTopics();
    void helpButtonOneOnlyDescribes();
    void helpLinksShowTheirPointer();
    void windowsNamedAsTheirMenus();
    void temperatureColoursExplained();
    void silenceAndFileSaidOnEveryPage();
};

void TestMainView::loadPreparesMenusAndTabs() {
    TestApp t;
    Program& app = *t.app;
    app.preferences().setTemperatureUnit(temperatureUnitFromNumber(2));
    Form& view = app.forms().frmDisplay();
    view.setValue("tabDisplay", 4);
    view.load();
    QVERIFY(view.isVisible("mnuLogger"));
    QVERIFY(view.isVisible("mnuLogDataDev"));
    QCOMPARE(view.value("tabDisplay"), 0.0);
    QVERIFY(view.isChecked("mnuFahrenheit"));
    QVERIFY(!view.isChecked("mnuCelsius"));
    QVERIFY(view.isChecked("mnuPercentMeter"));
    QVERIFY(!view.isChecked("mnuPercentFeet"));
}

void TestMainView::unitMenusSwapAndStore() {
    TestApp t;
    Program& app = *t.app;
    Form& view = app.forms().frmDisplay();
    view.load();

    view.click("mnuFahrenheit");
    view.click("mnuPercentFeet");
    QCOMPARE(app.preferences().temperatureUnit(), TemperatureUnit::Fahrenheit);
    QCOMPARE(app.preferences().smokeUnit(), SmokeUnit::PercentPerFoot);
    QVERIFY(view.isChecked("mnuFahrenheit") && !view.isChecked("mnuCelsius"));
    QVERIFY(view.isChecked("mnuPercentFeet") && !view.isChecked("mnuPercentMeter"));
    QCOMPARE(t.settings.values.value("Temperature"), QStringLiteral("2"));
    QCOMPARE(t.settings.values.value("Smoke"), QStringLiteral("2"));

    view.click("mnuCelsius");
    view.click("mnuPercentMeter");
    QCOMPARE(app.preferences().temperatureUnit(), TemperatureUnit::Celsius);
    QCOMPARE(app.preferences().smokeUnit(), SmokeUnit::PercentPerMetre);
    QVERIFY(view.isChecked("mnuCelsius") && !view.isChecked("mnuFahrenheit"));
    QVERIFY(view.isChecked("mnuPercentMeter") && !view.isChecked("mnuPercentFeet"));
    QCOMPARE(t.settings.values.value("Smoke"), QStringLiteral("1"));
}

void TestMainView::menusReachTheirParts() {
    TestApp t;
    Program& app = *t.app;
    app.shell().Startup(QString());
    Form& view = app.forms().frmDisplay();

    view.click("mnuInfo");
    QVERIFY(app.forms().frmAbout().isShown());
    QVERIFY(app.forms().frmAbout().isModal());

    view.click("mnuLanguage");
    QVERIFY(app.forms().frmLanguage().isShown());

    view.click("mnuInterface");
    QVERIFY(app.forms().frmInterface().isShown());

    view.click("mnuLoad");
    QCOMPARE(t.dialogs.lastFilter, app.texts().messages.loadFilter);

    // A save by the user asks for a file name; cancelled, nothing is written.
    t.dialogs.lastFilter.clear();
    app.createValues();
    view.click("mnuSave");
    QVERIFY(!t.dialogs.lastFilter.isEmpty());
}

void TestMainView::exitIgnoresTheAnswer() {
    TestApp t;
    Program& app = *t.app;
    app.shell().Startup(QString());
    QSignalSpy quit(&app, &Program::quitRequested);
    app.forms().frmDisplay().click("mnuExit");
    QVERIFY(app.life().closing());
    QCOMPARE(quit.count(), 1);
}

void TestMainView::closeButtonFollowsTheAnswer() {
    TestApp t;
    Program& app = *t.app;
    app.shell().Startup(QString());
    Form& view = app.forms().frmDisplay();
    view.show();
    ValueStore& values = app.createValues();
    Bytes telegram;
    values.GetDataArray(telegram, 3);
    telegram.at(144) = 1;
    values.SetDataArray(telegram, 3);

    t.dialogs.answers = {UserDialogs::Answer::No};
    QVERIFY(!view.requestClose());
    QVERIFY(view.isShown());
    QVERIFY(!app.life().closing());

    t.dialogs.answers = {UserDialogs::Answer::Yes};
    QVERIFY(view.requestClose());
    QVERIFY(!view.isLoaded());
    QVERIFY(app.life().closing());
}

void TestMainView::helpTopics_data() {
    QTest::addColumn<int>("topic");
    QTest::addColumn<bool>("hasPage");
    QTest::newRow("menu") << 0 << true;
    QTest::newRow("first fault") << 1 << true;
    QTest::newRow("29") << 29 << true;
    QTest::newRow("30") << 30 << false;
    QTest::newRow("31") << 31 << true;
    QTest::newRow("34") << 34 << true;
    QTest::newRow("35") << 35 << false;
    QTest::newRow("39") << 39 << false;
    QTest::newRow("air flow") << 40 << true;
    QTest::newRow("chamber") << 41 << true;
    QTest::newRow("42") << 42 << false;
    QTest::newRow("50") << 50 << false;
    QTest::newRow("51") << 51 << true;
    QTest::newRow("58") << 58 << true;
    QTest::newRow("59") << 59 << false;
    QTest::newRow("-1") << -1 << false;
}

void TestMainView::helpTopics() {
    QFETCH(int, topic);
    QFETCH(bool, hasPage);
    TestApp t;
    t.app->languages().SwitchToLanguage(1);
    t.launcher.onPath["evince"] = "/usr/bin/evince";
    t.app->mainView().Help_Table(2, topic, QString());
    // Without the help file, a topic with a page reports the missing file.
    QCOMPARE(t.dialogs.shown.size(), hasPage ? 1 : 0);
    if (hasPage) QVERIFY(t.dialogs.shown.first().text.endsWith("KompaHelp_010_001.pdf"));
}

void TestMainView::helpButtonOneOnlyDescribes() {
    TestApp t;
    t.app->languages().SwitchToLanguage(2);
    t.launcher.onPath["evince"] = "/usr/bin/evince";
    t.app->mainView().Help_Table(1, 40, "Air flow");
    QCOMPARE(t.dialogs.shown.size(), 1);
    QVERIFY(t.dialogs.shown.first().text.startsWith("Helptext No. :         40\r\n"));
    QVERIFY(t.dialogs.shown.first().text.contains("KompaHelp_010_002.pdf"));
    QVERIFY(t.dialogs.shown.first().text.endsWith("Remark :                 Air flow"));

    t.dialogs.shown.clear();
    t.app->forms().frmDisplay().click("mnuPDFHelp");
    QCOMPARE(t.dialogs.shown.size(), 1);
    QVERIFY(t.dialogs.shown.first().text.startsWith("File not found"));
    QVERIFY(t.launcher.started.isEmpty());
}

// What a click opens help on carries the pointer of a help link, and nothing else does.
void TestMainView::helpLinksShowTheirPointer() {
    TestApp t;
    Form& view = t.app->forms().frmDisplay();
    view.load();
    for (const char* e : {"lblAirFlowLegend", "lblAirFlow", "lblChamberLegend_1", "lblChamber_0",
                          "picErr_0", "picErr_33"})
        QVERIFY2(view.mousePointer(e) == MousePointer::HelpLink, e);
    QVERIFY(view.mousePointer("lblTemperature") == MousePointer::Default);
}

void TestMainView::windowsNamedAsTheirMenus() {
    TestApp t;
    for (int language = 1; language <= 4; ++language) {
        t.app->languages().SwitchToLanguage(language);
        const Form& view = t.app->forms().frmDisplay();
        QCOMPARE(t.app->forms().frmExtinguishSettings().title(),
                 view.caption("mnuExtinguishSettings").remove(u'&'));
        QCOMPARE(t.app->forms().frmDeviceSettings().title(),
                 view.caption("mnuDeviceSettings").remove(u'&'));
    }
}

// Each sensor's tool tip says, in each language, what its yellow and red mean.
void TestMainView::temperatureColoursExplained() {
    TestApp t;
    QSet<QString> seen;
    for (int language = 1; language <= 4; ++language) {
        t.app->languages().SwitchToLanguage(language);
        const Form& view = t.app->forms().frmDisplay();
        for (int n = 0; n < 5; ++n) {
            const QString tip = view.toolTip(QStringLiteral("lblSensorTemp_%1").arg(n));
            QVERIFY2(tip.contains(QString::number(n + 1)) && !seen.contains(tip), qPrintable(tip));
            seen.insert(tip);
        }
    }
}

// Three missed answers in a row say so on every page and hold the lamps; the next answer
// takes it back. A file shown says so and locks what would send, until a search.
void TestMainView::silenceAndFileSaidOnEveryPage() {
    TestApp t;
    t.app->languages().SwitchToLanguage(2);
    t.app->session().setSerialNo(QStringLiteral("1234567"));
    LiveState& live = t.app->live();
    Form& view = t.app->forms().frmDisplay();
    const QDateTime heard(QDate(2024, 5, 6), QTime(17, 11, 34));
    live.telegramTaken(heard, false);
    QSignalSpy began(&live, &LiveState::silenceBegan);
    for (int miss = 1; miss <= 4; ++miss) {
        live.answerMissed();
        QCOMPARE(view.isVisible("lblStateBanner_7"), miss >= LiveState::kMissesForSilence);
    }
    QCOMPARE(began.size(), 1);
    QCOMPARE(view.caption("lblStateBanner_0"),
             QStringLiteral("No answer from 1234567 since 17:11:34"));
    QVERIFY(!t.app->mainView().Leds().tmrBlink().isEnabled());
    live.telegramTaken(heard.addSecs(60), false);
    QVERIFY(!view.isVisible("lblStateBanner_3"));
    QVERIFY(t.app->mainView().Leds().tmrBlink().isEnabled());

    live.telegramTaken(heard, true);
    live.showFile(QStringLiteral("/tmp/ShelLix_1234567.ko3"));
    QVERIFY(view.caption("lblStateBanner_5").contains(QStringLiteral("ShelLix_1234567.ko3")));
    for (const char* e : {"cmdSettings", "cmdAlarmReset_0", "cmdExtinguisherIdent_9"}) {
        QVERIFY2(!view.isEnabled(e), e);
        QVERIFY(!view.toolTip(e).isEmpty());
    }
    QVERIFY(!t.app->forms().frmDeviceSettings().isEnabled("cmdBetaSettings"));
    for (int miss = 0; miss < 5; ++miss)
        live.answerMissed();
    QVERIFY(!live.isSilent());
    view.click("mnuDeviceSearch");
    QVERIFY(!live.isFileShown());
    QVERIFY(!view.isVisible("lblStateBanner_0"));
    QVERIFY(view.isEnabled("cmdSettings"));
}

QTEST_GUILESS_MAIN(TestMainView)
#include "tst_mainview.moc"
