#pragma once

#include "common/elementdecl.h"

// The learn window of the localisation: hole times, learn and test.

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

MQ27_DECLARE_FORM(frmLocalizeLearn, FRMLOCALIZELEARN_ELEMENTS)
