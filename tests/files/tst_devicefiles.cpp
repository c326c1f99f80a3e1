#include "engine/telegramdecoder.h"
#include "files/devicefiles.h"
#include "link/seriallink.h"
#include "link/telegram.h"
#include "shell/appshell.h"
#include "support/fakes.h"
#include "support/testsupport.h"
#include "values/valuestore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <sys/stat.h>

namespace {

using testsupport::kSerial;
constexpr std::uint32_t kOtherSerial = 7654321;
using testsupport::kRecorded;
using testsupport::ownTelegram;

// A telegram of the first sibling family, which only the suite program serves.
Bytes foreignTelegram() {
    return telegram::StampTelegram(
               telegram::MakeSendFrame({1, 1, 0, 0, 0x30, 0x39, 7, 7}, true).value(), kRecorded)
        .value();
}

// The saved block, written out by hand: marker, count, lengths, telegrams, surplus byte.
Bytes saveBlock(const QList<Bytes>& telegrams) {
    Bytes block{0, static_cast<std::uint8_t>(telegrams.size())};
    for (const Bytes& t : telegrams) {
        block.push_back(static_cast<std::uint8_t>(t.size() >> 8));
        block.push_back(static_cast<std::uint8_t>(t.size() & 0xFF));
    }
    for (const Bytes& t : telegrams)
        block.insert(block.end(), t.begin(), t.end());
    block.push_back(0);
    return block;
}

QByteArray fileText(const Bytes& block) {
    QByteArray text;
    for (std::uint8_t b : block)
        text += "&H" + QByteArray::number(b, 16).toUpper().rightJustified(2, '0') + ' ';
    return text + "\r\n";
}

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(content);
}

struct Rig {
    TestApp t;
    Program& app = *t.app;
    DeviceFiles& files = app.files();

    Rig() {
        app.texts().messages.saveQuestion =
            QStringLiteral("Datei existiert bereits. Überschreiben?");
        app.texts().messages.saveConfirmation = QStringLiteral("Daten gespeichert");
        app.texts().messages.loadFilter = QStringLiteral("Gerätedaten (*.ko3)|*.ko3|");
    }

    void readOut(std::uint32_t serial = kSerial, std::uint8_t fill = 0x33) {
        for (int command : {1, 2, 3, 5})
            app.decoder().DataDecoder(ownTelegram(command, serial, fill));
    }

    QString autoSavePath(const QString& base, std::uint32_t serial = kSerial,
                         const QString& day = QStringLiteral("20261123")) const {
        return QDir(base).filePath(
            QStringLiteral("AutoSave/ShelLix_%1_%2.ko3").arg(serial).arg(day));
    }
    QString inProgramDir(std::uint32_t serial = kSerial) const {
        return autoSavePath(t.programDir(), serial);
    }
    QString tempFile(const QString& name) const { return t.folder.filePath(name); }
    // Writes a file of the rig's folder and loads it as the engineer does.
    QString load(const QString& name, const QByteArray& content) {
        const QString path = tempFile(name);
        writeFile(path, content);
        files.LoadDeviceFile(path);
        return path;
    }
};

} // namespace

class TestDeviceFiles : public QObject {
    Q_OBJECT

private slots:
    // Saved once per take-on, telegram 4 all zeros: the later cycles change nothing, a later
    // take-on of the same day overwrites the day's file.
    void autoSaveOncePerTakeOn() {
        Rig rig;
        rig.readOut();
        const QByteArray first = fileText(saveBlock(
            {ownTelegram(1), ownTelegram(2), ownTelegram(3), Bytes(54, 0), ownTelegram(5)}));
        QCOMPARE(readAll(rig.inProgramDir()), first);
        QVERIFY(rig.t.dialogs.shown.isEmpty());
        for (int cycle = 0; cycle < 2; ++cycle)
            for (int command : {2, 3, 5})
                rig.app.decoder().DataDecoder(ownTelegram(command, kSerial, 0x44));
        QCOMPARE(readAll(rig.inProgramDir()), first);

        rig.readOut(kOtherSerial);
        QVERIFY(QFile::exists(rig.inProgramDir(kOtherSerial)));
        rig.readOut(kSerial, 0x22);
        const Bytes expected =
            saveBlock({ownTelegram(1), ownTelegram(2, kSerial, 0x22), ownTelegram(3, kSerial, 0x22),
                       Bytes(54, 0), ownTelegram(5, kSerial, 0x22)});
        QCOMPARE(readAll(rig.inProgramDir()), fileText(expected));

        rig.t.clock.time = rig.t.clock.time.addDays(1);
        rig.readOut(kOtherSerial);
        rig.readOut(kSerial);
        QVERIFY(QFile::exists(rig.autoSavePath(rig.t.programDir(), kSerial, "20261124")));
    }

    void autoSaveGoesToTheDataFolderWhereTheProgramFolderIsReadOnly_data() {
        QTest::addColumn<bool>("missing");
        QTest::newRow("read-only") << false;
        QTest::newRow("missing") << true;
    }
    void autoSaveGoesToTheDataFolderWhereTheProgramFolderIsReadOnly() {
        QFETCH(bool, missing);
        Rig rig;
        QDir(rig.t.dataDir()).removeRecursively();
        testsupport::openToOthers(rig.t.folder.path());
        if (missing)
            QVERIFY(QDir(rig.t.programDir()).removeRecursively());
        else
            QFile::setPermissions(rig.t.programDir(), QFile::ReadOwner | QFile::ExeOwner);
        {
            const testsupport::AsNobody nobody;
            QCOMPARE(rig.files.AutoSaveFolder(), QDir(rig.t.dataDir()).filePath("AutoSave"));
            rig.readOut();
        }
        QFile::setPermissions(rig.t.programDir(),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(QFile::exists(rig.autoSavePath(rig.t.dataDir())));
        QVERIFY(!QFile::exists(rig.inProgramDir()));
    }

    void userSaveAsksBeforeOverwriting_data() {
        QTest::addColumn<QByteArray>("existing"); // null: no file
        QTest::addColumn<bool>("answerYes");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<bool>("written");
        QTest::addColumn<bool>("chosen"); // false: the dialog cancelled
        QTest::newRow("new file") << QByteArray() << true << false << true << true;
        QTest::newRow("empty file") << QByteArray("") << false << false << true << true;
        QTest::newRow("overwrite: yes") << QByteArray("old") << true << true << true << true;
        QTest::newRow("overwrite: no") << QByteArray("old") << false << true << false << true;
        QTest::newRow("cancelled") << QByteArray("old") << true << false << false << false;
    }
    void userSaveAsksBeforeOverwriting() {
        QFETCH(QByteArray, existing);
        QFETCH(bool, answerYes);
        QFETCH(bool, asked);
        QFETCH(bool, written);
        QFETCH(bool, chosen);
        Rig rig;
        rig.readOut();
        const QString path = rig.tempFile("mine.ko3");
        if (!existing.isNull()) writeFile(path, existing);
        if (chosen) rig.t.dialogs.saveName = path;
        rig.t.dialogs.answers = {answerYes ? UserDialogs::Answer::Yes : UserDialogs::Answer::No};
        rig.files.SaveDeviceData(0);

        QList<ScriptedDialogs::Shown> shown = rig.t.dialogs.shown;
        if (asked) {
            QVERIFY(!shown.isEmpty());
            const ScriptedDialogs::Shown question = shown.takeFirst();
            QCOMPARE(question.text, rig.app.texts().messages.saveQuestion);
            QCOMPARE(question.buttons, UserDialogs::Buttons::YesNo);
        }
        if (written) {
            QCOMPARE(readAll(path), readAll(rig.inProgramDir()));
            QCOMPARE(shown.size(), 1);
            QCOMPARE(shown.first().text, path + "\r\n\r\nDaten gespeichert");
        } else {
            QCOMPARE(readAll(path), existing);
            QVERIFY(shown.isEmpty());
        }
    }

    // A save that fails says where and why, and leaves neither the file nor a piece of it.
    void failedSaveSaysWhyAndWhere_data() {
        QTest::addColumn<QString>("target"); // in the rig's folder unless absolute
        QTest::addColumn<QString>("why");
        QTest::newRow("folders missing") << QString("no/such/folder/x.ko3") << QString("folder");
        QTest::newRow("a file where the folder should be")
            << QString("blocker/x.ko3") << QString("");
        QTest::newRow("full disk") << QString("/dev/full") << QString("space");
        QTest::newRow("read-only folder") << QString("locked/x.ko3") << QString("ermission");
    }
    void failedSaveSaysWhyAndWhere() {
        QFETCH(QString, target);
        QFETCH(QString, why);
        Rig rig;
        rig.readOut();
        writeFile(rig.tempFile("blocker"), "not a folder");
        QDir(rig.t.folder.path()).mkdir(QStringLiteral("locked"));
        QFile::setPermissions(rig.tempFile("locked"), QFile::ReadOwner | QFile::ExeOwner |
                                                          QFile::ReadOther | QFile::ExeOther);
        testsupport::openToOthers(rig.t.folder.path());
        const QStringList before =
            QDir(rig.t.folder.path()).entryList(QDir::AllEntries, QDir::Name);
        const QString path = QDir::isAbsolutePath(target) ? target : rig.tempFile(target);
        rig.t.dialogs.saveName = path;
        {
            const testsupport::AsNobody nobody;
            rig.files.SaveDeviceData(0);
        }

        QCOMPARE(rig.t.dialogs.shown.size(), 1);
        const ScriptedDialogs::Shown& message = rig.t.dialogs.shown.first();
        QCOMPARE(message.icon, UserDialogs::Icon::Warning);
        QVERIFY2(message.text.startsWith(QStringLiteral("Die Datei ") + path +
                                         QStringLiteral(" wurde nicht gespeichert: ")),
                 qPrintable(message.text));
        QVERIFY2(message.text.contains(why), qPrintable(message.text));
        if (!QDir::isAbsolutePath(target)) QVERIFY(!QFile::exists(path));
        QCOMPARE(QDir(rig.t.folder.path()).entryList(QDir::AllEntries, QDir::Name), before);
        QVERIFY(QDir(rig.tempFile("locked")).isEmpty());
    }

    // What the command line may name instead of a device file: one plain message, nothing
    // read, the port left as it was.
    void fileThatIsNoDeviceFileIsRefused_data() {
        QTest::addColumn<QString>("why"); // the row's name is the kind of file
        QTest::newRow("folder") << QString("es ist ein Ordner");
        QTest::newRow("pipe") << QString("es ist keine gewöhnliche Datei");
        QTest::newRow("huge") << QString("sie ist zu groß (2147483648 Bytes)");
        QTest::newRow("unreadable") << QString("keine Leseberechtigung");
    }
    void fileThatIsNoDeviceFileIsRefused() {
        const QString kind = QString::fromUtf8(QTest::currentDataTag());
        QFETCH(QString, why);
        Rig rig;
        rig.t.port.open(1);
        const QString path = rig.tempFile(kind + QStringLiteral(".ko3"));
        if (kind == u"folder") {
            QVERIFY(QDir().mkdir(path));
        } else if (kind == u"pipe") {
            QVERIFY(::mkfifo(QFile::encodeName(path).constData(), 0600) == 0);
        } else {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(fileText(saveBlock({ownTelegram(1)})));
            // Sparse: no disk fills up for this.
            if (kind == u"huge") QVERIFY(file.resize(qint64(2) << 30));
            file.close();
            if (kind == u"unreadable") QFile::setPermissions(path, QFileDevice::WriteOwner);
        }
        testsupport::openToOthers(rig.t.folder.path());
        {
            const testsupport::AsNobody nobody;
            rig.files.LoadDeviceFile(path);
        }
        QCOMPARE(rig.t.dialogs.shown.size(), 1);
        QCOMPARE(rig.t.dialogs.shown.first().text,
                 QStringLiteral("Die Datei %1 lässt sich nicht laden: %2").arg(path, why));
        QVERIFY(rig.t.port.isOpen());
        QVERIFY(rig.app.session().takenOnSerialNo().isEmpty());
    }

    void autoSaveFolderIsShownAndOpened() {
        Rig rig;
        rig.app.preferences().setLanguage(languageFromNumber(2));
        rig.app.shell().ShowAutoSaveFolder();
        const QString folder = QDir(rig.t.programDir()).filePath("AutoSave");
        QCOMPARE(rig.app.forms().frmMQ27D().caption(QStringLiteral("mnuAutoSaveFolder")),
                 QStringLiteral("Automatic saves: ") + folder);
        rig.app.forms().frmMQ27D().click(QStringLiteral("mnuAutoSaveFolder"));
        QCOMPARE(rig.t.launcher.openedFolders, QStringList{folder});
        QVERIFY(QFileInfo(folder).isDir());
        QVERIFY(rig.t.dialogs.shown.isEmpty());
        rig.t.launcher.startSucceeds = false;
        rig.files.OpenAutoSaveFolder();
        QCOMPARE(rig.t.dialogs.shown.size(), 1);
        QCOMPARE(rig.t.dialogs.shown.first().text,
                 QStringLiteral("The folder %1 cannot be shown").arg(folder));
    }

    // Nothing to save before the first telegram. Serial number 0 is the argument that means
    // "ask the user", so a device with that number asks instead of saving itself.
    void nothingToSaveBeforeTheFirstTelegramAndSerialZeroAsks() {
        Rig rig;
        rig.t.dialogs.saveName = rig.tempFile("x.ko3");
        rig.files.SaveDeviceData(0);
        rig.files.SaveDeviceData(kSerial);
        QVERIFY(rig.t.dialogs.lastFilter.isEmpty());
        QVERIFY(!QFile::exists(rig.tempFile("x.ko3")));
        rig.readOut(0);
        QCOMPARE(rig.t.dialogs.lastFilter, QStringLiteral("*.ko3|*.ko3|"));
        QVERIFY(!QDir(rig.t.programDir()).exists("AutoSave"));
    }

    void readDeviceFileAsksForAMissingName() {
        Rig rig;
        QVERIFY(!rig.files.ReadDeviceFile(QString()).has_value());
        QCOMPARE(rig.t.dialogs.lastFilter, rig.app.texts().messages.loadFilter);

        const QString path = rig.tempFile("asked.ko3");
        writeFile(path, "&H00 &H05 &HFF\r\n");
        rig.t.dialogs.openName = path;
        QCOMPARE(rig.files.ReadDeviceFile(QString()), std::optional<Bytes>(Bytes{0, 5, 255}));
        QCOMPARE(rig.app.link().LoadedFileName(), path);
    }

    // Rubbish still reads as bytes, so the tool goes offline, but nothing is taken on; what
    // cannot be read leaves the port as it was.
    void fileWithoutADeviceFeedsNothing_data() {
        QTest::addColumn<QByteArray>("content"); // null: no file
        QTest::addColumn<bool>("offline");
        QTest::newRow("missing") << QByteArray() << false;
        QTest::newRow("empty") << QByteArray("") << false;
        QTest::newRow("binary") << QByteArray("\x00\xff\x01\x02\x03\x04", 6) << true;
        QTest::newRow("one byte") << QByteArray("&H02 \r\n") << true;
        QTest::newRow("length beyond the block")
            << QByteArray("&H00 &H01 &HFF &HFF &H02 \r\n") << true;
    }
    void fileWithoutADeviceFeedsNothing() {
        QFETCH(QByteArray, content);
        QFETCH(bool, offline);
        Rig rig;
        rig.t.port.open(1);
        const QString path = rig.tempFile("bad.ko3");
        if (!content.isNull()) writeFile(path, content);
        rig.files.LoadDeviceFile(path);
        QCOMPARE(rig.t.port.isOpen(), !offline);
        QCOMPARE(rig.app.link().LoadedFileName().isEmpty(), !offline);
        QVERIFY(rig.app.session().takenOnSerialNo().isEmpty());
    }

    // A device taken on from a file never saves itself, nor does a live read-out of it
    // afterwards: it was not taken on anew.
    void loadedFileReplaysOffline() {
        Rig rig;
        rig.t.port.open(1);
        QList<Bytes> telegrams;
        for (int command = 1; command <= 5; ++command)
            telegrams << ownTelegram(command, kOtherSerial);
        const QString path = rig.load("device.ko3", fileText(saveBlock(telegrams)));
        QVERIFY(!rig.t.port.isOpen());
        for (int command = 1; command <= 5; ++command)
            QCOMPARE(stored(rig.app, command), telegrams[command - 1]);
        QCOMPARE(rig.app.session().telegramTime(), kRecorded);
        QCOMPARE(rig.app.forms().frmDisplay().caption("lblSerialNo_0"),
                 QString::number(kOtherSerial));
        QVERIFY(rig.app.forms().frmDisplay().isShown());
        QCOMPARE(rig.app.link().LoadedFileName(), path);
        rig.app.link().SetDataFromFile(false);
        rig.readOut(kOtherSerial);
        QVERIFY(!QDir(rig.t.programDir()).exists("AutoSave"));
        QVERIFY(!QDir(rig.t.dataDir()).exists("AutoSave"));
    }

    // What is whole is taken: an old file's one telegram (without the last blank and the line
    // end), the ones whose sum is right, and nothing once the tool closes.
    void loadTakesWhatIsWhole_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QList<Bytes>>("expected"); // telegrams 1 to 3
        QTest::addColumn<bool>("closing");
        const Bytes none2(202, 0), none3(211, 0);
        QTest::newRow("old form") << fileText(ownTelegram(1)).chopped(3)
                                  << QList<Bytes>{ownTelegram(1), none2, none3} << false;
        Bytes broken = ownTelegram(2, kSerial, 0x10);
        broken[50] ^= 0xFF;
        QTest::newRow("sum of telegram 2 wrong")
            << fileText(saveBlock({ownTelegram(1), broken, ownTelegram(3)}))
            << QList<Bytes>{ownTelegram(1), none2, ownTelegram(3)} << false;
        QTest::newRow("closing after the take-on")
            << fileText(saveBlock({ownTelegram(1), ownTelegram(2)}))
            << QList<Bytes>{ownTelegram(1), none2, none3} << true;
    }
    void loadTakesWhatIsWhole() {
        QFETCH(QByteArray, content);
        QFETCH(QList<Bytes>, expected);
        QFETCH(bool, closing);
        Rig rig;
        if (closing)
            connect(&rig.app.decoder(), &TelegramDecoder::DeviceTakenOn, this,
                    [&] { rig.app.life().setClosing(); });
        rig.load("file.ko3", content);
        for (int command = 1; command <= 3; ++command)
            QCOMPARE(stored(rig.app, command), expected[command - 1]);
        QCOMPARE(rig.app.session().takenOnSerialNo(), QString::number(kSerial));
        QVERIFY(!rig.app.forms().frmDisplay().isShown());
    }

    void fileOfAnotherFamilyHandsItsPathOver() {
        Rig rig;
        rig.t.installSuite();
        const QString path =
            rig.load("varlix.ko3", fileText(saveBlock({foreignTelegram(), ownTelegram(1)})));
        QCOMPARE(rig.t.launcher.started.size(), 1);
        QCOMPARE(QFileInfo(rig.t.launcher.started.first().program).fileName().section('.', 0, 0),
                 QStringLiteral("Kompa3"));
        QCOMPARE(rig.t.launcher.started.first().arguments, QStringList{path});
        QVERIFY(rig.app.life().closing());
        QVERIFY(rig.app.session().takenOnSerialNo().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestDeviceFiles)
#include "tst_devicefiles.moc"
