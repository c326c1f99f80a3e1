#pragma once

#include "common/formtimer.h"

#include <QObject>

class DeviceSession;
class DeviceValues;
class SerialLink;

// What goes to the device when: one telegram at a time, the next 99 ms after the answer
// to the last one has been decoded, the same read telegram again after 888 ms without an
// answer, and a queued write 299 ms after SendCommand. Lives on the main view.
class PollEngine : public QObject {
    Q_OBJECT

public:
    PollEngine(const DeviceSession& session, SerialLink& link, DeviceValues& values);

    // Queues a write command (129 to 139) or any other number for the next tick.
    void SendCommand(int command);
    // Takes back a write that has not gone out yet: the next tick asks for the read telegram
    // it would have asked for without it.
    void CancelWrite();
    // The read telegram (1 to 5) the next tick asks for, unless a write is queued.
    void SetNextRead(int command) { m_nextCommand = command; }
    int NextCommand() const { return m_nextCommand; }
    bool IsWriteQueued() const { return m_writeQueued; }

    void tmrAutoSend_Timer();
    void tmrTimeout_Timer();

    // Both timers off: nothing is polled.
    void Stop();

    FormTimer& tmrAutoSend() { return m_tmrAutoSend; }
    FormTimer& tmrTimeout() { return m_tmrTimeout; }

Q_SIGNALS:
    // A write telegram went out; the page that waits for its read-back starts comparing.
    void WriteSent(int command);

private:
    void SendRead();
    void SendWrite();

    const DeviceSession& m_session;
    SerialLink& m_link;
    DeviceValues& m_values;
    int m_nextCommand = 0;
    bool m_writeQueued = false;
    int m_readBeforeWrite = 0;
    FormTimer m_tmrAutoSend{99};
    FormTimer m_tmrTimeout{888};
};
