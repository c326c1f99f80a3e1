#pragma once

#include <QLocale>

class Form;
class ValueStore;
struct DeviceFeatures;

// Shows on the main view only what the device has, at every refresh: a device without air
// flow, second detector, battery, relays or modules shows none of their elements.
void CustomizeForm(Form& view, const DeviceFeatures& features, ValueStore& values,
                   const QLocale& locale);

// A module whose serial number holds digits at its 6th to 8th place sits inside the rack
// and cannot be identified from here.
bool isInternalModule(const QString& serialNo);
