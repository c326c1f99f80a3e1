// The telegram layout, checked against values worked out by hand from the device's byte
// tables: a few bytes put where the device puts a value, the rest of the telegram noise, so
// that a getter that reads a neighbour's bytes, the wrong block of an indexed value or the
// wrong bit shows a different value.
#include "support/testsupport.h"
#include "values/valuestore.h"

#include <QTest>

namespace {

constexpr std::size_t kTelegramSize[] = {0, 19, 202, 211, 54, 421};
constexpr std::uint8_t kNoise = 0xA5;

using Read = QVariant (*)(ValueStore&);
#define READ(call) Read([](ValueStore& v) { return QVariant(v.call); })

} // namespace

Q_DECLARE_METATYPE(Read)

class TestGetters : public QObject {
    Q_OBJECT

private slots:
    // Offsets count from the STX. Detector d's block starts at 99 + 36 d of telegram 2,
    // sensor n's at 64 + 13 n of telegram 3, module m's at 10 + 40 m of telegram 5.
    void layout_data() {
        QTest::addColumn<int>("command");
        QTest::addColumn<int>("offset");
        QTest::addColumn<Bytes>("placed");
        QTest::addColumn<Read>("read");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, int command, int offset,
                            std::initializer_list<int> placed, Read read, const char* expected) {
            QTest::newRow(name) << command << offset << testsupport::bytes(placed) << read
                                << QString(expected);
        };
        row("air flow", 2, 8, {0x41, 0x20, 0, 0}, READ(DET_GetFlowValue()), "10");
        row("altitude", 2, 20, {0xFF, 0x9C}, READ(DET_GetAltitude()), "-100");
        row("fan voltage", 2, 51, {0x2E, 0xE0}, READ(DET_GetFanVoltage()), "12000");
        row("learning on", 2, 88, {0x08}, READ(DET_GetLearningIsOn()), "1");
        row("detector 1 software", 2, 103, {0x04, 0xD2, 0x05, 0x0C}, READ(DET_GetDetSoftwareNum(0)),
            "1234.05.012");
        row("detector 2 serial", 2, 135, {0x00, 0x01, 0xE2, 0x40}, READ(DET_GetDetSerialNum(1)),
            "123456");
        row("detector 2 alarm threshold", 2, 156, {0x32}, READ(DET_GetAlarmThreshold(1)), "50");
        row("detector 2 failure LED blinking", 2, 159, {0x20}, READ(DET_GetFailureLED(1)), "2");
        row("input voltage", 3, 21, {0x41, 0xC4, 0, 0}, READ(CTRL_GetUinVoltage()), "24.5");
        row("resets", 3, 41, {0x00, 0x01, 0x11, 0x70}, READ(GetNumResets()), "70000");
        row("modules set, signed byte", 3, 54, {0xFE}, READ(GetNumOfExtModulesSet()), "-2");
        row("sensor 3 temperature", 3, 90, {0x41, 0xC8, 0, 0}, READ(TEM_GetNTCTemperature(2)),
            "25");
        row("sensor 5 state", 3, 128, {0x06}, READ(TEM_GetNTCState(4)), "3");
        row("pending fault bit 9", 3, 153, {0x02}, READ(CTRL_GetFailures(9)), "1");
        row("pending fault bit 8 beside it", 3, 153, {0x02}, READ(CTRL_GetFailures(8)), "0");
        row("relay 2 combined with bit 10", 3, 132, {0x04}, READ(GetRelayCombineMask(1, 10)), "1");
        row("module 10 serial", 5, 370, {0x00, 0x00, 0x30, 0x39}, READ(EXT_GetSerialNum(9)),
            "12345");
        row("module 2 ignition voltage", 5, 71, {0x41, 0xDC, 0, 0}, READ(EXT_GetIgnitionVoltage(1)),
            "27.5");
        row("module 1 stored fault bit 3", 5, 43, {0x08}, READ(EXT_GetSavedFailures(0, 3)), "1");
        row("module 4 online", 5, 161, {0x01}, READ(EXT_GetIsOnline(3)), "1");
        // Two bits each, the rest of their byte set.
        row("alarm LED 1, state 2", 3, 147, {0xBF}, READ(DISP_GetLedAlarm(0)), "2");
        row("alarm LED 2, state 1", 3, 148, {0xFD}, READ(DISP_GetLedAlarm(1)), "1");
        row("pre-alarm LED 1, state 2", 3, 148, {0xFB}, READ(DISP_GetLedPreAlarm(0)), "2");
        row("pre-alarm LED 2, state 1", 3, 148, {0xDF}, READ(DISP_GetLedPreAlarm(1)), "1");
    }
    void layout() {
        QFETCH(int, command);
        QFETCH(int, offset);
        QFETCH(Bytes, placed);
        QFETCH(Read, read);
        Bytes t(kTelegramSize[command], kNoise);
        std::copy(placed.begin(), placed.end(), t.begin() + offset);
        ValueStore values;
        QCOMPARE(values.SetDataArray(t, static_cast<std::int16_t>(command)), 0);
        QTEST(read(values).toString(), "expected");
    }
};

QTEST_APPLESS_MAIN(TestGetters)
#include "tst_getters.moc"
