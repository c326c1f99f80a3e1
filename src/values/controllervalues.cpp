// Telegram 3: controller, temperature sensors, relays, display, failure and message masks.
#include "values/mq27values.h"

#include "values/valuetext.h"

using namespace Qt::StringLiterals;
using valuetext::Number;

namespace {
const QString kVolts = u"V"_s;
const QString kOhm = u"Ohm"_s;
const QString kSeconds = u"s"_s;
const QString kHundredths = u"s/100"_s;
const QString kPercent = u"%"_s;
const QString kCelsius = u"°C"_s;
} // namespace

QString clsMQ27Values::GetSoftwareNum() {
    return softwareNumber(in(maData3, u"Softwarenummer"_s), 8);
}
QString clsMQ27Values::GetParameterID() {
    return parameterId(in(maData3, u"Parametersatznummer"_s), 12);
}
float clsMQ27Values::GetUinBitVoltage() {
    return f32(in(maData3, u"Spannung / Bit ADC - Versorgungsspannung"_s, kVolts), 17);
}
float clsMQ27Values::CTRL_GetUinVoltage() {
    return f32(in(maData3, u"Versorgungsspannung"_s, kVolts), 21);
}
float clsMQ27Values::GetAlarmResistorValue() {
    return f32(in(maData3, u"Handauslösung, Alarmwiderstand"_s, kOhm), 25);
}
float clsMQ27Values::GetNormalResistorValue() {
    return f32(in(maData3, u"Handauslösung, Normalwiderstand"_s, kOhm), 29);
}
double clsMQ27Values::GetNumWriteFailureStorage() {
    return u32(in(maData3, u"Anzahl Schreibzyklen Fehlersp."_s), 33);
}
double clsMQ27Values::GetNumWriteParameterStorage() {
    return u32(in(maData3, u"Anzahl Schreibzyklen Parametersp."_s), 37);
}
double clsMQ27Values::GetNumResets() {
    return u32(in(maData3, u"Anzahl Kaltstarts nach Programmierung"_s), 41);
}
float clsMQ27Values::CTRL_GetUinADC() {
    return u16(in(maData3, u"Versorgungsspannung (ADC)"_s), 45);
}
float clsMQ27Values::GetUinMinADC() {
    return u16(in(maData3, u"Min. Versorgungsspannung (ADC)"_s), 47);
}
float clsMQ27Values::GetUNTCMax() {
    return u16(in(maData3, u"NTC max. Messwert (ADC)"_s), 49);
}
float clsMQ27Values::GetUNTCMin() {
    return u16(in(maData3, u"NTC min. Messwert (ADC)"_s), 51);
}
float clsMQ27Values::GetResetCounter() {
    return u8(in(maData3, u"Resetcounter"_s), 53);
}
float clsMQ27Values::GetNumOfExtModulesSet() {
    return s8(in(maData3, u"Anzahl Löschmodule"_s), 54);
}
float clsMQ27Values::DET_GetAlarmDelayMax() {
    return u8(in(maData3, u"Max. Alarmverzögerung"_s, kSeconds), 55);
}
float clsMQ27Values::DET_GetAlarmDelayMin() {
    return u8(in(maData3, u"Min. Alarmverzögerung"_s, kSeconds), 56);
}
float clsMQ27Values::DET_GetAlarmDelaySetPoint() {
    return u8(in(maData3, u"Eingestellte Alarmverzögerungszeit"_s, kSeconds), 57);
}
float clsMQ27Values::GetExtinguishDelay() {
    return u8(in(maData3, u"Eingestellte Vorwarnzeit"_s, kSeconds), 58);
}
float clsMQ27Values::GetResistorValueTolerance() {
    return u8(in(maData3, u"Handauslösung, Widerstandstoleranz"_s, kPercent), 59);
}
float clsMQ27Values::CTRL_GetNTCDisplayed() {
    return u8(in(maData3, u"Nr. des angezeigten NTC Fühlers"_s), 60);
}

std::int16_t clsMQ27Values::CTRL_GetResetInput() {
    return flag(in(maData3, u"Zustand Rücksetzeingang"_s), 61, 0);
}
std::int16_t clsMQ27Values::CTRL_GetEnableInputState() {
    return flag(in(maData3, u"Zustand Freigabeeingang"_s), 61, 1);
}
std::int16_t clsMQ27Values::CTRL_GetManActLineState() {
    return state(in(maData3, u"Zustand Handauslöselinie"_s), 61, 2);
}
std::int16_t clsMQ27Values::CTRL_GetMainFailureFlag() {
    return flag(in(maData3, u"Anlage gestört"_s), 61, 4);
}
std::int16_t clsMQ27Values::DET_GetFailureStorageIsOn() {
    return flag(in(maData3, u"Störungsspeicher"_s), 61, 5);
}
std::int16_t clsMQ27Values::GetHasTwoDetectors() {
    return flag(in(maData3, u"Melderbox vorhanden"_s), 61, 6);
}
std::int16_t clsMQ27Values::CTRL_GetActivated() {
    return flag(in(maData3, u"Ansteuerzustand"_s), 62, 0);
}
std::int16_t clsMQ27Values::CTRL_GetReleased() {
    return flag(in(maData3, u"Auslösezustand"_s), 62, 1);
}
std::int16_t clsMQ27Values::CTRL_GetIsReleased() {
    return flag(in(maData3, u"Anlage ausgelöst"_s), 62, 2);
}
std::int16_t clsMQ27Values::DISP_GetStateOfChoice() {
    return state(in(maData3, u"Funktion Ortsanzeige"_s), 63, 0);
}
std::int16_t clsMQ27Values::GetConstDataError() {
    return flag(in(maData3, u"Programmspeicher MQ27, Konstanten"_s), 63, 2);
}
std::int16_t clsMQ27Values::GetParameterStorageError() {
    return flag(in(maData3, u"Programmspeicher MQ27, Parameter"_s), 63, 3);
}
std::int16_t clsMQ27Values::CTRL_GetProgramStorageError() {
    return flag(in(maData3, u"Programmspeicher MQ27, Programm"_s), 63, 4);
}
std::int16_t clsMQ27Values::CTRL_GetProgramError() {
    return flag(in(maData3, u"Programmausführung MQ27"_s), 63, 5);
}
std::int16_t clsMQ27Values::CTRL_GetHasBattery() {
    return flag(in(maData3, u"Akkuladegerät vorhanden"_s), 63, 6);
}
std::int16_t clsMQ27Values::CTRL_GetBatteryIsOn() {
    return flag(in(maData3, u"Akku angeschaltet"_s), 63, 7);
}

float clsMQ27Values::GetTwoButtonDelay() {
    return u8(in(maData3, u"Max. Zeitverzug zw. 2 Tasten"_s, kHundredths), 141);
}
float clsMQ27Values::GetResetButtonDelay() {
    return u8(in(maData3, u"Min. Betätigungszeit f. Reset"_s, kHundredths), 142);
}
std::int16_t clsMQ27Values::DISP_GetResetButton() {
    return flag(in(maData3, u"Zustand physikalischer Resettaster"_s), 143, 0);
}
std::int16_t clsMQ27Values::DISP_GetTemperatureButton() {
    return flag(in(maData3, u"Zustand physikalischer Temperaturwahltaster"_s), 143, 1);
}
std::int16_t clsMQ27Values::DISP_GetKeySwitch() {
    return flag(in(maData3, u"Zustand Schlüsselschalter"_s), 143, 2);
}
std::int16_t clsMQ27Values::DISP_GetVirtualConfigButton() {
    return flag(in(maData3, u"Zustand virtuelle Konfig.-Taste"_s), 143, 3);
}
std::int16_t clsMQ27Values::DISP_GetVirtualAirFlowInitButton() {
    return flag(in(maData3, u"Zustand virtuelle LS-Init Taste"_s), 143, 4);
}
std::int16_t clsMQ27Values::DISP_GetVirtualResetButton() {
    return flag(in(maData3, u"Zustand virtuelle Resettaste"_s), 143, 5);
}
std::int16_t clsMQ27Values::DISP_GetVirtualTempChoiceButton() {
    return flag(in(maData3, u"Zustand virtuelle Temperaturwahltaste"_s), 143, 6);
}
std::int16_t clsMQ27Values::DISP_GetVirtualSoundOffButton() {
    return flag(in(maData3, u"Zustand virtuelle Taste Akustik AUS"_s), 143, 7);
}
std::int16_t clsMQ27Values::GetBuzzerShouldBeOff() {
    return flag(in(maData3, u"Flag Summer ausgeschaltet"_s), 144, 0);
}
std::int16_t clsMQ27Values::DISP_GetBuzzerState() {
    return state(in(maData3, u"Zustand Summer"_s), 144, 1);
}
std::int16_t clsMQ27Values::BMZ_GetBlockedState() {
    return flag(in(maData3, u"Relais Isoliert/blockiert"_s), 145, 0);
}
std::int16_t clsMQ27Values::BMZ_GetFaultState() {
    return flag(in(maData3, u"Relais Störung"_s), 145, 5);
}
std::int16_t clsMQ27Values::BMZ_GetReleasedState() {
    return flag(in(maData3, u"Relais Ausgelöst"_s), 145, 6);
}
std::int16_t clsMQ27Values::DISP_GetLedOp() {
    return state(in(maData3, u"Zustand LED Betrieb"_s), 146, 0);
}
std::int16_t clsMQ27Values::DISP_GetLedFailure() {
    return state(in(maData3, u"Zustand LED Störung"_s), 146, 2);
}
std::int16_t clsMQ27Values::DISP_GetLedBatt() {
    return state(in(maData3, u"Zustand LED Akkustörung"_s), 146, 4);
}
std::int16_t clsMQ27Values::DISP_GetLedMainsFailure() {
    return state(in(maData3, u"Zustand LED Netzstörung"_s), 146, 6);
}
std::int16_t clsMQ27Values::DISP_GetLedBlocked() {
    return state(in(maData3, u"Zustand LED Blockiert"_s), 147, 0);
}
std::int16_t clsMQ27Values::DISP_GetLedReleased() {
    return state(in(maData3, u"Zustand LED Ausgelöst"_s), 147, 2);
}
std::int16_t clsMQ27Values::DISP_GetLedMainAlarm() {
    return state(in(maData3, u"Zustand LED Hauptalarm"_s), 147, 4);
}
std::int16_t clsMQ27Values::DISP_GetLedA() {
    return state(in(maData3, u"Zustand LED Ortsanzeige A"_s), 148, 6);
}
std::int16_t clsMQ27Values::DISP_GetLedB() {
    return state(in(maData3, u"Zustand LED Ortsanzeige B"_s), 149, 0);
}
std::int16_t clsMQ27Values::DISP_GetLedC() {
    return state(in(maData3, u"Zustand LED Ortsanzeige C"_s), 149, 2);
}
std::int16_t clsMQ27Values::DISP_GetLedD() {
    return state(in(maData3, u"Zustand LED Ortsanzeige D"_s), 149, 4);
}
std::int16_t clsMQ27Values::DISP_GetLedE() {
    return state(in(maData3, u"Zustand LED Ortsanzeige E"_s), 149, 6);
}
float clsMQ27Values::DISP_GetBargraphLevel() {
    return u8(in(maData3, u"Bargraphpegel"_s), 150);
}
float clsMQ27Values::DISP_GetTemperatureCode() {
    return u8(in(maData3, u"Temperaturanzeigecode"_s), 151);
}
std::int16_t clsMQ27Values::GetDefaultValuesUsed() {
    return flag(in(maData3, u"Default Werte aus Programm-Flash werden benutzt"_s), 170, 0);
}
std::int16_t clsMQ27Values::GetHasBatteryLoader() {
    return flag(in(maData3, u"Akkuladegerät muss vorhanden sein"_s), 170, 1);
}
std::int16_t clsMQ27Values::GetHasNetworkModule() {
    return flag(in(maData3, u"Firmware unterstützt Netzwerkkarte"_s), 170, 2);
}
std::int16_t clsMQ27Values::GetHasBargraphDisplay() {
    return flag(in(maData3, u"Firmware unterstützt Bargraph"_s), 170, 3);
}
std::int16_t clsMQ27Values::GetHasPreAlarmDisplay() {
    return flag(in(maData3, u"Firmware unterstützt Voralarmdisplay und -Relais"_s), 170, 4);
}
std::int16_t clsMQ27Values::GetHasTemperatureSensors() {
    return flag(in(maData3, u"Firmware unterstützt Temperatursensoren"_s), 170, 5);
}
std::int16_t clsMQ27Values::GetHasProgRel() {
    return flag(in(maData3, u"Firmware unterstützt programmierbare Relais"_s), 170, 6);
}

// Temperature sensor blocks: offsets relative to the block of sensor n.

float clsMQ27Values::TEM_GetNTCTemperature(std::int16_t n) {
    return f32(sensor(n, u"Aktuelle Temperatur"_s, kCelsius), 0);
}
float clsMQ27Values::GetNTCAlarmValue(std::int16_t n) {
    return f32(sensor(n, u"Eingestellte Alarmtemperatur"_s, kCelsius), 4);
}
float clsMQ27Values::GetNTCbeta(std::int16_t n) {
    return u16(sensor(n, u"NTC Betawert"_s), 8);
}
float clsMQ27Values::io_GetNTCVoltageADC(std::int16_t n) {
    return u16(sensor(n, u"NTC Messwert (ADC)"_s), 10);
}
std::int16_t clsMQ27Values::TEM_GetHasNTC(std::int16_t n) {
    return flag(sensor(n, u"NTC Fühler vorhanden"_s), 12, 0);
}
std::int16_t clsMQ27Values::TEM_GetNTCState(std::int16_t n) {
    return state(sensor(n, u"NTC Fühler Zustand"_s), 12, 1);
}

// Bits picked by an index.

std::int16_t clsMQ27Values::indexedBit(int offset, int bit, bool inRange,
                                       const QString& description) {
    if (!inRange) {
        SetIndexError();
        return 0;
    }
    return flag(in(maData3, description), offset, bit);
}

std::int16_t clsMQ27Values::maskBit(int offset, std::int16_t b, int bitCount,
                                    const QString& description) {
    return indexedBit(offset + b / 8, b % 8, b >= 0 && b < bitCount, description);
}

std::int16_t clsMQ27Values::REL_GetRelState(std::int16_t r) {
    return indexedBit(62, r + 3, r >= 0 && r <= 4, u"Zustand Relais "_s % Number(r + 1).view());
}
std::int16_t clsMQ27Values::BMZ_GetAlarmState(std::int16_t d) {
    return indexedBit(145, d + 1, d >= 0 && d <= 1, valuetext::detector(d, u"Relais Hauptalarm"_s));
}
std::int16_t clsMQ27Values::BMZ_GetPreAlarmState(std::int16_t d) {
    return indexedBit(145, d + 3, d >= 0 && d <= 1, valuetext::detector(d, u"Relais Voralarm"_s));
}
std::int16_t clsMQ27Values::GetRelayCombineMask(std::int16_t r, std::int16_t b) {
    const bool inRange = r >= 0 && r <= 4 && b >= 0 && b <= 15;
    return indexedBit(129 + 2 * r + b / 8, b % 8, inRange,
                      u"Relais "_s % Number(r + 1).view() % u' ' %
                          valuetext::bit(b, 2, u"Relais Verknüpfungsmaske"_s));
}
std::int16_t clsMQ27Values::REL_GetRelEventMask(std::int16_t b) {
    return maskBit(139, b, 16, valuetext::bit(b, 2, u"Relais Ereignismaske"_s));
}
std::int16_t clsMQ27Values::CTRL_GetFailures(std::int16_t b) {
    return maskBit(152, b, 32, valuetext::bit(b, 1, u"Sammelstörung aktuell"_s));
}
std::int16_t clsMQ27Values::GetSavedFailures(std::int16_t b) {
    return maskBit(156, b, 32, valuetext::bit(b, 1, u"Sammelstörung gespeichert"_s));
}
std::int16_t clsMQ27Values::CTRL_GetValidFailureMask(std::int16_t b) {
    return maskBit(160, b, 32, valuetext::bit(b, 1, u"Sammelstörung gültig"_s));
}
std::int16_t clsMQ27Values::CTRL_GetMessages(std::int16_t b) {
    return maskBit(164, b, 16, valuetext::bit(b, 1, u"Sammelmeldung aktuell"_s));
}
std::int16_t clsMQ27Values::GetSavedMessages(std::int16_t b) {
    return maskBit(166, b, 16, valuetext::bit(b, 1, u"Sammelmeldung gespeichert"_s));
}
std::int16_t clsMQ27Values::CTRL_GetValidMessageMask(std::int16_t b) {
    return maskBit(168, b, 16, valuetext::bit(b, 1, u"Sammelmeldung gültig"_s));
}

// Display LEDs of the detectors.

std::int16_t clsMQ27Values::detectorLed(std::int16_t d, BitPlace first, BitPlace second,
                                        const QString& description) {
    if (d < 0 || d > 1) {
        SetIndexError();
        return 0;
    }
    const BitPlace place = d == 0 ? first : second;
    return state(in(maData3, valuetext::detector(d, description)), place.offset, place.lowBit);
}

std::int16_t clsMQ27Values::DISP_GetLedAlarm(std::int16_t d) {
    return detectorLed(d, {147, 6}, {148, 0}, u"Zustand LED Hauptalarm"_s);
}
std::int16_t clsMQ27Values::DISP_GetLedPreAlarm(std::int16_t d) {
    return detectorLed(d, {148, 2}, {148, 4}, u"Zustand LED Voralarm"_s);
}
