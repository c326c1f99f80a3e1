#include "shell/languages.h"

#include "common/appstate.h"
#include "common/stringtable.h"

namespace {

const QString kCrLf = QStringLiteral("\r\n");
constexpr int kTabCount = 8;
constexpr int kLanguageOptions = 5;

QString twoDigits(int number) {
    return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

// Captions by element name, applied in one go.
using Captions = std::initializer_list<std::pair<const char*, QString>>;

void setCaptions(Form& form, Captions captions) {
    for (const auto& [element, caption] : captions)
        form.setCaption(QString::fromLatin1(element), caption);
}

QString languageOption(int index) {
    return Form::indexed(u"optLanguage", index);
}

} // namespace

class Languages::Texts {
public:
    explicit Texts(int language)
        : m_language(language) {}
    int language() const { return m_language; }
    QString operator()(int index) const { return StringTable::instance().text(m_language, index); }

private:
    int m_language;
};

Languages::Languages(AppState& state)
    : QObject()
    , m_state(state) {
    Form& dialog = m_state.forms.frmLanguage();
    connect(&dialog, &Form::loaded, this, &Languages::checkCurrentLanguage);
    connect(&dialog, &Form::clicked, this, &Languages::onLanguageClicked);
    connect(&dialog, &Form::edited, this, &Languages::onLanguageEdited);
}

void Languages::SwitchToLanguage(int language) {
    const Texts s(StringTable::clampLanguage(language));
    applyStartWindow(s);
    applyMessages(s);
    applyInterfaceAndLanguage(s);
    applyMainView(s);
    applyAbout(s);
    applyConnectAndSearch(s);
    if (m_state.settings.GetLanguage() != s.language()) m_state.settings.SetLanguage(s.language());
    m_state.g.gLanguage = s.language();
    Q_EMIT languageSwitched(s.language());
}

void Languages::ShowLanguage() {
    SwitchToLanguage(m_state.g.gLanguage);
    m_state.forms.frmLanguage().show(false);
}

QString Languages::versionText() {
    return QStringLiteral(" - V") + versionNumber();
}

QString Languages::versionNumber() {
    return QString::number(MQ27_VERSION_MAJOR) + u'.' + twoDigits(MQ27_VERSION_MINOR) + u'.' +
           twoDigits(MQ27_VERSION_PATCH);
}

void Languages::applyStartWindow(const Texts& s) {
    Form& form = m_state.forms.frmMQ27D();
    form.setTitle(s(0) + versionText());
    setCaptions(form,
                {{"mnuFile", s(1)},
                 {"mnuLoad", s(3)},
                 {"mnuCloseApp", s(4)},
                 {"mnuSettings", s(5)},
                 {"mnuInterface", s(106)},
                 {"mnuLanguage", s(7)},
                 {"mnuHelp", s(8)},
                 {"mnuInfo", s(9)},
                 {"lblAppName", QString()},
                 {"lblReceive", s(102)},
                 {"lblSend", s(103)},
                 {"txtComSend", QString()},
                 {"txtComReceive", QString()},
                 {"lblDevice", QString()},
                 {"fraComSend", QStringLiteral("COM Port output (sent data bytes, HEX)")},
                 {"fraComReceive", QStringLiteral("COM Port input (received data bytes, HEX)")},
                 {"chkSendEnable", QStringLiteral("Send Enable")}});
    // The monitor frames belong to a development build; this one keeps them hidden.
    form.setVisible(QStringLiteral("fraComSend"), false);
    form.setVisible(QStringLiteral("fraComReceive"), false);
}

void Languages::applyMessages(const Texts& s) {
    m_state.g.gAppTitle = s(0);
    AppMessages& m = m_state.messages;
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

void Languages::applyInterfaceAndLanguage(const Texts& s) {
    Form& ports = m_state.forms.frmInterface();
    ports.setTitle(s(106));
    setCaptions(ports,
                {{"lblCOMPort", s(107)}, {"cmdOKButton", s(71)}, {"cmdCancelButton", s(49)}});
    const QString portList = QStringLiteral("cboPort");
    QStringList entries = ports.items(portList);
    // Entry 0 is "off"; the others are port numbers, filled when the window is shown.
    if (!entries.isEmpty()) {
        entries[0] = s(53);
        ports.setItems(portList, entries);
    }

    Form& dialog = m_state.forms.frmLanguage();
    dialog.setTitle(s(7));
    setCaptions(dialog, {{"optLanguage_0", QStringLiteral("Default")},
                         {"optLanguage_1", QStringLiteral("Deutsch")},
                         {"optLanguage_2", QStringLiteral("English")},
                         {"optLanguage_3", QStringLiteral("Français")},
                         {"optLanguage_4", QStringLiteral("Nederlands")},
                         {"cmdOK", s(71)}});
}

void Languages::applyMainView(const Texts& s) {
    Form& view = m_state.forms.frmDisplay();
    setCaptions(view, {{"mnuFile", s(1)},
                       {"mnuLoad", s(3)},
                       {"mnuSave", s(2)},
                       {"mnuExit", s(4)},
                       {"mnuSettings", s(5)},
                       {"mnuInterface", s(106)},
                       {"mnuLanguage", s(7)},
                       {"mnuCelsius", QStringLiteral("°C")},
                       {"mnuFahrenheit", QStringLiteral("°F")},
                       {"mnuPercentMeter", QStringLiteral("%/m")},
                       {"mnuPercentFeet", QStringLiteral("%/ft")},
                       {"mnuDeviceSelect", s(12)},
                       {"mnuDeviceSearch", s(13)},
                       {"mnuHelp", s(8)},
                       {"mnuPDFHelp", s(68)},
                       {"mnuInfo", s(9)}});
    const QString a = QStringLiteral(" A");
    const QString b = QStringLiteral(" B");
    const QString tabs[kTabCount] = {s(10),     s(371), s(372),     s(11) + a,
                                     s(11) + b, s(24),  s(369) + a, s(369) + b};
    for (int i = 0; i < kTabCount; ++i) {
        view.setCaption(Form::indexed(u"tabDisplay", i), tabs[i]);
        view.setCaption(Form::indexed(u"lblReceiveLEDLegend", i), s(54));
        view.setCaption(Form::indexed(u"lblSerialNoLegend", i), s(47));
    }
}

void Languages::applyAbout(const Texts& s) {
    Form& about = m_state.forms.frmAbout();
    about.setTitle(s(113));
    setCaptions(about,
                {{"lblKompaVersion", s(114) + m_state.g.gVersionSuffix},
                 {"lblDisplay", s(115) + u' ' + s(0) + QStringLiteral(",  V") + versionNumber()},
                 {"lblCopyright_0", s(116)},
                 {"lblCopyright_1", s(117)},
                 {"cmdOK", s(71)}});
}

void Languages::applyConnectAndSearch(const Texts& s) {
    setCaptions(m_state.forms.frmConnect(), {{"lblConnection", s(418)}, {"cmdCancel", s(49)}});
    setCaptions(m_state.forms.frmDeviceSearch(),
                {{"lblDataLEDLegend", s(54)}, {"cmdOK", s(51)}, {"cmdCancel", s(49)}});
}

void Languages::onLanguageClicked(const QString& element) {
    if (element != QStringLiteral("cmdOK")) return;
    Form& dialog = m_state.forms.frmLanguage();
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
void Languages::onLanguageEdited(const QString& element) {
    Form& dialog = m_state.forms.frmLanguage();
    if (!element.startsWith(u"optLanguage_") || !dialog.isChecked(element)) return;
    for (int i = 0; i < kLanguageOptions; ++i) {
        if (languageOption(i) != element) dialog.setChecked(languageOption(i), false);
    }
}

void Languages::checkCurrentLanguage() {
    Form& dialog = m_state.forms.frmLanguage();
    for (int i = 0; i < kLanguageOptions; ++i)
        dialog.setChecked(languageOption(i), i == m_state.g.gLanguage);
}
