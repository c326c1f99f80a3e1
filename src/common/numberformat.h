#pragma once

#include <cstdint>
#include <optional>

#include <QLocale>
#include <QString>

// Numbers as the windows and the record show them. The formats "#0", "#0.0", "#0.000" and
// the like mean at least one digit before the mark and exactly `decimals` after it, rounded
// half away from zero on the value as the double holds it (2.5 gives 3, -2.5 gives -3, and
// 2.675, held as 2.67499..., gives 2.67 with two decimals). A "plain number" is the
// shortest text that reads back to the same value of its own type. The decimal mark is the
// locale's; NaN and the infinities, which a corrupt read-out can hold, show as the locale's
// texts for them and never reach an integer conversion.
namespace numberformat {

QString fixed(double value, int decimals, const QLocale& locale);
QString plain(double value, const QLocale& locale);
QString plain(float value, const QLocale& locale);

// The same in the C locale: "nan", "inf", "-inf" for the values that are no numbers.
QString plainC(double value);
QString plainC(float value);

// A value turned into a whole number: the nearest, ties to even, as the platform's integer
// conversion did. Nothing when it is no number or does not fit the type.
std::optional<std::int32_t> toInt32(double value);
std::optional<std::int16_t> toInt16(double value);

// A plain decimal number as a field holds it: blanks around, a sign, digits with at most
// one point, and at least one digit. No exponent, no letters, no grouping, so that what the
// field shows is the number that goes out. Nothing for any other text.
std::optional<double> plainDecimal(const QString& text);

} // namespace numberformat
