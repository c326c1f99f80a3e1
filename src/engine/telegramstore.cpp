#include "engine/telegramstore.h"

#include "link/telegram.h"
#include "values/conversions.h"
#include "values/valuestore.h"

namespace engine {

TelegramHead ReadTelegramHead(const Bytes& t) {
    TelegramHead head;
    head.headerLength = telegram::HeaderLength(t);
    const std::size_t h = static_cast<std::size_t>(head.headerLength);
    if (t.size() < h + 6) return head;
    head.command = t[h + 1];
    head.serialNumber = Byte2ULong(t[h + 2], t[h + 3], t[h + 4], t[h + 5]);
    head.serialText = QString::number(head.serialNumber, 'f', 0);
    return head;
}

std::optional<QDateTime> TelegramTime(const Bytes& t) {
    if (t.size() < 9) return std::nullopt;
    const std::size_t u = t.size() - 1;
    // Each byte goes into the date text as two digits; a larger one spoils the text.
    for (std::size_t i = u - 8; i <= u - 2; ++i)
        if (t[i] > 99) return std::nullopt;
    const int year = t[u - 8] * 100 + t[u - 7];
    const QDate date(year, t[u - 6], t[u - 5]);
    const QTime time(t[u - 4], t[u - 3], t[u - 2]);
    if (year < 100 || !date.isValid() || !time.isValid()) return std::nullopt;
    return QDateTime(date, time);
}

StoreOutcome StoreTelegram(ValueStore& values, QString& lastSerialNo, const Bytes& t) {
    const TelegramHead head = ReadTelegramHead(t);
    if (head.command < 1 || head.command > 5) return {StoreResult::CommandOutOfRange, false};
    StoreOutcome outcome;
    if (head.serialText != lastSerialNo) {
        if (head.command != 1) return {StoreResult::NewDeviceWithoutCommand1, false};
        values.DeleteDataArrays();
        lastSerialNo = head.serialText;
        outcome.newDevice = true;
    }
    if (values.SetDataArray(t, static_cast<std::int16_t>(head.command)) != 0)
        outcome.result = StoreResult::WrongSize;
    return outcome;
}

} // namespace engine
