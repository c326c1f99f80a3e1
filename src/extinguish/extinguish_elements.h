#pragma once

#include "common/elementdecl.h"

// The windows of the extinguishing modules: their settings and details.

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

MQ27_DECLARE_FORM(frmExtinguishSettings, FRMEXTINGUISHSETTINGS_ELEMENTS)
MQ27_DECLARE_FORM(frmExtinguishDetails, FRMEXTINGUISHDETAILS_ELEMENTS)
