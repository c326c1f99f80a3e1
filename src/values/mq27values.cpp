#include "values/mq27values.h"

#include "values/conversions.h"
#include "values/valuetext.h"

#include <algorithm>
#include <new>

using namespace Qt::StringLiterals;

namespace {

// Stored bytes of the telegrams of commands 1 to 5, frame and stamp included.
constexpr std::size_t kTelegramSize[] = {19, 202, 211, 54, 421};

bool isReadCommand(std::int16_t command) {
    return command >= 1 && command <= 5;
}

std::size_t telegramSize(std::int16_t command) {
    return kTelegramSize[static_cast<std::size_t>(command - 1)];
}

} // namespace

clsMQ27Values::clsMQ27Values()
    : maData1(telegramSize(1))
    , maData2(telegramSize(2))
    , maData3(telegramSize(3))
    , maData4(telegramSize(4))
    , maData5(telegramSize(5)) {}

// ---- Telegram arrays -------------------------------------------------------------------

Bytes* clsMQ27Values::dataArray(std::int16_t command) {
    switch (command) {
    case 1:
        return &maData1;
    case 2:
        return &maData2;
    case 3:
        return &maData3;
    case 4:
        return &maData4;
    case 5:
        return &maData5;
    default:
        return nullptr;
    }
}

std::int16_t clsMQ27Values::SetDataArray(const Bytes& telegram, std::int16_t command) {
    if (!isReadCommand(command)) return -2;
    if (telegram.size() != telegramSize(command)) return -3;
    // Same size, so the copy reuses the array's storage and cannot fail.
    std::copy(telegram.begin(), telegram.end(), dataArray(command)->begin());
    return 0;
}

std::int16_t clsMQ27Values::GetDataArray(Bytes& destination, std::int16_t command) {
    if (!isReadCommand(command)) return -2;
    try {
        destination = *dataArray(command);
    } catch (const std::bad_alloc&) {
        return -1;
    }
    return 0;
}

std::int16_t clsMQ27Values::DeleteDataArrays() {
    for (Bytes* data : {&maData1, &maData2, &maData3, &maData4, &maData5})
        std::fill(data->begin(), data->end(), std::uint8_t{0});
    return 0;
}

std::int16_t clsMQ27Values::CheckDataArrays(double serial) {
    // The frame of each array tells where its serial number lies, whatever its command.
    const auto serialOf = [](const Bytes& data) {
        const int headerLength = byteAt({&data, 0}, 1) == 255 ? 4 : 2;
        return u32({&data, headerLength}, 2);
    };
    const double reference = serial == 0 ? serialOf(maData1) : serial;
    if (serialOf(maData1) != reference) return 1;
    for (std::int16_t command = 2; command <= 5; ++command)
        if (serialOf(*dataArray(command)) != reference) return command;
    return 0;
}

double clsMQ27Values::GetSerialNum() {
    return u32(in(maData1, u"Seriennummer des MQ27D"_s), 4);
}

// ---- Description and location ------------------------------------------------------------

void clsMQ27Values::describe(const QString& description, const QString& unit) {
    ValueDescription = description;
    ValueUnit = unit;
}

void clsMQ27Values::SetIndexError() {
    describe(u"ERROR: Index out of range!"_s, u"#"_s);
}

clsMQ27Values::Field clsMQ27Values::in(const Bytes& data, const QString& description,
                                       const QString& unit) {
    describe(description, unit);
    return {&data, 0};
}

clsMQ27Values::Field clsMQ27Values::detector(std::int16_t d, const QString& description,
                                             const QString& unit) {
    if (d < 0 || d > 1) {
        SetIndexError();
        return {};
    }
    describe(valuetext::detector(d, description), unit);
    return {&maData2, 99 + 36 * d};
}

clsMQ27Values::Field clsMQ27Values::sensor(std::int16_t n, const QString& description,
                                           const QString& unit) {
    if (n < 0 || n > 4) {
        SetIndexError();
        return {};
    }
    describe(valuetext::sensor(n, description), unit);
    return {&maData3, 64 + 13 * n};
}

clsMQ27Values::Field clsMQ27Values::busModule(std::int16_t m, const QString& description,
                                              const QString& unit) {
    if (m < 0 || m > 9) {
        SetIndexError();
        return {};
    }
    describe(valuetext::busModule(m, description), unit);
    return {&maData5, 10 + 40 * m};
}

// ---- Byte reading --------------------------------------------------------------------------

std::uint8_t clsMQ27Values::byteAt(Field field, int offset) {
    if (field.data == nullptr) return 0;
    const long long index = static_cast<long long>(field.base) + offset;
    if (index < 0 || static_cast<unsigned long long>(index) >= field.data->size()) return 0;
    return (*field.data)[static_cast<std::size_t>(index)];
}

float clsMQ27Values::u8(Field field, int offset) {
    return byteAt(field, offset);
}

float clsMQ27Values::s8(Field field, int offset) {
    return Byte2SByte(byteAt(field, offset));
}

float clsMQ27Values::u16(Field field, int offset) {
    return Byte2UInt(byteAt(field, offset), byteAt(field, offset + 1));
}

float clsMQ27Values::s16(Field field, int offset) {
    return Byte2Int(byteAt(field, offset), byteAt(field, offset + 1));
}

double clsMQ27Values::u32(Field field, int offset) {
    return Byte2ULong(byteAt(field, offset), byteAt(field, offset + 1), byteAt(field, offset + 2),
                      byteAt(field, offset + 3));
}

float clsMQ27Values::f32(Field field, int offset) {
    return Byte2Float(byteAt(field, offset), byteAt(field, offset + 1), byteAt(field, offset + 2),
                      byteAt(field, offset + 3));
}

std::int16_t clsMQ27Values::flag(Field field, int offset, int bit) {
    return static_cast<std::int16_t>((byteAt(field, offset) >> bit) & 1);
}

std::int16_t clsMQ27Values::state(Field field, int offset, int lowBit) {
    return static_cast<std::int16_t>((byteAt(field, offset) >> lowBit) & 3);
}

QString clsMQ27Values::softwareNumber(Field field, int offset) {
    if (field.data == nullptr) return u"#"_s;
    using valuetext::Number;
    const auto version = static_cast<int>(u16(field, offset));
    return Number(version, 4).view() % u'.' % Number(byteAt(field, offset + 2), 2).view() % u'.' %
           Number(byteAt(field, offset + 3), 3).view();
}

QString clsMQ27Values::parameterId(Field field, int offset) {
    if (field.data == nullptr) return u"#"_s;
    using valuetext::Number;
    const auto set = static_cast<int>(u16(field, offset));
    const auto variant = static_cast<int>(u16(field, offset + 2));
    return Number(set, 4).view() % u'.' % Number(variant, 3).view() % u'.' %
           Number(byteAt(field, offset + 4), 3).view();
}

// ---- Write blocks --------------------------------------------------------------------------

std::int16_t clsMQ27Values::keep(Bytes& slot, Bytes block) {
    slot = std::move(block);
    return 0;
}

std::int16_t clsMQ27Values::SetDeviceParameter(Bytes block) {
    return keep(maDeviceParameter, std::move(block));
}
Bytes clsMQ27Values::GetDeviceParameter() const {
    return maDeviceParameter;
}

std::int16_t clsMQ27Values::SetAirFlowInitParameter(Bytes block) {
    return keep(maAirFlowInitParameter, std::move(block));
}
Bytes clsMQ27Values::GetAirFlowInitParameter() const {
    return maAirFlowInitParameter;
}

std::int16_t clsMQ27Values::SetResetAlarmAndFault(Bytes block) {
    return keep(maResetAlarmAndFault, std::move(block));
}
Bytes clsMQ27Values::GetResetAlarmAndFault() const {
    return maResetAlarmAndFault;
}

std::int16_t clsMQ27Values::SetResetMessages(Bytes block) {
    return keep(maResetMessages, std::move(block));
}
Bytes clsMQ27Values::GetResetMessages() const {
    return maResetMessages;
}

std::int16_t clsMQ27Values::SetLocalizationParameter(Bytes block) {
    return keep(maLocalizationParameter, std::move(block));
}
Bytes clsMQ27Values::GetLocalizationParameter() const {
    return maLocalizationParameter;
}

std::int16_t clsMQ27Values::SetLocalizationParameterLearnMode(Bytes block) {
    return keep(maLocalizationParameterLearnMode, std::move(block));
}
Bytes clsMQ27Values::GetLocalizationParameterLearnMode() const {
    return maLocalizationParameterLearnMode;
}

std::int16_t clsMQ27Values::SetLocalizationAbortLearnMode(Bytes block) {
    return keep(maLocalizationAbortLearnMode, std::move(block));
}
Bytes clsMQ27Values::GetLocalizationAbortLearnMode() const {
    return maLocalizationAbortLearnMode;
}

std::int16_t clsMQ27Values::SetExtinguisherParameter(Bytes block) {
    return keep(maExtinguisherParameter, std::move(block));
}
Bytes clsMQ27Values::GetExtinguisherParameter() const {
    return maExtinguisherParameter;
}

std::int16_t clsMQ27Values::SetTemperatureParameter(Bytes block) {
    return keep(maTemperatureParameter, std::move(block));
}
Bytes clsMQ27Values::GetTemperatureParameter() const {
    return maTemperatureParameter;
}

std::int16_t clsMQ27Values::SetRelayParameter(Bytes block) {
    return keep(maRelayParameter, std::move(block));
}
Bytes clsMQ27Values::GetRelayParameter() const {
    return maRelayParameter;
}

std::int16_t clsMQ27Values::SetExtinguisherIdent(Bytes block) {
    return keep(maExtinguisherIdent, std::move(block));
}
Bytes clsMQ27Values::GetExtinguisherIdent() const {
    return maExtinguisherIdent;
}

std::int16_t clsMQ27Values::SetIndicatorTestParameter(Bytes block) {
    return keep(maIndicatorTestParameter, std::move(block));
}
Bytes clsMQ27Values::GetIndicatorTestParameter() const {
    return maIndicatorTestParameter;
}
