#include "display/mainview.h"
#include "shell/appshell.h"
#include "shell/languages.h"
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
};

QTEST_GUILESS_MAIN(TestMainView)
#include "tst_mainview.moc"
