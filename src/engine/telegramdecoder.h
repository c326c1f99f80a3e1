#pragma once

#include "common/bytes.h"

#include <QDateTime>
#include <QObject>
#include <QString>

class DeviceSession;
class DeviceValues;
class PollEngine;

// The one road of every accepted telegram of the own family into the program: the time of
// the telegram, the device search, take-on of a new device, value store, next telegram of
// the poll, end of the connection phase, automatic save, display refresh. What lies above
// the engine (the search list, the saves, the windows) it reaches by its signals, in this
// order.
class TelegramDecoder : public QObject {
    Q_OBJECT

public:
    TelegramDecoder(DeviceSession& session, PollEngine& engine, DeviceValues& values);

    void DataDecoder(const Bytes& telegram);

Q_SIGNALS:
    // A telegram recorded at `time` has arrived; for a loaded file, the time it was recorded.
    void TelegramTimed(const QDateTime& time);
    // While the device search runs: a device has answered.
    void SearchAnswer(double serialNo);
    // A new serial number has been taken on: the store was cleared for it, and its read-out
    // goes on out of sight until it is complete.
    void DeviceTakenOn(const QString& serialNo);
    // The store holds a new telegram of the device.
    void TelegramStored();
    // Telegram 5 has completed the read-out of the device: the connection phase is over and
    // the main view takes the device's place.
    void ConnectionPhaseEnded();
    // Telegram 5 has completed the first read-out of the device shown.
    void ReadOutComplete(double serialNo);
    // The store holds a new telegram: time to redraw what shows it.
    void DisplayRefreshDue();
    // Telegram 5 has completed one more read-out of the device: a record for the logger.
    void ReadOutRecorded();

private:
    void ChooseNextTelegram(int command);

    DeviceSession& m_session;
    PollEngine& m_engine;
    DeviceValues& m_values;
};
