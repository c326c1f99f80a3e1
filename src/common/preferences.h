#pragma once

#include <QLocale>
#include <QObject>

// The user's choices that every window follows: the language of the texts, the units of
// temperature and smoke, and the number format of the windows. A change is signalled, so
// that whatever shows a text or a value can follow it.

enum class Language { German = 1, English = 2, French = 3, Dutch = 4 };
enum class TemperatureUnit { Celsius = 1, Fahrenheit = 2 };
enum class SmokeUnit { PercentPerMetre = 1, PercentPerFoot = 2 };

// The number a language has in the string table, the help file names and the settings.
constexpr int languageNumber(Language language) {
    return static_cast<int>(language);
}
// 1 to 4 as they are; every other number is German.
Language languageFromNumber(int number);
// 2 is Fahrenheit (or per foot); every other number the metric unit.
TemperatureUnit temperatureUnitFromNumber(int number);
SmokeUnit smokeUnitFromNumber(int number);

class Preferences : public QObject {
    Q_OBJECT

public:
    Language language() const { return m_language; }
    void setLanguage(Language language);
    TemperatureUnit temperatureUnit() const { return m_temperatureUnit; }
    void setTemperatureUnit(TemperatureUnit unit);
    SmokeUnit smokeUnit() const { return m_smokeUnit; }
    void setSmokeUnit(SmokeUnit unit);
    bool fahrenheit() const { return m_temperatureUnit == TemperatureUnit::Fahrenheit; }
    bool perFoot() const { return m_smokeUnit == SmokeUnit::PercentPerFoot; }

    // The windows use the system's number format; the headless commands the C locale.
    const QLocale& locale() const { return m_locale; }
    void setLocale(const QLocale& locale) { m_locale = locale; }

Q_SIGNALS:
    void languageChanged(Language language);
    void unitsChanged();

private:
    Language m_language = Language::German;
    TemperatureUnit m_temperatureUnit = TemperatureUnit::Celsius;
    SmokeUnit m_smokeUnit = SmokeUnit::PercentPerMetre;
    QLocale m_locale = QLocale::system();
};
