#pragma once

#include "common/bytes.h"
#include "common/formtimer.h"

#include <QDateTime>
#include <QObject>
#include <QString>

class AppState;
class DeviceSession;
class DeviceValues;
class PollEngine;

// The one road of every accepted telegram of the own family into the program: title bar,
// device search, take-on of a new device, value store, next telegram of the poll, end of
// the connection phase, automatic save, display refresh. What lies above the engine (the
// search list, the saves, the main view) it reaches by its signals, in this order.
class TelegramDecoder : public QObject {
    Q_OBJECT

public:
    TelegramDecoder(AppState& state, DeviceSession& session, PollEngine& engine,
                    DeviceValues& values);

    void DataDecoder(const Bytes& telegram);

    // The eight receive lamps of the main view green, back after 100 ms.
    void ShowReceiveActivity();

    FormTimer& tmrReceiveLED() { return m_tmrReceiveLED; }

Q_SIGNALS:
    // While the device search runs: a device has answered.
    void searchAnswer(double serialNo);
    // A new serial number has been taken on: the store was cleared for it.
    void deviceTakenOn(const QString& serialNo);
    // Telegram 5 has completed the first read-out of the device shown.
    void readOutComplete(double serialNo);
    // The store holds a new telegram and the main view is shown: time to redraw it.
    void displayRefreshDue();
    // Telegram 5 has completed one more read-out of the device: a record for the logger.
    void readOutRecorded();

private:
    void setTitleBar();
    void takeOn(const QString& serialNo);
    void chooseNextTelegram(int command);
    void endConnectionPhase();

    AppState& m_state;
    DeviceSession& m_session;
    PollEngine& m_engine;
    DeviceValues& m_values;
    FormTimer m_tmrReceiveLED{100};
};
