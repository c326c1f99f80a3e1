#pragma once

#include "common/platformservices.h"

// Starts programs like its base, shows folders through the desktop's file manager and opens
// files in the desktop's program for their type.
class DesktopLauncher : public QtProcessLauncher {
public:
    bool openFolder(const QString& path) override;
    bool openDocument(const QString& path) override;
};
