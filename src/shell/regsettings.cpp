#include "shell/regsettings.h"

#include "shell/appcontext.h"

RegSettings::RegSettings(SettingsStore& store)
    : m_store(store) {}

int RegSettings::GetPort() const {
    return 0;
}

void RegSettings::SetPort(int) {}

int RegSettings::GetLanguage() const {
    return 0;
}

void RegSettings::SetLanguage(int) {}

int RegSettings::GetTemperature() const {
    return 0;
}

void RegSettings::SetTemperature(int) {}

int RegSettings::GetSmoke() const {
    return 0;
}

void RegSettings::SetSmoke(int) {}

QString RegSettings::GetVersion() const {
    return {};
}

int RegSettings::leadingNumber(const QString&) {
    return 0;
}

int RegSettings::number(const QString&, int) const {
    return 0;
}

void RegSettings::setNumber(const QString&, int) {}
