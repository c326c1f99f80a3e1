// Two windows that change the device, against the virtual device: the advanced settings
// are written once and the window waits until the device reports the typed values; a learn
// of three holes is measured, written and read back. One device and one tool serve the
// cases in turn; the device measures the transport times of its profile in turn (10, 14,
// 20 s). The main view's pages write with the same writer and compare with the same rule as
// the command line's set, whose end-to-end test follows them to the device.
#include "common/colors.h"
#include "common/formmodel.h"
#include "common/numberformat.h"
#include "devicesettings/devicesettings.h"
#include "display/mainview_elements.h"
#include "localize/localisation.h"
#include "localize/ui/frmlocalizelearn.h"
#include "localize/ui/pipedrawing.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"
#include "support/livetool.h"
#include "support/simprocess.h"

#include <memory>

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace el = frmDisplay;
namespace ds = frmDeviceSettings;
namespace ll = frmLocalizeLearn;
using Answer = UserDialogs::Answer;

namespace {

// A measurement takes the window's temporary blow time, 40 device seconds: 4 s at ten times
// the speed.
constexpr int kWaitMs = 20000;

} // namespace

class TestLiveSettings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void resistorsWrittenAndReadBack();
    void learnOfThreeHolesIsWrittenAndVerified();

private:
    Form& view() { return m_tool->display(); }
    Form& window() { return m_tool->app().forms().frmDeviceSettings(); }
    DeviceSettings::State resistors() {
        return m_tool->app().deviceSettings().StateOf(DeviceSettings::Resistors);
    }
    Form& learn() { return m_tool->app().forms().frmLocalizeLearn(); }
    frmLocalizeLearnWindow& widget() {
        return *qobject_cast<frmLocalizeLearnWindow*>(
            m_tool->runtime().window(frmLocalizeLearn::kName));
    }
    template <typename T>
    T* find(const QString& element) {
        return widget().findChild<T*>(element);
    }
    // A transport time as the windows show it.
    QString time(double seconds) {
        return numberformat::fixed(seconds, 1, m_tool->app().preferences().locale());
    }

    SimProcess m_sim;
    std::unique_ptr<LiveTool> m_tool;
};

void TestLiveSettings::initTestCase() {
    m_tool = std::make_unique<LiveTool>(m_sim.portPath());
    QVERIFY2(m_sim.start({"--profile", SimProcess::profile(QStringLiteral("full")), "--no-drift",
                          "--speed", "10"}),
             qPrintable(m_sim.output()));
    m_tool->start();
    QVERIFY(m_tool->waitForDevice(QStringLiteral("1234567")));
}

void TestLiveSettings::cleanupTestCase() {
    m_tool.reset();
    m_sim.stop();
}

void TestLiveSettings::resistorsWrittenAndReadBack() {
    view().click(el::mnuDeviceSettings);
    Form& w = window();
    QVERIFY(w.isShown() && w.isVisible(ds::fraDeviceSettings[1]));
    QCOMPARE(w.caption(ds::lblParameterValue[0]), QStringLiteral("1200"));
    const qsizetype from = m_sim.log().size();
    w.click(ds::cmdSettings);
    w.userSetCaption(ds::txtParameterValue[0], QStringLiteral("1500"));
    w.userSetCaption(ds::txtParameterValue[1], QStringLiteral("5600"));
    w.userSetCaption(ds::txtParameterValue[2], QStringLiteral("20"));
    w.click(ds::cmdSettingsAssume);
    QCOMPARE(resistors(), DeviceSettings::State::Comparing);
    QTRY_COMPARE_WITH_TIMEOUT(resistors(), DeviceSettings::State::Viewing, kWaitMs);
    QCOMPARE(w.caption(ds::lblParameterValue[0]), QStringLiteral("1500"));
    QCOMPARE(w.caption(ds::lblParameterValue[1]), QStringLiteral("5600"));
    QCOMPARE(w.caption(ds::lblParameterValue[2]), QStringLiteral("20"));
    QVERIFY(w.isVisible(ds::lblParameterValue[0]) && !w.isVisible(ds::lblSettingsWaiting));

    QCOMPARE(m_sim.requestsOf(129, from), 1);
    w.click(ds::cmdClose);
}

void TestLiveSettings::learnOfThreeHolesIsWrittenAndVerified() {
    auto* open = m_tool->runtime()
                     .window(frmDisplay::kName)
                     ->findChild<QPushButton*>(el::cmdShowLocLearnMode[0]);
    QVERIFY(open && open->isEnabled());
    open->click();
    QVERIFY(widget().isVisible());
    QCOMPARE(widget().windowTitle(), QStringLiteral("SPOT·FIND - Lernen"));
    QLineEdit* holes = find<QLineEdit>(ll::txtLocNumberOfHoles);
    holes->selectAll();
    QTest::keyClicks(holes, QStringLiteral("3"));
    QVERIFY(!find<QWidget>(ll::txtLocTime[3])->isVisible());
    QVERIFY(!learn().isVisible(ll::linLocPipe[15]) && !widget().pipe().holeDrawn(3));

    const QString expected[] = {time(10), time(14), time(20)};
    for (int hole = 0; hole < 3; ++hole) {
        find<QRadioButton>(ll::optLocHole[hole])->click();
        // Running once the device reports it.
        find<QPushButton>(ll::cmdLocSingleHoleLearningStart)->click();
        QTRY_VERIFY_WITH_TIMEOUT(find<QPushButton>(ll::cmdLocSingleHoleLearningAbort)->isVisible(),
                                 kWaitMs);
        QVERIFY(!find<QLineEdit>(ll::txtLocTime[0])->isEnabled());
        QCOMPARE(learn().value(ll::picLocLearnActivLED), 2.0);
        QVERIFY(widget().pipe().isMeasured(hole));
        QTRY_COMPARE_WITH_TIMEOUT(learn().backColor(ll::txtLocTime[hole]), colors::kGreen, kWaitMs);
        QCOMPARE(find<QLineEdit>(ll::txtLocTime[hole])->text(), expected[hole]);
        QTRY_VERIFY_WITH_TIMEOUT(find<QPushButton>(ll::cmdLocSingleHoleLearningStart)->isVisible(),
                                 kWaitMs);
    }

    // The write leaves learn mode after the question; the window waits, saying since when,
    // until the device reports the windows.
    bool sawWaiting = false;
    connect(&learn(), &Form::elementChanged, this, [&](const QString& element, ElementProperty) {
        sawWaiting = sawWaiting || (element == ll::lblLocWaiting &&
                                    learn().caption(ll::lblLocWaiting).startsWith(u"Wartet"));
    });
    m_tool->dialogs.answers = {Answer::Yes};
    find<QPushButton>(ll::cmdLocParameterAssume)->click();
    QVERIFY(m_tool->dialogs.shown.last().text.contains(QStringLiteral("normalen Betriebsmodus")));
    QTRY_VERIFY_WITH_TIMEOUT(!widget().isVisible(), kWaitMs);
    disconnect(&learn(), &Form::elementChanged, this, nullptr);
    QVERIFY(sawWaiting);
    QCOMPARE(m_sim.requestsOf(133), 1);

    for (int hole = 0; hole < 3; ++hole)
        QCOMPARE(view().caption(el::lblLocTime[hole]), expected[hole]);
    QCOMPARE(view().caption(el::lblLocTime[3]), time(0));
    QCOMPARE(view().caption(el::lblLocNumberOfHoles), QStringLiteral("3"));
    const Localisation& loc = m_tool->app().localisation();
    QCOMPARE(loc.LocHoleMinRead, (std::array<std::int32_t, 5>{500, 1201, 1701, 0, 0}));
    QCOMPARE(loc.LocHoleMaxRead, (std::array<std::int32_t, 5>{1200, 1700, 2300, 0, 0}));
}

QTEST_MAIN(TestLiveSettings)
#include "devicesettings/devicesettings_elements.h"
#include "localize/localize_elements.h"
#include "tst_livesettings.moc"
