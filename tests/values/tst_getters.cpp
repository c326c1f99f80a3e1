// The telegram layout, checked against values worked out by hand from the device's byte
// tables: a few bytes put where the device puts a value, the rest of the telegram noise, so
// that a getter that reads a neighbour's bytes, the wrong block of an indexed value or the
// wrong bit shows a different value.
#include "values/valuestore.h"

#include <functional>
#include <utility>
#include <vector>

#include <QTest>

namespace {

constexpr std::size_t kTelegramSize[] = {0, 19, 202, 211, 54, 421};
constexpr std::uint8_t kNoise = 0xA5;

using Read = std::function<QVariant(ValueStore&)>;
using Placed = std::vector<std::pair<int, std::vector<std::uint8_t>>>; // offset, bytes

struct Row {
    const char* name;
    int command;
    Placed bytes;
    Read read;
    QVariant expected;
    const char* prefix; // of the description: which detector, sensor or module
};

// Offsets count from the STX. Detector d's block starts at 99 + 36 d of telegram 2, sensor
// n's at 64 + 13 n of telegram 3, module m's at 10 + 40 m of telegram 5.
const std::vector<Row>& rows() {
    static const std::vector<Row> all = {
        {"air flow 10 m/s",
         2,
         {{8, {0x41, 0x20, 0, 0}}},
         [](ValueStore& v) { return QVariant(v.DET_GetFlowValue()); },
         10.0,
         ""},
        {"altitude -100 m",
         2,
         {{20, {0xFF, 0x9C}}},
         [](ValueStore& v) { return QVariant(v.DET_GetAltitude()); },
         -100.0,
         ""},
        {"fan voltage 12000 mV",
         2,
         {{51, {0x2E, 0xE0}}},
         [](ValueStore& v) { return QVariant(v.DET_GetFanVoltage()); },
         12000.0,
         ""},
        {"learning on",
         2,
         {{88, {0x08}}},
         [](ValueStore& v) { return QVariant(v.DET_GetLearningIsOn()); },
         1,
         ""},
        {"detector 1 software 1234.05.012",
         2,
         {{103, {0x04, 0xD2, 0x05, 0x0C}}},
         [](ValueStore& v) { return QVariant(v.DET_GetDetSoftwareNum(0)); },
         QStringLiteral("1234.05.012"),
         "Detektor 1: "},
        {"detector 2 serial 123456",
         2,
         {{135, {0x00, 0x01, 0xE2, 0x40}}},
         [](ValueStore& v) { return QVariant(v.DET_GetDetSerialNum(1)); },
         123456.0,
         "Detektor 2: "},
        {"detector 2 alarm threshold 50 %",
         2,
         {{156, {0x32}}},
         [](ValueStore& v) { return QVariant(v.DET_GetAlarmThreshold(1)); },
         50.0,
         "Detektor 2: "},
        {"detector 2 failure LED blinking",
         2,
         {{159, {0x20}}},
         [](ValueStore& v) { return QVariant(v.DET_GetFailureLED(1)); },
         2,
         "Detektor 2: "},
        {"input voltage 24.5 V",
         3,
         {{21, {0x41, 0xC4, 0, 0}}},
         [](ValueStore& v) { return QVariant(v.CTRL_GetUinVoltage()); },
         24.5,
         ""},
        {"resets 70000",
         3,
         {{41, {0x00, 0x01, 0x11, 0x70}}},
         [](ValueStore& v) { return QVariant(v.GetNumResets()); },
         70000.0,
         ""},
        {"modules set, signed byte",
         3,
         {{54, {0xFE}}},
         [](ValueStore& v) { return QVariant(v.GetNumOfExtModulesSet()); },
         -2.0,
         ""},
        {"sensor 3 at 25 degrees",
         3,
         {{90, {0x41, 0xC8, 0, 0}}},
         [](ValueStore& v) { return QVariant(v.TEM_GetNTCTemperature(2)); },
         25.0,
         "NTC Fühler 3: "},
        {"sensor 5 state 3",
         3,
         {{128, {0x06}}},
         [](ValueStore& v) { return QVariant(v.TEM_GetNTCState(4)); },
         3,
         "NTC Fühler 5: "},
        {"pending fault bit 9",
         3,
         {{153, {0x02}}},
         [](ValueStore& v) { return QVariant(v.CTRL_GetFailures(9)); },
         1,
         ""},
        {"pending fault bit 8 beside it",
         3,
         {{153, {0x02}}},
         [](ValueStore& v) { return QVariant(v.CTRL_GetFailures(8)); },
         0,
         ""},
        {"relay 2 combined with bit 10",
         3,
         {{132, {0x04}}},
         [](ValueStore& v) { return QVariant(v.GetRelayCombineMask(1, 10)); },
         1,
         ""},
        {"module 10 serial 12345",
         5,
         {{370, {0x00, 0x00, 0x30, 0x39}}},
         [](ValueStore& v) { return QVariant(v.EXT_GetSerialNum(9)); },
         12345.0,
         "Löscheinschub 10: "},
        {"module 2 ignition 27.5 V",
         5,
         {{71, {0x41, 0xDC, 0, 0}}},
         [](ValueStore& v) { return QVariant(v.EXT_GetIgnitionVoltage(1)); },
         27.5,
         "Löscheinschub 2: "},
        {"module 1 stored fault bit 3",
         5,
         {{43, {0x08}}},
         [](ValueStore& v) { return QVariant(v.EXT_GetSavedFailures(0, 3)); },
         1,
         "Löscheinschub 1: "},
        {"module 4 online",
         5,
         {{161, {0x01}}},
         [](ValueStore& v) { return QVariant(v.EXT_GetIsOnline(3)); },
         1,
         "Löscheinschub 4: "},
    };
    return all;
}

} // namespace

class TestGetters : public QObject {
    Q_OBJECT

private slots:
    void layout_data() {
        QTest::addColumn<int>("which");
        for (std::size_t i = 0; i < rows().size(); ++i)
            QTest::newRow(rows()[i].name) << int(i);
    }
    void layout() {
        QFETCH(int, which);
        const Row& row = rows()[std::size_t(which)];
        Bytes t(kTelegramSize[row.command], kNoise);
        for (const auto& [offset, bytes] : row.bytes)
            for (std::size_t i = 0; i < bytes.size(); ++i)
                t[std::size_t(offset) + i] = bytes[i];
        ValueStore values;
        QCOMPARE(values.SetDataArray(t, static_cast<std::int16_t>(row.command)), 0);
        const QVariant got = row.read(values);
        if (row.expected.typeId() == QMetaType::QString)
            QCOMPARE(got.toString(), row.expected.toString());
        else
            QCOMPARE(got.toDouble(), row.expected.toDouble());
        QVERIFY2(values.ValueDescription.startsWith(QString::fromUtf8(row.prefix)) &&
                     values.ValueDescription.size() > qsizetype(qstrlen(row.prefix)),
                 qPrintable(values.ValueDescription));
    }

    void detectorLeds_data() {
        QTest::addColumn<int>("d");
        QTest::addColumn<bool>("preAlarm");
        QTest::addColumn<int>("byte");
        QTest::addColumn<int>("lowBit");
        QTest::newRow("alarm 1") << 0 << false << 147 << 6;
        QTest::newRow("alarm 2") << 1 << false << 148 << 0;
        QTest::newRow("pre-alarm 1") << 0 << true << 148 << 2;
        QTest::newRow("pre-alarm 2") << 1 << true << 148 << 4;
    }
    void detectorLeds() {
        QFETCH(int, d);
        QFETCH(bool, preAlarm);
        QFETCH(int, byte);
        QFETCH(int, lowBit);
        ValueStore values;
        for (unsigned state = 0; state < 4; ++state) {
            Bytes t(211, kNoise);
            t[std::size_t(byte)] = static_cast<std::uint8_t>(~(3u << lowBit) | state << lowBit);
            values.SetDataArray(t, 3);
            const auto index = static_cast<std::int16_t>(d);
            const std::int16_t got =
                preAlarm ? values.DISP_GetLedPreAlarm(index) : values.DISP_GetLedAlarm(index);
            QCOMPARE(got, std::int16_t(state));
        }
        QCOMPARE(values.ValueDescription,
                 QStringLiteral("Detektor %1: Zustand LED %2")
                     .arg(d + 1)
                     .arg(preAlarm ? QStringLiteral("Voralarm") : QStringLiteral("Hauptalarm")));
    }
};

QTEST_APPLESS_MAIN(TestGetters)
#include "tst_getters.moc"
