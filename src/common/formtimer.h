#pragma once

#include <QObject>
#include <QTimer>

// A window timer: it ticks every interval while enabled. Enabling a running timer does not
// restart it; restart() does, so that the whole interval counts from now.
class FormTimer : public QObject {
    Q_OBJECT

public:
    explicit FormTimer(int intervalMs, QObject* parent = nullptr);

    int interval() const { return m_timer.interval(); }
    void setInterval(int intervalMs);
    bool isEnabled() const { return m_timer.isActive(); }
    void setEnabled(bool enabled);
    void enable() { setEnabled(true); }
    void disable() { setEnabled(false); }
    void restart();
    // Milliseconds until the next tick; -1 when disabled.
    int remainingTime() const { return m_timer.remainingTime(); }

Q_SIGNALS:
    void timeout();

private:
    QTimer m_timer;
};
