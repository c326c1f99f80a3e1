#include "shell/appshell.h"

#include "common/lifetime.h"
#include "common/regsettings.h"
#include "common/services.h"
#include "common/texts.h"
#include "display/mainview.h"
#include "display/mainview_elements.h"
#include "files/devicefiles.h"
#include "link/seriallink.h"
#include "shell/allforms.h"
#include "shell/dialog_elements.h"
#include "shell/languages.h"
#include "shell/linewindows.h"
#include "shell/startwindow_elements.h"
#include "values/devicevalues.h"

#include <QDir>

namespace {

const QString kTrayIcon = frmMQ27D::trayIcon;
const QString kCrLf2 = QStringLiteral("\r\n\r\n");
constexpr int kStringWriteWaiting = 508;
constexpr int kStringAutoSaveFolder = 607;

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

AppShell::AppShell(AllForms& forms, Preferences& preferences, Texts& texts, RegSettings& settings,
                   const Services& services, Lifetime& life, SerialLink& link, DeviceFiles& files,
                   Languages& languages, PortWindow& portWindow, MainView& mainView,
                   DeviceValues& values)
    : QObject()
    , m_forms(forms)
    , m_preferences(preferences)
    , m_texts(texts)
    , m_settings(settings)
    , m_services(services)
    , m_life(life)
    , m_link(link)
    , m_files(files)
    , m_languages(languages)
    , m_portWindow(portWindow)
    , m_mainView(mainView)
    , m_values(values) {
    Form& start = m_forms.frmMQ27D();
    start.setVisible(kTrayIcon, false);
    // Closing the main view is closing the tool, and asks as the start window does.
    for (Form* window : {&start, &m_forms.frmDisplay()}) {
        window->setCloseHandler([this] { return CloseApplication(); });
        connect(window, &Form::clicked, this, &AppShell::OnMenuClicked);
    }
    connect(&m_forms.frmAbout(), &Form::clicked, this, &AppShell::OnAboutClicked);
    connect(&m_link, &SerialLink::IconIndexChanged, this, &AppShell::TrayIconUpdate);
    connect(&m_languages, &Languages::LanguageSwitched, this, &AppShell::ShowAutoSaveFolder);
}

void AppShell::Startup(const QString& rawCommandLineArgs) {
    if (m_life.closing()) return;
    SerialLink& link = m_link;
    link.tmrZeroCommand().enable();
    link.tmrToRx().disable();
    link.tmrReceiveLED().disable();
    link.tmrSendLED().disable();

    const RegSettings& settings = m_settings;
    m_preferences.setLanguage(languageFromNumber(settings.GetLanguage()));
    m_preferences.setTemperatureUnit(temperatureUnitFromNumber(settings.GetTemperature()));
    m_preferences.setSmokeUnit(smokeUnitFromNumber(settings.GetSmoke()));
    m_texts.versionSuffix = VersionSuffix(settings.GetVersion());

    // The main view loads before the first language switch reaches it, with the units read.
    m_forms.frmDisplay().load();
    m_languages.SwitchToLanguage(languageNumber(m_preferences.language()));
    link.SwitchToComPort(settings.GetPort());
    m_forms.frmMQ27D().show(false);
    TrayIconAdd();

    m_cmdArgs = GetCommandLineArgs(rawCommandLineArgs, 1);
    HandleCommandLine();
}

bool AppShell::CloseApplication() {
    if (m_life.closing()) return true;
    ValueStore* values = m_values.get();
    const bool buzzerOff = values && values->GetBuzzerShouldBeOff() == 1;
    bool writeWaiting = m_mainView.Pages().anyWaiting();
    for (const auto& waiting : m_writeWaitingChecks)
        writeWaiting = writeWaiting || waiting();
    if (buzzerOff || writeWaiting) {
        QString text;
        if (buzzerOff) text += m_texts.messages.buzzerWarning + kCrLf2;
        if (writeWaiting) text += m_texts.str(kStringWriteWaiting) + kCrLf2;
        const auto answer = m_services.dialogs->messageBox(
            text + m_texts.messages.closeQuestion, m_texts.str(0), UserDialogs::Buttons::YesNo,
            UserDialogs::Icon::Warning, UserDialogs::Answer::No);
        if (answer == UserDialogs::Answer::No) return false;
        // The system may have ended the tool while the question was open.
        if (m_life.closing()) return true;
    }
    ShutDown();
    return true;
}

void AppShell::ShutDown() {
    if (m_life.closing()) return;
    m_link.StopTimers();
    if (m_link.IsPortOpen()) m_link.ClosePort();
    m_life.setClosing();
    UnloadAll();
}

void AppShell::AddWriteWaitingCheck(std::function<bool()> waiting) {
    m_writeWaitingChecks.push_back(std::move(waiting));
}

void AppShell::ShowInterface() {
    m_languages.SwitchToLanguage(languageNumber(m_preferences.language()));
    m_forms.frmInterface().show(false);
    m_portWindow.ShowCOMPort();
}

void AppShell::ShowLoadFile() {
    m_files.LoadDeviceFile(QString());
}

void AppShell::ShowLanguage() {
    m_languages.ShowLanguage();
}

void AppShell::ShowInfo() {
    m_languages.SwitchToLanguage(languageNumber(m_preferences.language()));
    m_forms.frmAbout().show(true);
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

QString AppShell::VersionSuffix(const QString& version) {
    const qsizetype length = version.size();
    if (length < 5) return {};
    return QStringLiteral(",  V") + version.left(length - 4) + u'.' +
           twoPlaces(version.mid(length - 4, 2)) + u'.' + twoPlaces(version.right(2));
}

void AppShell::TrayIconAdd() {
    if (m_trayIconAdded) return;
    Form& start = m_forms.frmMQ27D();
    start.setValue(kTrayIcon, m_link.IconIndex());
    start.setToolTip(kTrayIcon, start.title());
    start.setVisible(kTrayIcon, true);
    m_trayIconAdded = true;
}

void AppShell::TrayIconUpdate() {
    if (!m_trayIconAdded) return;
    m_forms.frmMQ27D().setValue(kTrayIcon, m_link.IconIndex());
}

void AppShell::TrayIconRemove() {
    if (!m_trayIconAdded) return;
    m_forms.frmMQ27D().setVisible(kTrayIcon, false);
    m_trayIconAdded = false;
}

void AppShell::TrayIconActivated() {
    AllForms& forms = m_forms;
    for (Form* form : {&forms.frmMQ27D(), &forms.frmDisplay(), &forms.frmConnect()}) {
        if (form->isShown()) form->bringToFront();
    }
}

void AppShell::OnMenuClicked(const QString& element) {
    // Both windows name these entries alike; only the exit entries differ.
    if (element == frmMQ27D::mnuLoad)
        ShowLoadFile();
    else if (element == frmMQ27D::mnuCloseApp || element == frmDisplay::mnuExit)
        CloseApplication();
    else if (element == frmMQ27D::mnuAutoSaveFolder)
        m_files.OpenAutoSaveFolder();
    else if (element == frmMQ27D::mnuInterface)
        ShowInterface();
    else if (element == frmMQ27D::mnuLanguage)
        ShowLanguage();
    else if (element == frmMQ27D::mnuInfo)
        ShowInfo();
}

void AppShell::OnAboutClicked(const QString& element) {
    if (element == frmAbout::cmdOK) m_forms.frmAbout().unload();
}

// Only the first argument counts: the logger switch, which opens the logger,
// or a saved device file.
void AppShell::HandleCommandLine() {
    if (m_cmdArgs.isEmpty()) return;
    const QString& argument = m_cmdArgs.first();
    if (argument.isEmpty()) return;
    if (argument.toUpper() == u"/LOGGER") {
        Q_EMIT LoggerRequested();
        return;
    }
    if (argument.size() >= 5 && argument.right(4).startsWith(u".ko"))
        m_files.LoadDeviceFile(argument);
}

void AppShell::UnloadAll() {
    TrayIconRemove();
    AllForms& forms = m_forms;
    for (const QString& name : kUnloadOrder) {
        if (forms.exists(name)) forms.get(name).unload();
    }
    forms.frmMQ27D().unload();
    Q_EMIT QuitRequested();
}

void AppShell::ShowAutoSaveFolder() {
    const QString text =
        m_texts.str(kStringAutoSaveFolder).arg(QDir::toNativeSeparators(m_files.AutoSaveFolder()));
    m_forms.frmMQ27D().setCaption(frmMQ27D::mnuAutoSaveFolder, text);
    m_forms.frmAbout().setCaption(frmAbout::lblAutoSaveFolder, text);
}

#include "moc_appshell.cpp"
