#include "common/ui/formview.h"
#include "common/ui/lamp.h"
#include "display/ui/frmdisplay.h"
#include "shell/languages.h"
#include "shell/program.h"
#include "support/fakes.h"

#include <QAction>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QSignalSpy>
#include <QTabWidget>
#include <QtTest>

#include <memory>

class TestFrmDisplay : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        app = std::make_unique<TestApp>();
        window = std::make_unique<frmDisplayWindow>(form());
    }
    void cleanup() {
        window.reset();
        app.reset();
    }

    void everyElementHasItsWidget() {
        QStringList names = {
            "mnuFile",         "mnuLoad",         "mnuSave",        "mnuExit",
            "mnuSettings",     "mnuInterface",    "mnuLanguage",    "mnuCelsius",
            "mnuFahrenheit",   "mnuPercentMeter", "mnuPercentFeet", "mnuDeviceSelect",
            "mnuDeviceSearch", "mnuLogger",       "mnuLogDataDev",  "mnuHelp",
            "mnuPDFHelp",      "mnuInfo",         "tabDisplay"};
        for (int i = 0; i < frmDisplayWindow::kPageCount; ++i) {
            for (const char* base : {"tabDisplay", "lblSerialNoLegend", "lblSerialNo",
                                     "picReceiveLED", "lblReceiveLEDLegend"})
                names << Form::indexed(QString::fromLatin1(base), i);
        }
        for (const QString& name : names)
            QVERIFY2(window->view().target(name), qPrintable(name));
        QCOMPARE(window->tabs()->count(), 8);
        QVERIFY(qobject_cast<Lamp*>(window->view().target(QStringLiteral("picReceiveLED_7"))));
    }

    void pagesAreEmptyBelowTheirHeader() {
        for (int i = 0; i < frmDisplayWindow::kPageCount; ++i) {
            QWidget* body = window->pageBody(i);
            QVERIFY(body);
            QVERIFY(body->layout());
            QCOMPARE(body->layout()->count(), 0);
            QVERIFY(body->findChildren<QWidget*>().isEmpty());
            QVERIFY(window->tabs()->widget(i)->isAncestorOf(body));
        }
        QVERIFY(!window->pageBody(8));
    }

    void languageNamesTheTabsAndHeaders() {
        app->app->languages().SwitchToLanguage(2);
        QCOMPARE(window->tabs()->tabText(0), QStringLiteral("Status"));
        QCOMPARE(window->tabs()->tabText(4), QStringLiteral("Settings B"));
        QCOMPARE(window->tabs()->tabText(7), QStringLiteral("Bus modules B"));
        auto* legend = window->findChild<QLabel*>(QStringLiteral("lblSerialNoLegend_3"));
        QCOMPARE(legend->text(), QStringLiteral("Serial No."));
        QCOMPARE(window->findChild<QMenu*>(QStringLiteral("mnuDeviceSelect"))->title(),
                 form().caption(QStringLiteral("mnuDeviceSelect")));
    }

    void unitEntriesAreExclusivePairs() {
        auto* celsius = window->findChild<QAction*>(QStringLiteral("mnuCelsius"));
        auto* fahrenheit = window->findChild<QAction*>(QStringLiteral("mnuFahrenheit"));
        auto* meter = window->findChild<QAction*>(QStringLiteral("mnuPercentMeter"));
        form().setChecked(QStringLiteral("mnuCelsius"), true);
        form().setChecked(QStringLiteral("mnuPercentMeter"), true);
        QSignalSpy clicked(&form(), &Form::clicked);
        fahrenheit->trigger();
        QVERIFY(fahrenheit->isChecked());
        QVERIFY(!celsius->isChecked());
        QVERIFY(meter->isChecked());
        QVERIFY(form().isChecked(QStringLiteral("mnuFahrenheit")));
        QVERIFY(!form().isChecked(QStringLiteral("mnuCelsius")));
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(clicked.at(0).at(0).toString(), QStringLiteral("mnuFahrenheit"));
    }

    void hiddenPagesAndMenusFollowTheModel() {
        form().setVisible(QStringLiteral("tabDisplay_5"), false);
        form().setEnabled(QStringLiteral("tabDisplay_5"), false);
        form().setVisible(QStringLiteral("mnuLogger"), false);
        QVERIFY(!window->tabs()->isTabVisible(5));
        QVERIFY(!window->tabs()->isTabEnabled(5));
        QVERIFY(!window->findChild<QMenu*>(QStringLiteral("mnuLogger"))->menuAction()->isVisible());
        form().setValue(QStringLiteral("tabDisplay"), 3);
        QCOMPARE(window->tabs()->currentIndex(), 3);
    }

    void receiveLampsTakeTheirColour() {
        form().setBackColor(QStringLiteral("picReceiveLED_2"), colors::kGreen);
        auto* lamp = window->findChild<Lamp*>(QStringLiteral("picReceiveLED_2"));
        QCOMPARE(lamp->backColor(), colors::kGreen);
        form().setBackColor(QStringLiteral("picReceiveLED_2"), colors::kWindowBackground);
        QCOMPARE(lamp->backColor(), colors::kWindowBackground);
    }

    void closeAsksTheModel() {
        form().show(false);
        bool allow = false;
        form().setCloseHandler([&allow] { return allow; });
        QVERIFY(!window->close());
        QVERIFY(window->isVisible());
        allow = true;
        QVERIFY(window->close());
        QVERIFY(!window->isVisible());
    }

private:
    Form& form() { return app->app->forms().frmDisplay(); }

    std::unique_ptr<TestApp> app;
    std::unique_ptr<frmDisplayWindow> window;
};

QTEST_MAIN(TestFrmDisplay)
#include "tst_frmdisplay.moc"
