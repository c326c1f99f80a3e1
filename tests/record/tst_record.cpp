#include "display/mainview_elements.h"
#include "record/protocol.h"
#include "record/record_elements.h"
#include "record/recordlayout.h"
#include "shell/languages.h"
#include "shell/program.h"
#include "support/mainviewrig.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using record::FormatColumn;

QByteArray golden(const QString& name) {
    QFile file(testsupport::sourcePath(QStringLiteral("tests/record/golden/") + name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.readAll();
}

// The record of a profile in a language, built as the record window builds it.
QString recordOf(MainViewRig& rig, int language, const QString& comment1, const QString& comment2) {
    rig.app->languages().SwitchToLanguage(language);
    Protocol& protocol = rig.app->protocol();
    protocol.Build(comment1, comment2);
    return rig.app->forms().frmProtocol().caption(frmProtocol::rtxtProtocol[0]);
}

// Every page 80 lines of CR LF, none wider than the page, none broken inside.
void checkGrid(const QString& text) {
    const QStringList lines = text.split(QStringLiteral("\r\n"));
    QCOMPARE(lines.size(), 2 * record::LinesPerPage + 1);
    QVERIFY(lines.constLast().isEmpty());
    for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
        const QString& line = lines[i];
        QVERIFY2(record::LengthOf(line) <= record::PageWidth, qPrintable(line));
        QVERIFY(line.startsWith(record::LeftMargin));
        for (const QChar c : line)
            QVERIFY2(c >= u' ' && c != u'\x7f', qPrintable(QStringLiteral("line %1").arg(i)));
    }
}

} // namespace

class TestRecord : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void formatColumn_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("align");
        QTest::addColumn<QString>("fill");
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("box");
        const auto row = [](const char* name, const QString& text, int width, int align,
                            const char* fill, const QString& cell, const char* box = "") {
            QTest::newRow(name) << text << width << align << QString(fill) << cell << QString(box);
        };
        row("cut without a mark", "abc", 2, 1, " ", "ab");
        row("right-aligned", "a", 3, 2, "-", "--a");
        row("as short as the text", "a", 3, 0, "-", "a");
        row("whole print width", "a", 84, 2, ".", QString(83, u'.') + u'a');
        row("beyond the print width", "a", 85, 1, " ", "",
            "Spaltenbreite überschreitet Druckbereich");
        row("two fill characters", "a", 3, 1, "ab", "", "Anzahl Füllzeichen ungleich 1");
        row("no fill character", "a", 3, 1, "", "", "Anzahl Füllzeichen ungleich 1");
        row("negative width", "a", -1, 1, " ", "");
        // A character beyond the 16-bit plane counts once and is never halved.
        row("astral characters", "\U0001F525\U0001F525x", 2, 1, " ", "\U0001F525\U0001F525");
    }
    void formatColumn() {
        QFETCH(QString, text);
        QFETCH(int, width);
        QFETCH(int, align);
        QFETCH(QString, fill);
        QFETCH(QString, cell);
        QFETCH(QString, box);
        ScriptedDialogs dialogs;
        QCOMPARE(FormatColumn(&dialogs, text, static_cast<std::int16_t>(width),
                              static_cast<std::int16_t>(align), fill),
                 cell);
        QCOMPARE(dialogs.shown.size(), box.isEmpty() ? 0 : 1);
        if (!box.isEmpty()) QCOMPARE(dialogs.shown[0].text, box);
    }

    // The pages compared byte for byte with pages laid out by hand from the tables.
    void pagesOfTheProfiles_data() {
        QTest::addColumn<QString>("profile");
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("comment1");
        QTest::addColumn<QString>("comment2");
        QTest::addColumn<QString>("file");
        const QString c1 = QStringLiteral("Wartung nach Filterwechsel, Anlage 3");
        const QString c2 = QStringLiteral("Techniker: M. Keller");
        QTest::newRow("full, German") << "full" << 1 << c1 << c2 << "full-de.txt";
        QTest::newRow("full, English") << "full" << 2 << c1 << c2 << "full-en.txt";
        QTest::newRow("minimal, German")
            << "minimal" << 1 << QString() << QString() << "minimal-de.txt";
        QTest::newRow("minimal, English")
            << "minimal" << 2 << QString() << QString() << "minimal-en.txt";
    }

    void pagesOfTheProfiles() {
        QFETCH(QString, profile);
        QFETCH(int, language);
        QFETCH(QString, comment1);
        QFETCH(QString, comment2);
        QFETCH(QString, file);
        MainViewRig rig(profile);
        const QString text = recordOf(rig, language, comment1, comment2);
        const QByteArray expected = golden(file);
        QVERIFY(!expected.isEmpty());
        const QStringList got = text.split(QStringLiteral("\r\n"));
        const QStringList want = QString::fromUtf8(expected).split(QStringLiteral("\r\n"));
        for (qsizetype i = 0; i < std::min(got.size(), want.size()); ++i)
            QVERIFY2(got[i] == want[i], qPrintable(QStringLiteral("line %1:\n got [%2]\nwant [%3]")
                                                       .arg(i + 1)
                                                       .arg(got[i], want[i])));
        QCOMPARE(text.toUtf8(), expected);
        checkGrid(text);
    }

    // Whatever the engineer types or pastes, the comment stays on its line and in its width.
    void commentsKeepTheGrid_data() {
        QTest::addColumn<QString>("comment");
        QTest::newRow("tabs") << QStringLiteral("a\tb\t\tc");
        QTest::newRow("line ends") << QStringLiteral("first\r\nsecond\rthird\nfourth");
        QTest::newRow("right to left") << QStringLiteral("\u202Eשלום עולם \u05D0\u05D1 مرحبا");
        QTest::newRow("10,000 characters") << QString(10000, u'W');
        QTest::newRow("controls") << QStringLiteral("\x01\x1b[31m\x1f\x7f\u0085\u2028end");
    }
    void commentsKeepTheGrid() {
        QFETCH(QString, comment);
        MainViewRig rig(QStringLiteral("full"));
        const QString text = recordOf(rig, 2, comment, comment);
        checkGrid(text);
        const QString first = text.section(QStringLiteral("\r\n"), 0, 0);
        QVERIFY(record::LengthOf(first) <= record::LeftMargin.size() + record::PrintWidth);
        QVERIFY(!first.contains(QChar(0x202E)));
    }

    // The record is saved whole; a target that cannot take the file is named plainly, and
    // nothing half-written stays.
    void save_data() {
        QTest::addColumn<QString>("target");
        QTest::newRow("writable") << QStringLiteral("record.txt");
        QTest::newRow("full disk") << QStringLiteral("/dev/full");
        QTest::newRow("folder that is a file") << QStringLiteral("FILE/record.txt");
        QTest::newRow("missing folder") << QStringLiteral("missing/record.txt");
    }
    void save() {
        QFETCH(QString, target);
        MainViewRig rig(QStringLiteral("full"));
        QFile blocker(rig.folder.filePath(QStringLiteral("FILE")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        const QString path = target.startsWith(u'/') ? target : rig.folder.filePath(target);
        const QString text = recordOf(rig, 2, QStringLiteral("x"), QString());
        const QStringList before = QDir(rig.folder.path()).entryList(QDir::Files);
        rig.dialogs.saveName = path;
        rig.app->protocol().cmdSave_Click();
        QVERIFY(rig.dialogs.lastFilter.contains(QStringLiteral("*.txt")));
        if (target == QStringLiteral("record.txt")) {
            QVERIFY(rig.dialogs.shown.isEmpty());
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QCOMPARE(file.readAll(), text.toUtf8());
            return;
        }
        QCOMPARE(rig.dialogs.shown.size(), 1);
        QVERIFY(rig.dialogs.shown[0].text.startsWith(QStringLiteral("The file cannot be saved:")));
        QVERIFY(rig.dialogs.shown[0].text.contains(path));
        QCOMPARE(QDir(rig.folder.path()).entryList(QDir::Files), before);
    }

    // Page one keeps two blank lines before the temperature alarms, the relay table between
    // them when the device has one; page two's module heading follows the block before it
    // directly, the localisation's or the device settings'.
    void blankLinesAroundOptionalBlocks_data() {
        QTest::addColumn<bool>("relays");
        QTest::addColumn<bool>("localisation");
        QTest::newRow("both") << true << true;
        QTest::newRow("relays only") << true << false;
        QTest::newRow("localisation only") << false << true;
        QTest::newRow("neither") << false << false;
    }
    void blankLinesAroundOptionalBlocks() {
        QFETCH(bool, relays);
        QFETCH(bool, localisation);
        MainViewRig rig(QStringLiteral("full"));
        rig.set("features.hasProgRel", relays ? 1 : 0);
        rig.set("localisation.hasSingleHoleDetection", localisation ? 1 : 0);
        rig.readOut();
        const QStringList lines =
            recordOf(rig, 2, QString(), QString()).split(QStringLiteral("\r\n"));
        const auto blank = [&](qsizetype i) { return lines[i].trimmed().isEmpty(); };
        const auto at = [&](const QString& start, qsizetype from) {
            for (qsizetype i = from; i < lines.size(); ++i)
                if (lines[i].trimmed().startsWith(start)) return i;
            return qsizetype(-1);
        };
        const qsizetype alarms = at(QStringLiteral("Temperature alarm:"), 0);
        QVERIFY(alarms > 2);
        QVERIFY(blank(alarms - 1));
        QCOMPARE(blank(alarms - 2), !relays);
        const qsizetype fan = at(QStringLiteral("Fan voltage"), 0);
        QCOMPARE(fan == alarms - 3, !relays);
        const qsizetype modules = at(QStringLiteral("Bus modules A"), record::LinesPerPage);
        QVERIFY(modules > 0);
        QVERIFY(!blank(modules - 1));
    }

    // A single that holds a whole number prints in full, never with an exponent's mark.
    void wholeSinglesInFull() {
        MainViewRig rig(QStringLiteral("full"));
        rig.set("controller.alarmResistorValue", 16777216.0 * 1024);
        rig.readOut();
        const QString text = recordOf(rig, 2, QString(), QString());
        QVERIFY(text.contains(QStringLiteral("17179869184 Ohm")));
        QVERIFY(!text.contains(QStringLiteral("e+")));
    }

    // A read-out that no device would send builds a record all the same.
    void outOfRangeValues() {
        MainViewRig rig(QStringLiteral("full"));
        for (int command : {1, 2, 3, 5})
            rig.overwrite(command, 8, Bytes(8, 0xFF));
        checkGrid(recordOf(rig, 1, QString(), QString()));
    }
};

QTEST_GUILESS_MAIN(TestRecord)
#include "tst_record.moc"
