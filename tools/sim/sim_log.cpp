#include "sim/sim_log.h"

#include "link/telegram.h"

#include <cmath>

#include <QJsonArray>
#include <QJsonDocument>

namespace mq27sim {
namespace {

QByteArray jsonOf(const QJsonValue& value) {
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

// Kind, command and serial number where the frame has them.
QJsonObject addressOf(const Bytes& frame) {
    const auto h = static_cast<std::size_t>(telegram::HeaderLength(frame));
    QJsonObject address;
    if (frame.size() >= h + 2 + 2) address = {{"kind", frame[h]}, {"cmd", frame[h + 1]}};
    if (frame.size() >= h + 6 + 2) {
        const double serial = double(frame[h + 2]) * 16777216.0 + frame[h + 3] * 65536.0 +
                              frame[h + 4] * 256.0 + frame[h + 5];
        address.insert("serial", serial);
    }
    return address;
}

} // namespace

SimLog::SimLog(const SimClock& clock)
    : m_clock(clock) {}

bool SimLog::open(const QString& path, QString& error) {
    m_file.setFileName(path);
    if (m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) return true;
    error = QStringLiteral("log %1: %2").arg(path, m_file.errorString());
    return false;
}

QString SimLog::hex(const Bytes& bytes) {
    return QString::fromLatin1(toByteArray(bytes).toHex(' ').toUpper());
}

void SimLog::frame(const char* direction, const Bytes& bytes, const QJsonObject& extra) {
    QJsonObject tail = addressOf(bytes);
    for (auto it = extra.begin(); it != extra.end(); ++it)
        tail.insert(it.key(), it.value());
    write({{"dir", direction}, {"hex", hex(bytes)}}, tail);
}

void SimLog::noise(const char* direction, const Bytes& bytes) {
    write({{"dir", direction}, {"noise", hex(bytes)}}, {});
}

void SimLog::event(const QString& name, const QJsonObject& details) {
    write({{"event", name}}, details);
}

void SimLog::write(std::initializer_list<Field> head, const QJsonObject& tail) {
    if (!m_file.isOpen()) return;
    const double t = std::round(m_clock.elapsedMs() * 1000.0) / 1000.0;
    QByteArray line = "{\"t\":" + jsonOf(t);
    for (const Field& f : head)
        line += ",\"" + f.first.toUtf8() + "\":" + jsonOf(f.second);
    for (auto it = tail.begin(); it != tail.end(); ++it)
        line += "," + jsonOf(it.key()) + ":" + jsonOf(it.value());
    line += "}\n";
    m_file.write(line);
    m_file.flush();
}

} // namespace mq27sim
