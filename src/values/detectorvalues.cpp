// Telegram 2: air flow, fans, localisation and the two detector blocks.
#include "values/valuestore.h"

#include "values/unitnames.h"

using namespace Qt::StringLiterals;

using namespace unitnames;

float ValueStore::DET_GetFlowValue() {
    return F32(In(m_telegrams[1], u"Akt. Luftstrom"_s, kMetersPerSecond), 8);
}
float ValueStore::DET_GetFlowRefValue() {
    return F32(In(m_telegrams[1], u"Luftstrom Sollwert"_s, kMetersPerSecond), 12);
}
float ValueStore::DET_GetAirTemperature() {
    return F32(In(m_telegrams[1], u"Akt. Lufttemperatur"_s, kCelsius), 16);
}
float ValueStore::DET_GetAltitude() {
    return S16(In(m_telegrams[1], u"Geodätische Höhe"_s, u"m"_s), 20);
}
float ValueStore::DET_GetAirPressureSetPoint() {
    return U16(In(m_telegrams[1], u"Luftdruck bei Luftstrom-Init"_s, u"hPa"_s), 22);
}
float ValueStore::DET_GetAirFlowFailureDelayMax() {
    return U16(In(m_telegrams[1], u"Max. Störungsverzögerungszeit LS"_s, kSeconds), 24);
}
float ValueStore::DET_GetAirFlowFailureDelayMin() {
    return U16(In(m_telegrams[1], u"Min. Störungsverzögerungszeit LS"_s, kSeconds), 26);
}
float ValueStore::DET_GetAirFlowFailureDelaySetPoint() {
    return U16(In(m_telegrams[1], u"Eingestellte Störungsverzögerungszeit"_s, kSeconds), 28);
}
float ValueStore::DET_GetStaticFlowDevMax() {
    return U8(In(m_telegrams[1], u"Max. Luftstromstörgrenze, statisch"_s, kPercent), 30);
}
float ValueStore::DET_GetStaticFlowDevMin() {
    return U8(In(m_telegrams[1], u"Min. Luftstromstörgrenze, statisch"_s, kPercent), 31);
}
float ValueStore::DET_GetStaticFlowDevSetPoint() {
    return U8(In(m_telegrams[1], u"Eingestellte Luftstromstörungsgrenze"_s, kPercent), 32);
}

std::int16_t ValueStore::DET_GetFlowInitIsActive() {
    return Flag(In(m_telegrams[1], u"Luftstrominit läuft"_s), 33, 1);
}
std::int16_t ValueStore::DET_GetHasFlow() {
    return Flag(In(m_telegrams[1], u"Luftstromüberwachung vorhanden"_s), 33, 2);
}
std::int16_t ValueStore::DET_GetFlowShouldBeOn() {
    return Flag(In(m_telegrams[1], u"Luftstromüberwachung, Sollzustand"_s), 33, 3);
}
std::int16_t ValueStore::DET_GetFlowIsOn() {
    return Flag(In(m_telegrams[1], u"Luftstromüberwachung, Istzustand"_s), 33, 4);
}
std::int16_t ValueStore::DET_GetHasDynFlow() {
    return Flag(In(m_telegrams[1], u"Dyn. Luftstromüberwachung vorhanden"_s), 33, 5);
}
std::int16_t ValueStore::DET_GetDynFlowShouldBeOn() {
    return Flag(In(m_telegrams[1], u"Dyn. Luftstromüberwachung, Sollzustand"_s), 33, 6);
}
std::int16_t ValueStore::DET_GetDynFlowIsOn() {
    return Flag(In(m_telegrams[1], u"Dyn. Luftstromüberwachung, Istzustand"_s), 33, 7);
}
std::int16_t ValueStore::DET_GetFlowInitAborted() {
    return Flag(In(m_telegrams[1], u"Luftstrominit abgebrochen"_s), 34, 0);
}
std::int16_t ValueStore::DET_GetAirFlowError() {
    return Flag(In(m_telegrams[1], u"Sammelstörung der Luftstromüberwachung"_s), 34, 1);
}
std::int16_t ValueStore::DET_GetFlowDynDevPlus() {
    return Flag(In(m_telegrams[1], u"Luftstromwert (dyn.) zu groß (Bruch)"_s), 34, 2);
}
std::int16_t ValueStore::DET_GetFlowDynDevMinus() {
    return Flag(In(m_telegrams[1], u"Luftstromwert (dyn.) zu klein (Verstopfung)"_s), 34, 3);
}
std::int16_t ValueStore::DET_GetFlowStatDevPlus() {
    return Flag(In(m_telegrams[1], u"Luftstromwert zu groß (Bruch)"_s), 34, 4);
}
std::int16_t ValueStore::DET_GetFlowStatDevMinus() {
    return Flag(In(m_telegrams[1], u"Luftstromwert zu klein (Verstopfung)"_s), 34, 5);
}
std::int16_t ValueStore::DET_GetTemperatureIsHigh() {
    return Flag(In(m_telegrams[1], u"Lufttemperatur zu hoch"_s), 34, 6);
}
std::int16_t ValueStore::DET_GetTemperatureIsLow() {
    return Flag(In(m_telegrams[1], u"Lufttemperatur zu niedrig"_s), 34, 7);
}

float ValueStore::DET_GetUFanMax() {
    return U16(In(m_telegrams[1], u"Maximale Lüfterspannung"_s, kMillivolts), 45);
}
float ValueStore::DET_GetUFanMin() {
    return U16(In(m_telegrams[1], u"Minimale Lüfterspannung"_s, kMillivolts), 47);
}
float ValueStore::DET_GetUFanSetPoint() {
    return U16(In(m_telegrams[1], u"Eingestellte Lüfterspannung, Normal"_s, kMillivolts), 49);
}
float ValueStore::DET_GetFanVoltage() {
    return U16(In(m_telegrams[1], u"Lüfter Sollspannung"_s, kMillivolts), 51);
}
float ValueStore::DET_GetSuckFanLrnVoltage() {
    return U16(In(m_telegrams[1], u"Lüfterspannung Ansauglüfter (Lernmodus)"_s, kMillivolts), 53);
}
float ValueStore::DET_GetBlowFanLrnVoltage() {
    return U16(In(m_telegrams[1], u"Lüfterspannung Ausblaslüfter (Lernmodus)"_s, kMillivolts), 55);
}
float ValueStore::DET_GetSuckFanLocVoltage() {
    return U16(In(m_telegrams[1], u"Lüfterspannung Ansauglüfter (Lokalisierung)"_s, kMillivolts),
               57);
}
float ValueStore::DET_GetBlowFanVoltage() {
    return U16(In(m_telegrams[1], u"Lüfterspannung Ausblaslüfter (Normal)"_s, kMillivolts), 59);
}
float ValueStore::DET_GetBlowTime() {
    return U16(In(m_telegrams[1], u"Ausblaszeit, für Lokalisierung"_s, kSeconds), 61);
}
float ValueStore::DET_GetBlowLrnTime() {
    return U16(In(m_telegrams[1], u"Ausblaszeit, für Einlernmodus"_s, kSeconds), 63);
}
float ValueStore::DET_GetSuckTime1Max() {
    return U16(In(m_telegrams[1], u"Max. Ansaugzeit Ansaugöffnung 1"_s, kHundredths), 65);
}
float ValueStore::DET_GetSuckTime1Min() {
    return U16(In(m_telegrams[1], u"Min. Ansaugzeit Ansaugöffnung 1"_s, kHundredths), 67);
}
float ValueStore::DET_GetSuckTime2Max() {
    return U16(In(m_telegrams[1], u"Max. Ansaugzeit Ansaugöffnung 2"_s, kHundredths), 69);
}
float ValueStore::DET_GetSuckTime2Min() {
    return U16(In(m_telegrams[1], u"Min. Ansaugzeit Ansaugöffnung 2"_s, kHundredths), 71);
}
float ValueStore::DET_GetSuckTime3Max() {
    return U16(In(m_telegrams[1], u"Max. Ansaugzeit Ansaugöffnung 3"_s, kHundredths), 73);
}
float ValueStore::DET_GetSuckTime3Min() {
    return U16(In(m_telegrams[1], u"Min. Ansaugzeit Ansaugöffnung 3"_s, kHundredths), 75);
}
float ValueStore::DET_GetSuckTime4Max() {
    return U16(In(m_telegrams[1], u"Max. Ansaugzeit Ansaugöffnung 4"_s, kHundredths), 77);
}
float ValueStore::DET_GetSuckTime4Min() {
    return U16(In(m_telegrams[1], u"Min. Ansaugzeit Ansaugöffnung 4"_s, kHundredths), 79);
}
float ValueStore::DET_GetSuckTime5Max() {
    return U16(In(m_telegrams[1], u"Max. Ansaugzeit Ansaugöffnung 5"_s, kHundredths), 81);
}
float ValueStore::DET_GetSuckTime5Min() {
    return U16(In(m_telegrams[1], u"Min. Ansaugzeit Ansaugöffnung 5"_s, kHundredths), 83);
}
float ValueStore::DET_GetFirePlaceSuckTime() {
    return U16(In(m_telegrams[1], u"Laufzeit der letzten Lokalisierung"_s, kHundredths), 85);
}
float ValueStore::DET_GetFirePlace() {
    return U8(In(m_telegrams[1], u"Brandort"_s), 87);
}

std::int16_t ValueStore::DET_GetHasSingleHoleDetection() {
    return Flag(In(m_telegrams[1], u"Lokalisierung vorhanden"_s), 88, 0);
}
std::int16_t ValueStore::DET_GetLocShouldBeOn() {
    return Flag(In(m_telegrams[1], u"Lokalisierung, Sollzustand"_s), 88, 1);
}
std::int16_t ValueStore::DET_GetLocIsActive() {
    return Flag(In(m_telegrams[1], u"Lokalisierung läuft"_s), 88, 2);
}
std::int16_t ValueStore::DET_GetLearningIsOn() {
    return Flag(In(m_telegrams[1], u"Gerät ist im Lernzustand f. Lokalisierung"_s), 88, 3);
}
std::int16_t ValueStore::DET_GetLocError() {
    return Flag(In(m_telegrams[1], u"Fehler beim Lokalisieren"_s), 88, 4);
}
std::int16_t ValueStore::DET_GetFanError() {
    return Flag(In(m_telegrams[1], u"Fehler in der Lüftersteuerung"_s), 88, 5);
}
std::int16_t ValueStore::DET_GetLocLocalized() {
    return Flag(In(m_telegrams[1], u"Lokalisierung fertig, Brandort lokalisiert"_s), 88, 6);
}

// Detector blocks: offsets relative to the block of detector d.

double ValueStore::DET_GetDetSerialNum(std::int16_t d) {
    return U32(Detector(d, u"Seriennummer"_s), 0);
}
QString ValueStore::DET_GetDetSoftwareNum(std::int16_t d) {
    return SoftwareNumber(Detector(d, u"Softwarenummer"_s), 4);
}
QString ValueStore::DET_GetDetParameterID(std::int16_t d) {
    return ParameterId(Detector(d, u"Parametersatznummer"_s), 8);
}
float ValueStore::DET_GetSmokeValue10Max(std::int16_t d) {
    return U16(Detector(d, u"Max. Sensibilität bei Pegel 10"_s, kSensitivity), 13);
}
float ValueStore::DET_GetSmokeValue10Min(std::int16_t d) {
    return U16(Detector(d, u"Min. Sensibilität bei Pegel 10, Nennempf."_s, kSensitivity), 15);
}
float ValueStore::DET_GetSmokeValue10SetPoint(std::int16_t d) {
    return U16(Detector(d, u"Eingestellte Sensibilität f. Bargraphpegel 10"_s, kSensitivity), 17);
}
float ValueStore::DET_GetChamberValueRatio(std::int16_t d) {
    return S16(Detector(d, u"Aktueller Kammerwert, Prozent von GW"_s, kPercent), 19);
}
float ValueStore::DET_GetAlarmThreshold(std::int16_t d) {
    return U8(Detector(d, u"Hauptalarmschwelle"_s, kPercent), 21);
}
float ValueStore::DET_GetPreAlarmThreshold(std::int16_t d) {
    return U8(Detector(d, u"Voralarmschwelle"_s, kPercent), 22);
}
float ValueStore::DET_GetSmokeValueRatio(std::int16_t d) {
    return U8(Detector(d, u"Aktueller Zustand Bargraphanzeige"_s, kPercent), 23);
}

std::int16_t ValueStore::DET_GetAlarmLED(std::int16_t d) {
    return StateBits(Detector(d, u"Zustand Detektor Alarm LED"_s), 24, 0);
}
std::int16_t ValueStore::DET_GetPreAlarmLED(std::int16_t d) {
    return StateBits(Detector(d, u"Zustand Detektor Voralarm LED"_s), 24, 2);
}
std::int16_t ValueStore::DET_GetFailureLED(std::int16_t d) {
    return StateBits(Detector(d, u"Zustand Detektor Störungs LED"_s), 24, 4);
}
std::int16_t ValueStore::DET_GetChamberIsDirty(std::int16_t d) {
    return Flag(Detector(d, u"Messkammer verschmutzt"_s), 24, 6);
}
std::int16_t ValueStore::DET_GetLightTooDark(std::int16_t d) {
    return Flag(Detector(d, u"Lichtleistung abgefallen"_s), 24, 7);
}
std::int16_t ValueStore::DET_GetSmokeError(std::int16_t d) {
    return Flag(Detector(d, u"Fehler in der Rauchmessung"_s), 25, 0);
}
std::int16_t ValueStore::DET_GetDetDataStorageError(std::int16_t d) {
    return Flag(Detector(d, u"Fehler im Datenspeicher"_s), 25, 1);
}
std::int16_t ValueStore::DET_GetDetProgramStorageError(std::int16_t d) {
    return Flag(Detector(d, u"Fehler im Programmspeicher"_s), 25, 2);
}
std::int16_t ValueStore::DET_GetDetProgramError(std::int16_t d) {
    return Flag(Detector(d, u"Fehler im Programmablauf"_s), 25, 3);
}
std::int16_t ValueStore::DET_GetDetCommError(std::int16_t d) {
    return Flag(Detector(d, u"Kommunikationsfehler mit Detektor"_s), 25, 4);
}
std::int16_t ValueStore::DET_GetHasTrueLix(std::int16_t d) {
    return Flag(Detector(d, u"TrueLix vorhanden"_s), 25, 5);
}
std::int16_t ValueStore::DET_GetTrueLixShouldBeOn(std::int16_t d) {
    return Flag(Detector(d, u"TrueLix, Sollzustand"_s), 25, 6);
}
std::int16_t ValueStore::DET_GetAlarmAfterLoc(std::int16_t d) {
    return Flag(Detector(d, u"Alarmanz. verz. bis z. Ende der Lokalisierung"_s), 25, 7);
}
