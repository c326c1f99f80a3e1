// Soak: the whole tool against the virtual device on a bad line for a long time. The
// device (full profile) puts noise before every answer, spoils every fifth answer's CRC,
// splits every answer into two bursts, falls silent for a while in the first third and
// goes away and comes back in the second. Measured: resident memory after the first
// take-on and at the end and its growth per hour, processor time, take-ons, and whether
// the main view at the end shows what a fresh tool shows of the same device.
//
//   build/bin/mq27benchsoak [SECONDS]   (default MQ27_SOAK_SECONDS, else 1800)

#include "common/formmodel.h"
#include "common/formsnapshot.h"
#include "display/ledrhythm.h"
#include "engine/telegramdecoder.h"
#include "link/seriallink.h"
#include "shell/program.h"
#include "support/livetool.h"
#include "support/simprocess.h"

#include <cstdio>
#include <cstdlib>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSet>
#include <QTest>

#include <sys/resource.h>

namespace {

const QString kSerial = QStringLiteral("1234567");

double residentMiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    return 0;
}

double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

QStringList faultOptions(int seconds) {
    return {"--profile",
            SimProcess::profile(QStringLiteral("full")),
            "--no-drift",
            "--noise",
            "6",
            "--bad-crc-every",
            "5",
            "--split-gap",
            "40",
            "--silence",
            QStringLiteral("%1:12").arg(seconds / 3)};
}

// The main view once a device has been read out completely, as text.
QStringList shownAfterReadOut(LiveTool& tool) {
    int readOuts = 0;
    const auto connection = QObject::connect(
        &tool.app().decoder(), &TelegramDecoder::ReadOutComplete, [&](double) { ++readOuts; });
    if (!QTest::qWaitFor([&] { return readOuts >= 2; }, 30000)) qWarning("no complete read-out");
    QObject::disconnect(connection);
    // The blinking LEDs by the state they blink from, not by the colour of the phase caught.
    const QSet<QString> leds = LedRhythm::elements();
    QStringList lines;
    for (const QString& line : FormSnapshot(tool.display(), leds)) {
        const QStringList fields = line.split(u'\t');
        const bool painted = fields.size() > 1 && leds.contains(fields[0]) &&
                             (fields[1] == u"backcolor" || fields[1] == u"dot");
        if (!painted) lines << line;
    }
    return lines;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    int seconds = qEnvironmentVariableIntValue("MQ27_SOAK_SECONDS");
    if (argc > 1) seconds = std::atoi(argv[1]);
    if (seconds <= 0) seconds = 1800;

    SimProcess sim;
    if (!sim.start(faultOptions(seconds))) qFatal("%s", qPrintable(sim.output()));
    LiveTool tool(sim.portPath());
    int takeOns = 0;
    QObject::connect(&tool.app().decoder(), &TelegramDecoder::DeviceTakenOn,
                     [&](const QString&) { ++takeOns; });
    tool.start();
    if (!tool.waitForDevice(kSerial, 30000)) qFatal("the device was not taken on");

    // Memory counts from here: the windows are built and the device is shown.
    QTest::qWait(5000);
    const double startMiB = residentMiB();
    const double startCpu = processorSeconds();
    QElapsedTimer clock;
    clock.start();

    bool restarted = false;
    int reopenMs = -1;
    double watchPercent = -1;
    while (clock.elapsed() < qint64(seconds) * 1000) {
        QTest::qWait(1000);
        if (!restarted && clock.elapsed() > qint64(seconds) * 2000 / 3) {
            // The adapter is pulled and put back.
            restarted = true;
            sim.stop();
            if (!QTest::qWaitFor([&] { return !tool.app().link().IsPortOpen(); }, 5000))
                qFatal("the tool did not notice the line going away");
            // What waiting for it costs: ten seconds of looking twice a second.
            const double before = processorSeconds();
            QTest::qWait(10000);
            watchPercent = 10 * (processorSeconds() - before);
            if (!sim.start(faultOptions(seconds))) qFatal("%s", qPrintable(sim.output()));
            QElapsedTimer back;
            back.start();
            if (QTest::qWaitFor([&] { return tool.app().link().IsPortOpen(); }, 10000))
                reopenMs = static_cast<int>(back.elapsed());
        }
    }
    const double hours = static_cast<double>(clock.elapsed()) / 3.6e6;
    const double endMiB = residentMiB();
    const double cpu = processorSeconds() - startCpu;

    // The end: a clean line, then what the soaked tool shows against what a fresh one shows.
    sim.stop();
    if (!sim.start({"--profile", SimProcess::profile(QStringLiteral("full")), "--no-drift"}))
        qFatal("%s", qPrintable(sim.output()));
    const QStringList soaked = shownAfterReadOut(tool);
    QStringList fresh;
    {
        LiveTool other(sim.portPath());
        tool.app().link().ClosePort();
        other.start();
        if (!other.waitForDevice(kSerial, 30000)) qWarning("the fresh tool found no device");
        fresh = shownAfterReadOut(other);
    }
    const QSet<QString> soakedLines(soaked.begin(), soaked.end());
    const QSet<QString> freshLines(fresh.begin(), fresh.end());
    QStringList differing = QSet<QString>(soakedLines).subtract(freshLines).values();
    differing.sort();

    std::printf("Soak of %.0f s on a bad line (noise 6, bad CRC every 5th, split answers, a 12 s "
                "silence, the line gone and back once):\n",
                hours * 3600);
    std::printf("  resident memory %.2f MiB after the first take-on, %.2f MiB at the end: %+.3f "
                "MiB/h\n",
                startMiB, endMiB, (endMiB - startMiB) / hours);
    std::printf("  processor time %.1f s, %.2f %% of one core\n", cpu, 100 * cpu / (hours * 3600));
    std::printf("  take-ons %d; while the line was gone %.2f %% of one core; port open again %d ms "
                "after it came back\n",
                takeOns, watchPercent, reopenMs);
    std::printf("  main view at the end: %s (%lld of %lld lines differ from a fresh tool)\n",
                differing.isEmpty() ? "matches" : "DIFFERS",
                static_cast<long long>(differing.size()), static_cast<long long>(soaked.size()));
    for (const QString& line : differing)
        std::printf("    %s\n", qPrintable(line));
    return differing.isEmpty() ? 0 : 1;
}
