// Telegram 3: controller, temperature sensors, relays, display, failure and message masks.
#include "values/valuestore.h"

#include "values/unitnames.h"

#include "values/valuetext.h"

using namespace Qt::StringLiterals;

using namespace unitnames;

QString ValueStore::GetSoftwareNum() {
    return SoftwareNumber(In(m_telegrams[2], u"Softwarenummer"_s), 8);
}
QString ValueStore::GetParameterID() {
    return ParameterId(In(m_telegrams[2], u"Parametersatznummer"_s), 12);
}
float ValueStore::GetUinBitVoltage() {
    return F32(In(m_telegrams[2], u"Spannung / Bit ADC - Versorgungsspannung"_s, kVolts), 17);
}
float ValueStore::CTRL_GetUinVoltage() {
    return F32(In(m_telegrams[2], u"Versorgungsspannung"_s, kVolts), 21);
}
float ValueStore::GetAlarmResistorValue() {
    return F32(In(m_telegrams[2], u"Handauslösung, Alarmwiderstand"_s, kOhm), 25);
}
float ValueStore::GetNormalResistorValue() {
    return F32(In(m_telegrams[2], u"Handauslösung, Normalwiderstand"_s, kOhm), 29);
}
double ValueStore::GetNumWriteFailureStorage() {
    return U32(In(m_telegrams[2], u"Anzahl Schreibzyklen Fehlersp."_s), 33);
}
double ValueStore::GetNumWriteParameterStorage() {
    return U32(In(m_telegrams[2], u"Anzahl Schreibzyklen Parametersp."_s), 37);
}
double ValueStore::GetNumResets() {
    return U32(In(m_telegrams[2], u"Anzahl Kaltstarts nach Programmierung"_s), 41);
}
float ValueStore::CTRL_GetUinADC() {
    return U16(In(m_telegrams[2], u"Versorgungsspannung (ADC)"_s), 45);
}
float ValueStore::GetUinMinADC() {
    return U16(In(m_telegrams[2], u"Min. Versorgungsspannung (ADC)"_s), 47);
}
float ValueStore::GetUNTCMax() {
    return U16(In(m_telegrams[2], u"NTC max. Messwert (ADC)"_s), 49);
}
float ValueStore::GetUNTCMin() {
    return U16(In(m_telegrams[2], u"NTC min. Messwert (ADC)"_s), 51);
}
float ValueStore::GetResetCounter() {
    return U8(In(m_telegrams[2], u"Resetcounter"_s), 53);
}
float ValueStore::GetNumOfExtModulesSet() {
    return S8(In(m_telegrams[2], u"Anzahl Löschmodule"_s), 54);
}
float ValueStore::DET_GetAlarmDelayMax() {
    return U8(In(m_telegrams[2], u"Max. Alarmverzögerung"_s, kSeconds), 55);
}
float ValueStore::DET_GetAlarmDelayMin() {
    return U8(In(m_telegrams[2], u"Min. Alarmverzögerung"_s, kSeconds), 56);
}
float ValueStore::DET_GetAlarmDelaySetPoint() {
    return U8(In(m_telegrams[2], u"Eingestellte Alarmverzögerungszeit"_s, kSeconds), 57);
}
float ValueStore::GetExtinguishDelay() {
    return U8(In(m_telegrams[2], u"Eingestellte Vorwarnzeit"_s, kSeconds), 58);
}
float ValueStore::GetResistorValueTolerance() {
    return U8(In(m_telegrams[2], u"Handauslösung, Widerstandstoleranz"_s, kPercent), 59);
}
float ValueStore::CTRL_GetNTCDisplayed() {
    return U8(In(m_telegrams[2], u"Nr. des angezeigten NTC Fühlers"_s), 60);
}

std::int16_t ValueStore::CTRL_GetResetInput() {
    return Flag(In(m_telegrams[2], u"Zustand Rücksetzeingang"_s), 61, 0);
}
std::int16_t ValueStore::CTRL_GetEnableInputState() {
    return Flag(In(m_telegrams[2], u"Zustand Freigabeeingang"_s), 61, 1);
}
std::int16_t ValueStore::CTRL_GetManActLineState() {
    return StateBits(In(m_telegrams[2], u"Zustand Handauslöselinie"_s), 61, 2);
}
std::int16_t ValueStore::CTRL_GetMainFailureFlag() {
    return Flag(In(m_telegrams[2], u"Anlage gestört"_s), 61, 4);
}
std::int16_t ValueStore::DET_GetFailureStorageIsOn() {
    return Flag(In(m_telegrams[2], u"Störungsspeicher"_s), 61, 5);
}
std::int16_t ValueStore::GetHasTwoDetectors() {
    return Flag(In(m_telegrams[2], u"Melderbox vorhanden"_s), 61, 6);
}
std::int16_t ValueStore::CTRL_GetActivated() {
    return Flag(In(m_telegrams[2], u"Ansteuerzustand"_s), 62, 0);
}
std::int16_t ValueStore::CTRL_GetReleased() {
    return Flag(In(m_telegrams[2], u"Auslösezustand"_s), 62, 1);
}
std::int16_t ValueStore::CTRL_GetIsReleased() {
    return Flag(In(m_telegrams[2], u"Anlage ausgelöst"_s), 62, 2);
}
std::int16_t ValueStore::DISP_GetStateOfChoice() {
    return StateBits(In(m_telegrams[2], u"Funktion Ortsanzeige"_s), 63, 0);
}
std::int16_t ValueStore::GetConstDataError() {
    return Flag(In(m_telegrams[2], u"Programmspeicher MQ27, Konstanten"_s), 63, 2);
}
std::int16_t ValueStore::GetParameterStorageError() {
    return Flag(In(m_telegrams[2], u"Programmspeicher MQ27, Parameter"_s), 63, 3);
}
std::int16_t ValueStore::CTRL_GetProgramStorageError() {
    return Flag(In(m_telegrams[2], u"Programmspeicher MQ27, Programm"_s), 63, 4);
}
std::int16_t ValueStore::CTRL_GetProgramError() {
    return Flag(In(m_telegrams[2], u"Programmausführung MQ27"_s), 63, 5);
}
std::int16_t ValueStore::CTRL_GetHasBattery() {
    return Flag(In(m_telegrams[2], u"Akkuladegerät vorhanden"_s), 63, 6);
}
std::int16_t ValueStore::CTRL_GetBatteryIsOn() {
    return Flag(In(m_telegrams[2], u"Akku angeschaltet"_s), 63, 7);
}

float ValueStore::GetTwoButtonDelay() {
    return U8(In(m_telegrams[2], u"Max. Zeitverzug zw. 2 Tasten"_s, kHundredths), 141);
}
float ValueStore::GetResetButtonDelay() {
    return U8(In(m_telegrams[2], u"Min. Betätigungszeit f. Reset"_s, kHundredths), 142);
}
std::int16_t ValueStore::DISP_GetResetButton() {
    return Flag(In(m_telegrams[2], u"Zustand physikalischer Resettaster"_s), 143, 0);
}
std::int16_t ValueStore::DISP_GetTemperatureButton() {
    return Flag(In(m_telegrams[2], u"Zustand physikalischer Temperaturwahltaster"_s), 143, 1);
}
std::int16_t ValueStore::DISP_GetKeySwitch() {
    return Flag(In(m_telegrams[2], u"Zustand Schlüsselschalter"_s), 143, 2);
}
std::int16_t ValueStore::DISP_GetVirtualConfigButton() {
    return Flag(In(m_telegrams[2], u"Zustand virtuelle Konfig.-Taste"_s), 143, 3);
}
std::int16_t ValueStore::DISP_GetVirtualAirFlowInitButton() {
    return Flag(In(m_telegrams[2], u"Zustand virtuelle LS-Init Taste"_s), 143, 4);
}
std::int16_t ValueStore::DISP_GetVirtualResetButton() {
    return Flag(In(m_telegrams[2], u"Zustand virtuelle Resettaste"_s), 143, 5);
}
std::int16_t ValueStore::DISP_GetVirtualTempChoiceButton() {
    return Flag(In(m_telegrams[2], u"Zustand virtuelle Temperaturwahltaste"_s), 143, 6);
}
std::int16_t ValueStore::DISP_GetVirtualSoundOffButton() {
    return Flag(In(m_telegrams[2], u"Zustand virtuelle Taste Akustik AUS"_s), 143, 7);
}
std::int16_t ValueStore::GetBuzzerShouldBeOff() {
    return Flag(In(m_telegrams[2], u"Flag Summer ausgeschaltet"_s), 144, 0);
}
std::int16_t ValueStore::DISP_GetBuzzerState() {
    return StateBits(In(m_telegrams[2], u"Zustand Summer"_s), 144, 1);
}
std::int16_t ValueStore::BMZ_GetBlockedState() {
    return Flag(In(m_telegrams[2], u"Relais Isoliert/blockiert"_s), 145, 0);
}
std::int16_t ValueStore::BMZ_GetFaultState() {
    return Flag(In(m_telegrams[2], u"Relais Störung"_s), 145, 5);
}
std::int16_t ValueStore::BMZ_GetReleasedState() {
    return Flag(In(m_telegrams[2], u"Relais Ausgelöst"_s), 145, 6);
}
std::int16_t ValueStore::DISP_GetLedOp() {
    return StateBits(In(m_telegrams[2], u"Zustand LED Betrieb"_s), 146, 0);
}
std::int16_t ValueStore::DISP_GetLedFailure() {
    return StateBits(In(m_telegrams[2], u"Zustand LED Störung"_s), 146, 2);
}
std::int16_t ValueStore::DISP_GetLedBatt() {
    return StateBits(In(m_telegrams[2], u"Zustand LED Akkustörung"_s), 146, 4);
}
std::int16_t ValueStore::DISP_GetLedMainsFailure() {
    return StateBits(In(m_telegrams[2], u"Zustand LED Netzstörung"_s), 146, 6);
}
std::int16_t ValueStore::DISP_GetLedBlocked() {
    return StateBits(In(m_telegrams[2], u"Zustand LED Blockiert"_s), 147, 0);
}
std::int16_t ValueStore::DISP_GetLedReleased() {
    return StateBits(In(m_telegrams[2], u"Zustand LED Ausgelöst"_s), 147, 2);
}
std::int16_t ValueStore::DISP_GetLedMainAlarm() {
    return StateBits(In(m_telegrams[2], u"Zustand LED Hauptalarm"_s), 147, 4);
}
std::int16_t ValueStore::DISP_GetLedA() {
    return StateBits(In(m_telegrams[2], u"Zustand LED Ortsanzeige A"_s), 148, 6);
}
std::int16_t ValueStore::DISP_GetLedB() {
    return StateBits(In(m_telegrams[2], u"Zustand LED Ortsanzeige B"_s), 149, 0);
}
std::int16_t ValueStore::DISP_GetLedC() {
    return StateBits(In(m_telegrams[2], u"Zustand LED Ortsanzeige C"_s), 149, 2);
}
std::int16_t ValueStore::DISP_GetLedD() {
    return StateBits(In(m_telegrams[2], u"Zustand LED Ortsanzeige D"_s), 149, 4);
}
std::int16_t ValueStore::DISP_GetLedE() {
    return StateBits(In(m_telegrams[2], u"Zustand LED Ortsanzeige E"_s), 149, 6);
}
float ValueStore::DISP_GetBargraphLevel() {
    return U8(In(m_telegrams[2], u"Bargraphpegel"_s), 150);
}
float ValueStore::DISP_GetTemperatureCode() {
    return U8(In(m_telegrams[2], u"Temperaturanzeigecode"_s), 151);
}
std::int16_t ValueStore::GetDefaultValuesUsed() {
    return Flag(In(m_telegrams[2], u"Default Werte aus Programm-Flash werden benutzt"_s), 170, 0);
}
std::int16_t ValueStore::GetHasBatteryLoader() {
    return Flag(In(m_telegrams[2], u"Akkuladegerät muss vorhanden sein"_s), 170, 1);
}
std::int16_t ValueStore::GetHasNetworkModule() {
    return Flag(In(m_telegrams[2], u"Firmware unterstützt Netzwerkkarte"_s), 170, 2);
}
std::int16_t ValueStore::GetHasBargraphDisplay() {
    return Flag(In(m_telegrams[2], u"Firmware unterstützt Bargraph"_s), 170, 3);
}
std::int16_t ValueStore::GetHasPreAlarmDisplay() {
    return Flag(In(m_telegrams[2], u"Firmware unterstützt Voralarmdisplay und -Relais"_s), 170, 4);
}
std::int16_t ValueStore::GetHasTemperatureSensors() {
    return Flag(In(m_telegrams[2], u"Firmware unterstützt Temperatursensoren"_s), 170, 5);
}
std::int16_t ValueStore::GetHasProgRel() {
    return Flag(In(m_telegrams[2], u"Firmware unterstützt programmierbare Relais"_s), 170, 6);
}

// Temperature sensor blocks: offsets relative to the block of sensor n.

float ValueStore::TEM_GetNTCTemperature(std::int16_t n) {
    return F32(Sensor(n, u"Aktuelle Temperatur"_s, kCelsius), 0);
}
float ValueStore::GetNTCAlarmValue(std::int16_t n) {
    return F32(Sensor(n, u"Eingestellte Alarmtemperatur"_s, kCelsius), 4);
}
float ValueStore::GetNTCbeta(std::int16_t n) {
    return U16(Sensor(n, u"NTC Betawert"_s), 8);
}
float ValueStore::io_GetNTCVoltageADC(std::int16_t n) {
    return U16(Sensor(n, u"NTC Messwert (ADC)"_s), 10);
}
std::int16_t ValueStore::TEM_GetHasNTC(std::int16_t n) {
    return Flag(Sensor(n, u"NTC Fühler vorhanden"_s), 12, 0);
}
std::int16_t ValueStore::TEM_GetNTCState(std::int16_t n) {
    return StateBits(Sensor(n, u"NTC Fühler Zustand"_s), 12, 1);
}

// Bits picked by an index.

std::int16_t ValueStore::IndexedBit(int offset, int bit, bool inRange,
                                    const valuetext::Description& description) {
    if (!inRange) {
        SetIndexError();
        return 0;
    }
    return Flag(In(m_telegrams[2], description), offset, bit);
}

std::int16_t ValueStore::MaskBit(int offset, std::int16_t b, int bitCount,
                                 const valuetext::Description& description) {
    return IndexedBit(offset + b / 8, b % 8, b >= 0 && b < bitCount, description);
}

std::int16_t ValueStore::REL_GetRelState(std::int16_t r) {
    return IndexedBit(62, r + 3, r >= 0 && r <= 4,
                      valuetext::numbered(u"Zustand Relais "_s, r + 1));
}
std::int16_t ValueStore::BMZ_GetAlarmState(std::int16_t d) {
    return IndexedBit(145, d + 1, d >= 0 && d <= 1, valuetext::detector(d, u"Relais Hauptalarm"_s));
}
std::int16_t ValueStore::BMZ_GetPreAlarmState(std::int16_t d) {
    return IndexedBit(145, d + 3, d >= 0 && d <= 1, valuetext::detector(d, u"Relais Voralarm"_s));
}
std::int16_t ValueStore::GetRelayCombineMask(std::int16_t r, std::int16_t b) {
    const bool inRange = r >= 0 && r <= 4 && b >= 0 && b <= 15;
    return IndexedBit(129 + 2 * r + b / 8, b % 8, inRange,
                      valuetext::relay(r, valuetext::bit(b, 2, u"Relais Verknüpfungsmaske"_s)));
}
std::int16_t ValueStore::REL_GetRelEventMask(std::int16_t b) {
    return MaskBit(139, b, 16, valuetext::bit(b, 2, u"Relais Ereignismaske"_s));
}
std::int16_t ValueStore::CTRL_GetFailures(std::int16_t b) {
    return MaskBit(152, b, 32, valuetext::bit(b, 1, u"Sammelstörung aktuell"_s));
}
std::int16_t ValueStore::GetSavedFailures(std::int16_t b) {
    return MaskBit(156, b, 32, valuetext::bit(b, 1, u"Sammelstörung gespeichert"_s));
}
std::int16_t ValueStore::CTRL_GetValidFailureMask(std::int16_t b) {
    return MaskBit(160, b, 32, valuetext::bit(b, 1, u"Sammelstörung gültig"_s));
}
std::int16_t ValueStore::CTRL_GetMessages(std::int16_t b) {
    return MaskBit(164, b, 16, valuetext::bit(b, 1, u"Sammelmeldung aktuell"_s));
}
std::int16_t ValueStore::GetSavedMessages(std::int16_t b) {
    return MaskBit(166, b, 16, valuetext::bit(b, 1, u"Sammelmeldung gespeichert"_s));
}
std::int16_t ValueStore::CTRL_GetValidMessageMask(std::int16_t b) {
    return MaskBit(168, b, 16, valuetext::bit(b, 1, u"Sammelmeldung gültig"_s));
}

// Display LEDs of the detectors.

std::int16_t ValueStore::DetectorLed(std::int16_t d, BitPlace first, BitPlace second,
                                     const valuetext::Description& description) {
    if (d < 0 || d > 1) {
        SetIndexError();
        return 0;
    }
    const BitPlace place = d == 0 ? first : second;
    return StateBits(In(m_telegrams[2], valuetext::detector(d, description)), place.offset,
                     place.lowBit);
}

std::int16_t ValueStore::DISP_GetLedAlarm(std::int16_t d) {
    return DetectorLed(d, {147, 6}, {148, 0}, u"Zustand LED Hauptalarm"_s);
}
std::int16_t ValueStore::DISP_GetLedPreAlarm(std::int16_t d) {
    return DetectorLed(d, {148, 2}, {148, 4}, u"Zustand LED Voralarm"_s);
}
