#include "sim/bus_device.h"

#include "link/checksum.h"
#include "link/telegram.h"

namespace mq27sim {

Telegram Telegram::fromFrame(const Bytes& frame) {
    Telegram t;
    t.frame = frame;
    t.headerLength = telegram::HeaderLength(frame);
    const auto begin = static_cast<std::size_t>(t.headerLength);
    if (frame.size() >= begin + 2)
        t.payload.assign(frame.begin() + static_cast<std::ptrdiff_t>(begin), frame.end() - 2);
    return t;
}

int Telegram::kind() const {
    return payload.empty() ? -1 : payload[0];
}

int Telegram::command() const {
    return payload.size() < 2 ? -1 : payload[1];
}

std::uint32_t Telegram::serial() const {
    if (payload.size() < 6) return 0;
    return std::uint32_t(payload[2]) << 24 | std::uint32_t(payload[3]) << 16 |
           std::uint32_t(payload[4]) << 8 | payload[5];
}

bool Telegram::crcIsRight() const {
    return payload.size() >= 2 &&
           checksum::CheckCRC(payload, 0, static_cast<int>(payload.size()) - 1) == 0;
}

Bytes Telegram::block() const {
    return payload.size() < 2 ? Bytes{} : Bytes(payload.begin(), payload.end() - 2);
}

std::optional<Bytes> deviceFrame(int kind, int command, std::uint32_t serial, const Bytes& data,
                                 bool withCrc) {
    Bytes payload = {
        static_cast<std::uint8_t>(kind),         static_cast<std::uint8_t>(command),
        static_cast<std::uint8_t>(serial >> 24), static_cast<std::uint8_t>(serial >> 16),
        static_cast<std::uint8_t>(serial >> 8),  static_cast<std::uint8_t>(serial)};
    payload.insert(payload.end(), data.begin(), data.end());
    return telegram::MakeSendFrame(std::move(payload), withCrc);
}

BusDevice::BusDevice(int kind, std::uint32_t serial, Unsolicited unsolicited, QObject* parent)
    : QObject(parent)
    , m_kind(kind)
    , m_serial(serial)
    , m_unsolicited(unsolicited) {}

ForeignDevice::ForeignDevice(const DeviceProfile& profile, QObject* parent)
    : BusDevice(profile.kind, profile.serialNumber, profile.unsolicited, parent)
    , m_dataBytes(profile.dataBytes) {}

std::optional<Bytes> ForeignDevice::respond(const Telegram& t) {
    if (kind() == kVarlixKind) return t.isZeroCommand() ? frameFor(1) : std::nullopt;
    if (!t.hasAddress() || t.kind() != kind() || !t.crcIsRight()) return std::nullopt;
    const bool search = t.serial() == 0 && t.command() == 1;
    const bool addressed = t.serial() == serialNumber() && t.command() >= 1 && t.command() <= 5;
    return search || addressed ? frameFor(t.command()) : std::nullopt;
}

std::optional<Bytes> ForeignDevice::unsolicitedFrame() {
    return frameFor(unsolicited().command);
}

std::optional<Bytes> ForeignDevice::frameFor(int command) const {
    // The first family carries no inner CRC and always fills 48 payload bytes.
    constexpr std::size_t kVarlixPayload = 48;
    if (kind() == kVarlixKind)
        return deviceFrame(kind(), command, serialNumber(), Bytes(kVarlixPayload - 6, 0), false);
    return deviceFrame(kind(), command, serialNumber(),
                       Bytes(static_cast<std::size_t>(m_dataBytes), 0), true);
}

} // namespace mq27sim

#include "moc_bus_device.cpp"
