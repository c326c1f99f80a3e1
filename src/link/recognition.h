#pragma once

#include "common/bytes.h"

#include <cstddef>

#include <QObject>
#include <QString>

class DeviceSession;
class Lifetime;
class ProcessLauncher;
class UserDialogs;
class DeviceValues;
class SerialLink;

// Tells the device kind of every accepted telegram, from the line or from a file: the own
// kind goes on to the decoder, another family hands the port over to the suite program.
// While the line is silent, the search step asks the three families in turn.
class Recognition : public QObject {
    Q_OBJECT

public:
    // The suite program is looked for in `programDir`.
    Recognition(DeviceSession& session, SerialLink& link, DeviceValues& values,
                const Lifetime& life, UserDialogs& dialogs, ProcessLauncher& launcher,
                const QString& programDir);

    // Tick of tmrZeroCommand: "COM port OFF" with the port closed, else the next of the
    // three search telegrams.
    void SearchStep();
    int SearchCounter() const { return m_counter; }

    // Sum, kind, length and CRC of a stamped telegram, then decoder, connection window or
    // hand-over.
    void RcvDataHandle(const Bytes& t);

    // Closes the port, starts Kompa3 beside the program with `file` as its argument (if
    // any) and closes the tool; "Program not found" when it isn't there.
    void StartExtKOMPA(const QString& file);

Q_SIGNALS:
    // What the line is doing, for the start window: "COM port OFF", the family searched for,
    // the family recognised.
    void LineStatusChanged(const QString& status);
    // A telegram of the own family for the decoder.
    void OwnTelegramAccepted(const Bytes& t);
    // The window texts are to be rewritten in the current language.
    void LanguageRefreshNeeded();
    // A new device has introduced itself: the connection window with this title.
    void ConnectionWindowRequested(const QString& serialNo);
    // The tool is to shut down (after a hand-over).
    void CloseRequested();

private:
    void HandleOwnTelegram(const Bytes& t, std::size_t h);
    void ReportStartFailure(const QString& text, const QString& program);

    DeviceSession& m_session;
    SerialLink& m_link;
    DeviceValues& m_values;
    const Lifetime& m_life;
    UserDialogs& m_dialogs;
    ProcessLauncher& m_launcher;
    QString m_programDir;
    int m_counter = 0;
};
