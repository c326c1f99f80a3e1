#pragma once

#include <QString>
#include <QStringList>

class ValueStore;

// Reading a device file into a value store without a window: the road of a loaded file
// through the acceptance and the decoder's store step, as the tool takes it.
namespace offline {

struct LoadReport {
    QString error;             // why nothing could be read; empty on success
    int telegrams = 0;         // telegrams found in the file
    int stored = 0;            // own telegrams taken into the store
    int refused = 0;           // failed sum, length, CRC, time stamp or store rule
    QStringList otherFamilies; // names of other device families met
    bool truncated = false;    // the file ended inside a telegram
};

LoadReport LoadIntoStore(const QString& path, ValueStore& values);
// The same for a first line already read.
LoadReport LoadLineIntoStore(const QString& line, ValueStore& values);

} // namespace offline
