#include "common/numberformat.h"

#include <limits>

#include <QLocale>
#include <QtTest>

// A plain number is a whole number in full and anything else in its shortest exact form: a
// resistor of 100000 Ohm typed by the user must read back as the same text, or its write is
// never seen as taken.
class TestNumberFormat : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wholeNumbersInFull() {
        QCOMPARE(numberformat::plainC(100000.0), QStringLiteral("100000"));
        QCOMPARE(numberformat::plainC(50000000.0f), QStringLiteral("50000000"));
        QCOMPARE(numberformat::plainC(-3400.0), QStringLiteral("-3400"));
        QCOMPARE(numberformat::plain(10000000.0, QLocale(QLocale::German)),
                 QStringLiteral("10000000"));
        QCOMPARE(numberformat::plainC(std::numeric_limits<float>::max()),
                 QStringLiteral("340282346638528859811704183484516925440"));
        QCOMPARE(numberformat::plainC(1e22), QStringLiteral("10000000000000000000000"));
    }

    void fractionsShortestAndExtremesReadable() {
        QCOMPARE(numberformat::plainC(0.1f), QStringLiteral("0.1"));
        QCOMPARE(numberformat::plain(2.5, QLocale(QLocale::German)), QStringLiteral("2,5"));
        QCOMPARE(numberformat::plainC(1.5e-30), QStringLiteral("1.5e-30"));
        QCOMPARE(numberformat::plainC(std::numeric_limits<double>::quiet_NaN()),
                 QStringLiteral("nan"));
    }
};

QTEST_GUILESS_MAIN(TestNumberFormat)
#include "tst_numberformat.moc"
