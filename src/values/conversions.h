#pragma once

#include <cstdint>

#include <QString>

// The only place where bytes of a telegram become numbers and numbers become bytes.
// Every multi-byte argument or output is most significant byte first: the first one is the
// byte at the lower offset. Decoded numbers come back in floating-point types; the getters
// of the value store rely on that.
//
// The output conversions report 0 done, -2 value out of range (outputs untouched).

// high * 256 + low as two's complement, -32768 to 32767.
float Byte2Int(std::uint8_t high, std::uint8_t low);

// high * 256 + low, 0 to 65535.
float Byte2UInt(std::uint8_t high, std::uint8_t low);

// 0 to 4294967295, exact in a double.
double Byte2ULong(std::uint8_t b1, std::uint8_t b2, std::uint8_t b3, std::uint8_t b4);

// The byte as two's complement, -128 to 127.
float Byte2SByte(std::uint8_t value);

// IEEE 754 binary32 assembled by arithmetic: the leading 1 is implied for every non-zero
// pattern, so there are no denormals (0x80000000 is -2^-127). An exponent field of 255 gives
// the infinity of that sign, or a quiet NaN when the fraction is not zero.
float Byte2Float(std::uint8_t b1, std::uint8_t b2, std::uint8_t b3, std::uint8_t b4);

// Four and eight upper-case hexadecimal digits.
QString IntHexStr(std::uint8_t high, std::uint8_t low);
QString LongHexStr(std::uint8_t b1, std::uint8_t b2, std::uint8_t b3, std::uint8_t b4);

// "0" and "1", bit 7 first.
QString Byte2Bit8(std::uint8_t value);

// The bits of the first byte, the separator, the bits of the second byte.
QString Byte2Bit16(std::uint8_t first, std::uint8_t second, const QString& separator);

// 0 to 65535 into two bytes.
std::int16_t UInt2Byte(std::int32_t value, std::uint8_t& high, std::uint8_t& low);

// A decimal text of 0 to 4294967295 into four bytes. Accepted: optional blanks around, an
// optional sign, digits with an optional decimal point and fraction. A fraction is cut off
// (12.7 gives 12), as the byte-wise integer division of the value does; a value beyond the
// range by any fraction is refused. Exponents, thousands separators and hex are refused.
std::int16_t ULong2Byte(const QString& value, std::uint8_t& b1, std::uint8_t& b2, std::uint8_t& b3,
                        std::uint8_t& b4);

// -128 to 127 into a two's complement byte.
std::int16_t SByte2Byte(std::int16_t value, std::uint8_t& result);

// The bit image of the float; always 0.
std::int16_t Single2Byte(float value, std::uint8_t& b1, std::uint8_t& b2, std::uint8_t& b3,
                         std::uint8_t& b4);
