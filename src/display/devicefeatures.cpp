#include "display/devicefeatures.h"

#include "values/valuestore.h"

DeviceFeatures DeviceFeatures::read(ValueStore& v) {
    DeviceFeatures f;
    f.airFlow = v.DET_GetHasFlow() != 0;
    f.dynamicAirFlow = v.DET_GetHasDynFlow() != 0;
    for (std::int16_t d = 0; d < 2; ++d)
        f.trueLix[d] = v.DET_GetHasTrueLix(d) != 0;
    f.localisation = v.DET_GetHasSingleHoleDetection() != 0;
    f.temperatureSensors = v.GetHasTemperatureSensors() != 0;
    for (std::int16_t n = 0; n < kSensors; ++n) {
        f.sensor[n] = v.TEM_GetHasNTC(n) != 0;
        f.anySensor = f.anySensor || f.sensor[n];
    }
    f.twoDetectors = v.GetHasTwoDetectors() != 0;
    f.battery = v.CTRL_GetHasBattery() != 0;
    f.actionAlarmDisplay = v.GetHasPreAlarmDisplay() != 0;
    f.programmableRelays = v.GetHasProgRel() != 0;
    for (std::int16_t m = 0; m < kModules; ++m) {
        f.module[m] = v.EXT_GetSerialNum(m) != 0;
        f.ignition[m] = v.EXT_GetHasIgnition(m) != 0;
        f.cutOff[m] = v.EXT_GetHasCutOffRelay(m) != 0;
        f.manualRelease[m] = v.EXT_GetHasManualActivationLine(m) != 0;
        f.enableInput[m] = v.EXT_GetHasEnableInput(m) != 0;
    }
    return f;
}
