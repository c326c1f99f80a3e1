#pragma once

#include "common/bytes.h"
#include "sim/sim_clock.h"

#include <initializer_list>
#include <utility>

#include <QFile>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

namespace mq27sim {

// Every frame in and out, as JSON lines with a monotonic time stamp in milliseconds:
//   {"t":1234.567,"dir":"in","hex":"02 08 0A ...","cmd":2,"kind":10,"serial":1234567}
//   {"t":1240.002,"dir":"in","noise":"FF 13"}
//   {"t":1300.100,"event":"refused","cmd":129,"reason":"...","serial":1234567}
// Each line is flushed at once, so that a test can read the file while the device runs.
class SimLog {
public:
    explicit SimLog(const SimClock& clock);

    bool open(const QString& path, QString& error);
    bool isOpen() const { return m_file.isOpen(); }

    // `extra` adds fields such as {"fault":"bad-crc"} or {"unsolicited":true}.
    void frame(const char* direction, const Bytes& bytes, const QJsonObject& extra = {});
    void noise(const char* direction, const Bytes& bytes);
    void event(const QString& name, const QJsonObject& details = {});

    static QString hex(const Bytes& bytes);

private:
    using Field = std::pair<QString, QJsonValue>;
    void write(std::initializer_list<Field> head, const QJsonObject& tail);

    const SimClock& m_clock;
    QFile m_file;
};

} // namespace mq27sim
