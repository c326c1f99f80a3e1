#include "display/maintexts.h"

#include "common/formmodel.h"
#include "common/stringtable.h"
#include "display/mainview_elements.h"
#include "engine/settingtable.h"

#include <initializer_list>
#include <utility>

namespace el = frmDisplay;

namespace {

// The string of each fault bit; the doubled texts are those of detector I and II.
constexpr int kFaultStrings[34] = {377, 378, 263, 379, 380, 381, 382, 383, 384, 385, 386, 387,
                                   388, 389, 390, 390, 391, 392, 392, 393, 393, 394, 332, 332,
                                   253, 262, 250, 255, 395, 395, 396, 397, 398, 398};

class Words {
public:
    Words(Form& view, Language language)
        : m_view(view)
        , m_language(language) {}

    QString operator()(int index) const { return StringTable::instance().text(m_language, index); }
    QString numbered(int index, int number) const {
        return (*this)(index) + u' ' + QString::number(number);
    }
    void set(const QString& element, const QString& caption) {
        m_view.setCaption(element, caption);
    }
    void set(std::initializer_list<std::pair<QString, int>> captions) {
        for (const auto& [element, index] : captions)
            set(element, (*this)(index));
    }
    Form& view() { return m_view; }

private:
    Form& m_view;
    Language m_language;
};

void menus(Words& s) {
    s.set({{el::mnuFile, 1},
           {el::mnuLoad, 3},
           {el::mnuSave, 2},
           {el::mnuExit, 4},
           {el::mnuProtocol, 66},
           {el::mnuProtocolCreate, 67},
           {el::mnuSettings, 5},
           {el::mnuInterface, 106},
           {el::mnuLanguage, 7},
           {el::mnuExtended, 368},
           {el::mnuDeviceSettings, 370},
           {el::mnuExtinguishSettings, 369},
           {el::mnuDeviceSelect, 12},
           {el::mnuDeviceSearch, 13},
           {el::mnuLogger, 500},
           {el::mnuLogDataDev, 501},
           {el::mnuHelp, 8},
           {el::mnuPDFHelp, 68},
           {el::mnuInfo, 9}});
    s.set(el::mnuCelsius, QStringLiteral("°C"));
    s.set(el::mnuFahrenheit, QStringLiteral("°F"));
    s.set(el::mnuPercentMeter, QStringLiteral("%/m"));
    s.set(el::mnuPercentFeet, QStringLiteral("%/ft"));
}

void pages(Words& s) {
    const QString a = QStringLiteral(" A");
    const QString b = QStringLiteral(" B");
    const QString tabs[8] = {s(10),     s(371), s(372),     s(11) + a,
                             s(11) + b, s(24),  s(369) + a, s(369) + b};
    for (int i = 0; i < 8; ++i) {
        s.set(el::tabDisplay[i], tabs[i]);
        s.set(el::lblReceiveLEDLegend[i], s(54));
        s.set(el::lblSerialNoLegend[i], s(47));
    }
}

void status(Words& s) {
    s.set({{el::fraDeviceState, 18},
           {el::lblAirFlowInitLEDLegend, 55},
           {el::fraAlarm, 376},
           {el::fraRelayState[0], 21},
           {el::fraRelayState[1], 502},
           {el::fraInputs, 373},
           {el::lblManActLegend[20], 374},
           {el::lblEnableLegend[20], 375},
           {el::fraFirePlace, 24},
           {el::fraIdentification, 503},
           {el::lblFireAlarmLegend[4], 15},
           {el::lblRelayStateLegend[6], 126},
           {el::lblRelayStateLegend[12], 20},
           {el::lblRelayStateLegend[13], 110},
           {el::lblRelayStateLegend[14], 111},
           {el::lblErrNone, 800}});
    const int device[6] = {19, 20, 108, 109, 110, 111};
    for (int i = 0; i < 6; ++i)
        s.set(el::lblDisplayLegend[i], s(device[i]));
    for (int d = 0; d < 2; ++d) {
        s.set(el::lblFireAlarmLegend[d], s(15));
        s.set(el::lblActionAlarmLegend[d], s(16));
        s.set(el::lblFireAlarmLegend[d + 2], s.numbered(15, d + 1));
        s.set(el::lblActionAlarmLegend[d + 2], s.numbered(16, d + 1));
        s.set(el::lblRelayStateLegend[8 + 2 * d], s.numbered(16, d + 1));
        s.set(el::lblRelayStateLegend[9 + 2 * d], s.numbered(15, d + 1));
        s.set(el::lblDetectorName[d + 2], s.numbered(122 + d, d + 1));
        s.set(el::lblSoftwareNoLegend[d], s(46));
        s.set(el::lblParameterNoLegend[d], s(96));
    }
    s.set(el::lblSerialNo2Legend[1], s(47));
    s.set(el::cmdAlarmReset[0], s(60));
    s.set(el::cmdAlarmReset[1], s(60));
    for (int r = 0; r < 5; ++r)
        s.set(el::lblRelayStateLegend[r], QString::number(r + 1));
    for (int i = 0; i < 5; ++i)
        s.set(el::lblFirePlaceLegend[i], QString(QChar(u'A' + i)));
}

void measurement(Words& s) {
    for (int d = 0; d < 2; ++d) {
        s.set(el::fraSmokeLevel[d], s.numbered(122 + d, d + 1));
        s.set(el::lblSmokeLevelLegend[d], s(14));
        s.set(el::fraActionAlarm[d], QString());
        s.set(el::fraChamber[d], s(32));
        s.set(el::lblChamberLegend[d], s(32));
    }
    s.set({{el::fraAirFlow, 27},
           {el::lblAirFlowLegend, 28},
           {el::lblTemperatureLegend[0], 26},
           {el::lblTemperatureLegend[1], 26},
           {el::fraSensorTemp[0], 112},
           {el::lblSensorTempLegend[5], 112}});
    for (int n = 0; n < 5; ++n)
        s.set(el::lblSensorTempLegend[n], QString::number(n + 1));
}

void messages(Words& s) {
    for (int i = 0; i < 34; ++i)
        s.set(el::lblErr[i], s(kFaultStrings[i]));
    s.set({{el::fraErr[0], 121},
           {el::lblErrLegend[0], 62},
           {el::lblErrLegend[1], 63},
           {el::fraErrReset, 399},
           {el::cmdErrReset, 60}});
    s.set(el::fraErr[1], s.numbered(122, 1));
    s.set(el::fraErr[2], s.numbered(123, 2));
}

void settings(Words& s) {
    s.set({{el::fraSettings, 11},
           {el::cmdSettings, 48},
           {el::cmdSettingsStandard, 50},
           {el::cmdSettingsAssume, 51},
           {el::cmdSettingsCancel, 49},
           {el::fraAirFlowInit, 400},
           {el::cmdAirFlowSet, 48},
           {el::cmdAirFlowStandard, 50},
           {el::cmdAirFlowInit, 56},
           {el::cmdAirFlowCancel, 49},
           {el::fraSensorTemp[1], 119},
           {el::lblSensorTempAlarmLegend[5], 119},
           {el::cmdSensorTempAlarmSet, 48},
           {el::cmdSensorTempAlarmAssume, 51},
           {el::cmdSensorTempAlarmCancel, 49}});
    for (int d = 0; d < 2; ++d)
        s.set(el::fraDetectorSettings[d], s.numbered(122 + d, d + 1));
    // Each setting's legend and units.
    for (const SettingDescriptor& setting : settingTable()) {
        QString legend = s(setting.legend);
        if (setting.legendTail != 0) legend += u' ' + s(setting.legendTail);
        if (setting.numbered) legend += u' ' + QString::number(setting.index + 1);
        s.set(setting.legendElement(), legend);
        for (int field = 0; field < setting.fieldCount(); ++field)
            s.set(setting.unitElement(field), setting.unitText(field));
    }
}

void relays(Words& s) {
    s.set({{el::fraRelaySettings, 127},
           {el::lblRelais[14], 124},
           {el::lblRelais[15], 125},
           {el::cmdRelaySet, 48},
           {el::cmdRelayAssume, 51},
           {el::cmdRelayCancel, 49}});
    for (int d = 0; d < 2; ++d) {
        s.set(el::lblRelais[d], s.numbered(15, d + 1));
        s.set(el::lblRelais[d + 2], s.numbered(16, d + 1));
    }
    for (int i = 0; i < 5; ++i) {
        s.set(el::lblRelais[i + 4], s.numbered(24, i + 1));
        s.set(el::lblRelais[i + 9], s.numbered(119, i + 1));
    }
}

void localisation(Words& s) {
    s.set({{el::fraLocalization, 24},
           {el::lblLocNumberOfHolesLegend, 77},
           {el::lblBlowTimeLegend, 78},
           {el::lblSuckFanVoltageLegend, 79},
           {el::lblBlowFanVoltageLegend, 94},
           {el::cmdShowLocLearnMode[0], 61},
           {el::cmdShowLocLearnMode[1], 64}});
    for (int i = 0; i < 5; ++i) {
        s.set(el::lblLocHole[i], QString::number(i + 1));
        s.set(el::lblLocTimeUnit[i], QStringLiteral("s"));
    }
    s.set(el::lblBlowTimeUnit, QStringLiteral("s"));
    s.set(el::lblSuckFanVoltageUnit, QStringLiteral("V"));
    s.set(el::lblBlowFanVoltageUnit, QStringLiteral("V"));
}

void modules(Words& s) {
    for (int m = 0; m < 10; ++m) {
        s.set(el::fraExtStatus[m], s.numbered(405, m + 1));
        s.set({{el::lblExtSerialNoLegend[m], 47},
               {el::lblExtOnlineLegend[m], 401},
               {el::lblExtOperatingLegend[m], 19},
               {el::lblExtReleasedLegend[m], 111},
               {el::lblExtFaultLegend[m], 20},
               {el::lblExtBlockedLegend[m], 110},
               {el::lblExtIgnitionLegend[m], 402},
               {el::lblExtCutOffLegend[m], 403},
               {el::lblManActLegend[m], 374},
               {el::lblEnableLegend[m], 375},
               {el::cmdExtinguisherIdent[m], 404},
               {el::lblExtinguishIsIntern[m], 423},
               {el::cmdExtinguisherMessages[m], 372}});
    }
}

// The instruments say what they show and in which unit; a lamp says what it stands for.
void toolTips(Words& s) {
    Form& v = s.view();
    for (int d = 0; d < 2; ++d) {
        v.setToolTip(el::ctlSmokeLevel[d], s.numbered(14, d + 1) + QStringLiteral(" (%)"));
        v.setToolTip(el::ctlChamber[d], s.numbered(32, d + 1) + QStringLiteral(" (%)"));
        v.setToolTip(el::picFireAlarm[d], s.numbered(15, d + 1));
        v.setToolTip(el::picActionAlarm[d], s.numbered(16, d + 1));
    }
    v.setToolTip(el::ctlAirFlow, s(28) + QStringLiteral(" (%)"));
    for (int i = 0; i < 6; ++i)
        v.setToolTip(el::picDisplay[i], v.caption(el::lblDisplayLegend[i]));
    for (int i = 0; i < 5; ++i)
        v.setToolTip(el::picFirePlace[i], s(24) + u' ' + QChar(u'A' + i));
    for (int i = 0; i < 34; ++i)
        v.setToolTip(el::picErr[i], v.caption(el::lblErr[i]));
    // The colours of a temperature are the device's verdict on that sensor, not a scale.
    for (int n = 0; n < 5; ++n)
        v.setToolTip(el::lblSensorTemp[n], s(824).arg(n + 1));
}

} // namespace

void ApplyMainViewTexts(Form& view, Language language) {
    Words s(view, language);
    menus(s);
    pages(s);
    status(s);
    measurement(s);
    messages(s);
    settings(s);
    relays(s);
    localisation(s);
    modules(s);
    toolTips(s);
}
