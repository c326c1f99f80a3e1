#include "common/stringtable.h"

#include <QtTest>

#include <climits>

namespace {

constexpr int German = 1;
constexpr int English = 2;
constexpr int French = 3;
constexpr int Dutch = 4;

QString text(int language, int index) {
    return StringTable::instance().text(languageFromNumber(language), index);
}

} // namespace

class TestStringTable : public QObject {
    Q_OBJECT

private slots:
    void givenTexts_data() {
        QTest::addColumn<int>("language");
        QTest::addColumn<int>("index");
        QTest::addColumn<QByteArray>("utf8");
        const auto row = [](int language, int index, const char* text) {
            QTest::addRow("%d/%d", language, index) << language << index << QByteArray(text);
        };
        // Byte for byte: the dot in the product names is U+00B7, umlauts and ß stay whole, a
        // trailing blank is kept, and each language reads its own column.
        row(German, 0, "ORVANIS SHEL\xC2\xB7LIX");
        row(German, 104, "Datei existiert bereits. Überschreiben?");
        row(English, 387, "Fault NTC temperature measurement ");
        row(French, 1, "Fichier");
        row(Dutch, 7, "Taal");
    }
    void givenTexts() {
        QFETCH(int, language);
        QFETCH(int, index);
        QTEST(text(language, index).toUtf8(), "utf8");
    }

    // Every text the table holds, from the first to the last of the tool's own, in all four
    // languages.
    void everyIndexInEveryLanguage() {
        const QList<int> indices = StringTable::instance().indices();
        QVERIFY(indices.contains(0) && indices.contains(116) && indices.contains(802));
        for (int index : indices)
            for (int language = German; language <= Dutch; ++language)
                QVERIFY2(!text(language, index).trimmed().isEmpty(),
                         qPrintable(QStringLiteral("%1/%2 is empty").arg(language).arg(index)));
    }

    // The file dialogs read the pattern behind the bar; only the text before it is translated.
    void fileFiltersKeepTheirPatterns() {
        for (int index : {100, 101}) {
            const QStringList german = text(German, index).split(u'|');
            QCOMPARE(german.size(), 3);
            for (int language = English; language <= Dutch; ++language) {
                const QStringList parts = text(language, index).split(u'|');
                QCOMPARE(parts.size(), german.size());
                QCOMPARE(parts[1], german[1]);
                QVERIFY(parts[0].endsWith(QStringLiteral(" (") + german[1] + u')'));
            }
        }
    }

    // A language number outside 1 to 4 reads German; an index the table lacks, nothing.
    void outsideTheTable() {
        for (int language : {0, 5, -1, INT_MIN, INT_MAX})
            QCOMPARE(text(language, 1), QStringLiteral("Datei"));
        for (int index : {-1, 17, 424, 1000, INT_MAX})
            QVERIFY2(text(English, index).isEmpty(), qPrintable(QString::number(index)));
    }
};

QTEST_GUILESS_MAIN(TestStringTable)
#include "tst_stringtable.moc"
