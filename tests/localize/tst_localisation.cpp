#include "common/colors.h"
#include "display/mainview.h"
#include "display/mainview_elements.h"
#include "engine/pollengine.h"
#include "localize/localisation.h"
#include "shell/program.h"
#include "support/mainviewrig.h"

#include <QtTest>

namespace el = frmDisplay;
namespace ll = frmLocalizeLearn;
using Answer = UserDialogs::Answer;

namespace {

// The full device (windows 500-1200, 1201-1700, ... 2901-3500, fire place time 1410) with
// the learn window open in one of its layouts.
struct LearnRig : MainViewRig {
    Localisation& loc = app->localisation();
    PollEngine& engine = app->engine();
    Form& w = app->forms().frmLocalizeLearn();

    explicit LearnRig(int layout = 0) { view().click(el::cmdShowLocLearnMode[layout]); }

    void device(std::initializer_list<std::pair<const char*, double>> values) {
        for (const auto& [name, value] : values)
            set(name, value);
        readOut();
    }
    // A measurement of hole `hole` that the device runs and ends with `suckTime`.
    // The options are exclusive, as their widgets make them.
    void choose(int hole) {
        for (int i = 0; i < 5; ++i)
            w.userSetValue(ll::optLocHole[i], i == hole ? 1 : 0);
    }
    void measure(int hole, double suckTime) {
        choose(hole);
        device({{"localisation.learningIsOn", 1}, {"localisation.locIsActive", 1}});
        device({{"localisation.locIsActive", 0}, {"localisation.firePlaceSuckTime", suckTime}});
    }
    void times(const QStringList& texts) {
        for (int i = 0; i < texts.size(); ++i)
            w.userSetCaption(ll::txtLocTime[i], texts[i]);
    }
    std::uint32_t color(int hole) { return w.backColor(ll::txtLocTime[hole]); }
};

} // namespace

class TestLocalisation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void openingFillsTheWindowFromTheMainView() {
        LearnRig rig;
        Form& w = rig.w;
        QVERIFY(w.isShown() && w.isModal());
        QCOMPARE(w.caption(ll::txtLocTime[1]), QStringLiteral("14.0"));
        QCOMPARE(w.caption(ll::txtLocNumberOfHoles), QStringLiteral("5"));
        QVERIFY(w.isChecked(ll::optLocHole[0]) && w.isVisible(ll::cmdLocParameterAssume));
        QVERIFY(!w.isVisible(ll::picLocFirePlaceTest[0]) && !w.isVisible(ll::lblLocWaiting));

        // The test layout shows a lamp for each of the holes, and nothing to edit.
        LearnRig test(1);
        test.device({{"localisation.suckTime5Max", 0}, {"localisation.suckTime5Min", 0}});
        test.view().click(el::cmdShowLocLearnMode[1]);
        QCOMPARE(test.w.title(), QStringLiteral("SPOT·FIND - Test"));
        QVERIFY(test.w.isVisible(ll::picLocFirePlaceTest[3]));
        QVERIFY(!test.w.isVisible(ll::picLocFirePlaceTest[4]));
        QVERIFY(!test.w.isVisible(ll::txtLocTime[0]) && !test.w.isVisible(ll::txtBlowTime));
        QVERIFY(!test.w.isVisible(ll::cmdLocParameterAssume));

        // Without SPOT·FIND switched on the window stays shut.
        LearnRig off;
        off.w.unload();
        off.view().setChecked(el::chkLocalization[0], false);
        off.view().click(el::cmdShowLocLearnMode[0]);
        QVERIFY(!off.w.isShown());
        QVERIFY(off.dialogs.shown.last().text.contains(QStringLiteral("First switch on")));
    }

    void numberOfHolesShortensThePipe() {
        LearnRig rig;
        Form& w = rig.w;
        w.userSetValue(ll::optLocHole[3], 1);
        w.userSetCaption(ll::txtLocNumberOfHoles, QStringLiteral("3"));
        QVERIFY(w.isVisible(ll::txtLocTime[2]) && !w.isVisible(ll::txtLocTime[3]));
        QVERIFY(!w.isVisible(ll::optLocHole[3]) && !w.isVisible(ll::lblLocTimeUnit[4]));
        QVERIFY(w.isVisible(ll::linLocPipe[14]) && !w.isVisible(ll::linLocPipe[15]));
        QVERIFY(w.isChecked(ll::optLocHole[0]) && !w.isChecked(ll::optLocHole[3]));

        // Out of range or no number: yellow, and the pipe stays as it was.
        for (const char* bad : {"6", "1", "x", ""}) {
            w.userSetCaption(ll::txtLocNumberOfHoles, QString::fromUtf8(bad));
            QCOMPARE(w.backColor(ll::txtLocNumberOfHoles), colors::kYellow);
            QVERIFY(!w.isVisible(ll::linLocPipe[15]));
        }
        // Only the exact counts shorten it: 2.5 keeps all five holes.
        w.userSetCaption(ll::txtLocNumberOfHoles, QStringLiteral("2,5"));
        QCOMPARE(w.backColor(ll::txtLocNumberOfHoles), colors::kWindowBackground);
        QVERIFY(w.isVisible(ll::linLocPipe[24]) && w.isVisible(ll::txtLocTime[4]));
        QVERIFY(w.isChecked(ll::optLocHole[0]));
        w.userSetCaption(ll::txtLocNumberOfHoles, QStringLiteral("2"));
        QVERIFY(w.isVisible(ll::linLocPipe[9]) && !w.isVisible(ll::linLocPipe[10]));
    }

    // A measurement in learn mode is evaluated once when it ends: the time goes into the
    // chosen hole's field, green, and the lamp of the window that holds it lights red.
    void measurementIsEvaluatedOnceWhenItEnds() {
        LearnRig rig;
        Form& w = rig.w;
        rig.choose(1);
        rig.device({{"localisation.learningIsOn", 1}, {"localisation.locIsActive", 1}});
        QVERIFY(rig.loc.LocMeasurementSeen);
        QVERIFY(w.isVisible(ll::cmdLocSingleHoleLearningAbort) &&
                !w.isVisible(ll::cmdLocSingleHoleLearningStart));
        QVERIFY(!w.isEnabled(ll::txtLocTime[0]) && !w.isEnabled(ll::cmdLocParameterAssume));
        QCOMPARE(w.value(ll::picLocLearnActivLED), 2.0);

        // At the window's upper bound, 17 s is still hole 2's.
        rig.device({{"localisation.locIsActive", 0}, {"localisation.firePlaceSuckTime", 1700}});
        QCOMPARE(w.caption(ll::txtLocTime[1]), QStringLiteral("17.0"));
        QCOMPARE(rig.color(1), colors::kGreen);
        QCOMPARE(w.backColor(ll::picLocFirePlaceTest[1]), colors::kRed);
        QCOMPARE(rig.loc.LocHolesDone, std::uint16_t{0b10});
        QVERIFY(w.isEnabled(ll::txtLocTime[0]) && w.isVisible(ll::cmdLocSingleHoleLearningStart));
        // Once: a later refresh leaves the field alone.
        rig.device({{"localisation.firePlaceSuckTime", 1000}});
        QCOMPARE(w.caption(ll::txtLocTime[1]), QStringLiteral("17.0"));

        // A time outside every window lights nothing and puts the lamps out.
        rig.measure(2, 9999);
        QCOMPARE(w.caption(ll::txtLocTime[2]), QStringLiteral("100.0"));
        QCOMPARE(w.backColor(ll::picLocFirePlaceTest[1]), colors::kWindowBackground);
        QCOMPARE(rig.loc.LocHolesDone, std::uint16_t{0b110});

        // An aborted measurement gives no time, but the order is still checked.
        rig.times({"10.0", "11.0"});
        rig.choose(3);
        rig.device({{"localisation.locIsActive", 1}});
        w.click(ll::cmdLocSingleHoleLearningAbort);
        QVERIFY(rig.engine.IsWriteQueued());
        rig.device({{"localisation.locIsActive", 0}, {"localisation.firePlaceSuckTime", 2600}});
        QCOMPARE(w.caption(ll::txtLocTime[3]), QStringLiteral("26.0"));
        QVERIFY(!rig.loc.LocSingleHoleAborted);
        QCOMPARE(rig.color(1), colors::kYellow);

        // Learn mode over: the holes done are forgotten.
        rig.device({{"localisation.learningIsOn", 0}});
        QCOMPARE(rig.loc.LocHolesDone, std::uint16_t{0});
    }

    // In learn mode every refresh checks the order: each round marks its first fault.
    void orderCheckColoursTheFirstFault() {
        LearnRig rig;
        rig.device({{"localisation.learningIsOn", 1}});
        rig.w.userSetCaption(ll::txtLocNumberOfHoles, QStringLiteral("3"));
        rig.times({"10.0", "11.9", "14,0"});
        rig.readOut();
        QCOMPARE(rig.color(0), colors::kWindowBackground);
        QCOMPARE(rig.color(1), colors::kYellow); // less than 2 s after hole 1
        QCOMPARE(rig.color(2), colors::kWindowBackground);

        // A good field keeps its yellow; a field that is no number is marked itself.
        rig.times({"10.0", "12.0", "x"});
        rig.readOut();
        QCOMPARE(rig.color(1), colors::kYellow);
        QCOMPARE(rig.color(2), colors::kYellow);

        // Hole 1 at zero is marked in every round, and nothing else is.
        LearnRig zero;
        zero.device({{"localisation.learningIsOn", 1}});
        zero.times({"0", "1.0"});
        zero.readOut();
        QCOMPARE(zero.color(0), colors::kYellow);
        QCOMPARE(zero.color(1), colors::kWindowBackground);
    }

    void windowBoundsFromTimes() {
        const auto w = Localisation::WindowsFromTimes({10.0, 14.0, 20.0});
        QVERIFY(w);
        QCOMPARE(w->minimum, (std::array<std::int32_t, 5>{500, 1201, 1701, 0, 0}));
        QCOMPARE(w->maximum, (std::array<std::int32_t, 5>{1200, 1700, 2300, 0, 0}));
        // Half-way values round to even: 0.25 s halved is 12.5 hundredths.
        const auto half = Localisation::WindowsFromTimes({0.25, 2.25});
        QVERIFY(half);
        QCOMPARE(half->minimum[0], 12);
        QVERIFY(!Localisation::WindowsFromTimes({10.0}));
    }

    void assumeWritesTheWindowsAndWaitsForThem() {
        LearnRig rig;
        Form& w = rig.w;
        w.userSetCaption(ll::txtLocNumberOfHoles, QStringLiteral("3"));

        // Refused without a word: holes too close, hole 1 at zero, a bound the device
        // cannot hold.
        const std::pair<QStringList, int> refused[] = {
            {{"10.0", "11.9", "20"}, 1}, {{"0.0", "14", "20"}, 0}, {{"10", "14", "300"}, 2}};
        for (const auto& [times, hole] : refused) {
            rig.times(times);
            w.click(ll::cmdLocParameterAssume);
            QCOMPARE(rig.color(hole), colors::kYellow);
        }
        QVERIFY(!rig.engine.IsWriteQueued());
        QVERIFY(rig.dialogs.shown.isEmpty());

        rig.times({"10", "14", "21"});
        w.click(ll::cmdLocParameterAssume);
        QCOMPARE(w.caption(ll::txtLocTime[2]), QStringLiteral("21.0"));
        QCOMPARE(rig.loc.LocHoleMaxSet, (std::array<std::int32_t, 5>{1200, 1750, 2450, 0, 0}));
        QVERIFY(rig.engine.IsWriteQueued());
        rig.engine.tmrAutoSend_Timer();
        QVERIFY(rig.loc.tmrCompareLocalizeSet().isEnabled());
        QVERIFY(w.isVisible(ll::lblLocWaiting));

        // The device still reports the old windows: the window waits and says for what.
        rig.loc.tmrCompareLocalizeSet_Timer();
        QVERIFY(w.isShown());
        QVERIFY(w.caption(ll::lblLocWaiting).contains(QStringLiteral("Aspiration hole 2")));
        rig.device({{"localisation.suckTime2Max", 1750},
                    {"localisation.suckTime3Min", 1751},
                    {"localisation.suckTime3Max", 2450},
                    {"localisation.suckTime4Max", 0},
                    {"localisation.suckTime4Min", 0},
                    {"localisation.suckTime5Max", 0},
                    {"localisation.suckTime5Min", 0}});
        rig.loc.tmrCompareLocalizeSet_Timer();
        QVERIFY(!w.isShown());
        QVERIFY(!rig.loc.tmrCompareLocalizeSet().isEnabled());
        QCOMPARE(rig.caption(el::lblLocNumberOfHoles), QStringLiteral("3"));
    }

    void leavingLearnModeAsksFirst() {
        LearnRig rig;
        rig.device({{"localisation.learningIsOn", 1}});
        // Writing the windows leaves it too: only on Yes.
        rig.dialogs.answers = {Answer::No, Answer::Yes};
        rig.w.click(ll::cmdLocParameterAssume);
        QVERIFY(!rig.engine.IsWriteQueued());
        rig.w.click(ll::cmdLocParameterAssume);
        QCOMPARE(rig.engine.NextCommand(), 133);
        rig.engine.CancelWrite();

        rig.dialogs.answers = {Answer::No};
        rig.w.click(ll::cmdLocParameterAbort);
        QVERIFY(!rig.engine.IsWriteQueued());
        QCOMPARE(rig.dialogs.shown.last().defaultAnswer, Answer::No);
        QVERIFY(rig.dialogs.shown.last().text.contains(QStringLiteral("normal operating mode")));

        rig.dialogs.answers = {Answer::Yes};
        rig.w.click(ll::cmdLocParameterAbort);
        QVERIFY(rig.engine.IsWriteQueued());
        QVERIFY(rig.loc.tmrUnload().isEnabled() && rig.loc.tmrTimeout().isEnabled());
        rig.loc.tmrUnload_Timer();
        QVERIFY(rig.w.isShown());

        // The device stays in learn mode: Retry sends again, Ignore closes.
        rig.dialogs.answers = {Answer::Retry};
        rig.loc.tmrTimeout_Timer();
        QVERIFY(rig.dialogs.shown.last().text.contains(QStringLiteral("Learn mode active")));
        QVERIFY(rig.loc.tmrTimeout().isEnabled());
        rig.dialogs.answers = {Answer::Ignore};
        rig.loc.tmrTimeout_Timer();
        QVERIFY(!rig.w.isShown() && !rig.loc.tmrUnload().isEnabled());

        // Outside learn mode the abort goes at once, and the next tick closes.
        LearnRig idle;
        const qsizetype boxes = idle.dialogs.shown.size();
        idle.w.click(ll::cmdLocParameterAbort);
        QCOMPARE(idle.dialogs.shown.size(), boxes);
        idle.loc.tmrUnload_Timer();
        QVERIFY(!idle.w.isShown());
    }

    void lampsFollowTheMainViewsRhythm() {
        LearnRig rig;
        rig.device({{"localisation.learningIsOn", 1}, {"localisation.locIsActive", 1}});
        LedRhythm& leds = rig.app->mainView().Leds();
        Q_EMIT leds.tmrFlash().timeout();
        const std::uint32_t first = rig.w.backColor(ll::picLocLearnModeLED);
        Q_EMIT leds.tmrFlash().timeout();
        QVERIFY(first != rig.w.backColor(ll::picLocLearnModeLED));
        QVERIFY(first == colors::kGreen ||
                rig.w.backColor(ll::picLocLearnModeLED) == colors::kGreen);
        rig.device({{"localisation.learningIsOn", 0}, {"localisation.locIsActive", 0}});
        QCOMPARE(rig.w.backColor(ll::picLocLearnModeLED), colors::kWindowBackground);
        QCOMPARE(rig.w.backColor(ll::picLocLearnActivLED), colors::kWindowBackground);
    }
};

QTEST_MAIN(TestLocalisation)
#include "tst_localisation.moc"
