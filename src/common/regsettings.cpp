#include "common/regsettings.h"

#include "common/services.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

const QString kPort = QStringLiteral("Port");
const QString kLanguage = QStringLiteral("Language");
const QString kTemperature = QStringLiteral("Temperature");
const QString kSmoke = QStringLiteral("Smoke");
const QString kVersion = QStringLiteral("Version");

bool isAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// The sign, digits and decimal fraction at the start of `text`, after leading blanks.
QString numberPrefix(const QString& text) {
    qsizetype i = 0;
    while (i < text.size() && (text[i] == u' ' || text[i] == u'\t'))
        ++i;
    const qsizetype start = i;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) ++i;
    while (i < text.size() && isAsciiDigit(text[i]))
        ++i;
    if (i < text.size() && text[i] == u'.') {
        ++i;
        while (i < text.size() && isAsciiDigit(text[i]))
            ++i;
    }
    return text.mid(start, i - start);
}

bool fitsSixteenBits(int value) {
    return value >= std::numeric_limits<std::int16_t>::min() &&
           value <= std::numeric_limits<std::int16_t>::max();
}

} // namespace

RegSettings::RegSettings(SettingsStore& store)
    : m_store(store) {}

int RegSettings::GetPort() const {
    return Number(kPort, -1);
}

void RegSettings::SetPort(int port) {
    SetNumber(kPort, port);
}

int RegSettings::GetLanguage() const {
    return Number(kLanguage, 0);
}

void RegSettings::SetLanguage(int language) {
    SetNumber(kLanguage, language);
}

int RegSettings::GetTemperature() const {
    return Number(kTemperature, 1);
}

void RegSettings::SetTemperature(int unit) {
    SetNumber(kTemperature, unit);
}

int RegSettings::GetSmoke() const {
    return Number(kSmoke, 1);
}

void RegSettings::SetSmoke(int unit) {
    SetNumber(kSmoke, unit);
}

QString RegSettings::GetVersion() const {
    return m_store.read(kVersion).value_or(QStringLiteral("0"));
}

int RegSettings::LeadingNumber(const QString& text) {
    const QString prefix = numberPrefix(text);
    bool ok = false;
    double value = prefix.toDouble(&ok);
    if (!ok) {
        // Only a number beyond any double fails with digits in it; it saturates below.
        if (std::none_of(prefix.begin(), prefix.end(), isAsciiDigit)) return 0;
        value = prefix.startsWith(u'-') ? -HUGE_VAL : HUGE_VAL;
    }
    // Halves go to the even neighbour, as the settings were always rounded.
    const double rounded = std::nearbyint(value);
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    if (rounded <= lowest) return std::numeric_limits<int>::min();
    if (rounded >= highest) return std::numeric_limits<int>::max();
    return static_cast<int>(rounded);
}

int RegSettings::Number(const QString& name, int fallback) const {
    const std::optional<QString> text = m_store.read(name);
    if (!text) return fallback;
    // The values are 16-bit numbers; one beyond that range cannot be read.
    const int value = LeadingNumber(*text);
    return fitsSixteenBits(value) ? value : fallback;
}

void RegSettings::SetNumber(const QString& name, int value) {
    m_store.write(name, QString::number(value));
}
