// A device file loaded into the running program, headless: the telegrams go through the
// handler of received telegrams and the decoder into the value store, and the main view's
// window model shows them. A file of another family hands the tool over and closes it;
// the next input then gets a fresh program.
#include "files/devicefiles.h"
#include "shell/appshell.h"
#include "shell/program.h"
#include "shell/unattendedservices.h"

#include <QCoreApplication>
#include <QFile>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace {

struct World {
    UnattendedServices outside;
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
    const QString path = world->outside.folder.filePath(QStringLiteral("input.ko3"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return 0;
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();
    if (world->program->life().closing()) world->fresh();
    world->program->files().LoadDeviceFile(path);
    return 0;
}
