#include "display/customize.h"

#include "common/formmodel.h"
#include "common/numberformat.h"
#include "display/devicefeatures.h"
#include "display/mainview_elements.h"
#include "values/valuestore.h"

#include <initializer_list>

namespace el = frmDisplay;

namespace {

void show(Form& view, std::initializer_list<QString> elements, bool visible) {
    for (const QString& element : elements)
        view.setVisible(element, visible);
}

// The event row of relay box `row`: its caption and the five relays' boxes.
void showRelayRow(Form& view, int row, bool visible) {
    view.setVisible(el::lblRelais[row], visible);
    for (const ElementArray& boxes : el::kRelayBoxes)
        view.setVisible(boxes[row], visible);
}

void showTab(Form& view, int page, bool visible) {
    view.setVisible(el::tabDisplay[page], visible);
}

void detectorsAndAlarms(Form& view, const DeviceFeatures& f) {
    view.setVisible(el::lblTemperatureLegend[0], !f.airFlow);
    show(view,
         {el::lblTemperatureLegend[1], el::lblAirflowMeterPerSecond, el::fraAirFlow,
          el::fraHasAirFlow[0], el::fraHasAirFlow[2]},
         f.airFlow);
    view.setVisible(el::fraHasAirFlow[1], f.dynamicAirFlow);
    for (int d = 0; d < 2; ++d)
        view.setVisible(el::fraHasTrueLix[d], f.trueLix[static_cast<std::size_t>(d)]);
    show(view,
         {el::picDisplay[2], el::lblDisplayLegend[2], el::picDisplay[3], el::lblDisplayLegend[3]},
         f.battery);

    const bool two = f.twoDetectors;
    const bool action = f.actionAlarmDisplay;
    show(view,
         {el::picFireAlarm[3], el::lblFireAlarmLegend[3], el::imgFireAlarm[3], el::fraSmokeLevel[1],
          el::fraChamber[1], el::fraErr[2], el::fraDetectorSettings[1]},
         two);
    // The second detector's column of the identification and its outputs to the fire panel
    // go with it.
    show(view,
         {el::lblDetectorName[3], el::lblSerialNo2[2], el::lblSoftwareNo[2], el::lblParameterNo[2],
          el::ctlRelayState[10], el::lblRelayStateLegend[10], el::ctlRelayState[11],
          el::lblRelayStateLegend[11]},
         two);
    showRelayRow(view, 1, two);
    show(view, {el::picActionAlarm[3], el::imgActionAlarm[3], el::lblActionAlarmLegend[3]},
         two && action);
    showRelayRow(view, 3, two && action);
    show(view,
         {el::picActionAlarm[2], el::imgActionAlarm[2], el::lblActionAlarmLegend[2],
          el::fraActionAlarm[0], el::fraActionAlarm[1], el::fraPreAlarmThreshold[0],
          el::fraPreAlarmThreshold[1]},
         action);
    showRelayRow(view, 2, action);
    view.setVisible(el::lblSerialNo2[0], false);
}

// An aspiration hole place without a learned time has no relay event.
void localisation(Form& view, const DeviceFeatures& f, const QLocale& locale) {
    show(view, {el::fraFirePlace, el::fraHasLocalization, el::fraAlarmAfterLoc}, f.localisation);
    showTab(view, frmDisplayPage::Localisation, f.localisation);
    view.setEnabled(el::tabDisplay[frmDisplayPage::Localisation], f.localisation);
    for (int i = 4; i <= 8; ++i) {
        bool isNumber = false;
        const double time = locale.toDouble(view.caption(el::lblLocTime[i - 4]), &isNumber);
        showRelayRow(view, i, f.localisation && isNumber && time > 0);
    }
}

void sensorsAndRelays(Form& view, const DeviceFeatures& f) {
    for (int n = 0; n < DeviceFeatures::kSensors; ++n) {
        const bool present = f.sensor[static_cast<std::size_t>(n)];
        show(view, {el::lblSensorTempLegend[n], el::lblSensorTemp[n], el::fraSensorTemp[n + 2]},
             present);
        showRelayRow(view, n + 9, present);
    }
    show(view, {el::fraSensorTemp[0], el::fraSensorTemp[1]}, f.anySensor);
    show(view, {el::fraRelaySettings, el::fraRelayState[0]}, f.programmableRelays);
    showTab(view, frmDisplayPage::Relays, f.programmableRelays);
}

void modules(Form& view, const DeviceFeatures& f, ValueStore& values) {
    for (int m = 0; m < DeviceFeatures::kModules; ++m) {
        const auto i = static_cast<std::size_t>(m);
        view.setVisible(el::fraExtStatus[m], f.module[i]);
        show(view, {el::picExtIgnition[m], el::lblExtIgnitionLegend[m]}, f.ignition[i]);
        show(view, {el::picExtCutOff[m], el::lblExtCutOffLegend[m]}, f.cutOff[i]);
        show(view, {el::ctlManAct[m], el::picManAct[m], el::lblManActLegend[m]},
             f.manualRelease[i]);
        show(view, {el::ctlEnable[m], el::lblEnableLegend[m]}, f.enableInput[i]);
        const bool internal = isInternalModule(
            numberformat::plainC(values.EXT_GetSerialNum(static_cast<std::int16_t>(m))));
        view.setVisible(el::cmdExtinguisherIdent[m], !internal);
        view.setVisible(el::lblExtinguishIsIntern[m], internal);
    }
    showTab(view, frmDisplayPage::ModulesA, f.module[0]);
    showTab(view, frmDisplayPage::ModulesB, f.module[5]);
}

} // namespace

bool isInternalModule(const QString& serialNo) {
    const QString digits = serialNo.mid(5, 3);
    if (digits.isEmpty()) return false;
    for (const QChar c : digits)
        if (c < u'0' || c > u'9') return false;
    return true;
}

void CustomizeForm(Form& view, const DeviceFeatures& features, ValueStore& values,
                   const QLocale& locale) {
    detectorsAndAlarms(view, features);
    localisation(view, features, locale);
    sensorsAndRelays(view, features);
    modules(view, features, values);
}
