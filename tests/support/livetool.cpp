#include "support/livetool.h"

#include "common/formmodel.h"
#include "common/forms.h"
#include "shell/appshell.h"
#include "shell/program.h"
#include "shell/ui/toolruntime.h"

#include <QTest>

LiveTool::LiveTool(const QString& portPath) {
    if (!portPath.isEmpty()) qputenv("MQ27D_PORT1", portPath.toLocal8Bit());
    settings.values.insert(QStringLiteral("Port"), QStringLiteral("1"));
    m_runtime = std::make_unique<ToolRuntime>(
        ToolRuntime::Options{&dialogs, &settings, portPath.isEmpty() ? &port : nullptr, &launcher,
                             programDir(), dataDir(), false});
    QObject::connect(m_runtime.get(), &ToolRuntime::finished, [this] { m_finished = true; });
}

LiveTool::~LiveTool() {
    if (!m_runtime) return;
    // A silenced buzzer makes closing ask; the test is over, so the answer is yes.
    dialogs.answers.assign(2, UserDialogs::Answer::Yes);
    app().shell().CloseApplication();
    m_runtime.reset();
}

void LiveTool::end() {
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

bool LiveTool::waitForDevice(const QString& serialNo, int timeoutMs) {
    return QTest::qWaitFor(
        [&] {
            return display().isShown() &&
                   display().caption(QStringLiteral("lblSerialNo_0")) == serialNo;
        },
        timeoutMs);
}
