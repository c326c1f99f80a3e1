// Telegram 5: ten extinguishing module blocks; offsets relative to the block of module m.
#include "values/valuestore.h"

#include "values/unitnames.h"

#include "values/valuetext.h"

using namespace Qt::StringLiterals;

using namespace unitnames;

double ValueStore::EXT_GetSerialNum(std::int16_t m) {
    return U32(BusModule(m, u"Seriennummer"_s), 0);
}
QString ValueStore::EXT_GetSoftwareNum(std::int16_t m) {
    return SoftwareNumber(BusModule(m, u"Softwarenummer"_s), 4);
}
QString ValueStore::EXT_GetParameterID(std::int16_t m) {
    return ParameterId(BusModule(m, u"Parametersatznummer"_s), 8);
}
float ValueStore::EXT_GetAlarmResistorValue(std::int16_t m) {
    return F32(BusModule(m, u"Handauslösung, Alarmwiderstand"_s, kOhm), 13);
}
float ValueStore::EXT_GetNormalResistorValue(std::int16_t m) {
    return F32(BusModule(m, u"Handauslösung, Normalwiderstand"_s, kOhm), 17);
}
float ValueStore::EXT_GetIgnitionVoltage(std::int16_t m) {
    return F32(BusModule(m, u"Zündspannung"_s, kVolts), 21);
}
float ValueStore::EXT_GetIgnitionVoltageMin(std::int16_t m) {
    return F32(BusModule(m, u"Min. Zündspannung"_s, kVolts), 25);
}
float ValueStore::EXT_GetResistorValueTolerance(std::int16_t m) {
    return U8(BusModule(m, u"Handauslösung, Widerstandstoleranz"_s, u"%"_s), 29);
}
std::int16_t ValueStore::EXT_GetLedOp(std::int16_t m) {
    return StateBits(BusModule(m, u"Zustand LED Betrieb"_s), 30, 0);
}
std::int16_t ValueStore::EXT_GetLedBlocked(std::int16_t m) {
    return StateBits(BusModule(m, u"Zustand LED Blockiert"_s), 30, 2);
}
std::int16_t ValueStore::EXT_GetLedFailure(std::int16_t m) {
    return StateBits(BusModule(m, u"Zustand LED Störung"_s), 30, 4);
}
std::int16_t ValueStore::EXT_GetLedReleased(std::int16_t m) {
    return StateBits(BusModule(m, u"Zustand LED Ausgelöst"_s), 30, 6);
}
std::int16_t ValueStore::EXT_GetIsOnline(std::int16_t m) {
    return Flag(BusModule(m, u"Modul online"_s), 31, 0);
}
std::int16_t ValueStore::EXT_GetIsBlocked(std::int16_t m) {
    return Flag(BusModule(m, u"Modul blockiert"_s), 31, 1);
}
std::int16_t ValueStore::EXT_GetIsIsolated(std::int16_t m) {
    return Flag(BusModule(m, u"Modul isoliert"_s), 31, 2);
}
std::int16_t ValueStore::EXT_GetDoActivate(std::int16_t m) {
    return Flag(BusModule(m, u"Ansteuerbefehl erhalten"_s), 31, 3);
}
std::int16_t ValueStore::EXT_GetIsActivated(std::int16_t m) {
    return Flag(BusModule(m, u"Abschaltrelais angesteuert"_s), 31, 4);
}
std::int16_t ValueStore::EXT_GetDoRelease(std::int16_t m) {
    return Flag(BusModule(m, u"Auslösebefehl erhalten"_s), 31, 5);
}
std::int16_t ValueStore::EXT_GetIsReleased(std::int16_t m) {
    return Flag(BusModule(m, u"Zündkreis ausgelöst"_s), 31, 6);
}

std::int16_t ValueStore::ModuleFailureBit(std::int16_t m, std::int16_t b, int offset,
                                          const valuetext::Description& description) {
    if (b < 0 || b > 7) {
        SetIndexError();
        return 0;
    }
    return Flag(BusModule(m, valuetext::bit(b, 1, description.text)), offset, b);
}

std::int16_t ValueStore::EXT_GetActualFailures(std::int16_t m, std::int16_t b) {
    return ModuleFailureBit(m, b, 32, u"Störmeldung aktuell"_s);
}
std::int16_t ValueStore::EXT_GetSavedFailures(std::int16_t m, std::int16_t b) {
    return ModuleFailureBit(m, b, 33, u"Störmeldung gespeichert"_s);
}
std::int16_t ValueStore::EXT_GetValidFailureMask(std::int16_t m, std::int16_t b) {
    return ModuleFailureBit(m, b, 34, u"Störmeldung gültig"_s);
}

// Byte +35 holds two bits, two bits, one bit, an unread bit, two bits.
std::int16_t ValueStore::EXT_GetIgnitionLineState(std::int16_t m) {
    return StateBits(BusModule(m, u"Zustand Zündkreis"_s), 35, 0);
}
std::int16_t ValueStore::EXT_GetManActLineState(std::int16_t m) {
    return StateBits(BusModule(m, u"Zustand Handauslöselinie"_s), 35, 2);
}
std::int16_t ValueStore::EXT_GetEnableInputState(std::int16_t m) {
    return Flag(BusModule(m, u"Zustand Freigabeeingang"_s), 35, 4);
}
std::int16_t ValueStore::EXT_GetCutOffRelState(std::int16_t m) {
    return StateBits(BusModule(m, u"Zustand Abschaltrelais"_s), 35, 6);
}
std::int16_t ValueStore::EXT_GetHasIgnition(std::int16_t m) {
    return Flag(BusModule(m, u"Zündkreis vorhanden"_s), 36, 0);
}
std::int16_t ValueStore::EXT_GetHasCutOffRelay(std::int16_t m) {
    return Flag(BusModule(m, u"Abschaltrelais vorhanden"_s), 36, 1);
}
std::int16_t ValueStore::EXT_GetHasManualActivationLine(std::int16_t m) {
    return Flag(BusModule(m, u"Handauslöselinie vorhanden"_s), 36, 2);
}
std::int16_t ValueStore::EXT_GetHasEnableInput(std::int16_t m) {
    return Flag(BusModule(m, u"Freigabeeingang vorhanden"_s), 36, 3);
}
