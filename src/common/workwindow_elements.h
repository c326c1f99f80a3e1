#pragma once

#include "common/elementdecl.h"

// The working windows opened from the main view: learning and testing the localisation,
// the settings of a bus module, and the rack device's advanced settings.

#define FRMLOCALIZELEARN_ELEMENTS(ONE, MANY, MORE)                                                 \
    ONE(lblLocNumberOfHolesLegend, Label)                                                          \
    ONE(txtLocNumberOfHoles, Text)                                                                 \
    MANY(optLocHole, Option, 0, 4)                                                                 \
    MANY(txtLocTime, Text, 0, 4)                                                                   \
    MANY(lblLocTimeUnit, Label, 0, 4)                                                              \
    MANY(lblLocPlace, Label, 0, 4)                                                                 \
    MANY(picLocFirePlaceTest, Box, 0, 4)                                                           \
    MANY(linLocPipe, Line, 0, 24)                                                                  \
    ONE(lblBlowTimeLegend, Label)                                                                  \
    ONE(txtBlowTime, Text)                                                                         \
    ONE(lblBlowTimeUnit, Label)                                                                    \
    ONE(lblSuckFanVoltageLegend, Label)                                                            \
    ONE(txtSuckFanVoltage, Text)                                                                   \
    ONE(lblSuckFanVoltageUnit, Label)                                                              \
    ONE(lblBlowFanVoltageLegend, Label)                                                            \
    ONE(txtBlowFanVoltage, Text)                                                                   \
    ONE(lblBlowFanVoltageUnit, Label)                                                              \
    ONE(lblLocTemporaryBlowTimeLegend, Label)                                                      \
    ONE(txtLocTemporaryBlowTimeMinutes, Text)                                                      \
    ONE(lblLocTemporaryBlowTimeMinutesUnit, Label)                                                 \
    ONE(txtLocTemporaryBlowTimeSeconds, Text)                                                      \
    ONE(lblLocTemporaryBlowTimeSecondsUnit, Label)                                                 \
    ONE(cmdLocSingleHoleLearningStart, Button)                                                     \
    ONE(cmdLocSingleHoleLearningAbort, Button)                                                     \
    ONE(cmdLocParameterAssume, Button)                                                             \
    ONE(cmdLocParameterAbort, Button)                                                              \
    ONE(lblLocSingleHoleLearningLegend, Label)                                                     \
    ONE(lblLocSingleHoleTestLegend, Label)                                                         \
    ONE(picLocLearnModeLED, Box)                                                                   \
    ONE(picLocLearnActivLED, Box)                                                                  \
    ONE(lblLocLearnModeLEDLegend, Label)                                                           \
    ONE(lblLocTestModeLEDLegend, Label)                                                            \
    ONE(lblLocLearnActivLEDLegend, Label)                                                          \
    ONE(fraLocLernModeLegend, Frame)                                                               \
    MANY(lblLocLearnModeLegend, Label, 0, 2)                                                       \
    ONE(picLocLearnMode, Box)                                                                      \
    ONE(fraLocTestModeLegend, Frame)                                                               \
    MANY(lblLocTestModeLegend, Label, 0, 1)                                                        \
    ONE(picLocTestMode, Box)                                                                       \
    MANY(ctlSmokeLevel, BarGraph, 0, 1)                                                            \
    ONE(lblLocSmokeLevelLegend, Label)                                                             \
    MANY(cmdLocalizationHelp, Button, 0, 2)                                                        \
    ONE(lblLocWaiting, Label)                                                                      \
    ONE(lblLocHoleLegend, Label)

#define FRMEXTINGUISHSETTINGS_ELEMENTS(ONE, MANY, MORE)                                            \
    ONE(cboSerialNumber, Combo)                                                                    \
    ONE(lblExtSettings, Label)                                                                     \
    ONE(lblSerialNoLegend, Label)                                                                  \
    ONE(picExtOnline, Box)                                                                         \
    ONE(lblExtOnlineLegend, Label)                                                                 \
    MANY(lblParameterName, Label, 0, 2)                                                            \
    MANY(lblParameterUnit, Label, 0, 2)                                                            \
    MANY(lblParameterValue, Label, 0, 2)                                                           \
    MANY(txtParameterValue, Text, 0, 2)                                                            \
    MANY(fraButtons, Frame, 0, 1)                                                                  \
    ONE(cmdSettings, Button)                                                                       \
    ONE(cmdSettingsAssume, Button)                                                                 \
    ONE(cmdSettingsCancel, Button)                                                                 \
    ONE(cmdClose, Button)                                                                          \
    ONE(lblSettingsWaiting, Label)                                                                 \
    ONE(lblExtOfflineNote, Label)                                                                  \
    ONE(lblNoManualRelease, Label)

#define FRMEXTINGUISHDETAILS_ELEMENTS(ONE, MANY, MORE)                                             \
    ONE(cboSerialNumber, Combo)                                                                    \
    ONE(picExtOnline, Box)                                                                         \
    ONE(lblExtOnlineLegend, Label)                                                                 \
    ONE(lblMessages, Label)                                                                        \
    MANY(picErr, Box, 0, 7)                                                                        \
    MANY(lblErr, Label, 0, 7)                                                                      \
    ONE(lblSoftwareNoLegend, Label)                                                                \
    ONE(lblSoftwareNo, Label)                                                                      \
    ONE(lblParameterNoLegend, Label)                                                               \
    ONE(lblParameterNo, Label)                                                                     \
    ONE(lblSerialNoLegend, Label)                                                                  \
    ONE(lblSerialNo, Label)                                                                        \
    MANY(picLegend, Box, 0, 1)                                                                     \
    MANY(lblLegend, Label, 0, 1)                                                                   \
    ONE(lblExtOfflineNote, Label)                                                                  \
    ONE(cmdClose, Button)

#define FRMDEVICESETTINGS_ELEMENTS(ONE, MANY, MORE)                                                \
    MANY(fraDeviceSettings, Frame, 0, 1)                                                           \
    ONE(lblDeviceSettings, Label)                                                                  \
    MANY(lblParameterName, Label, 0, 2)                                                            \
    MANY(lblParameterUnit, Label, 0, 2)                                                            \
    MANY(lblParameterValue, Label, 0, 2)                                                           \
    MANY(txtParameterValue, Text, 0, 2)                                                            \
    ONE(cmdSettings, Button)                                                                       \
    ONE(cmdSettingsAssume, Button)                                                                 \
    ONE(cmdSettingsCancel, Button)                                                                 \
    ONE(lblBetaFactorSettings, Label)                                                              \
    MANY(lblBetaFactorName, Label, 0, 4)                                                           \
    MANY(lblBetaFactorUnit, Label, 0, 4)                                                           \
    MANY(lblBetaFactor, Label, 0, 4)                                                               \
    MANY(txtBetaFactor, Text, 0, 4)                                                                \
    ONE(cmdBetaSettings, Button)                                                                   \
    ONE(cmdBetaSettingsAssume, Button)                                                             \
    ONE(cmdBetaSettingsCancel, Button)                                                             \
    ONE(lblSettingsWaiting, Label)                                                                 \
    ONE(lblBetaSettingsWaiting, Label)                                                             \
    ONE(cmdClose, Button)

MQ27_DECLARE_FORM(frmLocalizeLearn, FRMLOCALIZELEARN_ELEMENTS)
MQ27_DECLARE_FORM(frmExtinguishSettings, FRMEXTINGUISHSETTINGS_ELEMENTS)
MQ27_DECLARE_FORM(frmExtinguishDetails, FRMEXTINGUISHDETAILS_ELEMENTS)
MQ27_DECLARE_FORM(frmDeviceSettings, FRMDEVICESETTINGS_ELEMENTS)
