#include "display/mainview.h"
#include "shell/languages.h"
#include "shell/livestate.h"
#include "support/fakes.h"

#include <QtTest>

class TestLiveState : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Three missed answers in a row say so on every page and hold the lamps; the next answer
    // takes it back. A file shown says so and locks what would send, until a search.
    void silenceAndFileSaidOnEveryPage() {
        TestApp t;
        t.app->languages().SwitchToLanguage(2);
        t.app->session().setSerialNo(QStringLiteral("1234567"));
        LiveState& live = t.app->live();
        Form& view = t.app->forms().frmDisplay();
        const QDateTime heard(QDate(2024, 5, 6), QTime(17, 11, 34));
        live.telegramTaken(heard, false);
        QSignalSpy began(&live, &LiveState::silenceBegan);
        for (int miss = 1; miss <= 4; ++miss) {
            live.answerMissed();
            QCOMPARE(view.isVisible("lblStateBanner_7"), miss >= LiveState::kMissesForSilence);
        }
        QCOMPARE(began.size(), 1);
        QCOMPARE(view.caption("lblStateBanner_0"),
                 QStringLiteral("No answer from 1234567 since 17:11:34"));
        QVERIFY(!t.app->mainView().Leds().tmrBlink().isEnabled());
        live.telegramTaken(heard.addSecs(60), false);
        QVERIFY(!view.isVisible("lblStateBanner_3"));
        QVERIFY(t.app->mainView().Leds().tmrBlink().isEnabled());

        live.telegramTaken(heard, true);
        view.setEnabled("cmdRelaySet", false);
        live.showFile(QStringLiteral("/tmp/ShelLix_1234567.ko3"));
        // A button its window enables while the file is shown is locked again, and comes
        // back enabled.
        view.setEnabled("cmdRelaySet", true);
        live.applyLocks();
        QVERIFY(!view.isEnabled("cmdRelaySet"));
        QVERIFY(view.caption("lblStateBanner_5").contains(QStringLiteral("ShelLix_1234567.ko3")));
        for (const char* e : {"cmdSettings", "cmdAlarmReset_0", "cmdExtinguisherIdent_9"}) {
            QVERIFY2(!view.isEnabled(e), e);
            QVERIFY(!view.toolTip(e).isEmpty());
        }
        QVERIFY(!t.app->forms().frmDeviceSettings().isEnabled("cmdBetaSettings"));
        for (int miss = 0; miss < 5; ++miss)
            live.answerMissed();
        QVERIFY(!live.isSilent());
        view.click("mnuDeviceSearch");
        QVERIFY(!live.isFileShown());
        QVERIFY(!view.isVisible("lblStateBanner_0"));
        QVERIFY(view.isEnabled("cmdSettings"));
        QVERIFY(view.isEnabled("cmdRelaySet"));
    }
};

QTEST_GUILESS_MAIN(TestLiveState)
#include "tst_livestate.moc"
