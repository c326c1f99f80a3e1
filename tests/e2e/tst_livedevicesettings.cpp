// The advanced settings window against the virtual device: the resistors and the beta
// values written once each, read back and shown as taken; a value the device refuses keeps
// its page waiting until the user cancels. One device and one tool serve the cases in turn.
#include "common/formmodel.h"
#include "devicesettings/devicesettings.h"
#include "display/mainview_elements.h"
#include "shell/program.h"
#include "support/livetool.h"
#include "support/simprocess.h"

#include <algorithm>
#include <bit>
#include <memory>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace ds = frmDeviceSettings;
using State = DeviceSettings::State;
using Log = QList<SimProcess::Entry>;

namespace {

// The frames the tool sent with `command`, as bytes; a block byte k stands at k + 2.
QList<QByteArray> writes(const Log& log, int command) {
    QList<QByteArray> frames;
    for (const SimProcess::Entry& e : log)
        if (e.isRequest() && e.cmd == command)
            frames << QByteArray::fromHex(e.hex.toLatin1().replace(' ', ""));
    return frames;
}

std::uint32_t word32(const QByteArray& frame, int block) {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i)
        value = value << 8 | static_cast<std::uint8_t>(frame.at(block + 2 + i));
    return value;
}

int word16(const QByteArray& frame, int block) {
    return static_cast<std::uint8_t>(frame.at(block + 2)) << 8 |
           static_cast<std::uint8_t>(frame.at(block + 3));
}

bool refused(const SimProcess::Entry& e) {
    return e.event == u"refused";
}

} // namespace

class TestLiveDeviceSettings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void resistorsWrittenAndReadBack();
    void betaValueWrittenAndReadBack();
    void refusedValueWaitsUntilCancel();

private:
    Form& window() { return m_tool->app().forms().frmDeviceSettings(); }
    State state(DeviceSettings::Page page) { return m_tool->app().deviceSettings().StateOf(page); }

    SimProcess m_sim;
    std::unique_ptr<LiveTool> m_tool;
};

// The full device, whose firmware takes normal resistors up to 10 kOhm only.
void TestLiveDeviceSettings::initTestCase() {
    m_tool = std::make_unique<LiveTool>(m_sim.portPath());
    QFile full(SimProcess::profile(QStringLiteral("full")));
    QVERIFY(full.open(QIODevice::ReadOnly));
    QJsonObject profile = QJsonDocument::fromJson(full.readAll()).object();
    profile.insert(
        QStringLiteral("limits"),
        QJsonObject{{QStringLiteral("controller.normalResistorValue"), QJsonArray{0, 10000}}});
    const QString path = m_sim.writeProfile(QStringLiteral("older"), profile);
    QVERIFY2(m_sim.start({"--profile", path, "--no-drift"}), qPrintable(m_sim.output()));
    m_tool->start();
    QVERIFY(m_tool->waitForDevice(QStringLiteral("1234567")));
    m_tool->display().click(frmDisplay::mnuDeviceSettings);
    QVERIFY(window().isShown() && window().isVisible(ds::fraDeviceSettings[1]));
    QCOMPARE(window().caption(ds::lblParameterValue[0]), QStringLiteral("1200"));
}

void TestLiveDeviceSettings::cleanupTestCase() {
    m_tool.reset();
    m_sim.stop();
}

void TestLiveDeviceSettings::resistorsWrittenAndReadBack() {
    Form& w = window();
    w.click(ds::cmdSettings);
    w.userSetCaption(ds::txtParameterValue[0], QStringLiteral("1500"));
    w.userSetCaption(ds::txtParameterValue[1], QStringLiteral("5600"));
    w.userSetCaption(ds::txtParameterValue[2], QStringLiteral("20"));
    w.click(ds::cmdSettingsAssume);
    QCOMPARE(state(DeviceSettings::Resistors), State::Comparing);
    QTRY_COMPARE_WITH_TIMEOUT(state(DeviceSettings::Resistors), State::Viewing, 10000);
    QCOMPARE(w.caption(ds::lblParameterValue[0]), QStringLiteral("1500"));
    QCOMPARE(w.caption(ds::lblParameterValue[1]), QStringLiteral("5600"));
    QCOMPARE(w.caption(ds::lblParameterValue[2]), QStringLiteral("20"));
    QVERIFY(w.isVisible(ds::lblParameterValue[0]) && !w.isVisible(ds::lblSettingsWaiting));

    const QList<QByteArray> sent = writes(m_sim.log(), 129);
    QCOMPARE(sent.size(), 1);
    QCOMPARE(std::bit_cast<float>(word32(sent[0], 6)), 1500.0f);
    QCOMPARE(std::bit_cast<float>(word32(sent[0], 10)), 5600.0f);
    QCOMPARE(static_cast<int>(sent[0].at(16)), 20);
}

void TestLiveDeviceSettings::betaValueWrittenAndReadBack() {
    Form& w = window();
    w.click(ds::cmdBetaSettings);
    w.userSetCaption(ds::txtBetaFactor[2], QStringLiteral("4321"));
    w.click(ds::cmdBetaSettingsAssume);
    QTRY_COMPARE_WITH_TIMEOUT(state(DeviceSettings::BetaValues), State::Viewing, 10000);
    QCOMPARE(w.caption(ds::lblBetaFactor[2]), QStringLiteral("4321"));

    const QList<QByteArray> sent = writes(m_sim.log(), 137);
    QCOMPARE(sent.size(), 1);
    const int expected[] = {3977, 3950, 4321, 3435, 4500};
    for (int n = 0; n < 5; ++n)
        QCOMPARE(word16(sent[0], 26 + 2 * n), expected[n]);
}

// The tool takes 20000 Ohm, the device doesn't: the page waits on, and says for which row.
void TestLiveDeviceSettings::refusedValueWaitsUntilCancel() {
    Form& w = window();
    w.click(ds::cmdSettings);
    w.userSetCaption(ds::txtParameterValue[1], QStringLiteral("20000"));
    w.click(ds::cmdSettingsAssume);
    Log log;
    QVERIFY(QTest::qWaitFor(
        [&] {
            log = m_sim.log();
            const auto from = std::find_if(log.begin(), log.end(), refused);
            return from != log.end() &&
                   std::count_if(from, log.end(), [](const SimProcess::Entry& e) {
                       return e.isRequest() && e.cmd == 3;
                   }) >= 2;
        },
        10000));
    QCOMPARE(state(DeviceSettings::Resistors), State::Comparing);
    QVERIFY(w.isVisible(ds::lblSettingsWaiting));
    const QString waiting = w.caption(ds::lblSettingsWaiting);
    QVERIFY2(waiting.contains(w.caption(ds::lblParameterName[1])) &&
                 !waiting.contains(w.caption(ds::lblParameterName[0])),
             qPrintable(waiting));
    QCOMPARE(writes(log, 129).size(), 2);

    w.click(ds::cmdSettingsCancel);
    QCOMPARE(state(DeviceSettings::Resistors), State::Viewing);
    QCOMPARE(w.caption(ds::lblParameterValue[1]), QStringLiteral("5600"));
    QVERIFY(!w.isVisible(ds::lblSettingsWaiting));
}

QTEST_MAIN(TestLiveDeviceSettings)
#include "devicesettings/devicesettings_elements.h"
#include "tst_livedevicesettings.moc"
