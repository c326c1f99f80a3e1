#pragma once

#include "common/elementdecl.h"

// The small windows of the whole tool: port, language and About.

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

MQ27_DECLARE_FORM(frmInterface, FRMINTERFACE_ELEMENTS)
MQ27_DECLARE_FORM(frmLanguage, FRMLANGUAGE_ELEMENTS)
MQ27_DECLARE_FORM(frmAbout, FRMABOUT_ELEMENTS)
