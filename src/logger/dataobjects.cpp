#include "logger/dataobjects.h"

#include "common/numberformat.h"

#include "values/valuestore.h"

#include <charconv>
#include <cmath>

#include <QStringBuilder>

using namespace Qt::StringLiterals;

namespace {

// Hands each row to the visitor. A row takes its text from the strings the getter has just
// written, so every call must pass the getter's result straight in.
class Rows {
public:
    Rows(ValueStore& values, const std::function<void(const DataObject&)>& visit)
        : values_(values)
        , visit_(visit) {}

    void S(float value) { hand('S', value); }
    void I(std::int16_t value) { hand('I', value); }
    void D(double value) { hand('D', value); }
    void T(QString value) { hand('T', std::move(value)); }

private:
    void hand(char type, std::variant<float, std::int16_t, double, QString> value) {
        visit_(DataObject{rowText(), type, std::move(value)});
        ++row_;
    }

    // The rows come in a fixed order and a row's text does not depend on the values, so
    // each is joined once, at the first pass of the program.
    QString rowText() const {
        static QList<QString> joined;
        if (row_ < joined.size()) return joined[row_];
        const QString unit = values_.ValueUnit();
        joined.append(unit.isEmpty() ? values_.ValueDescription()
                                     : values_.ValueDescription() % u" ["_s % unit % u']');
        return joined.back();
    }

    ValueStore& values_;
    const std::function<void(const DataObject&)>& visit_;
    qsizetype row_ = 0;
};

void serialNumber(ValueStore& v, Rows& row) {
    row.D(v.GetSerialNum());
}

void airFlow(ValueStore& v, Rows& row) {
    row.S(v.DET_GetFlowValue());
    row.S(v.DET_GetFlowRefValue());
    row.S(v.DET_GetAirTemperature());
    row.S(v.DET_GetAltitude());
    row.S(v.DET_GetAirPressureSetPoint());
    row.S(v.DET_GetAirFlowFailureDelayMax());
    row.S(v.DET_GetAirFlowFailureDelayMin());
    row.S(v.DET_GetAirFlowFailureDelaySetPoint());
    row.S(v.DET_GetStaticFlowDevMax());
    row.S(v.DET_GetStaticFlowDevMin());
    row.S(v.DET_GetStaticFlowDevSetPoint());
    row.I(v.DET_GetFlowInitIsActive());
    row.I(v.DET_GetHasFlow());
    row.I(v.DET_GetFlowShouldBeOn());
    row.I(v.DET_GetFlowIsOn());
    row.I(v.DET_GetHasDynFlow());
    row.I(v.DET_GetDynFlowShouldBeOn());
    row.I(v.DET_GetDynFlowIsOn());
    row.I(v.DET_GetFlowInitAborted());
    row.I(v.DET_GetAirFlowError());
    row.I(v.DET_GetFlowDynDevPlus());
    row.I(v.DET_GetFlowDynDevMinus());
    row.I(v.DET_GetFlowStatDevPlus());
    row.I(v.DET_GetFlowStatDevMinus());
    row.I(v.DET_GetTemperatureIsHigh());
    row.I(v.DET_GetTemperatureIsLow());
}

void fansAndLocalisation(ValueStore& v, Rows& row) {
    row.S(v.DET_GetUFanMax());
    row.S(v.DET_GetUFanMin());
    row.S(v.DET_GetUFanSetPoint());
    row.S(v.DET_GetFanVoltage());
    row.S(v.DET_GetSuckFanLrnVoltage());
    row.S(v.DET_GetBlowFanLrnVoltage());
    row.S(v.DET_GetSuckFanLocVoltage());
    row.S(v.DET_GetBlowFanVoltage());
    row.S(v.DET_GetBlowTime());
    row.S(v.DET_GetBlowLrnTime());
    row.S(v.DET_GetSuckTime1Max());
    row.S(v.DET_GetSuckTime1Min());
    row.S(v.DET_GetSuckTime2Max());
    row.S(v.DET_GetSuckTime2Min());
    row.S(v.DET_GetSuckTime3Max());
    row.S(v.DET_GetSuckTime3Min());
    row.S(v.DET_GetSuckTime4Max());
    row.S(v.DET_GetSuckTime4Min());
    row.S(v.DET_GetSuckTime5Max());
    row.S(v.DET_GetSuckTime5Min());
    row.S(v.DET_GetFirePlaceSuckTime());
    row.S(v.DET_GetFirePlace());
    row.I(v.DET_GetHasSingleHoleDetection());
    row.I(v.DET_GetLocShouldBeOn());
    row.I(v.DET_GetLocIsActive());
    row.I(v.DET_GetLearningIsOn());
    row.I(v.DET_GetLocError());
    row.I(v.DET_GetFanError());
    row.I(v.DET_GetLocLocalized());
}

void detector(ValueStore& v, Rows& row, std::int16_t d) {
    row.D(v.DET_GetDetSerialNum(d));
    row.T(v.DET_GetDetSoftwareNum(d));
    row.T(v.DET_GetDetParameterID(d));
    row.S(v.DET_GetSmokeValue10Max(d));
    row.S(v.DET_GetSmokeValue10Min(d));
    row.S(v.DET_GetSmokeValue10SetPoint(d));
    row.S(v.DET_GetChamberValueRatio(d));
    row.S(v.DET_GetAlarmThreshold(d));
    row.S(v.DET_GetPreAlarmThreshold(d));
    row.S(v.DET_GetSmokeValueRatio(d));
    row.I(v.DET_GetAlarmLED(d));
    row.I(v.DET_GetPreAlarmLED(d));
    row.I(v.DET_GetFailureLED(d));
    row.I(v.DET_GetChamberIsDirty(d));
    row.I(v.DET_GetLightTooDark(d));
    row.I(v.DET_GetSmokeError(d));
    row.I(v.DET_GetDetDataStorageError(d));
    row.I(v.DET_GetDetProgramStorageError(d));
    row.I(v.DET_GetDetProgramError(d));
    row.I(v.DET_GetDetCommError(d));
    row.I(v.DET_GetHasTrueLix(d));
    row.I(v.DET_GetTrueLixShouldBeOn(d));
    row.I(v.DET_GetAlarmAfterLoc(d));
}

void controllerAndRelays(ValueStore& v, Rows& row) {
    row.T(v.GetSoftwareNum());
    row.T(v.GetParameterID());
    row.S(v.GetUinBitVoltage());
    row.S(v.CTRL_GetUinVoltage());
    row.S(v.GetAlarmResistorValue());
    row.S(v.GetNormalResistorValue());
    // 32-bit counters: a single float would round them above 2^24.
    row.D(v.GetNumWriteFailureStorage());
    row.D(v.GetNumWriteParameterStorage());
    row.D(v.GetNumResets());
    row.S(v.CTRL_GetUinADC());
    row.S(v.GetUinMinADC());
    row.S(v.GetUNTCMax());
    row.S(v.GetUNTCMin());
    row.S(v.GetResetCounter());
    row.S(v.GetNumOfExtModulesSet());
    row.S(v.DET_GetAlarmDelayMax());
    row.S(v.DET_GetAlarmDelayMin());
    row.S(v.DET_GetAlarmDelaySetPoint());
    row.S(v.GetExtinguishDelay());
    row.S(v.GetResistorValueTolerance());
    row.S(v.CTRL_GetNTCDisplayed());
    row.I(v.CTRL_GetResetInput());
    row.I(v.CTRL_GetEnableInputState());
    row.I(v.CTRL_GetManActLineState());
    row.I(v.CTRL_GetMainFailureFlag());
    row.I(v.DET_GetFailureStorageIsOn());
    row.I(v.GetHasTwoDetectors());
    row.I(v.CTRL_GetActivated());
    for (std::int16_t r = 0; r <= 4; ++r)
        row.I(v.REL_GetRelState(r));
    row.I(v.CTRL_GetReleased());
    row.I(v.CTRL_GetIsReleased());
    row.I(v.DISP_GetStateOfChoice());
    row.I(v.GetConstDataError());
    row.I(v.GetParameterStorageError());
    row.I(v.CTRL_GetProgramStorageError());
    row.I(v.CTRL_GetProgramError());
    row.I(v.CTRL_GetHasBattery());
    row.I(v.CTRL_GetBatteryIsOn());
}

void temperatureSensor(ValueStore& v, Rows& row, std::int16_t n) {
    row.S(v.TEM_GetNTCTemperature(n));
    row.S(v.GetNTCAlarmValue(n));
    row.S(v.GetNTCbeta(n));
    row.S(v.io_GetNTCVoltageADC(n));
    row.I(v.TEM_GetHasNTC(n));
    row.I(v.TEM_GetNTCState(n));
}

void relayCombineMasks(ValueStore& v, Rows& row) {
    for (std::int16_t r = 0; r <= 4; ++r)
        for (std::int16_t b = 0; b <= 15; ++b)
            row.I(v.GetRelayCombineMask(r, b));
}

void relayEventMask(ValueStore& v, Rows& row) {
    for (std::int16_t b = 0; b <= 15; ++b)
        row.I(v.REL_GetRelEventMask(b));
}

void keysAndBuzzer(ValueStore& v, Rows& row) {
    row.S(v.GetTwoButtonDelay());
    row.S(v.GetResetButtonDelay());
    row.I(v.DISP_GetResetButton());
    row.I(v.DISP_GetTemperatureButton());
    row.I(v.DISP_GetKeySwitch());
    row.I(v.DISP_GetVirtualConfigButton());
    row.I(v.DISP_GetVirtualAirFlowInitButton());
    row.I(v.DISP_GetVirtualResetButton());
    row.I(v.DISP_GetVirtualTempChoiceButton());
    row.I(v.DISP_GetVirtualSoundOffButton());
    row.I(v.GetBuzzerShouldBeOff());
    row.I(v.DISP_GetBuzzerState());
}

void outputsLedsAndFeatures(ValueStore& v, Rows& row) {
    row.I(v.BMZ_GetBlockedState());
    for (std::int16_t d = 0; d <= 1; ++d)
        row.I(v.BMZ_GetAlarmState(d));
    for (std::int16_t d = 0; d <= 1; ++d)
        row.I(v.BMZ_GetPreAlarmState(d));
    row.I(v.BMZ_GetFaultState());
    row.I(v.BMZ_GetReleasedState());
    row.I(v.DISP_GetLedOp());
    row.I(v.DISP_GetLedFailure());
    row.I(v.DISP_GetLedBatt());
    row.I(v.DISP_GetLedMainsFailure());
    row.I(v.DISP_GetLedBlocked());
    row.I(v.DISP_GetLedReleased());
    row.I(v.DISP_GetLedMainAlarm());
    for (std::int16_t d = 0; d <= 1; ++d)
        row.I(v.DISP_GetLedAlarm(d));
    for (std::int16_t d = 0; d <= 1; ++d)
        row.I(v.DISP_GetLedPreAlarm(d));
    row.I(v.DISP_GetLedA());
    row.I(v.DISP_GetLedB());
    row.I(v.DISP_GetLedC());
    row.I(v.DISP_GetLedD());
    row.I(v.DISP_GetLedE());
    row.S(v.DISP_GetBargraphLevel());
    row.S(v.DISP_GetTemperatureCode());
    row.I(v.GetDefaultValuesUsed());
    row.I(v.GetHasBatteryLoader());
    row.I(v.GetHasNetworkModule());
    row.I(v.GetHasBargraphDisplay());
    row.I(v.GetHasPreAlarmDisplay());
    row.I(v.GetHasTemperatureSensors());
    row.I(v.GetHasProgRel());
}

void extinguishingModule(ValueStore& v, Rows& row, std::int16_t m) {
    row.D(v.EXT_GetSerialNum(m));
    row.T(v.EXT_GetSoftwareNum(m));
    row.T(v.EXT_GetParameterID(m));
    row.S(v.EXT_GetAlarmResistorValue(m));
    row.S(v.EXT_GetNormalResistorValue(m));
    row.S(v.EXT_GetIgnitionVoltage(m));
    row.S(v.EXT_GetIgnitionVoltageMin(m));
    row.S(v.EXT_GetResistorValueTolerance(m));
    row.I(v.EXT_GetLedOp(m));
    row.I(v.EXT_GetLedBlocked(m));
    row.I(v.EXT_GetLedFailure(m));
    row.I(v.EXT_GetLedReleased(m));
    row.I(v.EXT_GetIsOnline(m));
    row.I(v.EXT_GetIsBlocked(m));
    row.I(v.EXT_GetIsIsolated(m));
    row.I(v.EXT_GetDoActivate(m));
    row.I(v.EXT_GetIsActivated(m));
    row.I(v.EXT_GetDoRelease(m));
    row.I(v.EXT_GetIsReleased(m));
    row.I(v.EXT_GetIgnitionLineState(m));
    row.I(v.EXT_GetManActLineState(m));
    row.I(v.EXT_GetEnableInputState(m));
    row.I(v.EXT_GetCutOffRelState(m));
    row.I(v.EXT_GetHasIgnition(m));
    row.I(v.EXT_GetHasCutOffRelay(m));
    row.I(v.EXT_GetHasManualActivationLine(m));
    row.I(v.EXT_GetHasEnableInput(m));
}

} // namespace

void VisitDataObjects(ValueStore& values, const std::function<void(const DataObject&)>& visit) {
    Rows row(values, visit);
    serialNumber(values, row);
    airFlow(values, row);
    fansAndLocalisation(values, row);
    for (std::int16_t d = 0; d <= 1; ++d)
        detector(values, row, d);
    controllerAndRelays(values, row);
    for (std::int16_t n = 0; n <= 4; ++n)
        temperatureSensor(values, row, n);
    relayCombineMasks(values, row);
    relayEventMask(values, row);
    keysAndBuzzer(values, row);
    outputsLedsAndFeatures(values, row);
    for (std::int16_t m = 0; m <= 9; ++m)
        extinguishingModule(values, row, m);
}

std::vector<DataObject> CollectDataObjects(ValueStore& values) {
    std::vector<DataObject> rows;
    rows.reserve(600);
    VisitDataObjects(values, [&rows](const DataObject& row) { rows.push_back(row); });
    return rows;
}

QString FormatValueC(const DataObject& row) {
    struct Formatter {
        QString operator()(float value) const { return numberformat::plainC(value); }
        QString operator()(double value) const { return numberformat::plainC(value); }
        QString operator()(std::int16_t value) const { return QString::number(value); }
        QString operator()(const QString& value) const { return value; }
    };
    return std::visit(Formatter{}, row.value);
}
