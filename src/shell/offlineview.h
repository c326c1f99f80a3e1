#pragma once

#include "common/preferences.h"
#include "shell/unattendedservices.h"

#include <memory>
#include <optional>

#include <QLocale>
#include <QString>
#include <QTemporaryDir>

class Program;

// A saved read-out in the main view, without a window and without a line: the tool's own
// road from acceptance on, the main view's refresh, and nothing of the user's touched
// (settings in memory, no dialogs, no other program started).
class OfflineView {
public:
    struct Options {
        Language language = Language::English;
        SmokeUnit smokeUnit = SmokeUnit::PercentPerMetre;
        TemperatureUnit temperatureUnit = TemperatureUnit::Celsius;
        QLocale locale = QLocale::c();
    };

    explicit OfflineView(const Options& options);
    ~OfflineView();

    // The read-out of `path`, shown; the reason in one line when it cannot be.
    std::optional<QString> load(const QString& path);

    Program& program() { return *m_program; }

private:
    UnattendedServices m_outside;
    std::unique_ptr<Program> m_program;
};
