#pragma once

#include <optional>

#include <QDateTime>
#include <QString>
#include <QStringList>

// The outside world as the logic meets it. The program puts the real thing behind each;
// tests put fakes.

// Message boxes and file dialogs.
class UserDialogs {
public:
    enum class Icon { None, Information, Question, Warning, Critical };
    enum class Buttons { Ok, YesNo, AbortRetryIgnore };
    enum class Answer { Ok, Yes, No, Abort, Retry, Ignore };

    virtual ~UserDialogs() = default;
    virtual Answer messageBox(const QString& text, const QString& title, Buttons buttons, Icon icon,
                              Answer defaultAnswer) = 0;
    void information(const QString& text, const QString& title) {
        messageBox(text, title, Buttons::Ok, Icon::Information, Answer::Ok);
    }
    // `filter` in the tool's form "description|pattern|description|pattern|". Nothing when
    // the user cancels.
    virtual std::optional<QString> saveFileName(const QString& initialName,
                                                const QString& filter) = 0;
    virtual std::optional<QString> openFileName(const QString& filter,
                                                const QString& defaultSuffix) = 0;
};

// Other programs: the suite program, the PDF viewer, and the desktop's own programs for a
// folder or a file.
class ProcessLauncher {
public:
    virtual ~ProcessLauncher() = default;
    // Starts without a shell and without waiting; false if it could not be started.
    virtual bool startDetached(const QString& program, const QStringList& arguments) = 0;
    // Full path of a program found on the PATH, or empty.
    virtual QString findExecutable(const QString& name) const = 0;
    // Shows a folder in the desktop's file manager; false if nothing could show it.
    virtual bool openFolder(const QString& path) {
        (void)path;
        return false;
    }
    // Opens a file in the program the desktop has for its type; false if nothing could.
    virtual bool openDocument(const QString& path) {
        (void)path;
        return false;
    }
};

// The five persisted values, by name.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual std::optional<QString> read(const QString& name) const = 0;
    virtual void write(const QString& name, const QString& value) = 0;
};

// The PC's clock, which stamps every received telegram.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};

// What the outside world lends the program. All pointers stay valid for the program's life;
// the program puts its own clock in place of a missing one.
struct Services {
    UserDialogs* dialogs = nullptr;
    ProcessLauncher* launcher = nullptr;
    SettingsStore* settings = nullptr;
    Clock* clock = nullptr;
    QString programDir; // folder of the running program: AutoSave, Kompa3, help files
    QString dataDir;    // the user's data folder, for AutoSave where programDir is read-only
};
