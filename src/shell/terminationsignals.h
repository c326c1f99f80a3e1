#pragma once

#include <QObject>

class QSocketNotifier;

// SIGTERM, SIGINT and SIGHUP (kill, Ctrl+C, the end of a session) as a Qt signal on the
// event loop, so that the tool shuts down in order instead of dying between two writes.
// The handler only writes the signal's number into a socket pair, the one thing a signal
// handler may safely do; the event loop reads it. A second signal of the same kind, after
// the first has been delivered, ends the process the ordinary way, in case the orderly
// shutdown hangs. One object per process.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

    // False when the socket pair or a handler could not be set up; the signals then keep
    // their default effect.
    bool isActive() const { return m_notifier != nullptr; }

Q_SIGNALS:
    void terminationRequested(int signalNumber);

private:
    void onReadable();

    int m_sockets[2] = {-1, -1};
    QSocketNotifier* m_notifier = nullptr;
};
