#include "shell/appshell.h"

#include "shell/appcontext.h"

AppShell::AppShell(AppContext& app)
    : QObject()
    , m_app(app) {}

void AppShell::Startup(const QString&) {}

bool AppShell::CloseApplication() {
    return false;
}

void AppShell::ShowInterface() {}

void AppShell::ShowLoadFile() {}

void AppShell::ShowLanguage() {}

void AppShell::ShowInfo() {}

QStringList AppShell::GetCommandLineArgs(const QString&, int) {
    return {};
}

QString AppShell::versionSuffix(const QString&) {
    return {};
}

void AppShell::TrayIconAdd() {}

void AppShell::TrayIconUpdate() {}

void AppShell::TrayIconRemove() {}

void AppShell::trayIconActivated() {}

void AppShell::onStartWindowClicked(const QString&) {}

void AppShell::onAboutClicked(const QString&) {}

void AppShell::handleCommandLine() {}

void AppShell::unloadAll() {}
