#pragma once

#include "support/fakes.h"

#include <memory>

#include <QString>
#include <QTemporaryDir>

class Program;
class Form;
class ToolRuntime;

// The whole tool in the test's own process, with every window, on a real serial port: the
// given path is port 1. Dialogs answer from a script; the program and data folders lie in
// a temporary folder, so the automatic save and a stand-in suite program stay there.
class LiveTool {
public:
    // Settings in memory, port 1 chosen.
    explicit LiveTool(const QString& portPath);
    ~LiveTool();
    LiveTool(const LiveTool&) = delete;
    LiveTool& operator=(const LiveTool&) = delete;

    void start(const QString& commandLine = {});
    Program& app();
    ToolRuntime& runtime() { return *m_runtime; }
    Form& display();
    QString programDir() const;
    bool hasFinished() const { return m_finished; }

    // The main view shows the device with this serial number, read out completely.
    bool waitForDevice(const QString& serialNo, int timeoutMs = 15000);

    ScriptedDialogs dialogs;

private:
    MemorySettings m_settings;
    QTemporaryDir m_folder;
    std::unique_ptr<ToolRuntime> m_runtime;
    bool m_finished = false;
};
