#pragma once

#include "support/fakes.h"

#include <memory>

#include <QString>

class Program;
class Form;
class ToolRuntime;

// The whole tool in the test's own process, with every window: on a real serial port when a
// path is given (it is port 1), else on the fake port. Dialogs answer from a script; settings
// are in memory with port 1 chosen; the program and data folders lie in a temporary folder,
// so the automatic save and a stand-in suite program stay there.
class LiveTool : public FakeWorld {
public:
    explicit LiveTool(const QString& portPath = {});
    ~LiveTool();
    LiveTool(const LiveTool&) = delete;
    LiveTool& operator=(const LiveTool&) = delete;

    void start(const QString& commandLine = {});
    Program& app();
    ToolRuntime& runtime() { return *m_runtime; }
    Form& display();
    bool hasFinished() const { return m_finished; }
    // Takes the tool down at once, as the end of its process would.
    void end();

    // The main view shows the device with this serial number, read out completely.
    bool waitForDevice(const QString& serialNo, int timeoutMs = 15000);

private:
    std::unique_ptr<ToolRuntime> m_runtime;
    bool m_finished = false;
};
