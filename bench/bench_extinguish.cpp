// Cost of one refresh (tmrRefresh, 234 ms) of the module windows, offscreen, on the virtual
// device's ten-module profile: the refresh from the value store, then the posted events and
// the window's update request (layouts and the paint of what changed). Each refresh follows
// a telegram 5 in which the module's faults, online flag and resistors have changed, so that
// every refresh has something to draw.
//
//   build/bin/mq27benchext [SAMPLES]   (default 500 refreshes a window)

#include "extinguish/extinguishdetails.h"
#include "extinguish/extinguishsettings.h"
#include "extinguish/ui/frmextinguishdetails.h"
#include "extinguish/ui/frmextinguishsettings.h"
#include "link/recognition.h"
#include "link/telegram.h"
#include "shell/offlineview.h"
#include "shell/program.h"

#include "sim/sim_clock.h"
#include "sim/sim_device.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <vector>

#include <QApplication>
#include <QElapsedTimer>

namespace {

constexpr int kWarmUp = 30;
// Module 4 (4040) has faults and no manual-release line, module 3 (303) has the line.
constexpr int kDetailsModule = 3;
constexpr int kSettingsModule = 2;

double percentile(std::vector<double> v, double p) {
    std::sort(v.begin(), v.end());
    const auto index = static_cast<std::size_t>(std::ceil(p * static_cast<double>(v.size()))) - 1;
    return v[std::min(index, v.size() - 1)];
}

struct Rig {
    OfflineView offline{OfflineView::Options{}};
    Program& program = offline.program();
    mq27sim::DeviceProfile profile;
    const mq27sim::SimClock clock;
    QDateTime at{QDate(2026, 11, 23), QTime(8, 0)};

    Rig() {
        QString error;
        const auto loaded = mq27sim::ProfileLoader::load(
            QStringLiteral(MQ27_SOURCE_DIR "/tools/profiles/tenmodules.json"), error);
        if (!loaded) qFatal("%s", qPrintable(error));
        profile = *loaded;
        for (int command : {1, 2, 3, 5})
            receive(command);
    }

    void receive(int command) {
        const mq27sim::SimDevice device(profile, clock, false, nullptr);
        at = at.addMSecs(420);
        program.recognition().RcvDataHandle(
            telegram::StampTelegram(*device.readTelegram(command), at).value());
    }

    // The state of `module` at step `k`, in telegram 5.
    void change(int module, int k) {
        const std::string m = "modules[" + std::to_string(module) + "].";
        profile.values.set(m + "actualFailures", (k * 37) & 0xFF);
        profile.values.set(m + "savedFailures", (k * 11) & 0xFF);
        profile.values.set(m + "isOnline", k % 2);
        profile.values.set(m + "alarmResistorValue", 1000 + k % 100);
        receive(5);
    }
};

void bench(Rig& rig, const char* name, int module, QWidget& window,
           const std::function<void()>& refresh, int samples) {
    std::vector<double> refreshOnly, total;
    for (int i = 0; i < kWarmUp + samples; ++i) {
        rig.change(module, i);
        QElapsedTimer clock;
        clock.start();
        refresh();
        const double t1 = static_cast<double>(clock.nsecsElapsed()) / 1000;
        QCoreApplication::sendPostedEvents();
        QEvent update(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&window, &update);
        const double t2 = static_cast<double>(clock.nsecsElapsed()) / 1000;
        if (i < kWarmUp) continue;
        refreshOnly.push_back(t1);
        total.push_back(t2);
    }
    std::printf("  %-24s refresh median %6.1f p99 %6.1f   refresh+loop median %6.1f p99 %6.1f\n",
                name, percentile(refreshOnly, 0.5), percentile(refreshOnly, 0.99),
                percentile(total, 0.5), percentile(total, 0.99));
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const int samples = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 500;
    Rig rig;
    Program& p = rig.program;
    auto text = [&p](int index) { return p.str(index); };
    frmExtinguishDetailsWindow details(p.forms().frmExtinguishDetails(), text);
    frmExtinguishSettingsWindow settings(p.forms().frmExtinguishSettings(), text);

    std::printf("One refresh of an open module window, %d samples (us)\n", samples);
    p.extinguishDetails().ShowExtDetails(kDetailsModule);
    QCoreApplication::sendPostedEvents();
    bench(
        rig, "frmExtinguishDetails", kDetailsModule, details,
        [&p] { p.extinguishDetails().GetExtDatails(); }, samples);
    p.forms().frmExtinguishDetails().unload();

    p.extinguishSettings().ShowExtSettings(kSettingsModule);
    QCoreApplication::sendPostedEvents();
    bench(
        rig, "frmExtinguishSettings", kSettingsModule, settings,
        [&p] { p.extinguishSettings().GetExtSettings(); }, samples);
    return 0;
}
