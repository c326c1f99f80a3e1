#pragma once

#include "common/elementdecl.h"

// The start window: menus, the link's lamps, the status line, the hidden byte monitor and
// the notification-area icon.
#define FRMMQ27D_ELEMENTS(ONE, MANY, MORE)                                                         \
    ONE(mnuFile, Menu)                                                                             \
    ONE(mnuLoad, Menu)                                                                             \
    ONE(mnuAutoSaveFolder, Menu)                                                                   \
    ONE(mnuSep1, Menu)                                                                             \
    ONE(mnuCloseApp, Menu)                                                                         \
    ONE(mnuSettings, Menu)                                                                         \
    ONE(mnuInterface, Menu)                                                                        \
    ONE(mnuLanguage, Menu)                                                                         \
    ONE(mnuHelp, Menu)                                                                             \
    ONE(mnuInfo, Menu)                                                                             \
    ONE(picHALVORN, Image)                                                                         \
    ONE(lblAppName, Label)                                                                         \
    ONE(picReceive, Box)                                                                           \
    ONE(lblReceive, Label)                                                                         \
    ONE(lblSend, Label)                                                                            \
    ONE(lblDevice, Label)                                                                          \
    ONE(lblPortReason, Label)                                                                      \
    ONE(fraComSend, Frame)                                                                         \
    ONE(txtComSend, Text)                                                                          \
    ONE(chkSendEnable, Check)                                                                      \
    ONE(fraComReceive, Frame)                                                                      \
    ONE(txtComReceive, Text)                                                                       \
    ONE(trayIcon, Tray)

MQ27_DECLARE_FORM(frmMQ27D, FRMMQ27D_ELEMENTS)
