#pragma once

#include "common/bytes.h"
#include "support/fakes.h"

#include "sim/device_profile.h"

#include <QString>

class Form;

// The main view after a complete read-out of a virtual device, as the tool takes it in
// from a saved file: the device is one of tools/profiles/, its values can be changed
// before each read-out, and every read-out ends with a refresh of the main view.
class MainViewRig : public TestApp {
public:
    explicit MainViewRig(const QString& profile = QStringLiteral("full"));

    // The device's named value ("airFlow.flowRefValue", "detectors[1].smokeValueRatio").
    void set(const std::string& name, double value);
    // Telegrams 1, 2, 3, 5 of the device as it stands now, through the tool's road.
    void readOut();
    // Bytes the device could never encode, written into a stored telegram at `offset`
    // (the frame's start byte at 0), and the main view refreshed.
    void overwrite(int command, int offset, const Bytes& bytes);
    Form& view();
    QString caption(const QString& element);

private:
    mq27sim::DeviceProfile m_profile;
};
