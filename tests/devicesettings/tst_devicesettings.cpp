#include "common/colors.h"
#include "devicesettings/devicesettings.h"
#include "display/mainview.h"
#include "display/mainview_elements.h"
#include "engine/pollengine.h"
#include "shell/appshell.h"
#include "support/mainviewrig.h"

#include <QtTest>

namespace ds = frmDeviceSettings;
using State = DeviceSettings::State;

namespace {

// The advanced settings window over a device read out completely, opened by the main
// view's menu, with the poll engine whose queued write the test looks at.
struct WindowRig : MainViewRig {
    explicit WindowRig(const QString& profile = QStringLiteral("full"))
        : MainViewRig(profile) {
        view().click(frmDisplay::mnuDeviceSettings);
    }

    DeviceSettings& settings = app->deviceSettings();
    PollEngine& engine = app->engine();
    Form& w = app->forms().frmDeviceSettings();

    State resistors() const { return settings.StateOf(DeviceSettings::Resistors); }
    State beta() const { return settings.StateOf(DeviceSettings::BetaValues); }
    bool queued(int command) const {
        return engine.IsWriteQueued() && engine.NextCommand() == command;
    }
};

} // namespace

// Two pages on one window, each writing and then comparing the device's texts with the
// typed ones until they agree or the user cancels.
class TestDeviceSettings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void resistorsWrittenAndComparedAsTexts() {
        WindowRig rig;
        Form& w = rig.w;
        QVERIFY(w.isShown() && w.isModal());
        QVERIFY(w.isVisible(ds::fraDeviceSettings[0]) && w.isVisible(ds::fraDeviceSettings[1]));
        QCOMPARE(w.caption(ds::lblParameterValue[1]), QStringLiteral("4700"));
        QCOMPARE(w.caption(ds::lblBetaFactor[0]), QStringLiteral("3977"));
        QVERIFY(rig.settings.tmrRefresh().isEnabled());

        w.click(ds::cmdSettings);
        QCOMPARE(rig.resistors(), State::Editing);
        QVERIFY(!w.isVisible(ds::lblParameterValue[0]) && w.isVisible(ds::txtParameterValue[0]));
        QVERIFY(!w.isVisible(ds::cmdSettings) && w.isVisible(ds::cmdSettingsAssume));
        QCOMPARE(w.caption(ds::txtParameterValue[0]), QStringLiteral("1200"));

        w.userSetCaption(ds::txtParameterValue[0], QStringLiteral("100000"));
        w.click(ds::cmdSettingsAssume);
        QVERIFY(rig.queued(129));
        rig.settings.tmrCompareSettings_Timer();
        QCOMPARE(rig.resistors(), State::Comparing);
        QVERIFY(w.isVisible(ds::lblSettingsWaiting));
        const QString waiting = w.caption(ds::lblSettingsWaiting);
        QVERIFY2(
            waiting.contains(QStringLiteral("Alarm resistance: the device reports 1200 Ohm")) &&
                !waiting.contains(QStringLiteral("Normal resistance")),
            qPrintable(waiting));
        QCOMPARE(w.backColor(ds::txtParameterValue[0]), colors::kYellow);
        QCOMPARE(w.backColor(ds::txtParameterValue[1]), colors::kWindowBackground);

        // A round 100000 reads back in full, not as "1e+05", or the comparison never ends.
        rig.set("controller.alarmResistorValue", 100000);
        rig.readOut();
        rig.settings.tmrCompareSettings_Timer();
        QCOMPARE(rig.resistors(), State::Viewing);
        QCOMPARE(w.caption(ds::lblParameterValue[0]), QStringLiteral("100000"));
        QVERIFY(w.isVisible(ds::lblParameterValue[0]) && !w.isVisible(ds::txtParameterValue[0]));
        QVERIFY(!w.isVisible(ds::lblSettingsWaiting));

        // Unchanged values are written all the same and agree at the first tick, unless the
        // text differs from the device's in its form alone.
        rig.engine.tmrAutoSend_Timer();
        w.click(ds::cmdSettings);
        w.click(ds::cmdSettingsAssume);
        QVERIFY(rig.queued(129));
        w.userSetCaption(ds::txtParameterValue[1], QStringLiteral("4700.0"));
        rig.settings.tmrCompareSettings_Timer();
        QCOMPARE(rig.resistors(), State::Comparing);
        w.userSetCaption(ds::txtParameterValue[1], QStringLiteral("4700"));
        rig.settings.tmrCompareSettings_Timer();
        QCOMPARE(rig.resistors(), State::Viewing);
    }

    // This window's write of command 129 is its own: the main view's settings page does not
    // wait for it, but closing the tool asks all the same.
    void writeWaitsHereAloneAndHoldsTheClose() {
        WindowRig rig;
        rig.w.click(ds::cmdSettings);
        rig.w.userSetCaption(ds::txtParameterValue[0], QStringLiteral("100000"));
        rig.w.click(ds::cmdSettingsAssume);
        rig.engine.tmrAutoSend_Timer();
        QCOMPARE(rig.resistors(), State::Comparing);
        Form& v = rig.view();
        QVERIFY(!v.isVisible(frmDisplay::lblSettingsWaiting));
        QVERIFY(!rig.app->mainView().Pages().anyWaiting());
        rig.dialogs.answers = {UserDialogs::Answer::No};
        QVERIFY(!rig.app->shell().CloseApplication());
    }

    void pagesAreIndependentAndBadBetaValuesStayHome() {
        WindowRig rig;
        Form& w = rig.w;
        w.click(ds::cmdSettings);
        w.click(ds::cmdBetaSettings);
        QCOMPARE(rig.resistors(), State::Editing);
        QCOMPARE(rig.beta(), State::Editing);

        w.userSetCaption(ds::txtBetaFactor[0], QStringLiteral("3399"));
        w.userSetCaption(ds::txtBetaFactor[4], QStringLiteral("4501"));
        w.click(ds::cmdBetaSettingsAssume);
        QVERIFY(!rig.engine.IsWriteQueued());
        QCOMPARE(rig.beta(), State::Editing);
        QCOMPARE(w.backColor(ds::txtBetaFactor[0]), colors::kYellow);
        QCOMPARE(w.backColor(ds::txtBetaFactor[4]), colors::kYellow);
        QCOMPARE(w.backColor(ds::txtBetaFactor[1]), colors::kWindowBackground);

        w.click(ds::cmdSettingsCancel);
        QCOMPARE(rig.resistors(), State::Viewing);
        QCOMPARE(rig.beta(), State::Editing);
        QCOMPARE(w.caption(ds::txtBetaFactor[0]), QStringLiteral("3399"));
        QVERIFY(w.isVisible(ds::txtBetaFactor[0]) && w.isVisible(ds::cmdBetaSettingsAssume));

        // A comparison outlives the window: closing does not cancel it.
        w.userSetCaption(ds::txtBetaFactor[0], QStringLiteral("4000"));
        w.userSetCaption(ds::txtBetaFactor[4], QStringLiteral("4500"));
        w.click(ds::cmdBetaSettingsAssume);
        QVERIFY(rig.queued(137));
        QCOMPARE(rig.beta(), State::Comparing);
        QCOMPARE(rig.resistors(), State::Viewing);
        w.click(ds::cmdClose);
        QVERIFY(!w.isShown() && !rig.settings.tmrRefresh().isEnabled());
        QVERIFY(rig.settings.tmrCompareBetaSettings().isEnabled());
        rig.set("sensors[0].ntcBeta", 4000);
        rig.readOut();
        rig.settings.tmrCompareBetaSettings_Timer();
        QCOMPARE(rig.beta(), State::Viewing);
        QCOMPARE(w.caption(ds::lblBetaFactor[0]), QStringLiteral("4000"));
    }

    void withoutTemperatureSensorsOnlyTheResistorPage() {
        WindowRig rig(QStringLiteral("minimal"));
        QVERIFY(rig.w.isShown() && rig.w.isVisible(ds::fraDeviceSettings[0]));
        QVERIFY(!rig.w.isVisible(ds::fraDeviceSettings[1]));
    }
};

QTEST_MAIN(TestDeviceSettings)
#include "devicesettings/devicesettings_elements.h"
#include "tst_devicesettings.moc"
