#include "engine/commands.h"

#include "display/mainview_elements.h"
#include "engine/pollengine.h"
#include "engine/settinglimits.h"
#include "support/fakes.h"
#include "support/testsupport.h"
#include "values/valuestore.h"

#include <QTest>

namespace {

namespace el = frmDisplay;
namespace ll = frmLocalizeLearn;
namespace ds = frmDeviceSettings;
namespace es = frmExtinguishSettings;
using testsupport::bytes;
using Answer = UserDialogs::Answer;

constexpr std::uint32_t kSerial = 1234567; // 00 12 D6 87
constexpr std::uint8_t kFill = 0x33;       // in telegram 3: one detector, buzzer off

// Kind, command and serial number, then the parts.
Bytes block(int command, std::initializer_list<Bytes> parts) {
    Bytes out = bytes({10, command, 0x00, 0x12, 0xD6, 0x87});
    for (const Bytes& part : parts)
        out.insert(out.end(), part.begin(), part.end());
    return out;
}

Bytes slice(const Bytes& b, int from, int count) {
    if (b.size() < static_cast<std::size_t>(from + count)) return {};
    return Bytes(b.begin() + from, b.begin() + from + count);
}

void type(Form& form, const QStringList& namesAndTexts) {
    for (qsizetype i = 0; i + 1 < namesAndTexts.size(); i += 2)
        form.setCaption(namesAndTexts[i], namesAndTexts[i + 1]);
}

// The device 1234567 with telegrams 2, 3, 5 of `kFill` in the store, in the C locale.
struct Rig {
    TestApp t;
    Program& app = *t.app;
    DeviceCommands& commands = app.commands();
    Form& view = app.forms().frmDisplay();
    Form& learn = app.forms().frmLocalizeLearn();
    Form& device = app.forms().frmDeviceSettings();
    Form& modules = app.forms().frmExtinguishSettings();
    ValueStore& values = app.createValues();
    SettingLimits limits;

    explicit Rig(bool twoDetectors = false) {
        app.preferences().setLocale(QLocale::c());
        app.session().setSerialNo(QString::number(kSerial));
        for (std::int16_t command : {2, 3, 5}) {
            Bytes telegram = testsupport::ownTelegram(command, kSerial, kFill);
            if (command == 3 && twoDetectors) telegram[61] |= 0x40;
            values.SetDataArray(telegram, command);
        }
        for (int d : {0, 1})
            view.setRange(el::ctrSensitivity[d], 50, 20000);
    }

    // The command queued for the poll cycle since the last look, 0 for none.
    int sent() {
        const int command = app.engine().isWriteQueued() ? app.engine().nextCommand() : 0;
        app.engine().cancelWrite();
        return command;
    }
    // Good as it stands (0 min 30 s is the minimum), but for the second detector's fields.
    void typeSettings() {
        type(view,
             {el::txtAirFlowRange, "30", el::txtFaultDelayMinutes, "0", el::txtFaultDelaySeconds,
              "30", el::txtSensitivity[0], "0,125", el::txtAlarmDelay, "10",
              el::txtPreAlarmThreshold[0], "60", el::txtExtinguishDelay, "5", el::txtSensitivity[1],
              "no number", el::txtPreAlarmThreshold[1], "none"});
    }
};

} // namespace

class TestCommands : public QObject {
    Q_OBJECT

private slots:
    void checkTextInput_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("minimum");
        QTest::addColumn<double>("maximum");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<QString>("shown"); // empty: bad, the text stays
        QTest::newRow("comma") << "1,5" << 0.0 << 10.0 << 1 << "1.5";
        QTest::newRow("two commas") << "1,5,2" << 0.0 << 10.0 << 1 << "";
        QTest::newRow("two points") << "1.5.2" << 0.0 << 10.0 << 1 << "";
        QTest::newRow("empty") << "" << 0.0 << 10.0 << 1 << "";
        QTest::newRow("letters") << "abc" << 0.0 << 10.0 << 0 << "";
        QTest::newRow("exponent") << "1e3" << 0.0 << 10000.0 << 0 << "";
        QTest::newRow("16 characters") << "0000000000000001" << 0.0 << 10.0 << 0 << "1";
        QTest::newRow("17 characters") << "00000000000000001" << 0.0 << 10.0 << 0 << "";
        QTest::newRow("minimum") << "10" << 10.0 << 80.0 << 0 << "10";
        QTest::newRow("maximum") << "80" << 10.0 << 80.0 << 0 << "80";
        QTest::newRow("above before rounding") << "80.4" << 10.0 << 80.0 << 0 << "";
        QTest::newRow("blanks and sign") << " -2 " << -5.0 << 5.0 << 0 << "-2";
    }
    void checkTextInput() {
        QFETCH(QString, text);
        QFETCH(double, minimum);
        QFETCH(double, maximum);
        QFETCH(int, decimals);
        QFETCH(QString, shown);
        Rig rig;
        rig.view.setCaption(el::txtAlarmDelay, text);
        const bool bad =
            rig.commands.CheckTextInput(rig.view, el::txtAlarmDelay, minimum, maximum, decimals);
        QCOMPARE(bad, shown.isEmpty());
        QCOMPARE(rig.view.caption(el::txtAlarmDelay), bad ? text : shown);
        QCOMPARE(rig.view.backColor(el::txtAlarmDelay),
                 bad ? colors::kYellow : colors::kWindowBackground);
    }

    void settingsAssumeReadsTheSecondDetectorOnlyWhenThereIsOne() {
        Rig rig;
        rig.typeSettings();
        for (const QString& box : {el::chkLocalization[1], el::chkTrueLix[1],
                                   el::chkDynamicAirflow[1], el::chkBuzzer[1]})
            rig.view.setChecked(box, true);
        QVERIFY(rig.commands.SettingsAssume(rig.limits));
        QCOMPARE(rig.sent(), 129);
        // Air flow monitoring (bit 4) as the device has it: off.
        QCOMPARE(rig.values.GetDeviceParameter(),
                 block(129, {Bytes(9, kFill), bytes({30, 0, 30, 0, 125, kFill, kFill, 10}),
                             bytes({kFill, kFill, 60, kFill, 5, 0b10100011, 0}), Bytes(10)}));
        QCOMPARE(rig.view.caption(el::txtSensitivity[0]), "0.125");
        rig.view.setChecked(el::chkBuzzer[1], false);
        QVERIFY(rig.commands.SettingsAssume(rig.limits));
        QCOMPARE(rig.values.GetDeviceParameter()[28], 0b00100011);

        Rig two(true);
        two.typeSettings();
        type(two.view, {el::txtSensitivity[1], "0.2", el::txtPreAlarmThreshold[1], "70",
                        el::txtFaultDelayMinutes, "60", el::txtFaultDelaySeconds, "0"});
        QVERIFY(two.commands.SettingsAssume(two.limits));
        const Bytes sent = two.values.GetDeviceParameter();
        QCOMPARE(slice(sent, 16, 6), bytes({0x0E, 0x10, 0, 125, 0, 200})); // 3600 s: the maximum
        QCOMPARE(slice(sent, 26, 1), bytes({70}));
        QCOMPARE(slice(sent, 29, 1), bytes({255}));
    }

    void settingsRefused_data() {
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<QStringList>("yellow");
        QTest::newRow("two bad fields")
            << QStringList{el::txtAirFlowRange, "5", el::txtAlarmDelay, "abc"}
            << QStringList{el::txtAirFlowRange, el::txtAlarmDelay};
        QTest::newRow("fault delay sum below the minimum")
            << QStringList{el::txtFaultDelayMinutes, "0", el::txtFaultDelaySeconds, "20"}
            << QStringList{el::txtFaultDelayMinutes, el::txtFaultDelaySeconds};
        QTest::newRow("bad minutes mark the seconds")
            << QStringList{el::txtFaultDelayMinutes, "61"}
            << QStringList{el::txtFaultDelayMinutes, el::txtFaultDelaySeconds};
    }
    void settingsRefused() {
        QFETCH(QStringList, typed);
        QFETCH(QStringList, yellow);
        Rig rig;
        rig.typeSettings();
        type(rig.view, typed);
        QVERIFY(!rig.commands.SettingsAssume(rig.limits));
        QCOMPARE(rig.sent(), 0);
        QVERIFY(rig.values.GetDeviceParameter().empty());
        for (const QString& field :
             {el::txtAirFlowRange.name(), el::txtAlarmDelay.name(), el::txtFaultDelayMinutes.name(),
              el::txtFaultDelaySeconds.name(), el::txtExtinguishDelay.name()})
            QCOMPARE(rig.view.backColor(field),
                     yellow.contains(field) ? colors::kYellow : colors::kWindowBackground);
    }

    void serialNumberThatIsNoNumberSendsNothing() {
        Rig rig;
        rig.typeSettings();
        rig.app.session().setSerialNo(QStringLiteral("12a"));
        QVERIFY(!rig.commands.SettingsAssume(rig.limits));
        QCOMPARE(rig.sent(), 0);
    }

    void eachPageKeepsTheValuesItDoesNotShow() {
        Rig rig;
        type(rig.device, {ds::txtParameterValue[0], "1000", ds::txtParameterValue[1], "50000000",
                          ds::txtParameterValue[2], "0"});
        QVERIFY(rig.commands.AdvancedSettingsAssume(rig.limits));
        // Flags as the device has them: localisation and failure storage on, buzzer off.
        QCOMPARE(rig.values.GetDeviceParameter(),
                 block(129, {bytes({0x44, 0x7A, 0, 0, 0x4C, 0x3E, 0xBC, 0x20, 0}), Bytes(13, kFill),
                             bytes({0b00001001, 0}), Bytes(10)}));
        for (int n = 0; n < 5; ++n) {
            rig.view.setCaption(el::txtSensorTempAlarm[n], n == 0 ? "55,5" : "100");
            rig.device.setCaption(ds::txtBetaFactor[n], n == 0 ? "3400" : "4500");
        }
        QVERIFY(rig.commands.SensorTempAlarmAssume(rig.limits));
        const Bytes alarms = rig.values.GetTemperatureParameter();
        QCOMPARE(slice(alarms, 6, 8), bytes({0x42, 0x5E, 0, 0, 0x42, 0xC8, 0, 0})); // 55.5, 100
        QCOMPARE(slice(alarms, 26, 10), Bytes(10, kFill));
        QCOMPARE(slice(alarms, 36, 10), Bytes(10));

        QVERIFY(rig.commands.BetaFactorSettingsAssume(rig.limits));
        const Bytes betas = rig.values.GetTemperatureParameter();
        QCOMPARE(slice(betas, 6, 20), Bytes(20, kFill));
        QCOMPARE(slice(betas, 26, 4), bytes({0x0D, 0x48, 0x11, 0x94})); // 3400, 4500
        QCOMPARE(slice(betas, 36, 10), Bytes(10));
    }

    void airFlowInitReadsTheWindowsDecimalMark() {
        Rig rig;
        rig.app.preferences().setLocale(QLocale(QLocale::German, QLocale::Germany));
        type(rig.view,
             {el::txtFanVoltageNormal, "12,5", el::txtAltitude, "250", el::txtAirPressure, "1013"});
        QVERIFY(rig.commands.AirFlowInit(rig.limits));
        QCOMPARE(rig.sent(), 130);
        QCOMPARE(rig.values.GetAirFlowInitParameter(),
                 block(130, {bytes({0x30, 0xD4, 0, 250, 0x03, 0xF5}), Bytes(10)}));
        QCOMPARE(rig.view.caption(el::txtFanVoltageNormal), "12,5");
    }

    void relayMasksCountOnlyVisibleBoxes() {
        Rig rig;
        for (const QString& box : {el::optRelay1[1], el::chkRelay1[0], el::chkRelay1[5],
                                   el::chkRelay1[13], el::optRelay5[0], el::chkRelay5[8]})
            rig.view.setChecked(box, true);
        rig.view.setVisible(el::chkRelay1[5], false);
        QVERIFY(rig.commands.RelayAssume());
        QCOMPARE(rig.values.GetRelayParameter(),
                 block(138, {bytes({0x01, 0xA0, 0, 0, 0, 0, 0, 0, 0x00, 0x41}), Bytes(10)}));
        QVERIFY(!rig.view.isChecked(el::chkRelay1[5]));
    }

    void resetsSelectOneItemOrAll() {
        Rig rig;
        const std::pair<int, Bytes> selections[] = {
            {16, bytes({255, 255})}, {9, bytes({0, 2})}, {0, bytes({1, 0})}};
        for (const auto& [selection, bits] : selections) {
            QVERIFY(rig.commands.ResetAlarmAndFault(selection));
            QCOMPARE(rig.values.GetResetAlarmAndFault(), block(131, {bits}));
            QVERIFY(rig.commands.ResetMessages(selection));
            QCOMPARE(rig.sent(), 132);
            QCOMPARE(rig.values.GetResetMessages(), block(132, {bits}));
        }
        // Before the first telegram there is no store, and nothing goes out.
        TestApp bare;
        QVERIFY(!bare.app->commands().ResetMessages(16));
    }

    void learnWindowCommands() {
        Rig rig;
        rig.app.texts().messages.normalModeWarning = QStringLiteral("leave learn mode?");
        rig.app.texts().appTitle = QStringLiteral("KOMPA");
        type(rig.learn,
             {ll::txtBlowTime, "60", ll::txtBlowFanVoltage, "10.5", ll::txtSuckFanVoltage, "12"});
        DeviceCommands::LocalisationWindows windows{{500, 1201, 1701}, {1200, 1700, 2300}, 3, true};
        rig.t.dialogs.answers = {Answer::No, Answer::Yes};
        QVERIFY(!rig.commands.LocParameterAssume(windows, rig.limits));
        QCOMPARE(rig.sent(), 0);
        QCOMPARE(rig.t.dialogs.shown.size(), 1);
        const ScriptedDialogs::Shown asked = rig.t.dialogs.shown.front();
        QCOMPARE(asked.text + asked.title, "leave learn mode?KOMPA");
        QVERIFY(asked.buttons == UserDialogs::Buttons::YesNo &&
                asked.icon == UserDialogs::Icon::Warning && asked.defaultAnswer == Answer::No);

        QVERIFY(rig.commands.LocParameterAssume(windows, rig.limits));
        QCOMPARE(rig.sent(), 133);
        QCOMPARE(rig.values.GetLocalizationParameter(),
                 block(133, {bytes({0x04, 0xB0, 0x01, 0xF4, 0x06, 0xA4, 0x04, 0xB1, 0x08, 0xFC,
                                    0x06, 0xA5}),
                             Bytes(8), bytes({0, 60, 0x29, 0x04, 0x2E, 0xE0}), Bytes(10)}));

        // A bound beyond 15 bits marks its hole's time; nothing is asked or sent.
        windows.maximum[1] = 32767;
        QVERIFY(!rig.commands.LocParameterAssume(windows, rig.limits));
        QCOMPARE(rig.sent(), 0);
        QCOMPARE(rig.t.dialogs.shown.size(), 2);
        QCOMPARE(rig.learn.backColor(ll::txtLocTime[1]), colors::kYellow);
        QVERIFY(rig.learn.backColor(ll::txtLocTime[0]) != colors::kYellow);

        type(rig.learn,
             {ll::txtLocTemporaryBlowTimeMinutes, "1", ll::txtLocTemporaryBlowTimeSeconds, "30",
              ll::txtBlowFanVoltage, "9", ll::txtSuckFanVoltage, "13,5"});
        QVERIFY(rig.commands.LocSingleHoleLearning(true, rig.limits));
        QCOMPARE(rig.values.GetLocalizationParameterLearnMode(),
                 block(134, {bytes({0, 90, 0x23, 0x28, 0x34, 0xBC, 255}), Bytes(10)}));
        QVERIFY(rig.commands.LocSingleHoleLearning(false, rig.limits));
        QCOMPARE(slice(rig.values.GetLocalizationParameterLearnMode(), 12, 1), bytes({0}));
        QVERIFY(rig.commands.LocParameterAbort());
        QCOMPARE(rig.sent(), 135);
        QCOMPARE(rig.values.GetLocalizationAbortLearnMode(), block(135, {Bytes(10)}));
    }

    void busModuleCommandsNameTheModule() {
        Rig rig;
        rig.modules.setItems(es::cboSerialNumber, {"0", "4711", "0"});
        rig.modules.setValue(es::cboSerialNumber, 1);
        type(rig.modules, {es::txtParameterValue[0], "1000", es::txtParameterValue[1], "0",
                           es::txtParameterValue[2], "99"});
        QVERIFY(rig.commands.BusItemSettings(rig.limits));
        QCOMPARE(rig.sent(), 136);
        QCOMPARE(
            rig.values.GetExtinguisherParameter(),
            block(136, {bytes({0, 0, 0x12, 0x67, 0x44, 0x7A, 0, 0, 0, 0, 0, 0, 99}), Bytes(10)}));
        rig.modules.setValue(es::cboSerialNumber, -1);
        QVERIFY(rig.commands.BusItemSettings(rig.limits));
        QCOMPARE(slice(rig.values.GetExtinguisherParameter(), 6, 4), Bytes(4));

        rig.view.setCaption(el::lblExtSerialNo[3], "4711");
        QVERIFY(rig.commands.BusItemIdent(3));
        QCOMPARE(rig.values.GetExtinguisherIdent(), block(139, {bytes({0, 0, 0x12, 0x67})}));
    }
};

QTEST_GUILESS_MAIN(TestCommands)
#include "devicesettings/devicesettings_elements.h"
#include "extinguish/extinguish_elements.h"
#include "localize/localize_elements.h"
#include "tst_commands.moc"
