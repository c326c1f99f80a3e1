#include "link/checksum.h"

#include <array>

namespace checksum {
namespace {

constexpr std::array<std::uint16_t, 256> makeCrcTable() {
    std::array<std::uint16_t, 256> table{};
    for (unsigned i = 0; i < 256; ++i) {
        unsigned crc = i << 8;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 0x8000u) ? ((crc << 1) ^ 0x1021u) : (crc << 1);
        table[i] = static_cast<std::uint16_t>(crc & 0xFFFFu);
    }
    return table;
}

// Built by the compiler, so it exists before the first CRC step and never changes.
constexpr std::array<std::uint16_t, 256> kCrcTable = makeCrcTable();
static_assert(kCrcTable[1] == 0x1021 && kCrcTable[255] == 0x1EF0);

bool validRange(const Bytes& data, int first, int last) {
    return first >= 0 && last >= 0 && static_cast<std::size_t>(last) < data.size();
}

std::uint16_t crcOf(const Bytes& data, int first, int last) {
    std::uint8_t high = 0;
    std::uint8_t low = 0;
    for (int i = first; i <= last - 2; ++i)
        CalcCRCByte(data[static_cast<std::size_t>(i)], high, low);
    return static_cast<std::uint16_t>(high << 8 | low);
}

} // namespace

std::int16_t CalcCRCByte(std::uint8_t value, std::uint8_t& crcHigh, std::uint8_t& crcLow) {
    const std::uint16_t entry = kCrcTable[crcHigh ^ value];
    crcHigh = static_cast<std::uint8_t>(crcLow ^ (entry >> 8));
    crcLow = static_cast<std::uint8_t>(entry & 0xFF);
    return 0;
}

std::int16_t CheckCRC(const Bytes& data, int first, int last) {
    if (!validRange(data, first, last) || last < 1) return -1;
    const std::uint16_t crc = crcOf(data, first, last);
    std::int16_t result = 0;
    if (data[static_cast<std::size_t>(last - 1)] != (crc >> 8)) result |= 1;
    if (data[static_cast<std::size_t>(last)] != (crc & 0xFF)) result |= 2;
    return result;
}

std::int16_t AddCRC(Bytes& data, int first, int last) {
    if (!validRange(data, first, last) || last < 1) return -1;
    const std::uint16_t crc = crcOf(data, first, last);
    data[static_cast<std::size_t>(last - 1)] = static_cast<std::uint8_t>(crc >> 8);
    data[static_cast<std::size_t>(last)] = static_cast<std::uint8_t>(crc & 0xFF);
    return 0;
}

std::int32_t SumOfBytes(const Bytes& data, std::size_t count) {
    std::int32_t sum = 0;
    for (std::size_t i = 0; i < count && i < data.size(); ++i)
        sum += data[i];
    return sum;
}

bool CheckSumOfBytes(const Bytes& data) {
    if (data.size() < 4) return false;
    const std::size_t n = data.size();
    const std::int32_t stored = data[n - 2] * 256 + data[n - 1];
    return SumOfBytes(data, n - 2) == stored;
}

bool AddSumOfBytes(Bytes& data) {
    if (data.size() < 3) return true;
    const std::size_t n = data.size();
    const std::int32_t sum = SumOfBytes(data, n - 2);
    if (sum > 0xFFFF) return false;
    data[n - 2] = static_cast<std::uint8_t>(sum / 256);
    data[n - 1] = static_cast<std::uint8_t>(sum % 256);
    return true;
}

bool IsAcceptedKindAndLength(int deviceKind, std::int64_t totalLength) {
    switch (deviceKind) {
    case 1:
        return totalLength == 52;
    case 2:
        return totalLength == 175;
    case 5:
    case 6:
        return totalLength == 275;
    case 8:
    case 9:
        return totalLength == 297;
    case 12:
        return totalLength == 279;
    case 7:
    case 10:
        return totalLength >= 12;
    default:
        return false;
    }
}

std::int32_t FindTelegram(const Bytes& buffer, std::int32_t& first, std::int32_t& last) {
    const std::int64_t count = static_cast<std::int64_t>(buffer.size());
    if (count < 4) return -1;
    // Searching backwards lets the newest complete frame of a burst win.
    for (std::int64_t pos = count - 4; pos >= 0; --pos) {
        const auto at = [&](std::int64_t i) { return buffer[static_cast<std::size_t>(i)]; };
        if (at(pos) != 2) continue;
        std::int64_t header = 2;
        std::int64_t length = at(pos + 1);
        if (length == 255) {
            header = 4;
            length = at(pos + 2) * 256 + at(pos + 3);
        } else if (count == 175 && length == 173 && buffer[2] == 2) {
            // A firmware of the second family announces 173 payload bytes in a frame of
            // 171; only a frame that fills the whole buffer is concerned.
            length = 171;
        }
        const std::int64_t total = length + header + 2;
        if (pos + total - 1 > count - 1) continue;
        const std::int64_t end = pos + total;
        std::int32_t sum = 0;
        for (std::int64_t i = pos; i < end - 2; ++i)
            sum += at(i);
        if (sum != at(end - 2) * 256 + at(end - 1)) continue;
        if (!IsAcceptedKindAndLength(at(pos + header), total)) continue;
        first = static_cast<std::int32_t>(pos);
        last = static_cast<std::int32_t>(end - 1);
        return first;
    }
    return -2;
}

} // namespace checksum
