// The four pages of the main view that change the device, against the virtual device: each
// write goes out once, the page waits until the device reports what was typed, and a write
// that the device refuses or never hears keeps the page waiting until the user cancels.
// One device and one tool serve the cases in turn; the device loses the first write on the
// line and takes less extinguishing delay than the tool allows.
#include "display/mainview.h"
#include "display/mainview_elements.h"
#include "shell/program.h"
#include "support/livetool.h"
#include "support/simprocess.h"

#include <algorithm>
#include <memory>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

namespace el = frmDisplay;
using State = SettingsPages::State;
using Page = SettingsPages::Page;

namespace {

constexpr int kWaitMs = 15000;

using Log = QList<SimProcess::Entry>;

// Requests of `command` from entry `from` of the log on.
qsizetype requestsOf(const Log& log, int command, qsizetype from = 0) {
    return std::count_if(
        log.begin() + std::min(from, log.size()), log.end(),
        [command](const SimProcess::Entry& e) { return e.isRequest() && e.cmd == command; });
}

qsizetype eventsOf(const Log& log, const QString& event, qsizetype from = 0) {
    return std::count_if(log.begin() + std::min(from, log.size()), log.end(),
                         [&event](const SimProcess::Entry& e) { return e.event == event; });
}

} // namespace

class TestLiveSettings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void lostWriteWaitsUntilCancel();
    void settingsPageWritesAndVerifies();
    void airFlowInitWritesAndVerifies();
    void relayMaskWritesAndVerifies();
    void temperatureAlarmWritesAndVerifies();
    void refusedValueWaitsUntilCancel();

private:
    Form& view() { return m_tool->display(); }
    SettingsPages& pages() { return m_tool->app().mainView().Pages(); }
    // Accepts the page with `accept` and waits for its write to have gone out; answers the
    // log's length before the click.
    qsizetype acceptAndWaitForWrite(const QString& accept, int command);
    // The page has left Waiting, with exactly one write of `command` since `from`, which the
    // device took (`taken` in its log).
    void verifyWrittenOnce(Page page, int command, qsizetype from,
                           const QString& taken = QStringLiteral("applied"));
    // The page still waits after three more read-outs, naming the field that differs, then
    // Cancel brings it back.
    void verifyWaitsUntilCancel(Page page, const QString& cancel, const QString& differing);

    SimProcess m_sim;
    std::unique_ptr<LiveTool> m_tool;
};

void TestLiveSettings::initTestCase() {
    m_tool = std::make_unique<LiveTool>(m_sim.portPath());
    QFile full(SimProcess::profile(QStringLiteral("full")));
    QVERIFY(full.open(QIODevice::ReadOnly));
    QJsonObject device = QJsonDocument::fromJson(full.readAll()).object();
    device.insert(QStringLiteral("limits"),
                  QJsonObject{{QStringLiteral("controller.extinguishDelay"), QJsonArray{0, 30}}});
    const QString profile = m_sim.writeProfile(QStringLiteral("limits"), device);
    // The air-flow initialisation takes 8 device seconds; --speed shortens it to one.
    QVERIFY2(
        m_sim.start({"--profile", profile, "--no-drift", "--speed", "8", "--lose-writes", "1"}),
        qPrintable(m_sim.output()));
    m_tool->start();
    QVERIFY(m_tool->waitForDevice(QStringLiteral("1234567")));
}

void TestLiveSettings::cleanupTestCase() {
    m_tool.reset();
    m_sim.stop();
}

qsizetype TestLiveSettings::acceptAndWaitForWrite(const QString& accept, int command) {
    const qsizetype from = m_sim.log().size();
    view().click(accept);
    if (!QTest::qWaitFor([&] { return requestsOf(m_sim.log(), command, from) > 0; }, kWaitMs))
        qWarning("no write %d within %d ms", command, kWaitMs);
    return from;
}

void TestLiveSettings::verifyWrittenOnce(Page page, int command, qsizetype from,
                                         const QString& taken) {
    QTRY_COMPARE_WITH_TIMEOUT(pages().state(page), State::Viewing, kWaitMs);
    const Log log = m_sim.log();
    QCOMPARE(requestsOf(log, command, from), 1);
    QCOMPARE(eventsOf(log, taken, from), 1);
}

void TestLiveSettings::verifyWaitsUntilCancel(Page page, const QString& cancel,
                                              const QString& differing) {
    const qsizetype from = m_sim.log().size();
    QVERIFY(QTest::qWaitFor([&] { return requestsOf(m_sim.log(), 5, from) >= 3; }, kWaitMs));
    QCOMPARE(pages().state(page), State::Waiting);
    const QString waiting = SettingsPages::waitingLabel(page);
    QVERIFY(view().isVisible(waiting));
    QVERIFY2(view().caption(waiting).contains(view().caption(differing)),
             qPrintable(view().caption(waiting)));
    view().click(cancel);
    QCOMPARE(pages().state(page), State::Viewing);
    QVERIFY(!view().isVisible(SettingsPages::waitingLabel(page)));
}

// The first write never reaches the device: the tool doesn't send it again, and the page
// waits until the user gives up.
void TestLiveSettings::lostWriteWaitsUntilCancel() {
    const QString before = view().caption(el::lblSensorTempAlarm[0]);
    view().click(el::cmdSensorTempAlarmSet);
    view().userSetCaption(el::txtSensorTempAlarm[0], QStringLiteral("61.5"));
    const qsizetype from = acceptAndWaitForWrite(el::cmdSensorTempAlarmAssume, 137);
    verifyWaitsUntilCancel(SettingsPages::Temperatures, el::cmdSensorTempAlarmCancel,
                           el::lblSensorTempAlarmLegend[0]);
    const Log log = m_sim.log();
    QCOMPARE(requestsOf(log, 137, from), 1);
    QCOMPARE(eventsOf(log, QStringLiteral("lost"), from), 1);
    QCOMPARE(view().caption(el::lblSensorTempAlarm[0]), before);
}

void TestLiveSettings::settingsPageWritesAndVerifies() {
    view().click(el::cmdSettings);
    view().userSetCaption(el::txtAlarmDelay, QStringLiteral("25"));
    view().userSetCaption(el::txtSensitivity[1], QStringLiteral("2,5"));
    const qsizetype from = acceptAndWaitForWrite(el::cmdSettingsAssume, 129);
    verifyWrittenOnce(SettingsPages::Settings, 129, from);
    QCOMPARE(view().caption(el::lblAlarmDelay), QStringLiteral("25"));
    QCOMPARE(view().caption(el::lblSensitivity[1]), QStringLiteral("2.500"));
}

// The initialisation runs in the device before it reports the new set points.
void TestLiveSettings::airFlowInitWritesAndVerifies() {
    view().click(el::cmdAirFlowSet);
    view().userSetCaption(el::txtAltitude, QStringLiteral("480"));
    const qsizetype from = acceptAndWaitForWrite(el::cmdAirFlowInit, 130);
    verifyWrittenOnce(SettingsPages::AirFlow, 130, from, QStringLiteral("airflow-init-end"));
    QCOMPARE(view().caption(el::lblAltitude), QStringLiteral("480"));
}

void TestLiveSettings::relayMaskWritesAndVerifies() {
    view().click(el::cmdRelaySet);
    const bool was = view().isChecked(el::chkRelay2[5]);
    view().userSetValue(el::chkRelay2[5], was ? 0 : 1);
    const qsizetype from = acceptAndWaitForWrite(el::cmdRelayAssume, 138);
    verifyWrittenOnce(SettingsPages::Relays, 138, from);
    QCOMPARE(view().isChecked(el::chkRelay2[5]), !was);
    QVERIFY(!view().isEnabled(el::chkRelay2[5]));
}

void TestLiveSettings::temperatureAlarmWritesAndVerifies() {
    view().click(el::cmdSensorTempAlarmSet);
    view().userSetCaption(el::txtSensorTempAlarm[0], QStringLiteral("61.5"));
    const qsizetype from = acceptAndWaitForWrite(el::cmdSensorTempAlarmAssume, 137);
    verifyWrittenOnce(SettingsPages::Temperatures, 137, from);
    QCOMPARE(view().caption(el::lblSensorTempAlarm[0]), QStringLiteral("61.5"));
}

// 45 s lies within the tool's limits but beyond this device's.
void TestLiveSettings::refusedValueWaitsUntilCancel() {
    const QString before = view().caption(el::lblExtinguishDelay);
    view().click(el::cmdSettings);
    view().userSetCaption(el::txtExtinguishDelay, QStringLiteral("45"));
    const qsizetype from = acceptAndWaitForWrite(el::cmdSettingsAssume, 129);
    verifyWaitsUntilCancel(SettingsPages::Settings, el::cmdSettingsCancel,
                           el::lblExtinguishDelayLegend);
    const Log log = m_sim.log();
    QCOMPARE(requestsOf(log, 129, from), 1);
    QCOMPARE(eventsOf(log, QStringLiteral("refused"), from), 1);
    QCOMPARE(view().caption(el::lblExtinguishDelay), before);
}

QTEST_MAIN(TestLiveSettings)
#include "tst_livesettings.moc"
