// Bytes from the line as one burst: the frame finder picks the newest frame, the stamp
// adds the time, the acceptance checks sum, length, kind and inner CRC.
#include "link/checksum.h"
#include "link/telegram.h"

#include <QDateTime>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes burst(data, data + size);
    std::int32_t first = 0;
    std::int32_t last = 0;
    if (checksum::FindTelegram(burst, first, last) < 0) return 0;
    if (first < 0 || last < first || static_cast<std::size_t>(last) >= burst.size())
        __builtin_trap();
    const Bytes frame(burst.begin() + first, burst.begin() + last + 1);
    static const QDateTime when(QDate(2026, 11, 25), QTime(8, 0, 0));
    const std::optional<Bytes> stamped = telegram::StampTelegram(frame, when);
    if (!stamped) return 0;
    (void)telegram::AcceptStampedTelegram(*stamped);
    (void)telegram::HeaderLength(*stamped);
    return 0;
}
