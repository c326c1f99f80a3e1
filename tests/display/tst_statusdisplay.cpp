#include "common/colors.h"
#include "display/mainview.h"
#include "display/mainview_elements.h"
#include "support/mainviewrig.h"
#include "support/testsupport.h"

#include <cmath>
#include <limits>

#include <QtTest>

namespace el = frmDisplay;

// The main view after read-outs of the virtual device's profiles. The expected texts are
// worked out by hand from the profiles' numbers.
class TestStatusDisplay : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void airFlowGaugeAndItsLabel() {
        MainViewRig rig; // flow 1.32 m/s against 1.30, range 25 %
        QCOMPARE(rig.view().items(el::ctlAirFlow), QStringList({"-25 %", "0 %", "25 %"}));
        QCOMPARE(rig.caption(el::lblAirFlow), QStringLiteral("2 %"));
        QCOMPARE(rig.caption(el::lblAirflowMeterPerSecond), QStringLiteral("1.32 m/s"));

        // The needle stops at the end, and the label reads what the gauge holds.
        rig.set("airFlow.flowValue", 2.6);
        rig.readOut();
        QCOMPARE(rig.view().value(el::ctlAirFlow), 2500.0);
        QCOMPARE(rig.caption(el::lblAirFlow), QStringLiteral("25 %"));

        // Without a reference there is nothing to divide by: "?" and the needle stays.
        rig.set("airFlow.flowRefValue", 0);
        rig.readOut();
        QCOMPARE(rig.caption(el::lblAirFlow), QStringLiteral("?"));
        QCOMPARE(rig.view().value(el::ctlAirFlow), 2500.0);
    }

    void smokeChamberAndTemperaturesInBothUnits() {
        MainViewRig rig; // detector 1: set point 1500, ratio 18; thresholds 80 % and 55 %
        QCOMPARE(rig.caption(el::lblSmokeLevel[0]), QStringLiteral("0.270 %/m"));
        QCOMPARE(rig.view().value(el::ctlSmokeLevel[0]), 1.8);
        QCOMPARE(rig.view().top(el::linFireAlarm[0]), 1871);
        QCOMPARE(rig.view().top(el::linActionAlarm[0]), 3116);
        QCOMPARE(rig.caption(el::lblChamber[0]), QStringLiteral("-12 %"));
        QCOMPARE(rig.caption(el::lblTemperature), QStringLiteral("23.5 °C"));
        QCOMPARE(rig.caption(el::lblSensorTemp[1]), QStringLiteral("35.2 °C"));
        rig.app->mainView().SwitchToSmokeUnit(2);
        rig.app->mainView().SwitchToTemperature(2);
        rig.app->mainView().ShowData();
        QCOMPARE(rig.caption(el::lblSmokeLevel[0]), QStringLiteral("0.082 %/ft"));
        QCOMPARE(rig.caption(el::lblTemperature), QStringLiteral("74.3 °F"));
        QCOMPARE(rig.caption(el::lblSensorTemp[1]), QStringLiteral("95.4 °F"));
        QCOMPARE(rig.caption(el::lblSensorTempAlarm[1]), QStringLiteral("45.5"));

        // State 0 as the window's buttons, 3 white on red, any other black on yellow.
        const Form& v = rig.view();
        QCOMPARE(v.backColor(el::lblSensorTemp[0]), colors::kButtonFace);
        QCOMPARE(v.foreColor(el::lblSensorTemp[0]), colors::kButtonText);
        QCOMPARE(v.backColor(el::lblSensorTemp[2]), colors::kRed);
        QCOMPARE(v.foreColor(el::lblSensorTemp[2]), colors::kWindowBackground);
        QCOMPARE(v.backColor(el::lblSensorTemp[4]), colors::kYellow);
    }

    void ledStatesAndRhythms() {
        MainViewRig rig; // operating 3, failure 2, mains 1, action alarm 2 flashing, place B 3
        const Form& v = rig.view();
        QCOMPARE(v.value(el::picDisplay[0]), 3.0);
        QCOMPARE(v.value(el::picActionAlarm[1]), 1.0);
        QCOMPARE(v.value(el::picActionAlarm[3]), 1.0);
        QCOMPARE(v.value(el::picFirePlace[1]), 3.0);

        LedRhythm& leds = rig.app->mainView().Leds();
        leds.tmrBlink_Timer();
        leds.tmrFlash_Timer();
        QCOMPARE(v.backColor(el::picDisplay[0]), colors::kGreen);
        QCOMPARE(v.backColor(el::picDisplay[1]), colors::kYellow);
        QCOMPARE(v.backColor(el::picDisplay[3]), colors::kYellow);
        leds.tmrBlink_Timer();
        QCOMPARE(v.backColor(el::picDisplay[1]), colors::kWindowBackground);
        QCOMPARE(v.backColor(el::picDisplay[0]), colors::kGreen);
        QCOMPARE(v.backColor(el::picDisplay[3]), colors::kYellow); // the blink leaves it alone
        leds.tmrFlash_Timer();
        QCOMPARE(v.backColor(el::picDisplay[3]), colors::kWindowBackground);
        // Dark for 900 ms after the short flash: one flash a second.
        QVERIFY(leds.tmrFlash().interval() > 800);

        // During the air-flow initialisation a lit operating lamp blinks; a dark one stays.
        rig.set("airFlow.flowInitIsActive", 1);
        rig.readOut();
        QCOMPARE(v.value(el::picDisplay[0]), 2.0);
        QCOMPARE(v.value(el::picAirFlowInitLED), 2.0);
        rig.set("display.ledOp", 0);
        rig.readOut();
        QCOMPARE(v.value(el::picDisplay[0]), 0.0);

        // Another state of choice darkens the fire places whatever the device says.
        rig.set("controller.stateOfChoice", 0);
        rig.readOut();
        QCOMPARE(v.value(el::picFirePlace[1]), 0.0);
    }

    void faultList() {
        MainViewRig rig; // pending 3, 22, 31; latched 1, 3, 9, 25
        const Form& v = rig.view();
        QCOMPARE(v.backColor(el::picErr[3]), colors::kYellow);
        QCOMPARE(v.dotColor(el::picErr[3]), colors::kDefault); // pending hides latched
        QCOMPARE(v.backColor(el::picErr[1]), colors::kWindowBackground);
        QCOMPARE(v.dotColor(el::picErr[1]), colors::kYellow);
        QCOMPARE(v.dotColor(el::picErr[0]), colors::kDefault);

        // The common entries report the detectors' bits without a place of their own.
        rig.set("faults.pending", (1u << 17) | (1u << 19));
        rig.set("faults.latched", 1u << 18);
        rig.readOut();
        QCOMPARE(v.backColor(el::picErr[32]), colors::kYellow);
        QCOMPARE(v.dotColor(el::picErr[33]), colors::kYellow);
        QCOMPARE(v.backColor(el::picErr[3]), colors::kWindowBackground);

        // A fault the device does not know takes no room, pending or not.
        rig.set("faults.valid", 0xFFFFFFFFu & ~(1u << 17));
        rig.readOut();
        QVERIFY(!v.isVisible(el::picErr[17]));
        QVERIFY(v.isVisible(el::picErr[32])); // 19 is still known
    }

    void relayMasksAndTheirOptions() {
        MainViewRig rig; // relay 1: events 0, 1 and OR; relay 5: AND alone
        const Form& v = rig.view();
        QVERIFY(v.isChecked(el::chkRelay1[1]) && !v.isChecked(el::chkRelay1[2]));
        QVERIFY(v.isChecked(el::optRelay1[0]) && !v.isChecked(el::optRelay1[1]));
        QVERIFY(v.isChecked(el::optRelay5[1]) && !v.isChecked(el::optRelay5[0]));

        // Neither bit: OR shows; both: AND wins. Exactly one is ever selected.
        rig.set("relays.combineMask1", (1u << 14) | (1u << 15));
        rig.set("relays.combineMask5", 0);
        rig.readOut();
        QVERIFY(v.isChecked(el::optRelay1[1]) && !v.isChecked(el::optRelay1[0]));
        QVERIFY(v.isChecked(el::optRelay5[0]) && !v.isChecked(el::optRelay5[1]));

        // While the page is being edited the boxes keep the user's choice.
        rig.view().setEnabled(el::chkRelay1[0], true);
        rig.set("relays.combineMask1", 1u << 2);
        rig.readOut();
        QVERIFY(!v.isChecked(el::chkRelay1[2]));
    }

    void modulesAndManualReleaseLines() {
        MainViewRig rig;
        const Form& v = rig.view();
        // Module 1 reports state 2: line 0, yellow; the rack reports 1: line 0, yellow too,
        // because the two read their states 1 and 2 the other way round.
        QCOMPARE(v.value(el::ctlManAct[1]), 0.0);
        QCOMPARE(v.backColor(el::picManAct[1]), colors::kYellow);
        QCOMPARE(v.value(el::ctlManAct[20]), 0.0);
        rig.set("modules[1].manActLineState", 1);
        rig.set("controller.manActLineState", 2);
        rig.readOut();
        QCOMPARE(v.value(el::ctlManAct[1]), 1.0);
        QCOMPARE(v.value(el::ctlManAct[20]), 1.0);

        // Digits at the 6th to 8th place of the serial number: inside the rack.
        QCOMPARE(rig.caption(el::lblExtSerialNo[2]), QStringLiteral("20070315"));
        QVERIFY(v.isVisible(el::lblExtinguishIsIntern[2]));
        QVERIFY(!v.isVisible(el::cmdExtinguisherIdent[2]));
        QVERIFY(v.isVisible(el::cmdExtinguisherIdent[0]));
    }

    void viewFitsTheDevice() {
        MainViewRig full; // windows 500-1200, 1201-1700, 1701-2300, 2301-2900, 2901-3500
        const Form& f = full.view();
        const QStringList times = {"10.0", "14.0", "20.0", "26.0", "32.0"};
        for (int i = 0; i < 5; ++i)
            QCOMPARE(full.caption(el::lblLocTime[i]), times[i]);
        QCOMPARE(full.caption(el::lblLocNumberOfHoles), QStringLiteral("5"));
        QVERIFY(f.isVisible(el::fraSmokeLevel[1]));
        QVERIFY(f.isVisible(el::tabDisplay[frmDisplayPage::Localisation]));
        QVERIFY(f.isVisible(el::tabDisplay[frmDisplayPage::ModulesA]));
        QVERIFY(!f.isVisible(el::tabDisplay[frmDisplayPage::ModulesB]));
        QVERIFY(f.isVisible(el::chkRelay3[6]));
        QVERIFY(!f.isVisible(el::lblSerialNo2[0]));
        // A hole without a learned time has no relay event, and the pipe ends there.
        full.set("localisation.suckTime3Min", 0);
        full.readOut();
        QCOMPARE(full.caption(el::lblLocTime[2]), QStringLiteral("0.0"));
        QCOMPARE(full.caption(el::lblLocNumberOfHoles), QStringLiteral("2"));
        QVERIFY(!f.isVisible(el::chkRelay3[6]));
        QVERIFY(!f.isVisible(el::lblRelais[6]));

        MainViewRig minimal(QStringLiteral("minimal"));
        const Form& m = minimal.view();
        for (const QString& gone :
             {el::fraSmokeLevel[1], el::fraChamber[1], el::fraErr[2], el::picDisplay[2],
              el::fraRelaySettings.name(), el::fraFirePlace.name(), el::fraSensorTemp[0],
              el::fraExtStatus[0], el::lblDetectorName[3], el::lblSerialNo2[2],
              el::ctlRelayState[11], el::tabDisplay[frmDisplayPage::Relays],
              el::tabDisplay[frmDisplayPage::Localisation],
              el::tabDisplay[frmDisplayPage::ModulesA]})
            QVERIFY2(!m.isVisible(gone), qPrintable(gone));
        QVERIFY(m.isVisible(el::fraAirFlow));
        QVERIFY(!m.isVisible(el::lblTemperatureLegend[0]));
        minimal.set("airFlow.hasFlow", 0);
        minimal.readOut();
        QVERIFY(!m.isVisible(el::fraAirFlow));
        QVERIFY(m.isVisible(el::lblTemperatureLegend[0]));
    }

    // Values out of every range show without harm, and the next good read-out shows right.
    void corruptReadOutAndRecovery() {
        MainViewRig rig;
        const double inf = std::numeric_limits<double>::infinity();
        rig.set("airFlow.staticFlowDevSetPoint", 255);
        rig.set("airFlow.airFlowFailureDelaySetPoint", 65535);
        rig.set("detectors[0].smokeValueRatio", 3e38);
        rig.set("detectors[0].chamberValueRatio", -inf);
        rig.set("modules[0].serialNum", 4294967295.0);
        rig.set("faults.pending", 0xFFFFFFFFu);
        rig.set("faults.latched", 0xFFFFFFFFu);
        rig.set("relays.combineMask1", 0);
        rig.readOut();
        // Floats the device's encoder never makes: NaN temperature and flow, infinite
        // reference (telegram 2, offsets 16, 8, 12).
        const Bytes quietNaN = testsupport::bytes({0x7F, 0xC0, 0x00, 0x00});
        rig.overwrite(2, 16, quietNaN);
        rig.overwrite(2, 8, quietNaN);
        rig.overwrite(2, 12, testsupport::bytes({0x7F, 0x80, 0x00, 0x00}));
        QCOMPARE(rig.caption(el::lblTemperature), QStringLiteral("nan °C"));
        QCOMPARE(rig.caption(el::lblAirFlow), QStringLiteral("nan %"));
        QCOMPARE(rig.caption(el::lblExtSerialNo[0]), QStringLiteral("4294967295"));
        QCOMPARE(rig.caption(el::lblChamber[0]), QStringLiteral("-100 %"));
        QCOMPARE(rig.caption(el::lblFaultDelayMinutes), QStringLiteral("1092"));

        MainViewRig good;
        rig.set("airFlow.staticFlowDevSetPoint", 25);
        rig.set("detectors[0].smokeValueRatio", 18);
        rig.set("detectors[0].chamberValueRatio", -12);
        rig.readOut();
        for (const QString& element : {el::lblAirFlow.name(), el::lblSmokeLevel[0],
                                       el::lblChamber[0], el::lblTemperature.name()})
            QCOMPARE(rig.caption(element), good.caption(element));
        QCOMPARE(rig.view().value(el::ctlAirFlow), good.view().value(el::ctlAirFlow));
    }
};

QTEST_GUILESS_MAIN(TestStatusDisplay)
#include "tst_statusdisplay.moc"
