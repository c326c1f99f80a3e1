#include "common/colors.h"
#include "common/ui/formview.h"
#include "search/ui/frmconnect.h"
#include "search/ui/frmdevicesearch.h"
#include "shell/languages.h"
#include "shell/program.h"
#include "support/fakes.h"

#include <QAccessible>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

class TestSearchWindows : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        app = std::make_unique<TestApp>();
        search = std::make_unique<frmDeviceSearchWindow>(
            searchForm(), [this](int index) { return app->app->str(index); });
        connecting = std::make_unique<frmConnectWindow>(connectForm());
    }
    void cleanup() {
        connecting.reset();
        search.reset();
        app.reset();
    }

    void choosingFromTheListReachesTheModel() {
        searchForm().show(false);
        QVERIFY(QTest::qWaitForWindowExposed(search.get()));
        searchForm().addItem(QStringLiteral("lstDeviceList"), QStringLiteral("1001"));
        searchForm().setValue(QStringLiteral("lstDeviceList"), 0);
        searchForm().addItem(QStringLiteral("lstDeviceList"), QStringLiteral("2002"));
        auto* list = search->findChild<QListWidget*>(QStringLiteral("lstDeviceList"));
        QCOMPARE(list->count(), 2);
        QCOMPARE(list->currentRow(), 0);

        // A screen reader selects a row without moving the current one; OK applies the
        // selected row.
        QAccessibleInterface* rows = QAccessible::queryAccessibleInterface(list);
        rows->child(1)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QCOMPARE(list->currentRow(), 0);
        QCOMPARE(searchForm().value(QStringLiteral("lstDeviceList")), 1.0);
        rows->tableInterface()->selectRow(0);
        QCOMPARE(searchForm().value(QStringLiteral("lstDeviceList")), 0.0);

        QSignalSpy doubleClicked(&searchForm(), &Form::doubleClicked);
        const QPoint second = list->visualItemRect(list->item(1)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, second);
        QCOMPARE(searchForm().value(QStringLiteral("lstDeviceList")), 1.0);
        QCOMPARE(doubleClicked.count(), 1);
    }

    void blinkingKeepsTheLayoutStill() {
        app->app->languages().SwitchToLanguage(1);
        connectForm().show(false);
        QVERIFY(QTest::qWaitForWindowExposed(connecting.get()));
        auto* label = connecting->findChild<QLabel*>(QStringLiteral("lblConnection"));
        auto* cancel = connecting->findChild<QPushButton*>(QStringLiteral("cmdCancel"));
        QCOMPARE(label->text(), QStringLiteral("Verbindungsaufbau..."));
        const QRect before = cancel->geometry();
        connectForm().setVisible(QStringLiteral("lblConnection"), false);
        QCoreApplication::processEvents();
        QVERIFY(!label->isVisible());
        QCOMPARE(cancel->geometry(), before);
    }

    void escapeCancels() {
        searchForm().show(false);
        connectForm().show(false);
        QSignalSpy searchClicks(&searchForm(), &Form::clicked);
        QSignalSpy connectClicks(&connectForm(), &Form::clicked);
        QTest::keyClick(search.get(), Qt::Key_Escape);
        QTest::keyClick(connecting.get(), Qt::Key_Escape);
        QCOMPARE(searchClicks.count(), 1);
        QCOMPARE(searchClicks.at(0).at(0).toString(), QStringLiteral("cmdCancel"));
        QCOMPARE(connectClicks.count(), 1);
        QCOMPARE(connectClicks.at(0).at(0).toString(), QStringLiteral("cmdCancel"));
    }

    // What the eye reads from the colour, a screen reader hears in words.
    void dataLampSaysItsState() {
        auto* lamp = search->findChild<QWidget*>(QStringLiteral("picDataLED"));
        QCOMPARE(lamp->accessibleDescription(), app->app->str(512));
        searchForm().setBackColor(QStringLiteral("picDataLED"), colors::kGreen);
        QCOMPARE(lamp->accessibleDescription(), app->app->str(511));
        searchForm().setBackColor(QStringLiteral("picDataLED"), colors::kDefault);
        QCOMPARE(lamp->accessibleDescription(), app->app->str(512));
    }

private:
    Form& searchForm() { return app->app->forms().frmDeviceSearch(); }
    Form& connectForm() { return app->app->forms().frmConnect(); }

    std::unique_ptr<TestApp> app;
    std::unique_ptr<frmDeviceSearchWindow> search;
    std::unique_ptr<frmConnectWindow> connecting;
};

QTEST_MAIN(TestSearchWindows)
#include "tst_searchwindows.moc"
