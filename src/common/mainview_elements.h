#pragma once

#include "common/elementdecl.h"

// The main view frmDisplay.
#define FRMDISPLAY_ELEMENTS(ONE, MANY, MORE)                                                       \
    ONE(mnuFile, Menu)                                                                             \
    ONE(mnuLoad, Menu)                                                                             \
    ONE(mnuSave, Menu)                                                                             \
    ONE(mnuExit, Menu)                                                                             \
    ONE(mnuSettings, Menu)                                                                         \
    ONE(mnuInterface, Menu)                                                                        \
    ONE(mnuLanguage, Menu)                                                                         \
    ONE(mnuCelsius, Menu)                                                                          \
    ONE(mnuFahrenheit, Menu)                                                                       \
    ONE(mnuPercentMeter, Menu)                                                                     \
    ONE(mnuPercentFeet, Menu)                                                                      \
    ONE(mnuDeviceSelect, Menu)                                                                     \
    ONE(mnuDeviceSearch, Menu)                                                                     \
    ONE(mnuLogger, Menu)                                                                           \
    ONE(mnuLogDataDev, Menu)                                                                       \
    ONE(mnuHelp, Menu)                                                                             \
    ONE(mnuPDFHelp, Menu)                                                                          \
    ONE(mnuInfo, Menu)                                                                             \
    MANY(tabDisplay, Tab, 0, 7)                                                                    \
    MANY(lblSerialNoLegend, Label, 0, 7)                                                           \
    MANY(lblSerialNo, Label, 0, 7)                                                                 \
    MANY(picReceiveLED, Box, 0, 7)                                                                 \
    MANY(lblReceiveLEDLegend, Label, 0, 7)                                                         \
    ONE(cmdSettingsAssume, Button)                                                                 \
    ONE(cmdSettingsCancel, Button)

MQ27_DECLARE_FORM(frmDisplay, FRMDISPLAY_ELEMENTS)
