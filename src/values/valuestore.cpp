#include "values/valuestore.h"

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

ValueStore::ValueStore()
    : m_telegrams{Bytes(telegramSize(1)), Bytes(telegramSize(2)), Bytes(telegramSize(3)),
                  Bytes(telegramSize(4)), Bytes(telegramSize(5))} {}

// ---- Telegram arrays -------------------------------------------------------------------

Bytes* ValueStore::DataArray(std::int16_t command) {
    return isReadCommand(command) ? &m_telegrams[command - 1] : nullptr;
}

std::int16_t ValueStore::SetDataArray(const Bytes& telegram, std::int16_t command) {
    if (!isReadCommand(command)) return -2;
    if (telegram.size() != telegramSize(command)) return -3;
    // Same size, so the copy reuses the array's storage and cannot fail.
    std::copy(telegram.begin(), telegram.end(), DataArray(command)->begin());
    return 0;
}

std::int16_t ValueStore::GetDataArray(Bytes& destination, std::int16_t command) {
    if (!isReadCommand(command)) return -2;
    try {
        destination = *DataArray(command);
    } catch (const std::bad_alloc&) {
        return -1;
    }
    return 0;
}

std::int16_t ValueStore::DeleteDataArrays() {
    for (Bytes& data : m_telegrams)
        std::fill(data.begin(), data.end(), std::uint8_t{0});
    return 0;
}

std::int16_t ValueStore::CheckDataArrays(double serial) {
    // The frame of each array tells where its serial number lies, whatever its command.
    const auto serialOf = [](const Bytes& data) {
        const int headerLength = ByteAt({&data, 0}, 1) == 255 ? 4 : 2;
        return U32({&data, headerLength}, 2);
    };
    const double reference = serial == 0 ? serialOf(m_telegrams[0]) : serial;
    if (serialOf(m_telegrams[0]) != reference) return 1;
    for (std::int16_t command = 2; command <= 5; ++command)
        if (serialOf(*DataArray(command)) != reference) return command;
    return 0;
}

double ValueStore::GetSerialNum() {
    return U32(In(m_telegrams[0], u"Seriennummer des MQ27D"_s), 4);
}

// ---- Description and location ------------------------------------------------------------

void ValueStore::Describe(const valuetext::Description& description, const QString& unit) {
    m_description = description;
    m_unit = unit;
}

void ValueStore::SetIndexError() {
    Describe(u"ERROR: Index out of range!"_s, u"#"_s);
}

ValueStore::Field ValueStore::In(const Bytes& data, const valuetext::Description& description,
                                 const QString& unit) {
    Describe(description, unit);
    return {&data, 0};
}

ValueStore::Field ValueStore::Detector(std::int16_t d, const valuetext::Description& description,
                                       const QString& unit) {
    if (d < 0 || d > 1) {
        SetIndexError();
        return {};
    }
    Describe(valuetext::detector(d, description), unit);
    return {&m_telegrams[1], 99 + 36 * d};
}

ValueStore::Field ValueStore::Sensor(std::int16_t n, const valuetext::Description& description,
                                     const QString& unit) {
    if (n < 0 || n > 4) {
        SetIndexError();
        return {};
    }
    Describe(valuetext::sensor(n, description), unit);
    return {&m_telegrams[2], 64 + 13 * n};
}

ValueStore::Field ValueStore::BusModule(std::int16_t m, const valuetext::Description& description,
                                        const QString& unit) {
    if (m < 0 || m > 9) {
        SetIndexError();
        return {};
    }
    Describe(valuetext::busModule(m, description), unit);
    return {&m_telegrams[4], 10 + 40 * m};
}

// ---- Byte reading --------------------------------------------------------------------------

std::uint8_t ValueStore::ByteAt(Field field, int offset) {
    if (field.data == nullptr) return 0;
    const long long index = static_cast<long long>(field.base) + offset;
    if (index < 0 || static_cast<unsigned long long>(index) >= field.data->size()) return 0;
    return (*field.data)[static_cast<std::size_t>(index)];
}

float ValueStore::U8(Field field, int offset) {
    return ByteAt(field, offset);
}

float ValueStore::S8(Field field, int offset) {
    return Byte2SByte(ByteAt(field, offset));
}

float ValueStore::U16(Field field, int offset) {
    return Byte2UInt(ByteAt(field, offset), ByteAt(field, offset + 1));
}

float ValueStore::S16(Field field, int offset) {
    return Byte2Int(ByteAt(field, offset), ByteAt(field, offset + 1));
}

double ValueStore::U32(Field field, int offset) {
    return Byte2ULong(ByteAt(field, offset), ByteAt(field, offset + 1), ByteAt(field, offset + 2),
                      ByteAt(field, offset + 3));
}

float ValueStore::F32(Field field, int offset) {
    return Byte2Float(ByteAt(field, offset), ByteAt(field, offset + 1), ByteAt(field, offset + 2),
                      ByteAt(field, offset + 3));
}

std::int16_t ValueStore::Flag(Field field, int offset, int bit) {
    return static_cast<std::int16_t>((ByteAt(field, offset) >> bit) & 1);
}

std::int16_t ValueStore::StateBits(Field field, int offset, int lowBit) {
    return static_cast<std::int16_t>((ByteAt(field, offset) >> lowBit) & 3);
}

QString ValueStore::SoftwareNumber(Field field, int offset) {
    if (field.data == nullptr) return u"#"_s;
    using valuetext::Number;
    const auto version = static_cast<int>(U16(field, offset));
    return Number(version, 4).view() % u'.' % Number(ByteAt(field, offset + 2), 2).view() % u'.' %
           Number(ByteAt(field, offset + 3), 3).view();
}

QString ValueStore::ParameterId(Field field, int offset) {
    if (field.data == nullptr) return u"#"_s;
    using valuetext::Number;
    const auto set = static_cast<int>(U16(field, offset));
    const auto variant = static_cast<int>(U16(field, offset + 2));
    return Number(set, 4).view() % u'.' % Number(variant, 3).view() % u'.' %
           Number(ByteAt(field, offset + 4), 3).view();
}

// ---- Write blocks --------------------------------------------------------------------------

std::int16_t ValueStore::Keep(Bytes& slot, Bytes block) {
    slot = std::move(block);
    return 0;
}

std::int16_t ValueStore::SetDeviceParameter(Bytes block) {
    return Keep(m_deviceParameter, std::move(block));
}
Bytes ValueStore::GetDeviceParameter() const {
    return m_deviceParameter;
}

std::int16_t ValueStore::SetAirFlowInitParameter(Bytes block) {
    return Keep(m_airFlowInitParameter, std::move(block));
}
Bytes ValueStore::GetAirFlowInitParameter() const {
    return m_airFlowInitParameter;
}

std::int16_t ValueStore::SetResetAlarmAndFault(Bytes block) {
    return Keep(m_resetAlarmAndFault, std::move(block));
}
Bytes ValueStore::GetResetAlarmAndFault() const {
    return m_resetAlarmAndFault;
}

std::int16_t ValueStore::SetResetMessages(Bytes block) {
    return Keep(m_resetMessages, std::move(block));
}
Bytes ValueStore::GetResetMessages() const {
    return m_resetMessages;
}

std::int16_t ValueStore::SetLocalizationParameter(Bytes block) {
    return Keep(m_localizationParameter, std::move(block));
}
Bytes ValueStore::GetLocalizationParameter() const {
    return m_localizationParameter;
}

std::int16_t ValueStore::SetLocalizationParameterLearnMode(Bytes block) {
    return Keep(m_localizationParameterLearnMode, std::move(block));
}
Bytes ValueStore::GetLocalizationParameterLearnMode() const {
    return m_localizationParameterLearnMode;
}

std::int16_t ValueStore::SetLocalizationAbortLearnMode(Bytes block) {
    return Keep(m_localizationAbortLearnMode, std::move(block));
}
Bytes ValueStore::GetLocalizationAbortLearnMode() const {
    return m_localizationAbortLearnMode;
}

std::int16_t ValueStore::SetExtinguisherParameter(Bytes block) {
    return Keep(m_extinguisherParameter, std::move(block));
}
Bytes ValueStore::GetExtinguisherParameter() const {
    return m_extinguisherParameter;
}

std::int16_t ValueStore::SetTemperatureParameter(Bytes block) {
    return Keep(m_temperatureParameter, std::move(block));
}
Bytes ValueStore::GetTemperatureParameter() const {
    return m_temperatureParameter;
}

std::int16_t ValueStore::SetRelayParameter(Bytes block) {
    return Keep(m_relayParameter, std::move(block));
}
Bytes ValueStore::GetRelayParameter() const {
    return m_relayParameter;
}

std::int16_t ValueStore::SetExtinguisherIdent(Bytes block) {
    return Keep(m_extinguisherIdent, std::move(block));
}
Bytes ValueStore::GetExtinguisherIdent() const {
    return m_extinguisherIdent;
}

std::int16_t ValueStore::SetIndicatorTestParameter(Bytes block) {
    return Keep(m_indicatorTestParameter, std::move(block));
}
Bytes ValueStore::GetIndicatorTestParameter() const {
    return m_indicatorTestParameter;
}
