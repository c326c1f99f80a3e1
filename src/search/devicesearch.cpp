#include "search/devicesearch.h"

#include "shell/appcontext.h"

DeviceSearch::DeviceSearch(AppContext& app)
    : QObject()
    , m_app(app) {}

void DeviceSearch::mnuDeviceSearch_Click() {}

void DeviceSearch::AddDevice(double) {}

void DeviceSearch::DeviceSelection(const QString&) {}

void DeviceSearch::ShowConnect(const QString&) {}

void DeviceSearch::onSearchWindowClicked(const QString&) {}

void DeviceSearch::onConnectClicked(const QString&) {}
