#include "shell/languages.h"

#include "common/regsettings.h"
#include "common/stringtable.h"
#include "common/texts.h"
#include "display/maintexts.h"
#include "display/mainview_elements.h"
#include "search/search_elements.h"
#include "shell/allforms.h"
#include "shell/dialog_elements.h"
#include "shell/startwindow_elements.h"

namespace {

const QString kCrLf = QStringLiteral("\r\n");
constexpr int kLanguageOptions = 5;

QString twoDigits(int number) {
    return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

// Captions by element name, applied in one go.
using Captions = std::initializer_list<std::pair<QString, QString>>;

void setCaptions(Form& form, Captions captions) {
    for (const auto& [element, caption] : captions)
        form.setCaption(element, caption);
}

QString languageOption(int index) {
    return frmLanguage::optLanguage[index];
}

} // namespace

class Languages::Words {
public:
    explicit Words(Language language)
        : m_language(language) {}
    Language language() const { return m_language; }
    QString operator()(int index) const { return StringTable::instance().text(m_language, index); }

private:
    Language m_language;
};

Languages::Languages(AllForms& forms, Preferences& preferences, Texts& texts, RegSettings& settings)
    : QObject()
    , m_forms(forms)
    , m_preferences(preferences)
    , m_texts(texts)
    , m_settings(settings) {
    Form& dialog = m_forms.frmLanguage();
    connect(&dialog, &Form::loaded, this, &Languages::CheckCurrentLanguage);
    connect(&dialog, &Form::clicked, this, &Languages::OnLanguageClicked);
    connect(&dialog, &Form::edited, this, &Languages::OnLanguageEdited);
}

void Languages::SwitchToLanguage(int language) {
    const Words s(languageFromNumber(language));
    ApplyStartWindow(s);
    ApplyMessages(s);
    ApplyInterfaceAndLanguage(s);
    ApplyMainView(s);
    ApplyAbout(s);
    ApplyConnectAndSearch(s);
    const int number = languageNumber(s.language());
    if (m_settings.GetLanguage() != number) m_settings.SetLanguage(number);
    m_preferences.setLanguage(s.language());
    Q_EMIT LanguageSwitched(s.language());
}

void Languages::ShowLanguage() {
    SwitchToLanguage(languageNumber(m_preferences.language()));
    m_forms.frmLanguage().show(false);
}

QString Languages::VersionText() {
    return QStringLiteral(" - V") + VersionNumber();
}

QString Languages::VersionNumber() {
    return QString::number(MQ27_VERSION_MAJOR) + u'.' + twoDigits(MQ27_VERSION_MINOR) + u'.' +
           twoDigits(MQ27_VERSION_PATCH);
}

void Languages::ApplyStartWindow(const Words& s) {
    Form& form = m_forms.frmMQ27D();
    form.setTitle(s(0) + VersionText());
    setCaptions(
        form,
        {{frmMQ27D::mnuFile, s(1)},
         {frmMQ27D::mnuLoad, s(3)},
         {frmMQ27D::mnuCloseApp, s(4)},
         {frmMQ27D::mnuSettings, s(5)},
         {frmMQ27D::mnuInterface, s(106)},
         {frmMQ27D::mnuLanguage, s(7)},
         {frmMQ27D::mnuHelp, s(8)},
         {frmMQ27D::mnuInfo, s(9)},
         {frmMQ27D::lblAppName, QString()},
         {frmMQ27D::lblReceive, s(102)},
         {frmMQ27D::lblSend, s(103)},
         {frmMQ27D::txtComSend, QString()},
         {frmMQ27D::txtComReceive, QString()},
         {frmMQ27D::lblDevice, QString()},
         {frmMQ27D::fraComSend, QStringLiteral("COM Port output (sent data bytes, HEX)")},
         {frmMQ27D::fraComReceive, QStringLiteral("COM Port input (received data bytes, HEX)")},
         {frmMQ27D::chkSendEnable, QStringLiteral("Send Enable")}});
    // The monitor frames belong to a development build; this one keeps them hidden.
    form.setVisible(frmMQ27D::fraComSend, false);
    form.setVisible(frmMQ27D::fraComReceive, false);
}

void Languages::ApplyMessages(const Words& s) {
    m_texts.appTitle = s(0);
    AppMessages& m = m_texts.messages;
    m.saveQuestion = s(104);
    m.saveConfirmation = s(105);
    m.loadFilter = s(100) + s(101);
    m.normalModeWarning = s(0) + u' ' + s(350) + kCrLf + s(351) + kCrLf + kCrLf + s(352);
    m.notPossible = s(360);
    m.standardValuesRemark = s(355) + kCrLf + s(356);
    m.notPossibleWithReason = s(360) + kCrLf + s(361);
    m.fileMissing = s(419);
    m.viewerMissing = s(420);
    m.buzzerWarning = s(421);
    m.closeQuestion = s(422);
}

void Languages::ApplyInterfaceAndLanguage(const Words& s) {
    Form& ports = m_forms.frmInterface();
    ports.setTitle(s(106));
    setCaptions(ports, {{frmInterface::lblCOMPort, s(107)},
                        {frmInterface::cmdOKButton, s(71)},
                        {frmInterface::cmdCancelButton, s(49)}});
    const QString portList = frmInterface::cboPort;
    QStringList entries = ports.items(portList);
    // Entry 0 is "off"; the others are port numbers, filled when the window is shown.
    if (!entries.isEmpty()) {
        entries[0] = s(53);
        ports.setItems(portList, entries);
    }

    Form& dialog = m_forms.frmLanguage();
    dialog.setTitle(s(7));
    setCaptions(dialog, {{frmLanguage::optLanguage[0], QStringLiteral("Default")},
                         {frmLanguage::optLanguage[1], QStringLiteral("Deutsch")},
                         {frmLanguage::optLanguage[2], QStringLiteral("English")},
                         {frmLanguage::optLanguage[3], QStringLiteral("Français")},
                         {frmLanguage::optLanguage[4], QStringLiteral("Nederlands")},
                         {frmLanguage::cmdOK, s(71)}});
}

void Languages::ApplyMainView(const Words& s) {
    ApplyMainViewTexts(m_forms.frmDisplay(), s.language());
}

void Languages::ApplyAbout(const Words& s) {
    Form& about = m_forms.frmAbout();
    about.setTitle(s(113));
    setCaptions(about, {{frmAbout::lblKompaVersion, s(114) + m_texts.versionSuffix},
                        {frmAbout::lblDisplay,
                         s(115) + u' ' + s(0) + QStringLiteral(",  V") + VersionNumber()},
                        {frmAbout::lblCopyright[0], s(116)},
                        {frmAbout::lblCopyright[1], s(117)},
                        {frmAbout::cmdOK, s(71)}});
}

void Languages::ApplyConnectAndSearch(const Words& s) {
    setCaptions(m_forms.frmConnect(),
                {{frmConnect::lblConnection, s(418)}, {frmConnect::cmdCancel, s(49)}});
    setCaptions(m_forms.frmDeviceSearch(), {{frmDeviceSearch::lblDataLEDLegend, s(54)},
                                            {frmDeviceSearch::cmdOK, s(51)},
                                            {frmDeviceSearch::cmdCancel, s(49)}});
}

void Languages::OnLanguageClicked(const QString& element) {
    if (element != frmLanguage::cmdOK) return;
    Form& dialog = m_forms.frmLanguage();
    int checked = 0;
    for (int i = 0; i < kLanguageOptions; ++i) {
        if (dialog.isChecked(languageOption(i))) {
            checked = i;
            break;
        }
    }
    SwitchToLanguage(checked);
    dialog.unload();
}

// The options form one group: choosing one clears the others.
void Languages::OnLanguageEdited(const QString& element) {
    Form& dialog = m_forms.frmLanguage();
    QStringList options;
    for (int i = 0; i < kLanguageOptions; ++i)
        options << languageOption(i);
    if (!options.contains(element) || !dialog.isChecked(element)) return;
    for (const QString& option : options) {
        if (option != element) dialog.setChecked(option, false);
    }
}

void Languages::CheckCurrentLanguage() {
    Form& dialog = m_forms.frmLanguage();
    for (int i = 0; i < kLanguageOptions; ++i)
        dialog.setChecked(languageOption(i), i == languageNumber(m_preferences.language()));
}

#include "moc_languages.cpp"
