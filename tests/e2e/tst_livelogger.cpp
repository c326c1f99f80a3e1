// The data logger against the virtual device: opened by the start switch, two values ticked
// and the recording started before the first telegram, then stopped at the first complete
// read-out after 10 s. Each read-out is one line of the .dat file and one point of each trend
// line.
#include "common/formmodel.h"
#include "display/mainview_elements.h"
#include "engine/telegramdecoder.h"
#include "logger/datalogger.h"
#include "logger/logger_elements.h"
#include "logger/ui/frmlogdatadev.h"
#include "logger/ui/trendchart.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"
#include "support/livetool.h"
#include "support/simprocess.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace lg = frmLogdataDev;

class TestLiveLogger : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyReadOutIsARecordAndAPoint() {
        SimProcess sim;
        QVERIFY(
            sim.start({QStringLiteral("--profile"), SimProcess::profile(QStringLiteral("full"))}));
        LiveTool tool(sim.portPath());
        tool.start(QStringLiteral("/LOGGER"));
        Form& window = tool.app().forms().frmLogdataDev();
        QVERIFY(window.isShown());

        // The air flow and the air temperature: two units, two axes.
        window.userSetTicked(lg::lstDisplay[0], 1, true);
        window.userSetTicked(lg::lstDisplay[0], 3, true);
        QTemporaryDir folder;
        const QString dat = folder.filePath(QStringLiteral("live.dat"));
        tool.dialogs.saveName = dat;
        window.userSetValue(lg::chkSaveAsMathCad, 1);
        window.click(lg::chkSaveAsMathCad);
        window.click(lg::cmdSaveAsMathCad);
        QVERIFY(window.isEnabled(lg::cmdStart));
        window.click(lg::cmdStart);
        QElapsedTimer recording;
        recording.start();

        // Stopped in the event of the last record, before the device can send another.
        int fed = 0;
        bool stopped = false;
        QList<SimProcess::Entry> logAtStop;
        QObject::connect(&tool.app().decoder(), &TelegramDecoder::ReadOutRecorded, [&] {
            if (stopped) return;
            ++fed;
            if (recording.elapsed() < 10000) return;
            window.click(lg::cmdStop);
            stopped = true;
            logAtStop = sim.log();
        });
        QVERIFY(QTest::qWaitFor([&] { return stopped; }, 40000));
        const int kRecords = fed;
        QVERIFY2(kRecords >= 3, qPrintable(QString::number(kRecords)));

        const qsizetype answers5 =
            std::count_if(logAtStop.begin(), logAtStop.end(),
                          [](const SimProcess::Entry& e) { return e.dir == u"out" && e.cmd == 5; });
        QCOMPARE(answers5, kRecords);

        QFile file(dat);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = file.readAll().split('\n');
        QCOMPARE(lines.size(), kRecords + 1); // the last line ends too
        static const QRegularExpression record(
            QStringLiteral("^\\d{4}( \\d\\d){5} -?[0-9.e+-]+ -?[0-9.e+-]+\r$"));
        for (int i = 0; i < kRecords; ++i)
            QVERIFY2(record.match(QString::fromLatin1(lines[i])).hasMatch(), lines[i].constData());
        QCOMPARE(tool.app().logger().MathCadRecords(), kRecords);

        auto* shown = qobject_cast<frmLogdataDevWindow*>(tool.runtime().window(window.name()));
        QVERIFY(shown);
        QCOMPARE(shown->chart().pointCounts(), (std::vector<qsizetype>{kRecords, kRecords}));

        // The visible chart as a picture.
        const QString png = folder.filePath(QStringLiteral("trend.png"));
        tool.dialogs.saveName = png;
        window.click(lg::cmdTrendExport);
        QVERIFY(!QImage(png).isNull());

        // Closed, the window only hides; the main view's menu brings it back.
        QVERIFY(!window.requestClose());
        QVERIFY(!window.isShown() && window.isLoaded());
        QVERIFY(tool.display().isVisible(frmDisplay::mnuLogDataDev));
        tool.display().click(frmDisplay::mnuLogDataDev);
        QVERIFY(window.isShown());
    }
};

QTEST_MAIN(TestLiveLogger)
#include "tst_livelogger.moc"
