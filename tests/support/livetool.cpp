#include "support/livetool.h"

#include "common/formmodel.h"
#include "common/forms.h"
#include "shell/appshell.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"

#include <QDir>
#include <QTest>

LiveTool::LiveTool(const QString& portPath) {
    qputenv("MQ27D_PORT1", portPath.toLocal8Bit());
    m_settings.values.insert(QStringLiteral("Port"), QStringLiteral("1"));
    QDir(m_folder.path()).mkpath(QStringLiteral("program"));
    QDir(m_folder.path()).mkpath(QStringLiteral("data"));
    ToolRuntime::Options options;
    options.dialogs = &dialogs;
    options.settings = &m_settings;
    options.programDir = programDir();
    options.dataDir = m_folder.filePath(QStringLiteral("data"));
    options.exitEventLoop = false;
    m_runtime = std::make_unique<ToolRuntime>(options);
    QObject::connect(m_runtime.get(), &ToolRuntime::finished, [this] { m_finished = true; });
}

LiveTool::~LiveTool() {
    // A silenced buzzer makes closing ask; the test is over, so the answer is yes.
    dialogs.answers.assign(2, UserDialogs::Answer::Yes);
    app().shell().CloseApplication();
    m_runtime.reset();
}

void LiveTool::start(const QString& commandLine) {
    m_runtime->start(commandLine);
}

Program& LiveTool::app() {
    return m_runtime->app();
}

Form& LiveTool::display() {
    return app().forms().frmDisplay();
}

QString LiveTool::programDir() const {
    return m_folder.filePath(QStringLiteral("program"));
}

bool LiveTool::waitForDevice(const QString& serialNo, int timeoutMs) {
    return QTest::qWaitFor(
        [&] {
            return display().isShown() &&
                   display().caption(QStringLiteral("lblSerialNo_0")) == serialNo;
        },
        timeoutMs);
}
