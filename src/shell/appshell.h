#pragma once

#include <functional>
#include <vector>

#include <QObject>
#include <QString>
#include <QStringList>

class AllForms;
class DeviceFiles;
class DeviceValues;
class Languages;
class Lifetime;
class MainView;
class PortWindow;
class Preferences;
class RegSettings;
class SerialLink;
class Texts;
struct Services;

// Start-up and shutdown of the tool, its command line, the menus of the start window and
// the main view that belong to the whole tool, the About box and the notification-area icon.
class AppShell : public QObject {
    Q_OBJECT

public:
    AppShell(AllForms& forms, Preferences& preferences, Texts& texts, RegSettings& settings,
             const Services& services, Lifetime& life, SerialLink& link, DeviceFiles& files,
             Languages& languages, PortWindow& portWindow, MainView& mainView,
             DeviceValues& values);

    // The load of frmMQ27D: timers, settings, language, port, window, tray icon, command
    // line.
    void Startup(const QString& rawCommandLineArgs);

    // The answer is true when shutdown goes ahead. With a silenced buzzer, or a setting
    // still waiting for the device to confirm it, the user is asked first.
    bool CloseApplication();
    // A window besides the main view whose write may still wait for the device: `waiting`
    // tells whether it does, for the close question.
    void AddWriteWaitingCheck(std::function<bool()> waiting);
    // The same shutdown without the question: a termination signal from the system.
    void ShutDown();

    // mnuInterface: language, frmInterface non-modal, ShowCOMPort.
    void ShowInterface();
    void ShowLoadFile();
    void ShowLanguage();
    void ShowInfo();

    // Splits at blanks and tabs; quotation marks have no meaning. At most `maxArgs`.
    static QStringList GetCommandLineArgs(const QString& commandLine, int maxArgs);
    // ",  V3.01.05" for the setting Version 30105; empty for fewer than 5 characters.
    static QString VersionSuffix(const QString& version);

    void TrayIconAdd();
    void TrayIconUpdate();
    void TrayIconRemove();
    bool TrayIconAdded() const { return m_trayIconAdded; }
    // A left click or double click on the tray icon: visible windows to the front.
    void TrayIconActivated();

    // "Automatic saves: <folder>" in the File menu and the About window.
    void ShowAutoSaveFolder();

Q_SIGNALS:
    // Shutdown has unloaded the start window; the program ends.
    void QuitRequested();
    // The command line asks for the data logger.
    void LoggerRequested();

private:
    void OnMenuClicked(const QString& element);
    void OnAboutClicked(const QString& element);
    void HandleCommandLine();
    void UnloadAll();

    AllForms& m_forms;
    Preferences& m_preferences;
    Texts& m_texts;
    RegSettings& m_settings;
    const Services& m_services;
    Lifetime& m_life;
    SerialLink& m_link;
    DeviceFiles& m_files;
    Languages& m_languages;
    PortWindow& m_portWindow;
    MainView& m_mainView;
    std::vector<std::function<bool()>> m_writeWaitingChecks;
    DeviceValues& m_values;
    bool m_trayIconAdded = false;
    QStringList m_cmdArgs;
};
