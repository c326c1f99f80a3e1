#pragma once

#include "common/preferences.h"
#include "shell/unattendedservices.h"

#include <memory>
#include <optional>

#include <QLocale>
#include <QObject>
#include <QString>
#include <QTemporaryDir>

class Program;
class QtSerialPortDevice;

// The program on a real serial line, without a window: the same parts and wiring as the
// desktop tool (search, take-on, poll cycle, decoder, main view refresh, automatic save,
// settings pages), with settings in memory, no dialogs and no other program started. The
// automatic save goes to a scratch folder, where the read-out command picks it up.
class LiveSession : public QObject {
    Q_OBJECT

public:
    struct Options {
        Language language = Language::English;
        SmokeUnit smokeUnit = SmokeUnit::PercentPerMetre;
        TemperatureUnit temperatureUnit = TemperatureUnit::Celsius;
    };

    explicit LiveSession(const Options& options);
    ~LiveSession() override;

    // Opens the port (a number 1 to 16, or a device path) and starts the search as the tool
    // does at its start; the start window's reason when the port cannot be opened.
    std::optional<QString> start(const QString& port);

    Program& program() { return *m_program; }
    // The device's first complete read-out has been taken in.
    bool readOutDone() const { return m_readOutDone; }
    // The file that the automatic save wrote for that read-out; empty when it wrote none.
    QString autoSavedFile() const { return m_autoSavedFile; }
    // The name of the other family whose telegram handed the line over; empty if none.
    QString otherFamily() const { return m_otherFamily; }
    bool lineLost() const { return m_lineLost; }

    // The device path behind a port argument: a number names the tool's port, anything
    // else is taken as a path.
    static QString portPath(const QString& port);

Q_SIGNALS:
    // The first complete read-out of the device (after telegram 5) is in, the main view
    // refreshed and the automatic save written.
    void ReadOutComplete();
    // Each further complete cycle (after every telegram 5), with the main view refreshed.
    void cycleComplete();
    // A device of another family answered: the tool hands such a line over and stops.
    void handedOver(const QString& family);
    // The port went away while open.
    void lost();

private:
    void onReadOutRecorded();

    UnattendedServices m_outside;
    std::unique_ptr<QtSerialPortDevice> m_port;
    std::unique_ptr<Program> m_program;
    Options m_options;
    bool m_readOutDone = false;
    bool m_lineLost = false;
    QString m_autoSavedFile;
    QString m_otherFamily;
};
