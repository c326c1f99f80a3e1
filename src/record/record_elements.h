#pragma once

#include "common/elementdecl.h"

// The device record: the window with the two pages and the whole record, and the small
// window that asks for the two comment lines at its head.

#define FRMPROTOCOL_ELEMENTS(ONE, MANY, MORE)                                                      \
    MANY(rtxtProtocol, Text, 0, 2)                                                                 \
    ONE(cmdSave, Button)                                                                           \
    ONE(cmdPrint, Button)                                                                          \
    ONE(cmdSavePrint, Button)                                                                      \
    ONE(cmdPdf, Button)                                                                            \
    ONE(cmdCancel, Button)

#define FRMPROTOCOLCOMMENT_ELEMENTS(ONE, MANY, MORE)                                               \
    ONE(fraComment, Frame)                                                                         \
    ONE(txtComment1, Text)                                                                         \
    ONE(txtComment2, Text)                                                                         \
    ONE(cmdOK, Button)

MQ27_DECLARE_FORM(frmProtocol, FRMPROTOCOL_ELEMENTS)
MQ27_DECLARE_FORM(frmProtocolComment, FRMPROTOCOLCOMMENT_ELEMENTS)
