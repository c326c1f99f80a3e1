// A device file loaded into the running program, headless: the telegrams go through the
// handler of received telegrams and the decoder into the value store, and the main view's
// window model shows them. A file of another family hands the tool over and closes it;
// the next input then gets a fresh program. The program is built once: loading one file
// after another is what a user does, and each load starts the view afresh. The input file
// lies in memory (/dev/shm) where there is one, since rewriting a disk file for every input
// would measure the disk.
#include "files/devicefiles.h"
#include "shell/appshell.h"
#include "shell/program.h"
#include "shell/unattendedservices.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace {

QString inputFolderTemplate() {
    const QString memory = QStringLiteral("/dev/shm");
    const QString base = QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
    return base + QStringLiteral("/mq27fuzz-XXXXXX");
}

struct World {
    UnattendedServices outside;
    QTemporaryDir inputFolder{inputFolderTemplate()};
    std::unique_ptr<Program> program;

    Program& fresh() {
        program.reset();
        program = std::make_unique<Program>(outside.services(), nullptr);
        program->shell().Startup(QString());
        return *program;
    }
};

World* world = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static QCoreApplication application(*argc, *argv);
    world = new World;
    world->fresh();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QString path = world->inputFolder.filePath(QStringLiteral("input.ko3"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return 0;
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();
    if (world->program->life().closing()) world->fresh();
    world->program->files().LoadDeviceFile(path);
    return 0;
}
