#pragma once

#include "common/formtimer.h"

#include <QObject>

class AppState;
class DeviceValues;
class SerialLink;

// What goes to the device when: one telegram at a time, the next 99 ms after the answer
// to the last one has been decoded, the same read telegram again after 888 ms without an
// answer, and a queued write 299 ms after SendCommand. Lives on the main view.
class PollEngine : public QObject {
    Q_OBJECT

public:
    PollEngine(AppState& state, SerialLink& link, DeviceValues& values);

    // Queues a write command (129 to 139) or any other number for the next tick.
    void SendCommand(int command);

    void tmrAutoSend_Timer();
    void tmrTimeout_Timer();

    // Both timers off: nothing is polled.
    void stop();

    FormTimer& tmrAutoSend() { return m_tmrAutoSend; }
    FormTimer& tmrTimeout() { return m_tmrTimeout; }

    int miNextCommand = 0;
    bool mbCommandQueued = false;

Q_SIGNALS:
    // A write telegram went out; the page that waits for its read-back starts comparing.
    void writeSent(int command);

private:
    void sendRead();
    void sendWrite();

    AppState& m_state;
    SerialLink& m_link;
    DeviceValues& m_values;
    FormTimer m_tmrAutoSend{99};
    FormTimer m_tmrTimeout{888};
};
