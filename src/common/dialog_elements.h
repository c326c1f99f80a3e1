#pragma once

#include "common/elementdecl.h"

// The small windows: port, language, About, connection and device search.

#define FRMINTERFACE_ELEMENTS(ONE, MANY, MORE)                                                     \
    ONE(lblCOMPort, Label)                                                                         \
    ONE(cboPort, Combo)                                                                            \
    ONE(lblPortReason, Label)                                                                      \
    ONE(cmdOKButton, Button)                                                                       \
    ONE(cmdCancelButton, Button)

#define FRMLANGUAGE_ELEMENTS(ONE, MANY, MORE)                                                      \
    MANY(optLanguage, Option, 0, 4)                                                                \
    MANY(imgFlag, Image, 1, 4)                                                                     \
    ONE(cmdOK, Button)

#define FRMABOUT_ELEMENTS(ONE, MANY, MORE)                                                         \
    ONE(lblKompaVersion, Label)                                                                    \
    ONE(lblDisplay, Label)                                                                         \
    MANY(lblCopyright, Label, 0, 1)                                                                \
    ONE(lblAutoSaveFolder, Label)                                                                  \
    ONE(lblManual, Label)                                                                          \
    ONE(cmdOK, Button)

#define FRMCONNECT_ELEMENTS(ONE, MANY, MORE)                                                       \
    ONE(lblConnection, Label)                                                                      \
    ONE(cmdCancel, Button)

#define FRMDEVICESEARCH_ELEMENTS(ONE, MANY, MORE)                                                  \
    ONE(lstDeviceList, List)                                                                       \
    ONE(picDataLED, Box)                                                                           \
    ONE(lblDataLEDLegend, Label)                                                                   \
    ONE(cmdOK, Button)                                                                             \
    ONE(cmdCancel, Button)

MQ27_DECLARE_FORM(frmInterface, FRMINTERFACE_ELEMENTS)
MQ27_DECLARE_FORM(frmLanguage, FRMLANGUAGE_ELEMENTS)
MQ27_DECLARE_FORM(frmAbout, FRMABOUT_ELEMENTS)
MQ27_DECLARE_FORM(frmConnect, FRMCONNECT_ELEMENTS)
MQ27_DECLARE_FORM(frmDeviceSearch, FRMDEVICESEARCH_ELEMENTS)
