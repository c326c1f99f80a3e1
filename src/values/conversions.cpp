#include "values/conversions.h"

#include <bit>
#include <cmath>
#include <limits>
#include <optional>

namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

void appendHex(QString& text, std::uint8_t value) {
    text.append(QLatin1Char(kHexDigits[value >> 4]));
    text.append(QLatin1Char(kHexDigits[value & 0x0F]));
}

void appendBits(QString& text, std::uint8_t value) {
    for (int bit = 7; bit >= 0; --bit)
        text.append((value >> bit) & 1 ? u'1' : u'0');
}

bool isAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool allDigits(QStringView text) {
    for (QChar c : text)
        if (!isAsciiDigit(c)) return false;
    return true;
}

bool anyNonZeroDigit(QStringView digits) {
    for (QChar c : digits)
        if (c != u'0') return true;
    return false;
}

// The whole part of a plain decimal text, already checked against 0 to 4294967295.
std::optional<std::uint32_t> wholePartInRange(QStringView text) {
    bool negative = false;
    if (!text.isEmpty() && (text.front() == u'+' || text.front() == u'-')) {
        negative = text.front() == u'-';
        text = text.mid(1);
    }
    const qsizetype point = text.indexOf(u'.');
    const QStringView whole = point < 0 ? text : text.left(point);
    const QStringView fraction = point < 0 ? QStringView() : text.mid(point + 1);
    if (whole.isEmpty() && fraction.isEmpty()) return std::nullopt;
    if (!allDigits(whole) || !allDigits(fraction)) return std::nullopt;

    qsizetype firstSignificant = 0;
    while (firstSignificant < whole.size() && whole[firstSignificant] == u'0')
        ++firstSignificant;
    const QStringView significant = whole.mid(firstSignificant);
    if (significant.size() > 10) return std::nullopt;

    std::uint64_t value = 0;
    for (QChar c : significant)
        value = value * 10 + static_cast<std::uint64_t>(c.unicode() - u'0');
    const bool hasFraction = anyNonZeroDigit(fraction);
    constexpr std::uint64_t kMax = 4294967295u;
    if (negative && (value != 0 || hasFraction)) return std::nullopt;
    if (value > kMax || (value == kMax && hasFraction)) return std::nullopt;
    return static_cast<std::uint32_t>(value);
}

void splitBigEndian(std::uint32_t value, std::uint8_t& b1, std::uint8_t& b2, std::uint8_t& b3,
                    std::uint8_t& b4) {
    b1 = static_cast<std::uint8_t>(value >> 24);
    b2 = static_cast<std::uint8_t>(value >> 16);
    b3 = static_cast<std::uint8_t>(value >> 8);
    b4 = static_cast<std::uint8_t>(value);
}

} // namespace

float Byte2Int(std::uint8_t high, std::uint8_t low) {
    const int value = high * 256 + low;
    return static_cast<float>(high > 127 ? value - 65536 : value);
}

float Byte2UInt(std::uint8_t high, std::uint8_t low) {
    return static_cast<float>(high * 256 + low);
}

double Byte2ULong(std::uint8_t b1, std::uint8_t b2, std::uint8_t b3, std::uint8_t b4) {
    return static_cast<double>(std::uint32_t{b1} << 24 | std::uint32_t{b2} << 16 |
                               std::uint32_t{b3} << 8 | std::uint32_t{b4});
}

float Byte2SByte(std::uint8_t value) {
    return static_cast<float>(value > 127 ? value - 256 : value);
}

float Byte2Float(std::uint8_t b1, std::uint8_t b2, std::uint8_t b3, std::uint8_t b4) {
    if (b1 == 0 && b2 == 0 && b3 == 0 && b4 == 0) return 0.0f;
    const std::uint32_t magnitudeBits = std::uint32_t{b1 & 0x7Fu} << 24 | std::uint32_t{b2} << 16 |
                                        std::uint32_t{b3} << 8 | std::uint32_t{b4};
    const int exponentField = static_cast<int>(magnitudeBits >> 23);
    const std::uint32_t fractionBits = magnitudeBits & 0x7FFFFFu;
    const bool negative = b1 > 127;
    if (exponentField == 255) {
        if (fractionBits != 0) return std::numeric_limits<float>::quiet_NaN();
        return negative ? -std::numeric_limits<float>::infinity()
                        : std::numeric_limits<float>::infinity();
    }
    // At most (2 - 2^-23) * 2^127, which is the largest float: the narrowing is exact or
    // rounds into the denormal range, never overflows.
    const double magnitude =
        std::ldexp(1.0 + std::ldexp(static_cast<double>(fractionBits), -23), exponentField - 127);
    return static_cast<float>(negative ? -magnitude : magnitude);
}

QString IntHexStr(std::uint8_t high, std::uint8_t low) {
    QString text;
    text.reserve(4);
    appendHex(text, high);
    appendHex(text, low);
    return text;
}

QString LongHexStr(std::uint8_t b1, std::uint8_t b2, std::uint8_t b3, std::uint8_t b4) {
    QString text;
    text.reserve(8);
    for (std::uint8_t b : {b1, b2, b3, b4})
        appendHex(text, b);
    return text;
}

QString Byte2Bit8(std::uint8_t value) {
    QString text;
    text.reserve(8);
    appendBits(text, value);
    return text;
}

QString Byte2Bit16(std::uint8_t first, std::uint8_t second, const QString& separator) {
    QString text;
    text.reserve(16 + separator.size());
    appendBits(text, first);
    text.append(separator);
    appendBits(text, second);
    return text;
}

std::int16_t UInt2Byte(std::int32_t value, std::uint8_t& high, std::uint8_t& low) {
    if (value < 0 || value > 65535) return -2;
    low = static_cast<std::uint8_t>(value % 256);
    high = static_cast<std::uint8_t>(value / 256);
    return 0;
}

std::int16_t ULong2Byte(const QString& value, std::uint8_t& b1, std::uint8_t& b2, std::uint8_t& b3,
                        std::uint8_t& b4) {
    const QString trimmed = value.trimmed();
    const std::optional<std::uint32_t> number = wholePartInRange(trimmed);
    if (!number) return -2;
    splitBigEndian(*number, b1, b2, b3, b4);
    return 0;
}

std::int16_t SByte2Byte(std::int16_t value, std::uint8_t& result) {
    if (value < -128 || value > 127) return -2;
    result = static_cast<std::uint8_t>(value < 0 ? value + 256 : value);
    return 0;
}

std::int16_t Single2Byte(float value, std::uint8_t& b1, std::uint8_t& b2, std::uint8_t& b3,
                         std::uint8_t& b4) {
    splitBigEndian(std::bit_cast<std::uint32_t>(value), b1, b2, b3, b4);
    return 0;
}
