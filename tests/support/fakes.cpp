#include "support/fakes.h"

#include <QDir>

bool FakeSerialPort::open(int portNumber) {
    m_open = false;
    m_portNumber = portNumber;
    if (!available.contains(portNumber)) return false;
    m_open = true;
    incoming.clear();
    return true;
}

QByteArray FakeSerialPort::readAll() {
    QByteArray out;
    out.swap(incoming);
    return out;
}

QString FakeSerialPort::deviceName(int portNumber) const {
    return available.contains(portNumber) ? QStringLiteral("/dev/fake%1").arg(portNumber)
                                          : QString();
}

void FakeSerialPort::deliver(const QByteArray& bytes) {
    if (!m_open) return;
    incoming += bytes;
    Q_EMIT received();
}

void FakeSerialPort::pull() {
    if (!m_open) return;
    m_open = false;
    Q_EMIT lost();
}

UserDialogs::Answer ScriptedDialogs::messageBox(const QString& text, const QString& title,
                                                Buttons buttons, Icon icon, Answer defaultAnswer) {
    shown << Shown{text, title, buttons, icon, defaultAnswer};
    if (answers.empty()) return defaultAnswer;
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

std::optional<QString> ScriptedDialogs::saveFileName(const QString&, const QString& filter) {
    lastFilter = filter;
    return saveName;
}

std::optional<QString> ScriptedDialogs::openFileName(const QString& filter, const QString&) {
    lastFilter = filter;
    return openName;
}

bool FakeLauncher::startDetached(const QString& program, const QStringList& arguments) {
    started << Start{program, arguments};
    return startSucceeds;
}

std::optional<QString> MemorySettings::read(const QString& name) const {
    const auto it = values.constFind(name);
    if (it == values.constEnd()) return std::nullopt;
    return *it;
}

TestApp::TestApp() {
    QDir(folder.path()).mkdir(QStringLiteral("program"));
    QDir(folder.path()).mkdir(QStringLiteral("data"));
    Services services;
    services.port = &port;
    services.dialogs = &dialogs;
    services.launcher = &launcher;
    services.settings = &settings;
    services.clock = &clock;
    services.programDir = programDir();
    services.dataDir = dataDir();
    app = std::make_unique<AppContext>(services);
}

TestApp::~TestApp() = default;

QString TestApp::programDir() const {
    return folder.filePath(QStringLiteral("program"));
}

QString TestApp::dataDir() const {
    return folder.filePath(QStringLiteral("data"));
}
