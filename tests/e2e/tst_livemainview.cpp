// The main view against the virtual device: a fault that the device switches on and off by
// itself in the fault list, the reset of what it latched, and the rhythm of a flashing LED.
// One device and one tool serve the three cases in turn, so the take-on is waited for once.
#include "common/colors.h"
#include "common/formmodel.h"
#include "display/mainview_elements.h"
#include "support/livetool.h"
#include "support/simprocess.h"

#include <algorithm>
#include <memory>

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QTest>

namespace el = frmDisplay;

namespace {

// Bit 3 comes at the fourth device second, after the take-on (about 3.3 s, most of it the
// tool's own timers), and stays latched when it goes 2 s later, more than the poll cycle of
// telegrams 2, 3 and 5 takes.
constexpr const char* kProfile = R"({
    "serialNumber": 1001,
    "display": {"ledOp": 1},
    "schedule": [
        {"afterSeconds": 4, "value": "faults.pending", "to": [3]},
        {"afterSeconds": 4, "value": "faults.latched", "to": [3]},
        {"afterSeconds": 6, "value": "faults.pending", "to": []}
    ]})";

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

double median(QList<double> v) {
    std::sort(v.begin(), v.end());
    return v.isEmpty() ? 0 : v[v.size() / 2];
}

} // namespace

class TestLiveMainView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void faultShowsAsBoxThenAsDot();
    void resetClearsTheDotWithOneCommand();
    void flashingLedLightsBrieflyEverySecond();

private:
    Form& view() { return m_tool->display(); }
    void onChanged(const QString& element, ElementProperty property);

    SimProcess m_sim;
    std::unique_ptr<LiveTool> m_tool;
    const QString m_box = el::picErr[3];
    const QString m_led = el::picDisplay[0];
    // The device's log as it stood when the box turned yellow, and when its dot went.
    Log m_logAtYellow;
    Log m_logAtNoDot;
    QElapsedTimer m_clock;
    QList<std::pair<qint64, bool>> m_ledChanges; // ms, lit
};

// The tool's windows are made before the device starts, so that its take-on ends at about
// the same device second on a slow machine as on a fast one.
void TestLiveMainView::initTestCase() {
    m_tool = std::make_unique<LiveTool>(m_sim.portPath());
    m_clock.start();
    connect(&view(), &Form::elementChanged, this, &TestLiveMainView::onChanged);
    const QString profile =
        m_sim.writeProfile(QStringLiteral("schedule"), QJsonDocument::fromJson(kProfile).object());
    QVERIFY2(m_sim.start({"--profile", profile, "--no-drift"}), qPrintable(m_sim.output()));
    m_tool->start();
    QVERIFY(m_tool->waitForDevice(QStringLiteral("1001")));
    QCOMPARE(view().value(m_led), 1.0);
}

void TestLiveMainView::cleanupTestCase() {
    m_tool.reset();
    m_sim.stop();
}

void TestLiveMainView::onChanged(const QString& element, ElementProperty property) {
    if (element == m_led && property == ElementProperty::BackColor)
        m_ledChanges.append({m_clock.elapsed(), view().backColor(m_led) == colors::kGreen});
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
    // Gone with the telegram 3 that followed the command, not before.
    QCOMPARE(countAfter(m_logAtNoDot, request(132), request(3)), 1);

    // Three requests later the command has still gone out once only.
    Log log;
    QVERIFY(QTest::qWaitFor(
        [&] {
            log = m_sim.log();
            return countAfter(log, request(132), request()) >= 3;
        },
        10000));
    QCOMPARE(std::count_if(log.begin(), log.end(), request(132)), 1);
}

// Lit 100 ms in every second; the bounds are wide, as they need to be on a busy machine,
// and still tell the flash from the even blink and from a steady light.
void TestLiveMainView::flashingLedLightsBrieflyEverySecond() {
    QTRY_VERIFY_WITH_TIMEOUT(std::count_if(m_ledChanges.begin(), m_ledChanges.end(),
                                           [](const auto& c) { return c.second; }) >= 4,
                             6000);
    QList<double> lit;
    QList<double> periods;
    qint64 lastOn = -1;
    for (qsizetype i = 0; i + 1 < m_ledChanges.size(); ++i) {
        const auto [at, on] = m_ledChanges[i];
        if (!on) continue;
        QVERIFY(!m_ledChanges[i + 1].second); // colour changes alternate
        lit << double(m_ledChanges[i + 1].first - at);
        if (lastOn >= 0) periods << double(at - lastOn);
        lastOn = at;
    }
    QVERIFY(periods.size() >= 2);
    const QString figures =
        QStringLiteral("lit %1 ms, period %2 ms").arg(median(lit)).arg(median(periods));
    QVERIFY2(median(lit) > 50 && median(lit) < 300, qPrintable(figures));
    QVERIFY2(median(periods) > 800 && median(periods) < 1300, qPrintable(figures));
    QVERIFY2(*std::max_element(lit.begin(), lit.end()) < 500, qPrintable(figures));
}

QTEST_MAIN(TestLiveMainView)
#include "tst_livemainview.moc"
