// Speed of the main view, offscreen, on the virtual device's full profile:
//
//   1. every telegram of the poll (2, 3, 5, 2, ...) through the tool's road from acceptance
//      on, which ends in MainView::ShowData(), then the paint of the page shown, for each of
//      the eight pages in turn: median and 99th percentile;
//   2. the LED rhythms while the poll goes on: when the model's colour of a blinking and of
//      a flashing LED changes, against when it should.
//
//   build/bin/mq27benchview [LED_SECONDS [SAMPLES]]   (defaults 20 s and 600 telegrams a
//                                                     page; offscreen unless QT_QPA_PLATFORM
//                                                     says otherwise)
//
// The live values drift as the virtual device lets them, one poll step (420 ms) per
// telegram, so that every refresh has something to change.

#include "display/mainview_elements.h"
#include "display/ui/frmdisplay.h"
#include "link/recognition.h"
#include "link/telegram.h"
#include "shell/offlineview.h"
#include "shell/program.h"

#include "sim/sim_clock.h"
#include "sim/sim_device.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <map>
#include <vector>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTabWidget>
#include <QTimer>
#include <QWindow>

namespace el = frmDisplay;

namespace {

constexpr int kStepMs = 420; // the poll's pace: collecting window and send timer
constexpr int kWarmUp = 30;
int g_samples = 600; // per page

// The command of step `k` of the poll: the take-on (1, 2, 3, 5), then 2, 3, 5 over and over.
int commandAt(std::size_t k) {
    static constexpr int kTakeOn[] = {1, 2, 3, 5}, kPoll[] = {2, 3, 5};
    return k < 4 ? kTakeOn[k] : kPoll[(k - 4) % 3];
}

// The stamped telegrams the tool receives while it polls the device for `count` steps.
std::vector<Bytes> pollTelegrams(int count) {
    QString error;
    const auto profile = mq27sim::ProfileLoader::load(
        QStringLiteral(MQ27_SOURCE_DIR "/tools/profiles/full.json"), error);
    if (!profile) qFatal("%s", qPrintable(error));
    const mq27sim::SimClock clock;
    const QDateTime start(QDate(2026, 11, 23), QTime(8, 0));
    std::vector<Bytes> telegrams;
    for (int k = 0; k < count; ++k) {
        mq27sim::DeviceProfile now = *profile;
        for (const std::string& name : now.values.names())
            now.values.set(name, profile->values.live(name, k * kStepMs / 1000.0));
        const mq27sim::SimDevice device(now, clock, false, nullptr);
        telegrams.push_back(
            telegram::StampTelegram(*device.readTelegram(commandAt(static_cast<std::size_t>(k))),
                                    start.addMSecs(k * kStepMs))
                .value());
    }
    return telegrams;
}

// Processor time of this thread: what the work costs, without the time other processes took
// the core away, which a shared machine shows in the upper percentiles of the clock.
double threadMicroseconds() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) * 1e6 + static_cast<double>(t.tv_nsec) / 1e3;
}

double percentile(std::vector<double> v, double p) {
    std::sort(v.begin(), v.end());
    const auto index = static_cast<std::size_t>(std::ceil(p * static_cast<double>(v.size()))) - 1;
    return v[std::min(index, v.size() - 1)];
}

struct Rig {
    OfflineView offline{OfflineView::Options{}};
    Program& program = offline.program();
    frmDisplayWindow window{program.forms().frmDisplay(),
                            [this](int index) { return program.str(index); }};
    std::vector<Bytes> telegrams = pollTelegrams(4 + 2 * (kWarmUp + g_samples));
    std::size_t next = 0;

    // One telegram of the poll through the road the live tool takes from acceptance on.
    void receive() {
        program.recognition().RcvDataHandle(telegrams[next]);
        next = next + 1 < telegrams.size() ? next + 1 : 4;
    }
};

// Per telegram: its road from acceptance to the end of ShowData ("road"), then the posted
// events as the event loop delivers them and the window's update request ("loop": layouts,
// then the paint of the widgets that changed, into the window's backing store). That is
// what the tool does; the platform sends the update request a few milliseconds later, on a
// timer of its own, which the measurement does not wait for. A second
// pass forces the whole page to paint after each road ("grab"), the bound from above.
// grab() rather than repaint(): repaint() goes through the backing store, which takes an
// opaque child as already painted, and the scroll area's content is opaque, so it would
// paint only the page's header; grab() paints every widget of the page, into a pixmap of
// its own. The passes are apart because a full paint leaves the next road with cold caches.
void benchPages(Rig& rig) {
    std::printf("Telegram to painted page (us)   road+loop              slowest    road  loop"
                "    road+grab\n"
                "                                median   p99  cpu p99  telegram   (medians)"
                "    median   p99\n");
    Form& view = rig.program.forms().frmDisplay();
    for (int page = 0; page < frmDisplayWindow::kPageCount; ++page) {
        view.setValue(el::tabDisplay.whole(), page);
        QCoreApplication::sendPostedEvents();
        QWidget* shown = rig.window.tabs()->currentWidget();
        if (rig.window.tabs()->currentIndex() != page) {
            std::printf("  page %d cannot be shown\n", page);
            continue;
        }
        std::vector<double> road, loop, total, cpu, bound;
        std::map<int, std::vector<double>> byCommand;
        for (bool grab : {false, true}) {
            for (int i = 0; i < kWarmUp + g_samples; ++i) {
                const int command = commandAt(rig.next);
                QElapsedTimer clock;
                clock.start();
                const double cpuStart = threadMicroseconds();
                rig.receive();
                const double t1 = static_cast<double>(clock.nsecsElapsed()) / 1000;
                QCoreApplication::sendPostedEvents();
                QEvent update(QEvent::UpdateRequest);
                QCoreApplication::sendEvent(&rig.window, &update);
                const double t2 = static_cast<double>(clock.nsecsElapsed()) / 1000;
                const double cpuUsed = threadMicroseconds() - cpuStart;
                if (grab && shown->grab().isNull()) qFatal("page %d did not paint", page);
                const double t3 = static_cast<double>(clock.nsecsElapsed()) / 1000;
                if (i < kWarmUp) continue;
                if (grab) {
                    bound.push_back(t1 + t3 - t2);
                    continue;
                }
                road.push_back(t1);
                loop.push_back(t2 - t1);
                total.push_back(t2);
                cpu.push_back(cpuUsed);
                byCommand[command].push_back(t2);
            }
        }
        int slowest = 0;
        double slowestMedian = -1;
        for (const auto& [command, times] : byCommand)
            if (percentile(times, 0.5) > slowestMedian) {
                slowest = command;
                slowestMedian = percentile(times, 0.5);
            }
        std::printf("  %d %-26s %6.0f %5.0f %6.0f    %d: %5.0f  %5.0f %5.0f   %7.0f %5.0f\n", page,
                    qPrintable(rig.window.tabs()->tabText(page).remove(u'&')),
                    percentile(total, 0.5), percentile(total, 0.99), percentile(cpu, 0.99), slowest,
                    slowestMedian, percentile(road, 0.5), percentile(loop, 0.5),
                    percentile(bound, 0.5), percentile(bound, 0.99));
    }
}

// When the model's colour of `element` changes.
struct LedLog {
    QString element;
    std::vector<double> changes; // ms
    std::vector<bool> lit;       // after each change
};

// Deviation of each change from its nominal time, two ways: from the previous change plus
// the nominal interval, and from the first change plus all nominal intervals since.
void reportLed(const char* name, const LedLog& log, double onMs, double offMs) {
    if (log.changes.size() < 3) {
        std::printf("  %s: only %zu changes\n", name, log.changes.size());
        return;
    }
    double stepSum = 0, stepMax = 0, driftSum = 0, driftMax = 0, nominal = log.changes[0];
    const std::size_t n = log.changes.size() - 1;
    for (std::size_t i = 1; i <= n; ++i) {
        const double interval = log.lit[i - 1] ? onMs : offMs;
        nominal += interval;
        const double step = std::abs(log.changes[i] - log.changes[i - 1] - interval);
        const double drift = std::abs(log.changes[i] - nominal);
        stepSum += step;
        stepMax = std::max(stepMax, step);
        driftSum += drift;
        driftMax = std::max(driftMax, drift);
    }
    std::printf("  %-30s %4zu changes   step: mean %5.2f max %5.2f   schedule: mean %5.2f max "
                "%5.2f ms\n",
                name, n + 1, stepSum / n, stepMax, driftSum / n, driftMax);
}

// The device reports the failure LED blinking (state 2) and the mains-failure LED flashing
// (state 1); the poll feeds a telegram every 420 ms meanwhile, and the event loop paints.
// The measurement page is shown: its refresh is the longest that can hold a timer up.
void benchLeds(Rig& rig, int seconds) {
    Form& view = rig.program.forms().frmDisplay();
    view.setValue(el::tabDisplay.whole(), 1);
    LedLog blink{el::picDisplay[1], {}, {}};
    LedLog flash{el::picDisplay[3], {}, {}};
    if (view.value(blink.element) != 2 || view.value(flash.element) != 1)
        qFatal("the profile no longer blinks picDisplay_1 and flashes picDisplay_3");
    QElapsedTimer clock;
    clock.start();
    QObject::connect(
        &view, &Form::elementChanged, [&](const QString& element, ElementProperty property) {
            if (property != ElementProperty::BackColor) return;
            for (LedLog* log : {&blink, &flash}) {
                if (element != log->element) continue;
                log->changes.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
                log->lit.push_back(view.backColor(element) != colors::kWindowBackground);
            }
        });
    QTimer poll;
    poll.setTimerType(Qt::PreciseTimer);
    QObject::connect(&poll, &QTimer::timeout, [&rig] { rig.receive(); });
    poll.start(kStepMs);
    QTimer::singleShot(seconds * 1000, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
    std::printf("LED colour changes in the model over %d s, deviation from nominal:\n", seconds);
    reportLed("blink (state 2), 500/500 ms", blink, 500, 500);
    reportLed("flash (state 1), 100/900 ms", flash, 100, 900);
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int ledSeconds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 20;
    if (argc > 2) g_samples = std::max(1, std::atoi(argv[2]));
    // Other work on the machine shows in the upper percentiles; say how busy it was.
    QFile load(QStringLiteral("/proc/loadavg"));
    if (load.open(QIODevice::ReadOnly))
        std::printf("Load average (1, 5, 15 min): %s\n",
                    load.readLine().split(' ').mid(0, 3).join(' ').constData());
    Rig rig;
    for (int k = 0; k < 4; ++k)
        rig.receive();
    // The paint waits for the window system to report the window exposed.
    QWindow* handle = rig.window.windowHandle();
    for (int i = 0; i < 1000 && !(handle && handle->isExposed()); ++i) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        handle = rig.window.windowHandle();
    }
    if (!handle || !handle->isExposed()) qFatal("the main view did not show after the take-on");
    benchPages(rig);
    benchLeds(rig, ledSeconds);
    return 0;
}
