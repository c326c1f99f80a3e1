#include "common/preferences.h"

Language languageFromNumber(int number) {
    return number >= 1 && number <= 4 ? static_cast<Language>(number) : Language::German;
}

TemperatureUnit temperatureUnitFromNumber(int number) {
    return number == 2 ? TemperatureUnit::Fahrenheit : TemperatureUnit::Celsius;
}

SmokeUnit smokeUnitFromNumber(int number) {
    return number == 2 ? SmokeUnit::PercentPerFoot : SmokeUnit::PercentPerMetre;
}

void Preferences::setLanguage(Language language) {
    if (language == m_language) return;
    m_language = language;
    Q_EMIT languageChanged(language);
}

void Preferences::setTemperatureUnit(TemperatureUnit unit) {
    if (unit == m_temperatureUnit) return;
    m_temperatureUnit = unit;
    Q_EMIT unitsChanged();
}

void Preferences::setSmokeUnit(SmokeUnit unit) {
    if (unit == m_smokeUnit) return;
    m_smokeUnit = unit;
    Q_EMIT unitsChanged();
}

#include "moc_preferences.cpp"
