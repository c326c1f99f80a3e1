// How quickly a setting written on the main view goes out and is seen as taken, with the
// whole tool against the virtual device (full profile, no drift):
//
//   1. from Accept to the write going out: the poll sends a queued write 299 ms after it was
//      queued, also when a read is in flight;
//   2. from the telegram that brings the written value back to the page leaving Waiting: the
//      next compare tick, at most 100 ms later.
//
//   build/bin/mq27benchwrite [WRITES]   (default 10; the alarm delay, back and forth)

#include "common/formmodel.h"
#include "display/mainview.h"
#include "display/mainview_elements.h"
#include "engine/pollengine.h"
#include "link/recognition.h"
#include "shell/program.h"
#include "support/livetool.h"
#include "support/simprocess.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

namespace el = frmDisplay;

namespace {

struct Figures {
    std::vector<double> acceptToWrite;   // ms
    std::vector<double> readBackToShown; // ms
    std::vector<int> telegramsBetween;   // accepted from the write to the page's end of waiting
};

void print(const char* name, std::vector<double> v) {
    if (v.empty()) return;
    std::sort(v.begin(), v.end());
    std::printf("  %-44s median %6.1f   min %6.1f   max %6.1f ms  (%zu writes)\n", name,
                v[v.size() / 2], v.front(), v.back(), v.size());
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int writes = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10;

    SimProcess sim;
    if (!sim.start({"--profile", SimProcess::profile(QStringLiteral("full")), "--no-drift"}))
        qFatal("%s", qPrintable(sim.output()));
    LiveTool tool(sim.portPath());
    tool.start();
    if (!tool.waitForDevice(QStringLiteral("1234567"))) qFatal("the device was not taken on");
    Form& view = tool.display();
    SettingsPages& pages = tool.app().mainView().Pages();

    QElapsedTimer clock;
    clock.start();
    double lastAccepted = 0;
    int accepted = 0;
    QObject::connect(&tool.app().recognition(), &Recognition::OwnTelegramAccepted,
                     [&](const Bytes&) {
                         lastAccepted = static_cast<double>(clock.nsecsElapsed()) / 1e6;
                         ++accepted;
                     });

    double sentAt = 0;
    QObject::connect(&tool.app().engine(), &PollEngine::WriteSent,
                     [&] { sentAt = static_cast<double>(clock.nsecsElapsed()) / 1e6; });

    Figures f;
    for (int i = 0; i < writes; ++i) {
        view.click(el::cmdSettings);
        view.userSetCaption(el::txtAlarmDelay, QString::number(20 + i % 2));
        const double acceptAt = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        view.click(el::cmdSettingsAssume);
        const int acceptedAtClick = accepted;
        if (!QTest::qWaitFor(
                [&] {
                    return pages.state(SettingsPages::Settings) == SettingsPages::State::Viewing;
                },
                15000))
            qFatal("write %d was not verified", i);
        f.readBackToShown.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6 - lastAccepted);
        f.telegramsBetween.push_back(accepted - acceptedAtClick);
        f.acceptToWrite.push_back(sentAt - acceptAt);
    }
    std::printf("Settings written and verified against the virtual device:\n");
    print("Accept to the write going out", f.acceptToWrite);
    print("read-back telegram to the page's Viewing", f.readBackToShown);
    const auto [least, most] =
        std::minmax_element(f.telegramsBetween.begin(), f.telegramsBetween.end());
    std::printf("  telegrams accepted from accept to Viewing: %d to %d\n", *least, *most);
    return 0;
}
