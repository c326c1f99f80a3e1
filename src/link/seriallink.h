#pragma once

#include "common/bytes.h"
#include "common/formtimer.h"
#include "link/portopenerror.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>

class Clock;
class Lifetime;
class RegSettings;
class SerialPortDevice;
class Texts;

// The serial line: the port, the collecting window after the first byte of a burst, the
// echo and search filters, the stamping, the send and receive lamps with the hexadecimal
// monitor, and the probe of the ports for the port window. What it shows, the start window
// shows through its signals.
//
// Owns the four timers of the start window: tmrToRx (321 ms), tmrZeroCommand (1789 ms,
// whose tick is the search step of Recognition), tmrReceiveLED and tmrSendLED (100 ms).
// Works without a port (`port` null): then it is never open.
class SerialLink : public QObject {
    Q_OBJECT

public:
    // The receive lamp: dark, bytes arrived, or a telegram of a known family accepted.
    enum class ReceiveLamp { Dark, BytesArrived, TelegramAccepted };

    // A port that does not open stands in the port list as this.
    static inline const QString kUnavailablePort = QStringLiteral("--");

    // The ports 1 to 16 as the port window lists them: entry 0 is "off" (string 53), entry
    // i is "i" with its device name for a port that opens, "--" for one that doesn't; and
    // the reason of each, by entry.
    struct PortList {
        QStringList entries;
        QList<PortOpenFailure> failures;
    };

    SerialLink(RegSettings& settings, const Texts& texts, const Clock& clock, const Lifetime& life,
               SerialPortDevice* port);

    // Frames `body` (CRC when asked, header, sum) and hands it to DataTx; a frame that
    // cannot be built is dropped without a word.
    void MakeSendString(const Bytes& body, bool createCRC);
    // Puts a frame on the line: monitor text, echo memory, port, send LED, search restart.
    void DataTx(const Bytes& s);
    // Tick of tmrToRx: reads the burst, finds the newest frame, filters echo and search
    // telegrams, stamps it and hands it on (telegramReceived).
    void RcvDataGet();

    void RestartSearchTimer();
    void ReceiveLEDYellow();
    void ReceiveLEDGreen();
    void ReceiveLEDOff();
    void SendLEDOn();
    void SendLEDOff();
    // The start window's tick box: without it, telegrams are shown in the monitor but not
    // sent.
    void SetSendEnabled(bool enabled) { m_sendEnabled = enabled; }
    // Bit 0 receive indication, bit 1 send indication; selects the tray icon.
    int IconIndex() const { return m_iconIndex; }

    // Closes the port, opens port 1 to 16 (anything else leaves it closed as 0) and stores
    // a changed number in the setting Port. A failed open leaves the setting alone.
    void SwitchToComPort(int port);
    bool IsPortOpen() const;
    // Whether the program has a serial port at all; without one it runs on saved read-outs.
    bool HasPort() const { return m_port != nullptr; }
    void ClosePort();
    // Why the chosen port is not open, in the current language; empty when it is open or
    // switched off. Shown beside "COM port OFF" on the start window and in the port window.
    QString PortReason() const;
    const PortOpenFailure& PortFailure() const { return m_portFailure; }
    // Tells the windows the reason as it stands (portReasonChanged).
    void ShowPortReason();
    // `failure` in words, in the current language.
    QString Describe(const PortOpenFailure& failure) const;
    // The number of the open port, 0 when none is open.
    int OpenPortNumber() const;

    // Tries every port for the port window. The port in use is closed for the probe and
    // given back.
    PortList ProbePorts();

    // Whether the telegram being handled came from a saved file; cleared by RcvDataGet.
    bool DataFromFile() const { return m_dataFromFile; }
    void SetDataFromFile(bool fromFile) { m_dataFromFile = fromFile; }
    QString LoadedFileName() const { return m_loadedFileName; }
    void SetLoadedFileName(const QString& name) { m_loadedFileName = name; }
    const Bytes& LastSent() const { return m_lastSent; }

    FormTimer& tmrToRx() { return m_tmrToRx; }
    FormTimer& tmrZeroCommand() { return m_tmrZeroCommand; }
    FormTimer& tmrReceiveLED() { return m_tmrReceiveLED; }
    FormTimer& tmrSendLED() { return m_tmrSendLED; }
    // Runs while a port that went away is awaited back.
    FormTimer& tmrPortWatch() { return m_tmrPortWatch; }
    void StopTimers();

Q_SIGNALS:
    void IconIndexChanged(int index);
    // The hexadecimal monitor of what went out and what came in.
    void MonitorSent(const QString& text);
    void MonitorReceived(const QString& text);
    void ReceiveLampChanged(SerialLink::ReceiveLamp lamp);
    void SendLampChanged(bool lit);
    // Why the chosen port is not open; empty when it is open or switched off.
    void PortReasonChanged(const QString& reason);
    // A stamped telegram from the line, for the acceptance checks.
    void TelegramReceived(const Bytes& stamped);
    // tmrZeroCommand: the line has been silent for a whole search step.
    void SearchStepDue();
    // A port that went away is open again.
    void PortReturned();

private:
    void OnPortLost();
    void OnPortWatchTick();
    void OnToRxTick();
    void SetIconBit(int bit, bool on);

    RegSettings& m_settings;
    const Texts& m_texts;
    const Clock& m_clock;
    const Lifetime& m_life;
    SerialPortDevice* m_port;
    FormTimer m_tmrToRx{321};
    FormTimer m_tmrZeroCommand{1789};
    FormTimer m_tmrReceiveLED{100};
    FormTimer m_tmrSendLED{100};
    FormTimer m_tmrPortWatch{500};
    Bytes m_lastSent;
    bool m_dataFromFile = false;
    QString m_loadedFileName;
    int m_iconIndex = 0;
    bool m_sendEnabled = true;
    PortOpenFailure m_portFailure;
};
