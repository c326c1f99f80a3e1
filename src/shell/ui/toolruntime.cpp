#include "shell/ui/toolruntime.h"

#include "common/platformservices.h"
#include "common/ui/accessibility.h"
#include "common/ui/artwork.h"
#include "common/ui/desktoplauncher.h"
#include "common/ui/widgetdialogs.h"
#include "devicesettings/ui/frmdevicesettings.h"
#include "display/ui/frmdisplay.h"
#include "extinguish/ui/frmextinguishdetails.h"
#include "extinguish/ui/frmextinguishsettings.h"
#include "link/qtserialportdevice.h"
#include "localize/ui/frmlocalizelearn.h"
#include "logger/ui/frmlogdatadev.h"
#include "record/protocol.h"
#include "record/ui/frmprotocol.h"
#include "search/ui/frmconnect.h"
#include "search/ui/frmdevicesearch.h"
#include "shell/appshell.h"
#include "shell/languages.h"
#include "shell/program.h"
#include "shell/ui/frmabout.h"
#include "shell/ui/frminterface.h"
#include "shell/ui/frmlanguage.h"
#include "shell/ui/frmmq27d.h"
#include "shell/ui/trayicon.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QStandardPaths>
#include <QTranslator>

// The services the runtime makes itself where the options lend none.
struct ToolRuntime::OwnServices {
    std::unique_ptr<QtSerialPortDevice> port;
    std::unique_ptr<WidgetDialogs> dialogs;
    std::unique_ptr<DesktopLauncher> launcher;
    std::unique_ptr<QSettingsStore> settings;
    SystemClock clock;
};

namespace {

template <typename Interface, typename Real>
Interface* lentOrOwn(Interface* lent, std::unique_ptr<Real>& own) {
    if (lent) return lent;
    own = std::make_unique<Real>();
    return own.get();
}

} // namespace

ToolRuntime::ToolRuntime()
    : ToolRuntime(Options{}) {}

ToolRuntime::ToolRuntime(Options options)
    : m_options(std::move(options))
    , m_own(std::make_unique<OwnServices>()) {
    // The tool ends by its own shutdown, not when its last window is hidden.
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(artwork::trayIcon(0));
    accessibility::showFocusOnDefaultButtons();

    Services services;
    services.dialogs = lentOrOwn(m_options.dialogs, m_own->dialogs);
    services.launcher = lentOrOwn(m_options.launcher, m_own->launcher);
    services.settings = lentOrOwn(m_options.settings, m_own->settings);
    services.clock = &m_own->clock;
    services.programDir = m_options.programDir.value_or(QCoreApplication::applicationDirPath());
    services.dataDir = m_options.dataDir.value_or(
        QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
    m_app = std::make_unique<Program>(services, lentOrOwn(m_options.port, m_own->port));

    createWindows();
    m_trayIcon = std::make_unique<TrayIcon>(m_app->forms().frmMQ27D(), m_app->shell());
    connect(m_app.get(), &Program::quitRequested, this, &ToolRuntime::onQuitRequested);
    connect(&m_app->languages(), &Languages::LanguageSwitched, this,
            [this](Language language) { switchQtTexts(language); });
}

ToolRuntime::~ToolRuntime() {
    // Windows and icon go before the models they show.
    m_trayIcon.reset();
    m_windows.clear();
    m_windowStore.clear();
    switchQtTexts(std::nullopt);
}

void ToolRuntime::createWindows() {
    AllForms& forms = m_app->forms();
    auto add = [this](Form& form, std::unique_ptr<QWidget> window) {
        m_windows.insert(form.name(), window.get());
        m_windowStore.push_back(std::move(window));
    };
    add(forms.frmMQ27D(), std::make_unique<frmMQ27DWindow>(
                              forms.frmMQ27D(), [this](int index) { return m_app->str(index); }));
    add(forms.frmDisplay(),
        std::make_unique<frmDisplayWindow>(forms.frmDisplay(),
                                           [this](int index) { return m_app->str(index); }));
    add(forms.frmInterface(), std::make_unique<frmInterfaceWindow>(forms.frmInterface()));
    add(forms.frmLanguage(), std::make_unique<frmLanguageWindow>(forms.frmLanguage()));
    add(forms.frmAbout(), std::make_unique<frmAboutWindow>(forms.frmAbout()));
    add(forms.frmConnect(), std::make_unique<frmConnectWindow>(forms.frmConnect()));
    add(forms.frmDeviceSearch(),
        std::make_unique<frmDeviceSearchWindow>(forms.frmDeviceSearch(),
                                                [this](int index) { return m_app->str(index); }));
    add(forms.frmLocalizeLearn(),
        std::make_unique<frmLocalizeLearnWindow>(forms.frmLocalizeLearn(),
                                                 [this](int index) { return m_app->str(index); }));
    add(forms.frmExtinguishDetails(),
        std::make_unique<frmExtinguishDetailsWindow>(
            forms.frmExtinguishDetails(), [this](int index) { return m_app->str(index); }));
    add(forms.frmExtinguishSettings(),
        std::make_unique<frmExtinguishSettingsWindow>(
            forms.frmExtinguishSettings(), [this](int index) { return m_app->str(index); }));
    add(forms.frmDeviceSettings(),
        std::make_unique<frmDeviceSettingsWindow>(forms.frmDeviceSettings(),
                                                  [this](int index) { return m_app->str(index); }));
    add(forms.frmLogdataDev(),
        std::make_unique<frmLogdataDevWindow>(forms.frmLogdataDev(), m_app->logger(),
                                              [this](int index) { return m_app->str(index); }));
    add(forms.frmProtocolComment(),
        std::make_unique<frmProtocolCommentWindow>(forms.frmProtocolComment()));
    add(forms.frmProtocol(),
        std::make_unique<frmProtocolWindow>(forms.frmProtocol(), m_app->protocol(),
                                            [this](int index) { return m_app->str(index); }));
}

QStringList ToolRuntime::windowNames() const {
    QStringList names;
    for (const auto& window : m_windowStore)
        names << window->objectName();
    return names;
}

void ToolRuntime::start(const QString& rawArguments) {
    m_app->shell().Startup(rawArguments);
}

// File dialogs, the buttons of message boxes and the menus of text fields come from Qt. A
// machine without Qt's translations shows them in English, as Qt does on its own.
// Qt's own texts are English; the other languages load Qt's translation of them.
void ToolRuntime::switchQtTexts(std::optional<Language> language) {
    if (language == m_qtLanguage) return;
    m_qtLanguage = language;
    if (m_qtTexts) {
        QCoreApplication::removeTranslator(m_qtTexts.get());
        m_qtTexts.reset();
    }
    const char* code = nullptr;
    if (language == Language::German) code = "de";
    if (language == Language::French) code = "fr";
    if (language == Language::Dutch) code = "nl";
    if (!code) return;
    auto texts = std::make_unique<QTranslator>();
    if (!texts->load(QStringLiteral("qtbase_") + QLatin1String(code),
                     QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        return;
    QCoreApplication::installTranslator(texts.get());
    m_qtTexts = std::move(texts);
}

void ToolRuntime::terminate() {
    m_app->shell().ShutDown();
}

void ToolRuntime::onQuitRequested() {
    Q_EMIT finished();
    // Queued, so that a shutdown during start-up still ends the loop that starts later.
    if (m_options.exitEventLoop)
        QMetaObject::invokeMethod(
            qApp, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
}

#include "moc_toolruntime.cpp"
