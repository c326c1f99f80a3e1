#pragma once

#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// The virtual device as its own process on a pseudo-terminal, with its frame log: what the
// end-to-end tests drive the tool against and read back what the tool sent.
class SimProcess {
public:
    // One line of the device's frame log.
    struct Entry {
        double t = 0; // ms since the device started
        QString dir;  // "in" from the tool, "out" from the device, empty for an event
        QString hex;
        int kind = -1;
        int cmd = -1;
        double serial = -1;

        bool isRequest() const { return dir == u"in" && !hex.isEmpty(); }
    };

    SimProcess();
    ~SimProcess();
    SimProcess(const SimProcess&) = delete;
    SimProcess& operator=(const SimProcess&) = delete;

    // Starts the device with these options (profiles, faults) and waits for its port.
    bool start(const QStringList& options);
    void stop();
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    // The path the tool opens: a link to the device's pseudo-terminal.
    QString portPath() const;
    QString folder() const { return m_folder.path(); }
    QString output() const { return m_output; }

    // A profile file of the project, e.g. "minimal".
    static QString profile(const QString& name);

    QList<Entry> log() const;
    // Frames the tool sent, in order.
    QList<Entry> requests() const;
    // From entry `from` of the log on: the frames the tool sent with `command` (any when
    // negative), and their count.
    QList<QByteArray> writes(int command, qsizetype from = 0) const;
    qsizetype requestsOf(int command, qsizetype from = 0) const {
        return writes(command, from).size();
    }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_output;
};
