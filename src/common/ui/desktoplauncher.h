#pragma once

#include "common/platformservices.h"

// Starts programs like its base and shows folders through the desktop's file manager.
class DesktopLauncher : public QtProcessLauncher {
public:
    bool openFolder(const QString& path) override;
};
