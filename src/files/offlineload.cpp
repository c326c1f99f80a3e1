#include "files/offlineload.h"

#include "engine/telegramstore.h"
#include "files/ko3format.h"
#include "link/telegram.h"
#include "values/valuestore.h"

#include <QFileInfo>

namespace offline {
namespace {

void takeTelegram(const Bytes& t, ValueStore& values, QString& lastSerialNo, LoadReport& report) {
    const auto accepted = telegram::AcceptStampedTelegram(t);
    if (!accepted) {
        ++report.refused;
        return;
    }
    if (accepted->deviceKind != telegram::kOwnDeviceKind) {
        report.otherFamilies << telegram::DeviceKindName(accepted->deviceKind);
        return;
    }
    if (!engine::TelegramTime(t)) {
        ++report.refused;
        return;
    }
    const auto outcome = engine::StoreTelegram(values, lastSerialNo, t);
    if (outcome.result == engine::StoreResult::Stored)
        ++report.stored;
    else
        ++report.refused;
}

} // namespace

LoadReport LoadIntoStore(const QString& path, ValueStore& values) {
    LoadReport report;
    switch (ko3::CheckReadable(path)) {
    case ko3::FileProblem::None:
        break;
    case ko3::FileProblem::Missing:
        report.error = QStringLiteral("no such file");
        return report;
    case ko3::FileProblem::Folder:
        report.error = QStringLiteral("it is a folder");
        return report;
    case ko3::FileProblem::NotRegular:
        report.error = QStringLiteral("it is not a regular file");
        return report;
    case ko3::FileProblem::TooLarge:
        report.error = QStringLiteral("it is too large (%1 bytes)").arg(QFileInfo(path).size());
        return report;
    case ko3::FileProblem::Unreadable:
        report.error = QStringLiteral("no permission to read it");
        return report;
    }
    const auto line = ko3::ReadFirstLine(path);
    if (!line) {
        report.error = QStringLiteral("cannot be read as a device file");
        return report;
    }
    return LoadLineIntoStore(*line, values);
}

LoadReport LoadLineIntoStore(const QString& line, ValueStore& values) {
    LoadReport report;
    const Bytes block = ko3::ParseHexLine(line);
    if (block.empty()) {
        report.error = QStringLiteral("empty file");
        return report;
    }
    const ko3::SplitBlock split = ko3::SplitDeviceBlock(block);
    report.telegrams = static_cast<int>(split.telegrams.size());
    report.truncated = split.truncated;
    QString lastSerialNo;
    for (const Bytes& t : split.telegrams)
        takeTelegram(t, values, lastSerialNo, report);
    return report;
}

} // namespace offline
