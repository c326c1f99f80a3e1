#pragma once

#include "common/bytes.h"

#include <optional>

#include <QObject>
#include <QString>

class DeviceValues;
class Lifetime;
class Recognition;
class SerialLink;
class Texts;
struct Services;

// Saved read-outs: the user's save and load through the dialogs, the automatic save after
// the first complete read-out of a device, and the replay of a file through the handler of
// received telegrams.
class DeviceFiles : public QObject {
    Q_OBJECT

public:
    DeviceFiles(const Services& services, const Texts& texts, const Lifetime& life,
                SerialLink& link, Recognition& recognition, DeviceValues& values);

    // 0: the user asked (save dialog); otherwise the serial number for the automatic save.
    void SaveDeviceData(double serialNo);
    void MakeSaveString(const Bytes& block, double serialNo);
    // Says why and where when the file could not be written.
    bool SaveData(const QString& fileName, const Bytes& block);

    // Empty `fileName`: ask the user. Closes the port and feeds the telegrams to
    // Recognition::RcvDataHandle, as if received.
    void LoadDeviceFile(const QString& fileName);
    // The file's bytes, or nothing when cancelled or unreadable.
    std::optional<Bytes> ReadDeviceFile(const QString& fileName);

    // AutoSave beside the program where that folder is writable, else in the user's data
    // folder.
    QString AutoSaveFolder() const;
    // Shows the folder of the automatic saves in the file manager, made first if need be.
    void OpenAutoSaveFolder();
    // Why a file cannot be loaded (a folder, a pipe, too large, unreadable); empty if it
    // may be read or is simply not there. Looks at the file without reading it.
    QString WhyNotLoadable(const QString& fileName) const;

    // A device has been taken on: its first complete read-out saves itself.
    void ArmAutoSave() { m_autoSavePending = true; }
    bool AutoSavePending() const { return m_autoSavePending; }

Q_SIGNALS:
    // A read-out from `fileName` is on screen in place of a device.
    void FileShown(const QString& fileName);

private:
    void SaveByUser(const Bytes& block);
    void AutoSave(const Bytes& block, double serial);
    void Tell(const QString& text);

    const Services& m_services;
    const Texts& m_texts;
    const Lifetime& m_life;
    SerialLink& m_link;
    Recognition& m_recognition;
    DeviceValues& m_values;
    bool m_autoSavePending = false;
    bool m_userSaveOpen = false;
};
