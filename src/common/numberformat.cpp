#include "common/numberformat.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

namespace numberformat {
namespace {

// Digits enough to hold a double exactly: its binary fraction has at most 1074 places.
constexpr int kExactPlaces = 1100;

QString nonFinite(double value, const QLocale& locale) {
    return locale.toString(value);
}

QString localised(std::string text, const QLocale& locale) {
    QString out = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
    if (locale.language() == QLocale::C) return out;
    return out.replace(u'.', locale.decimalPoint()).replace(u'-', locale.negativeSign());
}

// The exact decimal text of `value` with at least `places` digits after the point.
std::string exactDigits(double value, int places) {
    int exponent = 0;
    std::frexp(value, &exponent);
    const int needed = std::clamp(53 - exponent, places, kExactPlaces);
    std::string text(static_cast<std::size_t>(needed) + 330, '\0');
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value,
                                      std::chars_format::fixed, needed);
    text.resize(static_cast<std::size_t>(result.ptr - text.data()));
    return text;
}

// Rounds an unsigned digit text "123.4567" to `decimals` places, half away from zero.
std::string roundDigits(const std::string& digits, int decimals) {
    const std::size_t point = digits.find('.');
    std::string whole = digits.substr(0, point);
    std::string fraction = point == std::string::npos ? std::string() : digits.substr(point + 1);
    fraction.resize(std::max(fraction.size(), static_cast<std::size_t>(decimals) + 1), '0');
    const bool up = fraction[static_cast<std::size_t>(decimals)] >= '5';
    std::string kept = whole + fraction.substr(0, static_cast<std::size_t>(decimals));
    if (up) {
        std::size_t i = kept.size();
        while (i > 0 && kept[i - 1] == '9')
            kept[--i] = '0';
        if (i == 0)
            kept.insert(kept.begin(), '1');
        else
            ++kept[i - 1];
    }
    const std::size_t wholeDigits = kept.size() - static_cast<std::size_t>(decimals);
    std::string out = kept.substr(0, wholeDigits);
    if (decimals > 0) out += '.' + kept.substr(wholeDigits);
    return out;
}

template <class Number>
std::string shortest(Number value) {
    // The largest double has 309 whole digits.
    char buffer[400];
    // Whole numbers in full and exact ("100000", not "1e+05"; the largest single as its 39
    // digits, as the main view's fixed formats show it), so that no whole number gets a mark.
    const bool whole = std::trunc(value) == value;
    const auto result =
        whole ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 0)
              : std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

template <class Number>
QString plainIn(Number value, const QLocale& locale) {
    if (!std::isfinite(value)) return nonFinite(value, locale);
    return localised(shortest(value), locale);
}

template <class Number>
QString plainInC(Number value) {
    if (std::isnan(value)) return QStringLiteral("nan");
    if (std::isinf(value)) return value < 0 ? QStringLiteral("-inf") : QStringLiteral("inf");
    const std::string text = shortest(value);
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

QString fixed(double value, int decimals, const QLocale& locale) {
    if (!std::isfinite(value)) return nonFinite(value, locale);
    decimals = std::clamp(decimals, 0, 15);
    const std::string rounded = roundDigits(exactDigits(std::fabs(value), decimals + 1), decimals);
    // A value that rounds to zero shows without a sign.
    const bool zero = rounded.find_first_not_of("0.") == std::string::npos;
    return localised((value < 0 && !zero ? "-" : "") + rounded, locale);
}

QString plain(double value, const QLocale& locale) {
    return plainIn(value, locale);
}

QString plain(float value, const QLocale& locale) {
    return plainIn(value, locale);
}

QString plainC(double value) {
    return plainInC(value);
}

QString plainC(float value) {
    return plainInC(value);
}

std::optional<std::int32_t> toInt32(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= INT32_MIN && rounded <= INT32_MAX)) return std::nullopt;
    return static_cast<std::int32_t>(rounded);
}

std::optional<std::int16_t> toInt16(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= INT16_MIN && rounded <= INT16_MAX)) return std::nullopt;
    return static_cast<std::int16_t>(rounded);
}

// A plain decimal number: blanks around, a sign, digits with at most one point, and at
// least one digit. No exponent, no letters, no grouping, so that what the field shows is
// the number that goes out.
std::optional<double> plainDecimal(const QString& text) {
    const QString trimmed = text.trimmed();
    std::string ascii;
    ascii.reserve(static_cast<std::size_t>(trimmed.size()));
    bool negative = false;
    int digits = 0;
    int points = 0;
    for (qsizetype i = 0; i < trimmed.size(); ++i) {
        const QChar c = trimmed[i];
        if (i == 0 && (c == u'+' || c == u'-')) {
            negative = c == u'-';
        } else if (c >= u'0' && c <= u'9') {
            ++digits;
            ascii += static_cast<char>(c.unicode());
        } else if (c == u'.' && points == 0) {
            ++points;
            ascii += '.';
        } else {
            return std::nullopt;
        }
    }
    if (digits == 0) return std::nullopt;
    double value = 0;
    const auto result =
        std::from_chars(ascii.data(), ascii.data() + ascii.size(), value, std::chars_format::fixed);
    if (result.ec != std::errc() || result.ptr != ascii.data() + ascii.size()) return std::nullopt;
    if (!std::isfinite(value)) return std::nullopt;
    return negative ? -value : value;
}

} // namespace numberformat
