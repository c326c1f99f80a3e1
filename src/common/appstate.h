#pragma once

#include "common/forms.h"
#include "common/regsettings.h"
#include "common/services.h"

#include <QLocale>
#include <QString>
#include <QStringList>

// Application-wide values, under the names the whole program knows them by.
struct AppGlobals {
    int gLanguage = 1;
    int gTemperatureUnit = 1;
    int gSmokeUnit = 1;
    QString gAppTitle;
    QString gVersionSuffix;
    bool gClosing = false;
    QStringList gCmdArgs;
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

// What the outside world lends the program. All pointers stay valid for the program's life.
struct Services {
    UserDialogs* dialogs = nullptr;
    ProcessLauncher* launcher = nullptr;
    SettingsStore* settings = nullptr;
    Clock* clock = nullptr;
    QString programDir; // folder of the running program: AutoSave, Kompa3, help files
    QString dataDir;    // the user's data folder, for AutoSave where programDir is read-only
};

// The state every part of the program shares: the window models, the application-wide
// values and message texts, the persisted settings and the outside world. It holds nothing
// that decides; the parts that do get it, and the parts below them, in their constructors.
class AppState {
public:
    explicit AppState(const Services& services);
    AppState(const AppState&) = delete;
    AppState& operator=(const AppState&) = delete;

    Forms forms;
    AppGlobals g;
    AppMessages messages;
    const Services services;
    RegSettings settings;
    // The number format of the windows: the system's; the headless commands use the C locale.
    QLocale locale = QLocale::system();

    // String `index` of the table in the current language.
    QString str(int index) const;
    // The time of the PC's clock, which stamps telegrams and names the automatic save.
    QDateTime now() const;
};
