#include "extinguish/extinguishdetails.h"

#include "common/preferences.h"
#include "common/texts.h"
#include "display/mainview_elements.h"
#include "extinguish/extinguish_elements.h"
#include "extinguish/modulechoice.h"
#include "values/devicevalues.h"

namespace ed = frmExtinguishDetails;

namespace {

constexpr int kFaultRows = 8;
// The help topics of the fault rows follow one another from here.
constexpr int kFirstFaultTopic = 51;
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
    connect(&w, &Form::clicked, this, &ExtinguishDetails::OnClicked);
    connect(&w, &Form::edited, this, &ExtinguishDetails::OnEdited);
    connect(&w, &Form::mouseClicked, this, &ExtinguishDetails::OnMouseClicked);
    connect(&w, &Form::windowChanged, this, &ExtinguishDetails::OnWindowChanged);
    connect(&m_tmrRefresh, &FormTimer::timeout, this, &ExtinguishDetails::GetExtDatails);
    connect(&m_mainView, &Form::clicked, this, &ExtinguishDetails::OnDisplayClicked);
}

Form& ExtinguishDetails::Window() const {
    return m_window;
}

std::uint32_t ExtinguishDetails::StoredMark(bool pending) {
    return pending ? colors::rgb(0, 0, 0) : colors::kYellow;
}

void ExtinguishDetails::ShowExtDetails(int Index) {
    Form& w = Window();
    w.load();
    ApplyTexts();
    m_extModuleIndex = modulechoice::clamped(Index);
    w.setValue(ed::cboSerialNumber, m_extModuleIndex);
    GetExtDatails();
    m_tmrRefresh.enable();
    w.centreOver(m_mainView);
    w.show(true);
}

void ExtinguishDetails::GetExtDatails() {
    ValueStore* values = m_values.get();
    if (!values) return;
    Form& w = Window();
    modulechoice::followBus(w, ed::cboSerialNumber, *values, m_preferences.locale());
    const auto m = static_cast<std::int16_t>(m_extModuleIndex);
    for (std::int16_t i = 0; i < kFaultRows; ++i) {
        const bool pending = values->EXT_GetActualFailures(m, i) != 0;
        w.setBackColor(ed::picErr[i], pending ? colors::kYellow : colors::kWindowBackground);
        w.setDot(ed::picErr[i],
                 values->EXT_GetSavedFailures(m, i) != 0 ? StoredMark(pending) : colors::kDefault);
        // A module shows only the faults that it can have.
        const bool valid = values->EXT_GetValidFailureMask(m, i) != 0;
        w.setVisible(ed::picErr[i], valid);
        w.setVisible(ed::lblErr[i], valid);
    }
    const bool online = values->EXT_GetIsOnline(m) != 0;
    w.setBackColor(ed::picExtOnline, online ? colors::kGreen : colors::kWindowBackground);
    w.setVisible(ed::lblExtOfflineNote, !online);
    w.setCaption(ed::lblSoftwareNo, values->EXT_GetSoftwareNum(m));
    w.setCaption(ed::lblParameterNo, values->EXT_GetParameterID(m));
    w.setCaption(ed::lblSerialNo,
                 modulechoice::serialText(values->EXT_GetSerialNum(m), m_preferences.locale()));
}

void ExtinguishDetails::ApplyTexts() {
    Form& w = Window();
    const Texts& s = m_texts;
    w.setTitle(s.appTitle + QStringLiteral(" - ") + s.str(kStringModule) + QStringLiteral(" - ") +
               s.str(kStringMessages));
    const std::pair<QString, int> texts[] = {
        {ed::lblExtOnlineLegend, 401},
        {ed::lblMessages, 372},
        {ed::lblSoftwareNoLegend, 46},
        {ed::lblParameterNoLegend, 96},
        {ed::lblSerialNoLegend, 47},
        {ed::lblLegend[0], 62},
        {ed::lblLegend[1], 63},
        {ed::cmdClose, 76},
        {ed::lblExtOfflineNote, modulechoice::kStringOffline},
    };
    for (const auto& [element, index] : texts)
        w.setCaption(element, s.str(index));
    for (int i = 0; i < kFaultRows; ++i)
        w.setCaption(ed::lblErr[i], s.str(kFaultStrings[i]));
}

void ExtinguishDetails::Form_Load() {
    Form& w = Window();
    m_tmrRefresh.disable();
    m_tmrRefresh.setInterval(234);
    modulechoice::resetRows(w, ed::cboSerialNumber);
    // The key under the rows: a box as a pending fault shows, and one as a stored.
    w.setBackColor(ed::picLegend[0], colors::kYellow);
    w.setBackColor(ed::picLegend[1], colors::kWindowBackground);
    w.setDot(ed::picLegend[1], StoredMark(false));
    w.setVisible(ed::lblExtOfflineNote, false);
}

void ExtinguishDetails::OnClicked(const QString& element) {
    if (element == ed::cmdClose) Window().unload();
}

void ExtinguishDetails::OnEdited(const QString& element) {
    if (element != ed::cboSerialNumber) return;
    m_extModuleIndex = modulechoice::chosen(Window(), element);
    GetExtDatails();
}

void ExtinguishDetails::OnMouseClicked(const QString& element, int button) {
    for (int i = 0; i < kFaultRows; ++i)
        if (element == ed::picErr[i])
            Q_EMIT HelpRequested(button, kFirstFaultTopic + i, Window().caption(ed::lblErr[i]));
}

void ExtinguishDetails::OnWindowChanged(Form::WindowChange change) {
    if (change == Form::WindowChange::Hidden || change == Form::WindowChange::Unloaded)
        m_tmrRefresh.disable();
}

void ExtinguishDetails::OnDisplayClicked(const QString& element) {
    for (int m = 0; m < modulechoice::kModules; ++m)
        if (element == frmDisplay::cmdExtinguisherMessages[m]) ShowExtDetails(m);
}

#include "moc_extinguishdetails.cpp"
