#pragma once

#include "common/bytes.h"

#include <optional>

#include <QDateTime>
#include <QString>

class ValueStore;

// What the data decoder reads out of an accepted telegram of the own device kind, and how
// it takes the telegram into the value store. The live link and the file loader share it.
namespace engine {

struct TelegramHead {
    int headerLength = 2;
    int command = 0;
    double serialNumber = 0;
    QString serialText; // plain decimal, the form the serial number label shows
};

TelegramHead ReadTelegramHead(const Bytes& stamped);

// The recording time in the stamp; nothing when the stamp holds no valid date and time.
std::optional<QDateTime> TelegramTime(const Bytes& stamped);

enum class StoreResult {
    Stored,
    CommandOutOfRange,
    NewDeviceWithoutCommand1, // a device is taken on only with its telegram 1
    WrongSize,
};

struct StoreOutcome {
    StoreResult result = StoreResult::Stored;
    bool newDevice = false; // the store was cleared for a new serial number
};

// Stores the telegram under its command. A serial number other than `lastSerialNo` is a
// new device: only its telegram 1 is taken, after the store has been cleared and
// `lastSerialNo` has taken the new number.
StoreOutcome StoreTelegram(ValueStore& values, QString& lastSerialNo, const Bytes& stamped);

} // namespace engine
