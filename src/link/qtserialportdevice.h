#pragma once

#include "link/serialport.h"

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

    // The device path behind a port number, empty when there is none.
    static QString devicePath(int portNumber);

private:
    void onError(QSerialPort::SerialPortError error);

    QSerialPort m_port;
    int m_portNumber = 0;
};
