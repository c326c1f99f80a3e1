#include "support/fakes.h"

#include "values/valuestore.h"

#include <QDir>
#include <QFile>

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

FakeWorld::FakeWorld() {
    QDir(folder.path()).mkdir(QStringLiteral("program"));
    QDir(folder.path()).mkdir(QStringLiteral("data"));
}

Services FakeWorld::services() {
    Services services;
    services.dialogs = &dialogs;
    services.launcher = &launcher;
    services.settings = &settings;
    services.clock = &clock;
    services.programDir = programDir();
    services.dataDir = dataDir();
    return services;
}

QString FakeWorld::programDir() const {
    return folder.filePath(QStringLiteral("program"));
}

QString FakeWorld::dataDir() const {
    return folder.filePath(QStringLiteral("data"));
}

QString FakeWorld::suitePath() const {
#ifdef Q_OS_WIN
    return QDir(programDir()).filePath(QStringLiteral("Kompa3.exe"));
#else
    return QDir(programDir()).filePath(QStringLiteral("Kompa3"));
#endif
}

void FakeWorld::installSuite() const {
    QFile file(suitePath());
    if (!file.open(QIODevice::WriteOnly)) qFatal("cannot make the stand-in suite program");
}

TestApp::TestApp()
    : app(std::make_unique<Program>(services(), &port)) {}

TestApp::~TestApp() = default;

Bytes stored(Program& app, int command) {
    Bytes out;
    if (app.values()) app.values()->GetDataArray(out, static_cast<std::int16_t>(command));
    return out;
}

LinkRig::LinkRig()
    : regSettings(settings)
    , link(regSettings, texts, clock, life, &port)
    , recognition(session, link, values, life, dialogs, launcher, programDir())
    , startWindow(forms.frmMQ27D(), link, recognition)
    , portWindow(forms.frmInterface(), link, regSettings) {}
