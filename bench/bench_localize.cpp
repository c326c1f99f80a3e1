// Cost of keeping the open learn window current, offscreen, on the virtual device's full
// profile: ShowLocData (which runs at the head of every refresh of the main view, the learn
// window's only refresh) with the window open in its learn layout, then the posted events
// and the window's update request (layouts and the paint of what changed). Each step stores
// a telegram 2 in which the smoke levels change and a measurement starts or ends, so that
// the lamps, the bar graphs, the buttons and the times all have something to draw.
//
//   build/bin/mq27benchloc [SAMPLES]   (default 500 refreshes)

#include "display/mainview_elements.h"
#include "link/recognition.h"
#include "link/telegram.h"
#include "localize/localisation.h"
#include "localize/ui/frmlocalizelearn.h"
#include "shell/offlineview.h"
#include "shell/program.h"
#include "values/valuestore.h"

#include "sim/sim_clock.h"
#include "sim/sim_device.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include <QApplication>
#include <QElapsedTimer>
#include <QWindow>

namespace {

constexpr int kWarmUp = 30;

double percentile(std::vector<double> v, double p) {
    std::sort(v.begin(), v.end());
    const auto index = static_cast<std::size_t>(std::ceil(p * static_cast<double>(v.size()))) - 1;
    return v[std::min(index, v.size() - 1)];
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const int samples = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 500;

    OfflineView offline{OfflineView::Options{}};
    Program& p = offline.program();
    QString error;
    const auto loaded = mq27sim::ProfileLoader::load(
        QStringLiteral(MQ27_SOURCE_DIR "/tools/profiles/full.json"), error);
    if (!loaded) qFatal("%s", qPrintable(error));
    mq27sim::DeviceProfile profile = *loaded;
    const mq27sim::SimClock clock;
    QDateTime at(QDate(2026, 11, 23), QTime(8, 0));
    auto telegram = [&](int command) {
        const mq27sim::SimDevice device(profile, clock, false, nullptr);
        at = at.addMSecs(420);
        return telegram::StampTelegram(*device.readTelegram(command), at).value();
    };
    for (int command : {1, 2, 3, 5})
        p.recognition().RcvDataHandle(telegram(command));

    frmLocalizeLearnWindow window(p.forms().frmLocalizeLearn(),
                                  [&p](int index) { return p.str(index); });
    Localisation& loc = p.localisation();
    p.forms().frmDisplay().setChecked(frmDisplay::chkLocalization[0], true);
    loc.cmdShowLocLearnMode_Click(0);
    // Shown is not yet painted: the platform exposes the window from the event loop.
    QElapsedTimer exposing;
    exposing.start();
    while (!(window.windowHandle() && window.windowHandle()->isExposed()) &&
           exposing.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);

    std::vector<double> refreshOnly, total, switched, switchedTotal, whole;
    for (int i = 0; i < kWarmUp + samples; ++i) {
        profile.values.set("localisation.learningIsOn", 1);
        profile.values.set("localisation.locIsActive", (i / 4) % 2);
        profile.values.set("localisation.firePlaceSuckTime", 1000 + (i * 37) % 1500);
        profile.values.set("detectors[0].smokeValueRatio", (i * 13) % 1000);
        profile.values.set("detectors[1].smokeValueRatio", (i * 7) % 1000);
        Bytes stored = telegram(2);
        p.values()->SetDataArray(stored, 2);
        QElapsedTimer timer;
        timer.start();
        loc.ShowLocData();
        const double t1 = static_cast<double>(timer.nsecsElapsed()) / 1000;
        QCoreApplication::sendPostedEvents();
        QEvent update(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&window, &update);
        const double t2 = static_cast<double>(timer.nsecsElapsed()) / 1000;
        // The bound: the whole window painted anew.
        window.repaint();
        const double t3 = static_cast<double>(timer.nsecsElapsed()) / 1000;
        if (i < kWarmUp) continue;
        // Every fourth step a measurement starts or ends: buttons, entry and lamps change.
        (i % 4 == 0 ? switched : refreshOnly).push_back(t1);
        (i % 4 == 0 ? switchedTotal : total).push_back(t2);
        whole.push_back(t3 - t2);
    }
    std::printf("One refresh of the open learn window (%s), %d samples (us)\n",
                window.windowHandle() && window.windowHandle()->isExposed() ? "exposed"
                                                                            : "not exposed",
                samples);
    std::printf("  %-24s refresh median %6.1f p99 %6.1f   refresh+loop median %6.1f p99 %6.1f\n",
                "frmLocalizeLearn", percentile(refreshOnly, 0.5), percentile(refreshOnly, 0.99),
                percentile(total, 0.5), percentile(total, 0.99));
    std::printf("  %-24s refresh median %6.1f p99 %6.1f   refresh+loop median %6.1f p99 %6.1f\n",
                "... measurement switched", percentile(switched, 0.5), percentile(switched, 0.99),
                percentile(switchedTotal, 0.5), percentile(switchedTotal, 0.99));
    std::printf("  %-24s whole window painted median %6.1f p99 %6.1f\n", "", percentile(whole, 0.5),
                percentile(whole, 0.99));
    return 0;
}
