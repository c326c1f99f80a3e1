#include "shell/livestate.h"

#include "common/colors.h"
#include "common/texts.h"
#include "devicesettings/devicesettings_elements.h"
#include "display/ledrhythm.h"
#include "display/mainview_elements.h"
#include "extinguish/extinguish_elements.h"
#include "link/devicesession.h"
#include "localize/localize_elements.h"
#include "shell/allforms.h"

#include <QDir>
#include <QFileInfo>

namespace el = frmDisplay;
namespace es = frmExtinguishSettings;
namespace ds = frmDeviceSettings;

namespace {

constexpr int kStringNoAnswer = 820;
constexpr int kStringFileShown = 821;
constexpr int kStringFileLock = 822;

// The banner's value tells the view how to show the pages behind it.
constexpr double kBannerLive = 0;
constexpr double kBannerSilent = 1;
constexpr double kBannerFile = 2;

QString clockTime(const QDateTime& time) {
    return time.toString(QStringLiteral("HH:mm:ss"));
}

} // namespace

LiveState::LiveState(AllForms& forms, const Texts& texts, const DeviceSession& session,
                     LedRhythm& leds)
    : QObject()
    , m_forms(forms)
    , m_texts(texts)
    , m_session(session)
    , m_leds(leds) {
    showBanner();
}

void LiveState::answerMissed() {
    if (isFileShown() || m_session.serialNo().isEmpty()) return;
    if (++m_misses < kMissesForSilence || m_silent) return;
    m_silent = true;
    // A device that never answered is silent since it was first asked.
    m_silentSince = m_lastAnswer.isValid() ? m_lastAnswer : QDateTime::currentDateTime();
    m_leds.Hold(true);
    showBanner();
    Q_EMIT silenceBegan(m_session.serialNo(), m_silentSince);
}

void LiveState::telegramTaken(const QDateTime& time, bool fromFile) {
    if (fromFile) {
        m_fileTime = time;
        return;
    }
    m_lastAnswer = time;
    m_misses = 0;
    if (!m_silent) return;
    m_silent = false;
    m_leds.Hold(false);
    showBanner();
    Q_EMIT silenceEnded();
}

void LiveState::showFile(const QString& path) {
    if (m_silent) {
        m_silent = false;
        m_leds.Hold(false);
        Q_EMIT silenceEnded();
    }
    m_misses = 0;
    m_file = path;
    showBanner();
    applyLocks();
}

void LiveState::showLive() {
    if (!isFileShown()) return;
    m_file.clear();
    m_fileTime = {};
    unlockAll();
    showBanner();
}

void LiveState::applyTexts() {
    showBanner();
    if (isFileShown()) applyLocks();
}

void LiveState::showBanner() {
    Form& view = m_forms.frmDisplay();
    QString text;
    double state = kBannerLive;
    if (isFileShown()) {
        state = kBannerFile;
        text = m_texts.str(kStringFileShown)
                   .arg(QFileInfo(m_file).fileName(),
                        m_fileTime.isValid()
                            ? m_fileTime.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))
                            : QStringLiteral("-"));
    } else if (m_silent) {
        state = kBannerSilent;
        text = m_texts.str(kStringNoAnswer).arg(m_session.serialNo(), clockTime(m_silentSince));
    }
    for (int page = el::lblStateBanner.first(); page <= el::lblStateBanner.last(); ++page) {
        const QString banner = el::lblStateBanner[page];
        view.setCaption(banner, text);
        view.setValue(banner, state);
        view.setBackColor(banner, state == kBannerSilent ? colors::kYellow : colors::kDefault);
        view.setToolTip(banner, isFileShown() ? QDir::toNativeSeparators(m_file) : QString());
        view.setVisible(banner, state != kBannerLive);
    }
}

void LiveState::applyLocks() {
    if (!isFileShown()) return;
    const QString why = m_texts.str(kStringFileLock);
    Form& view = m_forms.frmDisplay();
    for (const QString& e :
         {el::cmdAlarmReset[0], el::cmdAlarmReset[1], el::cmdErrReset.name(),
          el::cmdSettings.name(), el::cmdSettingsStandard.name(), el::cmdSettingsAssume.name(),
          el::cmdAirFlowSet.name(), el::cmdAirFlowStandard.name(), el::cmdAirFlowInit.name(),
          el::cmdRelaySet.name(), el::cmdRelayAssume.name(), el::cmdSensorTempAlarmSet.name(),
          el::cmdSensorTempAlarmAssume.name(), el::cmdShowLocLearnMode[0],
          el::cmdShowLocLearnMode[1]})
        lock(view, e, why);
    for (int m = el::cmdExtinguisherIdent.first(); m <= el::cmdExtinguisherIdent.last(); ++m)
        lock(view, el::cmdExtinguisherIdent[m], why);
    Form& modules = m_forms.frmExtinguishSettings();
    lock(modules, es::cmdSettings, why);
    lock(modules, es::cmdSettingsAssume, why);
    Form& device = m_forms.frmDeviceSettings();
    for (const QString& e : {ds::cmdSettings.name(), ds::cmdSettingsAssume.name(),
                             ds::cmdBetaSettings.name(), ds::cmdBetaSettingsAssume.name()})
        lock(device, e, why);
    Form& learn = m_forms.frmLocalizeLearn();
    lock(learn, frmLocalizeLearn::cmdLocSingleHoleLearningStart, why);
    lock(learn, frmLocalizeLearn::cmdLocParameterAssume, why);
}

void LiveState::lock(Form& form, const QString& element, const QString& why) {
    // Locked at an earlier telegram and left so: the usual case while a file is shown.
    const Element& now = form.element(element);
    if (!now.enabled && now.toolTip == why) return;
    const auto key = std::make_pair(&form, element);
    const auto saved = m_locked.find(key);
    // A button the window enabled again since the last lock is saved as it is now.
    if (saved == m_locked.end())
        m_locked.insert(key, {now.enabled, now.toolTip});
    else if (now.enabled)
        saved->first = true;
    form.setEnabled(element, false);
    form.setToolTip(element, why);
}

void LiveState::unlockAll() {
    for (auto it = m_locked.cbegin(); it != m_locked.cend(); ++it) {
        Form& form = *it.key().first;
        form.setEnabled(it.key().second, it.value().first);
        form.setToolTip(it.key().second, it.value().second);
    }
    m_locked.clear();
}

#include "moc_livestate.cpp"
