#pragma once

#include "common/bytes.h"

#include <optional>

#include <QDateTime>
#include <QString>

// Frames, stamped telegrams and the acceptance test shared by the serial link and the
// file loader.
namespace telegram {

constexpr int kOwnDeviceKind = 10;
constexpr int kStampBytes = 7;

// The framing half of MakeSendString: CRC (when asked), header and sum around `data`.
// Empty when the frame cannot be built (a sum that does not fit two bytes).
std::optional<Bytes> MakeSendFrame(Bytes data, bool createCRC);

// The zero command of the third family, written out by hand: STX, LEN 0, SUM 2.
Bytes ZeroCommand();

// The stamping of a received frame: the sum bytes give way to century, year, month, day,
// hour, minute and second of `when`, followed by a new sum. Empty when the stamped
// telegram cannot carry a sum.
std::optional<Bytes> StampTelegram(const Bytes& frame, const QDateTime& when);

struct Accepted {
    int deviceKind = 0;
    int headerLength = 2; // 2 short form, 4 extended form
};

// Sum, kind table, length rule and inner CRC of a stamped telegram.
std::optional<Accepted> AcceptStampedTelegram(const Bytes& stamped);

// Header length of a frame or stamped telegram: 4 when byte 1 marks the extended form.
int HeaderLength(const Bytes& telegram);

// Device name of a recognised kind ("SHELLIX" for 10), empty for an unknown kind.
QString DeviceKindName(int deviceKind);

} // namespace telegram
