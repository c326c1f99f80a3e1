#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>

// What the tool knows about the device it talks to. The poll, the commands, the saves and
// the search read the device's serial number here; the main view only shows it.
class DeviceSession : public QObject {
    Q_OBJECT

public:
    // The serial number that every read and write telegram is addressed to: the device
    // taken on, or the one chosen in the device search. Empty before either.
    const QString& serialNo() const { return m_serialNo; }
    void setSerialNo(const QString& serialNo);

    // While the device search runs, every answer lists a device and none is taken on.
    bool searchRunning() const { return m_searchRunning; }
    void setSearchRunning(bool running) { m_searchRunning = running; }

    // A device chosen in the search that has not introduced itself yet: until it has, no
    // other device is taken on. Empty when none is awaited.
    const QString& awaitedSerialNo() const { return m_awaitedSerialNo; }
    void awaitChosenDevice(const QString& serialNo) { m_awaitedSerialNo = serialNo; }

    // The serial number of the device whose read-out the value store holds; empty until one
    // has been taken on, and again after a telegram of another device emptied the store.
    const QString& takenOnSerialNo() const { return m_takenOnSerialNo; }
    QString& takenOnSerialNo() { return m_takenOnSerialNo; }

    // When the telegram being handled was recorded; for a loaded file, its recording time.
    const QDateTime& telegramTime() const { return m_telegramTime; }
    void setTelegramTime(const QDateTime& time) { m_telegramTime = time; }

Q_SIGNALS:
    void serialNoChanged(const QString& serialNo);

private:
    QString m_serialNo;
    bool m_searchRunning = false;
    QString m_awaitedSerialNo;
    QString m_takenOnSerialNo;
    QDateTime m_telegramTime;
};
