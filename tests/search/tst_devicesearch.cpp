#include "engine/pollengine.h"
#include "engine/telegramdecoder.h"
#include "link/seriallink.h"
#include "link/telegram.h"
#include "search/devicesearch.h"
#include "support/fakes.h"
#include "support/testsupport.h"
#include "values/valuestore.h"

#include <QTest>

namespace {

constexpr std::uint32_t kShown = 1234567;
constexpr std::uint32_t kOther = 7654321;
const QString kShownText = QString::number(kShown);
const QString kOtherText = QString::number(kOther);
using testsupport::ownTelegram;

// Device 1234567 read out and polled, the main view shown with the captions the language
// switch gives it.
struct Rig {
    TestApp t;
    Program& app = *t.app;
    DeviceSearch& search = app.search();
    PollEngine& engine = app.engine();
    Form& display = app.forms().frmDisplay();
    Form& searchWindow = app.forms().frmDeviceSearch();
    Form& connectWindow = app.forms().frmConnect();

    Rig() {
        app.texts().appTitle = QStringLiteral("KOMPA MQ27D");
        t.settings.values[QStringLiteral("Port")] = QStringLiteral("2");
        display.setCaption("mnuDeviceSelect", QStringLiteral("Gerät auswählen"));
        display.setCaption("lblReceiveLEDLegend_0", QStringLiteral("Daten"));
        for (int command : {1, 2, 3, 5})
            app.decoder().DataDecoder(ownTelegram(command, kShown));
    }

    QStringList listed() const { return searchWindow.items("lstDeviceList"); }
};

} // namespace

class TestDeviceSearch : public QObject {
    Q_OBJECT

private slots:
    void searchStopsThePollAndListsTheShownDevice() {
        Rig rig;
        QVERIFY(rig.display.isShown() && rig.engine.tmrAutoSend().isEnabled());
        QVERIFY(!rig.app.link().IsPortOpen());
        rig.engine.tmrTimeout().enable();
        rig.search.mnuDeviceSearch_Click();
        QVERIFY(rig.t.port.isOpen());
        QCOMPARE(rig.t.port.portNumber(), 2);
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled() && !rig.engine.tmrTimeout().isEnabled());
        QCOMPARE(rig.searchWindow.title(), "KOMPA MQ27D - Gerät auswählen");
        QCOMPARE(rig.searchWindow.caption("lblDataLEDLegend"), "Daten");
        QCOMPARE(rig.searchWindow.centredOver(), "frmDisplay");
        QCOMPARE(rig.listed(), QStringList{kShownText});
        QCOMPARE(rig.searchWindow.value("lstDeviceList"), 0.0);
        QVERIFY(!rig.display.isShown() && rig.app.session().searchRunning());

        // A second search starts with a fresh list.
        rig.search.AddDevice(kOther);
        rig.searchWindow.click("cmdCancel");
        rig.search.mnuDeviceSearch_Click();
        QCOMPARE(rig.listed(), QStringList{kShownText});

        // Closing the tool closes the window without going back to the device.
        rig.app.life().setClosing();
        QVERIFY(rig.searchWindow.requestClose());
        QVERIFY(rig.app.session().searchRunning());
        QVERIFY(!rig.display.isShown());
    }

    // Before any device was shown there is nothing to go back to, and no device "0".
    void searchBeforeAnyDeviceListsOnlyThoseThatAnswer() {
        TestApp t;
        t.app->search().mnuDeviceSearch_Click();
        const Form& window = t.app->forms().frmDeviceSearch();
        QVERIFY(window.items("lstDeviceList").isEmpty());
        t.app->search().AddDevice(kOther);
        QCOMPARE(window.items("lstDeviceList"), QStringList{kOtherText});
    }

    // Each telegram lights the lamp and lists its device once, in plain digits; nothing
    // else of it is taken.
    void telegramsDuringTheSearchOnlyFillTheList() {
        Rig rig;
        rig.search.mnuDeviceSearch_Click();
        const Bytes before = stored(rig.app, 2);
        Q_EMIT rig.search.tmrDataLED().timeout();
        QCOMPARE(rig.searchWindow.backColor("picDataLED"), colors::kDefault);
        QVERIFY(!rig.search.tmrDataLED().isEnabled());

        rig.app.decoder().DataDecoder(ownTelegram(2, kOther));
        rig.app.decoder().DataDecoder(ownTelegram(1, kOther));
        rig.app.decoder().DataDecoder(ownTelegram(3, kShown));
        QCOMPARE(rig.searchWindow.backColor("picDataLED"), colors::kGreen);
        QVERIFY(rig.search.tmrDataLED().isEnabled());
        rig.search.AddDevice(4294967295.0);
        rig.search.AddDevice(0);
        QCOMPARE(rig.listed(), (QStringList{kShownText, kOtherText, "4294967295", "0"}));
        QCOMPARE(rig.searchWindow.value("lstDeviceList"), 0.0);
        QCOMPARE(stored(rig.app, 2), before);
        QCOMPARE(rig.display.caption("lblSerialNo_0"), kShownText);
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
    }

    void cancelKeepsTheOldDeviceOrStopsThePoll_data() {
        QTest::addColumn<bool>("byFrame");
        QTest::newRow("cmdCancel") << false;
        QTest::newRow("window closed") << true;
    }
    // Cancelling the search keeps the old device; cancelling the connection to another one
    // stops the poll and goes back to the start window.
    void cancelKeepsTheOldDeviceOrStopsThePoll() {
        QFETCH(bool, byFrame);
        Rig rig;
        const auto cancel = [byFrame](Form& window) {
            if (!byFrame) return window.click("cmdCancel");
            QVERIFY(window.requestClose());
        };
        rig.search.mnuDeviceSearch_Click();
        rig.app.decoder().DataDecoder(ownTelegram(1, kOther));
        rig.searchWindow.userSetValue("lstDeviceList", 1);
        cancel(rig.searchWindow);
        QCOMPARE(rig.display.caption("lblSerialNo_0"), kShownText);
        QCOMPARE(rig.engine.NextCommand(), 2);
        QVERIFY(rig.display.isShown() && !rig.connectWindow.isShown());
        QVERIFY(!rig.app.session().searchRunning());
        QVERIFY(rig.engine.tmrAutoSend().isEnabled());
        QVERIFY(!rig.searchWindow.isLoaded());

        rig.search.mnuDeviceSearch_Click();
        rig.search.AddDevice(kOther);
        rig.searchWindow.userSetValue("lstDeviceList", 1);
        rig.searchWindow.click("cmdOK");
        rig.engine.tmrTimeout().enable();
        QVERIFY(!rig.app.forms().frmMQ27D().isShown());
        cancel(rig.connectWindow);
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled() && !rig.engine.tmrTimeout().isEnabled());
        QVERIFY(rig.app.forms().frmMQ27D().isShown());
        QVERIFY(!rig.connectWindow.isLoaded() && !rig.search.tmrBlink().isEnabled());
    }

    void choosingAnotherDeviceConnectsAnew_data() {
        QTest::addColumn<bool>("byDoubleClick");
        QTest::newRow("cmdOK") << false;
        QTest::newRow("double click") << true;
    }
    void choosingAnotherDeviceConnectsAnew() {
        QFETCH(bool, byDoubleClick);
        Rig rig;
        rig.search.mnuDeviceSearch_Click();
        rig.app.decoder().DataDecoder(ownTelegram(2, kOther));
        rig.searchWindow.userSetValue("lstDeviceList", 1);
        if (byDoubleClick)
            rig.searchWindow.doubleClick("lstDeviceList");
        else
            rig.searchWindow.click("cmdOK");

        QCOMPARE(rig.display.caption("lblSerialNo_0"), kOtherText);
        QCOMPARE(rig.engine.NextCommand(), 1);
        QVERIFY(!rig.app.session().searchRunning());
        QVERIFY(rig.engine.tmrAutoSend().isEnabled());
        QVERIFY(!rig.searchWindow.isLoaded());
        QVERIFY(!rig.display.isShown() && rig.connectWindow.isShown());
        QCOMPARE(rig.connectWindow.title(), rig.app.texts().appTitle + " - " + kOtherText);
        QVERIFY(rig.search.tmrBlink().isEnabled());
        // The connection label blinks while the window is up.
        Q_EMIT rig.search.tmrBlink().timeout();
        QVERIFY(!rig.connectWindow.isVisible("lblConnection"));
        Q_EMIT rig.search.tmrBlink().timeout();
        QVERIFY(rig.connectWindow.isVisible("lblConnection"));
        Q_EMIT rig.search.tmrBlink().timeout();

        // The chosen device's read-out ends the connection phase, the label shown again.
        for (int command : {1, 2, 3, 5})
            rig.app.decoder().DataDecoder(ownTelegram(command, kOther));
        QVERIFY(rig.display.isShown() && !rig.connectWindow.isLoaded());
        QVERIFY(!rig.search.tmrBlink().isEnabled());
        QVERIFY(rig.connectWindow.isVisible("lblConnection"));
        QCOMPARE(rig.app.session().takenOnSerialNo(), kOtherText);
    }

    // OK without a row does nothing; on the device shown it goes on without connecting.
    void choosingTheShownDeviceGoesOnWithoutConnecting() {
        Rig rig;
        rig.search.mnuDeviceSearch_Click();
        rig.app.decoder().DataDecoder(ownTelegram(2, kOther));
        for (int row : {-1, 5}) {
            rig.searchWindow.userSetValue("lstDeviceList", row);
            rig.searchWindow.click("cmdOK");
            QVERIFY(rig.searchWindow.isShown() && rig.app.session().searchRunning());
            QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
        }
        rig.searchWindow.userSetValue("lstDeviceList", 0);
        rig.searchWindow.click("cmdOK");
        QCOMPARE(rig.engine.NextCommand(), 2);
        QVERIFY(rig.display.isShown() && !rig.connectWindow.isShown());
        QVERIFY(!rig.search.tmrBlink().isEnabled());
    }
};

QTEST_GUILESS_MAIN(TestDeviceSearch)
#include "tst_devicesearch.moc"
