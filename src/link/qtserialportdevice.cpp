#include "link/qtserialportdevice.h"

#include <algorithm>

#include <QFileInfo>
#include <QSerialPortInfo>

namespace {

QStringList systemPortPaths() {
    QStringList paths;
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& info : ports)
        paths << info.systemLocation();
    std::sort(paths.begin(), paths.end());
    return paths;
}

// Errors after which the line is gone for good. A closed pseudo-terminal keeps reporting a
// read error, a pulled adapter a resource error; left open, either spins the event loop.
bool isFatal(QSerialPort::SerialPortError error) {
    switch (error) {
    case QSerialPort::NoError:
    case QSerialPort::TimeoutError:
    case QSerialPort::UnsupportedOperationError:
        return false;
    default:
        return true;
    }
}

QString environmentPath(int portNumber) {
    return qEnvironmentVariable(
        QStringLiteral("MQ27D_PORT%1").arg(portNumber).toLatin1().constData());
}

} // namespace

QtSerialPortDevice::QtSerialPortDevice(QObject* parent)
    : SerialPortDevice(parent) {
    connect(&m_port, &QSerialPort::readyRead, this, &SerialPortDevice::received);
    connect(&m_port, &QSerialPort::errorOccurred, this, &QtSerialPortDevice::onError);
}

QtSerialPortDevice::~QtSerialPortDevice() {
    // The port must not report anything to a half-destroyed object.
    disconnect(&m_port, nullptr, this, nullptr);
    m_port.close();
}

bool QtSerialPortDevice::open(int portNumber) {
    close();
    m_portNumber = portNumber;
    m_failure = {};
    m_identity = {};
    const QString path = devicePath(portNumber);
    if (path.isEmpty()) {
        m_failure.kind = PortOpenFailure::Kind::NoDevice;
        m_failure.portNumber = portNumber;
        return false;
    }
    return openPath(path);
}

bool QtSerialPortDevice::openPath(const QString& path) {
    // A link to the device (a pseudo-terminal's stable name) locks the device itself.
    const QString canonical = QFileInfo(path).canonicalFilePath();
    m_port.setPortName(canonical.isEmpty() ? path : canonical);
    m_port.setBaudRate(QSerialPort::Baud19200);
    m_port.setDataBits(QSerialPort::Data8);
    m_port.setParity(QSerialPort::NoParity);
    m_port.setStopBits(QSerialPort::OneStop);
    m_port.setFlowControl(QSerialPort::NoFlowControl);
    if (!m_port.open(QIODevice::ReadWrite)) {
        m_failure = diagnosePortOpen(path, m_port.error(), m_port.errorString());
        m_failure.portNumber = m_portNumber;
        m_port.clearError();
        return false;
    }
    m_failure = {};
    const QSerialPortInfo info(m_port);
    if (info.hasVendorIdentifier() && info.hasProductIdentifier()) {
        m_identity = {true, info.vendorIdentifier(), info.productIdentifier(), info.serialNumber()};
    }
    return true;
}

bool QtSerialPortDevice::reopen() {
    if (m_port.isOpen()) return true;
    if (m_portNumber < kFirstPort || m_portNumber > kLastPort) return false;
    const QString fixedPath = environmentPath(m_portNumber);
    if (!fixedPath.isEmpty()) {
        // A fixed name (a pseudo-terminal's link, a by-id path): one stat a tick.
        if (!QFileInfo::exists(fixedPath)) return false;
        return openPath(fixedPath);
    }
    // Adapters come and go as nodes in /dev; while it stays as it was, nothing came back.
    const QDateTime devicesChanged = QFileInfo(QStringLiteral("/dev")).lastModified();
    if (devicesChanged == m_devicesSeen) return false;
    m_devicesSeen = devicesChanged;
    if (m_identity.known) {
        const UsbIdentity wanted = m_identity;
        const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
        for (const QSerialPortInfo& info : ports) {
            if (info.vendorIdentifier() == wanted.vendor &&
                info.productIdentifier() == wanted.product &&
                info.serialNumber() == wanted.serialNumber)
                return openPath(info.systemLocation());
        }
        return false;
    }
    const QString path = devicePath(m_portNumber);
    return !path.isEmpty() && openPath(path);
}

void QtSerialPortDevice::close() {
    if (m_port.isOpen()) m_port.close();
    m_port.clearError();
}

bool QtSerialPortDevice::isOpen() const {
    return m_port.isOpen();
}

QByteArray QtSerialPortDevice::readAll() {
    return m_port.isOpen() ? m_port.readAll() : QByteArray();
}

void QtSerialPortDevice::write(const QByteArray& data) {
    if (m_port.isOpen()) m_port.write(data);
}

QString QtSerialPortDevice::deviceName(int portNumber) const {
    return devicePath(portNumber);
}

QString QtSerialPortDevice::devicePath(int portNumber) {
    if (portNumber < kFirstPort || portNumber > kLastPort) return {};
    const QString fromEnvironment = environmentPath(portNumber);
    if (!fromEnvironment.isEmpty()) return fromEnvironment;
    const QStringList paths = systemPortPaths();
    return portNumber <= paths.size() ? paths.at(portNumber - 1) : QString();
}

void QtSerialPortDevice::onError(QSerialPort::SerialPortError error) {
    if (!isFatal(error) || !m_port.isOpen()) return;
    const QString text = m_port.errorString();
    m_port.close();
    const QString path = devicePath(m_portNumber);
    m_failure = diagnosePortOpen(path, error, text);
    m_failure.portNumber = m_portNumber;
    m_failure.vanished = true;
    // The first look for its return enumerates whatever /dev looks like then.
    m_devicesSeen = {};
    m_port.clearError();
    Q_EMIT lost();
}

#include "moc_qtserialportdevice.cpp"

#include "moc_serialport.cpp"
