#pragma once

#include "link/portopenerror.h"

#include <QByteArray>
#include <QObject>
#include <QString>

// The port numbers the tool offers.
constexpr int kFirstPort = 1;
constexpr int kLastPort = 16;

// The serial port as the link needs it: a numbered port (1 to 16) opened at 19200 baud,
// 8 data bits, no parity, 1 stop bit, raw bytes in and out.
class SerialPortDevice : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // Closes an open port first. False when the port is absent or in use.
    virtual bool open(int portNumber) = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    // The number of the port last selected; 0 when none was.
    virtual int portNumber() const = 0;
    virtual QByteArray readAll() = 0;
    virtual void write(const QByteArray& data) = 0;
    // The device behind a port number, for the port list ("/dev/ttyUSB0"); empty if none.
    virtual QString deviceName(int portNumber) const = 0;
    // Why the last open failed or the open port went away; Kind::None after a good open.
    virtual PortOpenFailure openFailure() const { return {}; }
    // Opens the port last chosen again after it went away, also where the same USB adapter
    // came back under another name. Called twice a second while the port is away, so it
    // looks only when the system's devices changed. True when the port is open.
    virtual bool reopen() { return isOpen() || open(portNumber()); }

Q_SIGNALS:
    // Bytes have arrived.
    void received();
    // The port went away while open (adapter pulled, other side closed); it is closed now.
    void lost();
};
