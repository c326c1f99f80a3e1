#pragma once

#include "common/services.h"

#include <memory>

#include <QHash>

class QSettings;

// The five settings in QSettings under Halvorn/Kompa3: an INI file in the user's
// configuration folder on Linux, the registry on Windows.
class QSettingsStore : public SettingsStore {
public:
    QSettingsStore();
    // Takes over `settings`, for instance an INI file at a chosen path.
    explicit QSettingsStore(std::unique_ptr<QSettings> settings);
    ~QSettingsStore() override;

    std::optional<QString> read(const QString& name) const override;
    // Written through at once, so that a crash does not lose the change.
    void write(const QString& name, const QString& value) override;

private:
    std::unique_ptr<QSettings> m_settings;
};

// Settings that live as long as the program: for a run that must not touch the user's own.
class MemorySettings : public SettingsStore {
public:
    QHash<QString, QString> values;

    std::optional<QString> read(const QString& name) const override;
    void write(const QString& name, const QString& value) override { values[name] = value; }
};

// Message boxes that nobody sees: each answers with its default button; file dialogs are
// cancelled.
class UnattendedDialogs : public UserDialogs {
public:
    Answer messageBox(const QString&, const QString&, Buttons, Icon,
                      Answer defaultAnswer) override {
        return defaultAnswer;
    }
    std::optional<QString> saveFileName(const QString&, const QString&) override { return {}; }
    std::optional<QString> openFileName(const QString&, const QString&) override { return {}; }
};

// Starts nothing: for a run that only looks.
class NoLauncher : public ProcessLauncher {
public:
    bool startDetached(const QString&, const QStringList&) override { return false; }
    QString findExecutable(const QString&) const override { return {}; }
};

class SystemClock : public Clock {
public:
    QDateTime now() const override;
};

class QtProcessLauncher : public ProcessLauncher {
public:
    bool startDetached(const QString& program, const QStringList& arguments) override;
    QString findExecutable(const QString& name) const override;
};
