// A device file as the offline load reads it: the first line, its hex bytes, the block
// split into telegrams, each through the acceptance into a value store.
#include "files/ko3format.h"
#include "files/offlineload.h"
#include "values/valuestore.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <unistd.h>

namespace {

QString scratchFile() {
    static const QString path =
        QDir::temp().filePath(QStringLiteral("mq27fuzz-ko3-%1.ko3").arg(::getpid()));
    return path;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const Bytes block = ko3::ParseHexLine(QString::fromLatin1(bytes));
    const ko3::SplitBlock split = ko3::SplitDeviceBlock(block);
    (void)split;
    (void)ko3::MakeHexLine(block);

    QFile file(scratchFile());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return 0;
    file.write(bytes);
    file.close();
    ValueStore values;
    (void)offline::LoadIntoStore(file.fileName(), values);
    return 0;
}
