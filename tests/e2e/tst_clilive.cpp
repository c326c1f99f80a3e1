#include "files/ko3format.h"
#include "support/simprocess.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Run = testsupport::ProgramRun;

Run cli(const QStringList& args, const QString& folder = {}) {
    return testsupport::runProgram(QStringLiteral("mq27diag-cli"), args, folder);
}

// Byte `offset` of a write block, behind STX and length.
int blockByte(const QByteArray& frame, int offset) {
    return static_cast<unsigned char>(frame.at(2 + offset));
}

// Element -> value of one property, from a window snapshot.
QHash<QString, QString> snapshot(const QStringList& lines, const QString& property) {
    QHash<QString, QString> out;
    for (const QString& line : lines) {
        const QStringList parts = line.split(u'\t');
        if (parts.size() == 3 && parts[1] == property) out.insert(parts[0], parts[2]);
    }
    return out;
}

} // namespace

// The command line against the virtual device: each command once through its whole road.
class TestCliLive : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        QFile full(SimProcess::profile(QStringLiteral("full")));
        QVERIFY(full.open(QIODevice::ReadOnly));
        QJsonObject device = QJsonDocument::fromJson(full.readAll()).object();
        device.insert(
            QStringLiteral("limits"),
            QJsonObject{{QStringLiteral("controller.extinguishDelay"), QJsonArray{0, 30}}});
        const QString profile = QDir(m_sim.folder()).filePath(QStringLiteral("limits.json"));
        QFile file(profile);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(device).toJson()) > 0);
        file.close();
        QVERIFY2(m_sim.start({"--profile", profile, "--no-drift", "--speed", "8"}),
                 qPrintable(m_sim.output()));
        m_port = m_sim.portPath();
    }

    // The device's first complete read-out, saved under its automatic name in the folder the
    // command runs in.
    void readout() {
        Run run = cli({"readout", "--port", m_port}, m_folder.path());
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out.size(), 1);
        const QString file = run.out.first().section(u'\t', 1);
        QVERIFY(run.out.first().startsWith(QStringLiteral("1234567\t")));
        QCOMPARE(QFileInfo(file).fileName(), ko3::AutoSaveFileName(1234567, QDate::currentDate()));
        QCOMPARE(QFileInfo(file).path(), QDir(m_folder.path()).canonicalPath());

        const auto line = ko3::ReadFirstLine(file);
        QVERIFY(line);
        const auto block = ko3::SplitDeviceBlock(ko3::ParseHexLine(*line));
        QCOMPARE(block.telegrams.size(), std::size_t{5});
        m_file = file;

        run = cli({"readout", "--port", QStringLiteral("/nonexistent/tty")});
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.err.contains(QStringLiteral("/nonexistent/tty")));
    }

    // A device of another family is named, a silent line ends after the timeout; neither
    // leaves a file behind.
    void readoutFindsNoDeviceOfThisFamily() {
        QTemporaryDir folder;
        SimProcess sibling;
        QVERIFY(sibling.start({"--profile", SimProcess::profile(QStringLiteral("varlix"))}));
        Run run = cli({"readout", "--port", sibling.portPath(), "--timeout", "8"}, folder.path());
        QCOMPARE(run.exitCode, 5);
        QVERIFY2(run.err.contains(QStringLiteral("another family")), qPrintable(run.err));

        SimProcess silent;
        QVERIFY(silent.start(
            {"--profile", SimProcess::profile(QStringLiteral("full")), "--silence", "0"}));
        run = cli({"readout", "--port", silent.portPath(), "--timeout", "2"}, folder.path());
        QCOMPARE(run.exitCode, 4);
        QVERIFY2(run.err.contains(QStringLiteral("no device answered")), qPrintable(run.err));
        QVERIFY(QDir(folder.path()).isEmpty());
    }

    // Every watched line shows what the saved read-out shows.
    void watch() {
        QVERIFY(!m_file.isEmpty());
        const Run saved = cli({"view", m_file});
        const auto captions = snapshot(saved.out, QStringLiteral("caption"));

        QProcess watch;
        watch.start(testsupport::programPath(QStringLiteral("mq27diag-cli")),
                    {"watch", "--port", m_port, "--json"});
        QStringList lines;
        QVERIFY(QTest::qWaitFor(
            [&] {
                while (watch.canReadLine())
                    lines << QString::fromUtf8(watch.readLine()).trimmed();
                return lines.size() >= 2;
            },
            15000));
        watch.terminate();
        QVERIFY(watch.waitForFinished(5000));
        QCOMPARE(watch.exitCode(), 0);

        for (const QString& text : lines) {
            const QJsonObject o = QJsonDocument::fromJson(text.toUtf8()).object();
            QCOMPARE(o.value("serial").toString(), QStringLiteral("1234567"));
            const QJsonArray smoke = o.value("smoke").toArray();
            QCOMPARE(smoke.size(), 2);
            for (int d = 0; d < 2; ++d)
                QCOMPARE(QString::number(smoke[d].toDouble(), 'f', 3) + u' ' +
                             o.value("smokeUnit").toString(),
                         captions.value(QStringLiteral("lblSmokeLevel_%1").arg(d)));
            QCOMPARE(o.value("temperature").toDouble(),
                     captions.value("lblTemperature").section(u' ', 0, 0).toDouble());
            QCOMPARE(o.value("airFlow").toDouble(),
                     captions.value("lblAirFlow").section(u' ', 0, 0).toDouble());
            QVERIFY(QDateTime::fromString(o.value("time").toString(), Qt::ISODate).isValid());
            // The full device's pending faults and its second detector's action alarm.
            QCOMPARE(o.value("faults").toVariant().toStringList(),
                     QStringList({"Airflow fault", "Detector module dusty", "Mains fault"}));
            QCOMPARE(o.value("alarms").toVariant().toStringList(), QStringList{"Action alarm 2"});
        }
    }

    // Refused input sends nothing; each page's write goes out once with the typed values and
    // is confirmed; a value the device refuses ends after the timeout with the field named.
    void set() {
        qsizetype from = m_sim.log().size();
        for (const QStringList& bad : {QStringList{"alarm-delay=99"}, QStringList{"relay3=xor:1"},
                                       QStringList{"colour=red"}, QStringList{"altitude=500"}}) {
            const Run run = cli(QStringList{"set", "--port", m_port} + bad);
            QCOMPARE(run.exitCode, 2);
            QVERIFY2(run.err.contains(bad.first().section(u'=', 0, 0)), qPrintable(run.err));
        }
        for (const int command : {129, 130, 137, 138})
            QCOMPARE(m_sim.requestsOf(command, from), 0);

        from = m_sim.log().size();
        Run run = cli({"set", "--port", m_port, "alarm-delay=20", "buzzer=off", "relay3=or:0,4,9",
                       "temp-alarm1=55,50"});
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        QVERIFY(run.out.contains(QStringLiteral("alarm-delay=20")));
        QVERIFY(run.out.contains(QStringLiteral("relay3=or:0,4,9")));
        const auto settings = m_sim.writes(129, from);
        QCOMPARE(settings.size(), 1);
        QCOMPARE(blockByte(settings[0], 22), 20);
        QCOMPARE(blockByte(settings[0], 28) & 0x80, 0);
        const auto relays = m_sim.writes(138, from);
        QCOMPARE(relays.size(), 1);
        QCOMPARE(blockByte(relays[0], 10), 0x11); // events 0 and 4
        QCOMPARE(blockByte(relays[0], 11), 0x42); // event 9, OR
        const auto temperatures = m_sim.writes(137, from);
        QCOMPARE(temperatures.size(), 1);
        QCOMPARE(temperatures[0].mid(2 + 6, 4), QByteArray::fromHex("425E0000")); // 55.5

        from = m_sim.log().size();
        run = cli({"set", "--port", m_port, "--airflow-init", "altitude=500"});
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        const auto init = m_sim.writes(130, from);
        QCOMPARE(init.size(), 1);
        QCOMPARE(blockByte(init[0], 8) * 256 + blockByte(init[0], 9), 500);

        from = m_sim.log().size();
        run = cli({"set", "--port", m_port, "--timeout", "2", "extinguish-delay=45"});
        QCOMPARE(run.exitCode, 3);
        QVERIFY(run.err.contains(QStringLiteral("extinguish-delay")));
        QCOMPARE(m_sim.requestsOf(129, from), 1);
    }

private:
    SimProcess m_sim;
    QString m_port;
    QTemporaryDir m_folder;
    QString m_file;
};

QTEST_GUILESS_MAIN(TestCliLive)
#include "tst_clilive.moc"
