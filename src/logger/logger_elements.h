#pragma once

#include "common/elementdecl.h"

// The data logger: the data objects with their ticks, the ticked ones with their values,
// the recording controls, and the trend chart of the ticked numbers beside them.

#define FRMLOGDATADEV_ELEMENTS(ONE, MANY, MORE)                                                    \
    ONE(fraDataObjectsAvailable, Frame)                                                            \
    ONE(fraDataObjectsToLog, Frame)                                                                \
    MANY(lstDisplay, List, 0, 2)                                                                   \
    ONE(fraAufzeichnung, Frame)                                                                    \
    ONE(chkSaveAsExcel, Check)                                                                     \
    ONE(cmdSaveAsExcel, Button)                                                                    \
    ONE(lblSaveAsExcelFile, Label)                                                                 \
    ONE(lblSaveAsExcelRecords, Label)                                                              \
    ONE(chkSaveAsMathCad, Check)                                                                   \
    ONE(cmdSaveAsMathCad, Button)                                                                  \
    ONE(lblSaveAsMathCadFile, Label)                                                               \
    ONE(lblSaveAsMathCadRecords, Label)                                                            \
    ONE(cmdStart, Button)                                                                          \
    ONE(cmdStop, Button)                                                                           \
    ONE(lblRunning, Label)                                                                         \
    ONE(fraTrend, Frame)                                                                           \
    ONE(lblTrendSpan, Label)                                                                       \
    ONE(cboTrendSpan, Combo)                                                                       \
    ONE(chkTrendPause, Check)                                                                      \
    ONE(cmdTrendExport, Button)                                                                    \
    ONE(picTrend, Image)                                                                           \
    ONE(cmdClose, Button)

MQ27_DECLARE_FORM(frmLogdataDev, FRMLOGDATADEV_ELEMENTS)
