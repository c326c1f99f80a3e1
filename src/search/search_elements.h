#pragma once

#include "common/elementdecl.h"

// The device search and the connection window shown until a device is read out.

#define FRMCONNECT_ELEMENTS(ONE, MANY, MORE)                                                       \
    ONE(lblConnection, Label)                                                                      \
    ONE(cmdCancel, Button)

#define FRMDEVICESEARCH_ELEMENTS(ONE, MANY, MORE)                                                  \
    ONE(lstDeviceList, List)                                                                       \
    ONE(picDataLED, Box)                                                                           \
    ONE(lblDataLEDLegend, Label)                                                                   \
    ONE(cmdOK, Button)                                                                             \
    ONE(cmdCancel, Button)

MQ27_DECLARE_FORM(frmConnect, FRMCONNECT_ELEMENTS)
MQ27_DECLARE_FORM(frmDeviceSearch, FRMDEVICESEARCH_ELEMENTS)
