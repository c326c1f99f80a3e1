#include "common/colors.h"
#include "display/mainview.h"
#include "display/mainview_elements.h"
#include "engine/pollengine.h"
#include "extinguish/extinguishdetails.h"
#include "extinguish/extinguishsettings.h"
#include "support/mainviewrig.h"

#include <QtTest>

namespace det = frmExtinguishDetails;
namespace set = frmExtinguishSettings;
using State = ExtinguishSettings::State;

namespace {

// The ten-module device: module 1 (202) and module 3 (4040) have no manual-release line,
// module 3 has faults 0 and 2 pending and fault 0 stored.
struct ModulesRig : MainViewRig {
    ModulesRig()
        : MainViewRig(QStringLiteral("tenmodules")) {}

    ExtinguishDetails& details = app->extinguishDetails();
    ExtinguishSettings& settings = app->extinguishSettings();
    Form& d = app->forms().frmExtinguishDetails();
    Form& s = app->forms().frmExtinguishSettings();
    PollEngine& engine = app->engine();
};

} // namespace

class TestExtinguish : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Pending faults as yellow boxes, stored ones as a dot that shows on a yellow box too; a
    // fault outside the module's valid mask stays hidden whatever its bit says.
    void detailsShowTheFaultsTheModuleCanHave() {
        ModulesRig rig;
        rig.set("modules[3].validFailureMask", 0xFB); // bit 2 not valid, but pending
        rig.readOut();
        rig.view().click(frmDisplay::cmdExtinguisherMessages[3]);
        Form& d = rig.d;
        QVERIFY(d.isShown() && d.isModal() && rig.details.tmrRefresh().isEnabled());
        QCOMPARE(d.value(det::cboSerialNumber), 3.0);
        QCOMPARE(d.caption(det::lblSerialNo), QStringLiteral("4040"));
        QCOMPARE(d.backColor(det::picExtOnline), colors::kGreen);

        QCOMPARE(d.backColor(det::picErr[0]), colors::kYellow);
        QCOMPARE(d.dotColor(det::picErr[0]), colors::rgb(0, 0, 0)); // dark on the yellow box
        QCOMPARE(d.dotColor(det::picErr[1]), colors::kDefault);
        QVERIFY(!d.isVisible(det::picErr[2]) && !d.isVisible(det::lblErr[2]));

        // Another module by its row; a stored fault alone shows as the dot in an empty box.
        rig.set("modules[0].savedFailures", 0x80);
        rig.readOut();
        d.userSetValue(det::cboSerialNumber, 0);
        QCOMPARE(rig.details.ExtModuleIndex(), 0);
        QCOMPARE(d.caption(det::lblSerialNo), QStringLiteral("101"));
        QCOMPARE(d.backColor(det::picErr[7]), colors::kWindowBackground);
        QCOMPARE(d.dotColor(det::picErr[7]), colors::kYellow);
        QVERIFY(d.isVisible(det::picErr[2]));

        // A right click on a box asks for that fault's page of the help.
        QSignalSpy help(&rig.app->mainView(), &MainView::HelpRequested);
        d.mouseClick(det::picErr[4], 2);
        QCOMPARE(help.size(), 1);
        QCOMPARE(help[0][2].toInt(), 55);
        QCOMPARE(help[0][3].toString(), QStringLiteral("Ignition voltage too low"));

        d.click(det::cmdClose);
        QVERIFY(!d.isShown() && !rig.details.tmrRefresh().isEnabled());
    }

    // A module that stops answering keeps its row, dark lamp and a line that says so, until
    // the device reports its serial number as 0.
    void vanishedModuleKeepsItsRowUntilSerialZero() {
        ModulesRig rig;
        rig.details.ShowExtDetails(4);
        Form& d = rig.d;
        QVERIFY(!d.isVisible(det::lblExtOfflineNote));
        rig.set("modules[4].isOnline", 0);
        rig.readOut();
        rig.details.GetExtDatails();
        QCOMPARE(d.backColor(det::picExtOnline), colors::kWindowBackground);
        QVERIFY(d.isVisible(det::lblExtOfflineNote));
        QCOMPARE(d.items(det::cboSerialNumber).at(4), QStringLiteral("50505"));
        QCOMPARE(d.value(det::cboSerialNumber), 4.0);

        rig.set("modules[4].serialNum", 0);
        rig.readOut();
        rig.details.GetExtDatails();
        QCOMPARE(d.items(det::cboSerialNumber).at(4), QStringLiteral("0"));
        QCOMPARE(d.items(det::cboSerialNumber).at(5), QStringLiteral("10000001"));
    }

    void moduleWithoutManualReleaseLineHasNothingToSet() {
        ModulesRig rig;
        rig.view().click(frmDisplay::mnuExtinguishSettings);
        Form& s = rig.s;
        QVERIFY(s.isShown() && s.isModal());
        QCOMPARE(rig.settings.ExtModuleIndex(), 0);
        QCOMPARE(s.caption(set::lblParameterValue[0]), QStringLiteral("1000"));
        QCOMPARE(s.caption(set::lblParameterValue[2]), QStringLiteral("10"));
        QVERIFY(s.isVisible(set::fraButtons[0]) && !s.isVisible(set::fraButtons[1]));

        s.userSetValue(set::cboSerialNumber, 1);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(s.caption(set::lblParameterValue[i]), QString());
            QCOMPARE(s.caption(set::txtParameterValue[i]), QString());
        }
        QVERIFY(!s.isVisible(set::fraButtons[0]) && s.isVisible(set::fraButtons[1]));
    }

    // Edit, send, wait for the read-back as text, and only then show the value as accepted.
    void settingsWrittenAndVerifiedAsText() {
        ModulesRig rig;
        rig.settings.ShowExtSettings(2);
        Form& s = rig.s;
        s.click(set::cmdSettings);
        QCOMPARE(rig.settings.CurrentState(), State::Editing);
        QVERIFY(!s.isEnabled(set::cboSerialNumber));
        QVERIFY(s.isVisible(set::txtParameterValue[0]) && !s.isVisible(set::lblParameterValue[0]));

        s.userSetCaption(set::txtParameterValue[0], QStringLiteral("2200"));
        s.click(set::cmdSettingsAssume);
        QCOMPARE(rig.engine.NextCommand(), 136);
        rig.engine.tmrAutoSend_Timer();
        QCOMPARE(rig.settings.CurrentState(), State::Waiting);
        rig.settings.tmrCompareSettings_Timer();
        QVERIFY(s.isVisible(set::lblSettingsWaiting));
        QVERIFY2(s.caption(set::lblSettingsWaiting)
                     .contains(QStringLiteral("Alarm resistance: the device reports ") +
                               s.caption(set::lblParameterValue[0]) + u' ' +
                               s.caption(set::lblParameterUnit[0])),
                 qPrintable(s.caption(set::lblSettingsWaiting)));
        QCOMPARE(s.backColor(set::txtParameterValue[0]), colors::kYellow);
        QCOMPARE(s.backColor(set::txtParameterValue[1]), colors::kWindowBackground);

        // "2200.0" is not "2200": the text must be the device's own.
        s.setCaption(set::txtParameterValue[0], QStringLiteral("2200.0"));
        rig.set("modules[2].alarmResistorValue", 2200);
        rig.readOut();
        rig.settings.tmrCompareSettings_Timer();
        QCOMPARE(rig.settings.CurrentState(), State::Waiting);

        s.setCaption(set::txtParameterValue[0], QStringLiteral("2200"));
        rig.settings.tmrCompareSettings_Timer();
        QCOMPARE(rig.settings.CurrentState(), State::Viewing);
        QCOMPARE(s.caption(set::lblParameterValue[0]), QStringLiteral("2200"));
        QVERIFY(!s.isVisible(set::lblSettingsWaiting) && !s.isVisible(set::txtParameterValue[0]));
        QVERIFY(s.isEnabled(set::cboSerialNumber) && s.isVisible(set::cmdSettings));
    }

    // A bad field sends nothing and the window waits until the engineer cancels; a module
    // that drops off the bus meanwhile leaves the window usable and says so.
    void badFieldAndVanishedModuleLeaveTheWindowUsable() {
        ModulesRig rig;
        rig.settings.ShowExtSettings(0);
        Form& s = rig.s;
        s.click(set::cmdSettings);
        s.userSetCaption(set::txtParameterValue[2], QStringLiteral("100"));
        s.click(set::cmdSettingsAssume);
        QCOMPARE(s.backColor(set::txtParameterValue[2]), colors::kYellow);
        QVERIFY(!rig.engine.IsWriteQueued());
        QCOMPARE(rig.settings.CurrentState(), State::Waiting);

        rig.set("modules[0].isOnline", 0);
        rig.readOut();
        rig.settings.tmrCompareSettings_Timer();
        QCOMPARE(rig.settings.CurrentState(), State::Waiting);
        QCOMPARE(s.backColor(set::picExtOnline), colors::kWindowBackground);
        QVERIFY(s.isVisible(set::lblExtOfflineNote));
        QCOMPARE(s.items(set::cboSerialNumber).at(0), QStringLiteral("101"));

        s.click(set::cmdSettingsCancel);
        QCOMPARE(rig.settings.CurrentState(), State::Viewing);
        QVERIFY(!rig.settings.tmrCompareSettings().isEnabled());
        QCOMPARE(s.caption(set::lblParameterValue[2]), QStringLiteral("10"));
        s.click(set::cmdClose);
        QVERIFY(!s.isShown() && !rig.settings.tmrRefresh().isEnabled());
    }
};

QTEST_MAIN(TestExtinguish)
#include "extinguish/extinguish_elements.h"
#include "tst_extinguish.moc"
