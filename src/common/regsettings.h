#pragma once

#include <QString>

class SettingsStore;

// The five persisted values. Numbers are kept as text; a missing or unreadable value reads
// as its default: Language 0, Port -1, Temperature 1, Smoke 1, Version "0".
class RegSettings {
public:
    explicit RegSettings(SettingsStore& store);

    int GetPort() const;
    void SetPort(int port);
    int GetLanguage() const;
    void SetLanguage(int language);
    int GetTemperature() const;
    void SetTemperature(int unit);
    int GetSmoke() const;
    void SetSmoke(int unit);
    QString GetVersion() const;

    // The leading number of a text, rounded to a whole Number ("12abc" -> 12, "x" -> 0).
    static int LeadingNumber(const QString& text);

private:
    int Number(const QString& name, int fallback) const;
    void SetNumber(const QString& name, int value);

    SettingsStore& m_store;
};
