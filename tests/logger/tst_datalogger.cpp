// The logger's record step and its files, on a fixed clock: the expected bytes are written
// out by hand, CR LF and separators included.
#include "engine/telegramdecoder.h"
#include "logger/datalogger.h"
#include "logger/logfiles.h"
#include "logger/logger_elements.h"
#include "support/fakes.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace lg = frmLogdataDev;

namespace {

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

} // namespace

class TestDataLogger : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_t = std::make_unique<TestApp>();
        m_t->app->preferences().setLocale(QLocale(QLocale::German, QLocale::Germany));
        m_folder = QDir(m_t->folder.path()).filePath(QStringLiteral("Prüfung 1"));
        QDir().mkpath(m_folder);
        m_next = QDateTime(QDate(2026, 11, 23), QTime(9, 30, 15));
        window().load();
        window().setTicked(lg::lstDisplay[0], 1, true);
    }

    void cleanup() { m_t.reset(); }

    void bothFilesThinTheLogAndKeepTheirFormats() {
        const QString log = m_folder + QStringLiteral("/lauf.log");
        const QString dat = m_folder + QStringLiteral("/lauf.dat");
        choose(lg::chkSaveAsExcel, lg::cmdSaveAsExcel, log);
        choose(lg::chkSaveAsMathCad, lg::cmdSaveAsMathCad, dat);
        QVERIFY(window().isEnabled(lg::cmdStart));
        window().click(lg::cmdStart);
        showValues({QStringLiteral("Akt. Luftstrom [m/s]"), QStringLiteral("Softwarenummer"),
                    QStringLiteral("Zustand Summer")},
                   {QStringLiteral("0,5"), QStringLiteral("1,2,3"), QStringLiteral("-1,25")});
        record(7);

        // Records 1 and 6 reach the spreadsheet; the decimal comma stays there.
        QCOMPARE(contents(log), QByteArray("23.11.2026\t09:30:15\t0,5\t1,2,3\t-1,25\r\n"
                                           "23.11.2026\t09:30:20\t0,5\t1,2,3\t-1,25\r\n"));
        // Every record reaches the table for the mathematics tool: a number's comma becomes a
        // point, a text keeps its commas.
        QCOMPARE(contents(dat), QByteArray("2026 11 23 09 30 15 0.5 1,2,3 -1.25\r\n"
                                           "2026 11 23 09 30 16 0.5 1,2,3 -1.25\r\n"
                                           "2026 11 23 09 30 17 0.5 1,2,3 -1.25\r\n"
                                           "2026 11 23 09 30 18 0.5 1,2,3 -1.25\r\n"
                                           "2026 11 23 09 30 19 0.5 1,2,3 -1.25\r\n"
                                           "2026 11 23 09 30 20 0.5 1,2,3 -1.25\r\n"
                                           "2026 11 23 09 30 21 0.5 1,2,3 -1.25\r\n"));
        QCOMPARE(
            contents(m_folder + QStringLiteral("/lauf_log_Info.txt")),
            QByteArray("START-> 23.11.2026\t09:30:15 | Akt. Luftstrom [m/s] | Softwarenummer | "
                       "Zustand Summer\r\n"));
        QCOMPARE(contents(m_folder + QStringLiteral("/lauf_dat_Info.txt")),
                 QByteArray("START-> 2026 11 23 09 30 15 | Akt. Luftstrom [m/s] | Softwarenummer | "
                            "Zustand Summer\r\n"));
        QCOMPARE(logger().ExcelRecords(), 2);
        QCOMPARE(logger().MathCadRecords(), 7);
        QCOMPARE(window().caption(lg::lblSaveAsMathCadRecords), QStringLiteral("7 Datensätze"));
        // Each write lights its path, and the blink timer puts the colour back.
        QCOMPARE(window().backColor(lg::lblSaveAsExcelFile), colors::kGreen);
        QVERIFY(logger().tmrBlink().isEnabled());
        logger().tmrBlink_Timer();
        QCOMPARE(window().backColor(lg::lblSaveAsMathCadFile), colors::kButtonFace);
        QVERIFY(!logger().tmrBlink().isEnabled());
    }

    void stopAndStartAppendASecondStartLine() {
        const QString log = m_folder + QStringLiteral("/a.log");
        choose(lg::chkSaveAsExcel, lg::cmdSaveAsExcel, log);
        showValues({QStringLiteral("Bargraphpegel")}, {QStringLiteral("3")});
        window().click(lg::cmdStart);
        record(2);
        window().click(lg::cmdStop);
        QVERIFY(!window().isVisible(lg::lblRunning));
        QVERIFY(window().isEnabled(lg::cmdSaveAsMathCad)); // both dialog buttons, whatever ticked
        record(1);                                         // stopped: nothing is written
        showValues({QStringLiteral("Bargraphpegel"), QStringLiteral("Resetcounter")},
                   {QStringLiteral("4"), QStringLiteral("17")});
        window().click(lg::cmdStart);
        QVERIFY(window().isVisible(lg::lblRunning));
        QVERIFY(!window().isEnabled(lg::lstDisplay[0]));
        // Closing the window hides it; the recording goes on behind it.
        logger().ShowLogger();
        window().click(lg::cmdClose);
        QVERIFY(!window().isShown());
        m_t->app->forms().frmDisplay().click(QStringLiteral("mnuLogDataDev"));
        QVERIFY(window().isShown());
        record(1);
        QCOMPARE(contents(log), QByteArray("23.11.2026\t09:30:15\t3\r\n"
                                           "23.11.2026\t09:30:18\t4\t17\r\n"));
        QCOMPARE(contents(m_folder + QStringLiteral("/a_log_Info.txt")),
                 QByteArray("START-> 23.11.2026\t09:30:15 | Bargraphpegel\r\n"
                            "START-> 23.11.2026\t09:30:18 | Bargraphpegel | Resetcounter\r\n"));
    }

    // Each complete read-out the decoder takes is one record and one point of the trend.
    void everyReadOutIsOneRecordAndOnePoint() {
        const QString dat = m_folder + QStringLiteral("/live.dat");
        choose(lg::chkSaveAsMathCad, lg::cmdSaveAsMathCad, dat);
        window().click(lg::cmdStart);
        for (int readOut = 0; readOut < 2; ++readOut) {
            m_t->clock.time = m_next.addSecs(readOut);
            for (int command : {1, 2, 3, 5})
                m_t->app->decoder().DataDecoder(testsupport::ownTelegram(command));
        }
        QCOMPARE(logger().MathCadRecords(), 2);
        QCOMPARE(contents(dat).count("\r\n"), 2);
        QCOMPARE(logger().Trend().series().at(0).points.size(), 2u);
    }

    void infoPathCutsAtTheFirstPointOfThePath() {
        QCOMPARE(logfiles::InfoPath(QStringLiteral("data.old/run.log"), logfiles::kLogInfoSuffix),
                 QStringLiteral("data_log_Info.txt"));
        QCOMPARE(logfiles::InfoPath(QStringLiteral("/m/run"), logfiles::kDatInfoSuffix),
                 QStringLiteral("/m/run_dat_Info.txt"));
    }

    void choosingAFileAsksBeforeAppending() {
        const QString path = m_folder + QStringLiteral("/old.dat");
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("2026 01 01 00 00 00 1\r\n2026 01 01 00 00 01 2\r\n");
        }
        m_t->dialogs.answers = {UserDialogs::Answer::No};
        choose(lg::chkSaveAsMathCad, lg::cmdSaveAsMathCad, path);
        QCOMPARE(m_t->dialogs.shown.size(), 1);
        QCOMPARE(m_t->dialogs.shown[0].text,
                 QStringLiteral("Datei existiert bereits. Daten anhängen?"));
        QCOMPARE(m_t->dialogs.lastFilter, QStringLiteral("*.dat|*.dat|"));
        QCOMPARE(window().caption(lg::lblSaveAsMathCadFile), QString());

        window().click(lg::cmdSaveAsMathCad); // the default answer appends
        QCOMPARE(window().caption(lg::lblSaveAsMathCadFile), path);
        QCOMPARE(logger().MathCadRecords(), 2);
        QCOMPARE(contents(path).size(), 46); // nothing empties a file

        // A new file is made at once and asks nothing; a cancelled dialog empties the label.
        m_t->dialogs.saveName = m_folder + QStringLiteral("/new.dat");
        window().click(lg::cmdSaveAsMathCad);
        QVERIFY(QFile::exists(m_folder + QStringLiteral("/new.dat")));
        QCOMPARE(m_t->dialogs.shown.size(), 2);
        m_t->dialogs.saveName.reset();
        window().click(lg::cmdSaveAsMathCad);
        QCOMPARE(window().caption(lg::lblSaveAsMathCadFile), QString());
    }

    void startNeedsATickAndEveryTickedFormatsFile() {
        choose(lg::chkSaveAsExcel, lg::cmdSaveAsExcel, m_folder + QStringLiteral("/s.log"));
        QVERIFY(window().isEnabled(lg::cmdStart));
        // A ticked format without its file holds the start back, and so does a list without a
        // tick.
        window().userSetValue(lg::chkSaveAsMathCad, 1);
        window().click(lg::chkSaveAsMathCad);
        QVERIFY(window().isEnabled(lg::cmdSaveAsMathCad) && !window().isEnabled(lg::cmdStart));
        window().userSetValue(lg::chkSaveAsMathCad, 0);
        window().click(lg::chkSaveAsMathCad);
        QVERIFY(window().isEnabled(lg::cmdStart));
        window().userSetTicked(lg::lstDisplay[0], 1, false);
        QVERIFY(!window().isEnabled(lg::cmdStart));
    }

    // A deleted file comes back with the next record; a full disk or a folder that is gone
    // stops the recording, and the message names the file.
    void aFileThatCannotBeWrittenStopsTheRecording() {
        const QString folder = m_folder + QStringLiteral("/stick");
        QDir().mkpath(folder);
        const QString dat = folder + QStringLiteral("/r.dat");
        choose(lg::chkSaveAsMathCad, lg::cmdSaveAsMathCad, dat);
        showValues({QStringLiteral("x")}, {QStringLiteral("1")});
        window().click(lg::cmdStart);
        record(2);
        QVERIFY(QFile::remove(dat));
        record(1);
        QVERIFY(logger().LoggerRunning);
        QCOMPARE(contents(dat), QByteArray("2026 11 23 09 30 17 1\r\n"));
        QCOMPARE(logger().MathCadRecords(), 1);
        QVERIFY(QDir(folder).removeRecursively());
        record(2);
        QVERIFY(!logger().LoggerRunning);
        QCOMPARE(m_t->dialogs.shown.size(), 1);
        QVERIFY(m_t->dialogs.shown[0].text.contains(dat));

        choose(lg::chkSaveAsMathCad, lg::cmdSaveAsMathCad, QStringLiteral("/dev/full"));
        window().click(lg::cmdStart);
        record(1);
        QVERIFY(!logger().LoggerRunning && window().isEnabled(lg::cmdStart));
        QCOMPARE(m_t->dialogs.shown.size(), 2);
        QVERIFY2(m_t->dialogs.shown[1].text.contains(QStringLiteral("/dev/full")) &&
                     m_t->dialogs.shown[1].text.contains(QStringLiteral("space")),
                 qPrintable(m_t->dialogs.shown[1].text));
    }

    void aPassListsTheTickedRowsOnly() {
        // Before any device: every row to tick, no values.
        const QStringList rows = window().items(lg::lstDisplay[0]);
        window().setTicked(lg::lstDisplay[0], 1, false);
        window().userSetTicked(lg::lstDisplay[0], 1, true);
        QCOMPARE(window().items(lg::lstDisplay[1]),
                 QStringList{QStringLiteral("Akt. Luftstrom [m/s]")});
        QCOMPARE(window().items(lg::lstDisplay[2]), QStringList{QString()});

        // A tick, as the user sets it, is a pass: the rows stay, the ticked ones are listed in
        // list order, and the numbers among them go to the trend.
        m_t->app->createValues();
        window().userSetTicked(lg::lstDisplay[0], 2, true);
        window().userSetTicked(lg::lstDisplay[0], 3, true);
        QCOMPARE(window().items(lg::lstDisplay[0]), rows);
        QCOMPARE(window().items(lg::lstDisplay[1]),
                 (QStringList{QStringLiteral("Akt. Luftstrom [m/s]"),
                              QStringLiteral("Luftstrom Sollwert [m/s]"),
                              QStringLiteral("Akt. Lufttemperatur [°C]")}));
        QCOMPARE(logger().Trend().series().size(), 3u);
        QCOMPARE(logger().Trend().series()[2].unit, QStringLiteral("°C"));

        window().userSetTicked(lg::lstDisplay[0], 1, false);
        window().userSetTicked(lg::lstDisplay[0], 2, false);
        window().userSetTicked(lg::lstDisplay[0], 3, false);
        QVERIFY(window().items(lg::lstDisplay[1]).isEmpty());
        QVERIFY(window().items(lg::lstDisplay[2]).isEmpty());
        QVERIFY(logger().Trend().series().empty());
    }

private:
    Form& window() { return m_t->app->forms().frmLogdataDev(); }
    DataLogger& logger() { return m_t->app->logger(); }
    // Chooses the file of one format through its dialog, ticked.
    void choose(const QString& tick, const QString& button, const QString& path) {
        window().userSetValue(tick, 1);
        window().click(tick);
        m_t->dialogs.saveName = path;
        window().click(button);
    }

    // The ticked rows' names and values, as a pass would leave them.
    void showValues(const QStringList& names, const QStringList& values) {
        window().setItems(lg::lstDisplay[1], names);
        window().setItems(lg::lstDisplay[2], values);
    }

    // `count` records, one second apart, from 23.11.2026 09:30:15.
    void record(int count) {
        for (int i = 0; i < count; ++i) {
            m_t->clock.time = m_next;
            m_next = m_next.addSecs(1);
            logger().WriteLogRecord();
        }
    }

    std::unique_ptr<TestApp> m_t;
    QString m_folder;
    QDateTime m_next;
};

QTEST_GUILESS_MAIN(TestDataLogger)
#include "tst_datalogger.moc"
