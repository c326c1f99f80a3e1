#pragma once

#include <memory>

#include <QObject>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>

class QTabWidget;
class QWidget;
class ToolRuntime;

// Pictures of the main view for the documentation: once the main view has shown a device
// for a few seconds, every page that the device has is saved as
// <folder>/<prefix>-<page>.png, the settings pages while they are edited, then every working
// window that it offers, and the tool ends.
// Started by the environment variables MQ27D_SCREENSHOTS (the folder) and MQ27D_SCREENSHOT_PREFIX.
class ScreenshotRun : public QObject {
    Q_OBJECT

public:
    ScreenshotRun(ToolRuntime& runtime, const QString& folder, const QString& prefix);

    // From the environment; null when no pictures are asked for.
    static std::unique_ptr<ScreenshotRun> fromEnvironment(ToolRuntime& runtime);

private:
    void capture();
    void captureEditing(QWidget* window, QTabWidget* tabs);
    void captureWindow(std::size_t index);
    void startRecording();

    ToolRuntime& m_runtime;
    QString m_folder;
    QString m_prefix;
    QTimer m_settle;
    QTemporaryDir m_recording;
};
