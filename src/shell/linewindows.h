#pragma once

#include "link/seriallink.h"

#include <QObject>

class Form;
class RegSettings;
class Recognition;

// The start window's view of the line: what the line does in its status line, the receive
// and send lamps, the byte monitor with its send tick, and why the port is not open.
class StartWindow : public QObject {
    Q_OBJECT

public:
    StartWindow(Form& window, SerialLink& link, Recognition& recognition);

private:
    void showReceiveLamp(SerialLink::ReceiveLamp lamp);
    void showSendLamp(bool lit);

    Form& m_window;
};

// The port window frmInterface: the ports as the probe found them, the reason of the one
// picked, and OK to open it.
class PortWindow : public QObject {
    Q_OBJECT

public:
    PortWindow(Form& window, SerialLink& link, const RegSettings& settings);

    // Fills the list: entry 0 "off", entry i port i or "--"; selects the open port's entry.
    void ShowCOMPort();

private:
    void OnClicked(const QString& element);
    void ShowProbeReason();

    Form& m_window;
    SerialLink& m_link;
    const RegSettings& m_settings;
    SerialLink::PortList m_ports;
};
