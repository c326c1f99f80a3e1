#include "display/statusdisplay.h"

#include "common/colors.h"
#include "common/formmodel.h"
#include "common/numberformat.h"
#include "display/mainview_elements.h"
#include "display/thresholdscale.h"
#include "engine/settingtable.h"
#include "values/valuestore.h"

#include <algorithm>
#include <cmath>

namespace el = frmDisplay;
using numberformat::fixed;
using numberformat::plain;

namespace {

constexpr double kFeetPerMetre = 3.28094753764887;
const QString kPercent = QStringLiteral(" %");

double celsiusOrFahrenheit(double celsius, bool fahrenheit) {
    return fahrenheit ? 9.0 / 5.0 * celsius + 32 : celsius;
}

QString temperatureUnit(bool fahrenheit) {
    return fahrenheit ? QStringLiteral(" °F") : QStringLiteral(" °C");
}

// Whole-number division: both sides are first turned into whole numbers, so that 59.6 s
// shows as 1 min 0 s rather than 0 min 59.6 s.
std::optional<std::int32_t> wholeDivision(double value, int divisor) {
    const auto whole = numberformat::toInt32(value);
    if (!whole) return std::nullopt;
    return *whole / divisor;
}

struct ManualReleaseLook {
    double line;
    std::uint32_t color;
};

// The manual release line of the rack device; a module's states 1 and 2 read the other way
// round, as the devices report them.
std::optional<ManualReleaseLook> manualRelease(std::int16_t state, bool module) {
    switch (state) {
    case 0:
        return ManualReleaseLook{0, colors::kGreen};
    case 1:
        return ManualReleaseLook{module ? 1.0 : 0.0, colors::kYellow};
    case 2:
        return ManualReleaseLook{module ? 0.0 : 1.0, colors::kYellow};
    case 3:
        return ManualReleaseLook{1, colors::kRed};
    default:
        return std::nullopt;
    }
}

} // namespace

StatusDisplay::StatusDisplay(Form& view, SettingLimits& limits)
    : m_view(view)
    , m_limits(limits) {}

bool StatusDisplay::ShowSmokeThresholds(ValueStore& v) {
    for (std::int16_t d = 0; d < 2; ++d) {
        const auto fire =
            numberformat::toInt16(thresholdscale::percentToTwips(v.DET_GetAlarmThreshold(d)));
        const auto action =
            numberformat::toInt16(thresholdscale::percentToTwips(v.DET_GetPreAlarmThreshold(d)));
        if (!fire || !action) return false;
        m_view.setTop(el::linFireAlarm[d], *fire);
        m_view.setTop(el::linActionAlarm[d], *action);
    }
    return true;
}

void StatusDisplay::ShowMeasurements(ValueStore& v, Units units, const QLocale& locale) {
    SmokeLevels(v, units.perFoot, locale);
    AirFlow(v, units.fahrenheit, locale);
    Chambers(v, locale);
    LedStates(v);
    SensorTemperatures(v, units.fahrenheit, locale);
    RelaysAndInputs(v);
}

void StatusDisplay::ShowIdentityAndSettings(ValueStore& v, const QLocale& locale) {
    Identity(v, locale);
    Ranges(v);
    Settings(v, locale);
    RelayMasks(v);
    Modules(v, locale);
}

void StatusDisplay::SmokeLevels(ValueStore& v, bool perFoot, const QLocale& locale) {
    for (std::int16_t d = 0; d < 2; ++d) {
        const double ratio = v.DET_GetSmokeValueRatio(d);
        m_view.setValue(el::ctlSmokeLevel[d], ratio / 10);
        double smoke = static_cast<double>(v.DET_GetSmokeValue10SetPoint(d)) / 1000 / 100 * ratio;
        if (perFoot) smoke /= kFeetPerMetre;
        m_view.setCaption(el::lblSmokeLevel[d],
                          fixed(smoke, 3, locale) +
                              (perFoot ? QStringLiteral(" %/ft") : QStringLiteral(" %/m")));
    }
}

void StatusDisplay::AirFlow(ValueStore& v, bool fahrenheit, const QLocale& locale) {
    m_view.setCaption(el::lblTemperature,
                      fixed(celsiusOrFahrenheit(v.DET_GetAirTemperature(), fahrenheit), 1, locale) +
                          temperatureUnit(fahrenheit));
    m_view.setCaption(el::lblAirflowMeterPerSecond,
                      fixed(v.DET_GetFlowValue(), 2, locale) + QStringLiteral(" m/s"));

    const double range = v.DET_GetStaticFlowDevSetPoint();
    m_view.setItems(el::ctlAirFlow, {plain(static_cast<float>(-range), locale) + kPercent,
                                     QStringLiteral("0") + kPercent,
                                     plain(static_cast<float>(range), locale) + kPercent});
    m_view.setGaugeRange(el::ctlAirFlow, -range * 100, 0, range * 100);
    const double reference = v.DET_GetFlowRefValue();
    if (reference == 0) {
        m_view.setCaption(el::lblAirFlow, QStringLiteral("?"));
        return;
    }
    const double deviation = (v.DET_GetFlowValue() - reference) / (reference / 100) * 100;
    m_view.setCaption(el::lblAirFlow,
                      fixed(SetGauge(el::ctlAirFlow, deviation) / 100, 0, locale) + kPercent);
}

void StatusDisplay::Chambers(ValueStore& v, const QLocale& locale) {
    for (std::int16_t d = 0; d < 2; ++d) {
        m_view.setGaugeRange(el::ctlChamber[d], -10000, 0, 10000);
        const double shown = SetGauge(el::ctlChamber[d], v.DET_GetChamberValueRatio(d) * 100.0);
        m_view.setCaption(el::lblChamber[d], fixed(shown / 100, 0, locale) + kPercent);
    }
}

// The states that the blink and flash timers paint from.
void StatusDisplay::LedStates(ValueStore& v) {
    for (std::int16_t d = 0; d < 2; ++d) {
        const std::int16_t action = v.DISP_GetLedPreAlarm(d);
        m_view.setValue(el::picActionAlarm[d], action);
        m_view.setValue(el::picActionAlarm[d + 2], action);
    }
    for (std::int16_t d = 0; d < 2; ++d) {
        const std::int16_t fire = v.DISP_GetLedAlarm(d);
        m_view.setValue(el::picFireAlarm[d], fire);
        m_view.setValue(el::picFireAlarm[d + 2], fire);
    }
    const std::int16_t device[] = {v.DISP_GetLedOp(),      v.DISP_GetLedFailure(),
                                   v.DISP_GetLedBatt(),    v.DISP_GetLedMainsFailure(),
                                   v.DISP_GetLedBlocked(), v.DISP_GetLedReleased()};
    for (int i = 0; i < 6; ++i)
        m_view.setValue(el::picDisplay[i], device[i]);

    const bool choice = v.DISP_GetStateOfChoice() == 1;
    std::int16_t places[5] = {};
    if (choice) {
        const std::int16_t read[] = {v.DISP_GetLedA(), v.DISP_GetLedB(), v.DISP_GetLedC(),
                                     v.DISP_GetLedD(), v.DISP_GetLedE()};
        std::copy(std::begin(read), std::end(read), places);
    }
    for (int i = 0; i < 5; ++i)
        m_view.setValue(el::picFirePlace[i], places[i]);

    m_view.setValue(el::picFireAlarm[4], v.DISP_GetLedMainAlarm());
    for (std::int16_t m = 0; m < 10; ++m) {
        m_view.setValue(el::picExtOperating[m], v.EXT_GetLedOp(m));
        m_view.setValue(el::picExtReleased[m], v.EXT_GetLedReleased(m));
        m_view.setValue(el::picExtFault[m], v.EXT_GetLedFailure(m));
        m_view.setValue(el::picExtBlocked[m], v.EXT_GetLedBlocked(m));
    }

    // During the air-flow initialisation the operating lamp blinks, unless it is dark.
    const bool initialising = v.DET_GetFlowInitIsActive() == 1;
    m_view.setValue(el::picAirFlowInitLED, initialising ? 2 : 0);
    const double operating = m_view.value(el::picDisplay[0]);
    if (initialising && (operating == 3 || operating == 1)) m_view.setValue(el::picDisplay[0], 2);
}

void StatusDisplay::SensorTemperatures(ValueStore& v, bool fahrenheit, const QLocale& locale) {
    for (std::int16_t n = 0; n < 5; ++n) {
        const QString element = el::lblSensorTemp[n];
        m_view.setCaption(
            element, fixed(celsiusOrFahrenheit(v.TEM_GetNTCTemperature(n), fahrenheit), 1, locale) +
                         temperatureUnit(fahrenheit));
        const std::int16_t state = v.TEM_GetNTCState(n);
        if (state == 0) {
            m_view.setBackColor(element, colors::kButtonFace);
            m_view.setForeColor(element, colors::kButtonText);
        } else if (state == 3) {
            m_view.setBackColor(element, colors::kRed);
            m_view.setForeColor(element, colors::kWindowBackground);
        } else {
            m_view.setBackColor(element, colors::kYellow);
            m_view.setForeColor(element, colors::kButtonText);
        }
    }
}

void StatusDisplay::RelaysAndInputs(ValueStore& v) {
    for (std::int16_t r = 0; r < 5; ++r)
        m_view.setValue(el::ctlRelayState[r], v.REL_GetRelState(r));
    m_view.setValue(el::ctlRelayState[8], v.BMZ_GetPreAlarmState(0));
    m_view.setValue(el::ctlRelayState[9], v.BMZ_GetAlarmState(0));
    m_view.setValue(el::ctlRelayState[10], v.BMZ_GetPreAlarmState(1));
    m_view.setValue(el::ctlRelayState[11], v.BMZ_GetAlarmState(1));
    m_view.setValue(el::ctlRelayState[12], v.BMZ_GetFaultState());
    m_view.setValue(el::ctlRelayState[13], v.BMZ_GetBlockedState());
    m_view.setValue(el::ctlRelayState[14], v.BMZ_GetReleasedState());

    m_view.setValue(el::ctlEnable[20], v.CTRL_GetEnableInputState());
    if (const auto look = manualRelease(v.CTRL_GetManActLineState(), false)) {
        m_view.setValue(el::ctlManAct[20], look->line);
        m_view.setBackColor(el::picManAct[20], look->color);
    }
}

void StatusDisplay::Identity(ValueStore& v, const QLocale& locale) {
    m_view.setCaption(el::lblSoftwareNo[0], v.GetSoftwareNum());
    m_view.setCaption(el::lblParameterNo[0], v.GetParameterID());
    m_view.setCaption(el::lblSerialNo2[0], m_view.caption(el::lblSerialNo[0]));
    for (std::int16_t d = 0; d < 2; ++d) {
        m_view.setCaption(el::lblSoftwareNo[d + 1], v.DET_GetDetSoftwareNum(d));
        m_view.setCaption(el::lblParameterNo[d + 1], v.DET_GetDetParameterID(d));
        m_view.setCaption(el::lblSerialNo2[d + 1], plain(v.DET_GetDetSerialNum(d), locale));
    }
}

// The limits the device reports, and the up/down elements' ranges by them.
void StatusDisplay::Ranges(ValueStore& v) {
    m_limits.takeReported(v);
    for (const SettingDescriptor& s : settingTable()) {
        const SettingLimits::Range range = m_limits.of(s);
        if (s.kind == SettingDescriptor::Kind::Number) {
            m_view.setRange(s.upDownElement(), range.minimum, range.maximum, s.step);
        } else if (s.kind == SettingDescriptor::Kind::MinutesSeconds) {
            const auto minutesMin = wholeDivision(range.minimum, 60);
            const auto minutesMax = wholeDivision(range.maximum, 60);
            if (minutesMin && minutesMax)
                m_view.setRange(s.upDownElement(0), *minutesMin, *minutesMax, 1);
            m_view.setRange(s.upDownElement(1), 0, 59, 1);
        }
    }
}

// The device's settings in their labels and boxes; the alarm temperatures stay in degrees
// Celsius, whatever unit the display uses.
void StatusDisplay::Settings(ValueStore& v, const QLocale& locale) {
    for (const SettingDescriptor& s : settingTable()) {
        if (s.kind == SettingDescriptor::Kind::Switch) m_view.setChecked(s.shownBox(), s.isOn(v));
        for (int field = 0; field < s.fieldCount(); ++field)
            if (const auto text = s.labelText(v, locale, field))
                m_view.setCaption(s.labelElement(field), *text);
    }
}

// While the relay page is being edited its boxes hold the user's choice, not the device's.
void StatusDisplay::RelayMasks(ValueStore& v) {
    if (m_view.isEnabled(el::chkRelay1[0])) return;
    for (const SettingDescriptor* relay : settingsOf(SettingPage::Relays)) {
        const auto r = static_cast<std::int16_t>(relay->index);
        for (std::int16_t i = 0; i < kRelayEvents; ++i)
            m_view.setChecked(relay->eventBox(i), v.GetRelayCombineMask(r, i) != 0);
        // The options are one group: AND wins when the device sets both, OR shows when it
        // sets neither.
        const bool conjunction = v.GetRelayCombineMask(r, 15) != 0;
        m_view.setChecked(relay->optionBox(0), !conjunction);
        m_view.setChecked(relay->optionBox(1), conjunction);
    }
}

void StatusDisplay::Modules(ValueStore& v, const QLocale& locale) {
    auto lamp = [](bool on, std::uint32_t color) { return on ? color : colors::kWindowBackground; };
    for (std::int16_t m = 0; m < 10; ++m) {
        m_view.setBackColor(el::picExtOnline[m], lamp(v.EXT_GetIsOnline(m) != 0, colors::kGreen));
        m_view.setBackColor(el::picExtIgnition[m], lamp(v.EXT_GetIsReleased(m) != 0, colors::kRed));
        m_view.setBackColor(el::picExtCutOff[m], lamp(v.EXT_GetIsActivated(m) != 0, colors::kRed));
        m_view.setCaption(el::lblExtSerialNo[m], plain(v.EXT_GetSerialNum(m), locale));
        m_view.setValue(el::ctlEnable[m], v.EXT_GetEnableInputState(m) != 0 ? 1 : 0);
        if (const auto look = manualRelease(v.EXT_GetManActLineState(m), true)) {
            m_view.setValue(el::ctlManAct[m], look->line);
            m_view.setBackColor(el::picManAct[m], look->color);
        }
    }
}

double StatusDisplay::SetGauge(const QString& gauge, double value) {
    const Element& e = m_view.element(gauge);
    if (!std::isnan(value)) value = std::clamp(value, e.minimum, std::max(e.minimum, e.maximum));
    m_view.setValue(gauge, value);
    return value;
}
