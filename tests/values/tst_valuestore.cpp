#include "values/valuestore.h"

#include "support/testsupport.h"

#include <limits>

#include <QTest>

namespace {

constexpr int kSizes[] = {19, 202, 211, 54, 421};

int sizeOf(int command) {
    return kSizes[command - 1];
}

Bytes filled(int command, std::uint8_t value) {
    return Bytes(static_cast<std::size_t>(sizeOf(command)), value);
}

// A telegram carrying `serial` where its own frame puts it: behind a two-byte header, or a
// four-byte one when byte 1 holds 255.
Bytes withSerial(int command, std::uint32_t serial, bool extendedFrame) {
    Bytes t = filled(command, 0);
    t[0] = 2;
    t[1] = extendedFrame ? 255 : 8;
    const std::size_t at = extendedFrame ? 6 : 4;
    t[at] = static_cast<std::uint8_t>(serial >> 24);
    t[at + 1] = static_cast<std::uint8_t>(serial >> 16);
    t[at + 2] = static_cast<std::uint8_t>(serial >> 8);
    t[at + 3] = static_cast<std::uint8_t>(serial);
    return t;
}

void storeAll(ValueStore& values, std::uint32_t serial) {
    for (std::int16_t c = 1; c <= 5; ++c)
        QCOMPARE(values.SetDataArray(withSerial(c, serial, c == 5), c), 0);
}

void fillAll(ValueStore& values, std::uint8_t value) {
    for (std::int16_t c = 1; c <= 5; ++c)
        values.SetDataArray(filled(c, value), c);
}

// A telegram of `command` with one byte set.
void setByte(ValueStore& values, std::int16_t command, int offset, std::uint8_t value) {
    Bytes t = filled(command, 0);
    t[static_cast<std::size_t>(offset)] = value;
    values.SetDataArray(t, command);
}

constexpr std::int16_t kMin16 = std::numeric_limits<std::int16_t>::min();
constexpr std::int16_t kMax16 = std::numeric_limits<std::int16_t>::max();

// A getter called with index n, and how many indexes it takes.
struct Indexed {
    const char* text;
    int count;
    QVariant (*call)(ValueStore&, std::int16_t n);
};

#define INDEXED(count, call)                                                                       \
    Indexed {                                                                                      \
        QT_STRINGIFY(call), count,                                                                 \
            [](ValueStore& v, std::int16_t n) { return QVariant::fromValue(v.call); }              \
    }

const Indexed kIndexed[] = {
    INDEXED(2, DET_GetAlarmThreshold(n)),     INDEXED(2, DET_GetDetSerialNum(n)),
    INDEXED(2, DET_GetDetParameterID(n)),     INDEXED(2, DET_GetDetSoftwareNum(n)),
    INDEXED(2, DET_GetAlarmLED(n)),           INDEXED(5, TEM_GetNTCTemperature(n)),
    INDEXED(5, TEM_GetNTCState(n)),           INDEXED(5, REL_GetRelState(n)),
    INDEXED(2, BMZ_GetAlarmState(n)),         INDEXED(2, BMZ_GetPreAlarmState(n)),
    INDEXED(5, GetRelayCombineMask(n, 15)),   INDEXED(16, GetRelayCombineMask(4, n)),
    INDEXED(16, REL_GetRelEventMask(n)),      INDEXED(32, CTRL_GetFailures(n)),
    INDEXED(32, GetSavedFailures(n)),         INDEXED(32, CTRL_GetValidFailureMask(n)),
    INDEXED(16, CTRL_GetMessages(n)),         INDEXED(16, GetSavedMessages(n)),
    INDEXED(16, CTRL_GetValidMessageMask(n)), INDEXED(2, DISP_GetLedAlarm(n)),
    INDEXED(2, DISP_GetLedPreAlarm(n)),       INDEXED(10, EXT_GetSerialNum(n)),
    INDEXED(10, EXT_GetSoftwareNum(n)),       INDEXED(10, EXT_GetParameterID(n)),
    INDEXED(10, EXT_GetIsOnline(n)),          INDEXED(10, EXT_GetHasEnableInput(n)),
    INDEXED(10, EXT_GetActualFailures(n, 7)), INDEXED(8, EXT_GetActualFailures(9, n)),
    INDEXED(8, EXT_GetSavedFailures(0, n)),   INDEXED(8, EXT_GetValidFailureMask(0, n)),
};

#undef INDEXED

using Setter = std::int16_t (ValueStore::*)(Bytes);
using Getter = Bytes (ValueStore::*)() const;

} // namespace

Q_DECLARE_METATYPE(Setter)
Q_DECLARE_METATYPE(Getter)

class TestMq27Values : public QObject {
    Q_OBJECT

private slots:
    void arraysExistZeroedAtTheirSizes() {
        ValueStore values;
        for (std::int16_t c = 1; c <= 5; ++c) {
            Bytes copy;
            QCOMPARE(values.GetDataArray(copy, c), 0);
            QCOMPARE(copy, filled(c, 0));
        }
    }

    void setDataArrayTakesOnlyTheExactSize_data() {
        QTest::addColumn<int>("command");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("status");
        for (int c = 1; c <= 5; ++c) {
            QTest::addRow("command %d exact", c) << c << sizeOf(c) << 0;
            QTest::addRow("command %d one short", c) << c << sizeOf(c) - 1 << -3;
            QTest::addRow("command %d one long", c) << c << sizeOf(c) + 1 << -3;
        }
        QTest::newRow("command 2 empty") << 2 << 0 << -3;
        QTest::newRow("command 5 in the size of 3") << 5 << 211 << -3;
        QTest::newRow("command 0") << 0 << 19 << -2;
        QTest::newRow("command 6") << 6 << 19 << -2;
        QTest::newRow("command -1") << -1 << 19 << -2;
    }
    void setDataArrayTakesOnlyTheExactSize() {
        QFETCH(int, command);
        QFETCH(int, size);
        QFETCH(int, status);
        ValueStore values;
        const bool readCommand = command >= 1 && command <= 5;
        const Bytes previous = readCommand ? filled(command, 0x11) : Bytes();
        if (readCommand) QCOMPARE(values.SetDataArray(previous, command), 0);

        const auto c = static_cast<std::int16_t>(command);
        QCOMPARE(int(values.SetDataArray(Bytes(static_cast<std::size_t>(size), 0x22), c)), status);
        if (!readCommand) return;
        Bytes stored;
        QCOMPARE(values.GetDataArray(stored, c), 0);
        QCOMPARE(stored, status == 0 ? filled(command, 0x22) : previous);
    }

    void getDataArrayLeavesTheDestinationOnBadCommands() {
        ValueStore values;
        for (std::int16_t c : {0, 6, -1, 255}) {
            Bytes destination{1, 2, 3};
            QCOMPARE(values.GetDataArray(destination, c), -2);
            QCOMPARE(destination, (Bytes{1, 2, 3}));
        }
    }

    void getDataArrayIsASnapshot() {
        ValueStore values;
        values.SetDataArray(filled(4, 0x44), 4);
        Bytes copy{9, 9};
        QCOMPARE(values.GetDataArray(copy, 4), 0);
        values.SetDataArray(filled(4, 0x55), 4);
        QCOMPARE(copy, filled(4, 0x44));
    }

    void deleteKeepsSizesAndZeroes() {
        ValueStore values;
        fillAll(values, 0xFF);
        QCOMPARE(values.DET_GetAlarmThreshold(1), 255.0f);
        QCOMPARE(values.DeleteDataArrays(), 0);
        for (std::int16_t c = 1; c <= 5; ++c) {
            Bytes copy;
            values.GetDataArray(copy, c);
            QCOMPARE(copy, filled(c, 0));
        }
        QCOMPARE(values.DET_GetAlarmThreshold(1), 0.0f);
        QCOMPARE(values.EXT_GetSerialNum(9), 0.0);
        QCOMPARE(values.GetSerialNum(), 0.0);
    }

    void checkDataArrays() {
        ValueStore values;
        QCOMPARE(values.CheckDataArrays(0), 0); // five arrays of zeros share serial number 0
        QCOMPARE(values.CheckDataArrays(5), 1);

        storeAll(values, 4000000000u);
        QCOMPARE(values.CheckDataArrays(0), 0);
        QCOMPARE(values.CheckDataArrays(4000000000.0), 0);
        QCOMPARE(values.CheckDataArrays(4000000001.0), 1);

        values.SetDataArray(withSerial(3, 7, false), 3);
        QCOMPARE(values.CheckDataArrays(0), 3);
        values.SetDataArray(withSerial(2, 7, false), 2);
        QCOMPARE(values.CheckDataArrays(0), 2);
        QCOMPARE(values.CheckDataArrays(7), 1);
    }

    // The frame of each array, not its command, says where its serial number lies.
    void checkDataArraysFollowsTheFrame() {
        ValueStore values;
        storeAll(values, 1234567);
        values.SetDataArray(withSerial(5, 1234567, false), 5);
        QCOMPARE(values.CheckDataArrays(0), 0);
        values.SetDataArray(withSerial(2, 1234567, true), 2);
        QCOMPARE(values.CheckDataArrays(0), 0);

        Bytes fifth = withSerial(5, 1234567, true);
        fifth[4] = 0x12; // where a short frame would have it: not read
        values.SetDataArray(fifth, 5);
        QCOMPARE(values.CheckDataArrays(1234567), 0);
        fifth[9] ^= 1;
        values.SetDataArray(fifth, 5);
        QCOMPARE(values.CheckDataArrays(1234567), 5);
    }

    void serialNumberOfTheDevice() {
        ValueStore values;
        values.SetDataArray(withSerial(1, 0xFFFFFFFFu, false), 1);
        QCOMPARE(values.GetSerialNum(), 4294967295.0);
    }

    void valuesBeforeAnyTelegram() {
        ValueStore values;
        QCOMPARE(values.DET_GetDetSoftwareNum(0), QStringLiteral("0000.00.000"));
        QCOMPARE(values.DET_GetDetParameterID(1), QStringLiteral("0000.000.000"));
        QCOMPARE(values.EXT_GetSoftwareNum(9), QStringLiteral("0000.00.000"));
        QCOMPARE(values.GetParameterID(), QStringLiteral("0000.000.000"));
        QCOMPARE(values.DET_GetFlowValue(), 0.0f);
        QCOMPARE(values.DET_GetDetSerialNum(1), 0.0);
    }

    void numberTextsDoNotCutWideValues() {
        ValueStore values;
        fillAll(values, 0xFF);
        QCOMPARE(values.GetSoftwareNum(), QStringLiteral("65535.255.255"));
        QCOMPARE(values.EXT_GetParameterID(0), QStringLiteral("65535.65535.255"));
    }

    // Module 10 has its block at 370 to 409, so its feature byte is 406.
    void lastModuleBlock() {
        ValueStore values;
        setByte(values, 5, 406, 0x08);
        QCOMPARE(values.EXT_GetHasEnableInput(9), 1);
        setByte(values, 5, 396, 0x08);
        QCOMPARE(values.EXT_GetHasEnableInput(9), 0);
        setByte(values, 5, 370, 0x01);
        QCOMPARE(values.EXT_GetSerialNum(9), 16777216.0);
        setByte(values, 5, 42, 0x80);
        QCOMPARE(values.EXT_GetActualFailures(0, 7), 1);
    }

    // Both ends of every index range: one step outside is an error with 0 or "#" and the error
    // strings, the last index inside is none, on telegrams of 0xFF where a stray read shows.
    void indexRanges() {
        ValueStore values;
        fillAll(values, 0xFF);
        for (const Indexed& getter : kIndexed) {
            const int last = getter.count - 1;
            for (const int n : {int(kMin16), -1, 0, last, last + 1, int(kMax16)}) {
                const QVariant result = getter.call(values, static_cast<std::int16_t>(n));
                const bool inside = n >= 0 && n <= last;
                const QString where = QStringLiteral("%1 at %2").arg(getter.text).arg(n);
                QVERIFY2((values.ValueDescription == u"ERROR: Index out of range!") != inside,
                         qPrintable(where));
                if (inside) continue;
                QVERIFY2(values.ValueUnit == u"#", qPrintable(where));
                if (result.typeId() == QMetaType::QString)
                    QVERIFY2(result.toString() == u"#", qPrintable(where));
                else
                    QVERIFY2(result.toDouble() == 0, qPrintable(where));
            }
        }
    }

    void stringsBelongToTheLastGetter() {
        ValueStore values;
        values.DET_GetFlowValue();
        QCOMPARE(values.ValueUnit, QStringLiteral("m/s"));
        values.DET_GetFirePlace();
        QCOMPARE(values.ValueDescription, QStringLiteral("Brandort"));
        QCOMPARE(values.ValueUnit, QString());
        values.DET_GetAlarmThreshold(9);
        values.DET_GetAlarmThreshold(1);
        QCOMPARE(values.ValueDescription, QStringLiteral("Detektor 2: Hauptalarmschwelle"));
        QCOMPARE(values.ValueUnit, QStringLiteral("%"));
    }

    void parameterBlocks_data() {
        QTest::addColumn<Setter>("set");
        QTest::addColumn<Getter>("get");
        QTest::addColumn<int>("size");
#define BLOCK(name, size)                                                                          \
    QTest::newRow(#name) << &ValueStore::Set##name << &ValueStore::Get##name << size
        BLOCK(DeviceParameter, 40);
        BLOCK(AirFlowInitParameter, 22);
        BLOCK(ResetAlarmAndFault, 8);
        BLOCK(ResetMessages, 8);
        BLOCK(LocalizationParameter, 42);
        BLOCK(LocalizationParameterLearnMode, 23);
        BLOCK(LocalizationAbortLearnMode, 16);
        BLOCK(ExtinguisherParameter, 29);
        BLOCK(TemperatureParameter, 46);
        BLOCK(RelayParameter, 26);
        BLOCK(ExtinguisherIdent, 10);
        BLOCK(IndicatorTestParameter, 3);
#undef BLOCK
    }
    void parameterBlocks() {
        QFETCH(Setter, set);
        QFETCH(Getter, get);
        QFETCH(int, size);
        ValueStore values;
        QVERIFY((values.*get)().empty());

        Bytes block(static_cast<std::size_t>(size));
        for (int i = 0; i < size; ++i)
            block[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(i * 7 + 1);
        QCOMPARE((values.*set)(block), 0);
        Bytes copy = (values.*get)();
        QCOMPARE(copy, block);
        copy[0] = 0;
        QCOMPARE((values.*get)(), block); // reading hands out a copy and keeps the block

        QCOMPARE((values.*set)(Bytes{10, 99}), 0); // replaced whole, not merged
        QCOMPARE((values.*get)(), (Bytes{10, 99}));
    }

    void parameterBlocksAreSeparate() {
        ValueStore values;
        values.SetRelayParameter(Bytes{10, 138});
        values.SetTemperatureParameter(Bytes{10, 137});
        QCOMPARE(values.GetRelayParameter(), (Bytes{10, 138}));
        QVERIFY(values.GetDeviceParameter().empty());
        QVERIFY(values.GetIndicatorTestParameter().empty());
        Bytes stored;
        values.GetDataArray(stored, 1);
        QCOMPARE(stored, filled(1, 0));
    }
};

QTEST_APPLESS_MAIN(TestMq27Values)
#include "tst_valuestore.moc"
