#include "link/telegram.h"

#include "link/checksum.h"

#include <QDate>
#include <QTime>

namespace telegram {

std::optional<Bytes> MakeSendFrame(Bytes data, bool createCRC) {
    if (createCRC) {
        data.resize(data.size() + 2);
        if (checksum::AddCRC(data, 0, static_cast<int>(data.size()) - 1) != 0) return std::nullopt;
    }
    const std::size_t count = data.size();
    if (count > 0xFFFF) return std::nullopt;
    Bytes frame;
    frame.reserve(count + 6);
    frame.push_back(2);
    if (count < 255) {
        frame.push_back(static_cast<std::uint8_t>(count));
    } else {
        frame.push_back(255);
        frame.push_back(static_cast<std::uint8_t>(count / 256));
        frame.push_back(static_cast<std::uint8_t>(count % 256));
    }
    frame.insert(frame.end(), data.begin(), data.end());
    frame.push_back(0);
    frame.push_back(0);
    if (!checksum::AddSumOfBytes(frame)) return std::nullopt;
    return frame;
}

Bytes ZeroCommand() {
    return Bytes{0x02, 0x00, 0x00, 0x02};
}

std::optional<Bytes> StampTelegram(const Bytes& frame, const QDateTime& when) {
    const QDate date = when.date();
    const QTime time = when.time();
    if (frame.size() < 2 || !date.isValid() || !time.isValid() || date.year() < 0 ||
        date.year() > 25599)
        return std::nullopt;
    Bytes stamped(frame.begin(), frame.end() - 2);
    stamped.push_back(static_cast<std::uint8_t>(date.year() / 100));
    stamped.push_back(static_cast<std::uint8_t>(date.year() % 100));
    stamped.push_back(static_cast<std::uint8_t>(date.month()));
    stamped.push_back(static_cast<std::uint8_t>(date.day()));
    stamped.push_back(static_cast<std::uint8_t>(time.hour()));
    stamped.push_back(static_cast<std::uint8_t>(time.minute()));
    stamped.push_back(static_cast<std::uint8_t>(time.second()));
    stamped.push_back(0);
    stamped.push_back(0);
    if (!checksum::AddSumOfBytes(stamped)) return std::nullopt;
    return stamped;
}

int HeaderLength(const Bytes& telegram) {
    return telegram.size() > 1 && telegram[1] == 255 ? 4 : 2;
}

std::optional<Accepted> AcceptStampedTelegram(const Bytes& t) {
    if (!checksum::CheckSumOfBytes(t)) return std::nullopt;
    const int header = HeaderLength(t);
    if (t.size() <= static_cast<std::size_t>(header)) return std::nullopt;
    const long length = header == 4 ? t[2] * 256L + t[3] : t[1];
    const int kind = t[static_cast<std::size_t>(header)];
    if (DeviceKindName(kind).isEmpty()) return std::nullopt;
    // The second family announces two payload bytes too many; its LEN byte is all we test.
    const bool lengthRight =
        kind == 2 ? length == 173 : length == static_cast<long>(t.size()) - header - 9;
    if (!lengthRight) return std::nullopt;
    if (kind == 7 || kind == kOwnDeviceKind) {
        const int last = static_cast<int>(t.size()) - 1 - 9;
        if (checksum::CheckCRC(t, header, last) != 0) return std::nullopt;
    }
    return Accepted{kind, header};
}

QString DeviceKindName(int deviceKind) {
    switch (deviceKind) {
    case 1:
        return QStringLiteral("VARLIX");
    case 2:
        return QStringLiteral("DURLIX");
    case 5:
        return QStringLiteral("VARLIX NET");
    case 6:
        return QStringLiteral("DURLIX/a");
    case 7:
        return QStringLiteral("MINLIX");
    case 8:
        return QStringLiteral("DURLIX LSN");
    case 9:
        return QStringLiteral("VARLIX LSN");
    case 10:
        return QStringLiteral("SHELLIX");
    case 12:
        return QStringLiteral("VARLIX/a");
    default:
        return {};
    }
}

} // namespace telegram
