#include "extinguish/extinguishdetails.h"

#include "common/preferences.h"
#include "common/texts.h"
#include "display/mainview_elements.h"
#include "extinguish/extinguish_elements.h"
#include "extinguish/modulechoice.h"
#include "values/devicevalues.h"

namespace el = frmExtinguishDetails;

namespace {

constexpr int kFaultRows = 8;
// The help topics of the fault rows follow one another from here.
constexpr int kFirstFaultTopic = 51;
constexpr int kStringOffline = 540;
constexpr int kStringModule = 405;
constexpr int kStringMessages = 372;
constexpr int kFaultStrings[kFaultRows] = {406, 395, 407, 408, 409, 410, 383, 411};

} // namespace

ExtinguishDetails::ExtinguishDetails(Form& window, Form& mainView, const Texts& texts,
                                     const Preferences& preferences, DeviceValues& values)
    : QObject()
    , m_window(window)
    , m_mainView(mainView)
    , m_texts(texts)
    , m_preferences(preferences)
    , m_values(values) {
    Form& w = m_window;
    connect(&w, &Form::loaded, this, &ExtinguishDetails::Form_Load);
    connect(&w, &Form::clicked, this, &ExtinguishDetails::onClicked);
    connect(&w, &Form::edited, this, &ExtinguishDetails::onEdited);
    connect(&w, &Form::mouseClicked, this, &ExtinguishDetails::onMouseClicked);
    connect(&w, &Form::windowChanged, this, &ExtinguishDetails::onWindowChanged);
    connect(&m_tmrRefresh, &FormTimer::timeout, this, &ExtinguishDetails::GetExtDatails);
    connect(&m_mainView, &Form::clicked, this, &ExtinguishDetails::onDisplayClicked);
}

Form& ExtinguishDetails::window() const {
    return m_window;
}

std::uint32_t ExtinguishDetails::storedMark(bool pending) {
    return pending ? colors::rgb(0, 0, 0) : colors::kYellow;
}

void ExtinguishDetails::ShowExtDetails(int Index) {
    Form& w = window();
    w.load();
    applyTexts();
    m_extModuleIndex = modulechoice::clamped(Index);
    w.setValue(el::cboSerialNumber, m_extModuleIndex);
    GetExtDatails();
    m_tmrRefresh.enable();
    w.centreOver(m_mainView);
    w.show(true);
}

void ExtinguishDetails::GetExtDatails() {
    ValueStore* values = m_values.get();
    if (!values) return;
    Form& w = window();
    modulechoice::followBus(w, el::cboSerialNumber, *values, m_preferences.locale());
    const auto m = static_cast<std::int16_t>(m_extModuleIndex);
    for (std::int16_t i = 0; i < kFaultRows; ++i) {
        const bool pending = values->EXT_GetActualFailures(m, i) != 0;
        w.setBackColor(el::picErr[i], pending ? colors::kYellow : colors::kWindowBackground);
        w.setDot(el::picErr[i],
                 values->EXT_GetSavedFailures(m, i) != 0 ? storedMark(pending) : colors::kDefault);
        // A module shows only the faults that it can have.
        const bool valid = values->EXT_GetValidFailureMask(m, i) != 0;
        w.setVisible(el::picErr[i], valid);
        w.setVisible(el::lblErr[i], valid);
    }
    const bool online = values->EXT_GetIsOnline(m) != 0;
    w.setBackColor(el::picExtOnline, online ? colors::kGreen : colors::kWindowBackground);
    w.setVisible(el::lblExtOfflineNote, !online);
    w.setCaption(el::lblSoftwareNo, values->EXT_GetSoftwareNum(m));
    w.setCaption(el::lblParameterNo, values->EXT_GetParameterID(m));
    w.setCaption(el::lblSerialNo,
                 modulechoice::serialText(values->EXT_GetSerialNum(m), m_preferences.locale()));
}

void ExtinguishDetails::applyTexts() {
    Form& w = window();
    const Texts& s = m_texts;
    w.setTitle(s.appTitle + QStringLiteral(" - ") + s.str(kStringModule) + QStringLiteral(" - ") +
               s.str(kStringMessages));
    const std::pair<QString, int> texts[] = {
        {el::lblExtOnlineLegend, 401},
        {el::lblMessages, 372},
        {el::lblSoftwareNoLegend, 46},
        {el::lblParameterNoLegend, 96},
        {el::lblSerialNoLegend, 47},
        {el::lblLegend[0], 62},
        {el::lblLegend[1], 63},
        {el::cmdClose, 76},
        {el::lblExtOfflineNote, kStringOffline},
    };
    for (const auto& [element, index] : texts)
        w.setCaption(element, s.str(index));
    for (int i = 0; i < kFaultRows; ++i)
        w.setCaption(el::lblErr[i], s.str(kFaultStrings[i]));
}

void ExtinguishDetails::Form_Load() {
    Form& w = window();
    m_tmrRefresh.disable();
    m_tmrRefresh.setInterval(234);
    modulechoice::resetRows(w, el::cboSerialNumber);
    // The key under the rows: a box as a pending fault shows, and one as a stored.
    w.setBackColor(el::picLegend[0], colors::kYellow);
    w.setBackColor(el::picLegend[1], colors::kWindowBackground);
    w.setDot(el::picLegend[1], storedMark(false));
    w.setVisible(el::lblExtOfflineNote, false);
}

void ExtinguishDetails::onClicked(const QString& element) {
    if (element == el::cmdClose) window().unload();
}

void ExtinguishDetails::onEdited(const QString& element) {
    if (element != el::cboSerialNumber) return;
    m_extModuleIndex = modulechoice::chosen(window(), element);
    GetExtDatails();
}

void ExtinguishDetails::onMouseClicked(const QString& element, int button) {
    for (int i = 0; i < kFaultRows; ++i)
        if (element == el::picErr[i])
            Q_EMIT helpRequested(button, kFirstFaultTopic + i, window().caption(el::lblErr[i]));
}

void ExtinguishDetails::onWindowChanged(Form::WindowChange change) {
    if (change == Form::WindowChange::Hidden || change == Form::WindowChange::Unloaded)
        m_tmrRefresh.disable();
}

void ExtinguishDetails::onDisplayClicked(const QString& element) {
    for (int m = 0; m < modulechoice::kModules; ++m)
        if (element == frmDisplay::cmdExtinguisherMessages[m]) ShowExtDetails(m);
}
