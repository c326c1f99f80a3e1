#pragma once

#include "common/bytes.h"
#include "common/formtimer.h"
#include "link/portopenerror.h"

#include <QDateTime>
#include <QObject>
#include <QString>

class AppState;
class Form;
class SerialPortDevice;

// The start window's serial half: the port, the collecting window after the first byte
// of a burst, the echo and search filters, the stamping, the send and receive LEDs with the
// hexadecimal monitor, and the choice of the port in frmInterface.
//
// Owns the four timers of frmMQ27D: tmrToRx (321 ms), tmrZeroCommand (1789 ms, whose
// tick is the search step of Recognition), tmrReceiveLED and tmrSendLED (100 ms). Works
// without a port (`port` null): then it is never open.
class SerialLink : public QObject {
    Q_OBJECT

public:
    SerialLink(AppState& state, SerialPortDevice* port);

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
    // Bit 0 receive indication, bit 1 send indication; selects the tray icon.
    int iconIndex() const { return m_iconIndex; }

    // Closes the port, opens port 1 to 16 (anything else leaves it closed as 0) and stores
    // a changed number in the setting Port. A failed open leaves the setting alone.
    void SwitchToComPort(int port);
    bool isPortOpen() const;
    void closePort();
    // Why the chosen port is not open, in the current language; empty when it is open or
    // switched off. Shown beside "COM port OFF" on the start window and in the port window.
    QString portReason() const;
    const PortOpenFailure& portFailure() const { return m_portFailure; }
    void showPortReason();

    // Fills cboPort of frmInterface: entry i is "i" with its device name for a port that
    // opens, "--" for one that doesn't, entry 0 is string 53; selects the open port's entry.
    // The port in use is closed for the probe and given back.
    void ShowCOMPort();

    // Whether the telegram being handled came from a saved file; cleared by RcvDataGet.
    bool dataFromFile() const { return m_dataFromFile; }
    void setDataFromFile(bool fromFile) { m_dataFromFile = fromFile; }
    QString loadedFileName() const { return m_loadedFileName; }
    void setLoadedFileName(const QString& name) { m_loadedFileName = name; }
    const Bytes& lastSent() const { return m_lastSent; }

    FormTimer& tmrToRx() { return m_tmrToRx; }
    FormTimer& tmrZeroCommand() { return m_tmrZeroCommand; }
    FormTimer& tmrReceiveLED() { return m_tmrReceiveLED; }
    FormTimer& tmrSendLED() { return m_tmrSendLED; }
    // Runs while a port that went away is awaited back.
    FormTimer& tmrPortWatch() { return m_tmrPortWatch; }
    void stopTimers();

Q_SIGNALS:
    void iconIndexChanged(int index);
    // A stamped telegram from the line, for the acceptance checks.
    void telegramReceived(const Bytes& stamped);
    // tmrZeroCommand: the line has been silent for a whole search step.
    void searchStepDue();
    // A port that went away is open again.
    void portReturned();

private:
    void onInterfaceClicked(const QString& element);
    void onPortLost();
    void onPortWatchTick();
    void showProbeReason();
    void onToRxTick();
    void setIconBit(int bit, bool on);
    Form& startWindow();

    AppState& m_state;
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
    PortOpenFailure m_portFailure;
    // The probe's reason for every port of the port window's list, by list index.
    QList<PortOpenFailure> m_probeFailures;
};
