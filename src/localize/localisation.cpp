#include "localize/localisation.h"

#include "common/fieldcheck.h"
#include "common/formmodel.h"
#include "common/numberformat.h"
#include "common/services.h"
#include "common/texts.h"
#include "common/waitingnote.h"
#include "display/mainview.h"
#include "display/mainview_elements.h"
#include "engine/commands.h"
#include "engine/pollengine.h"
#include "engine/settinglimits.h"
#include "engine/settingtable.h"
#include "localize/localize_elements.h"
#include "values/devicevalues.h"

#include <cmath>
#include <utility>

namespace el = frmDisplay;
namespace ll = frmLocalizeLearn;
using numberformat::fixed;

namespace {

constexpr int kHoles = 5;
constexpr int kLinesPerHole = 5;
constexpr int kUnloadMs = 111;
constexpr int kTimeoutMs = 3216;
constexpr int kLocalisationParameter = 133;
constexpr int kStringHole = 520;
// A typed text longer than this is no number the device could take.
constexpr qsizetype kLongestNumber = 16;
// Neighbouring holes lie at least this far apart, in seconds of transport time.
constexpr float kLeastDistance = 2.0F;

// The LED states of the lamps, as the main view's LEDs hold them.
constexpr double kDark = 0;
constexpr double kFlash = 1;
constexpr double kBlink = 2;

std::int32_t wholeOrZero(double value) {
    return numberformat::toInt32(value).value_or(0);
}

std::size_t at(int i) {
    return static_cast<std::size_t>(i);
}

// The fan voltages of the learn window take the limits of the air-flow page's.
const SettingDescriptor& fanVoltage() {
    static const SettingDescriptor& fan = settingNamed(QStringLiteral("fan-voltage"));
    return fan;
}

// What a measurement may change; locked while one runs.
QStringList entryElements() {
    QStringList list;
    for (int i = 0; i < kHoles; ++i)
        list << ll::optLocHole[i] << ll::txtLocTime[i];
    list << ll::txtLocNumberOfHoles << ll::txtBlowTime << ll::txtBlowFanVoltage
         << ll::txtSuckFanVoltage << ll::txtLocTemporaryBlowTimeMinutes
         << ll::txtLocTemporaryBlowTimeSeconds << ll::cmdLocParameterAssume;
    return list;
}

} // namespace

Localisation::Localisation(Form& window, Form& display, const Preferences& preferences,
                           const Texts& texts, UserDialogs* dialogs, DeviceValues& values,
                           DeviceCommands& commands, PollEngine& engine, MainView& mainView)
    : QObject()
    , m_window(window)
    , m_display(display)
    , m_preferences(preferences)
    , m_texts(texts)
    , m_dialogs(dialogs)
    , m_values(values)
    , m_commands(commands)
    , m_mainView(mainView) {
    connect(&m_tmrUnload, &FormTimer::timeout, this, &Localisation::tmrUnload_Timer);
    connect(&m_tmrTimeout, &FormTimer::timeout, this, &Localisation::tmrTimeout_Timer);
    connect(&m_tmrCompareLocalizeSet, &FormTimer::timeout, this,
            &Localisation::tmrCompareLocalizeSet_Timer);
    // The lamps go in the rhythm of the main view's LEDs.
    LedRhythm& leds = m_mainView.Leds();
    connect(&leds.tmrFlash(), &FormTimer::timeout, this, [this] {
        m_flashLit = !m_flashLit;
        PaintLamps(m_flashLit, m_blinkLit);
    });
    connect(&leds.tmrBlink(), &FormTimer::timeout, this, [this] {
        m_blinkLit = !m_blinkLit;
        PaintLamps(m_flashLit, m_blinkLit);
    });
    connect(&engine, &PollEngine::WriteSent, this, &Localisation::OnWriteSent);
    connect(&View(), &Form::clicked, this, &Localisation::OnDisplayClicked);
    Form& w = Window();
    connect(&w, &Form::clicked, this, &Localisation::OnWindowClicked);
    connect(&w, &Form::edited, this, &Localisation::OnWindowEdited);
    connect(&w, &Form::windowChanged, this,
            [this](Form::WindowChange change) { OnWindowChanged(static_cast<int>(change)); });
    w.setVisible(ll::lblLocWaiting, false);
    for (int d = 0; d < 2; ++d)
        w.setRange(ll::ctlSmokeLevel[d], 0, 100);
    // Until the window is first opened it stands in the learn layout, nothing measured.
    ShowLayout(true);
    ShowMeasuring();
}

Form& Localisation::Window() const {
    return m_window;
}

Form& Localisation::View() const {
    return m_display;
}

std::optional<double> Localisation::Number(const QString& text) {
    QString t = text.trimmed();
    if (t.isEmpty() || t.size() > kLongestNumber) return std::nullopt;
    return numberformat::plainDecimal(t.replace(u',', u'.'));
}

// A loop "for i from 0 to n - 1" over the holes: a count of 2.5 takes holes 0 and 1.
int Localisation::HolesOf(double count) const {
    if (!(count >= 1)) return 0;
    return count >= kHoles ? kHoles : static_cast<int>(std::floor(count));
}

void Localisation::ShowLocData() {
    ValueStore* values = m_values.get();
    if (!values) return;
    ValueStore& v = *values;
    LocLearnModeActive = v.DET_GetLearningIsOn() != 0;
    LocMeasuringActive = v.DET_GetLocIsActive() != 0;
    ShowLamps();
    ShowMeasuring();
    ReadBounds();
    ShowTransportTimes();
    ShowNumberOfHoles();
    Form& display = View();
    const QLocale& locale = m_preferences.locale();
    display.setCaption(el::lblBlowTime, numberformat::plain(v.DET_GetBlowTime(), locale));
    display.setCaption(el::lblSuckFanVoltage,
                       fixed(static_cast<double>(v.DET_GetSuckFanLocVoltage()) / 1000, 1, locale));
    display.setCaption(el::lblBlowFanVoltage,
                       fixed(static_cast<double>(v.DET_GetBlowFanVoltage()) / 1000, 1, locale));
    ShowSmokeLevels();

    if (!LocLearnModeActive && !LocMeasuringActive) {
        LocMeasurementSeen = false;
        LocHolesDone = 0;
    }
    if (!LocLearnModeActive) return;
    if (LocMeasuringActive) {
        LocMeasurementSeen = true;
        return;
    }
    const double holes = Number(Window().caption(ll::txtLocNumberOfHoles)).value_or(0);
    if (LocMeasurementSeen) EvaluateMeasurement(holes);
    CheckTimeOrder(holes);
}

void Localisation::ReadBounds() {
    ValueStore& v = *m_values.get();
    const float minimum[kHoles] = {v.DET_GetSuckTime1Min(), v.DET_GetSuckTime2Min(),
                                   v.DET_GetSuckTime3Min(), v.DET_GetSuckTime4Min(),
                                   v.DET_GetSuckTime5Min()};
    const float maximum[kHoles] = {v.DET_GetSuckTime1Max(), v.DET_GetSuckTime2Max(),
                                   v.DET_GetSuckTime3Max(), v.DET_GetSuckTime4Max(),
                                   v.DET_GetSuckTime5Max()};
    for (int i = 0; i < kHoles; ++i) {
        LocHoleMinRead[at(i)] = wholeOrZero(minimum[i]);
        LocHoleMaxRead[at(i)] = wholeOrZero(maximum[i]);
    }
    LocFirePlaceSuckTime = wholeOrZero(v.DET_GetFirePlaceSuckTime());
    LocFirePlace = wholeOrZero(v.DET_GetFirePlace());
}

// A window reaches half-way to the next hole, so each hole's transport time is its doubled
// upper bound less the previous hole's time; a hole without bounds has none.
void Localisation::ShowTransportTimes() {
    double times[kHoles] = {};
    for (std::size_t i = 0; i < kHoles; ++i) {
        if (LocHoleMinRead[i] <= 0 || LocHoleMaxRead[i] <= 0) continue;
        times[i] = i == 0 ? 2.0 * LocHoleMinRead[0] / 100
                          : 2.0 * LocHoleMaxRead[i - 1] / 100 - times[i - 1];
    }
    for (int i = 0; i < kHoles; ++i)
        View().setCaption(el::lblLocTime[i], fixed(times[i], 1, m_preferences.locale()));
}

// The first hole without a time, counted from the last: a gap anywhere ends the pipe there.
void Localisation::ShowNumberOfHoles() {
    Form& display = View();
    int holes = kHoles;
    for (int i = kHoles - 1; i >= 0; --i) {
        bool isNumber = false;
        const double time =
            m_preferences.locale().toDouble(display.caption(el::lblLocTime[i]), &isNumber);
        if (isNumber && time == 0) holes = i;
    }
    display.setCaption(el::lblLocNumberOfHoles, QString::number(holes));
}

void Localisation::ShowLamps() {
    Window().setValue(ll::picLocLearnModeLED, LocLearnModeActive ? kFlash : kDark);
    Window().setValue(ll::picLocLearnActivLED, LocMeasuringActive ? kBlink : kDark);
    PaintLamps(m_flashLit, m_blinkLit);
}

void Localisation::PaintLamps(bool flashLit, bool blinkLit) {
    Form& w = Window();
    const bool learnLit = w.value(ll::picLocLearnModeLED) == kFlash && flashLit;
    const bool activLit = w.value(ll::picLocLearnActivLED) == kBlink && blinkLit;
    w.setBackColor(ll::picLocLearnModeLED, learnLit ? colors::kGreen : colors::kWindowBackground);
    w.setBackColor(ll::picLocLearnActivLED, activLit ? colors::kGreen : colors::kWindowBackground);
}

// The window's own bar graphs follow the smoke while a measurement draws it in.
void Localisation::ShowSmokeLevels() {
    ValueStore& v = *m_values.get();
    Form& w = Window();
    for (std::int16_t d = 0; d < 2; ++d)
        w.setValue(ll::ctlSmokeLevel[d], static_cast<double>(v.DET_GetSmokeValueRatio(d)) / 10);
    w.setVisible(ll::ctlSmokeLevel[1], v.GetHasTwoDetectors() != 0);
}

void Localisation::ShowMeasuring() {
    Form& w = Window();
    w.setVisible(ll::cmdLocSingleHoleLearningStart, !LocMeasuringActive);
    w.setVisible(ll::cmdLocSingleHoleLearningAbort, LocMeasuringActive);
    for (const QString& element : entryElements())
        w.setEnabled(element, !LocMeasuringActive);
}

// A measurement has just ended in learn mode: the lamp of the hole whose window holds the
// time, and the time into the chosen hole's field.
void Localisation::EvaluateMeasurement(double holes) {
    LocMeasurementSeen = false;
    if (LocSingleHoleAborted) {
        LocSingleHoleAborted = false;
        return;
    }
    Form& w = Window();
    const int n = HolesOf(holes);
    const double suckTime = m_values.get()->DET_GetFirePlaceSuckTime();
    for (int i = 0; i < n; ++i) {
        if (suckTime >= LocHoleMinRead[at(i)] && suckTime <= LocHoleMaxRead[at(i)]) {
            w.setBackColor(ll::picLocFirePlaceTest[i], colors::kRed);
            break;
        }
        w.setBackColor(ll::picLocFirePlaceTest[i], colors::kWindowBackground);
    }
    for (int i = 0; i < n; ++i) {
        if (!w.isChecked(ll::optLocHole[i])) continue;
        w.setCaption(ll::txtLocTime[i], fixed(suckTime / 100, 1, m_preferences.locale()));
        LocHolesDone = static_cast<std::uint16_t>(LocHolesDone | (1U << i));
    }
    for (int i = 0; i < n; ++i)
        if (LocHolesDone & (1U << i)) w.setBackColor(ll::txtLocTime[i], colors::kGreen);
}

// Each round marks the first fault it finds; a field found good keeps its colour.
void Localisation::CheckTimeOrder(double holes) {
    Form& w = Window();
    const int n = HolesOf(holes);
    for (int i = 1; i < n; ++i) {
        const std::optional<double> previous = Number(w.caption(ll::txtLocTime[i - 1]));
        const std::optional<double> time = Number(w.caption(ll::txtLocTime[i]));
        if (!previous) {
            w.setBackColor(ll::txtLocTime[i - 1], colors::kYellow);
        } else if (!time) {
            w.setBackColor(ll::txtLocTime[i], colors::kYellow);
        } else if (Number(w.caption(ll::txtLocTime[0])).value_or(0) <= 0) {
            w.setBackColor(ll::txtLocTime[0], colors::kYellow);
        } else if (*time < *previous + 2) {
            w.setBackColor(ll::txtLocTime[i], colors::kYellow);
        }
    }
}

void Localisation::cmdShowLocLearnMode_Click(int Index) {
    if (Index < 0 || Index > 1) return;
    Form& display = View();
    if (!display.isChecked(el::chkLocalization[0])) {
        if (UserDialogs* dialogs = m_dialogs)
            dialogs->information(m_texts.messages.notPossibleWithReason, m_texts.appTitle);
        return;
    }
    Q_EMIT LanguageRefreshNeeded();
    Window().setTitle(display.caption(el::tabDisplay[frmDisplayPage::Localisation]) +
                      QStringLiteral(" - ") + display.caption(el::cmdShowLocLearnMode[Index]));
    ShowLocLearnMode(Index);
    Window().show(true);
}

void Localisation::ShowLayout(bool learn) {
    Form& w = Window();
    for (int i = 0; i < kHoles; ++i) {
        w.setVisible(ll::optLocHole[i], learn);
        w.setVisible(ll::txtLocTime[i], learn);
        w.setVisible(ll::lblLocTimeUnit[i], learn);
        w.setVisible(ll::lblLocPlace[i], !learn);
        w.setVisible(ll::picLocFirePlaceTest[i], !learn);
    }
    for (const QString& element :
         {ll::txtBlowTime.name(), ll::lblBlowTimeLegend.name(), ll::lblBlowTimeUnit.name(),
          ll::txtBlowFanVoltage.name(), ll::lblBlowFanVoltageLegend.name(),
          ll::lblBlowFanVoltageUnit.name(), ll::txtSuckFanVoltage.name(),
          ll::lblSuckFanVoltageLegend.name(), ll::lblSuckFanVoltageUnit.name(),
          ll::txtLocNumberOfHoles.name(), ll::lblLocNumberOfHolesLegend.name(),
          ll::lblLocSingleHoleLearningLegend.name(), ll::lblLocLearnModeLEDLegend.name(),
          ll::fraLocLernModeLegend.name(), ll::cmdLocParameterAssume.name()})
        w.setVisible(element, learn);
    for (int i = 0; i < 3; ++i) {
        w.setVisible(ll::cmdLocalizationHelp[i], learn);
        w.setEnabled(ll::cmdLocalizationHelp[i], false);
    }
    for (const QString& element :
         {ll::lblLocSingleHoleTestLegend.name(), ll::lblLocTestModeLEDLegend.name(),
          ll::fraLocTestModeLegend.name()})
        w.setVisible(element, !learn);
}

void Localisation::ShowLocLearnMode(int Index) {
    m_tmrUnload.disable();
    m_tmrTimeout.disable();
    m_tmrUnload.setInterval(kUnloadMs);
    m_tmrTimeout.setInterval(kTimeoutMs);
    Form& w = Window();
    const Form& display = View();
    for (int i = 0; i < kHoles; ++i) {
        w.setBackColor(ll::txtLocTime[i], colors::kWindowBackground);
        w.setBackColor(ll::picLocFirePlaceTest[i], colors::kWindowBackground);
    }

    ShowLayout(Index == 0);
    ShowMeasuring();
    LocHoleMinSet = LocHoleMinRead;
    LocHoleMaxSet = LocHoleMaxRead;
    for (int i = 0; i < kHoles; ++i)
        w.setCaption(ll::txtLocTime[i], display.caption(el::lblLocTime[i]));
    w.setCaption(ll::txtLocNumberOfHoles, display.caption(el::lblLocNumberOfHoles));
    w.setToolTip(ll::txtLocNumberOfHoles, QStringLiteral("2 - 5"));
    txtLocNumberOfHoles_Validate();

    if (Index == 1) {
        for (int i = 0; i < kHoles; ++i) {
            w.setVisible(ll::optLocHole[i], false);
            w.setVisible(ll::txtLocTime[i], false);
            w.setVisible(ll::lblLocTimeUnit[i], false);
            w.setVisible(ll::lblLocPlace[i], false);
            w.setVisible(ll::picLocFirePlaceTest[i], false);
            w.setBackColor(ll::picLocFirePlaceTest[i], colors::kWindowBackground);
        }
        const int holes = HolesOf(Number(w.caption(ll::txtLocNumberOfHoles)).value_or(0));
        for (int i = 0; i < holes; ++i) {
            w.setVisible(ll::picLocFirePlaceTest[i], true);
            w.setVisible(ll::lblLocPlace[i], true);
        }
    }

    const QString blowTime = display.caption(el::lblBlowTime);
    w.setCaption(ll::txtBlowTime, blowTime);
    w.setToolTip(ll::txtBlowTime, QStringLiteral("10 - 255 ") + w.caption(ll::lblBlowTimeUnit));
    w.setCaption(ll::txtSuckFanVoltage, display.caption(el::lblSuckFanVoltage));
    w.setCaption(ll::txtBlowFanVoltage, display.caption(el::lblBlowFanVoltage));
    const SettingLimits::Range fan = m_mainView.Limits().ofField(fanVoltage());
    const QString fanRange = numberformat::plain(fan.minimum, m_preferences.locale()) +
                             QStringLiteral(" - ") +
                             numberformat::plain(fan.maximum, m_preferences.locale());
    w.setToolTip(ll::txtSuckFanVoltage, fanRange + u' ' + w.caption(ll::lblSuckFanVoltageUnit));
    w.setToolTip(ll::txtBlowFanVoltage, fanRange + u' ' + w.caption(ll::lblBlowFanVoltageUnit));

    const std::int32_t seconds = wholeOrZero(Number(blowTime).value_or(0));
    w.setCaption(ll::txtLocTemporaryBlowTimeSeconds, QString::number(seconds % 60));
    w.setCaption(ll::txtLocTemporaryBlowTimeMinutes, QString::number(seconds / 60));
    const QString temporary =
        QStringLiteral("10 ") + w.caption(ll::lblLocTemporaryBlowTimeSecondsUnit) +
        QStringLiteral(" - 60 ") + w.caption(ll::lblLocTemporaryBlowTimeMinutesUnit);
    w.setToolTip(ll::txtLocTemporaryBlowTimeSeconds, temporary);
    w.setToolTip(ll::txtLocTemporaryBlowTimeMinutes, temporary);
    ShowWaiting();
}

// The exact counts 2 to 4 shorten the pipe; any other count in range, such as 2.5, keeps
// all five holes.
void Localisation::txtLocNumberOfHoles_Validate() {
    Form& w = Window();
    w.setBackColor(ll::txtLocNumberOfHoles, colors::kWindowBackground);
    const std::optional<double> count = Number(w.caption(ll::txtLocNumberOfHoles));
    if (!count || *count < 2 || *count > kHoles) {
        w.setBackColor(ll::txtLocNumberOfHoles, colors::kYellow);
        return;
    }
    for (int i = 0; i < kHoles; ++i) {
        w.setChecked(ll::optLocHole[i], false);
        w.setVisible(ll::optLocHole[i], true);
        w.setVisible(ll::txtLocTime[i], true);
        w.setVisible(ll::lblLocTimeUnit[i], true);
    }
    for (int line = 0; line < kHoles * kLinesPerHole; ++line)
        w.setVisible(ll::linLocPipe[line], true);
    int firstHidden = kHoles;
    if (*count == 2) firstHidden = 2;
    if (*count == 3) firstHidden = 3;
    if (*count == 4) firstHidden = 4;
    for (int i = firstHidden; i < kHoles; ++i) {
        w.setVisible(ll::optLocHole[i], false);
        w.setVisible(ll::txtLocTime[i], false);
        w.setVisible(ll::lblLocTimeUnit[i], false);
        for (int line = 0; line < kLinesPerHole; ++line)
            w.setVisible(ll::linLocPipe[i * kLinesPerHole + line], false);
    }
    w.setChecked(ll::optLocHole[0], true);
}

void Localisation::cmdLocSingleHoleLearningStart_Click() {
    Form& w = Window();
    for (int i = 0; i < kHoles; ++i)
        w.setBackColor(ll::picLocFirePlaceTest[i], colors::kWindowBackground);
    if (CheckTextInput(w, ll::txtLocNumberOfHoles, 2, kHoles, 0, m_preferences.locale())) return;
    const int n = HolesOf(Number(w.caption(ll::txtLocNumberOfHoles)).value_or(0));
    bool chosen = false;
    for (int i = 0; i < n && !chosen; ++i)
        chosen = w.isChecked(ll::optLocHole[i]);
    if (!chosen) return;
    LearnSingleHole(true);
    LocSingleHoleAborted = false;
}

void Localisation::cmdLocSingleHoleLearningAbort_Click() {
    LearnSingleHole(false);
    LocSingleHoleAborted = true;
}

// Starts or stops the learning of one hole, with the blow time and fan voltages the window
// holds: all of them good, or nothing goes out.
void Localisation::LearnSingleHole(bool start) {
    Form& w = Window();
    DeviceCommands::HoleLearning learning{readNumber(w, ll::txtLocTemporaryBlowTimeMinutes),
                                          readNumber(w, ll::txtLocTemporaryBlowTimeSeconds),
                                          readNumber(w, ll::txtBlowFanVoltage),
                                          readNumber(w, ll::txtSuckFanVoltage)};
    const auto block = m_commands.LocSingleHoleLearning(learning, start, m_mainView.Limits());
    showVerdict(w, ll::txtLocTemporaryBlowTimeMinutes, learning.minutes, m_preferences.locale());
    showVerdict(w, ll::txtLocTemporaryBlowTimeSeconds, learning.seconds, m_preferences.locale());
    showVerdict(w, ll::txtBlowFanVoltage, learning.blowFanVoltage, m_preferences.locale());
    showVerdict(w, ll::txtSuckFanVoltage, learning.suckFanVoltage, m_preferences.locale());
    m_commands.Send(block);
}

std::optional<Localisation::Windows>
Localisation::WindowsFromTimes(const std::vector<double>& times) {
    const std::size_t n = times.size();
    if (n < 2 || n > kHoles) return std::nullopt;
    // In 0.01 s, halved: the bounds lie half-way between the holes' times.
    auto bound = [](double seconds) { return numberformat::toInt32(seconds * 100 / 2); };
    Windows w;
    const auto first = bound(times[0]);
    const auto last = bound(3 * times[n - 1] - times[n - 2]);
    if (!first || !last) return std::nullopt;
    w.minimum[0] = *first;
    for (std::size_t i = 0; i + 1 < n; ++i) {
        const auto middle = bound(times[i] + times[i + 1]);
        if (!middle) return std::nullopt;
        w.maximum[i] = *middle;
        w.minimum[i + 1] = *middle + 1;
    }
    w.maximum[n - 1] = *last;
    return w;
}

void Localisation::cmdLocParameterAssume_Click() {
    Form& w = Window();
    if (CheckTextInput(w, ll::txtLocNumberOfHoles, 2, kHoles, 0, m_preferences.locale())) return;
    const int n = HolesOf(Number(w.caption(ll::txtLocNumberOfHoles)).value_or(0));
    bool bad = false;
    for (int i = 0; i < n; ++i)
        bad = CheckTextInput(w, ll::txtLocTime[i], 0, 655.35, 1, m_preferences.locale()) || bad;
    if (bad) return;
    std::vector<double> times;
    for (int i = 0; i < n; ++i)
        times.push_back(Number(w.caption(ll::txtLocTime[i])).value_or(0));
    for (int i = 1; i < n; ++i) {
        const bool apart = static_cast<float>(times[at(i)]) >=
                           static_cast<float>(times[at(i - 1)]) + kLeastDistance;
        w.setBackColor(ll::txtLocTime[i], apart ? colors::kWindowBackground : colors::kYellow);
        bad = bad || !apart;
    }
    if (bad) return;
    if (times.empty() || times[0] <= 0) {
        w.setBackColor(ll::txtLocTime[0], colors::kYellow);
        return;
    }
    const std::optional<Windows> windows = WindowsFromTimes(times);
    if (!windows) return;
    LocHoleMinSet = windows->minimum;
    LocHoleMaxSet = windows->maximum;
    DeviceCommands::LocalisationParameters written;
    written.minimum = LocHoleMinSet;
    written.maximum = LocHoleMaxSet;
    written.holes = n;
    written.blowTime = readNumber(w, ll::txtBlowTime);
    written.blowFanVoltage = readNumber(w, ll::txtBlowFanVoltage);
    written.suckFanVoltage = readNumber(w, ll::txtSuckFanVoltage);
    const auto block = m_commands.LocParameterAssume(written, m_mainView.Limits());
    // A window the device cannot take marks its hole's time.
    for (int i = 0; i < kHoles; ++i)
        if (written.holeRefused[at(i)]) w.setBackColor(ll::txtLocTime[i], colors::kYellow);
    showVerdict(w, ll::txtBlowTime, written.blowTime, m_preferences.locale());
    showVerdict(w, ll::txtBlowFanVoltage, written.blowFanVoltage, m_preferences.locale());
    showVerdict(w, ll::txtSuckFanVoltage, written.suckFanVoltage, m_preferences.locale());
    if (!block) return;
    if (LocLearnModeActive && !LeaveLearnMode()) return;
    m_commands.Send(block);
}

// Writing the parameters ends the learn mode: only when the engineer says so.
bool Localisation::LeaveLearnMode() {
    UserDialogs* dialogs = m_dialogs;
    if (!dialogs) return false;
    const UserDialogs::Answer answer = dialogs->messageBox(
        m_texts.messages.normalModeWarning, m_texts.appTitle, UserDialogs::Buttons::YesNo,
        UserDialogs::Icon::Warning, UserDialogs::Answer::No);
    return answer == UserDialogs::Answer::Yes;
}

void Localisation::cmdLocParameterAbort_Click() {
    if (LocLearnModeActive && !LeaveLearnMode()) return;
    m_commands.Send(m_commands.LocParameterAbort());
    m_tmrUnload.enable();
    m_tmrTimeout.enable();
}

void Localisation::tmrUnload_Timer() {
    if (!LocLearnModeActive) CloseWindow();
}

void Localisation::tmrTimeout_Timer() {
    m_tmrUnload.disable();
    m_tmrTimeout.disable();
    if (!LocLearnModeActive) return;
    const Form& w = Window();
    const QString mode = w.isVisible(ll::lblLocTestModeLEDLegend)
                             ? w.caption(ll::lblLocTestModeLEDLegend)
                             : w.caption(ll::lblLocLearnModeLEDLegend);
    UserDialogs* dialogs = m_dialogs;
    if (!dialogs) return;
    const UserDialogs::Answer answer =
        dialogs->messageBox(m_texts.messages.notPossible + u' ' + mode + u'!', m_texts.appTitle,
                            UserDialogs::Buttons::AbortRetryIgnore, UserDialogs::Icon::Warning,
                            UserDialogs::Answer::Retry);
    if (answer == UserDialogs::Answer::Retry) {
        m_commands.Send(m_commands.LocParameterAbort());
        m_tmrUnload.enable();
        m_tmrTimeout.enable();
    } else if (answer == UserDialogs::Answer::Ignore) {
        CloseWindow();
    }
}

QStringList Localisation::Differences() const {
    QStringList differing;
    for (int i = 0; i < kHoles; ++i)
        if (LocHoleMinSet[at(i)] != LocHoleMinRead[at(i)] ||
            LocHoleMaxSet[at(i)] != LocHoleMaxRead[at(i)])
            differing << m_texts.str(kStringHole) + u' ' + QString::number(i + 1);
    const Form& w = Window();
    const Form& display = View();
    const std::pair<QString, QString> texts[] = {
        {ll::txtBlowTime, el::lblBlowTime},
        {ll::txtBlowFanVoltage, el::lblBlowFanVoltage},
        {ll::txtSuckFanVoltage, el::lblSuckFanVoltage},
    };
    const QString legends[] = {ll::lblBlowTimeLegend, ll::lblBlowFanVoltageLegend,
                               ll::lblSuckFanVoltageLegend};
    for (std::size_t i = 0; i < std::size(texts); ++i)
        if (w.caption(texts[i].first) != display.caption(texts[i].second))
            differing << w.caption(legends[i]);
    return differing;
}

void Localisation::tmrCompareLocalizeSet_Timer() {
    if (LocLearnModeActive) {
        ShowWaiting();
        return;
    }
    if (!Differences().isEmpty()) {
        ShowWaiting();
        return;
    }
    m_tmrCompareLocalizeSet.disable();
    CloseWindow();
}

void Localisation::OnWriteSent(int command) {
    if (command != kLocalisationParameter) return;
    m_tmrCompareLocalizeSet.enable();
    m_sentAt.start();
    ShowWaiting();
}

// While the written parameters are awaited the window says so, with the time since the
// write went out and what still differs.
void Localisation::ShowWaiting() {
    const bool waiting = m_tmrCompareLocalizeSet.isEnabled();
    showWaitingNote(m_texts, Window(), ll::lblLocWaiting, waiting, m_sentAt,
                    waiting ? Differences() : QStringList());
}

void Localisation::CloseWindow() {
    Window().unload();
}

void Localisation::OnWindowChanged(int change) {
    const auto what = static_cast<Form::WindowChange>(change);
    if (what != Form::WindowChange::Hidden && what != Form::WindowChange::Unloaded) return;
    m_tmrCompareLocalizeSet.disable();
    m_tmrUnload.disable();
    m_tmrTimeout.disable();
    ShowWaiting();
}

void Localisation::OnDisplayClicked(const QString& element) {
    for (int i = 0; i < 2; ++i)
        if (element == el::cmdShowLocLearnMode[i]) cmdShowLocLearnMode_Click(i);
}

void Localisation::OnWindowClicked(const QString& element) {
    if (element == ll::cmdLocSingleHoleLearningStart) cmdLocSingleHoleLearningStart_Click();
    if (element == ll::cmdLocSingleHoleLearningAbort) cmdLocSingleHoleLearningAbort_Click();
    if (element == ll::cmdLocParameterAssume) cmdLocParameterAssume_Click();
    if (element == ll::cmdLocParameterAbort) cmdLocParameterAbort_Click();
}

void Localisation::OnWindowEdited(const QString& element) {
    if (element == ll::txtLocNumberOfHoles) txtLocNumberOfHoles_Validate();
}

#include "moc_localisation.cpp"
