#include "values/conversions.h"

#include <bit>
#include <cmath>
#include <limits>

#include <QTest>

namespace {

struct Four {
    std::uint8_t b1, b2, b3, b4;
};

Four bigEndian(std::uint32_t v) {
    return {static_cast<std::uint8_t>(v >> 24), static_cast<std::uint8_t>(v >> 16),
            static_cast<std::uint8_t>(v >> 8), static_cast<std::uint8_t>(v)};
}

float decodeFloat(std::uint32_t bits) {
    const Four f = bigEndian(bits);
    return Byte2Float(f.b1, f.b2, f.b3, f.b4);
}

} // namespace

class TestConversions : public QObject {
    Q_OBJECT

private slots:
    void integersFromBytes_data() {
        QTest::addColumn<QString>("conversion");
        QTest::addColumn<uint>("bits");
        QTest::addColumn<double>("expected");
        const QString i = QStringLiteral("Byte2Int"), u = QStringLiteral("Byte2UInt"),
                      s = QStringLiteral("Byte2SByte"), l = QStringLiteral("Byte2ULong");
        QTest::newRow("int lowest") << i << 0x8000u << -32768.0;
        QTest::newRow("int minus one") << i << 0xFFFFu << -1.0;
        QTest::newRow("int highest") << i << 0x7FFFu << 32767.0;
        QTest::newRow("uint highest") << u << 0xFFFFu << 65535.0;
        QTest::newRow("uint high byte first") << u << 0x1234u << 4660.0;
        QTest::newRow("sbyte minus one") << s << 0xFFu << -1.0;
        QTest::newRow("sbyte lowest") << s << 0x80u << -128.0;
        QTest::newRow("ulong highest byte first") << l << 0x01020304u << 16909060.0;
    }
    void integersFromBytes() {
        QFETCH(QString, conversion);
        QFETCH(uint, bits);
        const Four f = bigEndian(bits);
        double got = 0;
        if (conversion == QLatin1String("Byte2Int")) got = Byte2Int(f.b3, f.b4);
        if (conversion == QLatin1String("Byte2UInt")) got = Byte2UInt(f.b3, f.b4);
        if (conversion == QLatin1String("Byte2SByte")) got = Byte2SByte(f.b4);
        if (conversion == QLatin1String("Byte2ULong")) got = Byte2ULong(f.b1, f.b2, f.b3, f.b4);
        QTEST(got, "expected");
    }

    void floatFromBytes_data() {
        QTest::addColumn<uint>("bits");
        QTest::addColumn<float>("expected");
        QTest::newRow("zero") << 0x00000000u << 0.0f;
        // No denormals: exponent field 0 still has the leading 1.
        QTest::newRow("negative zero pattern") << 0x80000000u << -std::ldexp(1.0f, -127);
        QTest::newRow("lowest pattern") << 0x00000001u << std::ldexp(1.0f, -127);
        QTest::newRow("exponent 0, top fraction") << 0x00400000u << std::ldexp(1.5f, -127);
        QTest::newRow("infinity") << 0x7F800000u << std::numeric_limits<float>::infinity();
        QTest::newRow("minus infinity") << 0xFF800000u << -std::numeric_limits<float>::infinity();
        const float nan = std::numeric_limits<float>::quiet_NaN();
        QTest::newRow("quiet NaN") << 0x7FC00000u << nan;
        QTest::newRow("signalling NaN") << 0x7F800001u << nan;
        QTest::newRow("all ones") << 0xFFFFFFFFu << nan;
    }
    void floatFromBytes() {
        QFETCH(uint, bits);
        QFETCH(float, expected);
        const float got = decodeFloat(bits);
        if (std::isnan(expected))
            QVERIFY(std::isnan(got));
        else
            QCOMPARE(std::bit_cast<std::uint32_t>(got), std::bit_cast<std::uint32_t>(expected));
    }

    void floatRoundTripForEveryNormalExponent() {
        const std::uint32_t fractions[] = {0, 1, 0x400000, 0x2AAAAA, 0x7FFFFF};
        for (std::uint32_t sign : {0u, 0x80000000u})
            for (std::uint32_t exponent = 1; exponent <= 254; ++exponent)
                for (std::uint32_t fraction : fractions) {
                    const std::uint32_t bits = sign | exponent << 23 | fraction;
                    const float value = decodeFloat(bits);
                    QCOMPARE(std::bit_cast<std::uint32_t>(value), bits);
                    Four f{};
                    QCOMPARE(Single2Byte(value, f.b1, f.b2, f.b3, f.b4), 0);
                    QCOMPARE(Byte2Float(f.b1, f.b2, f.b3, f.b4), value);
                }
    }

    void hexAndBitTexts() {
        QCOMPARE(IntHexStr(0x0A, 0xFF), QStringLiteral("0AFF"));
        QCOMPARE(LongHexStr(0x00, 0x1B, 0xC0, 0x05), QStringLiteral("001BC005"));
        QCOMPARE(Byte2Bit16(0xA5, 0x0F, QStringLiteral(" ")), QStringLiteral("10100101 00001111"));
    }

    // Refused values leave the 0xEE the outputs start with; a signed byte is the low one.
    void integersToBytes_data() {
        QTest::addColumn<bool>("signedByte");
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("bytes"); // high byte, low byte
        QTest::newRow("256") << false << 256 << 0 << 0x0100;
        QTest::newRow("highest") << false << 65535 << 0 << 0xFFFF;
        QTest::newRow("one above") << false << 65536 << -2 << 0xEEEE;
        QTest::newRow("lowest int") << false << std::numeric_limits<int>::min() << -2 << 0xEEEE;
        QTest::newRow("signed minus one") << true << -1 << 0 << 0xEEFF;
        QTest::newRow("signed highest") << true << 127 << 0 << 0xEE7F;
        QTest::newRow("signed 128") << true << 128 << -2 << 0xEEEE;
        QTest::newRow("signed -129") << true << -129 << -2 << 0xEEEE;
    }
    void integersToBytes() {
        QFETCH(bool, signedByte);
        QFETCH(int, value);
        std::uint8_t high = 0xEE, low = 0xEE;
        QTEST(int(signedByte ? SByte2Byte(static_cast<std::int16_t>(value), low)
                             : UInt2Byte(value, high, low)),
              "status");
        QTEST(high << 8 | low, "bytes");
    }

    void ulongFromText_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("status");
        QTest::addColumn<uint>("value");
        QTest::newRow("highest") << "4294967295" << 0 << 0xFFFFFFFFu;
        QTest::newRow("one above") << "4294967296" << -2 << 0xEEEEEEEEu;
        QTest::newRow("empty") << "" << -2 << 0xEEEEEEEEu;
        QTest::newRow("digits then letter") << "12a" << -2 << 0xEEEEEEEEu;
        QTest::newRow("blanks around") << " 12 " << 0 << 12u;
        QTest::newRow("plus sign") << "+305419896" << 0 << 0x12345678u;
        QTest::newRow("leading zeros") << "0004294967295" << 0 << 0xFFFFFFFFu;
        QTest::newRow("negative") << "-1" << -2 << 0xEEEEEEEEu;
        QTest::newRow("negative zero") << "-0" << 0 << 0u;
        // The byte-wise integer divisions drop a fraction.
        QTest::newRow("fraction cut off") << "12.7" << 0 << 12u;
        QTest::newRow("fraction only") << ".5" << 0 << 0u;
        QTest::newRow("beyond the top by a fraction") << "4294967295.5" << -2 << 0xEEEEEEEEu;
        QTest::newRow("top with zero fraction") << "4294967295.000" << 0 << 0xFFFFFFFFu;
        QTest::newRow("exponent") << "1e3" << -2 << 0xEEEEEEEEu;
    }
    void ulongFromText() {
        QFETCH(QString, text);
        Four f{0xEE, 0xEE, 0xEE, 0xEE};
        QTEST(int(ULong2Byte(text, f.b1, f.b2, f.b3, f.b4)), "status");
        QTEST(uint(f.b1) << 24 | uint(f.b2) << 16 | uint(f.b3) << 8 | f.b4, "value");
    }
};

QTEST_APPLESS_MAIN(TestConversions)
#include "tst_conversions.moc"
