// The module windows against the virtual device with ten modules: a module makes itself
// known by its LEDs, its manual-release settings are written and read back, and a value
// that the device refuses keeps the window waiting until the engineer cancels. One device
// and one tool serve the cases in turn.
#include "common/colors.h"
#include "common/formmodel.h"
#include "display/mainview_elements.h"
#include "extinguish/extinguishsettings.h"
#include "shell/program.h"
#include "support/livetool.h"
#include "support/simprocess.h"

#include <algorithm>
#include <memory>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace es = frmExtinguishSettings;
using State = ExtinguishSettings::State;
using Log = QList<SimProcess::Entry>;

namespace {

// A module takes alarm resistors up to 100 kOhm only, though the tool allows 50 MOhm.
constexpr double kDeviceAlarmMax = 100000;

auto request(int command) {
    return [command](const SimProcess::Entry& e) { return e.isRequest() && e.cmd == command; };
}

auto simEvent(const char* name, int command) {
    return [name, command](const SimProcess::Entry& e) {
        return e.event == QLatin1String(name) && e.cmd == command;
    };
}

} // namespace

class TestLiveExtinguish : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void identifiedModuleBlinksOnTheStatusPage();
    void moduleSettingsWrittenAndReadBack();
    void refusedValueKeepsTheWindowWaitingUntilCancel();

private:
    Form& view() { return m_tool->display(); }
    Form& window() { return m_tool->app().forms().frmExtinguishSettings(); }
    ExtinguishSettings& settings() { return m_tool->app().extinguishSettings(); }
    qsizetype count(auto pick) {
        const Log log = m_sim.log();
        return std::count_if(log.begin(), log.end(), pick);
    }

    SimProcess m_sim;
    std::unique_ptr<LiveTool> m_tool;
};

void TestLiveExtinguish::initTestCase() {
    m_tool = std::make_unique<LiveTool>(m_sim.portPath());
    QFile file(SimProcess::profile(QStringLiteral("tenmodules")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QJsonObject profile = QJsonDocument::fromJson(file.readAll()).object();
    profile.insert(QStringLiteral("limits"),
                   QJsonObject{{QStringLiteral("modules.alarmResistorValue"),
                                QJsonArray{0, kDeviceAlarmMax}}});
    const QString path = m_sim.writeProfile(QStringLiteral("limited"), profile);
    QVERIFY2(m_sim.start({"--profile", path, "--no-drift"}), qPrintable(m_sim.output()));
    m_tool->start();
    QVERIFY(m_tool->waitForDevice(QStringLiteral("3100010")));
}

void TestLiveExtinguish::cleanupTestCase() {
    m_tool.reset();
    m_sim.stop();
}

// Module 3 (303) lights its operating LED steadily; while it identifies itself the LED
// blinks on the status page, painted dark and lit in turn.
void TestLiveExtinguish::identifiedModuleBlinksOnTheStatusPage() {
    const QString led = frmDisplay::picExtOperating[2];
    QCOMPARE(view().value(led), 3.0);
    view().click(frmDisplay::cmdExtinguisherIdent[2]);
    QTRY_COMPARE_WITH_TIMEOUT(view().value(led), 2.0, 10000);
    QTRY_COMPARE_WITH_TIMEOUT(view().backColor(led), colors::kWindowBackground, 3000);
    QTRY_COMPARE_WITH_TIMEOUT(view().backColor(led), colors::kGreen, 3000);
    QCOMPARE(count(request(139)), 1);
    QCOMPARE(count(simEvent("identify-start", -1)), 1);
}

void TestLiveExtinguish::moduleSettingsWrittenAndReadBack() {
    view().click(frmDisplay::mnuExtinguishSettings);
    Form& w = window();
    QVERIFY(w.isShown() && w.isModal());
    QCOMPARE(w.items(es::cboSerialNumber).at(0), QStringLiteral("101"));
    QCOMPARE(w.caption(es::lblParameterValue[0]), QStringLiteral("1000"));

    w.click(es::cmdSettings);
    w.userSetCaption(es::txtParameterValue[0], QStringLiteral("2200"));
    w.userSetCaption(es::txtParameterValue[1], QStringLiteral("5600"));
    w.userSetCaption(es::txtParameterValue[2], QStringLiteral("15"));
    w.click(es::cmdSettingsAssume);
    QCOMPARE(settings().CurrentState(), State::Waiting);
    QTRY_COMPARE_WITH_TIMEOUT(settings().CurrentState(), State::Viewing, 15000);
    QCOMPARE(w.caption(es::lblParameterValue[0]), QStringLiteral("2200"));
    QCOMPARE(w.caption(es::lblParameterValue[1]), QStringLiteral("5600"));
    QCOMPARE(w.caption(es::lblParameterValue[2]), QStringLiteral("15"));
    QCOMPARE(count(request(136)), 1);
    QCOMPARE(count(simEvent("applied", 136)), 1);
}

// The device refuses the value; the window goes on waiting through several read-backs,
// saying what still differs, and Cancel shows the device's own value again.
void TestLiveExtinguish::refusedValueKeepsTheWindowWaitingUntilCancel() {
    Form& w = window();
    w.click(es::cmdSettings);
    w.userSetCaption(es::txtParameterValue[0], QStringLiteral("200000"));
    w.click(es::cmdSettingsAssume);
    QTRY_COMPARE_WITH_TIMEOUT(count(simEvent("refused", 136)), 1, 10000);
    const qsizetype readsAtRefusal = count(request(5));
    QTRY_VERIFY_WITH_TIMEOUT(count(request(5)) >= readsAtRefusal + 2, 10000);
    QCOMPARE(settings().CurrentState(), State::Waiting);
    QVERIFY(w.isVisible(es::lblSettingsWaiting));
    QVERIFY2(w.caption(es::lblSettingsWaiting).contains(w.caption(es::lblParameterName[0])),
             qPrintable(w.caption(es::lblSettingsWaiting)));
    QCOMPARE(w.caption(es::lblParameterValue[0]), QStringLiteral("2200"));

    w.click(es::cmdSettingsCancel);
    QCOMPARE(settings().CurrentState(), State::Viewing);
    QVERIFY(!w.isVisible(es::lblSettingsWaiting) && w.isVisible(es::lblParameterValue[0]));
    QCOMPARE(count(request(136)), 2);
    w.click(es::cmdClose);
    QVERIFY(!w.isShown());
}

QTEST_MAIN(TestLiveExtinguish)
#include "extinguish/extinguish_elements.h"
#include "tst_liveextinguish.moc"
