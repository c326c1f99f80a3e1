#include "link/checksum.h"
#include "link/telegram.h"
#include "support/testsupport.h"

#include <QTest>

using testsupport::bytes;
using testsupport::concat;
using testsupport::frameOf;

namespace {

// A frame of `kind` and `total` bytes with a right sum (no CRC: the finder does not check
// it), in the short form or, with `extended`, behind the four-byte header.
Bytes summedFrame(int kind, int total, bool extended = false) {
    Bytes f(static_cast<std::size_t>(total), 0);
    f[0] = 2;
    f[1] = static_cast<std::uint8_t>(extended ? 255 : total - 4);
    if (extended) {
        f[2] = static_cast<std::uint8_t>((total - 6) / 256);
        f[3] = static_cast<std::uint8_t>((total - 6) % 256);
    }
    f[extended ? 4 : 2] = static_cast<std::uint8_t>(kind);
    checksum::AddSumOfBytes(f);
    return f;
}

} // namespace

class TestChecksum : public QObject {
    Q_OBJECT

private slots:
    // The CRC's check value over "123456789"; a wrong CRC is left to the telegram test, which
    // flips every bit of a telegram.
    void crcCheckValue() {
        Bytes digits;
        for (char c : QByteArrayLiteral("123456789"))
            digits.push_back(static_cast<std::uint8_t>(c));
        digits.resize(11); // room for the CRC behind the nine characters
        QCOMPARE(checksum::AddCRC(digits, 0, 10), 0);
        QCOMPARE(digits[9], 0x31);
        QCOMPARE(digits[10], 0xC3);
        QCOMPARE(checksum::CheckCRC(digits, 0, 10), 0);
    }

    void crcOutsideTheArrayFails() {
        Bytes f = bytes({1, 2, 3});
        QCOMPARE(checksum::CheckCRC(f, -1, 2), -1);
        QCOMPARE(checksum::AddCRC(f, 0, 5), -1);
        QCOMPARE(f, bytes({1, 2, 3}));
    }

    void sums() {
        QVERIFY(!checksum::CheckSumOfBytes(bytes({2, 0, 2})));
        QVERIFY(checksum::CheckSumOfBytes(bytes({2, 0, 0, 2})));
        QVERIFY(!checksum::CheckSumOfBytes(bytes({2, 0, 0, 3})));
        Bytes small = bytes({7, 9});
        QVERIFY(checksum::AddSumOfBytes(small));
        QCOMPARE(small, bytes({7, 9}));
    }

    void finderShortBuffers() {
        std::int32_t first = -7, last = -7;
        QCOMPARE(checksum::FindTelegram({}, first, last), -1);
        QCOMPARE(checksum::FindTelegram(bytes({2, 0, 2}), first, last), -1);
        // The zero command is complete and summed right, but a sum byte is no kind.
        QCOMPARE(checksum::FindTelegram(telegram::ZeroCommand(), first, last), -2);
        QCOMPARE(first, -7);
        QCOMPARE(last, -7);
    }

    void finderPicksTheNewestCompleteFrame() {
        const Bytes older = frameOf(bytes({0x0A, 0x01, 0, 0, 0, 0}));
        const Bytes newer = frameOf(bytes({0x0A, 0x02, 0, 0, 0, 1}));
        std::int32_t first = 0, last = 0;
        const Bytes two = concat({older, newer});
        QCOMPARE(checksum::FindTelegram(two, first, last), 12);
        QCOMPARE(first, 12);
        QCOMPARE(last, 23);

        const Bytes withTail = concat({older, bytes({2, 8, 0x0A, 1})});
        QCOMPARE(checksum::FindTelegram(withTail, first, last), 0);
        QCOMPARE(last, 11);

        const Bytes noisy = concat({bytes({0xFF, 2, 2, 0x55}), newer, bytes({0, 2})});
        QCOMPARE(checksum::FindTelegram(noisy, first, last), 4);
    }

    void finderKindAndLengthTable_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("total");
        QTest::addColumn<bool>("extended");
        QTest::addColumn<bool>("found");
        QTest::newRow("kind 1, 52") << 1 << 52 << false << true;
        QTest::newRow("kind 1, 53") << 1 << 53 << false << false;
        QTest::newRow("kind 10, 11") << 10 << 11 << false << false;
        QTest::newRow("kind 7, 12") << 7 << 12 << false << true;
        QTest::newRow("kind 3") << 3 << 20 << false << false;
        QTest::newRow("kind 11") << 11 << 20 << false << false;
        QTest::newRow("kind 6, 275, extended") << 6 << 275 << true << true;
        QTest::newRow("kind 8, 297, extended") << 8 << 297 << true << true;
        QTest::newRow("kind 9, 296, extended") << 9 << 296 << true << false;
        QTest::newRow("kind 12, 279, extended") << 12 << 279 << true << true;
        QTest::newRow("kind 10, 414, extended") << 10 << 414 << true << true;
    }
    void finderKindAndLengthTable() {
        QFETCH(int, kind);
        QFETCH(int, total);
        QFETCH(bool, extended);
        QFETCH(bool, found);
        std::int32_t first = 0, last = 0;
        QCOMPARE(checksum::FindTelegram(summedFrame(kind, total, extended), first, last) == 0,
                 found);
    }

    void finderSecondFamilyLengthRule() {
        // LEN says 173, 171 payload bytes follow: total 175 bytes.
        Bytes f = summedFrame(2, 175);
        f[1] = 173;
        QVERIFY(checksum::AddSumOfBytes(f));
        std::int32_t first = 0, last = 0;
        QCOMPARE(checksum::FindTelegram(f, first, last), 0);
        QCOMPARE(last, 174);
        // Two bytes of noise in front: the rule needs a buffer of exactly 175 bytes.
        const Bytes noisy = concat({bytes({0x11, 0x22}), f});
        QCOMPARE(checksum::FindTelegram(noisy, first, last), -2);
    }
};

QTEST_APPLESS_MAIN(TestChecksum)
#include "tst_checksum.moc"
