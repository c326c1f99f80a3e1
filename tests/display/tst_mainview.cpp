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
    // Loading shows the first page and the units in use; the menus swap and store them.
    void unitMenusSwapAndStore() {
        TestApp t;
        Program& app = *t.app;
        app.preferences().setTemperatureUnit(temperatureUnitFromNumber(2));
        Form& view = app.forms().frmDisplay();
        view.setValue("tabDisplay", 4);
        view.load();
        QVERIFY(view.isVisible("mnuLogger") && view.isVisible("mnuLogDataDev"));
        QCOMPARE(view.value("tabDisplay"), 0.0);
        QVERIFY(view.isChecked("mnuFahrenheit") && !view.isChecked("mnuCelsius"));
        QVERIFY(view.isChecked("mnuPercentMeter") && !view.isChecked("mnuPercentFeet"));

        view.click("mnuCelsius");
        view.click("mnuPercentFeet");
        QCOMPARE(app.preferences().temperatureUnit(), TemperatureUnit::Celsius);
        QCOMPARE(app.preferences().smokeUnit(), SmokeUnit::PercentPerFoot);
        QVERIFY(view.isChecked("mnuCelsius") && !view.isChecked("mnuFahrenheit"));
        QVERIFY(view.isChecked("mnuPercentFeet") && !view.isChecked("mnuPercentMeter"));
        QCOMPARE(t.settings.values.value("Temperature"), "1");
        QCOMPARE(t.settings.values.value("Smoke"), "2");

        view.click("mnuFahrenheit");
        view.click("mnuPercentMeter");
        QVERIFY(view.isChecked("mnuPercentMeter") && !view.isChecked("mnuPercentFeet"));
        QCOMPARE(t.settings.values.value("Temperature"), "2");
        QCOMPARE(t.settings.values.value("Smoke"), "1");
    }

    // The entries both windows share reach the shell's handler (its tests drive them from
    // the start window); saving asks for a file name, and the exit entry closes the tool.
    void menusReachTheirParts() {
        TestApp t;
        Program& app = *t.app;
        app.shell().Startup(QString());
        Form& view = app.forms().frmDisplay();
        view.click("mnuInfo");
        QVERIFY(app.forms().frmAbout().isShown());
        app.createValues();
        view.click("mnuSave");
        QVERIFY(!t.dialogs.lastFilter.isEmpty());
        QSignalSpy quit(&app, &Program::quitRequested);
        view.click("mnuExit");
        QVERIFY(app.life().closing());
        QCOMPARE(quit.count(), 1);
    }

    // The first button only describes what would open.
    void helpButtonOneOnlyDescribes() {
        TestApp t;
        t.launcher.onPath["evince"] = "/usr/bin/evince";
        t.app->mainView().Help_Table(1, 40, "Air flow");
        QCOMPARE(t.dialogs.shown.size(), 1);
        QVERIFY(t.dialogs.shown[0].text.endsWith("Air flow"));
        QVERIFY(t.launcher.started.isEmpty());
    }

    // Three missed answers in a row say so on every page and hold the lamps; the next answer
    // takes it back. A file shown says so and locks what would send, until a search.
    void silenceAndFileSaidOnEveryPage() {
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
        view.setEnabled("cmdRelaySet", false);
        live.showFile(QStringLiteral("/tmp/ShelLix_1234567.ko3"));
        // A button its window enables while the file is shown is locked again, and comes
        // back enabled.
        view.setEnabled("cmdRelaySet", true);
        live.applyLocks();
        QVERIFY(!view.isEnabled("cmdRelaySet"));
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
        QVERIFY(view.isEnabled("cmdRelaySet"));
    }
};

QTEST_GUILESS_MAIN(TestMainView)
#include "tst_mainview.moc"
