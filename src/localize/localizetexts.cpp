#include "localize/localizetexts.h"

#include "common/formmodel.h"
#include "common/stringtable.h"
#include "localize/localize_elements.h"

#include <initializer_list>
#include <utility>

namespace ll = frmLocalizeLearn;

void ApplyLocalizeLearnTexts(Form& window, Language language) {
    const StringTable& table = StringTable::instance();
    auto s = [&](int index) { return table.text(language, index); };
    const std::initializer_list<std::pair<QString, int>> captions = {
        {ll::lblLocNumberOfHolesLegend, 77},
        {ll::lblBlowTimeLegend, 78},
        {ll::lblSuckFanVoltageLegend, 79},
        {ll::lblBlowFanVoltageLegend, 94},
        {ll::lblLocTemporaryBlowTimeLegend, 59},
        {ll::cmdLocSingleHoleLearningStart, 57},
        {ll::cmdLocSingleHoleLearningAbort, 49},
        {ll::cmdLocParameterAssume, 51},
        {ll::cmdLocParameterAbort, 49},
        {ll::lblLocSingleHoleLearningLegend, 80},
        {ll::lblLocSingleHoleTestLegend, 81},
        {ll::lblLocLearnModeLEDLegend, 82},
        {ll::lblLocTestModeLEDLegend, 83},
        {ll::lblLocLearnActivLEDLegend, 84},
        {ll::lblLocLearnModeLegend[0], 85},
        {ll::lblLocLearnModeLegend[1], 86},
        {ll::lblLocLearnModeLegend[2], 87},
        {ll::lblLocTestModeLegend[0], 88},
        {ll::lblLocTestModeLegend[1], 89},
        {ll::lblLocSmokeLevelLegend, 14},
        {ll::lblLocHoleLegend, 520},
    };
    for (const auto& [element, index] : captions)
        window.setCaption(element, s(index));
    for (int i = 0; i < 5; ++i) {
        const QString number = QString::number(i + 1);
        window.setCaption(ll::optLocHole[i], number);
        window.setCaption(ll::lblLocPlace[i], number);
        window.setCaption(ll::lblLocTimeUnit[i], QStringLiteral("s"));
    }
    window.setCaption(ll::lblBlowTimeUnit, QStringLiteral("s"));
    window.setCaption(ll::lblSuckFanVoltageUnit, QStringLiteral("V"));
    window.setCaption(ll::lblBlowFanVoltageUnit, QStringLiteral("V"));
    window.setCaption(ll::lblLocTemporaryBlowTimeMinutesUnit, QStringLiteral("min"));
    window.setCaption(ll::lblLocTemporaryBlowTimeSecondsUnit, QStringLiteral("s"));
    // The keys have no heading of their own: their lines say what they are.
    window.setCaption(ll::fraLocLernModeLegend, QString());
    window.setCaption(ll::fraLocTestModeLegend, QString());
    for (int i = 0; i < 3; ++i) {
        window.setCaption(ll::cmdLocalizationHelp[i], QStringLiteral("?"));
        // The help file has no page for these places; the button says so instead of
        // doing nothing.
        window.setToolTip(ll::cmdLocalizationHelp[i], s(801));
    }
    for (int d = 0; d < 2; ++d)
        window.setToolTip(ll::ctlSmokeLevel[d],
                          s(14) + u' ' + QString::number(d + 1) + QStringLiteral(" (%)"));
}
