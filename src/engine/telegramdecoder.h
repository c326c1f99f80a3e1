#pragma once

#include "link/bytes.h"
#include "shell/formtimer.h"

#include <QDateTime>
#include <QObject>
#include <QString>

class AppContext;

// The one road of every accepted telegram of the own family into the program: title bar,
// device search, take-on of a new device, value store, next telegram of the poll, end of
// the connection phase, automatic save, display refresh.
class TelegramDecoder : public QObject {
    Q_OBJECT

public:
    explicit TelegramDecoder(AppContext& app);

    void DataDecoder(const Bytes& telegram);

    // The eight receive lamps of the main view green, back after 100 ms.
    void ShowReceiveActivity();

    QDateTime mdTelegramTime;
    QString msLastSerialNo;

    FormTimer& tmrReceiveLED() { return m_tmrReceiveLED; }

Q_SIGNALS:
    // A new serial number has been taken on: the store was cleared for it.
    void deviceTakenOn(const QString& serialNo);

private:
    void setTitleBar();
    void takeOn(const QString& serialNo);
    void setSerialLabels(const QString& serialNo);
    void chooseNextTelegram(int command);
    void endConnectionPhase();

    AppContext& m_app;
    FormTimer m_tmrReceiveLED{100};
};
