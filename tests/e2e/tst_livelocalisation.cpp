// Learning and testing the localisation against the virtual device: a test run that lights
// the seat of the fire, a learn of three holes whose windows are written and read back,
// and a measurement aborted. The device measures the transport times of its profile in
// turn (10, 14, 20, 26 s); one device and one tool serve the cases in this order.
#include "common/colors.h"
#include "common/numberformat.h"
#include "display/mainview_elements.h"
#include "localize/localisation.h"
#include "localize/ui/frmlocalizelearn.h"
#include "localize/ui/pipedrawing.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"
#include "support/livetool.h"
#include "support/simprocess.h"

#include <algorithm>
#include <memory>

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace el = frmDisplay;
namespace ll = frmLocalizeLearn;
using Answer = UserDialogs::Answer;

namespace {

// A measurement takes the window's temporary blow time, 40 device seconds: 4 s at ten times
// the speed.
constexpr int kWaitMs = 20000;

qsizetype requestsOf(const QList<SimProcess::Entry>& log, int command) {
    return std::count_if(log.begin(), log.end(), [command](const SimProcess::Entry& e) {
        return e.isRequest() && e.cmd == command;
    });
}

} // namespace

class TestLiveLocalisation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void testRunLightsTheSeatOfFire();
    void learnOfThreeHolesIsWrittenAndVerified();
    void abortedMeasurementGivesNoTime();

private:
    Form& window() { return m_tool->app().forms().frmLocalizeLearn(); }
    frmLocalizeLearnWindow& widget() {
        return *qobject_cast<frmLocalizeLearnWindow*>(
            m_tool->runtime().window(frmLocalizeLearn::kName));
    }
    template <typename T>
    T* find(const QString& element) {
        return widget().findChild<T*>(element);
    }
    void open(int layout);
    // A transport time as the windows show it.
    QString time(double seconds) {
        return numberformat::fixed(seconds, 1, m_tool->app().preferences().locale());
    }
    // Starts a measurement and waits until the device reports it running.
    void startMeasurement();
    // Leaves learn mode with the window's cancel, answering its question, and waits until
    // the window has closed.
    void leaveLearnMode();
    // With MQ27D_SCREENSHOTS set, the window as it stands goes into that folder for the
    // documentation, as the tool's own pictures of the main view do.
    void picture(const QString& name) {
        const QString folder = qEnvironmentVariable("MQ27D_SCREENSHOTS");
        if (!folder.isEmpty())
            QVERIFY(widget().grab().save(folder + QStringLiteral("/full-") + name +
                                         QStringLiteral(".png")));
    }

    SimProcess m_sim;
    std::unique_ptr<LiveTool> m_tool;
};

void TestLiveLocalisation::initTestCase() {
    m_tool = std::make_unique<LiveTool>(m_sim.portPath());
    QVERIFY2(m_sim.start({"--profile", SimProcess::profile(QStringLiteral("full")), "--no-drift",
                          "--speed", "10"}),
             qPrintable(m_sim.output()));
    m_tool->start();
    QVERIFY(m_tool->waitForDevice(QStringLiteral("1234567")));
}

void TestLiveLocalisation::cleanupTestCase() {
    m_tool.reset();
    m_sim.stop();
}

void TestLiveLocalisation::open(int layout) {
    auto* button = m_tool->runtime()
                       .window(frmDisplay::kName)
                       ->findChild<QPushButton*>(el::cmdShowLocLearnMode[layout]);
    QVERIFY(button && button->isEnabled());
    button->click();
    QVERIFY(widget().isVisible());
    QCOMPARE(widget().windowTitle(), layout == 0 ? QStringLiteral("SPOT·FIND - Lernen")
                                                 : QStringLiteral("SPOT·FIND - Testen"));
}

void TestLiveLocalisation::startMeasurement() {
    find<QPushButton>(ll::cmdLocSingleHoleLearningStart)->click();
    QTRY_VERIFY_WITH_TIMEOUT(find<QPushButton>(ll::cmdLocSingleHoleLearningAbort)->isVisible(),
                             kWaitMs);
    QVERIFY(!find<QLineEdit>(ll::txtLocTime[0])->isEnabled());
    QCOMPARE(window().value(ll::picLocLearnActivLED), 2.0);
}

void TestLiveLocalisation::leaveLearnMode() {
    m_tool->dialogs.answers = {Answer::Yes};
    find<QPushButton>(ll::cmdLocParameterAbort)->click();
    QTRY_VERIFY_WITH_TIMEOUT(!widget().isVisible(), kWaitMs);
    QVERIFY(!m_tool->app().localisation().LocLearnModeActive);
}

void TestLiveLocalisation::testRunLightsTheSeatOfFire() {
    open(1);
    QVERIFY(find<QWidget>(ll::picLocFirePlaceTest[4])->isVisible());
    QVERIFY(!find<QWidget>(ll::txtLocTime[0])->isVisible());
    startMeasurement();
    QVERIFY(widget().pipe().isMeasured(0));
    // 10 s lies in the window of hole 1, 5 s to 12 s.
    QTRY_COMPARE_WITH_TIMEOUT(window().backColor(ll::picLocFirePlaceTest[0]), colors::kRed,
                              kWaitMs);
    QVERIFY(widget().pipe().isSeatOfFire(0) && !widget().pipe().isSeatOfFire(1));
    QVERIFY(!widget().pipe().isMeasured(0));
    picture(QStringLiteral("localisation-test"));
    QCOMPARE(window().backColor(ll::picLocFirePlaceTest[1]), colors::kWindowBackground);
    leaveLearnMode();
    QCOMPARE(requestsOf(m_sim.log(), 135), 1);
}

void TestLiveLocalisation::learnOfThreeHolesIsWrittenAndVerified() {
    open(0);
    QLineEdit* holes = find<QLineEdit>(ll::txtLocNumberOfHoles);
    holes->selectAll();
    QTest::keyClicks(holes, QStringLiteral("3"));
    QVERIFY(!find<QWidget>(ll::txtLocTime[3])->isVisible());
    QVERIFY(!window().isVisible(ll::linLocPipe[15]) && !widget().pipe().holeDrawn(3));

    const QString expected[] = {time(14), time(20), time(26)};
    for (int hole = 0; hole < 3; ++hole) {
        find<QRadioButton>(ll::optLocHole[hole])->click();
        startMeasurement();
        QVERIFY(widget().pipe().isMeasured(hole));
        QTRY_COMPARE_WITH_TIMEOUT(window().backColor(ll::txtLocTime[hole]), colors::kGreen,
                                  kWaitMs);
        QCOMPARE(find<QLineEdit>(ll::txtLocTime[hole])->text(), expected[hole]);
        QTRY_VERIFY_WITH_TIMEOUT(find<QPushButton>(ll::cmdLocSingleHoleLearningStart)->isVisible(),
                                 kWaitMs);
    }
    picture(QStringLiteral("localisation-learn"));

    // The write leaves learn mode after the question; the window waits, saying since when,
    // until the device reports the windows.
    bool sawWaiting = false;
    connect(&window(), &Form::elementChanged, this, [&](const QString& element, ElementProperty) {
        sawWaiting = sawWaiting || (element == ll::lblLocWaiting &&
                                    window().caption(ll::lblLocWaiting).startsWith(u"Wartet"));
    });
    m_tool->dialogs.answers = {Answer::Yes};
    find<QPushButton>(ll::cmdLocParameterAssume)->click();
    QVERIFY(m_tool->dialogs.shown.last().text.contains(QStringLiteral("normalen Betriebsmodus")));
    QTRY_VERIFY_WITH_TIMEOUT(!widget().isVisible(), kWaitMs);
    disconnect(&window(), &Form::elementChanged, this, nullptr);
    QVERIFY(sawWaiting);
    QCOMPARE(requestsOf(m_sim.log(), 133), 1);

    const Form& view = m_tool->display();
    for (int hole = 0; hole < 3; ++hole)
        QCOMPARE(view.caption(el::lblLocTime[hole]), expected[hole]);
    QCOMPARE(view.caption(el::lblLocTime[3]), time(0));
    QCOMPARE(view.caption(el::lblLocNumberOfHoles), QStringLiteral("3"));
    const Localisation& loc = m_tool->app().localisation();
    QCOMPARE(loc.LocHoleMinRead, (std::array<std::int32_t, 5>{700, 1701, 2301, 0, 0}));
    QCOMPARE(loc.LocHoleMaxRead, (std::array<std::int32_t, 5>{1700, 2300, 2900, 0, 0}));
}

void TestLiveLocalisation::abortedMeasurementGivesNoTime() {
    open(0);
    const qsizetype learnCommands = requestsOf(m_sim.log(), 134);
    startMeasurement();
    find<QPushButton>(ll::cmdLocSingleHoleLearningAbort)->click();
    QTRY_VERIFY_WITH_TIMEOUT(find<QPushButton>(ll::cmdLocSingleHoleLearningStart)->isVisible(),
                             kWaitMs);
    QCOMPARE(requestsOf(m_sim.log(), 134), learnCommands + 2);
    // The device is still in learn mode; the aborted measurement wrote no time.
    QVERIFY(m_tool->app().localisation().LocLearnModeActive);
    QCOMPARE(find<QLineEdit>(ll::txtLocTime[0])->text(), time(14));
    QVERIFY(window().backColor(ll::txtLocTime[0]) != colors::kGreen);
    leaveLearnMode();
    QCOMPARE(m_tool->display().caption(el::lblLocNumberOfHoles), QStringLiteral("3"));
}

QTEST_MAIN(TestLiveLocalisation)
#include "localize/localize_elements.h"
#include "tst_livelocalisation.moc"
