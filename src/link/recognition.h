#pragma once

#include "link/bytes.h"

#include <cstddef>

#include <QObject>
#include <QString>

class AppContext;

// Tells the device kind of every accepted telegram, from the line or from a file: the own
// kind goes to the decoder, another family hands the port over to the suite program.
// While the line is silent, the search step asks the three families in turn.
class Recognition : public QObject {
    Q_OBJECT

public:
    explicit Recognition(AppContext& app);

    // Tick of tmrZeroCommand: "COM port OFF" with the port closed, else the next of the
    // three search telegrams.
    void SearchStep();
    int searchCounter() const { return m_counter; }

    // Sum, kind, length and CRC of a stamped telegram, then decoder, connection window or
    // hand-over.
    void RcvDataHandle(const Bytes& t);

    // Closes the port, starts Kompa3 beside the program with `file` as its argument (if
    // any) and closes the tool; "Program not found" when it isn't there.
    void StartExtKOMPA(const QString& file);

Q_SIGNALS:
    // A telegram of the own family is on its way to the decoder.
    void ownTelegram(const Bytes& t);

private:
    void handleOwnTelegram(const Bytes& t, std::size_t h);

    AppContext& m_app;
    int m_counter = 0;
};
