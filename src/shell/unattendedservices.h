#pragma once

#include "common/platformservices.h"
#include "common/services.h"

#include <QTemporaryDir>

// The outside world of a program that runs on none of the user's own (the command line's
// sessions, fuzzing): settings in memory, no dialogs, nothing started, its files in a
// scratch folder that goes with it.
struct UnattendedServices {
    UnattendedDialogs dialogs;
    NoLauncher launcher;
    MemorySettings settings;
    SystemClock clock;
    QTemporaryDir folder;

    Services services() {
        Services s;
        s.dialogs = &dialogs;
        s.launcher = &launcher;
        s.settings = &settings;
        s.clock = &clock;
        s.programDir = folder.path();
        s.dataDir = folder.path();
        return s;
    }
};
