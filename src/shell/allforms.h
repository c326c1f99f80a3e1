#pragma once

#include "common/forms.h"
#include "devicesettings/devicesettings_elements.h"
#include "display/mainview_elements.h"
#include "extinguish/extinguish_elements.h"
#include "localize/localize_elements.h"
#include "logger/logger_elements.h"
#include "record/record_elements.h"
#include "search/search_elements.h"
#include "shell/dialog_elements.h"
#include "shell/startwindow_elements.h"

// Every window model of the tool, added at the start in the order the windows belong
// together, and each by its name for the parts, the widgets and the tests.
class AllForms : public Forms {
public:
    AllForms() {
        for (const auto& [name, declaration] : windows())
            add(name, declaration);
    }

    // Whether the tool has a window of this name.
    static bool isWindow(const QString& name) {
        for (const auto& window : windows())
            if (window.first == name) return true;
        return false;
    }

    Form& frmMQ27D() { return get(frmMQ27D::kName); }
    Form& frmDisplay() { return get(frmDisplay::kName); }
    Form& frmInterface() { return get(frmInterface::kName); }
    Form& frmLanguage() { return get(frmLanguage::kName); }
    Form& frmAbout() { return get(frmAbout::kName); }
    Form& frmConnect() { return get(frmConnect::kName); }
    Form& frmDeviceSearch() { return get(frmDeviceSearch::kName); }
    Form& frmLogdataDev() { return get(frmLogdataDev::kName); }
    Form& frmLocalizeLearn() { return get(frmLocalizeLearn::kName); }
    Form& frmExtinguishSettings() { return get(frmExtinguishSettings::kName); }
    Form& frmExtinguishDetails() { return get(frmExtinguishDetails::kName); }
    Form& frmDeviceSettings() { return get(frmDeviceSettings::kName); }
    Form& frmProtocol() { return get(frmProtocol::kName); }
    Form& frmProtocolComment() { return get(frmProtocolComment::kName); }

private:
    static const QList<std::pair<QString, FormDeclaration>>& windows() {
        static const QList<std::pair<QString, FormDeclaration>> all = {
            {frmMQ27D::kName, frmMQ27D::kElements},
            {frmDisplay::kName, frmDisplay::kElements},
            {frmInterface::kName, frmInterface::kElements},
            {frmLanguage::kName, frmLanguage::kElements},
            {frmAbout::kName, frmAbout::kElements},
            {frmConnect::kName, frmConnect::kElements},
            {frmDeviceSearch::kName, frmDeviceSearch::kElements},
            {frmLogdataDev::kName, frmLogdataDev::kElements},
            {frmLocalizeLearn::kName, frmLocalizeLearn::kElements},
            {frmExtinguishSettings::kName, frmExtinguishSettings::kElements},
            {frmExtinguishDetails::kName, frmExtinguishDetails::kElements},
            {frmDeviceSettings::kName, frmDeviceSettings::kElements},
            {frmProtocol::kName, frmProtocol::kElements},
            {frmProtocolComment::kName, frmProtocolComment::kElements},
        };
        return all;
    }
};
