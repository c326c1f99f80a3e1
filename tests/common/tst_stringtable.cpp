#include "common/stringtable.h"
#include "support/testsupport.h"

#include <QFile>
#include <QSet>
#include <QStringDecoder>
#include <QtTest>

#include <climits>

namespace {

constexpr int German = 1;
constexpr int English = 2;
constexpr int French = 3;
constexpr int Dutch = 4;

// Texts that are the same word in the other language: product names, symbols,
// abbreviations and units, and a few words the languages share.
bool mayEqualGerman(int index, int language) {
    static const QSet<int> everywhere = {
        0,   // product name
        8,   // help menu title "?"
        24,  // SPOT·FIND, a feature name
        29,  // "Max."
        30,  // "Min."
        33,  // "Max."
        34,  // "Min."
        45,  // TRUE·LIX, a feature name
        71,  // "OK"
        107, // "COM", the port name
        414, // "Ohm", a unit
        702, // "1 min", a time span
        703, // "10 min"
    };
    if (everywhere.contains(index)) return true;
    switch (language) {
    case English:
        return index == 57 || index == 401 || index == 500 || // "Start", "Online", "Logger"
               index == 704;                                  // "1 h"
    case French:
        return index == 108 || index == 126 || index == 704; // "Batterie", "Relais", "1 h"
    case Dutch:
        return index == 57 || index == 126 || index == 401 || index == 423 || // "Intern"
               index == 500 || index == 705;                                  // "Alles"
    default:
        return false;
    }
}

QByteArray sourceTable() {
    QFile file(testsupport::sourcePath(QStringLiteral("src/common/strings.tsv")));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.readAll();
}

} // namespace

class TestStringTable : public QObject {
    Q_OBJECT

private slots:
    void givenTexts_data();
    void givenTexts();
    void everyIndexInEveryLanguage();
    void translationsDifferFromGerman();
    void fileFiltersKeepTheirPatterns();
    void languageClamping();
    void missingIndexGivesEmptyText();
    void fileLayout();
};

void TestStringTable::givenTexts_data() {
    QTest::addColumn<int>("language");
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("utf8");

    const auto row = [](int language, int index, const char* text) {
        QTest::addRow("%d/%d", language, index) << language << index << QByteArray(text);
    };
    // Byte for byte: the dot in the product names is U+00B7, umlauts and ß stay whole, a
    // trailing blank is kept, and each language reads its own column.
    row(German, 0, "ORVANIS SHEL\xC2\xB7LIX");
    row(German, 76, "Schließen");
    row(German, 104, "Datei existiert bereits. Überschreiben?");
    row(English, 387, "Fault NTC temperature measurement ");
    row(English, 104, "File already exists. Overwrite?");
    row(French, 1, "Fichier");
    row(Dutch, 7, "Taal");
}

void TestStringTable::givenTexts() {
    QFETCH(int, language);
    QFETCH(int, index);
    QFETCH(QByteArray, utf8);
    QCOMPARE(StringTable::instance().text(languageFromNumber(language), index).toUtf8(), utf8);
}

// Every text the table holds, from the first to the last of the tool's own, in all four
// languages.
void TestStringTable::everyIndexInEveryLanguage() {
    const StringTable& table = StringTable::instance();
    const QList<int> indices = table.indices();
    QVERIFY(indices.contains(0) && indices.contains(116) && indices.contains(802));
    for (int index : indices) {
        for (int language = German; language <= Dutch; ++language) {
            const QString text = table.text(languageFromNumber(language), index);
            QVERIFY2(!text.trimmed().isEmpty(),
                     qPrintable(QStringLiteral("%1/%2 is empty").arg(language).arg(index)));
        }
    }
}

void TestStringTable::translationsDifferFromGerman() {
    const StringTable& table = StringTable::instance();
    QStringList problems;
    for (int index : table.indices()) {
        const QString german = table.text(languageFromNumber(German), index);
        for (int language = English; language <= Dutch; ++language) {
            const QString text = table.text(languageFromNumber(language), index);
            if ((text == german) != mayEqualGerman(index, language))
                problems << QStringLiteral("%1/%2 \"%3\"").arg(language).arg(index).arg(text);
        }
    }
    QVERIFY2(problems.isEmpty(),
             qPrintable(QStringLiteral("equal to German against the allow list: ") +
                        problems.join(QStringLiteral(", "))));
}

void TestStringTable::fileFiltersKeepTheirPatterns() {
    const StringTable& table = StringTable::instance();
    for (int index : {100, 101}) {
        const QStringList german = table.text(languageFromNumber(German), index).split(u'|');
        QCOMPARE(german.size(), 3);
        for (int language = English; language <= Dutch; ++language) {
            const QStringList parts = table.text(languageFromNumber(language), index).split(u'|');
            QCOMPARE(parts.size(), german.size());
            QCOMPARE(parts[1], german[1]);
            QVERIFY(parts[2].isEmpty());
            QVERIFY(parts[0].endsWith(QStringLiteral(" (") + german[1] + u')'));
        }
    }
}

void TestStringTable::languageClamping() {
    const StringTable& table = StringTable::instance();
    for (int language = German; language <= Dutch; ++language)
        QCOMPARE(languageNumber(languageFromNumber(language)), language);
    for (int language : {0, 5, -1, 1001, INT_MIN, INT_MAX}) {
        QCOMPARE(languageFromNumber(language), Language::German);
        QCOMPARE(table.text(languageFromNumber(language), 1), QStringLiteral("Datei"));
    }
}

// Below, between and beyond the numbers the table holds, and at the resource number limits.
void TestStringTable::missingIndexGivesEmptyText() {
    for (int index : {-1, 17, 99, 424, 999, 1000, 1001, INT_MIN, INT_MAX}) {
        for (int language = 0; language <= 5; ++language)
            QVERIFY2(StringTable::instance().text(languageFromNumber(language), index).isEmpty(),
                     qPrintable(QStringLiteral("%1/%2").arg(language).arg(index)));
    }
}

void TestStringTable::fileLayout() {
    const QByteArray data = sourceTable();
    QVERIFY(!data.isEmpty());
    QVERIFY2(!data.startsWith("\xEF\xBB\xBF"), "no byte order mark");
    QVERIFY2(!data.contains('\r'), "LF line ends only");
    QVERIFY(data.endsWith('\n'));

    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(data);
    QVERIFY2(!decoder.hasError(), "valid UTF-8");

    QStringList lines = text.split(u'\n');
    lines.removeLast(); // after the final line end
    QCOMPARE(lines.first(), QStringLiteral("index\tde\ten\tfr\tnl"));

    int previous = -1;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QStringList fields = lines[i].split(u'\t');
        QVERIFY2(fields.size() == 5, qPrintable(QStringLiteral("line %1").arg(i + 1)));
        bool isNumber = false;
        const int index = fields[0].toInt(&isNumber);
        QVERIFY2(isNumber && QString::number(index) == fields[0],
                 qPrintable(QStringLiteral("line %1 index").arg(i + 1)));
        QVERIFY2(index > previous, qPrintable(QStringLiteral("line %1 order").arg(i + 1)));
        previous = index;
    }
    QCOMPARE(lines.size() - 1, StringTable::instance().indices().size());
}

QTEST_GUILESS_MAIN(TestStringTable)
#include "tst_stringtable.moc"
