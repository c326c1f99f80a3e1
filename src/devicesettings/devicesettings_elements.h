#pragma once

#include "common/elementdecl.h"

// The advanced settings: manual release resistors and sensor beta values.

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

MQ27_DECLARE_FORM(frmDeviceSettings, FRMDEVICESETTINGS_ELEMENTS)
