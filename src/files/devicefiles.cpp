#include "files/devicefiles.h"

#include "shell/appcontext.h"

DeviceFiles::DeviceFiles(AppContext& app)
    : QObject()
    , m_app(app) {}

void DeviceFiles::SaveDeviceData(double) {}

void DeviceFiles::MakeSaveString(const Bytes&, double) {}

bool DeviceFiles::SaveData(const QString&, const Bytes&) {
    return false;
}

void DeviceFiles::LoadDeviceFile(const QString&) {}

std::optional<Bytes> DeviceFiles::ReadDeviceFile(const QString&) {
    return {};
}

QString DeviceFiles::autoSaveFolder() const {
    return {};
}

void DeviceFiles::saveByUser(const Bytes&) {}

void DeviceFiles::autoSave(const Bytes&, double) {}
