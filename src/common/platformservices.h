#pragma once

#include "common/services.h"

#include <memory>

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

class SystemClock : public Clock {
public:
    QDateTime now() const override;
};

class QtProcessLauncher : public ProcessLauncher {
public:
    bool startDetached(const QString& program, const QStringList& arguments) override;
    QString findExecutable(const QString& name) const override;
};
