#include "shell/program.h"

#include "devicesettings/devicesettings.h"
#include "display/mainview.h"
#include "engine/commands.h"
#include "engine/pollengine.h"
#include "engine/telegramdecoder.h"
#include "extinguish/extinguishdetails.h"
#include "extinguish/extinguishsettings.h"
#include "files/devicefiles.h"
#include "link/recognition.h"
#include "link/seriallink.h"
#include "localize/localisation.h"
#include "localize/localizetexts.h"
#include "logger/datalogger.h"
#include "record/protocol.h"
#include "search/devicesearch.h"
#include "shell/appshell.h"
#include "shell/helplink.h"
#include "shell/languages.h"
#include "shell/linewindows.h"
#include "shell/livestate.h"

Program::Program(const Services& services, SerialPortDevice* port, QObject* parent)
    : QObject(parent)
    , m_services(withClock(services, m_systemClock))
    , m_settings(*m_services.settings) {
    makeParts(port);
    connectParts();
}

Program::~Program() = default;

Services Program::withClock(Services services, Clock& fallback) {
    if (!services.clock) services.clock = &fallback;
    return services;
}

void Program::makeParts(SerialPortDevice* port) {
    UserDialogs& dialogs = *m_services.dialogs;
    m_link = std::make_unique<SerialLink>(m_settings, m_texts, *m_services.clock, m_life, port);
    m_recognition = std::make_unique<Recognition>(m_session, *m_link, m_values, m_life, dialogs,
                                                  *m_services.launcher, m_services.programDir);
    m_engine = std::make_unique<PollEngine>(m_session, *m_link, m_values);
    m_decoder = std::make_unique<TelegramDecoder>(m_session, *m_engine, m_values);
    m_commands = std::make_unique<DeviceCommands>(m_session, *m_engine, m_values);
    m_files = std::make_unique<DeviceFiles>(m_services, m_texts, m_life, *m_link, *m_recognition,
                                            m_values);
    m_mainView =
        std::make_unique<MainView>(m_forms.frmDisplay(), m_preferences, m_settings, m_texts,
                                   m_session, m_values, *m_commands, *m_engine, m_services.dialogs);
    m_search = std::make_unique<DeviceSearch>(m_forms.frmDeviceSearch(), m_forms.frmConnect(),
                                              m_forms.frmDisplay(), m_forms.frmMQ27D(), m_texts,
                                              m_settings, m_life, m_session, *m_link, *m_engine);
    m_localisation = std::make_unique<Localisation>(
        m_forms.frmLocalizeLearn(), m_forms.frmDisplay(), m_preferences, m_texts,
        m_services.dialogs, m_values, *m_commands, *m_engine, *m_mainView);
    m_deviceSettings =
        std::make_unique<DeviceSettings>(m_forms.frmDeviceSettings(), m_forms.frmDisplay(),
                                         m_preferences, m_texts, *m_commands, *m_engine, m_values);
    m_extinguishDetails = std::make_unique<ExtinguishDetails>(
        m_forms.frmExtinguishDetails(), m_forms.frmDisplay(), m_texts, m_preferences, m_values);
    m_extinguishSettings = std::make_unique<ExtinguishSettings>(
        m_forms.frmExtinguishSettings(), m_forms.frmDisplay(), m_preferences, m_texts, m_values,
        *m_commands, *m_engine);
    m_logger = std::make_unique<DataLogger>(m_forms.frmLogdataDev(), m_forms.frmDisplay(), m_texts,
                                            m_preferences, m_services, m_values);
    m_protocol = std::make_unique<Protocol>(
        Protocol::Windows{m_forms.frmProtocol(), m_forms.frmProtocolComment(), m_forms.frmDisplay(),
                          m_forms.frmDeviceSettings(), m_forms.frmExtinguishDetails(),
                          m_forms.frmExtinguishSettings()},
        m_preferences, m_texts, m_services.dialogs, m_session, m_values);
    m_languages = std::make_unique<Languages>(m_forms, m_preferences, m_texts, m_settings);
    m_help = std::make_unique<HelpLink>(m_services, m_texts, m_forms.frmAbout());
    m_startWindow = std::make_unique<StartWindow>(m_forms.frmMQ27D(), *m_link, *m_recognition);
    m_portWindow = std::make_unique<PortWindow>(m_forms.frmInterface(), *m_link, m_settings);
    m_shell = std::make_unique<AppShell>(m_forms, m_preferences, m_texts, m_settings, m_services,
                                         m_life, *m_link, *m_files, *m_languages, *m_portWindow,
                                         *m_mainView, m_values);
    m_live = std::make_unique<LiveState>(m_forms, m_texts, m_session, m_mainView->Leds());
}

void Program::connectParts() {
    // The close question counts the writes that wait in every window, not only the main
    // view's pages.
    m_shell->AddWriteWaitingCheck([this] {
        return m_deviceSettings->StateOf(DeviceSettings::Resistors) ==
                   DeviceSettings::State::Comparing ||
               m_deviceSettings->StateOf(DeviceSettings::BetaValues) ==
                   DeviceSettings::State::Comparing;
    });
    m_shell->AddWriteWaitingCheck([this] {
        return m_extinguishSettings->CurrentState() == ExtinguishSettings::State::Waiting;
    });
    m_shell->AddWriteWaitingCheck(
        [this] { return m_localisation->tmrCompareLocalizeSet().isEnabled(); });

    connectLine();
    connectTelegramRoad();
    connectWindows();
    connectLanguage();
    connectLiveState();
    connect(m_shell.get(), &AppShell::QuitRequested, this, &Program::quitRequested,
            Qt::DirectConnection);
}

// Recognition: a telegram of the own family goes on to the decoder, a new device brings up
// the connection window, another family ends the tool.
void Program::connectLine() {
    const auto direct = Qt::DirectConnection;
    connect(m_recognition.get(), &Recognition::OwnTelegramAccepted, m_decoder.get(),
            &TelegramDecoder::DataDecoder, direct);
    connect(
        m_recognition.get(), &Recognition::ConnectionWindowRequested, this,
        [this](const QString& serialNo) {
            m_search->ShowConnect(serialNo + QStringLiteral(" - ") + m_texts.appTitle);
        },
        direct);
    connect(
        m_recognition.get(), &Recognition::CloseRequested, this,
        [this] { m_shell->CloseApplication(); }, direct);
}

// The decoder's road on through the windows, the saves and the logger, in its order.
void Program::connectTelegramRoad() {
    const auto direct = Qt::DirectConnection;
    MainView* mainView = m_mainView.get();
    TelegramDecoder* decoder = m_decoder.get();
    connect(decoder, &TelegramDecoder::TelegramTimed, mainView, &MainView::ShowTelegramTime,
            direct);
    connect(decoder, &TelegramDecoder::SearchAnswer, m_search.get(), &DeviceSearch::AddDevice,
            direct);
    connect(decoder, &TelegramDecoder::DeviceTakenOn, mainView, &MainView::TakeOn, direct);
    connect(decoder, &TelegramDecoder::DeviceTakenOn, m_files.get(), &DeviceFiles::ArmAutoSave,
            direct);
    connect(decoder, &TelegramDecoder::TelegramStored, mainView, &MainView::ShowReceiveActivity,
            direct);
    connect(
        decoder, &TelegramDecoder::ConnectionPhaseEnded, this,
        [this] {
            m_mainView->ShowDevice();
            m_forms.frmMQ27D().hide();
            m_forms.frmConnect().unload();
        },
        direct);
    connect(decoder, &TelegramDecoder::ReadOutComplete, m_files.get(), &DeviceFiles::SaveDeviceData,
            direct);
    connect(
        decoder, &TelegramDecoder::ReadOutComplete, this,
        [this] { m_forms.frmLogdataDev().load(); }, direct);
    connect(decoder, &TelegramDecoder::DisplayRefreshDue, mainView, &MainView::RefreshIfShown,
            direct);
    connect(decoder, &TelegramDecoder::ReadOutRecorded, m_logger.get(),
            &DataLogger::ReadOutComplete, direct);
}

// What one window asks of a part that lies above it, or beside it.
void Program::connectWindows() {
    const auto direct = Qt::DirectConnection;
    connect(m_shell.get(), &AppShell::LoggerRequested, m_logger.get(), &DataLogger::ShowLogger,
            direct);
    connect(
        m_mainView.get(), &MainView::SaveRequested, this, [this] { m_files->SaveDeviceData(0); },
        direct);
    connect(m_mainView.get(), &MainView::DeviceSearchRequested, m_search.get(),
            &DeviceSearch::mnuDeviceSearch_Click, direct);
    connect(
        m_search.get(), &DeviceSearch::ConnectionCancelled, this,
        [this] { m_forms.frmMQ27D().show(); }, direct);
    connect(m_mainView.get(), &MainView::AboutToShowData, m_localisation.get(),
            &Localisation::ShowLocData, direct);
    connect(
        m_mainView.get(), &MainView::HelpRequested, this,
        [this](int device, int mode, int topic, const QString& text) {
            m_help->ShowHelp(device, mode, topic, text);
        },
        direct);
    connect(m_extinguishDetails.get(), &ExtinguishDetails::HelpRequested, m_mainView.get(),
            &MainView::Help_Table, direct);
}

// A language switch reaches every window; a part that is about to show a window asks for one
// first.
void Program::connectLanguage() {
    const auto direct = Qt::DirectConnection;
    const auto refreshLanguage = [this] {
        m_languages->SwitchToLanguage(languageNumber(m_preferences.language()));
    };
    connect(m_recognition.get(), &Recognition::LanguageRefreshNeeded, this, refreshLanguage,
            direct);
    connect(m_search.get(), &DeviceSearch::LanguageRefreshNeeded, this, refreshLanguage, direct);
    connect(m_localisation.get(), &Localisation::LanguageRefreshNeeded, this, refreshLanguage,
            direct);
    // The record reads the labels, so they are brought to the language first.
    connect(
        m_protocol.get(), &Protocol::CreateRequested, this,
        [this, refreshLanguage] {
            refreshLanguage();
            m_protocol->Protocol_Create();
        },
        direct);

    Languages* languages = m_languages.get();
    connect(
        languages, &Languages::LanguageSwitched, m_logger.get(), [this] { m_logger->ApplyTexts(); },
        direct);
    connect(languages, &Languages::LanguageSwitched, m_protocol.get(), &Protocol::ApplyTexts,
            direct);
    connect(
        languages, &Languages::LanguageSwitched, this,
        [this](Language language) {
            ApplyLocalizeLearnTexts(m_forms.frmLocalizeLearn(), language);
        },
        direct);
    connect(
        languages, &Languages::LanguageSwitched, this, [this] { m_help->ShowManualPath(); },
        direct);
    connect(languages, &Languages::LanguageSwitched, m_extinguishDetails.get(),
            &ExtinguishDetails::ApplyTexts, direct);
    connect(languages, &Languages::LanguageSwitched, m_extinguishSettings.get(),
            &ExtinguishSettings::ApplyTexts, direct);
    // After the main view's texts: the window's title is the main view's menu entry.
    connect(languages, &Languages::LanguageSwitched, m_deviceSettings.get(),
            &DeviceSettings::ApplyTexts, direct);
}

// Live or not: the poll's missed answers and the telegrams taken tell a silent device, the
// file load a read-out; a port chosen or a search started gives the windows back to the line.
// Locks are taken back after each window's own handlers, which were connected before.
void Program::connectLiveState() {
    const auto direct = Qt::DirectConnection;
    LiveState* live = m_live.get();
    connect(&m_engine->tmrTimeout(), &FormTimer::timeout, live, &LiveState::answerMissed, direct);
    connect(
        m_decoder.get(), &TelegramDecoder::TelegramTimed, live,
        [this](const QDateTime& time) { m_live->telegramTaken(time, m_link->DataFromFile()); },
        direct);
    connect(m_files.get(), &DeviceFiles::FileShown, live, &LiveState::showFile, direct);
    connect(m_mainView.get(), &MainView::DeviceSearchRequested, live, &LiveState::showLive, direct);
    connect(
        &m_forms.frmInterface(), &Form::clicked, live,
        [this](const QString& element) {
            if (element == frmInterface::cmdOKButton) m_live->showLive();
        },
        direct);
    connect(m_languages.get(), &Languages::LanguageSwitched, live, &LiveState::applyTexts, direct);
    connect(m_decoder.get(), &TelegramDecoder::DisplayRefreshDue, live, &LiveState::applyLocks,
            direct);
    for (Form* form : {&m_forms.frmDisplay(), &m_forms.frmExtinguishSettings(),
                       &m_forms.frmDeviceSettings(), &m_forms.frmLocalizeLearn()}) {
        connect(form, &Form::clicked, live, &LiveState::applyLocks, direct);
        connect(form, &Form::loaded, live, &LiveState::applyLocks, direct);
    }
}

#include "moc_program.cpp"
