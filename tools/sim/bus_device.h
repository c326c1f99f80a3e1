#pragma once

#include "common/bytes.h"
#include "sim/device_profile.h"

#include <cstdint>
#include <optional>

#include <QJsonObject>
#include <QObject>

namespace mq27sim {

// A frame heard on the line, taken apart as the devices see it.
struct Telegram {
    Bytes frame;
    int headerLength = 2;
    Bytes payload; // from the device kind up to and including the inner CRC

    static Telegram fromFrame(const Bytes& frame);

    // The zero command 02 00 00 02 has no payload at all.
    bool isZeroCommand() const { return payload.empty(); }
    // Kind, command, serial number and CRC are there.
    bool hasAddress() const { return payload.size() >= 8; }
    int kind() const;
    int command() const;
    std::uint32_t serial() const;
    bool crcIsRight() const;
    // The payload without its CRC: what the tool's block routines filled.
    Bytes block() const;
};

// A frame of `kind` with command, serial number, data and, where asked, the inner CRC.
std::optional<Bytes> deviceFrame(int kind, int command, std::uint32_t serial, const Bytes& data,
                                 bool withCrc);

// One device on the line.
class BusDevice : public QObject {
    Q_OBJECT

public:
    BusDevice(int kind, std::uint32_t serial, Unsolicited unsolicited, QObject* parent);

    int kind() const { return m_kind; }
    std::uint32_t serialNumber() const { return m_serial; }
    const Unsolicited& unsolicited() const { return m_unsolicited; }
    void setUnsolicited(Unsolicited u) { m_unsolicited = u; }

    // The frame the device answers to a telegram heard on the line, if any.
    virtual std::optional<Bytes> respond(const Telegram& t) = 0;
    // The telegram it sends by itself.
    virtual std::optional<Bytes> unsolicitedFrame() = 0;

signals:
    // A notable change of state, for the log: air-flow init, learn mode, refused writes.
    void notable(const QString& event, const QJsonObject& details);

private:
    int m_kind;
    std::uint32_t m_serial;
    Unsolicited m_unsolicited;
};

// A device of the sibling families that the tool hands over: kind 1 answers the zero
// command with its frame of exactly 52 bytes, kind 7 answers its own search telegram.
class ForeignDevice : public BusDevice {
    Q_OBJECT

public:
    ForeignDevice(const DeviceProfile& profile, QObject* parent);

    std::optional<Bytes> respond(const Telegram& t) override;
    std::optional<Bytes> unsolicitedFrame() override;

private:
    std::optional<Bytes> frameFor(int command) const;

    int m_dataBytes;
};

} // namespace mq27sim
