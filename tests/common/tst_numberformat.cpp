#include "common/colors.h"
#include "common/elementdecl.h"
#include "common/fieldcheck.h"
#include "common/formmodel.h"
#include "common/numberformat.h"

#include <limits>

#include <QLocale>
#include <QtTest>

#define FIELD_ELEMENTS(ONE, MANY, MORE) ONE(txtValue, Text)
MQ27_DECLARE_FORM(frmField, FIELD_ELEMENTS)

// A plain number is a whole number in full and anything else in its shortest exact form: a
// resistor of 100000 Ohm typed by the user must read back as the same text, or its write is
// never seen as taken.
class TestNumberFormat : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wholeNumbersInFull() {
        QCOMPARE(numberformat::plainC(100000.0), QStringLiteral("100000"));
        QCOMPARE(numberformat::plainC(-3400.0), QStringLiteral("-3400"));
        QCOMPARE(numberformat::plain(10000000.0, QLocale(QLocale::German)),
                 QStringLiteral("10000000"));
        QCOMPARE(numberformat::plainC(std::numeric_limits<float>::max()),
                 QStringLiteral("340282346638528859811704183484516925440"));
    }

    void fractionsShortestAndExtremesReadable() {
        QCOMPARE(numberformat::plainC(0.1f), QStringLiteral("0.1"));
        QCOMPARE(numberformat::plain(2.5, QLocale(QLocale::German)), QStringLiteral("2,5"));
        QCOMPARE(numberformat::plainC(1.5e-30), QStringLiteral("1.5e-30"));
        QCOMPARE(numberformat::plainC(std::numeric_limits<double>::quiet_NaN()),
                 QStringLiteral("nan"));
    }

    // 0.125 is exact in binary: a true half, away from zero.
    void fixedRoundsHalvesUp() {
        QCOMPARE(numberformat::fixed(0.125, 2, QLocale::c()), QStringLiteral("0.13"));
        QCOMPARE(numberformat::fixed(-0.125, 2, QLocale::c()), QStringLiteral("-0.13"));
        QCOMPARE(numberformat::fixed(9.96, 1, QLocale(QLocale::German)), QStringLiteral("10,0"));
    }

    // A good field is written back in its normal form; a bad one turns yellow and keeps the
    // user's text.
    void checkTextInput_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("minimum");
        QTest::addColumn<double>("maximum");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<QString>("shown"); // empty: bad, the text stays
        QTest::newRow("comma") << "1,5" << 0.0 << 10.0 << 1 << "1.5";
        QTest::newRow("two commas") << "1,5,2" << 0.0 << 10.0 << 1 << "";
        QTest::newRow("empty") << "" << 0.0 << 10.0 << 1 << "";
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
        Form field(frmField::kName, frmField::kElements);
        field.setCaption(frmField::txtValue, text);
        const bool bad =
            CheckTextInput(field, frmField::txtValue, minimum, maximum, decimals, QLocale::c());
        QCOMPARE(bad, shown.isEmpty());
        QCOMPARE(field.caption(frmField::txtValue), bad ? text : shown);
        QCOMPARE(field.backColor(frmField::txtValue),
                 bad ? colors::kYellow : colors::kWindowBackground);
    }
};

QTEST_GUILESS_MAIN(TestNumberFormat)
#include "tst_numberformat.moc"
