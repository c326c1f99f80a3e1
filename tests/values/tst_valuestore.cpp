#include "values/valuestore.h"

#include <limits>

#include <QTest>

namespace {

constexpr int kSizes[] = {19, 202, 211, 54, 421};

Bytes filled(int command, std::uint8_t value) {
    return Bytes(static_cast<std::size_t>(kSizes[command - 1]), value);
}

// A telegram carrying `serial` where its own frame puts it: behind a two-byte header, or a
// four-byte one when byte 1 holds 255.
Bytes withSerial(int command, std::uint32_t serial, bool extendedFrame) {
    Bytes t = filled(command, 0);
    t[1] = extendedFrame ? 255 : 8;
    const std::size_t at = extendedFrame ? 6 : 4;
    for (std::size_t i = 0; i < 4; ++i)
        t[at + i] = static_cast<std::uint8_t>(serial >> (24 - 8 * i));
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

// A getter called with index n, and how many indexes it takes: one of each kind of block.
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
    INDEXED(2, DET_GetDetSoftwareNum(n)),     INDEXED(5, TEM_GetNTCTemperature(n)),
    INDEXED(16, GetRelayCombineMask(4, n)),   INDEXED(32, CTRL_GetFailures(n)),
    INDEXED(2, DISP_GetLedPreAlarm(n)),       INDEXED(10, EXT_GetSerialNum(n)),
    INDEXED(10, EXT_GetActualFailures(n, 7)), INDEXED(8, EXT_GetSavedFailures(0, n)),
};

#undef INDEXED

} // namespace

class TestMq27Values : public QObject {
    Q_OBJECT

private slots:
    // A telegram of another size or command leaves the stored one as it was.
    void setDataArrayTakesOnlyTheExactSize_data() {
        QTest::addColumn<int>("command");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("status");
        QTest::newRow("command 1") << 1 << 19 << 0;
        QTest::newRow("command 2 one short") << 2 << 201 << -3;
        QTest::newRow("command 4 one long") << 4 << 55 << -3;
        QTest::newRow("command 5 in the size of 3") << 5 << 211 << -3;
        QTest::newRow("command 0") << 0 << 19 << -2;
        QTest::newRow("command 6") << 6 << 19 << -2;
    }
    void setDataArrayTakesOnlyTheExactSize() {
        QFETCH(int, command);
        QFETCH(int, size);
        QFETCH(int, status);
        ValueStore values;
        fillAll(values, 0x11);
        const auto c = static_cast<std::int16_t>(command);
        QCOMPARE(int(values.SetDataArray(Bytes(static_cast<std::size_t>(size), 0x22), c)), status);
        Bytes stored{1, 2, 3};
        QCOMPARE(int(values.GetDataArray(stored, c)), status == -2 ? -2 : 0);
        if (status == -2)
            QCOMPARE(stored, (Bytes{1, 2, 3}));
        else
            QCOMPARE(stored, filled(command, status == 0 ? 0x22 : 0x11));
    }

    void checkDataArrays() {
        ValueStore values;
        QCOMPARE(values.CheckDataArrays(0), 0); // five arrays of zeros share serial number 0
        QCOMPARE(values.CheckDataArrays(5), 1);

        storeAll(values, 4000000000u);
        QCOMPARE(values.CheckDataArrays(0), 0);
        QCOMPARE(values.CheckDataArrays(4000000000.0), 0);
        QCOMPARE(values.CheckDataArrays(4000000001.0), 1);
        QCOMPARE(values.GetSerialNum(), 4000000000.0);

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

    void numberTextsKeepTheirWidth() {
        ValueStore values;
        QCOMPARE(values.DET_GetDetParameterID(1), QStringLiteral("0000.000.000"));
        QCOMPARE(values.EXT_GetSoftwareNum(9), QStringLiteral("0000.00.000"));
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

    // Each shape a description takes: scope, bit, own words, trailing number.
    void descriptionsJoinTheirPieces() {
        ValueStore v;
        const auto said = [&v](auto) { return v.ValueDescription(); };
        QCOMPARE(said(v.GetRelayCombineMask(1, 5)), u"Relais 2 Bit 05: Relais Verknüpfungsmaske");
        QCOMPARE(said(v.EXT_GetActualFailures(9, 7)),
                 u"Löscheinschub 10: Bit 7: Störmeldung aktuell");
        QCOMPARE(said(v.REL_GetRelState(2)), u"Zustand Relais 3");
        QCOMPARE(said(v.CTRL_GetFailures(12)), u"Bit 12: Sammelstörung aktuell");
        QCOMPARE(said(v.DET_GetDetParameterID(1)), u"Detektor 2: Parametersatznummer");
        QCOMPARE(said(v.TEM_GetNTCTemperature(4)), u"NTC Fühler 5: Aktuelle Temperatur");
        QCOMPARE(v.ValueUnit(), u"°C");
    }

    // Both ends of an index range: one step outside is an error with 0 or "#" and the error
    // strings, the last index inside is none, on telegrams of 0xFF where a stray read shows.
    void indexRanges() {
        constexpr int kLowest = std::numeric_limits<std::int16_t>::min();
        ValueStore values;
        fillAll(values, 0xFF);
        for (const Indexed& getter : kIndexed) {
            const int last = getter.count - 1;
            for (const int n : {kLowest, -1, 0, last, last + 1}) {
                const QVariant result = getter.call(values, static_cast<std::int16_t>(n));
                const bool inside = n >= 0 && n <= last;
                const QString where = QStringLiteral("%1 at %2").arg(getter.text).arg(n);
                QVERIFY2((values.ValueDescription() == u"ERROR: Index out of range!") != inside,
                         qPrintable(where));
                if (inside) continue;
                QVERIFY2(values.ValueUnit() == u"#", qPrintable(where));
                if (result.typeId() == QMetaType::QString)
                    QVERIFY2(result.toString() == u"#", qPrintable(where));
                else
                    QVERIFY2(result.toDouble() == 0, qPrintable(where));
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestMq27Values)
#include "tst_valuestore.moc"
