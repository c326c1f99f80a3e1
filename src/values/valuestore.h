#pragma once

#include "common/bytes.h"
#include "values/valuetext.h"

#include <cstdint>

#include <QString>

// The device as the program knows it: the last telegram of each read command as raw bytes,
// decoded on demand by the getters, and the write blocks waiting for the poll cycle.
//
// Every getter first records its German description and its unit (ValueDescription and
// ValueUnit read them), then decodes. An index outside its range gives "ERROR: Index out of
// range!", unit "#" and the result 0 ("#" for a text). Getters read zeros until their telegram has
// come in, and no index or byte pattern reads outside the stored arrays.
//
// Status results: 0 good, -2 out of range, -3 wrong size, -1 run-time failure.
class ValueStore {
public:
    QString ValueDescription() const { return m_description.joined(); }
    QString ValueUnit() const { return m_unit; }

    ValueStore();

    double GetSerialNum();

    // Air flow, fans and localisation, telegram 2.
    float DET_GetFlowValue();
    float DET_GetFlowRefValue();
    float DET_GetAirTemperature();
    float DET_GetAltitude();
    float DET_GetAirPressureSetPoint();
    float DET_GetAirFlowFailureDelayMax();
    float DET_GetAirFlowFailureDelayMin();
    float DET_GetAirFlowFailureDelaySetPoint();
    float DET_GetStaticFlowDevMax();
    float DET_GetStaticFlowDevMin();
    float DET_GetStaticFlowDevSetPoint();
    std::int16_t DET_GetFlowInitIsActive();
    std::int16_t DET_GetHasFlow();
    std::int16_t DET_GetFlowShouldBeOn();
    std::int16_t DET_GetFlowIsOn();
    std::int16_t DET_GetHasDynFlow();
    std::int16_t DET_GetDynFlowShouldBeOn();
    std::int16_t DET_GetDynFlowIsOn();
    std::int16_t DET_GetFlowInitAborted();
    std::int16_t DET_GetAirFlowError();
    std::int16_t DET_GetFlowDynDevPlus();
    std::int16_t DET_GetFlowDynDevMinus();
    std::int16_t DET_GetFlowStatDevPlus();
    std::int16_t DET_GetFlowStatDevMinus();
    std::int16_t DET_GetTemperatureIsHigh();
    std::int16_t DET_GetTemperatureIsLow();
    float DET_GetUFanMax();
    float DET_GetUFanMin();
    float DET_GetUFanSetPoint();
    float DET_GetFanVoltage();
    float DET_GetSuckFanLrnVoltage();
    float DET_GetBlowFanLrnVoltage();
    float DET_GetSuckFanLocVoltage();
    float DET_GetBlowFanVoltage();
    float DET_GetBlowTime();
    float DET_GetBlowLrnTime();
    float DET_GetSuckTime1Max();
    float DET_GetSuckTime1Min();
    float DET_GetSuckTime2Max();
    float DET_GetSuckTime2Min();
    float DET_GetSuckTime3Max();
    float DET_GetSuckTime3Min();
    float DET_GetSuckTime4Max();
    float DET_GetSuckTime4Min();
    float DET_GetSuckTime5Max();
    float DET_GetSuckTime5Min();
    float DET_GetFirePlaceSuckTime();
    float DET_GetFirePlace();
    std::int16_t DET_GetHasSingleHoleDetection();
    std::int16_t DET_GetLocShouldBeOn();
    std::int16_t DET_GetLocIsActive();
    std::int16_t DET_GetLearningIsOn();
    std::int16_t DET_GetLocError();
    std::int16_t DET_GetFanError();
    std::int16_t DET_GetLocLocalized();

    // Detector d (0 or 1), telegram 2.
    double DET_GetDetSerialNum(std::int16_t d);
    QString DET_GetDetSoftwareNum(std::int16_t d);
    QString DET_GetDetParameterID(std::int16_t d);
    float DET_GetSmokeValue10Max(std::int16_t d);
    float DET_GetSmokeValue10Min(std::int16_t d);
    float DET_GetSmokeValue10SetPoint(std::int16_t d);
    float DET_GetChamberValueRatio(std::int16_t d);
    float DET_GetAlarmThreshold(std::int16_t d);
    float DET_GetPreAlarmThreshold(std::int16_t d);
    float DET_GetSmokeValueRatio(std::int16_t d);
    std::int16_t DET_GetAlarmLED(std::int16_t d);
    std::int16_t DET_GetPreAlarmLED(std::int16_t d);
    std::int16_t DET_GetFailureLED(std::int16_t d);
    std::int16_t DET_GetChamberIsDirty(std::int16_t d);
    std::int16_t DET_GetLightTooDark(std::int16_t d);
    std::int16_t DET_GetSmokeError(std::int16_t d);
    std::int16_t DET_GetDetDataStorageError(std::int16_t d);
    std::int16_t DET_GetDetProgramStorageError(std::int16_t d);
    std::int16_t DET_GetDetProgramError(std::int16_t d);
    std::int16_t DET_GetDetCommError(std::int16_t d);
    std::int16_t DET_GetHasTrueLix(std::int16_t d);
    std::int16_t DET_GetTrueLixShouldBeOn(std::int16_t d);
    std::int16_t DET_GetAlarmAfterLoc(std::int16_t d);

    // Controller, display and relays, telegram 3.
    QString GetSoftwareNum();
    QString GetParameterID();
    float GetUinBitVoltage();
    float CTRL_GetUinVoltage();
    float GetAlarmResistorValue();
    float GetNormalResistorValue();
    double GetNumWriteFailureStorage();
    double GetNumWriteParameterStorage();
    double GetNumResets();
    float CTRL_GetUinADC();
    float GetUinMinADC();
    float GetUNTCMax();
    float GetUNTCMin();
    float GetResetCounter();
    float GetNumOfExtModulesSet();
    float DET_GetAlarmDelayMax();
    float DET_GetAlarmDelayMin();
    float DET_GetAlarmDelaySetPoint();
    float GetExtinguishDelay();
    float GetResistorValueTolerance();
    float CTRL_GetNTCDisplayed();
    std::int16_t CTRL_GetResetInput();
    std::int16_t CTRL_GetEnableInputState();
    std::int16_t CTRL_GetManActLineState();
    std::int16_t CTRL_GetMainFailureFlag();
    std::int16_t DET_GetFailureStorageIsOn();
    std::int16_t GetHasTwoDetectors();
    std::int16_t CTRL_GetActivated();
    std::int16_t CTRL_GetReleased();
    std::int16_t CTRL_GetIsReleased();
    std::int16_t DISP_GetStateOfChoice();
    std::int16_t GetConstDataError();
    std::int16_t GetParameterStorageError();
    std::int16_t CTRL_GetProgramStorageError();
    std::int16_t CTRL_GetProgramError();
    std::int16_t CTRL_GetHasBattery();
    std::int16_t CTRL_GetBatteryIsOn();
    float GetTwoButtonDelay();
    float GetResetButtonDelay();
    std::int16_t DISP_GetResetButton();
    std::int16_t DISP_GetTemperatureButton();
    std::int16_t DISP_GetKeySwitch();
    std::int16_t DISP_GetVirtualConfigButton();
    std::int16_t DISP_GetVirtualAirFlowInitButton();
    std::int16_t DISP_GetVirtualResetButton();
    std::int16_t DISP_GetVirtualTempChoiceButton();
    std::int16_t DISP_GetVirtualSoundOffButton();
    std::int16_t GetBuzzerShouldBeOff();
    std::int16_t DISP_GetBuzzerState();
    std::int16_t BMZ_GetBlockedState();
    std::int16_t BMZ_GetFaultState();
    std::int16_t BMZ_GetReleasedState();
    std::int16_t DISP_GetLedOp();
    std::int16_t DISP_GetLedFailure();
    std::int16_t DISP_GetLedBatt();
    std::int16_t DISP_GetLedMainsFailure();
    std::int16_t DISP_GetLedBlocked();
    std::int16_t DISP_GetLedReleased();
    std::int16_t DISP_GetLedMainAlarm();
    std::int16_t DISP_GetLedA();
    std::int16_t DISP_GetLedB();
    std::int16_t DISP_GetLedC();
    std::int16_t DISP_GetLedD();
    std::int16_t DISP_GetLedE();
    float DISP_GetBargraphLevel();
    float DISP_GetTemperatureCode();
    std::int16_t GetDefaultValuesUsed();
    std::int16_t GetHasBatteryLoader();
    std::int16_t GetHasNetworkModule();
    std::int16_t GetHasBargraphDisplay();
    std::int16_t GetHasPreAlarmDisplay();
    std::int16_t GetHasTemperatureSensors();
    std::int16_t GetHasProgRel();

    // Temperature sensor n (0 to 4), telegram 3.
    float TEM_GetNTCTemperature(std::int16_t n);
    float GetNTCAlarmValue(std::int16_t n);
    float GetNTCbeta(std::int16_t n);
    float io_GetNTCVoltageADC(std::int16_t n);
    std::int16_t TEM_GetHasNTC(std::int16_t n);
    std::int16_t TEM_GetNTCState(std::int16_t n);

    // Single bits by index, telegram 3. Masks are read lower byte first.
    std::int16_t REL_GetRelState(std::int16_t r);
    std::int16_t BMZ_GetAlarmState(std::int16_t d);
    std::int16_t BMZ_GetPreAlarmState(std::int16_t d);
    std::int16_t GetRelayCombineMask(std::int16_t r, std::int16_t b);
    std::int16_t REL_GetRelEventMask(std::int16_t b);
    std::int16_t CTRL_GetFailures(std::int16_t b);
    std::int16_t GetSavedFailures(std::int16_t b);
    std::int16_t CTRL_GetValidFailureMask(std::int16_t b);
    std::int16_t CTRL_GetMessages(std::int16_t b);
    std::int16_t GetSavedMessages(std::int16_t b);
    std::int16_t CTRL_GetValidMessageMask(std::int16_t b);

    // Display LEDs of detector d (0 or 1), telegram 3.
    std::int16_t DISP_GetLedAlarm(std::int16_t d);
    std::int16_t DISP_GetLedPreAlarm(std::int16_t d);

    // Extinguishing module m (0 to 9), telegram 5.
    double EXT_GetSerialNum(std::int16_t m);
    QString EXT_GetSoftwareNum(std::int16_t m);
    QString EXT_GetParameterID(std::int16_t m);
    float EXT_GetAlarmResistorValue(std::int16_t m);
    float EXT_GetNormalResistorValue(std::int16_t m);
    float EXT_GetIgnitionVoltage(std::int16_t m);
    float EXT_GetIgnitionVoltageMin(std::int16_t m);
    float EXT_GetResistorValueTolerance(std::int16_t m);
    std::int16_t EXT_GetLedOp(std::int16_t m);
    std::int16_t EXT_GetLedBlocked(std::int16_t m);
    std::int16_t EXT_GetLedFailure(std::int16_t m);
    std::int16_t EXT_GetLedReleased(std::int16_t m);
    std::int16_t EXT_GetIsOnline(std::int16_t m);
    std::int16_t EXT_GetIsBlocked(std::int16_t m);
    std::int16_t EXT_GetIsIsolated(std::int16_t m);
    std::int16_t EXT_GetDoActivate(std::int16_t m);
    std::int16_t EXT_GetIsActivated(std::int16_t m);
    std::int16_t EXT_GetDoRelease(std::int16_t m);
    std::int16_t EXT_GetIsReleased(std::int16_t m);
    std::int16_t EXT_GetActualFailures(std::int16_t m, std::int16_t b);
    std::int16_t EXT_GetSavedFailures(std::int16_t m, std::int16_t b);
    std::int16_t EXT_GetValidFailureMask(std::int16_t m, std::int16_t b);
    std::int16_t EXT_GetIgnitionLineState(std::int16_t m);
    std::int16_t EXT_GetManActLineState(std::int16_t m);
    std::int16_t EXT_GetEnableInputState(std::int16_t m);
    std::int16_t EXT_GetCutOffRelState(std::int16_t m);
    std::int16_t EXT_GetHasIgnition(std::int16_t m);
    std::int16_t EXT_GetHasCutOffRelay(std::int16_t m);
    std::int16_t EXT_GetHasManualActivationLine(std::int16_t m);
    std::int16_t EXT_GetHasEnableInput(std::int16_t m);

    // A copy of the stored telegram of command 1 to 5; -2 leaves the destination alone.
    std::int16_t GetDataArray(Bytes& destination, std::int16_t command);

    // Write blocks, each kept whole until the next Set of its kind; empty before the first.
    std::int16_t SetDeviceParameter(Bytes block);
    Bytes GetDeviceParameter() const;
    std::int16_t SetAirFlowInitParameter(Bytes block);
    Bytes GetAirFlowInitParameter() const;
    std::int16_t SetResetAlarmAndFault(Bytes block);
    Bytes GetResetAlarmAndFault() const;
    std::int16_t SetResetMessages(Bytes block);
    Bytes GetResetMessages() const;
    std::int16_t SetLocalizationParameter(Bytes block);
    Bytes GetLocalizationParameter() const;
    std::int16_t SetLocalizationParameterLearnMode(Bytes block);
    Bytes GetLocalizationParameterLearnMode() const;
    std::int16_t SetLocalizationAbortLearnMode(Bytes block);
    Bytes GetLocalizationAbortLearnMode() const;
    std::int16_t SetExtinguisherParameter(Bytes block);
    Bytes GetExtinguisherParameter() const;
    std::int16_t SetTemperatureParameter(Bytes block);
    Bytes GetTemperatureParameter() const;
    std::int16_t SetRelayParameter(Bytes block);
    Bytes GetRelayParameter() const;
    std::int16_t SetExtinguisherIdent(Bytes block);
    Bytes GetExtinguisherIdent() const;
    std::int16_t SetIndicatorTestParameter(Bytes block);
    Bytes GetIndicatorTestParameter() const;

    // Stores a whole stamped telegram of command 1 to 5. Only the exact size of that command
    // is taken (-3 keeps the previous telegram readable).
    std::int16_t SetDataArray(const Bytes& telegram, std::int16_t command);

    // Zeroes all five telegrams; their sizes stay.
    std::int16_t DeleteDataArrays();

    // 0 when the five telegrams carry one serial number, else the number 1 to 5 of the first
    // that differs. The reference is `serial`, or for 0 the serial number of telegram 1.
    std::int16_t CheckDataArrays(double serial);

private:
    // Where a value lives: an array and the start of its block. After an index error there
    // is no array, and every read gives 0.
    struct Field {
        const Bytes* data = nullptr;
        int base = 0;
    };

    Bytes* DataArray(std::int16_t command);

    // The last telegram of each read command 1 to 5, at index command - 1.
    Bytes m_telegrams[5];

    Bytes m_deviceParameter;
    Bytes m_airFlowInitParameter;
    Bytes m_resetAlarmAndFault;
    Bytes m_resetMessages;
    Bytes m_localizationParameter;
    Bytes m_localizationParameterLearnMode;
    Bytes m_localizationAbortLearnMode;
    Bytes m_extinguisherParameter;
    Bytes m_temperatureParameter;
    Bytes m_relayParameter;
    Bytes m_extinguisherIdent;
    Bytes m_indicatorTestParameter;

    static std::int16_t Keep(Bytes& slot, Bytes block);

    void SetIndexError();
    void Describe(const valuetext::Description& description, const QString& unit);
    valuetext::Description m_description;
    QString m_unit;

    // Each describes the value, then locates its block (or reports the index error).
    Field In(const Bytes& data, const valuetext::Description& description,
             const QString& unit = QString());
    Field Detector(std::int16_t d, const valuetext::Description& description,
                   const QString& unit = QString());
    Field Sensor(std::int16_t n, const valuetext::Description& description,
                 const QString& unit = QString());
    Field BusModule(std::int16_t m, const valuetext::Description& description,
                    const QString& unit = QString());

    // One bit of a mask of `bitCount` bits at `offset` of telegram 3, lower byte first.
    std::int16_t MaskBit(int offset, std::int16_t b, int bitCount,
                         const valuetext::Description& description);
    // A bit of byte 62 or 145 of telegram 3 picked by relay or detector index.
    std::int16_t IndexedBit(int offset, int bit, bool inRange,
                            const valuetext::Description& description);
    // Display LED field of a detector; the two detectors have theirs at unrelated places.
    struct BitPlace {
        int offset;
        int lowBit;
    };
    std::int16_t DetectorLed(std::int16_t d, BitPlace first, BitPlace second,
                             const valuetext::Description& description);
    // Failure bit b (0 to 7) of module m.
    std::int16_t ModuleFailureBit(std::int16_t m, std::int16_t b, int offset,
                                  const valuetext::Description& description);

    // The only reads of the stored bytes; 0 outside the array.
    static std::uint8_t ByteAt(Field field, int offset);
    static float U8(Field field, int offset);
    static float S8(Field field, int offset);
    static float U16(Field field, int offset);
    static float S16(Field field, int offset);
    static double U32(Field field, int offset);
    static float F32(Field field, int offset);
    static std::int16_t Flag(Field field, int offset, int bit);
    static std::int16_t StateBits(Field field, int offset, int lowBit);
    // "0000.00.000" from a uint16 and two bytes; "#" after an index error.
    static QString SoftwareNumber(Field field, int offset);
    // "0000.000.000" from two uint16 and a byte; "#" after an index error.
    static QString ParameterId(Field field, int offset);
};
