#include "common/colors.h"
#include "display/mainview.h"
#include "display/mainview_elements.h"
#include "engine/pollengine.h"
#include "shell/appshell.h"
#include "support/mainviewrig.h"

#include <QtTest>

namespace el = frmDisplay;
using State = SettingsPages::State;

namespace {

// The main view of the full device with its poll engine, where a write goes out when the
// engine's tick is run by hand.
struct PagesRig : MainViewRig {
    SettingsPages& pages = app->mainView().Pages();
    PollEngine& engine = app->engine();
    Form& v = view();

    // The tick that sends a queued write, as the poll cycle runs it.
    void sendQueued() {
        QVERIFY(engine.IsWriteQueued());
        engine.tmrAutoSend_Timer();
    }
};

} // namespace

// The pages on which the engineer changes the device: Viewing, Editing, Waiting for the
// read-back, and back to Viewing only when the device reports what was typed.
class TestSettingsPages : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void settingsWrittenAndVerified() {
        PagesRig rig; // alarm delay 12 s of 0 to 60, fault delay 90 s
        Form& v = rig.v;
        QVERIFY(v.isVisible(el::lblAlarmDelay) && !v.isVisible(el::txtAlarmDelay));
        QVERIFY(!v.isVisible(el::cmdSettingsAssume) && !v.isVisible(el::lblSettingsWaiting));

        v.click(el::cmdSettings);
        QCOMPARE(rig.pages.state(SettingsPages::Settings), State::Editing);
        QVERIFY(!v.isVisible(el::lblAlarmDelay) && v.isVisible(el::txtAlarmDelay));
        QCOMPARE(v.caption(el::txtAlarmDelay), QStringLiteral("12"));
        QCOMPARE(v.caption(el::txtFaultDelayMinutes), QStringLiteral("1"));
        QCOMPARE(v.caption(el::txtFaultDelaySeconds), QStringLiteral("30"));
        QCOMPARE(v.toolTip(el::txtFaultDelaySeconds), QStringLiteral("0 min 30 s - 60 min 0 s"));
        QCOMPARE(v.toolTip(el::txtSensitivity[0]), QStringLiteral("0.100 - 10.000 %/m"));
        QCOMPARE(v.value(el::ctrSensitivity[0]), 1500.0);
        QVERIFY(v.isVisible(el::chkBuzzer[1]) && !v.isVisible(el::chkBuzzer[0]));

        // The up/down element writes the field's own text: the sensitivity in thousandths.
        v.userSetValue(el::ctrSensitivity[0], 1600);
        QCOMPARE(v.caption(el::txtSensitivity[0]), QStringLiteral("1.600"));

        v.userSetCaption(el::txtAlarmDelay, QStringLiteral("15"));
        v.click(el::cmdSettingsAssume);
        QCOMPARE(rig.engine.NextCommand(), 129);
        rig.sendQueued();
        QCOMPARE(rig.pages.state(SettingsPages::Settings), State::Waiting);
        QVERIFY(v.isVisible(el::lblSettingsWaiting));
        rig.pages.tmrCompareSettings_Timer();
        const QString waiting = v.caption(el::lblSettingsWaiting);
        QVERIFY2(waiting.contains(QStringLiteral("Alarm delay: the device reports ") +
                                  v.caption(el::lblAlarmDelay) + u' ' +
                                  v.caption(el::lblAlarmDelayUnit)) &&
                     waiting.contains(QStringLiteral("Sensitivity")),
                 qPrintable(waiting));
        QCOMPARE(v.backColor(el::txtAlarmDelay), colors::kYellow);

        // The device takes the values; the next comparison closes the page.
        rig.set("controller.alarmDelaySetPoint", 15);
        rig.set("detectors[0].smokeValue10SetPoint", 1600);
        rig.readOut();
        rig.pages.tmrCompareSettings_Timer();
        QCOMPARE(rig.pages.state(SettingsPages::Settings), State::Viewing);
        QCOMPARE(v.caption(el::lblAlarmDelay), QStringLiteral("15"));
        QVERIFY(v.isVisible(el::lblAlarmDelay) && !v.isVisible(el::txtAlarmDelay));
        QCOMPARE(v.backColor(el::txtAlarmDelay), colors::kWindowBackground);
        QVERIFY(!v.isVisible(el::lblSettingsWaiting));
    }

    // A value the device refuses keeps the page waiting until Cancel; nothing goes out again.
    void refusedWriteWaitsUntilCancel() {
        PagesRig rig;
        rig.v.click(el::cmdAirFlowSet);
        rig.v.userSetCaption(el::txtAltitude, QStringLiteral("300"));
        rig.v.click(el::cmdAirFlowInit);
        rig.sendQueued();
        for (int tick = 0; tick < 5; ++tick) {
            rig.readOut();
            rig.pages.tmrCompareAirFlowSet_Timer();
        }
        QCOMPARE(rig.pages.state(SettingsPages::AirFlow), State::Waiting);
        QVERIFY(!rig.engine.IsWriteQueued());

        // Closing the tool now asks first.
        rig.dialogs.answers = {UserDialogs::Answer::No};
        QVERIFY(!rig.app->shell().CloseApplication());
        QVERIFY(rig.dialogs.shown.last().text.contains(QStringLiteral("still waiting")));

        rig.v.click(el::cmdAirFlowCancel);
        QCOMPARE(rig.pages.state(SettingsPages::AirFlow), State::Viewing);
        QCOMPARE(rig.v.caption(el::lblAltitude), QStringLiteral("250"));
    }

    void standardValuesFillTheFields() {
        PagesRig rig;
        rig.v.click(el::cmdSettings);
        rig.v.setBackColor(el::txtAlarmDelay, colors::kYellow);
        rig.v.click(el::cmdSettingsStandard);
        QCOMPARE(rig.v.caption(el::txtAlarmDelay), QStringLiteral("10"));
        QCOMPARE(rig.v.backColor(el::txtAlarmDelay), colors::kWindowBackground);
        QCOMPARE(rig.v.caption(el::txtSensitivity[1]), QStringLiteral("0.100"));
        QCOMPARE(rig.dialogs.shown.size(), 1);
        QVERIFY(!rig.engine.IsWriteQueued());
    }

    // The relay page compares with the value store itself, and its boxes take input only
    // while it is edited.
    void relaysComparedWithTheStore() {
        PagesRig rig;
        QVERIFY(!rig.v.isEnabled(el::chkRelay2[5]));
        rig.v.click(el::cmdRelaySet);
        QVERIFY(rig.v.isEnabled(el::chkRelay2[5]) && rig.v.isEnabled(el::optRelay2[1]));
        rig.v.userSetValue(el::chkRelay2[5], 1);
        // A box the device lacks is hidden: whatever it held, it leaves the mask.
        rig.v.setVisible(el::chkRelay2[7], false);
        rig.v.setChecked(el::chkRelay2[7], true);
        rig.v.click(el::cmdRelayAssume);
        QVERIFY(!rig.v.isChecked(el::chkRelay2[7]));
        QCOMPARE(int(rig.app->values()->GetRelayParameter().at(8)), 0b00101100); // 2, 3, 5
        QCOMPARE(rig.engine.NextCommand(), 138);
        rig.sendQueued();
        rig.pages.tmrCompareRelaySet_Timer();
        QCOMPARE(rig.pages.state(SettingsPages::Relays), State::Waiting);
        QVERIFY(rig.v.caption(el::lblRelayWaiting).contains(QStringLiteral("Relay 2")));

        rig.set("relays.combineMask2", (1u << 2) | (1u << 3) | (1u << 5) | (1u << 14));
        rig.readOut();
        rig.pages.tmrCompareRelaySet_Timer();
        QCOMPARE(rig.pages.state(SettingsPages::Relays), State::Viewing);
        QVERIFY(!rig.v.isEnabled(el::chkRelay2[5]) && rig.v.isChecked(el::chkRelay2[5]));
    }

    // Alarm temperatures stay in degrees Celsius, in tenths on the up/down element.
    void temperatureAlarmsInCelsius() {
        PagesRig rig;
        rig.app->mainView().SwitchToTemperature(2);
        rig.v.click(el::cmdSensorTempAlarmSet);
        QCOMPARE(rig.v.caption(el::txtSensorTempAlarm[1]), QStringLiteral("45.5"));
        QCOMPARE(rig.v.value(el::ctrSensorTempAlarm[1]), 455.0);
        rig.v.userSetValue(el::ctrSensorTempAlarm[1], 456);
        QCOMPARE(rig.v.caption(el::txtSensorTempAlarm[1]), QStringLiteral("45.6"));
    }
};

QTEST_GUILESS_MAIN(TestSettingsPages)
#include "tst_settingspages.moc"
