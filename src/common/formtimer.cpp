#include "common/formtimer.h"

FormTimer::FormTimer(int intervalMs, QObject* parent)
    : QObject(parent) {
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(intervalMs);
    connect(&m_timer, &QTimer::timeout, this, &FormTimer::timeout);
}

void FormTimer::setInterval(int intervalMs) {
    m_timer.setInterval(intervalMs);
}

void FormTimer::setEnabled(bool enabled) {
    if (enabled == m_timer.isActive()) return;
    if (enabled)
        m_timer.start();
    else
        m_timer.stop();
}

void FormTimer::restart() {
    m_timer.stop();
    m_timer.start();
}

#include "moc_formtimer.cpp"
