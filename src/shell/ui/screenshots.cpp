#include "shell/ui/screenshots.h"

#include "common/mainview_elements.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"

#include <QApplication>
#include <QDir>
#include <QTabWidget>
#include <QWidget>

namespace {

// Long enough for every telegram of a read-out to arrive and the LEDs to have blinked.
constexpr int kSettleMs = 4000;
constexpr const char* kPageNames[] = {"status", "measurement",  "messages",  "settings",
                                      "relays", "localisation", "modules-a", "modules-b"};

} // namespace

ScreenshotRun::ScreenshotRun(ToolRuntime& runtime, const QString& folder, const QString& prefix)
    : QObject()
    , m_runtime(runtime)
    , m_folder(folder)
    , m_prefix(prefix) {
    m_settle.setSingleShot(true);
    m_settle.setInterval(kSettleMs);
    connect(&m_settle, &QTimer::timeout, this, &ScreenshotRun::capture);
    connect(&runtime.app().forms().frmDisplay(), &Form::windowChanged, this,
            [this](Form::WindowChange change) {
                if (change == Form::WindowChange::Shown && !m_settle.isActive()) m_settle.start();
            });
}

std::unique_ptr<ScreenshotRun> ScreenshotRun::fromEnvironment(ToolRuntime& runtime) {
    const QString folder = qEnvironmentVariable("MQ27D_SCREENSHOTS");
    if (folder.isEmpty()) return nullptr;
    const QString prefix = qEnvironmentVariable("MQ27D_SCREENSHOT_PREFIX", QStringLiteral("tool"));
    return std::make_unique<ScreenshotRun>(runtime, folder, prefix);
}

void ScreenshotRun::capture() {
    QWidget* window = m_runtime.window(formname::frmDisplay);
    auto* tabs = window ? window->findChild<QTabWidget*>(frmDisplay::tabDisplay.whole()) : nullptr;
    if (!tabs) return;
    QDir().mkpath(m_folder);
    for (int page = 0; page < tabs->count(); ++page) {
        if (!tabs->isTabVisible(page)) continue;
        tabs->setCurrentIndex(page);
        QApplication::processEvents();
        window->grab().save(QDir(m_folder).filePath(
            m_prefix + u'-' + QLatin1String(kPageNames[page]) + QStringLiteral(".png")));
    }
    tabs->setCurrentIndex(0);
    QApplication::exit(0);
}
