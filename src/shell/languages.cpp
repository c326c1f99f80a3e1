#include "shell/languages.h"

#include "shell/appcontext.h"

Languages::Languages(AppContext& app)
    : QObject()
    , m_app(app) {}

void Languages::SwitchToLanguage(int) {}

void Languages::SwitchToTemperature(int) {}

void Languages::SwitchToSmokeUnit(int) {}

void Languages::ShowLanguage() {}

QString Languages::versionText() {
    return {};
}

void Languages::languageSwitched(int) {}

void Languages::applyStartWindow() {}

void Languages::applyMessages() {}

void Languages::applyInterfaceAndLanguage() {}

void Languages::applyMainView() {}

void Languages::applyAbout() {}

void Languages::applyConnectAndSearch() {}

void Languages::onLanguageClicked(const QString&) {}
