#pragma once

#include "shell/forms.h"
#include "shell/services.h"

#include <memory>

#include <QObject>
#include <QString>
#include <QStringList>

class clsMQ27Values;
class SerialPortDevice;
class SerialLink;
class Recognition;
class PollEngine;
class TelegramDecoder;
class DeviceSearch;
class DeviceFiles;
class MainView;
class RegSettings;
class Languages;
class HelpLink;
class AppShell;

// Application-wide values, under the names the whole program knows them by.
struct AppGlobals {
    int gLanguage = 1;
    int gTemperatureUnit = 1;
    int gSmokeUnit = 1;
    QString gAppTitle;
    QString gVersionSuffix;
    bool gClosing = false;
    QStringList gCmdArgs;
    bool gDeviceSearch = false;
};

// The message texts that the language switch builds.
struct AppMessages {
    QString saveQuestion;     // string 104
    QString saveConfirmation; // string 105
    QString loadFilter;       // strings 100 and 101
    QString normalModeWarning;
    QString notPossible;
    QString standardValuesRemark;
    QString notPossibleWithReason;
    QString fileMissing;   // string 419
    QString viewerMissing; // string 420
    QString buzzerWarning; // string 421
    QString closeQuestion; // string 422
};

// What the outside world lends the program. All pointers stay valid for the context's life.
struct Services {
    SerialPortDevice* port = nullptr;
    UserDialogs* dialogs = nullptr;
    ProcessLauncher* launcher = nullptr;
    SettingsStore* settings = nullptr;
    Clock* clock = nullptr;
    QString programDir; // folder of the running program: AutoSave, Kompa3, help files
    QString dataDir;    // the user's data folder, for AutoSave where programDir is read-only
};

// The program's single instance of everything: globals, window models, the value store and
// the parts of the logic, which reach one another through it.
class AppContext : public QObject {
    Q_OBJECT

public:
    explicit AppContext(Services services, QObject* parent = nullptr);
    ~AppContext() override;

    AppGlobals g;
    AppMessages messages;

    const Services& services() const { return m_services; }
    Forms& forms() { return m_forms; }

    // The value store exists from the first telegram of the own device kind on.
    clsMQ27Values* values() { return m_values.get(); }
    clsMQ27Values& createValues();

    SerialLink& link() { return *m_link; }
    Recognition& recognition() { return *m_recognition; }
    PollEngine& engine() { return *m_engine; }
    TelegramDecoder& decoder() { return *m_decoder; }
    DeviceSearch& search() { return *m_search; }
    DeviceFiles& files() { return *m_files; }
    MainView& mainView() { return *m_mainView; }
    RegSettings& settings() { return *m_settings; }
    Languages& languages() { return *m_languages; }
    HelpLink& help() { return *m_help; }
    AppShell& shell() { return *m_shell; }

    // String `index` of the table in the current language.
    QString str(int index) const;

Q_SIGNALS:
    // Shutdown has unloaded the start window; the program ends.
    void quitRequested();

private:
    Services m_services;
    Forms m_forms;
    std::unique_ptr<clsMQ27Values> m_values;
    std::unique_ptr<RegSettings> m_settings;
    std::unique_ptr<Languages> m_languages;
    std::unique_ptr<SerialLink> m_link;
    std::unique_ptr<Recognition> m_recognition;
    std::unique_ptr<PollEngine> m_engine;
    std::unique_ptr<TelegramDecoder> m_decoder;
    std::unique_ptr<DeviceSearch> m_search;
    std::unique_ptr<DeviceFiles> m_files;
    std::unique_ptr<MainView> m_mainView;
    std::unique_ptr<HelpLink> m_help;
    std::unique_ptr<AppShell> m_shell;
};
