#include "display/ledrhythm.h"

#include "common/colors.h"
#include "common/formmodel.h"
#include "display/mainview_elements.h"

#include <vector>

namespace el = frmDisplay;

namespace {

// A lamp's state: 0 dark, then these.
constexpr int kFlash = 1;
constexpr int kBlink = 2;
constexpr int kSteady = 3;
constexpr int kFlashOnMs = 100;
constexpr int kFlashOffMs = 900;

struct Led {
    QString element;
    std::uint32_t color;
    bool asDot = false; // the main alarm lights a dot, not the box
};

// Every LED the timers paint, in the order they go through them.
const std::vector<Led>& ledTable();

} // namespace

LedRhythm::LedRhythm(Form& view)
    : QObject()
    , m_view(view) {
    connect(&m_tmrBlink, &FormTimer::timeout, this, &LedRhythm::tmrBlink_Timer);
    connect(&m_tmrFlash, &FormTimer::timeout, this, &LedRhythm::tmrFlash_Timer);
    m_tmrBlink.enable();
    m_tmrFlash.enable();
    m_flashClock.start();
    m_flashDueMs = m_tmrFlash.interval();
}

QSet<QString> LedRhythm::elements() {
    QSet<QString> names;
    for (const Led& led : ledTable())
        names.insert(led.element);
    return names;
}

void LedRhythm::tmrBlink_Timer() {
    m_blinkPhase = !m_blinkPhase;
    paint(Rhythm::Blink, m_blinkPhase);
}

// On for one short tick, off for one long one: one flash a second. The next change counts
// from when this one was due, not from when its tick ran; late ticks would add up and the
// flash slip behind. A tick early (called by hand) or more than a short phase late (the
// machine slept) starts the count afresh.
void LedRhythm::tmrFlash_Timer() {
    const qint64 now = m_flashClock.elapsed();
    if (now < m_flashDueMs || now - m_flashDueMs > kFlashOnMs) m_flashDueMs = now;
    m_flashDueMs += m_flashPhase ? kFlashOffMs : kFlashOnMs;
    m_tmrFlash.setInterval(static_cast<int>(m_flashDueMs - now));
    m_flashPhase = !m_flashPhase;
    paint(Rhythm::Flash, m_flashPhase);
}

void LedRhythm::Hold(bool held) {
    if (held) {
        m_tmrBlink.disable();
        m_tmrFlash.disable();
        paint(Rhythm::Blink, true);
        paint(Rhythm::Flash, true);
    } else {
        m_tmrBlink.enable();
        m_tmrFlash.enable();
    }
}

void LedRhythm::paint(Rhythm rhythm, bool lit) {
    for (const Led& led : ledTable()) {
        const double state = m_view.value(led.element);
        bool on = false;
        if (rhythm == Rhythm::Blink) {
            if (state == kFlash) continue;
            on = state == kSteady || (state == kBlink && lit);
        } else {
            if (state != kFlash) continue;
            on = lit;
        }
        const std::uint32_t color = on ? led.color : colors::kWindowBackground;
        if (led.asDot)
            m_view.setDot(led.element, color);
        else
            m_view.setBackColor(led.element, color);
    }
}

namespace {

const std::vector<Led>& ledTable() {
    static const std::vector<Led> table = [] {
        using colors::kGreen;
        using colors::kRed;
        using colors::kYellow;
        std::vector<Led> leds;
        for (int i = 0; i < 4; ++i)
            leds.push_back({el::picActionAlarm[i], kRed});
        for (int i = 0; i < 4; ++i)
            leds.push_back({el::picFireAlarm[i], kRed});
        const std::uint32_t device[] = {kGreen, kYellow, kYellow, kYellow, kYellow, kRed};
        for (int i = 0; i < 6; ++i)
            leds.push_back({el::picDisplay[i], device[i]});
        for (int i = 0; i < 5; ++i)
            leds.push_back({el::picFirePlace[i], kRed});
        leds.push_back({el::picAirFlowInitLED, kGreen});
        for (int i = 0; i < 10; ++i)
            leds.push_back({el::picExtOperating[i], kGreen});
        for (int i = 0; i < 10; ++i)
            leds.push_back({el::picExtReleased[i], kRed});
        for (int i = 0; i < 10; ++i)
            leds.push_back({el::picExtFault[i], kYellow});
        for (int i = 0; i < 10; ++i)
            leds.push_back({el::picExtBlocked[i], kYellow});
        leds.push_back({el::picFireAlarm[4], kRed, true});
        return leds;
    }();
    return table;
}

} // namespace

#include "moc_ledrhythm.cpp"
