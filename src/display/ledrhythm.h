#pragma once

#include "common/formtimer.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSet>
#include <QString>

class Form;

// The rhythms of the main view's LEDs. Each LED element holds the state the device reports
// as its value (0 dark, 1 flash, 2 blink, 3 steady); tmrBlink (500 ms) paints the blinking
// and steady ones, tmrFlash (100 ms on, 900 ms off) the flashing ones. Both run for the
// whole life of the main view; until the first refresh every LED is dark.
class LedRhythm : public QObject {
    Q_OBJECT

public:
    explicit LedRhythm(Form& view);

    void tmrBlink_Timer();
    void tmrFlash_Timer();
    // Held, the lamps stand still: a lamp the device reported lit in any rhythm stays lit,
    // because the device is no longer heard. Let go, the rhythms go on.
    void Hold(bool held);

    // The elements the timers paint.
    static QSet<QString> elements();

    FormTimer& tmrBlink() { return m_tmrBlink; }
    FormTimer& tmrFlash() { return m_tmrFlash; }

private:
    enum class Rhythm { Blink, Flash };

    void paint(Rhythm rhythm, bool lit);

    Form& m_view;
    FormTimer m_tmrBlink{500};
    FormTimer m_tmrFlash{100};
    bool m_blinkPhase = false;
    bool m_flashPhase = false;
    QElapsedTimer m_flashClock;
    qint64 m_flashDueMs = 0;
};
