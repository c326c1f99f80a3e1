#include "files/ko3format.h"
#include "support/testsupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using testsupport::bytes;

namespace {

std::array<Bytes, 5> sampleTelegrams() {
    std::array<Bytes, 5> telegrams;
    const std::size_t sizes[5] = {19, 202, 211, 54, 421};
    for (std::size_t k = 0; k < 5; ++k) {
        telegrams[k].resize(sizes[k]);
        for (std::size_t i = 0; i < sizes[k]; ++i)
            telegrams[k][i] = static_cast<std::uint8_t>((i * 7 + k * 31) & 0xFF);
    }
    return telegrams;
}

} // namespace

class TestKo3Format : public QObject {
    Q_OBJECT

private slots:
    void hexLine() {
        QCOMPARE(ko3::MakeHexLine(bytes({0x0A, 0xFF, 0x00})), QStringLiteral("&H0A &HFF &H00 "));
        QCOMPARE(ko3::MakeHexLine(bytes({1, 2})), QString());
        QCOMPARE(ko3::MakeHexLine({}), QString());
    }

    void roundTripThroughALine() {
        const auto telegrams = sampleTelegrams();
        const Bytes block = ko3::BuildSaveBlock(telegrams);
        const Bytes read = ko3::ParseHexLine(ko3::MakeHexLine(block));
        QCOMPARE(read, block);
        const ko3::SplitBlock split = ko3::SplitDeviceBlock(read);
        QVERIFY(!split.oldForm);
        QVERIFY(!split.truncated);
        QCOMPARE(split.telegrams.size(), std::size_t(5));
        for (std::size_t k = 0; k < 5; ++k)
            QCOMPARE(split.telegrams[k], telegrams[k]);
    }

    void lineLengthRounding_data() {
        QTest::addColumn<QString>("line");
        QTest::addColumn<Bytes>("expected");
        QTest::newRow("with final blank") << "&H01 &H02 " << bytes({1, 2});
        QTest::newRow("without final blank") << "&H01 &H02" << bytes({1, 2});
        QTest::newRow("a cut group") << "&H01 &H0" << bytes({1, 0});
        QTest::newRow("two stray characters") << "&H01 &H" << bytes({1});
        QTest::newRow("either case") << "&h0a &HFf " << bytes({10, 255});
        QTest::newRow("unreadable groups") << "&HZZ xxxx &H1Z " << bytes({0, 0, 1});
        QTest::newRow("empty") << "" << Bytes{};
    }
    void lineLengthRounding() {
        QFETCH(QString, line);
        QTEST(ko3::ParseHexLine(line), "expected");
    }

    void oldAndNewForm() {
        // An old file begins with the STX of its one telegram.
        const Bytes old = bytes({2, 8, 10, 1, 0, 0, 0, 5, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0});
        auto split = ko3::SplitDeviceBlock(old);
        QVERIFY(split.oldForm);
        QCOMPARE(split.telegrams.size(), std::size_t(1));
        QCOMPARE(split.telegrams[0], old);
        // Marker 0 and count 0 are read as the old form too.
        split = ko3::SplitDeviceBlock(bytes({0, 0, 7, 7}));
        QVERIFY(split.oldForm);
        QVERIFY(ko3::SplitDeviceBlock(bytes({0})).telegrams.empty());
    }

    void truncatedBlocksKeepWhatIsWhole() {
        const Bytes block = ko3::BuildSaveBlock(sampleTelegrams());
        const auto cutInTelegram3 =
            ko3::SplitDeviceBlock(Bytes(block.begin(), block.begin() + 300));
        QVERIFY(cutInTelegram3.truncated);
        QCOMPARE(cutInTelegram3.telegrams.size(), std::size_t(2));
        const auto cutInLengths = ko3::SplitDeviceBlock(Bytes(block.begin(), block.begin() + 5));
        QVERIFY(cutInLengths.truncated);
        QVERIFY(cutInLengths.telegrams.empty());
    }

    // Only the first line counts, its line end included up to the limit; what follows it is
    // never looked at. A longer first line is refused, not cut.
    void firstLineOfAFile_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<std::optional<QString>>("expected");
        const QByteArray longest(ko3::kMaxLineLength - 1, 'A');
        QTest::newRow("CRLF, then more")
            << QByteArray("&H01 \r\nrest") << std::optional(QStringLiteral("&H01 "));
        QTest::newRow("no line end")
            << QByteArray("&H02 ") << std::optional(QStringLiteral("&H02 "));
        QTest::newRow("empty") << QByteArray() << std::optional(QString());
        QTest::newRow("at the limit")
            << longest + "\nB" << std::optional(QString::fromLatin1(longest));
        QTest::newRow("past the limit") << longest + "AB" << std::optional<QString>();
    }
    void firstLineOfAFile() {
        QFETCH(QByteArray, content);
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.ko3"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        file.close();
        QTEST(ko3::ReadFirstLine(path), "expected");
    }

    void autoSaveName() {
        QCOMPARE(ko3::AutoSaveFileName(1234567, QDate(2007, 7, 4)),
                 QStringLiteral("ShelLix_1234567_20070704.ko3"));
        QCOMPARE(ko3::AutoSaveFileName(4294967295.0, QDate(2026, 11, 23)),
                 QStringLiteral("ShelLix_4294967295_20261123.ko3"));
    }
};

QTEST_APPLESS_MAIN(TestKo3Format)
#include "tst_ko3format.moc"
