#include "logger/dataobjects.h"
#include "values/valuestore.h"

#include "support/testsupport.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

#include <QRandomGenerator>
#include <QTest>

namespace {

template <class Number>
Number readBack(const QString& text) {
    const QByteArray latin = text.toLatin1();
    Number value{};
    std::from_chars(latin.constData(), latin.constData() + latin.size(), value);
    return value;
}

DataObject floatRow(float v) {
    return {QString(), 'S', v};
}
DataObject doubleRow(double v) {
    return {QString(), 'D', v};
}
DataObject intRow(std::int16_t v) {
    return {QString(), 'I', v};
}
DataObject textRow(const QString& v) {
    return {QString(), 'T', v};
}

} // namespace

Q_DECLARE_METATYPE(DataObject)

class TestDataObjects : public QObject {
    Q_OBJECT

private slots:
    // The list is fixed, what the device sends changes values, never rows; the letter a row
    // declares is the kind of value it carries.
    void rowsAreFixedAndTypedAsDeclared() {
        ValueStore empty;
        ValueStore filled;
        QRandomGenerator random = testsupport::seededGenerator();
        int command = 1;
        for (int size : {19, 202, 211, 54, 421}) {
            Bytes t(static_cast<std::size_t>(size));
            for (auto& b : t)
                b = static_cast<std::uint8_t>(random.bounded(256));
            filled.SetDataArray(t, static_cast<std::int16_t>(command++));
        }
        const std::vector<DataObject> a = CollectDataObjects(empty);
        const std::vector<DataObject> b = CollectDataObjects(filled);
        QCOMPARE(a.size(), b.size());
        constexpr char letters[] = {'S', 'I', 'D', 'T'}; // in the order of the variant
        for (std::size_t i = 0; i < b.size(); ++i) {
            QCOMPARE(a[i].text, b[i].text);
            QVERIFY2(!b[i].text.contains(QLatin1String("ERROR")), qPrintable(b[i].text));
            QVERIFY2(b[i].type == letters[b[i].value.index()], qPrintable(b[i].text));
        }
    }

    void valuesComeFromTheirGetters() {
        ValueStore values;
        Bytes first(19, 0);
        first[4] = 0xFF, first[5] = 0xFF, first[6] = 0xFF, first[7] = 0xFF;
        values.SetDataArray(first, 1);
        Bytes second(202, 0);
        second[99 + 36 + 21] = 85;
        values.SetDataArray(second, 2);
        Bytes third(211, 0);
        third[37] = 0xFF, third[38] = 0xFF, third[39] = 0xFF, third[40] = 0xFF;
        third[62] = 0x80;
        values.SetDataArray(third, 3);

        const std::vector<DataObject> rows = CollectDataObjects(values);
        QCOMPARE(FormatValueC(rows[0]), QStringLiteral("4294967295"));
        QCOMPARE(FormatValueC(rows[86]), QStringLiteral("85"));
        // A counter keeps every digit of its 32 bits.
        QCOMPARE(rows[102 + 7].text, QStringLiteral("Anzahl Schreibzyklen Parametersp."));
        QCOMPARE(FormatValueC(rows[102 + 7]), QStringLiteral("4294967295"));
        QCOMPARE(FormatValueC(rows[133]), QStringLiteral("0"));
        QCOMPARE(FormatValueC(rows[134]), QStringLiteral("1"));
        QCOMPARE(FormatValueC(rows[56 + 1]), QStringLiteral("0000.00.000"));
    }

    void formatValueC_data() {
        QTest::addColumn<DataObject>("row");
        QTest::addColumn<QString>("text");
        const float inf = std::numeric_limits<float>::infinity();
        QTest::newRow("float tenth") << floatRow(0.1f) << "0.1";
        QTest::newRow("float negative") << floatRow(-100.0f) << "-100";
        QTest::newRow("float largest") << floatRow(std::numeric_limits<float>::max())
                                       << "340282346638528859811704183484516925440";
        QTest::newRow("float inf") << floatRow(inf) << "inf";
        QTest::newRow("float nan") << floatRow(std::numeric_limits<float>::quiet_NaN()) << "nan";
        QTest::newRow("float -nan") << floatRow(-std::numeric_limits<float>::quiet_NaN()) << "nan";
        QTest::newRow("int lowest") << intRow(-32768) << "-32768";
        QTest::newRow("double serial") << doubleRow(4294967295.0) << "4294967295";
        QTest::newRow("double tenth") << doubleRow(0.1) << "0.1";
        QTest::newRow("double nan") << doubleRow(std::nan("")) << "nan";
        QTest::newRow("text with comma") << textRow(QStringLiteral("0,5")) << "0,5";
    }
    void formatValueC() {
        QFETCH(DataObject, row);
        QTEST(FormatValueC(row), "text");
    }

    // The shortest text must still read back to the very same number.
    void formatValueCReadsBack() {
        QRandomGenerator random = testsupport::seededGenerator();
        for (int i = 0; i < 2000; ++i) {
            const float f = std::bit_cast<float>(random.generate() & 0x7F7FFFFFu);
            QCOMPARE(readBack<float>(FormatValueC(floatRow(f))), f);
            const double d = std::bit_cast<double>(random.generate64() & 0x7FEFFFFFFFFFFFFFu);
            QCOMPARE(readBack<double>(FormatValueC(doubleRow(d))), d);
        }
    }
};

QTEST_APPLESS_MAIN(TestDataObjects)
#include "tst_dataobjects.moc"
