#pragma once

#include "link/serialport.h"

#include <QDateTime>
#include <QSerialPort>

// The serial port of the running tool. Port n is the device named by the environment
// variable MQ27D_PORT<n> when it is set (a pseudo-terminal, a fixed adapter), else the n-th
// serial port of the system in the order of their device paths.
class QtSerialPortDevice : public SerialPortDevice {
    Q_OBJECT

public:
    explicit QtSerialPortDevice(QObject* parent = nullptr);
    ~QtSerialPortDevice() override;

    bool open(int portNumber) override;
    void close() override;
    bool isOpen() const override;
    int portNumber() const override { return m_portNumber; }
    QByteArray readAll() override;
    void write(const QByteArray& data) override;
    QString deviceName(int portNumber) const override;
    PortOpenFailure openFailure() const override { return m_failure; }
    bool reopen() override;

    // The device path behind a port number, empty when there is none.
    static QString devicePath(int portNumber);

private:
    // A USB adapter's identity, to know it again under another name.
    struct UsbIdentity {
        bool known = false;
        quint16 vendor = 0;
        quint16 product = 0;
        QString serialNumber;
    };

    bool openPath(const QString& path);
    void onError(QSerialPort::SerialPortError error);

    QSerialPort m_port;
    int m_portNumber = 0;
    PortOpenFailure m_failure;
    UsbIdentity m_identity;
    QDateTime m_devicesSeen; // when /dev last changed, as last looked at
};
