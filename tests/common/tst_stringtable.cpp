#include "common/stringtable.h"
#include "support/testsupport.h"

#include <QFile>
#include <QSet>
#include <QStringDecoder>
#include <QtTest>

#include <climits>

namespace {

constexpr int German = StringTable::German;
constexpr int English = StringTable::English;
constexpr int French = StringTable::French;
constexpr int Dutch = StringTable::Dutch;

QList<int> range(int first, int last) {
    QList<int> out;
    for (int i = first; i <= last; ++i)
        out.append(i);
    return out;
}

// Every index of the German table, plus the two rights lines 116 and 117.
QList<int> expectedIndices() {
    QList<int> out = range(0, 16) + range(18, 98) + range(100, 127);
    out += {250, 253, 255, 262, 263, 265};
    out += range(332, 336) + range(350, 352) + QList<int>{355, 356, 360, 361};
    out += range(365, 423);
    return out;
}

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
        116, // copyright line: year and organisation only
        414, // "Ohm", a unit
    };
    if (everywhere.contains(index)) return true;
    switch (language) {
    case English:
        return index == 57 || index == 401; // "Start", "Online"
    case French:
        return index == 108 || index == 126; // "Batterie", "Relais"
    case Dutch:
        return index == 57 || index == 126 || index == 401 || index == 423; // "Intern"
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
    void languageClamping_data();
    void languageClamping();
    void missingIndexGivesEmptyText_data();
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
    // German, byte for byte; the dot in the product names is U+00B7.
    row(German, 0, "ORVANIS SHEL\xC2\xB7LIX");
    row(German, 24,
        "SPOT\xC2\xB7"
        "FIND");
    row(German, 45, "TRUE\xC2\xB7LIX");
    row(German, 76, "Schließen");
    row(German, 100, "KOMPA Dateien (*.ko3)|*.ko3|");
    row(German, 101, "Alle Dateien (*.*)|*.*|");
    row(German, 104, "Datei existiert bereits. Überschreiben?");
    row(German, 250, "Luftstrom zu groß (statische Auswertung)");
    row(German, 350, "wechselt jetzt in den normalen Betriebsmodus.");
    row(German, 361, "Schalten Sie zuvor SPOT·FIND im Register Einstellungen ein.");
    row(German, 382, "Lösch-/Abschaltmodul gestört");
    row(German, 418, "Verbindungsaufbau...");
    row(German, 422, "Soll die Diagnosesoftware wirklich beendet werden?");
    row(German, 423, "Intern");

    row(English, 0, "ORVANIS SHEL·LIX");
    row(English, 14, "Smoke level");
    row(English, 15, "Fire alarm");
    row(English, 16, "Action alarm");
    row(English, 20, "Fault");
    row(English, 32, "Detector state");
    row(English, 104, "File already exists. Overwrite?");
    row(English, 105, "Data saved");
    row(English, 106, "Data Interface");
    row(English, 350, "now changes to normal operating mode.");
    row(English, 360, "Proceedings not possible at the moment.");
    row(English, 419, "File not found");
    row(English, 420, "PDF viewer not found");
    row(English, 421, "Internal buzzer is switched off !");
    row(English, 422, "Do you really want to terminate the diagnosis software ?");

    // The English fault list keeps its established wording, down to the trailing blank.
    row(English, 377, "Input voltage too low");
    row(English, 378, "Battery fault");
    row(English, 263, "Air flow init aborted");
    row(English, 379, "Airflow fault");
    row(English, 380, "System blocked");
    row(English, 381, "System isolated");
    row(English, 382, "Fault in exting.-/ shutdown module");
    row(English, 383, "Pressure loss");
    row(English, 384, "Localization error");
    row(English, 385, "Fan fault");
    row(English, 386, "Fault temperature measurement detector");
    row(English, 387, "Fault NTC temperature measurement ");
    row(English, 388, "Coms fault exting.-/ shutdown module");
    row(English, 389, "Coms fault network");
    row(English, 390, "Coms fault detector");
    row(English, 391, "Coms fault Fire Panel Bus");
    row(English, 392, "Fault smoke measurement detector");
    row(English, 393, "Fault program and memory detector");
    row(English, 394, "Fault program and memory");
    row(English, 332, "Detector module dusty");
    row(English, 253, "Air flow too low (statistic evaluation)");
    row(English, 262, "Air flow has declined (dynamic evaluation)");
    row(English, 250, "Air flow too high (statistic evaluation)");
    row(English, 255, "Air flow has risen (dynamic evaluation)");
    row(English, 395, "Line fault manual release");
    row(English, 396, "Too many exting.-/ shutdown modules");
    row(English, 397, "Mains fault");
    row(English, 398, "Detector fault");

    row(French, 0, "ORVANIS SHEL·LIX");
    row(French, 1, "Fichier");
    row(French, 7, "Langue");
    row(Dutch, 0, "ORVANIS SHEL·LIX");
    row(Dutch, 1, "Bestand");
    row(Dutch, 7, "Taal");
}

void TestStringTable::givenTexts() {
    QFETCH(int, language);
    QFETCH(int, index);
    QFETCH(QByteArray, utf8);
    QCOMPARE(StringTable::instance().text(language, index).toUtf8(), utf8);
}

void TestStringTable::everyIndexInEveryLanguage() {
    const StringTable& table = StringTable::instance();
    const QList<int> expected = expectedIndices();
    QCOMPARE(expected.size(), 203);
    QCOMPARE(table.indices(), expected);
    for (int index : expected) {
        for (int language = German; language <= Dutch; ++language) {
            const QString text = table.text(language, index);
            QVERIFY2(!text.trimmed().isEmpty(),
                     qPrintable(QStringLiteral("%1/%2 is empty").arg(language).arg(index)));
        }
    }
}

void TestStringTable::translationsDifferFromGerman() {
    const StringTable& table = StringTable::instance();
    QStringList problems;
    for (int index : table.indices()) {
        const QString german = table.text(German, index);
        for (int language = English; language <= Dutch; ++language) {
            const QString text = table.text(language, index);
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
        const QStringList german = table.text(German, index).split(u'|');
        QCOMPARE(german.size(), 3);
        for (int language = English; language <= Dutch; ++language) {
            const QStringList parts = table.text(language, index).split(u'|');
            QCOMPARE(parts.size(), german.size());
            QCOMPARE(parts[1], german[1]);
            QVERIFY(parts[2].isEmpty());
            QVERIFY(parts[0].endsWith(QStringLiteral(" (") + german[1] + u')'));
        }
    }
}

void TestStringTable::languageClamping_data() {
    QTest::addColumn<int>("language");
    QTest::addColumn<int>("clamped");
    QTest::addColumn<QString>("fileMenu");

    QTest::newRow("setting default 0") << 0 << German << QStringLiteral("Datei");
    QTest::newRow("German") << 1 << German << QStringLiteral("Datei");
    QTest::newRow("English") << 2 << English << QStringLiteral("File");
    QTest::newRow("French") << 3 << French << QStringLiteral("Fichier");
    QTest::newRow("Dutch") << 4 << Dutch << QStringLiteral("Bestand");
    QTest::newRow("5") << 5 << German << QStringLiteral("Datei");
    QTest::newRow("9") << 9 << German << QStringLiteral("Datei");
    QTest::newRow("-1") << -1 << German << QStringLiteral("Datei");
    QTest::newRow("1001") << 1001 << German << QStringLiteral("Datei");
    QTest::newRow("INT_MIN") << INT_MIN << German << QStringLiteral("Datei");
    QTest::newRow("INT_MAX") << INT_MAX << German << QStringLiteral("Datei");
}

void TestStringTable::languageClamping() {
    QFETCH(int, language);
    QFETCH(int, clamped);
    QFETCH(QString, fileMenu);
    QCOMPARE(StringTable::clampLanguage(language), clamped);
    QCOMPARE(StringTable::instance().text(language, 1), fileMenu);
}

void TestStringTable::missingIndexGivesEmptyText_data() {
    QTest::addColumn<int>("index");
    for (int index : {-1, 17, 99, 128, 249, 424, 999, 1000, 1001, 2001, INT_MIN, INT_MAX})
        QTest::addRow("%d", index) << index;
}

void TestStringTable::missingIndexGivesEmptyText() {
    QFETCH(int, index);
    for (int language = 0; language <= 5; ++language)
        QVERIFY(StringTable::instance().text(language, index).isEmpty());
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
    QCOMPARE(lines.size() - 1, expectedIndices().size());
}

QTEST_GUILESS_MAIN(TestStringTable)
#include "tst_stringtable.moc"
