// Soak of the data logger: hours of a device's read-outs, as fast as the tool takes them,
// through the whole road from acceptance on, with eight values ticked, both files recording
// and the trend chart on screen (offscreen). The clock the logger stamps with steps 420 ms a
// telegram, as the poll does. Every simulated hour: the resident memory, the points the
// trend keeps and draws, the files' sizes, and the processor time per read-out.
//
//   build/bin/mq27benchlogger [HOURS]   (default 8)

#include "common/platformservices.h"
#include "link/recognition.h"
#include "link/telegram.h"
#include "logger/datalogger.h"
#include "logger/logger_elements.h"
#include "logger/ui/frmlogdatadev.h"
#include "logger/ui/trendchart.h"
#include "shell/languages.h"
#include "shell/program.h"

#include "sim/sim_clock.h"
#include "sim/sim_device.h"

#include <cstdio>
#include <ctime>
#include <vector>

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace lg = frmLogdataDev;

namespace {

constexpr int kStepMs = 420;
// Distinct read-outs of the drifting device, used over and over: four minutes of values.
constexpr int kDistinctSteps = 600;

class SteppingClock : public Clock {
public:
    QDateTime time{QDate(2026, 11, 23), QTime(8, 0)};
    QDateTime now() const override { return time; }
};

// File dialogs that answer with the next prepared path.
class BenchDialogs : public UnattendedDialogs {
public:
    QString next;
    std::optional<QString> saveFileName(const QString&, const QString&) override { return next; }
};

int commandAt(std::size_t k) {
    static constexpr int kTakeOn[] = {1, 2, 3, 5}, kPoll[] = {2, 3, 5};
    return k < 4 ? kTakeOn[k] : kPoll[(k - 4) % 3];
}

std::vector<Bytes> pollFrames() {
    QString error;
    const auto profile = mq27sim::ProfileLoader::load(
        QStringLiteral(MQ27_SOURCE_DIR "/tools/profiles/full.json"), error);
    if (!profile) qFatal("%s", qPrintable(error));
    const mq27sim::SimClock clock;
    std::vector<Bytes> frames;
    for (int k = 0; k < 4 + kDistinctSteps; ++k) {
        mq27sim::DeviceProfile now = *profile;
        for (const std::string& name : now.values.names())
            now.values.set(name, profile->values.live(name, k * kStepMs / 1000.0));
        const mq27sim::SimDevice device(now, clock, false, nullptr);
        frames.push_back(*device.readTelegram(commandAt(static_cast<std::size_t>(k))));
    }
    return frames;
}

double residentMiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ')[0].toDouble() / 1024;
    return 0;
}

double cpuSeconds() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int hours = argc > 1 ? std::max(1, std::atoi(argv[1])) : 8;

    QTemporaryDir folder;
    BenchDialogs dialogs;
    NoLauncher launcher;
    MemorySettings settings;
    SteppingClock clock;
    Services services;
    services.dialogs = &dialogs;
    services.launcher = &launcher;
    services.settings = &settings;
    services.clock = &clock;
    services.programDir = folder.path();
    services.dataDir = folder.path();
    Program program(services, nullptr);
    program.forms().frmDisplay().load();
    program.languages().SwitchToLanguage(2);
    Form& form = program.forms().frmLogdataDev();
    frmLogdataDevWindow window(form, program.logger(),
                               [&program](int index) { return program.str(index); });
    form.show();

    // Eight numbers in five units.
    const QStringList ticked = {
        QStringLiteral("Akt. Luftstrom [m/s]"),
        QStringLiteral("Akt. Lufttemperatur [°C]"),
        QStringLiteral("Lüfter Sollspannung [mV]"),
        QStringLiteral("Detektor 1: Aktueller Kammerwert, Prozent von GW [%]"),
        QStringLiteral("Detektor 1: Aktueller Zustand Bargraphanzeige [%]"),
        QStringLiteral("Detektor 2: Aktueller Zustand Bargraphanzeige [%]"),
        QStringLiteral("NTC Fühler 1: Aktuelle Temperatur [°C]"),
        QStringLiteral("Versorgungsspannung [V]")};
    for (const QString& row : ticked) {
        const qsizetype index = form.items(lg::lstDisplay[0]).indexOf(row);
        if (index < 0) qFatal("no row %s", qPrintable(row));
        form.userSetTicked(lg::lstDisplay[0], index, true);
    }
    const QString log = folder.filePath(QStringLiteral("soak.log"));
    const QString dat = folder.filePath(QStringLiteral("soak.dat"));
    for (const auto& [tick, button, path] :
         {std::tuple{lg::chkSaveAsExcel.name(), lg::cmdSaveAsExcel.name(), log},
          std::tuple{lg::chkSaveAsMathCad.name(), lg::cmdSaveAsMathCad.name(), dat}}) {
        form.userSetValue(tick, 1);
        form.click(tick);
        dialogs.next = path;
        form.click(button);
    }
    form.setValue(lg::cboTrendSpan, 3); // everything since the start
    form.click(lg::cmdStart);
    if (!program.logger().LoggerRunning) qFatal("the recording did not start");

    const std::vector<Bytes> frames = pollFrames();
    const QDateTime start = clock.time;
    const std::size_t stepsPerHour = 3600 * 1000 / kStepMs;
    std::printf("Data logger soak, %d h of read-outs (telegram 5 every %d ms), 8 values, both "
                "files, trend over everything\n",
                hours, 3 * kStepMs);
    std::printf(" hour  resident MiB  trend points kept/drawn  .dat KiB  .log KiB  "
                "cpu per read-out\n");
    std::printf("%5d  %12.1f\n", 0, residentMiB());
    double cpuHour = cpuSeconds();
    std::size_t readOuts = 0;
    for (std::size_t k = 0; k < stepsPerHour * static_cast<std::size_t>(hours); ++k) {
        const std::size_t frame = k < 4 + kDistinctSteps ? k : 4 + (k - 4) % kDistinctSteps;
        clock.time = start.addMSecs(static_cast<qint64>(k) * kStepMs);
        program.recognition().RcvDataHandle(
            telegram::StampTelegram(frames[frame], clock.time).value());
        if (commandAt(k) == 5) {
            ++readOuts;
            // The window paints what changed, as the event loop does between telegrams.
            QCoreApplication::processEvents();
        }
        if ((k + 1) % stepsPerHour != 0) continue;
        std::size_t kept = 0, drawn = 0;
        for (const TrendStore::Series& s : program.logger().Trend().series())
            kept += s.points.size();
        for (qsizetype n : window.chart().pointCounts())
            drawn += static_cast<std::size_t>(n);
        const double cpu = cpuSeconds();
        std::printf("%5zu  %12.1f  %12zu / %-9zu  %8.0f  %8.0f  %8.0f us\n", (k + 1) / stepsPerHour,
                    residentMiB(), kept, drawn, static_cast<double>(QFileInfo(dat).size()) / 1024,
                    static_cast<double>(QFileInfo(log).size()) / 1024,
                    (cpu - cpuHour) * 1e6 / static_cast<double>(stepsPerHour / 3));
        cpuHour = cpu;
    }
    std::printf("%zu read-outs, %lld lines in .dat, %lld in .log\n", readOuts,
                program.logger().MathCadRecords(), program.logger().ExcelRecords());
    return program.logger().LoggerRunning ? 0 : 1;
}
