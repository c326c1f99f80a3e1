#pragma once

#include "common/elementdecl.h"

// The main view frmDisplay, page by page. Indexes 0 and 1 of a per-detector array are
// detector 1 and 2; the bus modules are 0 to 9, and 20 is the rack device itself where a
// module array also serves it.

#define FRMDISPLAY_MENUS(ONE, MANY, MORE)                                                          \
    ONE(mnuFile, Menu)                                                                             \
    ONE(mnuLoad, Menu)                                                                             \
    ONE(mnuSave, Menu)                                                                             \
    ONE(mnuExit, Menu)                                                                             \
    ONE(mnuProtocol, Menu)                                                                         \
    ONE(mnuProtocolCreate, Menu)                                                                   \
    ONE(mnuSettings, Menu)                                                                         \
    ONE(mnuInterface, Menu)                                                                        \
    ONE(mnuLanguage, Menu)                                                                         \
    ONE(mnuCelsius, Menu)                                                                          \
    ONE(mnuFahrenheit, Menu)                                                                       \
    ONE(mnuPercentMeter, Menu)                                                                     \
    ONE(mnuPercentFeet, Menu)                                                                      \
    ONE(mnuExtended, Menu)                                                                         \
    ONE(mnuDeviceSettings, Menu)                                                                   \
    ONE(mnuExtinguishSettings, Menu)                                                               \
    ONE(mnuDeviceSelect, Menu)                                                                     \
    ONE(mnuDeviceSearch, Menu)                                                                     \
    ONE(mnuLogger, Menu)                                                                           \
    ONE(mnuLogDataDev, Menu)                                                                       \
    ONE(mnuHelp, Menu)                                                                             \
    ONE(mnuPDFHelp, Menu)                                                                          \
    ONE(mnuInfo, Menu)

// The header of every page.
#define FRMDISPLAY_PAGES(ONE, MANY, MORE)                                                          \
    MANY(tabDisplay, Tab, 0, 7)                                                                    \
    MANY(lblSerialNoLegend, Label, 0, 7)                                                           \
    MANY(lblSerialNo, Label, 0, 7)                                                                 \
    MANY(picReceiveLED, Box, 0, 7)                                                                 \
    MANY(lblReceiveLEDLegend, Label, 0, 7)                                                         \
    MANY(lblStateBanner, Label, 0, 7)

// Page 0, the state of the device at a glance: lamps, alarms, relays, inputs, identity.
#define FRMDISPLAY_STATUS(ONE, MANY, MORE)                                                         \
    ONE(fraDeviceState, Frame)                                                                     \
    MANY(picDisplay, Box, 0, 5)                                                                    \
    MANY(lblDisplayLegend, Label, 0, 5)                                                            \
    ONE(picAirFlowInitLED, Box)                                                                    \
    ONE(lblAirFlowInitLEDLegend, Label)                                                            \
    ONE(fraAlarm, Frame)                                                                           \
    MANY(picFireAlarm, Box, 0, 4)                                                                  \
    MANY(lblFireAlarmLegend, Label, 0, 4)                                                          \
    MANY(imgFireAlarm, Image, 2, 3)                                                                \
    MANY(picActionAlarm, Box, 0, 3)                                                                \
    MANY(lblActionAlarmLegend, Label, 0, 3)                                                        \
    MANY(imgActionAlarm, Image, 2, 3)                                                              \
    MANY(cmdAlarmReset, Button, 0, 1)                                                              \
    MANY(fraRelayState, Frame, 0, 1)                                                               \
    MANY(ctlRelayState, Relay, 0, 4)                                                               \
    MORE(ctlRelayState, Relay, 8, 14)                                                              \
    MANY(lblRelayStateLegend, Label, 0, 4)                                                         \
    MORE(lblRelayStateLegend, Label, 6, 6)                                                         \
    MORE(lblRelayStateLegend, Label, 8, 14)                                                        \
    ONE(fraInputs, Frame)                                                                          \
    ONE(fraFirePlace, Frame)                                                                       \
    MANY(picFirePlace, Box, 0, 4)                                                                  \
    MANY(lblFirePlaceLegend, Label, 0, 4)                                                          \
    ONE(fraIdentification, Frame)                                                                  \
    MANY(lblDetectorName, Label, 2, 3)                                                             \
    MANY(lblSerialNo2Legend, Label, 1, 1)                                                          \
    MANY(lblSerialNo2, Label, 0, 2)                                                                \
    MANY(lblSoftwareNoLegend, Label, 0, 1)                                                         \
    MANY(lblSoftwareNo, Label, 0, 2)                                                               \
    MANY(lblParameterNoLegend, Label, 0, 1)                                                        \
    MANY(lblParameterNo, Label, 0, 2)                                                              \
    ONE(lblErrNone, Label)

// Page 1, the smoke measurement: both detectors side by side, air flow and temperatures.
#define FRMDISPLAY_MEASUREMENT(ONE, MANY, MORE)                                                    \
    MANY(fraSmokeLevel, Frame, 0, 1)                                                               \
    MANY(lblSmokeLevelLegend, Label, 0, 1)                                                         \
    MANY(ctlSmokeLevel, BarGraph, 0, 1)                                                            \
    MANY(linFireAlarm, Line, 0, 1)                                                                 \
    MANY(linActionAlarm, Line, 0, 1)                                                               \
    MANY(lblSmokeLevel, Label, 0, 1)                                                               \
    MANY(fraActionAlarm, Frame, 0, 1)                                                              \
    MANY(fraChamber, Frame, 0, 1)                                                                  \
    MANY(ctlChamber, Gauge, 0, 1)                                                                  \
    MANY(lblChamberLegend, Label, 0, 1)                                                            \
    MANY(lblChamber, Label, 0, 1)                                                                  \
    ONE(fraAirFlow, Frame)                                                                         \
    ONE(ctlAirFlow, Gauge)                                                                         \
    ONE(lblAirFlowLegend, Label)                                                                   \
    ONE(lblAirFlow, Label)                                                                         \
    ONE(lblAirflowMeterPerSecond, Label)                                                           \
    MANY(lblTemperatureLegend, Label, 0, 1)                                                        \
    ONE(lblTemperature, Label)                                                                     \
    MANY(fraSensorTemp, Frame, 0, 6)                                                               \
    MANY(lblSensorTempLegend, Label, 0, 5)                                                         \
    MANY(lblSensorTemp, Label, 0, 4)

// Page 2, the fault list: bit i of the fault word is entry i, 32 and 33 the common entries.
#define FRMDISPLAY_MESSAGES(ONE, MANY, MORE)                                                       \
    MANY(fraErr, Frame, 0, 2)                                                                      \
    MANY(picErr, Box, 0, 33)                                                                       \
    MANY(lblErr, Label, 0, 33)                                                                     \
    MANY(picErrLegend, Box, 0, 1)                                                                  \
    MANY(lblErrLegend, Label, 0, 1)                                                                \
    ONE(fraErrReset, Frame)                                                                        \
    ONE(cmdErrReset, Button)

// Page 3, the device's settings and the air-flow initialisation.
#define FRMDISPLAY_SETTINGS(ONE, MANY, MORE)                                                       \
    ONE(fraSettings, Frame)                                                                        \
    ONE(lblAlarmDelayLegend, Label)                                                                \
    ONE(lblAlarmDelay, Label)                                                                      \
    ONE(txtAlarmDelay, Text)                                                                       \
    ONE(ctrAlarmDelay, UpDown)                                                                     \
    ONE(lblAlarmDelayUnit, Label)                                                                  \
    ONE(lblExtinguishDelayLegend, Label)                                                           \
    ONE(lblExtinguishDelay, Label)                                                                 \
    ONE(txtExtinguishDelay, Text)                                                                  \
    ONE(ctrExtinguishDelay, UpDown)                                                                \
    ONE(lblExtinguishDelayUnit, Label)                                                             \
    MANY(fraHasAirFlow, Frame, 0, 2)                                                               \
    ONE(lblAirFlowRangeLegend, Label)                                                              \
    ONE(lblAirFlowRange, Label)                                                                    \
    ONE(txtAirFlowRange, Text)                                                                     \
    ONE(ctrAirFlowRange, UpDown)                                                                   \
    ONE(lblAirFlowRangeUnit, Label)                                                                \
    ONE(lblFaultDelayLegend, Label)                                                                \
    ONE(lblFaultDelayMinutes, Label)                                                               \
    ONE(txtFaultDelayMinutes, Text)                                                                \
    ONE(ctrFaultDelayMinutes, UpDown)                                                              \
    ONE(lblFaultDelayMinutesUnit, Label)                                                           \
    ONE(lblFaultDelaySeconds, Label)                                                               \
    ONE(txtFaultDelaySeconds, Text)                                                                \
    ONE(ctrFaultDelaySeconds, UpDown)                                                              \
    ONE(lblFaultDelaySecondsUnit, Label)                                                           \
    ONE(lblBuzzerLegend, Label)                                                                    \
    MANY(chkBuzzer, Check, 0, 1)                                                                   \
    ONE(lblFaultStoreLegend, Label)                                                                \
    MANY(chkFaultStore, Check, 0, 1)                                                               \
    ONE(lblDynamicAirflowLegend, Label)                                                            \
    MANY(chkDynamicAirflow, Check, 0, 1)                                                           \
    ONE(fraHasLocalization, Frame)                                                                 \
    ONE(lblLocalizationLegend, Label)                                                              \
    MANY(chkLocalization, Check, 0, 1)                                                             \
    ONE(fraAlarmAfterLoc, Frame)                                                                   \
    ONE(lblAlarmAfterLocLegend, Label)                                                             \
    MANY(chkAlarmAfterLoc, Check, 0, 1)                                                            \
    MANY(fraDetectorSettings, Frame, 0, 1)                                                         \
    MANY(lblSensitivityLegend, Label, 0, 1)                                                        \
    MANY(lblSensitivity, Label, 0, 1)                                                              \
    MANY(txtSensitivity, Text, 0, 1)                                                               \
    MANY(ctrSensitivity, UpDown, 0, 1)                                                             \
    MANY(lblSensitivityUnit, Label, 0, 1)                                                          \
    MANY(fraPreAlarmThreshold, Frame, 0, 1)                                                        \
    MANY(lblPreAlarmThresholdLegend, Label, 0, 1)                                                  \
    MANY(lblPreAlarmThreshold, Label, 0, 1)                                                        \
    MANY(txtPreAlarmThreshold, Text, 0, 1)                                                         \
    MANY(ctrPreAlarmThreshold, UpDown, 0, 1)                                                       \
    MANY(lblPreAlarmThresholdUnit, Label, 0, 1)                                                    \
    MANY(fraHasTrueLix, Frame, 0, 1)                                                               \
    MANY(lblTrueLixLegend, Label, 0, 1)                                                            \
    MANY(chkTrueLix, Check, 0, 3)                                                                  \
    ONE(cmdSettings, Button)                                                                       \
    ONE(cmdSettingsStandard, Button)                                                               \
    ONE(cmdSettingsAssume, Button)                                                                 \
    ONE(cmdSettingsCancel, Button)                                                                 \
    ONE(lblSettingsWaiting, Label)                                                                 \
    ONE(fraAirFlowInit, Frame)                                                                     \
    ONE(lblAltitudeLegend, Label)                                                                  \
    ONE(lblAltitude, Label)                                                                        \
    ONE(txtAltitude, Text)                                                                         \
    ONE(ctrAltitude, UpDown)                                                                       \
    ONE(lblAltitudeUnit, Label)                                                                    \
    ONE(lblAirPressureLegend, Label)                                                               \
    ONE(lblAirPressure, Label)                                                                     \
    ONE(txtAirPressure, Text)                                                                      \
    ONE(ctrAirPressure, UpDown)                                                                    \
    ONE(lblAirPressureUnit, Label)                                                                 \
    ONE(lblFanVoltageNormalLegend, Label)                                                          \
    ONE(lblFanVoltageNormal, Label)                                                                \
    ONE(txtFanVoltageNormal, Text)                                                                 \
    ONE(ctrFanVoltageNormal, UpDown)                                                               \
    ONE(lblFanVoltageNormalUnit, Label)                                                            \
    ONE(cmdAirFlowSet, Button)                                                                     \
    ONE(cmdAirFlowStandard, Button)                                                                \
    ONE(cmdAirFlowInit, Button)                                                                    \
    ONE(cmdAirFlowCancel, Button)                                                                  \
    ONE(lblAirFlowWaiting, Label)

// Page 4, the programmable relays and the temperature alarms.
#define FRMDISPLAY_RELAYS(ONE, MANY, MORE)                                                         \
    ONE(fraRelaySettings, Frame)                                                                   \
    MANY(lblRelayNumber, Label, 0, 4)                                                              \
    MANY(lblRelais, Label, 0, 15)                                                                  \
    MANY(chkRelay1, Check, 0, 13)                                                                  \
    MANY(chkRelay2, Check, 0, 13)                                                                  \
    MANY(chkRelay3, Check, 0, 13)                                                                  \
    MANY(chkRelay4, Check, 0, 13)                                                                  \
    MANY(chkRelay5, Check, 0, 13)                                                                  \
    MANY(optRelay1, Option, 0, 1)                                                                  \
    MANY(optRelay2, Option, 0, 1)                                                                  \
    MANY(optRelay3, Option, 0, 1)                                                                  \
    MANY(optRelay4, Option, 0, 1)                                                                  \
    MANY(optRelay5, Option, 0, 1)                                                                  \
    ONE(cmdRelaySet, Button)                                                                       \
    ONE(cmdRelayAssume, Button)                                                                    \
    ONE(cmdRelayCancel, Button)                                                                    \
    ONE(lblRelayWaiting, Label)                                                                    \
    MANY(lblSensorTempAlarmLegend, Label, 0, 5)                                                    \
    MANY(lblSensorTempAlarm, Label, 0, 4)                                                          \
    MANY(txtSensorTempAlarm, Text, 0, 4)                                                           \
    MANY(ctrSensorTempAlarm, UpDown, 0, 4)                                                         \
    MANY(lblSensorTempAlarmUnit, Label, 0, 4)                                                      \
    ONE(cmdSensorTempAlarmSet, Button)                                                             \
    ONE(cmdSensorTempAlarmAssume, Button)                                                          \
    ONE(cmdSensorTempAlarmCancel, Button)                                                          \
    ONE(lblSensorTempAlarmWaiting, Label)

// Page 5, the localisation of a fire along the pipe.
#define FRMDISPLAY_LOCALISATION(ONE, MANY, MORE)                                                   \
    ONE(fraLocalization, Frame)                                                                    \
    MANY(lblLocHole, Label, 0, 4)                                                                  \
    MANY(lblLocTime, Label, 0, 4)                                                                  \
    MANY(lblLocTimeUnit, Label, 0, 4)                                                              \
    ONE(lblLocNumberOfHolesLegend, Label)                                                          \
    ONE(lblLocNumberOfHoles, Label)                                                                \
    ONE(lblBlowTimeLegend, Label)                                                                  \
    ONE(lblBlowTime, Label)                                                                        \
    ONE(lblBlowTimeUnit, Label)                                                                    \
    ONE(lblSuckFanVoltageLegend, Label)                                                            \
    ONE(lblSuckFanVoltage, Label)                                                                  \
    ONE(lblSuckFanVoltageUnit, Label)                                                              \
    ONE(lblBlowFanVoltageLegend, Label)                                                            \
    ONE(lblBlowFanVoltage, Label)                                                                  \
    ONE(lblBlowFanVoltageUnit, Label)                                                              \
    MANY(cmdShowLocLearnMode, Button, 0, 1)

// Pages 6 and 7, the bus modules 0 to 4 and 5 to 9; the rack device's own manual release
// line and enable input (index 20) stand on page 0.
#define FRMDISPLAY_MODULES(ONE, MANY, MORE)                                                        \
    MANY(fraExtStatus, Frame, 0, 9)                                                                \
    MANY(lblExtSerialNoLegend, Label, 0, 9)                                                        \
    MANY(lblExtSerialNo, Label, 0, 9)                                                              \
    MANY(picExtOnline, Box, 0, 9)                                                                  \
    MANY(lblExtOnlineLegend, Label, 0, 9)                                                          \
    MANY(picExtOperating, Box, 0, 9)                                                               \
    MANY(lblExtOperatingLegend, Label, 0, 9)                                                       \
    MANY(picExtReleased, Box, 0, 9)                                                                \
    MANY(lblExtReleasedLegend, Label, 0, 9)                                                        \
    MANY(picExtFault, Box, 0, 9)                                                                   \
    MANY(lblExtFaultLegend, Label, 0, 9)                                                           \
    MANY(picExtBlocked, Box, 0, 9)                                                                 \
    MANY(lblExtBlockedLegend, Label, 0, 9)                                                         \
    MANY(picExtIgnition, Box, 0, 9)                                                                \
    MANY(lblExtIgnitionLegend, Label, 0, 9)                                                        \
    MANY(picExtCutOff, Box, 0, 9)                                                                  \
    MANY(lblExtCutOffLegend, Label, 0, 9)                                                          \
    MANY(ctlManAct, Relay, 0, 9)                                                                   \
    MORE(ctlManAct, Relay, 20, 20)                                                                 \
    MANY(picManAct, Box, 0, 9)                                                                     \
    MORE(picManAct, Box, 20, 20)                                                                   \
    MANY(lblManActLegend, Label, 0, 9)                                                             \
    MORE(lblManActLegend, Label, 20, 20)                                                           \
    MANY(ctlEnable, Relay, 0, 9)                                                                   \
    MORE(ctlEnable, Relay, 20, 20)                                                                 \
    MANY(lblEnableLegend, Label, 0, 9)                                                             \
    MORE(lblEnableLegend, Label, 20, 20)                                                           \
    MANY(cmdExtinguisherIdent, Button, 0, 9)                                                       \
    MANY(lblExtinguishIsIntern, Label, 0, 9)                                                       \
    MANY(cmdExtinguisherMessages, Button, 0, 9)

#define FRMDISPLAY_ELEMENTS(ONE, MANY, MORE)                                                       \
    FRMDISPLAY_MENUS(ONE, MANY, MORE)                                                              \
    FRMDISPLAY_PAGES(ONE, MANY, MORE)                                                              \
    FRMDISPLAY_STATUS(ONE, MANY, MORE)                                                             \
    FRMDISPLAY_MEASUREMENT(ONE, MANY, MORE)                                                        \
    FRMDISPLAY_MESSAGES(ONE, MANY, MORE)                                                           \
    FRMDISPLAY_SETTINGS(ONE, MANY, MORE)                                                           \
    FRMDISPLAY_RELAYS(ONE, MANY, MORE)                                                             \
    FRMDISPLAY_LOCALISATION(ONE, MANY, MORE)                                                       \
    FRMDISPLAY_MODULES(ONE, MANY, MORE)

MQ27_DECLARE_FORM(frmDisplay, FRMDISPLAY_ELEMENTS)

namespace frmDisplay {
// The event boxes of relays 1 to 5, index i the event of row i, and the two options of each
// relay (OR, AND).
inline constexpr ElementArray kRelayBoxes[] = {chkRelay1, chkRelay2, chkRelay3, chkRelay4,
                                               chkRelay5};
inline constexpr ElementArray kRelayOptions[] = {optRelay1, optRelay2, optRelay3, optRelay4,
                                                 optRelay5};
} // namespace frmDisplay

// The main view's pages, in the order of tabDisplay.
namespace frmDisplayPage {
enum : int {
    Status = 0,
    Measurement = 1,
    Messages = 2,
    Settings = 3,
    Relays = 4,
    Localisation = 5,
    ModulesA = 6,
    ModulesB = 7,
};
} // namespace frmDisplayPage
