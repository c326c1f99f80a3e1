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
using testsupport::kRecorded;

Bytes ownTelegram(int command, std::uint32_t serial) {
    return testsupport::ownTelegram(command, serial, 0x21);
}

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
        display.setCaption("cmdSettingsAssume", QStringLiteral("Übernehmen"));
        display.setCaption("cmdSettingsCancel", QStringLiteral("Abbrechen"));
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
        QVERIFY(rig.display.isShown());
        QVERIFY(rig.engine.tmrAutoSend().isEnabled());
        rig.engine.tmrTimeout().enable();

        rig.search.mnuDeviceSearch_Click();
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
        QVERIFY(!rig.engine.tmrTimeout().isEnabled());
        QCOMPARE(rig.searchWindow.title(), QStringLiteral("KOMPA MQ27D - Gerät auswählen"));
        QCOMPARE(rig.searchWindow.caption("lblDataLEDLegend"), QStringLiteral("Daten"));
        QCOMPARE(rig.searchWindow.caption("cmdOK"), QStringLiteral("Übernehmen"));
        QCOMPARE(rig.searchWindow.caption("cmdCancel"), QStringLiteral("Abbrechen"));
        QVERIFY(rig.searchWindow.isShown());
        QVERIFY(!rig.searchWindow.isModal());
        QCOMPARE(rig.searchWindow.centredOver(), QStringLiteral("frmDisplay"));
        QCOMPARE(rig.listed(), QStringList{kShownText});
        QCOMPARE(rig.searchWindow.value("lstDeviceList"), 0.0);
        QVERIFY(!rig.display.isShown());
        QVERIFY(rig.app.session().searchRunning());
    }

    // Before any device was shown there is nothing to go back to, and no device "0".
    void searchBeforeAnyDeviceListsOnlyThoseThatAnswer() {
        TestApp t;
        DeviceSearch& search = t.app->search();
        search.mnuDeviceSearch_Click();
        const Form& window = t.app->forms().frmDeviceSearch();
        QVERIFY(window.items("lstDeviceList").isEmpty());
        search.AddDevice(kOther);
        QCOMPARE(window.items("lstDeviceList"), QStringList{kOtherText});
    }

    void searchOpensTheStoredPortWhenClosed() {
        Rig rig;
        QVERIFY(!rig.app.link().IsPortOpen());
        rig.search.mnuDeviceSearch_Click();
        QVERIFY(rig.t.port.isOpen());
        QCOMPARE(rig.t.port.portNumber(), 2);
    }

    void aSecondSearchStartsWithAFreshList() {
        Rig rig;
        rig.search.mnuDeviceSearch_Click();
        rig.search.AddDevice(kOther);
        rig.searchWindow.click("cmdCancel");
        rig.search.mnuDeviceSearch_Click();
        QCOMPARE(rig.listed(), QStringList{kShownText});
    }

    void telegramsDuringTheSearchOnlyFillTheList() {
        Rig rig;
        rig.search.mnuDeviceSearch_Click();
        Bytes before;
        rig.app.values()->GetDataArray(before, 2);

        rig.app.decoder().DataDecoder(ownTelegram(2, kOther));
        rig.app.decoder().DataDecoder(ownTelegram(1, kOther));
        rig.app.decoder().DataDecoder(ownTelegram(3, kShown));
        QCOMPARE(rig.listed(), (QStringList{kShownText, kOtherText}));
        QCOMPARE(rig.searchWindow.value("lstDeviceList"), 0.0);
        Bytes after;
        rig.app.values()->GetDataArray(after, 2);
        QCOMPARE(after, before);
        QCOMPARE(rig.display.caption("lblSerialNo_0"), kShownText);
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
    }

    void everyTelegramLightsTheLamp() {
        Rig rig;
        rig.search.mnuDeviceSearch_Click();
        Q_EMIT rig.search.tmrDataLED().timeout();
        QCOMPARE(rig.searchWindow.backColor("picDataLED"), colors::kDefault);
        QVERIFY(!rig.search.tmrDataLED().isEnabled());

        rig.search.AddDevice(kShown);
        QCOMPARE(rig.listed(), QStringList{kShownText});
        QCOMPARE(rig.searchWindow.backColor("picDataLED"), colors::kGreen);
        QVERIFY(rig.search.tmrDataLED().isEnabled());
    }

    void largestSerialNumberIsListedInPlainDigits() {
        Rig rig;
        rig.search.mnuDeviceSearch_Click();
        rig.search.AddDevice(4294967295.0);
        rig.search.AddDevice(0);
        QCOMPARE(rig.listed(), (QStringList{kShownText, "4294967295", "0"}));
    }

    void cancelKeepsTheOldDevice_data() {
        QTest::addColumn<bool>("byFrame");
        QTest::newRow("cmdCancel") << false;
        QTest::newRow("window closed") << true;
    }
    void cancelKeepsTheOldDevice() {
        QFETCH(bool, byFrame);
        Rig rig;
        rig.search.mnuDeviceSearch_Click();
        rig.app.decoder().DataDecoder(ownTelegram(1, kOther));
        rig.searchWindow.userSetValue("lstDeviceList", 1);
        if (byFrame)
            QVERIFY(rig.searchWindow.requestClose());
        else
            rig.searchWindow.click("cmdCancel");

        QCOMPARE(rig.display.caption("lblSerialNo_0"), kShownText);
        QCOMPARE(rig.engine.NextCommand(), 2);
        QVERIFY(rig.display.isShown());
        QVERIFY(!rig.connectWindow.isShown());
        QVERIFY(!rig.app.session().searchRunning());
        QVERIFY(rig.engine.tmrAutoSend().isEnabled());
        QVERIFY(!rig.searchWindow.isLoaded());
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
        QVERIFY(!rig.display.isShown());
        QVERIFY(rig.connectWindow.isShown());
        QVERIFY(!rig.connectWindow.isModal());
        QCOMPARE(rig.connectWindow.title(), rig.app.texts().appTitle + " - " + kOtherText);
        QCOMPARE(rig.connectWindow.centredOver(), QStringLiteral("frmMQ27D"));
        QVERIFY(rig.search.tmrBlink().isEnabled());

        // The chosen device's read-out ends the connection phase.
        for (int command : {1, 2, 3, 5})
            rig.app.decoder().DataDecoder(ownTelegram(command, kOther));
        QVERIFY(rig.display.isShown());
        QVERIFY(!rig.connectWindow.isLoaded());
        QVERIFY(!rig.search.tmrBlink().isEnabled());
        QCOMPARE(rig.app.session().takenOnSerialNo(), kOtherText);
    }

    void choosingTheShownDeviceGoesOnWithoutConnecting() {
        Rig rig;
        rig.search.mnuDeviceSearch_Click();
        rig.app.decoder().DataDecoder(ownTelegram(2, kOther));
        rig.searchWindow.click("cmdOK");
        QCOMPARE(rig.engine.NextCommand(), 2);
        QVERIFY(rig.display.isShown());
        QVERIFY(!rig.connectWindow.isShown());
        QVERIFY(!rig.search.tmrBlink().isEnabled());
    }

    void okWithoutASelectedRowDoesNothing() {
        Rig rig;
        rig.search.mnuDeviceSearch_Click();
        rig.searchWindow.userSetValue("lstDeviceList", -1);
        rig.searchWindow.click("cmdOK");
        QVERIFY(rig.searchWindow.isShown());
        QVERIFY(rig.app.session().searchRunning());
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
        rig.searchWindow.userSetValue("lstDeviceList", 5);
        rig.searchWindow.click("cmdOK");
        QVERIFY(rig.searchWindow.isShown());
    }

    void connectionLabelBlinksWhileTheWindowIsUp() {
        Rig rig;
        rig.search.ShowConnect(QStringLiteral("7654321 - KOMPA MQ27D"));
        QCOMPARE(rig.connectWindow.title(), QStringLiteral("7654321 - KOMPA MQ27D"));
        QVERIFY(rig.search.tmrBlink().isEnabled());
        QVERIFY(rig.connectWindow.isVisible("lblConnection"));
        Q_EMIT rig.search.tmrBlink().timeout();
        QVERIFY(!rig.connectWindow.isVisible("lblConnection"));
        Q_EMIT rig.search.tmrBlink().timeout();
        QVERIFY(rig.connectWindow.isVisible("lblConnection"));
        Q_EMIT rig.search.tmrBlink().timeout();

        rig.connectWindow.unload();
        QVERIFY(!rig.search.tmrBlink().isEnabled());
        QVERIFY(rig.connectWindow.isVisible("lblConnection"));
    }

    void cancelOfTheConnectionStopsThePoll_data() {
        QTest::addColumn<bool>("byFrame");
        QTest::newRow("cmdCancel") << false;
        QTest::newRow("window closed") << true;
    }
    void cancelOfTheConnectionStopsThePoll() {
        QFETCH(bool, byFrame);
        Rig rig;
        rig.search.mnuDeviceSearch_Click();
        rig.search.AddDevice(kOther);
        rig.searchWindow.userSetValue("lstDeviceList", 1);
        rig.searchWindow.click("cmdOK");
        rig.engine.tmrTimeout().enable();
        QVERIFY(!rig.app.forms().frmMQ27D().isShown());

        if (byFrame)
            QVERIFY(rig.connectWindow.requestClose());
        else
            rig.connectWindow.click("cmdCancel");
        QVERIFY(!rig.engine.tmrAutoSend().isEnabled());
        QVERIFY(!rig.engine.tmrTimeout().isEnabled());
        QVERIFY(rig.app.forms().frmMQ27D().isShown());
        QVERIFY(!rig.connectWindow.isLoaded());
        QVERIFY(!rig.search.tmrBlink().isEnabled());
    }

    void closingTheToolClosesTheWindowsWithoutSideEffects() {
        Rig rig;
        rig.search.mnuDeviceSearch_Click();
        rig.app.life().setClosing();
        QVERIFY(rig.searchWindow.requestClose());
        QVERIFY(rig.app.session().searchRunning());
        QVERIFY(!rig.display.isShown());
    }
};

QTEST_GUILESS_MAIN(TestDeviceSearch)
#include "tst_devicesearch.moc"
