// The units of the data objects, as the logger writes them into its files.
#pragma once

#include <QString>

namespace unitnames {
inline const QString kVolts = QStringLiteral("V");
inline const QString kMillivolts = QStringLiteral("mV");
inline const QString kOhm = QStringLiteral("Ohm");
inline const QString kSeconds = QStringLiteral("s");
inline const QString kHundredths = QStringLiteral("s/100");
inline const QString kPercent = QStringLiteral("%");
inline const QString kCelsius = QStringLiteral("°C");
inline const QString kMetersPerSecond = QStringLiteral("m/s");
inline const QString kSensitivity = QStringLiteral("1/1000 * %/m");
} // namespace unitnames
