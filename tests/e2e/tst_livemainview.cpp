// The main view against the virtual device with ten modules: a fault that the device
// switches on and off by itself in the fault list, the reset of what it latched, and a
// module that makes itself known by its LEDs. One device and one tool serve the cases in
// turn, so the take-on is waited for once.
#include "common/colors.h"
#include "common/formmodel.h"
#include "display/mainview_elements.h"
#include "support/livetool.h"
#include "support/simprocess.h"

#include <algorithm>
#include <memory>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

namespace el = frmDisplay;

namespace {

// Bit 3 comes at the fourth device second, after the take-on (about 3.3 s, most of it the
// tool's own timers), and stays latched when it goes 2 s later, more than the poll cycle of
// telegrams 2, 3 and 5 takes.
constexpr const char* kSchedule = R"([
    {"afterSeconds": 4, "value": "faults.pending", "to": [3]},
    {"afterSeconds": 4, "value": "faults.latched", "to": [3]},
    {"afterSeconds": 6, "value": "faults.pending", "to": []}
])";

using Log = QList<SimProcess::Entry>;

// Entries that `what` picks after the first one that `from` picks.
template <typename From, typename What>
qsizetype countAfter(const Log& log, From from, What what) {
    const auto start = std::find_if(log.begin(), log.end(), from);
    return start == log.end() ? 0 : std::count_if(start + 1, log.end(), what);
}

// A frame from the tool, with `command` or any.
auto request(int command = -1) {
    return [command](const SimProcess::Entry& e) {
        return e.isRequest() && (command < 0 || e.cmd == command);
    };
}

bool isScheduled(const SimProcess::Entry& e) {
    return e.event == u"scheduled";
}

} // namespace

class TestLiveMainView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void faultShowsAsBoxThenAsDot();
    void resetClearsTheDotWithOneCommand();
    void identifiedModuleBlinksOnTheStatusPage();

private:
    Form& view() { return m_tool->display(); }
    void onChanged(const QString& element, ElementProperty property);

    SimProcess m_sim;
    std::unique_ptr<LiveTool> m_tool;
    const QString m_box = el::picErr[3];
    // The device's log as it stood when the box turned yellow, and when its dot went.
    Log m_logAtYellow;
    Log m_logAtNoDot;
};

// The tool's windows are made before the device starts, so that its take-on ends at about
// the same device second on a slow machine as on a fast one.
void TestLiveMainView::initTestCase() {
    m_tool = std::make_unique<LiveTool>(m_sim.portPath());
    connect(&view(), &Form::elementChanged, this, &TestLiveMainView::onChanged);
    QFile file(SimProcess::profile(QStringLiteral("tenmodules")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QJsonObject profile = QJsonDocument::fromJson(file.readAll()).object();
    profile.insert(QStringLiteral("schedule"), QJsonDocument::fromJson(kSchedule).array());
    const QString path = m_sim.writeProfile(QStringLiteral("schedule"), profile);
    QVERIFY2(m_sim.start({"--profile", path, "--no-drift"}), qPrintable(m_sim.output()));
    m_tool->start();
    QVERIFY(m_tool->waitForDevice(QStringLiteral("3100010")));
}

void TestLiveMainView::cleanupTestCase() {
    m_tool.reset();
    m_sim.stop();
}

void TestLiveMainView::onChanged(const QString& element, ElementProperty property) {
    if (element == m_box && property == ElementProperty::BackColor &&
        view().backColor(m_box) == colors::kYellow)
        m_logAtYellow = m_sim.log();
    if (element == m_box && property == ElementProperty::Dot &&
        view().dotColor(m_box) == colors::kDefault)
        m_logAtNoDot = m_sim.log();
}

void TestLiveMainView::faultShowsAsBoxThenAsDot() {
    QTRY_COMPARE_WITH_TIMEOUT(view().backColor(m_box), colors::kYellow, 10000);
    QCOMPARE(view().dotColor(m_box), colors::kDefault); // pending hides latched
    // Not before the change, and from the first telegram 3 the tool asked for after it, or
    // the second.
    const qsizetype reads = countAfter(m_logAtYellow, isScheduled, request(3));
    QVERIFY2(reads >= 1 && reads <= 2, qPrintable(QString::number(reads)));

    QTRY_COMPARE_WITH_TIMEOUT(view().dotColor(m_box), colors::kYellow, 10000);
    QCOMPARE(view().backColor(m_box), colors::kWindowBackground);
}

void TestLiveMainView::resetClearsTheDotWithOneCommand() {
    QCOMPARE(view().dotColor(m_box), colors::kYellow);
    view().click(el::cmdErrReset);
    QTRY_COMPARE_WITH_TIMEOUT(view().dotColor(m_box), colors::kDefault, 10000);
    QCOMPARE(view().backColor(m_box), colors::kWindowBackground);
    // Gone with the telegram 3 that followed the command, not before; the command once.
    QCOMPARE(countAfter(m_logAtNoDot, request(132), request(3)), 1);
    QCOMPARE(m_sim.requestsOf(132), 1);
}

// Module 3 (303) lights its operating LED steadily; while it identifies itself the LED
// blinks on the status page, painted dark and lit in turn.
void TestLiveMainView::identifiedModuleBlinksOnTheStatusPage() {
    const QString led = el::picExtOperating[2];
    QCOMPARE(view().value(led), 3.0);
    view().click(el::cmdExtinguisherIdent[2]);
    QTRY_COMPARE_WITH_TIMEOUT(view().value(led), 2.0, 10000);
    QTRY_COMPARE_WITH_TIMEOUT(view().backColor(led), colors::kWindowBackground, 3000);
    QTRY_COMPARE_WITH_TIMEOUT(view().backColor(led), colors::kGreen, 3000);
    QCOMPARE(m_sim.requestsOf(139), 1);
    QCOMPARE(m_sim.eventsOf(QStringLiteral("identify-start")), 1);
}

QTEST_MAIN(TestLiveMainView)
#include "tst_livemainview.moc"
