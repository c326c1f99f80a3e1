#include "shell/appshell.h"

#include "files/devicefiles.h"
#include "link/seriallink.h"
#include "shell/appcontext.h"
#include "shell/languages.h"
#include "shell/regsettings.h"
#include "values/mq27values.h"

namespace {

const QString kTrayIcon = QStringLiteral("trayIcon");
const QString kCrLf2 = QStringLiteral("\r\n\r\n");

// The windows taken down with the start window, in this order.
const QStringList kUnloadOrder = {QStringLiteral("frmDisplay"),
                                  QStringLiteral("frmInterface"),
                                  QStringLiteral("frmLanguage"),
                                  QStringLiteral("frmAbout"),
                                  QStringLiteral("frmLocalizeLearn"),
                                  QStringLiteral("frmProtocol"),
                                  QStringLiteral("frmProtocolComment"),
                                  QStringLiteral("frmExtinguishDetails"),
                                  QStringLiteral("frmDeviceSearch"),
                                  QStringLiteral("frmConnect"),
                                  QStringLiteral("frmExtinguishSettings"),
                                  QStringLiteral("frmDeviceSettings"),
                                  QStringLiteral("frmLogdataDev")};

bool isSeparator(QChar c) {
    return c == u' ' || c == u'\t';
}

// "05" for "5"; a text that is not a number stays as it is.
QString twoPlaces(const QString& text) {
    bool ok = false;
    const int number = text.trimmed().toInt(&ok);
    return ok ? QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')) : text;
}

} // namespace

AppShell::AppShell(AppContext& app)
    : QObject()
    , m_app(app) {
    Form& start = m_app.forms().frmMQ27D();
    start.setVisible(kTrayIcon, false);
    start.setCloseHandler([this] { return CloseApplication(); });
    connect(&start, &Form::clicked, this, &AppShell::onStartWindowClicked);
    connect(&m_app.forms().frmAbout(), &Form::clicked, this, &AppShell::onAboutClicked);
    connect(&m_app.link(), &SerialLink::iconIndexChanged, this, &AppShell::TrayIconUpdate);
}

void AppShell::Startup(const QString& rawCommandLineArgs) {
    if (m_app.g.gClosing) return;
    SerialLink& link = m_app.link();
    link.tmrZeroCommand().enable();
    link.tmrToRx().disable();
    link.tmrReceiveLED().disable();
    link.tmrSendLED().disable();

    const RegSettings& settings = m_app.settings();
    m_app.g.gLanguage = settings.GetLanguage();
    m_app.g.gTemperatureUnit = settings.GetTemperature();
    m_app.g.gSmokeUnit = settings.GetSmoke();
    m_app.g.gVersionSuffix = versionSuffix(settings.GetVersion());

    // The main view loads before the first language switch reaches it, with the units read.
    m_app.forms().frmDisplay().load();
    m_app.languages().SwitchToLanguage(m_app.g.gLanguage);
    link.SwitchToComPort(settings.GetPort());
    m_app.forms().frmMQ27D().show(false);
    TrayIconAdd();

    m_app.g.gCmdArgs = GetCommandLineArgs(rawCommandLineArgs, 1);
    handleCommandLine();
}

bool AppShell::CloseApplication() {
    if (m_app.g.gClosing) return true;
    if (m_app.values() && m_app.values()->GetBuzzerShouldBeOff() == 1) {
        const auto answer = m_app.services().dialogs->messageBox(
            m_app.messages.buzzerWarning + kCrLf2 + m_app.messages.closeQuestion, m_app.str(0),
            UserDialogs::Buttons::YesNo, UserDialogs::Icon::Warning, UserDialogs::Answer::No);
        if (answer == UserDialogs::Answer::No) return false;
    }
    m_app.link().stopTimers();
    if (m_app.link().isPortOpen()) m_app.link().closePort();
    m_app.g.gClosing = true;
    unloadAll();
    return true;
}

void AppShell::ShowInterface() {
    m_app.link().ShowInterface();
}

void AppShell::ShowLoadFile() {
    m_app.files().LoadDeviceFile(QString());
}

void AppShell::ShowLanguage() {
    m_app.languages().ShowLanguage();
}

void AppShell::ShowInfo() {
    m_app.languages().SwitchToLanguage(m_app.g.gLanguage);
    m_app.forms().frmAbout().show(true);
}

QStringList AppShell::GetCommandLineArgs(const QString& commandLine, int maxArgs) {
    QStringList args;
    bool inArgument = false;
    for (const QChar c : commandLine) {
        if (isSeparator(c)) {
            inArgument = false;
            continue;
        }
        if (!inArgument) {
            if (args.size() >= maxArgs) break;
            args.append(QString());
            inArgument = true;
        }
        args.last().append(c);
    }
    return args;
}

QString AppShell::versionSuffix(const QString& version) {
    const qsizetype length = version.size();
    if (length < 5) return {};
    return QStringLiteral(",  V") + version.left(length - 4) + u'.' +
           twoPlaces(version.mid(length - 4, 2)) + u'.' + twoPlaces(version.right(2));
}

void AppShell::TrayIconAdd() {
    if (m_trayIconAdded) return;
    Form& start = m_app.forms().frmMQ27D();
    start.setValue(kTrayIcon, m_app.link().iconIndex());
    start.setToolTip(kTrayIcon, start.title());
    start.setVisible(kTrayIcon, true);
    m_trayIconAdded = true;
}

void AppShell::TrayIconUpdate() {
    if (!m_trayIconAdded) return;
    m_app.forms().frmMQ27D().setValue(kTrayIcon, m_app.link().iconIndex());
}

void AppShell::TrayIconRemove() {
    if (!m_trayIconAdded) return;
    m_app.forms().frmMQ27D().setVisible(kTrayIcon, false);
    m_trayIconAdded = false;
}

void AppShell::trayIconActivated() {
    Forms& forms = m_app.forms();
    for (Form* form : {&forms.frmMQ27D(), &forms.frmDisplay(), &forms.frmConnect()}) {
        if (form->isShown()) form->bringToFront();
    }
}

void AppShell::onStartWindowClicked(const QString& element) {
    if (element == u"mnuLoad")
        ShowLoadFile();
    else if (element == u"mnuCloseApp")
        CloseApplication();
    else if (element == u"mnuInterface")
        ShowInterface();
    else if (element == u"mnuLanguage")
        ShowLanguage();
    else if (element == u"mnuInfo")
        ShowInfo();
}

void AppShell::onAboutClicked(const QString& element) {
    if (element == u"cmdOK") m_app.forms().frmAbout().unload();
}

// Only the first argument counts (gCmdArgs[0]): the logger switch, or a saved device file.
void AppShell::handleCommandLine() {
    if (m_app.g.gCmdArgs.isEmpty()) return;
    const QString& argument = m_app.g.gCmdArgs.first();
    if (argument.isEmpty() || argument.toUpper() == u"/LOGGER") return;
    if (argument.size() >= 5 && argument.right(4).startsWith(u".ko"))
        m_app.files().LoadDeviceFile(argument);
}

void AppShell::unloadAll() {
    TrayIconRemove();
    Forms& forms = m_app.forms();
    for (const QString& name : kUnloadOrder) {
        if (forms.exists(name)) forms.get(name).unload();
    }
    forms.frmMQ27D().unload();
    Q_EMIT m_app.quitRequested();
}
