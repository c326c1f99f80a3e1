#pragma once

#include "common/preferences.h"

#include <memory>
#include <optional>
#include <vector>

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>

class Program;
class ProcessLauncher;
class SerialPortDevice;
class SettingsStore;
class TrayIcon;
class UserDialogs;
class QTranslator;
class QWidget;

// The running tool: the real services, the program context, every window bound to its
// model, and the notification-area icon.
class ToolRuntime : public QObject {
    Q_OBJECT

public:
    // Stand-ins for tests that run the whole tool in their own process. Whatever is left
    // empty is the real thing.
    struct Options {
        UserDialogs* dialogs = nullptr;
        SettingsStore* settings = nullptr;
        SerialPortDevice* port = nullptr;
        ProcessLauncher* launcher = nullptr;
        std::optional<QString> programDir;
        std::optional<QString> dataDir;
        // Ends the application's event loop when the tool shuts down.
        bool exitEventLoop = true;
    };

    ToolRuntime();
    explicit ToolRuntime(Options options);
    ~ToolRuntime() override;

    Program& app() { return *m_app; }
    // The window of a form, null for a form without one.
    QWidget* window(const QString& formName) const { return m_windows.value(formName); }
    // The forms that have a window, in the order they were made.
    QStringList windowNames() const;
    TrayIcon& trayIcon() { return *m_trayIcon; }

    // Runs the start-up with the raw command-line text.
    void start(const QString& rawArguments);
    // The system asks the tool to end (SIGTERM and the like): the shutdown without question.
    void terminate();

Q_SIGNALS:
    // The tool has shut down.
    void finished();

private:
    struct OwnServices;

    void createWindows();
    void onQuitRequested();
    // Nothing: Qt's own texts as they come, in English.
    void switchQtTexts(std::optional<Language> language);

    Options m_options;
    std::unique_ptr<OwnServices> m_own;
    std::unique_ptr<Program> m_app;
    std::vector<std::unique_ptr<QWidget>> m_windowStore;
    QHash<QString, QWidget*> m_windows;
    std::unique_ptr<TrayIcon> m_trayIcon;
    // Qt's own texts in the tool's language; none for English, Qt's own language.
    std::unique_ptr<QTranslator> m_qtTexts;
    std::optional<Language> m_qtLanguage;
};
