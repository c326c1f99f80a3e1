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

Program::Program(const Services& services, SerialPortDevice* port, QObject* parent)
    : QObject(parent)
    , g(m_state.g)
    , messages(m_state.messages)
    , m_state(services) {
    m_link = std::make_unique<SerialLink>(m_state, port);
    m_recognition = std::make_unique<Recognition>(m_state, m_session, *m_link, m_values);
    m_engine = std::make_unique<PollEngine>(m_session, *m_link, m_values);
    m_decoder = std::make_unique<TelegramDecoder>(m_state, m_session, *m_engine, m_values);
    m_commands = std::make_unique<DeviceCommands>(m_session, *m_engine, m_values);
    m_files = std::make_unique<DeviceFiles>(m_state, *m_link, *m_recognition, m_values);
    m_search = std::make_unique<DeviceSearch>(m_state, m_session, *m_link, *m_engine);
    m_mainView =
        std::make_unique<MainView>(m_state, m_session, m_values, *m_commands, *m_engine, *m_files);
    m_localisation =
        std::make_unique<Localisation>(m_state, m_values, *m_commands, *m_engine, *m_mainView);
    m_deviceSettings = std::make_unique<DeviceSettings>(m_state, *m_commands, *m_engine, m_values);
    m_extinguishDetails = std::make_unique<ExtinguishDetails>(m_state, m_values);
    m_extinguishSettings =
        std::make_unique<ExtinguishSettings>(m_state, m_values, *m_commands, *m_engine);
    m_logger = std::make_unique<DataLogger>(m_state, m_values);
    m_protocol = std::make_unique<Protocol>(m_state, m_values);
    m_languages = std::make_unique<Languages>(m_state);
    m_help = std::make_unique<HelpLink>(m_state);
    m_shell =
        std::make_unique<AppShell>(m_state, *m_link, *m_files, *m_languages, *m_mainView, m_values);
    connectParts();
}

Program::~Program() = default;

void Program::connectParts() {
    const auto refreshLanguage = [this] { m_languages->SwitchToLanguage(m_state.g.gLanguage); };
    const auto direct = Qt::DirectConnection;

    // The close question counts the writes that wait in every window, not only the main
    // view's pages.
    m_shell->addWriteWaitingCheck([this] {
        return m_deviceSettings->state(DeviceSettings::Resistors) ==
                   DeviceSettings::State::Comparing ||
               m_deviceSettings->state(DeviceSettings::BetaValues) ==
                   DeviceSettings::State::Comparing;
    });
    m_shell->addWriteWaitingCheck(
        [this] { return m_extinguishSettings->state() == ExtinguishSettings::State::Waiting; });
    m_shell->addWriteWaitingCheck(
        [this] { return m_localisation->tmrCompareLocalizeSet().isEnabled(); });

    connect(m_recognition.get(), &Recognition::ownTelegramAccepted, m_decoder.get(),
            &TelegramDecoder::DataDecoder, direct);
    connect(m_recognition.get(), &Recognition::languageRefreshNeeded, this, refreshLanguage,
            direct);
    connect(m_recognition.get(), &Recognition::connectionWindowRequested, m_search.get(),
            &DeviceSearch::ShowConnect, direct);
    connect(
        m_recognition.get(), &Recognition::closeRequested, this,
        [this] { m_shell->CloseApplication(); }, direct);

    connect(m_decoder.get(), &TelegramDecoder::searchAnswer, m_search.get(),
            &DeviceSearch::AddDevice, direct);
    connect(m_decoder.get(), &TelegramDecoder::deviceTakenOn, m_files.get(),
            &DeviceFiles::armAutoSave, direct);
    connect(m_decoder.get(), &TelegramDecoder::readOutComplete, m_files.get(),
            &DeviceFiles::SaveDeviceData, direct);
    connect(m_decoder.get(), &TelegramDecoder::displayRefreshDue, m_mainView.get(),
            &MainView::ShowData, direct);
    connect(m_decoder.get(), &TelegramDecoder::readOutRecorded, m_logger.get(),
            &DataLogger::ReadOutComplete, direct);
    connect(m_shell.get(), &AppShell::loggerRequested, m_logger.get(), &DataLogger::ShowLogger,
            direct);
    connect(
        m_languages.get(), &Languages::languageSwitched, m_logger.get(),
        [this] { m_logger->ApplyTexts(); }, direct);
    // The record reads the labels, so they are brought to the language first.
    connect(
        m_protocol.get(), &Protocol::createRequested, this,
        [this] {
            m_languages->SwitchToLanguage(m_state.g.gLanguage);
            m_protocol->Protocol_Create();
        },
        direct);
    connect(m_languages.get(), &Languages::languageSwitched, m_protocol.get(),
            &Protocol::ApplyTexts, direct);

    connect(m_search.get(), &DeviceSearch::languageRefreshNeeded, this, refreshLanguage, direct);
    connect(m_mainView.get(), &MainView::deviceSearchRequested, m_search.get(),
            &DeviceSearch::mnuDeviceSearch_Click, direct);
    connect(m_mainView.get(), &MainView::aboutToShowData, m_localisation.get(),
            &Localisation::ShowLocData, direct);
    connect(
        m_mainView.get(), &MainView::helpRequested, this,
        [this](int device, int mode, int topic, const QString& text) {
            m_help->ShowHelp(device, mode, topic, text);
        },
        direct);
    connect(m_shell.get(), &AppShell::quitRequested, this, &Program::quitRequested, direct);
    connect(m_localisation.get(), &Localisation::languageRefreshNeeded, this, refreshLanguage,
            direct);
    connect(
        m_languages.get(), &Languages::languageSwitched, this,
        [this](int language) {
            ApplyLocalizeLearnTexts(m_state.forms.frmLocalizeLearn(), language);
        },
        direct);
    connect(
        m_languages.get(), &Languages::languageSwitched, this, [this] { m_help->showManualPath(); },
        direct);
    connect(m_extinguishDetails.get(), &ExtinguishDetails::helpRequested, m_mainView.get(),
            &MainView::Help_Table, direct);
    connect(m_languages.get(), &Languages::languageSwitched, m_extinguishDetails.get(),
            &ExtinguishDetails::applyTexts, direct);
    connect(m_languages.get(), &Languages::languageSwitched, m_extinguishSettings.get(),
            &ExtinguishSettings::applyTexts, direct);
    // After the main view's texts: the window's title is the main view's menu entry.
    connect(m_languages.get(), &Languages::languageSwitched, m_deviceSettings.get(),
            &DeviceSettings::ApplyTexts, direct);
}
