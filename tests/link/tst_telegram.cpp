#include "link/checksum.h"
#include "link/telegram.h"
#include "support/testsupport.h"

#include <QTest>

using testsupport::bytes;

namespace {

const QDateTime kStampTime(QDate(2007, 7, 4), QTime(13, 5, 59));

// A stamped kind-10 telegram of command `command` with `dataBytes` data bytes.
Bytes stampedOwn(int command, int dataBytes) {
    Bytes data = bytes({0x0A, command, 0x00, 0x12, 0xD6, 0x87});
    data.resize(data.size() + static_cast<std::size_t>(dataBytes), 0x5A);
    return telegram::StampTelegram(telegram::MakeSendFrame(data, true).value(), kStampTime).value();
}

} // namespace

class TestTelegram : public QObject {
    Q_OBJECT

private slots:
    void workedFrames_data() {
        QTest::addColumn<Bytes>("data");
        QTest::addColumn<Bytes>("frame");
        QTest::newRow("search own family")
            << bytes({0x0A, 0x01, 0, 0, 0, 0})
            << bytes({0x02, 0x08, 0x0A, 0x01, 0, 0, 0, 0, 0x2C, 0x53, 0x00, 0x94});
        QTest::newRow("search second family")
            << bytes({0x07, 0x01, 0, 0, 0, 0})
            << bytes({0x02, 0x08, 0x07, 0x01, 0, 0, 0, 0, 0x62, 0x10, 0x00, 0x84});
        QTest::newRow("read 2, sum above 255")
            << bytes({0x0A, 0x02, 0, 0, 0, 0x01})
            << bytes({0x02, 0x08, 0x0A, 0x02, 0, 0, 0, 0x01, 0xD2, 0xA0, 0x01, 0x89});
    }
    void workedFrames() {
        QFETCH(Bytes, data);
        QFETCH(Bytes, frame);
        QCOMPARE(telegram::MakeSendFrame(data, true).value(), frame);
        QCOMPARE(checksum::CheckCRC(frame, 2, 9), 0);
        std::int32_t first = 0, last = 0;
        QCOMPARE(checksum::FindTelegram(frame, first, last), 0);
    }

    void shortAndExtendedForm() {
        const Bytes shortFrame = telegram::MakeSendFrame(Bytes(254, 1), false).value();
        QCOMPARE(shortFrame.size(), std::size_t(258));
        QCOMPARE(shortFrame[1], 254);
        const Bytes longFrame = telegram::MakeSendFrame(Bytes(255, 1), false).value();
        QCOMPARE(longFrame.size(), std::size_t(261));
        QCOMPARE(longFrame[1], 255);
        QCOMPARE(longFrame[2], 0x00);
        QCOMPARE(longFrame[3], 0xFF);
        QVERIFY(checksum::CheckSumOfBytes(longFrame));
        // A sum beyond two bytes abandons the frame.
        QVERIFY(!telegram::MakeSendFrame(Bytes(300, 0xFF), false).has_value());
    }

    void stampReplacesTheSumWithTheTime() {
        const Bytes frame = bytes({0x02, 0x08, 0x0A, 0x02, 0, 0, 0, 0x01, 0xD2, 0xA0, 0x01, 0x89});
        const Bytes stamped = telegram::StampTelegram(frame, kStampTime).value();
        QCOMPARE(stamped.size(), frame.size() + 7);
        QCOMPARE(Bytes(stamped.begin(), stamped.begin() + 10),
                 Bytes(frame.begin(), frame.begin() + 10));
        QCOMPARE(Bytes(stamped.begin() + 10, stamped.end() - 2), bytes({20, 7, 7, 4, 13, 5, 59}));
        QVERIFY(checksum::CheckSumOfBytes(stamped));
    }

    // No flip of a single bit in a stamped telegram passes all checks unnoticed, and none
    // makes the finder or the acceptance read outside the array.
    void everySingleBitFlipIsRefused() {
        const Bytes good = stampedOwn(2, 183);
        int refused = 0;
        for (std::size_t i = 0; i < good.size(); ++i) {
            for (int bit = 0; bit < 8; ++bit) {
                Bytes t = good;
                t[i] ^= static_cast<std::uint8_t>(1 << bit);
                std::int32_t first = 0, last = 0;
                checksum::FindTelegram(t, first, last);
                if (!telegram::AcceptStampedTelegram(t)) ++refused;
            }
        }
        QCOMPARE(refused, static_cast<int>(good.size()) * 8);
    }
};

QTEST_APPLESS_MAIN(TestTelegram)
#include "tst_telegram.moc"
