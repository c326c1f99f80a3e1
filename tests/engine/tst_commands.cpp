#include "engine/commands.h"

#include "display/mainview_elements.h"
#include "engine/pollengine.h"
#include "engine/settinglimits.h"
#include "engine/settingtable.h"
#include "support/fakes.h"
#include "support/testsupport.h"
#include "values/valuestore.h"

#include <QTest>

namespace {

using testsupport::kSerial;

namespace el = frmDisplay;
using fieldcheck::typed;
using testsupport::bytes;

constexpr std::uint8_t kFill = 0x33; // in telegram 3: one detector, buzzer off

// Kind, command and serial number, then the parts.
Bytes block(int command, std::initializer_list<Bytes> parts) {
    Bytes out = bytes({10, command, 0x00, 0x12, 0xD6, 0x87});
    for (const Bytes& part : parts)
        out.insert(out.end(), part.begin(), part.end());
    return out;
}

Bytes slice(const std::optional<Bytes>& b, int from, int count) {
    if (!b || b->size() < static_cast<std::size_t>(from + count)) return {};
    return Bytes(b->begin() + from, b->begin() + from + count);
}

// The number of the settings' inputs that the page's field `field` holds.
TypedNumber& fieldOf(SettingInputs& inputs, const QString& field) {
    for (const SettingDescriptor& s : settingTable())
        for (int f = 0; f < s.fieldCount(); ++f)
            if (s.fieldElement(f) == field) return f == 0 ? inputs[s].number : inputs[s].seconds;
    qFatal("%s is no setting's field", qPrintable(field));
}

void type(SettingInputs& inputs, const QStringList& fieldsAndTexts) {
    for (qsizetype i = 0; i + 1 < fieldsAndTexts.size(); i += 2)
        fieldOf(inputs, fieldsAndTexts[i]) = typed(fieldsAndTexts[i + 1]);
}

// The switches whose editable boxes are `boxes` ticked.
void tick(SettingInputs& inputs, const QStringList& boxes, bool on = true) {
    for (const SettingDescriptor& s : settingTable())
        if (s.kind == SettingDescriptor::Kind::Switch && boxes.contains(s.copyBox()))
            inputs[s].on = on;
}

// The device 1234567 with telegrams 2, 3, 5 of `kFill` in the store; the sensitivity takes
// 0.05 to 20 %/m.
struct CommandsRig {
    TestApp t;
    Program& app = *t.app;
    DeviceCommands& commands = app.commands();
    ValueStore& values = app.createValues();
    SettingLimits limits;

    explicit CommandsRig(bool twoDetectors = false) {
        app.session().setSerialNo(QString::number(kSerial));
        for (std::int16_t command : {2, 3, 5}) {
            Bytes telegram = testsupport::ownTelegram(command, kSerial, kFill);
            if (command == 3 && twoDetectors) telegram[61] |= 0x40;
            values.SetDataArray(telegram, command);
        }
        for (const char* name : {"sensitivity1", "sensitivity2"})
            limits.set(settingNamed(QString::fromLatin1(name)), {50, 20000});
    }

    // The command queued for the poll cycle since the last look, 0 for none.
    int sent() {
        const int command = app.engine().IsWriteQueued() ? app.engine().NextCommand() : 0;
        app.engine().CancelWrite();
        return command;
    }
    // Good as it stands (0 min 30 s is the minimum), but for the second detector's fields.
    static SettingInputs settings() {
        SettingInputs inputs;
        type(inputs,
             {el::txtAirFlowRange, "30", el::txtFaultDelayMinutes, "0", el::txtFaultDelaySeconds,
              "30", el::txtSensitivity[0], "0,125", el::txtAlarmDelay, "10",
              el::txtPreAlarmThreshold[0], "60", el::txtExtinguishDelay, "5", el::txtSensitivity[1],
              "no number", el::txtPreAlarmThreshold[1], "none"});
        return inputs;
    }
};

} // namespace

class TestCommands : public QObject {
    Q_OBJECT

private slots:
    void settingsAssumeReadsTheSecondDetectorOnlyWhenThereIsOne() {
        CommandsRig rig;
        SettingInputs inputs = CommandsRig::settings();
        tick(inputs, {el::chkLocalization[1], el::chkTrueLix[1], el::chkDynamicAirflow[1],
                      el::chkBuzzer[1]});
        QVERIFY(rig.commands.Send(rig.commands.SettingsAssume(inputs, rig.limits)));
        QCOMPARE(rig.sent(), 129);
        // Air flow monitoring (bit 4) as the device has it: off.
        QCOMPARE(rig.values.GetDeviceParameter(),
                 block(129, {Bytes(9, kFill), bytes({30, 0, 30, 0, 125, kFill, kFill, 10}),
                             bytes({kFill, kFill, 60, kFill, 5, 0b10100011, 0}), Bytes(10)}));
        QCOMPARE(fieldOf(inputs, el::txtSensitivity[0]).shown, 0.125);
        QVERIFY(!fieldOf(inputs, el::txtSensitivity[1]).checked);
        tick(inputs, {el::chkBuzzer[1]}, false);
        QCOMPARE(slice(rig.commands.SettingsAssume(inputs, rig.limits), 28, 1),
                 bytes({0b00100011}));

        CommandsRig two(true);
        inputs = CommandsRig::settings();
        type(inputs, {el::txtSensitivity[1], "0.2", el::txtPreAlarmThreshold[1], "70",
                      el::txtFaultDelayMinutes, "60", el::txtFaultDelaySeconds, "0"});
        const auto sent = two.commands.SettingsAssume(inputs, two.limits);
        QCOMPARE(slice(sent, 16, 6), bytes({0x0E, 0x10, 0, 125, 0, 200})); // 3600 s: the maximum
        QCOMPARE(slice(sent, 26, 1), bytes({70}));
        QCOMPARE(slice(sent, 29, 1), bytes({255}));
        two.app.session().setSerialNo(QStringLiteral("12a"));
        QVERIFY(!two.commands.SettingsAssume(inputs, two.limits));
    }

    void settingsRefused_data() {
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<QStringList>("refused");
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
        QFETCH(QStringList, refused);
        CommandsRig rig;
        SettingInputs inputs = CommandsRig::settings();
        type(inputs, typed);
        QVERIFY(!rig.commands.SettingsAssume(inputs, rig.limits));
        for (const QString& field :
             {el::txtAirFlowRange.name(), el::txtAlarmDelay.name(), el::txtFaultDelayMinutes.name(),
              el::txtFaultDelaySeconds.name(), el::txtExtinguishDelay.name()})
            QCOMPARE(fieldOf(inputs, field).refused(), refused.contains(field));
        // The seconds are good by themselves: the field shows them in their normal form.
        QVERIFY(fieldOf(inputs, el::txtFaultDelaySeconds).shown);
    }

    void eachPageKeepsTheValuesItDoesNotShow() {
        CommandsRig rig;
        DeviceCommands::Resistors resistors{{typed("1000"), typed("50000000"), typed("0")}};
        // Flags as the device has them: localisation and failure storage on, buzzer off.
        QCOMPARE(rig.commands.AdvancedSettingsAssume(resistors),
                 block(129, {bytes({0x44, 0x7A, 0, 0, 0x4C, 0x3E, 0xBC, 0x20, 0}), Bytes(13, kFill),
                             bytes({0b00001001, 0}), Bytes(10)}));
        SettingInputs inputs;
        std::array<TypedNumber, 5> betas;
        for (int n = 0; n < 5; ++n) {
            type(inputs, {el::txtSensorTempAlarm[n], n == 0 ? "55,5" : "100"});
            betas[static_cast<std::size_t>(n)] = typed(n == 0 ? "3400" : "4500");
        }
        const auto alarms = rig.commands.SensorTempAlarmAssume(inputs, rig.limits);
        QCOMPARE(slice(alarms, 6, 8), bytes({0x42, 0x5E, 0, 0, 0x42, 0xC8, 0, 0})); // 55.5, 100
        QCOMPARE(slice(alarms, 26, 10), Bytes(10, kFill));
        QCOMPARE(slice(alarms, 36, 10), Bytes(10));

        const auto sent = rig.commands.BetaFactorSettingsAssume(betas);
        QCOMPARE(slice(sent, 6, 20), Bytes(20, kFill));
        QCOMPARE(slice(sent, 26, 4), bytes({0x0D, 0x48, 0x11, 0x94})); // 3400, 4500
        QCOMPARE(slice(sent, 36, 10), Bytes(10));
    }

    void airFlowInitTakesEitherDecimalMark() {
        CommandsRig rig;
        SettingInputs inputs;
        type(inputs,
             {el::txtFanVoltageNormal, "12,5", el::txtAltitude, "250", el::txtAirPressure, "1013"});
        QVERIFY(rig.commands.Send(rig.commands.AirFlowInit(inputs, rig.limits)));
        QCOMPARE(rig.sent(), 130);
        QCOMPARE(rig.values.GetAirFlowInitParameter(),
                 block(130, {bytes({0x30, 0xD4, 0, 250, 0x03, 0xF5}), Bytes(10)}));
        // The field shows it again with the window's mark.
        QCOMPARE(fieldcheck::shownText(fieldOf(inputs, el::txtFanVoltageNormal),
                                       QLocale(QLocale::German, QLocale::Germany)),
                 "12,5");
    }

    void relayMasksGoLowerByteFirst() {
        CommandsRig rig;
        SettingInputs inputs;
        // Relay 1: AND of events 0 and 13; relay 5: OR of event 8.
        inputs[settingNamed("relay1")].mask = (1u << 15) | (1u << 13) | 1u;
        inputs[settingNamed("relay5")].mask = (1u << 14) | (1u << 8);
        QCOMPARE(rig.commands.RelayAssume(inputs),
                 block(138, {bytes({0x01, 0xA0, 0, 0, 0, 0, 0, 0, 0x00, 0x41}), Bytes(10)}));
    }

    void resetsSelectOneItemOrAll() {
        CommandsRig rig;
        const std::pair<int, Bytes> selections[] = {
            {16, bytes({255, 255})}, {9, bytes({0, 2})}, {0, bytes({1, 0})}};
        for (const auto& [selection, bits] : selections) {
            QCOMPARE(rig.commands.ResetAlarmAndFault(selection), block(131, {bits}));
            QVERIFY(rig.commands.Send(rig.commands.ResetMessages(selection)));
            QCOMPARE(rig.sent(), 132);
            QCOMPARE(rig.values.GetResetMessages(), block(132, {bits}));
        }
        // Before the first telegram there is no store, and nothing goes out.
        TestApp bare;
        QVERIFY(!bare.app->commands().Send(bare.app->commands().ResetMessages(16)));
    }

    void learnWindowCommands() {
        CommandsRig rig;
        DeviceCommands::LocalisationParameters windows{
            {500, 1201, 1701}, {1200, 1700, 2300}, 3, {}, typed("60"), typed("10.5"), typed("12")};
        QVERIFY(rig.commands.Send(rig.commands.LocParameterAssume(windows, rig.limits)));
        QCOMPARE(rig.sent(), 133);
        QCOMPARE(rig.values.GetLocalizationParameter(),
                 block(133, {bytes({0x04, 0xB0, 0x01, 0xF4, 0x06, 0xA4, 0x04, 0xB1, 0x08, 0xFC,
                                    0x06, 0xA5}),
                             Bytes(8), bytes({0, 60, 0x29, 0x04, 0x2E, 0xE0}), Bytes(10)}));

        // A bound beyond 15 bits refuses its hole.
        windows.maximum[1] = 32767;
        QVERIFY(!rig.commands.LocParameterAssume(windows, rig.limits));
        QVERIFY(windows.holeRefused[1] && !windows.holeRefused[0]);

        DeviceCommands::HoleLearning learning{typed("1"), typed("30"), typed("9"), typed("13,5")};
        QCOMPARE(rig.commands.LocSingleHoleLearning(learning, true, rig.limits),
                 block(134, {bytes({0, 90, 0x23, 0x28, 0x34, 0xBC, 255}), Bytes(10)}));
        QCOMPARE(slice(rig.commands.LocSingleHoleLearning(learning, false, rig.limits), 12, 1),
                 bytes({0}));
        QVERIFY(rig.commands.Send(rig.commands.LocParameterAbort()));
        QCOMPARE(rig.sent(), 135);
        QCOMPARE(rig.values.GetLocalizationAbortLearnMode(), block(135, {Bytes(10)}));
    }

    void busModuleCommandsNameTheModule() {
        CommandsRig rig;
        DeviceCommands::Resistors resistors{{typed("1000"), typed("0"), typed("99")}};
        QVERIFY(rig.commands.Send(rig.commands.BusItemSettings("4711", resistors)));
        QCOMPARE(rig.sent(), 136);
        QCOMPARE(
            rig.values.GetExtinguisherParameter(),
            block(136, {bytes({0, 0, 0x12, 0x67, 0x44, 0x7A, 0, 0, 0, 0, 0, 0, 99}), Bytes(10)}));
        QCOMPARE(slice(rig.commands.BusItemSettings("0", resistors), 6, 4), Bytes(4));
        QCOMPARE(rig.commands.BusItemIdent("4711"), block(139, {bytes({0, 0, 0x12, 0x67})}));
    }
};

QTEST_GUILESS_MAIN(TestCommands)
#include "tst_commands.moc"
