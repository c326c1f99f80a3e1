// A device file as the offline load reads it: the first line, its hex bytes, the block
// split into telegrams, each through the acceptance into a value store. The file's bytes
// come from memory: reading them from a disk file each time would measure the disk, and
// what the checks of a path refuse is tested by the files' own tests.
#include "files/ko3format.h"
#include "files/offlineload.h"
#include "values/valuestore.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const Bytes block = ko3::ParseHexLine(QString::fromLatin1(bytes));
    (void)ko3::SplitDeviceBlock(block);
    (void)ko3::MakeHexLine(block);

    if (const auto line = ko3::FirstLineOf(bytes)) {
        ValueStore values;
        (void)offline::LoadLineIntoStore(*line, values);
    }
    return 0;
}
