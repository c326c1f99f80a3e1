// Builds telegrams byte by byte from the value tables and checks that each getter decodes
// its own bytes, with its own description and unit.
#include "values/mq27values.h"

#include <bit>
#include <variant>
#include <vector>

#include <QTest>

namespace {

using Result = std::variant<float, double, std::int16_t, QString>;
using Read = Result (*)(clsMQ27Values&, std::int16_t);

enum class Enc { F32, U32, U16, S16, U8, S8, Flag, State, SoftwareText, ParameterText };

struct Entry {
    const char* getter;
    Read read;
    int offset; // first byte, in the telegram or in the block
    Enc enc;
    int bit; // flag bit, or the lower bit of a state
    const char* description;
    const char* unit;
};

#define READ(call)                                                                                 \
    [](clsMQ27Values& v, std::int16_t i) -> Result {                                               \
        (void)i;                                                                                   \
        return v.call;                                                                             \
    }

const Entry kTelegram2[] = {
    {"DET_GetFlowValue", READ(DET_GetFlowValue()), 8, Enc::F32, 0, "Akt. Luftstrom", "m/s"},
    {"DET_GetFlowRefValue", READ(DET_GetFlowRefValue()), 12, Enc::F32, 0, "Luftstrom Sollwert",
     "m/s"},
    {"DET_GetAirTemperature", READ(DET_GetAirTemperature()), 16, Enc::F32, 0, "Akt. Lufttemperatur",
     "°C"},
    {"DET_GetAltitude", READ(DET_GetAltitude()), 20, Enc::S16, 0, "Geodätische Höhe", "m"},
    {"DET_GetAirPressureSetPoint", READ(DET_GetAirPressureSetPoint()), 22, Enc::U16, 0,
     "Luftdruck bei Luftstrom-Init", "hPa"},
    {"DET_GetAirFlowFailureDelayMax", READ(DET_GetAirFlowFailureDelayMax()), 24, Enc::U16, 0,
     "Max. Störungsverzögerungszeit LS", "s"},
    {"DET_GetAirFlowFailureDelayMin", READ(DET_GetAirFlowFailureDelayMin()), 26, Enc::U16, 0,
     "Min. Störungsverzögerungszeit LS", "s"},
    {"DET_GetAirFlowFailureDelaySetPoint", READ(DET_GetAirFlowFailureDelaySetPoint()), 28, Enc::U16,
     0, "Eingestellte Störungsverzögerungszeit", "s"},
    {"DET_GetStaticFlowDevMax", READ(DET_GetStaticFlowDevMax()), 30, Enc::U8, 0,
     "Max. Luftstromstörgrenze, statisch", "%"},
    {"DET_GetStaticFlowDevMin", READ(DET_GetStaticFlowDevMin()), 31, Enc::U8, 0,
     "Min. Luftstromstörgrenze, statisch", "%"},
    {"DET_GetStaticFlowDevSetPoint", READ(DET_GetStaticFlowDevSetPoint()), 32, Enc::U8, 0,
     "Eingestellte Luftstromstörungsgrenze", "%"},
    {"DET_GetFlowInitIsActive", READ(DET_GetFlowInitIsActive()), 33, Enc::Flag, 1,
     "Luftstrominit läuft", ""},
    {"DET_GetHasFlow", READ(DET_GetHasFlow()), 33, Enc::Flag, 2, "Luftstromüberwachung vorhanden",
     ""},
    {"DET_GetFlowShouldBeOn", READ(DET_GetFlowShouldBeOn()), 33, Enc::Flag, 3,
     "Luftstromüberwachung, Sollzustand", ""},
    {"DET_GetFlowIsOn", READ(DET_GetFlowIsOn()), 33, Enc::Flag, 4,
     "Luftstromüberwachung, Istzustand", ""},
    {"DET_GetHasDynFlow", READ(DET_GetHasDynFlow()), 33, Enc::Flag, 5,
     "Dyn. Luftstromüberwachung vorhanden", ""},
    {"DET_GetDynFlowShouldBeOn", READ(DET_GetDynFlowShouldBeOn()), 33, Enc::Flag, 6,
     "Dyn. Luftstromüberwachung, Sollzustand", ""},
    {"DET_GetDynFlowIsOn", READ(DET_GetDynFlowIsOn()), 33, Enc::Flag, 7,
     "Dyn. Luftstromüberwachung, Istzustand", ""},
    {"DET_GetFlowInitAborted", READ(DET_GetFlowInitAborted()), 34, Enc::Flag, 0,
     "Luftstrominit abgebrochen", ""},
    {"DET_GetAirFlowError", READ(DET_GetAirFlowError()), 34, Enc::Flag, 1,
     "Sammelstörung der Luftstromüberwachung", ""},
    {"DET_GetFlowDynDevPlus", READ(DET_GetFlowDynDevPlus()), 34, Enc::Flag, 2,
     "Luftstromwert (dyn.) zu groß (Bruch)", ""},
    {"DET_GetFlowDynDevMinus", READ(DET_GetFlowDynDevMinus()), 34, Enc::Flag, 3,
     "Luftstromwert (dyn.) zu klein (Verstopfung)", ""},
    {"DET_GetFlowStatDevPlus", READ(DET_GetFlowStatDevPlus()), 34, Enc::Flag, 4,
     "Luftstromwert zu groß (Bruch)", ""},
    {"DET_GetFlowStatDevMinus", READ(DET_GetFlowStatDevMinus()), 34, Enc::Flag, 5,
     "Luftstromwert zu klein (Verstopfung)", ""},
    {"DET_GetTemperatureIsHigh", READ(DET_GetTemperatureIsHigh()), 34, Enc::Flag, 6,
     "Lufttemperatur zu hoch", ""},
    {"DET_GetTemperatureIsLow", READ(DET_GetTemperatureIsLow()), 34, Enc::Flag, 7,
     "Lufttemperatur zu niedrig", ""},
    {"DET_GetUFanMax", READ(DET_GetUFanMax()), 45, Enc::U16, 0, "Maximale Lüfterspannung", "mV"},
    {"DET_GetUFanMin", READ(DET_GetUFanMin()), 47, Enc::U16, 0, "Minimale Lüfterspannung", "mV"},
    {"DET_GetUFanSetPoint", READ(DET_GetUFanSetPoint()), 49, Enc::U16, 0,
     "Eingestellte Lüfterspannung, Normal", "mV"},
    {"DET_GetFanVoltage", READ(DET_GetFanVoltage()), 51, Enc::U16, 0, "Lüfter Sollspannung", "mV"},
    {"DET_GetSuckFanLrnVoltage", READ(DET_GetSuckFanLrnVoltage()), 53, Enc::U16, 0,
     "Lüfterspannung Ansauglüfter (Lernmodus)", "mV"},
    {"DET_GetBlowFanLrnVoltage", READ(DET_GetBlowFanLrnVoltage()), 55, Enc::U16, 0,
     "Lüfterspannung Ausblaslüfter (Lernmodus)", "mV"},
    {"DET_GetSuckFanLocVoltage", READ(DET_GetSuckFanLocVoltage()), 57, Enc::U16, 0,
     "Lüfterspannung Ansauglüfter (Lokalisierung)", "mV"},
    {"DET_GetBlowFanVoltage", READ(DET_GetBlowFanVoltage()), 59, Enc::U16, 0,
     "Lüfterspannung Ausblaslüfter (Normal)", "mV"},
    {"DET_GetBlowTime", READ(DET_GetBlowTime()), 61, Enc::U16, 0, "Ausblaszeit, für Lokalisierung",
     "s"},
    {"DET_GetBlowLrnTime", READ(DET_GetBlowLrnTime()), 63, Enc::U16, 0,
     "Ausblaszeit, für Einlernmodus", "s"},
    {"DET_GetSuckTime1Max", READ(DET_GetSuckTime1Max()), 65, Enc::U16, 0,
     "Max. Ansaugzeit Ansaugöffnung 1", "s/100"},
    {"DET_GetSuckTime1Min", READ(DET_GetSuckTime1Min()), 67, Enc::U16, 0,
     "Min. Ansaugzeit Ansaugöffnung 1", "s/100"},
    {"DET_GetSuckTime2Max", READ(DET_GetSuckTime2Max()), 69, Enc::U16, 0,
     "Max. Ansaugzeit Ansaugöffnung 2", "s/100"},
    {"DET_GetSuckTime2Min", READ(DET_GetSuckTime2Min()), 71, Enc::U16, 0,
     "Min. Ansaugzeit Ansaugöffnung 2", "s/100"},
    {"DET_GetSuckTime3Max", READ(DET_GetSuckTime3Max()), 73, Enc::U16, 0,
     "Max. Ansaugzeit Ansaugöffnung 3", "s/100"},
    {"DET_GetSuckTime3Min", READ(DET_GetSuckTime3Min()), 75, Enc::U16, 0,
     "Min. Ansaugzeit Ansaugöffnung 3", "s/100"},
    {"DET_GetSuckTime4Max", READ(DET_GetSuckTime4Max()), 77, Enc::U16, 0,
     "Max. Ansaugzeit Ansaugöffnung 4", "s/100"},
    {"DET_GetSuckTime4Min", READ(DET_GetSuckTime4Min()), 79, Enc::U16, 0,
     "Min. Ansaugzeit Ansaugöffnung 4", "s/100"},
    {"DET_GetSuckTime5Max", READ(DET_GetSuckTime5Max()), 81, Enc::U16, 0,
     "Max. Ansaugzeit Ansaugöffnung 5", "s/100"},
    {"DET_GetSuckTime5Min", READ(DET_GetSuckTime5Min()), 83, Enc::U16, 0,
     "Min. Ansaugzeit Ansaugöffnung 5", "s/100"},
    {"DET_GetFirePlaceSuckTime", READ(DET_GetFirePlaceSuckTime()), 85, Enc::U16, 0,
     "Laufzeit der letzten Lokalisierung", "s/100"},
    {"DET_GetFirePlace", READ(DET_GetFirePlace()), 87, Enc::U8, 0, "Brandort", ""},
    {"DET_GetHasSingleHoleDetection", READ(DET_GetHasSingleHoleDetection()), 88, Enc::Flag, 0,
     "Lokalisierung vorhanden", ""},
    {"DET_GetLocShouldBeOn", READ(DET_GetLocShouldBeOn()), 88, Enc::Flag, 1,
     "Lokalisierung, Sollzustand", ""},
    {"DET_GetLocIsActive", READ(DET_GetLocIsActive()), 88, Enc::Flag, 2, "Lokalisierung läuft", ""},
    {"DET_GetLearningIsOn", READ(DET_GetLearningIsOn()), 88, Enc::Flag, 3,
     "Gerät ist im Lernzustand f. Lokalisierung", ""},
    {"DET_GetLocError", READ(DET_GetLocError()), 88, Enc::Flag, 4, "Fehler beim Lokalisieren", ""},
    {"DET_GetFanError", READ(DET_GetFanError()), 88, Enc::Flag, 5, "Fehler in der Lüftersteuerung",
     ""},
    {"DET_GetLocLocalized", READ(DET_GetLocLocalized()), 88, Enc::Flag, 6,
     "Lokalisierung fertig, Brandort lokalisiert", ""},
};

const Entry kDetectorBlock[] = {
    {"DET_GetDetSerialNum", READ(DET_GetDetSerialNum(i)), 0, Enc::U32, 0, "Seriennummer", ""},
    {"DET_GetDetSoftwareNum", READ(DET_GetDetSoftwareNum(i)), 4, Enc::SoftwareText, 0,
     "Softwarenummer", ""},
    {"DET_GetDetParameterID", READ(DET_GetDetParameterID(i)), 8, Enc::ParameterText, 0,
     "Parametersatznummer", ""},
    {"DET_GetSmokeValue10Max", READ(DET_GetSmokeValue10Max(i)), 13, Enc::U16, 0,
     "Max. Sensibilität bei Pegel 10", "1/1000 * %/m"},
    {"DET_GetSmokeValue10Min", READ(DET_GetSmokeValue10Min(i)), 15, Enc::U16, 0,
     "Min. Sensibilität bei Pegel 10, Nennempf.", "1/1000 * %/m"},
    {"DET_GetSmokeValue10SetPoint", READ(DET_GetSmokeValue10SetPoint(i)), 17, Enc::U16, 0,
     "Eingestellte Sensibilität f. Bargraphpegel 10", "1/1000 * %/m"},
    {"DET_GetChamberValueRatio", READ(DET_GetChamberValueRatio(i)), 19, Enc::S16, 0,
     "Aktueller Kammerwert, Prozent von GW", "%"},
    {"DET_GetAlarmThreshold", READ(DET_GetAlarmThreshold(i)), 21, Enc::U8, 0, "Hauptalarmschwelle",
     "%"},
    {"DET_GetPreAlarmThreshold", READ(DET_GetPreAlarmThreshold(i)), 22, Enc::U8, 0,
     "Voralarmschwelle", "%"},
    {"DET_GetSmokeValueRatio", READ(DET_GetSmokeValueRatio(i)), 23, Enc::U8, 0,
     "Aktueller Zustand Bargraphanzeige", "%"},
    {"DET_GetAlarmLED", READ(DET_GetAlarmLED(i)), 24, Enc::State, 0, "Zustand Detektor Alarm LED",
     ""},
    {"DET_GetPreAlarmLED", READ(DET_GetPreAlarmLED(i)), 24, Enc::State, 2,
     "Zustand Detektor Voralarm LED", ""},
    {"DET_GetFailureLED", READ(DET_GetFailureLED(i)), 24, Enc::State, 4,
     "Zustand Detektor Störungs LED", ""},
    {"DET_GetChamberIsDirty", READ(DET_GetChamberIsDirty(i)), 24, Enc::Flag, 6,
     "Messkammer verschmutzt", ""},
    {"DET_GetLightTooDark", READ(DET_GetLightTooDark(i)), 24, Enc::Flag, 7,
     "Lichtleistung abgefallen", ""},
    {"DET_GetSmokeError", READ(DET_GetSmokeError(i)), 25, Enc::Flag, 0,
     "Fehler in der Rauchmessung", ""},
    {"DET_GetDetDataStorageError", READ(DET_GetDetDataStorageError(i)), 25, Enc::Flag, 1,
     "Fehler im Datenspeicher", ""},
    {"DET_GetDetProgramStorageError", READ(DET_GetDetProgramStorageError(i)), 25, Enc::Flag, 2,
     "Fehler im Programmspeicher", ""},
    {"DET_GetDetProgramError", READ(DET_GetDetProgramError(i)), 25, Enc::Flag, 3,
     "Fehler im Programmablauf", ""},
    {"DET_GetDetCommError", READ(DET_GetDetCommError(i)), 25, Enc::Flag, 4,
     "Kommunikationsfehler mit Detektor", ""},
    {"DET_GetHasTrueLix", READ(DET_GetHasTrueLix(i)), 25, Enc::Flag, 5, "TrueLix vorhanden", ""},
    {"DET_GetTrueLixShouldBeOn", READ(DET_GetTrueLixShouldBeOn(i)), 25, Enc::Flag, 6,
     "TrueLix, Sollzustand", ""},
    {"DET_GetAlarmAfterLoc", READ(DET_GetAlarmAfterLoc(i)), 25, Enc::Flag, 7,
     "Alarmanz. verz. bis z. Ende der Lokalisierung", ""},
};

const Entry kTelegram3[] = {
    {"GetSoftwareNum", READ(GetSoftwareNum()), 8, Enc::SoftwareText, 0, "Softwarenummer", ""},
    {"GetParameterID", READ(GetParameterID()), 12, Enc::ParameterText, 0, "Parametersatznummer",
     ""},
    {"GetUinBitVoltage", READ(GetUinBitVoltage()), 17, Enc::F32, 0,
     "Spannung / Bit ADC - Versorgungsspannung", "V"},
    {"CTRL_GetUinVoltage", READ(CTRL_GetUinVoltage()), 21, Enc::F32, 0, "Versorgungsspannung", "V"},
    {"GetAlarmResistorValue", READ(GetAlarmResistorValue()), 25, Enc::F32, 0,
     "Handauslösung, Alarmwiderstand", "Ohm"},
    {"GetNormalResistorValue", READ(GetNormalResistorValue()), 29, Enc::F32, 0,
     "Handauslösung, Normalwiderstand", "Ohm"},
    {"GetNumWriteFailureStorage", READ(GetNumWriteFailureStorage()), 33, Enc::U32, 0,
     "Anzahl Schreibzyklen Fehlersp.", ""},
    {"GetNumWriteParameterStorage", READ(GetNumWriteParameterStorage()), 37, Enc::U32, 0,
     "Anzahl Schreibzyklen Parametersp.", ""},
    {"GetNumResets", READ(GetNumResets()), 41, Enc::U32, 0, "Anzahl Kaltstarts nach Programmierung",
     ""},
    {"CTRL_GetUinADC", READ(CTRL_GetUinADC()), 45, Enc::U16, 0, "Versorgungsspannung (ADC)", ""},
    {"GetUinMinADC", READ(GetUinMinADC()), 47, Enc::U16, 0, "Min. Versorgungsspannung (ADC)", ""},
    {"GetUNTCMax", READ(GetUNTCMax()), 49, Enc::U16, 0, "NTC max. Messwert (ADC)", ""},
    {"GetUNTCMin", READ(GetUNTCMin()), 51, Enc::U16, 0, "NTC min. Messwert (ADC)", ""},
    {"GetResetCounter", READ(GetResetCounter()), 53, Enc::U8, 0, "Resetcounter", ""},
    {"GetNumOfExtModulesSet", READ(GetNumOfExtModulesSet()), 54, Enc::S8, 0, "Anzahl Löschmodule",
     ""},
    {"DET_GetAlarmDelayMax", READ(DET_GetAlarmDelayMax()), 55, Enc::U8, 0, "Max. Alarmverzögerung",
     "s"},
    {"DET_GetAlarmDelayMin", READ(DET_GetAlarmDelayMin()), 56, Enc::U8, 0, "Min. Alarmverzögerung",
     "s"},
    {"DET_GetAlarmDelaySetPoint", READ(DET_GetAlarmDelaySetPoint()), 57, Enc::U8, 0,
     "Eingestellte Alarmverzögerungszeit", "s"},
    {"GetExtinguishDelay", READ(GetExtinguishDelay()), 58, Enc::U8, 0, "Eingestellte Vorwarnzeit",
     "s"},
    {"GetResistorValueTolerance", READ(GetResistorValueTolerance()), 59, Enc::U8, 0,
     "Handauslösung, Widerstandstoleranz", "%"},
    {"CTRL_GetNTCDisplayed", READ(CTRL_GetNTCDisplayed()), 60, Enc::U8, 0,
     "Nr. des angezeigten NTC Fühlers", ""},
    {"CTRL_GetResetInput", READ(CTRL_GetResetInput()), 61, Enc::Flag, 0, "Zustand Rücksetzeingang",
     ""},
    {"CTRL_GetEnableInputState", READ(CTRL_GetEnableInputState()), 61, Enc::Flag, 1,
     "Zustand Freigabeeingang", ""},
    {"CTRL_GetManActLineState", READ(CTRL_GetManActLineState()), 61, Enc::State, 2,
     "Zustand Handauslöselinie", ""},
    {"CTRL_GetMainFailureFlag", READ(CTRL_GetMainFailureFlag()), 61, Enc::Flag, 4, "Anlage gestört",
     ""},
    {"DET_GetFailureStorageIsOn", READ(DET_GetFailureStorageIsOn()), 61, Enc::Flag, 5,
     "Störungsspeicher", ""},
    {"GetHasTwoDetectors", READ(GetHasTwoDetectors()), 61, Enc::Flag, 6, "Melderbox vorhanden", ""},
    {"CTRL_GetActivated", READ(CTRL_GetActivated()), 62, Enc::Flag, 0, "Ansteuerzustand", ""},
    {"CTRL_GetReleased", READ(CTRL_GetReleased()), 62, Enc::Flag, 1, "Auslösezustand", ""},
    {"CTRL_GetIsReleased", READ(CTRL_GetIsReleased()), 62, Enc::Flag, 2, "Anlage ausgelöst", ""},
    {"DISP_GetStateOfChoice", READ(DISP_GetStateOfChoice()), 63, Enc::State, 0,
     "Funktion Ortsanzeige", ""},
    {"GetConstDataError", READ(GetConstDataError()), 63, Enc::Flag, 2,
     "Programmspeicher MQ27, Konstanten", ""},
    {"GetParameterStorageError", READ(GetParameterStorageError()), 63, Enc::Flag, 3,
     "Programmspeicher MQ27, Parameter", ""},
    {"CTRL_GetProgramStorageError", READ(CTRL_GetProgramStorageError()), 63, Enc::Flag, 4,
     "Programmspeicher MQ27, Programm", ""},
    {"CTRL_GetProgramError", READ(CTRL_GetProgramError()), 63, Enc::Flag, 5,
     "Programmausführung MQ27", ""},
    {"CTRL_GetHasBattery", READ(CTRL_GetHasBattery()), 63, Enc::Flag, 6, "Akkuladegerät vorhanden",
     ""},
    {"CTRL_GetBatteryIsOn", READ(CTRL_GetBatteryIsOn()), 63, Enc::Flag, 7, "Akku angeschaltet", ""},
    {"GetTwoButtonDelay", READ(GetTwoButtonDelay()), 141, Enc::U8, 0,
     "Max. Zeitverzug zw. 2 Tasten", "s/100"},
    {"GetResetButtonDelay", READ(GetResetButtonDelay()), 142, Enc::U8, 0,
     "Min. Betätigungszeit f. Reset", "s/100"},
    {"DISP_GetResetButton", READ(DISP_GetResetButton()), 143, Enc::Flag, 0,
     "Zustand physikalischer Resettaster", ""},
    {"DISP_GetTemperatureButton", READ(DISP_GetTemperatureButton()), 143, Enc::Flag, 1,
     "Zustand physikalischer Temperaturwahltaster", ""},
    {"DISP_GetKeySwitch", READ(DISP_GetKeySwitch()), 143, Enc::Flag, 2, "Zustand Schlüsselschalter",
     ""},
    {"DISP_GetVirtualConfigButton", READ(DISP_GetVirtualConfigButton()), 143, Enc::Flag, 3,
     "Zustand virtuelle Konfig.-Taste", ""},
    {"DISP_GetVirtualAirFlowInitButton", READ(DISP_GetVirtualAirFlowInitButton()), 143, Enc::Flag,
     4, "Zustand virtuelle LS-Init Taste", ""},
    {"DISP_GetVirtualResetButton", READ(DISP_GetVirtualResetButton()), 143, Enc::Flag, 5,
     "Zustand virtuelle Resettaste", ""},
    {"DISP_GetVirtualTempChoiceButton", READ(DISP_GetVirtualTempChoiceButton()), 143, Enc::Flag, 6,
     "Zustand virtuelle Temperaturwahltaste", ""},
    {"DISP_GetVirtualSoundOffButton", READ(DISP_GetVirtualSoundOffButton()), 143, Enc::Flag, 7,
     "Zustand virtuelle Taste Akustik AUS", ""},
    {"GetBuzzerShouldBeOff", READ(GetBuzzerShouldBeOff()), 144, Enc::Flag, 0,
     "Flag Summer ausgeschaltet", ""},
    {"DISP_GetBuzzerState", READ(DISP_GetBuzzerState()), 144, Enc::State, 1, "Zustand Summer", ""},
    {"BMZ_GetBlockedState", READ(BMZ_GetBlockedState()), 145, Enc::Flag, 0,
     "Relais Isoliert/blockiert", ""},
    {"BMZ_GetFaultState", READ(BMZ_GetFaultState()), 145, Enc::Flag, 5, "Relais Störung", ""},
    {"BMZ_GetReleasedState", READ(BMZ_GetReleasedState()), 145, Enc::Flag, 6, "Relais Ausgelöst",
     ""},
    {"DISP_GetLedOp", READ(DISP_GetLedOp()), 146, Enc::State, 0, "Zustand LED Betrieb", ""},
    {"DISP_GetLedFailure", READ(DISP_GetLedFailure()), 146, Enc::State, 2, "Zustand LED Störung",
     ""},
    {"DISP_GetLedBatt", READ(DISP_GetLedBatt()), 146, Enc::State, 4, "Zustand LED Akkustörung", ""},
    {"DISP_GetLedMainsFailure", READ(DISP_GetLedMainsFailure()), 146, Enc::State, 6,
     "Zustand LED Netzstörung", ""},
    {"DISP_GetLedBlocked", READ(DISP_GetLedBlocked()), 147, Enc::State, 0, "Zustand LED Blockiert",
     ""},
    {"DISP_GetLedReleased", READ(DISP_GetLedReleased()), 147, Enc::State, 2,
     "Zustand LED Ausgelöst", ""},
    {"DISP_GetLedMainAlarm", READ(DISP_GetLedMainAlarm()), 147, Enc::State, 4,
     "Zustand LED Hauptalarm", ""},
    {"DISP_GetLedA", READ(DISP_GetLedA()), 148, Enc::State, 6, "Zustand LED Ortsanzeige A", ""},
    {"DISP_GetLedB", READ(DISP_GetLedB()), 149, Enc::State, 0, "Zustand LED Ortsanzeige B", ""},
    {"DISP_GetLedC", READ(DISP_GetLedC()), 149, Enc::State, 2, "Zustand LED Ortsanzeige C", ""},
    {"DISP_GetLedD", READ(DISP_GetLedD()), 149, Enc::State, 4, "Zustand LED Ortsanzeige D", ""},
    {"DISP_GetLedE", READ(DISP_GetLedE()), 149, Enc::State, 6, "Zustand LED Ortsanzeige E", ""},
    {"DISP_GetBargraphLevel", READ(DISP_GetBargraphLevel()), 150, Enc::U8, 0, "Bargraphpegel", ""},
    {"DISP_GetTemperatureCode", READ(DISP_GetTemperatureCode()), 151, Enc::U8, 0,
     "Temperaturanzeigecode", ""},
    {"GetDefaultValuesUsed", READ(GetDefaultValuesUsed()), 170, Enc::Flag, 0,
     "Default Werte aus Programm-Flash werden benutzt", ""},
    {"GetHasBatteryLoader", READ(GetHasBatteryLoader()), 170, Enc::Flag, 1,
     "Akkuladegerät muss vorhanden sein", ""},
    {"GetHasNetworkModule", READ(GetHasNetworkModule()), 170, Enc::Flag, 2,
     "Firmware unterstützt Netzwerkkarte", ""},
    {"GetHasBargraphDisplay", READ(GetHasBargraphDisplay()), 170, Enc::Flag, 3,
     "Firmware unterstützt Bargraph", ""},
    {"GetHasPreAlarmDisplay", READ(GetHasPreAlarmDisplay()), 170, Enc::Flag, 4,
     "Firmware unterstützt Voralarmdisplay und -Relais", ""},
    {"GetHasTemperatureSensors", READ(GetHasTemperatureSensors()), 170, Enc::Flag, 5,
     "Firmware unterstützt Temperatursensoren", ""},
    {"GetHasProgRel", READ(GetHasProgRel()), 170, Enc::Flag, 6,
     "Firmware unterstützt programmierbare Relais", ""},
};

const Entry kSensorBlock[] = {
    {"TEM_GetNTCTemperature", READ(TEM_GetNTCTemperature(i)), 0, Enc::F32, 0, "Aktuelle Temperatur",
     "°C"},
    {"GetNTCAlarmValue", READ(GetNTCAlarmValue(i)), 4, Enc::F32, 0, "Eingestellte Alarmtemperatur",
     "°C"},
    {"GetNTCbeta", READ(GetNTCbeta(i)), 8, Enc::U16, 0, "NTC Betawert", ""},
    {"io_GetNTCVoltageADC", READ(io_GetNTCVoltageADC(i)), 10, Enc::U16, 0, "NTC Messwert (ADC)",
     ""},
    {"TEM_GetHasNTC", READ(TEM_GetHasNTC(i)), 12, Enc::Flag, 0, "NTC Fühler vorhanden", ""},
    {"TEM_GetNTCState", READ(TEM_GetNTCState(i)), 12, Enc::State, 1, "NTC Fühler Zustand", ""},
};

const Entry kModuleBlock[] = {
    {"EXT_GetSerialNum", READ(EXT_GetSerialNum(i)), 0, Enc::U32, 0, "Seriennummer", ""},
    {"EXT_GetSoftwareNum", READ(EXT_GetSoftwareNum(i)), 4, Enc::SoftwareText, 0, "Softwarenummer",
     ""},
    {"EXT_GetParameterID", READ(EXT_GetParameterID(i)), 8, Enc::ParameterText, 0,
     "Parametersatznummer", ""},
    {"EXT_GetAlarmResistorValue", READ(EXT_GetAlarmResistorValue(i)), 13, Enc::F32, 0,
     "Handauslösung, Alarmwiderstand", "Ohm"},
    {"EXT_GetNormalResistorValue", READ(EXT_GetNormalResistorValue(i)), 17, Enc::F32, 0,
     "Handauslösung, Normalwiderstand", "Ohm"},
    {"EXT_GetIgnitionVoltage", READ(EXT_GetIgnitionVoltage(i)), 21, Enc::F32, 0, "Zündspannung",
     "V"},
    {"EXT_GetIgnitionVoltageMin", READ(EXT_GetIgnitionVoltageMin(i)), 25, Enc::F32, 0,
     "Min. Zündspannung", "V"},
    {"EXT_GetResistorValueTolerance", READ(EXT_GetResistorValueTolerance(i)), 29, Enc::U8, 0,
     "Handauslösung, Widerstandstoleranz", "%"},
    {"EXT_GetLedOp", READ(EXT_GetLedOp(i)), 30, Enc::State, 0, "Zustand LED Betrieb", ""},
    {"EXT_GetLedBlocked", READ(EXT_GetLedBlocked(i)), 30, Enc::State, 2, "Zustand LED Blockiert",
     ""},
    {"EXT_GetLedFailure", READ(EXT_GetLedFailure(i)), 30, Enc::State, 4, "Zustand LED Störung", ""},
    {"EXT_GetLedReleased", READ(EXT_GetLedReleased(i)), 30, Enc::State, 6, "Zustand LED Ausgelöst",
     ""},
    {"EXT_GetIsOnline", READ(EXT_GetIsOnline(i)), 31, Enc::Flag, 0, "Modul online", ""},
    {"EXT_GetIsBlocked", READ(EXT_GetIsBlocked(i)), 31, Enc::Flag, 1, "Modul blockiert", ""},
    {"EXT_GetIsIsolated", READ(EXT_GetIsIsolated(i)), 31, Enc::Flag, 2, "Modul isoliert", ""},
    {"EXT_GetDoActivate", READ(EXT_GetDoActivate(i)), 31, Enc::Flag, 3, "Ansteuerbefehl erhalten",
     ""},
    {"EXT_GetIsActivated", READ(EXT_GetIsActivated(i)), 31, Enc::Flag, 4,
     "Abschaltrelais angesteuert", ""},
    {"EXT_GetDoRelease", READ(EXT_GetDoRelease(i)), 31, Enc::Flag, 5, "Auslösebefehl erhalten", ""},
    {"EXT_GetIsReleased", READ(EXT_GetIsReleased(i)), 31, Enc::Flag, 6, "Zündkreis ausgelöst", ""},
    {"EXT_GetIgnitionLineState", READ(EXT_GetIgnitionLineState(i)), 35, Enc::State, 0,
     "Zustand Zündkreis", ""},
    {"EXT_GetManActLineState", READ(EXT_GetManActLineState(i)), 35, Enc::State, 2,
     "Zustand Handauslöselinie", ""},
    {"EXT_GetEnableInputState", READ(EXT_GetEnableInputState(i)), 35, Enc::Flag, 4,
     "Zustand Freigabeeingang", ""},
    {"EXT_GetCutOffRelState", READ(EXT_GetCutOffRelState(i)), 35, Enc::State, 6,
     "Zustand Abschaltrelais", ""},
    {"EXT_GetHasIgnition", READ(EXT_GetHasIgnition(i)), 36, Enc::Flag, 0, "Zündkreis vorhanden",
     ""},
    {"EXT_GetHasCutOffRelay", READ(EXT_GetHasCutOffRelay(i)), 36, Enc::Flag, 1,
     "Abschaltrelais vorhanden", ""},
    {"EXT_GetHasManualActivationLine", READ(EXT_GetHasManualActivationLine(i)), 36, Enc::Flag, 2,
     "Handauslöselinie vorhanden", ""},
    {"EXT_GetHasEnableInput", READ(EXT_GetHasEnableInput(i)), 36, Enc::Flag, 3,
     "Freigabeeingang vorhanden", ""},
};

#undef READ

struct Table {
    const Entry* entries;
    std::size_t size;
    std::int16_t command;
    int base;
    int stride;
    int indexes;
    const char* prefix; // with %1 for the number counted from 1
};

constexpr int kTelegramSize[] = {0, 19, 202, 211, 54, 421};
constexpr std::uint8_t kNoise = 0xA5;

struct Case {
    QByteArray name;
    std::int16_t command;
    Bytes telegram;
    Read read;
    std::int16_t index;
    Result expected;
    QString description;
    QString unit;
};

void putBigEndian(Bytes& t, int at, std::uint32_t value, int width) {
    for (int i = 0; i < width; ++i)
        t[static_cast<std::size_t>(at + i)] =
            static_cast<std::uint8_t>(value >> (8 * (width - 1 - i)));
}

// Writes a value that no other field holds at `at`, and returns what the getter must give.
// `other` asks for the second form of a bit field: every other bit of the byte set.
Result writeField(Bytes& t, int at, Enc enc, int bit, bool other) {
    const std::uint8_t high = static_cast<std::uint8_t>(0x80 | (at & 0x7F));
    const std::uint8_t low = static_cast<std::uint8_t>(at * 3);
    auto& byte = t[static_cast<std::size_t>(at)];
    switch (enc) {
    case Enc::F32: {
        const float value = -(static_cast<float>(at) + 0.375f) * 1024.0f;
        putBigEndian(t, at, std::bit_cast<std::uint32_t>(value), 4);
        return value;
    }
    case Enc::U32: {
        const std::uint32_t value = 0xF0000000u | std::uint32_t(at) << 16 | 0x1234u;
        putBigEndian(t, at, value, 4);
        return static_cast<double>(value);
    }
    case Enc::U16:
        putBigEndian(t, at, std::uint32_t(high) << 8 | low, 2);
        return static_cast<float>(high * 256 + low);
    case Enc::S16:
        putBigEndian(t, at, std::uint32_t(high) << 8 | low, 2);
        return static_cast<float>(high * 256 + low - 65536);
    case Enc::U8:
        byte = high;
        return static_cast<float>(high);
    case Enc::S8:
        byte = high;
        return static_cast<float>(high - 256);
    case Enc::Flag:
        byte = static_cast<std::uint8_t>(other ? ~(1u << bit) : 1u << bit);
        return std::int16_t(other ? 0 : 1);
    case Enc::State:
        byte = static_cast<std::uint8_t>(other ? ~(3u << bit) | 1u << bit : 2u << bit);
        return std::int16_t(other ? 1 : 2);
    case Enc::SoftwareText:
        putBigEndian(t, at, 0x04D2050Cu, 4); // 1234, 5, 12
        return QStringLiteral("1234.05.012");
    case Enc::ParameterText:
        putBigEndian(t, at, 0x10E10007u, 4); // 4321, 7
        t[static_cast<std::size_t>(at + 4)] = 9;
        return QStringLiteral("4321.007.009");
    }
    return {};
}

bool hasSecondForm(Enc enc) {
    return enc == Enc::Flag || enc == Enc::State;
}

std::vector<Case> buildCases() {
    const Table tables[] = {
        {kTelegram2, std::size(kTelegram2), 2, 0, 0, 1, ""},
        {kDetectorBlock, std::size(kDetectorBlock), 2, 99, 36, 2, "Detektor %1: "},
        {kTelegram3, std::size(kTelegram3), 3, 0, 0, 1, ""},
        {kSensorBlock, std::size(kSensorBlock), 3, 64, 13, 5, "NTC Fühler %1: "},
        {kModuleBlock, std::size(kModuleBlock), 5, 10, 40, 10, "Löscheinschub %1: "},
    };
    std::vector<Case> cases;
    for (const Table& table : tables)
        for (int index = 0; index < table.indexes; ++index)
            for (std::size_t e = 0; e < table.size; ++e) {
                const Entry& entry = table.entries[e];
                const int at = table.base + table.stride * index + entry.offset;
                const QString prefix =
                    table.indexes > 1 ? QString::fromUtf8(table.prefix).arg(index + 1) : QString();
                for (bool other : {false, true}) {
                    if (other && !hasSecondForm(entry.enc)) continue;
                    Case c;
                    c.name = QByteArray(entry.getter) + '(' + QByteArray::number(index) + ')' +
                             (other ? " other bits" : "");
                    c.command = table.command;
                    c.telegram = Bytes(std::size_t(kTelegramSize[table.command]), kNoise);
                    c.expected = writeField(c.telegram, at, entry.enc, entry.bit, other);
                    c.read = entry.read;
                    c.index = static_cast<std::int16_t>(index);
                    c.description = prefix + QString::fromUtf8(entry.description);
                    c.unit = QString::fromUtf8(entry.unit);
                    cases.push_back(std::move(c));
                }
            }
    return cases;
}

const std::vector<Case>& cases() {
    static const std::vector<Case> all = buildCases();
    return all;
}

QString shown(const Result& r) {
    struct Show {
        QString operator()(float v) const {
            return QStringLiteral("float %1").arg(double(v), 0, 'g', 9);
        }
        QString operator()(double v) const {
            return QStringLiteral("double %1").arg(v, 0, 'g', 17);
        }
        QString operator()(std::int16_t v) const { return QStringLiteral("int16 %1").arg(v); }
        QString operator()(const QString& v) const { return QStringLiteral("text ") + v; }
    };
    return std::visit(Show{}, r);
}

// A mask read bit by bit: `at(index, b)` is the byte of bit b.
struct Mask {
    const char* getter;
    std::int16_t (*read)(clsMQ27Values&, std::int16_t index, std::int16_t b);
    std::int16_t command;
    int indexes;
    int bits;
    int (*at)(int index, int b);
    const char* description; // %1 index + 1, %2 bit, %3 bit with two digits
};

#define MASK(call)                                                                                 \
    [](clsMQ27Values& v, std::int16_t i, std::int16_t b) -> std::int16_t {                         \
        (void)i;                                                                                   \
        return v.call;                                                                             \
    }

const Mask kMasks[] = {
    {"REL_GetRelState", MASK(REL_GetRelState(b)), 3, 1, 5,
     [](int, int b) { return 62 * 8 + b + 3; }, "Zustand Relais %1"},
    {"BMZ_GetAlarmState", MASK(BMZ_GetAlarmState(b)), 3, 1, 2,
     [](int, int b) { return 145 * 8 + b + 1; }, "Detektor %1: Relais Hauptalarm"},
    {"BMZ_GetPreAlarmState", MASK(BMZ_GetPreAlarmState(b)), 3, 1, 2,
     [](int, int b) { return 145 * 8 + b + 3; }, "Detektor %1: Relais Voralarm"},
    {"GetRelayCombineMask", MASK(GetRelayCombineMask(i, b)), 3, 5, 16,
     [](int r, int b) { return (129 + 2 * r) * 8 + b; },
     "Relais %1 Bit %3: Relais Verknüpfungsmaske"},
    {"REL_GetRelEventMask", MASK(REL_GetRelEventMask(b)), 3, 1, 16,
     [](int, int b) { return 139 * 8 + b; }, "Bit %3: Relais Ereignismaske"},
    {"CTRL_GetFailures", MASK(CTRL_GetFailures(b)), 3, 1, 32,
     [](int, int b) { return 152 * 8 + b; }, "Bit %2: Sammelstörung aktuell"},
    {"GetSavedFailures", MASK(GetSavedFailures(b)), 3, 1, 32,
     [](int, int b) { return 156 * 8 + b; }, "Bit %2: Sammelstörung gespeichert"},
    {"CTRL_GetValidFailureMask", MASK(CTRL_GetValidFailureMask(b)), 3, 1, 32,
     [](int, int b) { return 160 * 8 + b; }, "Bit %2: Sammelstörung gültig"},
    {"CTRL_GetMessages", MASK(CTRL_GetMessages(b)), 3, 1, 16,
     [](int, int b) { return 164 * 8 + b; }, "Bit %2: Sammelmeldung aktuell"},
    {"GetSavedMessages", MASK(GetSavedMessages(b)), 3, 1, 16,
     [](int, int b) { return 166 * 8 + b; }, "Bit %2: Sammelmeldung gespeichert"},
    {"CTRL_GetValidMessageMask", MASK(CTRL_GetValidMessageMask(b)), 3, 1, 16,
     [](int, int b) { return 168 * 8 + b; }, "Bit %2: Sammelmeldung gültig"},
    {"EXT_GetActualFailures", MASK(EXT_GetActualFailures(i, b)), 5, 10, 8,
     [](int m, int b) { return (10 + 40 * m + 32) * 8 + b; },
     "Löscheinschub %1: Bit %2: Störmeldung aktuell"},
    {"EXT_GetSavedFailures", MASK(EXT_GetSavedFailures(i, b)), 5, 10, 8,
     [](int m, int b) { return (10 + 40 * m + 33) * 8 + b; },
     "Löscheinschub %1: Bit %2: Störmeldung gespeichert"},
    {"EXT_GetValidFailureMask", MASK(EXT_GetValidFailureMask(i, b)), 5, 10, 8,
     [](int m, int b) { return (10 + 40 * m + 34) * 8 + b; },
     "Löscheinschub %1: Bit %2: Störmeldung gültig"},
};

#undef MASK

} // namespace

class TestGetters : public QObject {
    Q_OBJECT

private slots:
    void everyGetterDecodesItsOwnBytes_data() {
        QTest::addColumn<int>("which");
        for (std::size_t i = 0; i < cases().size(); ++i)
            QTest::newRow(cases()[i].name.constData()) << int(i);
    }
    void everyGetterDecodesItsOwnBytes() {
        QFETCH(int, which);
        const Case& c = cases()[std::size_t(which)];
        clsMQ27Values values;
        QCOMPARE(values.SetDataArray(c.telegram, c.command), 0);
        const Result got = c.read(values, c.index);
        QCOMPARE(shown(got), shown(c.expected));
        QCOMPARE(values.ValueDescription, c.description);
        QCOMPARE(values.ValueUnit, c.unit);
    }

    // Masks and indexed bits: with one bit of the telegram set, exactly the getter's call
    // for that bit reads 1.
    void eachMaskBitHasItsOwnPlace_data() {
        QTest::addColumn<int>("which");
        for (std::size_t i = 0; i < std::size(kMasks); ++i)
            QTest::newRow(kMasks[i].getter) << int(i);
    }
    void eachMaskBitHasItsOwnPlace() {
        QFETCH(int, which);
        const Mask& mask = kMasks[which];
        clsMQ27Values values;
        for (int index = 0; index < mask.indexes; ++index)
            for (int b = 0; b < mask.bits; ++b) {
                Bytes t(std::size_t(kTelegramSize[mask.command]), 0);
                const int bitPosition = mask.at(index, b);
                t[std::size_t(bitPosition / 8)] =
                    static_cast<std::uint8_t>(1u << (bitPosition % 8));
                values.SetDataArray(t, mask.command);
                const auto i = static_cast<std::int16_t>(index);
                for (int other = 0; other < mask.bits; ++other)
                    QCOMPARE(mask.read(values, i, std::int16_t(other)), std::int16_t(other == b));
                for (int otherIndex = 0; otherIndex < mask.indexes; ++otherIndex)
                    if (otherIndex != index)
                        QCOMPARE(mask.read(values, std::int16_t(otherIndex), std::int16_t(b)), 0);

                mask.read(values, i, std::int16_t(b));
                const int number = mask.indexes > 1 ? index + 1 : b + 1;
                QCOMPARE(values.ValueDescription,
                         QString::fromUtf8(mask.description)
                             .replace(QLatin1String("%1"), QString::number(number))
                             .replace(QLatin1String("%2"), QString::number(b))
                             .replace(QLatin1String("%3"),
                                      QStringLiteral("%1").arg(b, 2, 10, QLatin1Char('0'))));
                QCOMPARE(values.ValueUnit, QString());
            }
    }

    void detectorLeds_data() {
        QTest::addColumn<int>("d");
        QTest::addColumn<bool>("preAlarm");
        QTest::addColumn<int>("byte");
        QTest::addColumn<int>("lowBit");
        QTest::newRow("alarm 1") << 0 << false << 147 << 6;
        QTest::newRow("alarm 2") << 1 << false << 148 << 0;
        QTest::newRow("pre-alarm 1") << 0 << true << 148 << 2;
        QTest::newRow("pre-alarm 2") << 1 << true << 148 << 4;
    }
    void detectorLeds() {
        QFETCH(int, d);
        QFETCH(bool, preAlarm);
        QFETCH(int, byte);
        QFETCH(int, lowBit);
        clsMQ27Values values;
        for (unsigned state = 0; state < 4; ++state) {
            Bytes t(211, kNoise);
            t[std::size_t(byte)] = static_cast<std::uint8_t>(~(3u << lowBit) | state << lowBit);
            values.SetDataArray(t, 3);
            const auto index = static_cast<std::int16_t>(d);
            const std::int16_t got =
                preAlarm ? values.DISP_GetLedPreAlarm(index) : values.DISP_GetLedAlarm(index);
            QCOMPARE(got, std::int16_t(state));
        }
        QCOMPARE(values.ValueDescription,
                 QStringLiteral("Detektor %1: Zustand LED %2")
                     .arg(d + 1)
                     .arg(preAlarm ? QStringLiteral("Voralarm") : QStringLiteral("Hauptalarm")));
    }
};

QTEST_APPLESS_MAIN(TestGetters)
#include "tst_getters.moc"
