#pragma once

#include "common/bytes.h"

#include <cstdint>

// The two checks of a telegram: the 16-bit additive sum over the whole frame and the
// CRC-16 (polynomial 0x1021, initial value 0, no reflection) over the payload, plus the
// frame finder that picks the newest acceptable frame out of a receive buffer.
namespace checksum {

// One table step over `value`; the CRC is held as two bytes. Returns 0.
std::int16_t CalcCRCByte(std::uint8_t value, std::uint8_t& crcHigh, std::uint8_t& crcLow);

// CRC over data[first .. last - 2] compared with data[last - 1] (high) and data[last] (low).
// 0 right, 1 high byte differs, 2 low byte differs, 3 both, -1 indices outside the array.
std::int16_t CheckCRC(const Bytes& data, int first, int last);

// Stores the CRC of data[first .. last - 2] at last - 1 and last. 0, or -1 (array unchanged).
std::int16_t AddCRC(Bytes& data, int first, int last);

// True if the array has at least 4 bytes and its last two equal the sum of all before them.
bool CheckSumOfBytes(const Bytes& data);

// Overwrites the last two bytes with the sum of all before them. Arrays of fewer than 3
// bytes are left alone. A sum that does not fit two bytes leaves the array unchanged and
// returns false: such a telegram can be neither sent nor kept.
bool AddSumOfBytes(Bytes& data);

// Sum of data[0 .. count - 1].
std::int32_t SumOfBytes(const Bytes& data, std::size_t count);

// Index of the STX of the newest acceptable frame, with first and last set to its bounds;
// -1 for fewer than 4 bytes, -2 when there is no acceptable frame.
std::int32_t FindTelegram(const Bytes& buffer, std::int32_t& first, std::int32_t& last);

// Whether a frame of `totalLength` bytes is acceptable for `deviceKind`.
bool IsAcceptedKindAndLength(int deviceKind, std::int64_t totalLength);

} // namespace checksum
