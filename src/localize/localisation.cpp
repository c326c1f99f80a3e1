#include "localize/localisation.h"

#include "common/appstate.h"
#include "common/mainview_elements.h"
#include "common/numberformat.h"
#include "values/devicevalues.h"

namespace el = frmDisplay;
using numberformat::fixed;

namespace {

constexpr int kHoles = 5;

std::int32_t wholeOrZero(double value) {
    return numberformat::toInt32(value).value_or(0);
}

} // namespace

Localisation::Localisation(AppState& state, DeviceValues& values)
    : QObject()
    , m_state(state)
    , m_values(values) {}

void Localisation::ShowLocData() {
    if (!m_values.get()) return;
    readBounds();
    showTransportTimes();
    showNumberOfHoles();
    clsMQ27Values& v = *m_values.get();
    Form& view = m_state.forms.frmDisplay();
    const QLocale& locale = m_state.locale;
    view.setCaption(el::lblBlowTime, numberformat::plain(v.DET_GetBlowTime(), locale));
    view.setCaption(el::lblSuckFanVoltage,
                    fixed(static_cast<double>(v.DET_GetSuckFanLocVoltage()) / 1000, 1, locale));
    view.setCaption(el::lblBlowFanVoltage,
                    fixed(static_cast<double>(v.DET_GetBlowFanVoltage()) / 1000, 1, locale));
}

void Localisation::readBounds() {
    clsMQ27Values& v = *m_values.get();
    const float minimum[kHoles] = {v.DET_GetSuckTime1Min(), v.DET_GetSuckTime2Min(),
                                   v.DET_GetSuckTime3Min(), v.DET_GetSuckTime4Min(),
                                   v.DET_GetSuckTime5Min()};
    const float maximum[kHoles] = {v.DET_GetSuckTime1Max(), v.DET_GetSuckTime2Max(),
                                   v.DET_GetSuckTime3Max(), v.DET_GetSuckTime4Max(),
                                   v.DET_GetSuckTime5Max()};
    for (int i = 0; i < kHoles; ++i) {
        LocHoleMinRead[static_cast<std::size_t>(i)] = wholeOrZero(minimum[i]);
        LocHoleMaxRead[static_cast<std::size_t>(i)] = wholeOrZero(maximum[i]);
    }
}

// A window reaches half-way to the next hole, so each hole's transport time is its doubled
// upper bound less the previous hole's time; a hole without bounds has none.
void Localisation::showTransportTimes() {
    double times[kHoles] = {};
    for (std::size_t i = 0; i < kHoles; ++i) {
        if (LocHoleMinRead[i] <= 0 || LocHoleMaxRead[i] <= 0) continue;
        times[i] = i == 0 ? 2.0 * LocHoleMinRead[0] / 100
                          : 2.0 * LocHoleMaxRead[i - 1] / 100 - times[i - 1];
    }
    Form& view = m_state.forms.frmDisplay();
    for (int i = 0; i < kHoles; ++i)
        view.setCaption(el::lblLocTime[i], fixed(times[i], 1, m_state.locale));
}

// The first hole without a time, counted from the last: a gap anywhere ends the pipe there.
void Localisation::showNumberOfHoles() {
    Form& view = m_state.forms.frmDisplay();
    int holes = kHoles;
    for (int i = kHoles - 1; i >= 0; --i) {
        bool isNumber = false;
        const double time = m_state.locale.toDouble(view.caption(el::lblLocTime[i]), &isNumber);
        if (isNumber && time == 0) holes = i;
    }
    view.setCaption(el::lblLocNumberOfHoles, QString::number(holes));
}
