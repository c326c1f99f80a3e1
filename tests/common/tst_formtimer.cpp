#include "common/formtimer.h"

#include <QTest>

class TestFormTimer : public QObject {
    Q_OBJECT

private slots:
    // A timer that is enabled again while it runs keeps its count: the poll and the LED
    // rhythms enable their timers on every pass and would never tick otherwise.
    void enablingARunningTimerKeepsItsCount() {
        FormTimer timer(10000);
        QCOMPARE(timer.remainingTime(), -1);
        timer.enable();
        QVERIFY(QTest::qWaitFor([&] { return timer.remainingTime() < 9950; }, 5000));
        timer.enable();
        QVERIFY(timer.remainingTime() < 9950);
        timer.restart();
        QVERIFY(timer.remainingTime() >= 9950);
        timer.disable();
        QVERIFY(!timer.isEnabled());
        timer.disable();
        QVERIFY(!timer.isEnabled());
    }
};

QTEST_GUILESS_MAIN(TestFormTimer)
#include "tst_formtimer.moc"
