#include "files/devicefiles.h"

#include "common/lifetime.h"
#include "common/services.h"
#include "common/texts.h"
#include "files/ko3format.h"
#include "link/recognition.h"
#include "link/seriallink.h"
#include "values/devicevalues.h"

#include <array>

#include <QDir>
#include <QFileInfo>

namespace {

const QString kUserSaveName = QStringLiteral("ShelLix");
const QString kSaveFilter = QStringLiteral("*.ko3|*.ko3|");
const QString kAutoSaveFolderName = QStringLiteral("AutoSave");

constexpr int kStringNotSaved = 608;
constexpr int kStringNotLoadable = 609;
constexpr int kStringIsFolder = 610;
constexpr int kStringNotRegular = 611;
constexpr int kStringTooLarge = 612;
constexpr int kStringUnreadable = 613;
constexpr int kStringFolderNotShown = 614;

} // namespace

DeviceFiles::DeviceFiles(const Services& services, const Texts& texts, const Lifetime& life,
                         SerialLink& link, Recognition& recognition, DeviceValues& values)
    : QObject()
    , m_services(services)
    , m_texts(texts)
    , m_life(life)
    , m_link(link)
    , m_recognition(recognition)
    , m_values(values) {}

void DeviceFiles::SaveDeviceData(double serialNo) {
    ValueStore* values = m_values.get();
    if (!values) return;
    std::array<Bytes, 5> telegrams;
    for (std::int16_t command = 1; command <= 5; ++command)
        if (values->GetDataArray(telegrams[static_cast<std::size_t>(command - 1)], command) != 0)
            return;
    MakeSaveString(ko3::BuildSaveBlock(telegrams), serialNo);
}

void DeviceFiles::MakeSaveString(const Bytes& block, double serialNo) {
    if (serialNo == 0) {
        SaveByUser(block);
        return;
    }
    // Once per take-on; a device taken on from a file never writes itself back.
    const bool pending = m_autoSavePending;
    m_autoSavePending = false;
    if (pending && !m_link.DataFromFile()) AutoSave(block, serialNo);
}

bool DeviceFiles::SaveData(const QString& fileName, const Bytes& block) {
    QString reason;
    if (ko3::SaveData(fileName, block, &reason)) return true;
    Tell(m_texts.str(kStringNotSaved).arg(QDir::toNativeSeparators(fileName), reason));
    return false;
}

void DeviceFiles::Tell(const QString& text) {
    m_services.dialogs->messageBox(text, m_texts.appTitle, UserDialogs::Buttons::Ok,
                                   UserDialogs::Icon::Warning, UserDialogs::Answer::Ok);
}

void DeviceFiles::LoadDeviceFile(const QString& fileName) {
    const std::optional<Bytes> block = ReadDeviceFile(fileName);
    if (!block) return;
    // Also ends the wait for a port that went away: the file is in view now.
    m_link.ClosePort();
    for (const Bytes& telegram : ko3::SplitDeviceBlock(*block).telegrams) {
        m_link.SetDataFromFile(true);
        m_recognition.RcvDataHandle(telegram);
        // A telegram of another family has handed the tool over and closed it.
        if (m_life.closing()) return;
    }
    Q_EMIT FileShown(m_link.LoadedFileName());
}

std::optional<Bytes> DeviceFiles::ReadDeviceFile(const QString& fileName) {
    QString name = fileName;
    if (name.isEmpty()) {
        const std::optional<QString> chosen =
            m_services.dialogs->openFileName(m_texts.messages.loadFilter, QStringLiteral("ko3"));
        if (!chosen || chosen->isEmpty()) return std::nullopt;
        name = *chosen;
    }
    const QString problem = WhyNotLoadable(name);
    if (!problem.isEmpty()) {
        Tell(m_texts.str(kStringNotLoadable).arg(QDir::toNativeSeparators(name), problem));
        return std::nullopt;
    }
    const std::optional<QString> line = ko3::ReadFirstLine(name);
    if (!line) return std::nullopt;
    Bytes bytes = ko3::ParseHexLine(*line);
    if (bytes.empty()) return std::nullopt;
    m_link.SetLoadedFileName(name);
    return bytes;
}

QString DeviceFiles::AutoSaveFolder() const {
    const QString base =
        QFileInfo(m_services.programDir).isWritable() ? m_services.programDir : m_services.dataDir;
    return QDir(base).filePath(kAutoSaveFolderName);
}

QString DeviceFiles::WhyNotLoadable(const QString& fileName) const {
    switch (ko3::CheckReadable(fileName)) {
    case ko3::FileProblem::None:
    case ko3::FileProblem::Missing: // a file that is not there stays a silent failure
        return {};
    case ko3::FileProblem::Folder:
        return m_texts.str(kStringIsFolder);
    case ko3::FileProblem::NotRegular:
        return m_texts.str(kStringNotRegular);
    case ko3::FileProblem::TooLarge:
        return m_texts.str(kStringTooLarge).arg(QFileInfo(fileName).size());
    case ko3::FileProblem::Unreadable:
        return m_texts.str(kStringUnreadable);
    }
    return {};
}

void DeviceFiles::OpenAutoSaveFolder() {
    const QString folder = AutoSaveFolder();
    QDir().mkpath(folder);
    if (!m_services.launcher || !m_services.launcher->openFolder(folder))
        Tell(m_texts.str(kStringFolderNotShown).arg(QDir::toNativeSeparators(folder)));
}

void DeviceFiles::SaveByUser(const Bytes& block) {
    // The dialogs run their own event loop, in which the poll may ask to save again.
    if (m_userSaveOpen) return;
    m_userSaveOpen = true;
    UserDialogs& dialogs = *m_services.dialogs;
    const QString& title = m_texts.appTitle;
    const std::optional<QString> name = dialogs.saveFileName(kUserSaveName, kSaveFilter);
    const bool overwrite =
        name && !name->isEmpty() &&
        (QFileInfo(*name).size() == 0 ||
         dialogs.messageBox(m_texts.messages.saveQuestion, title, UserDialogs::Buttons::YesNo,
                            UserDialogs::Icon::Question,
                            UserDialogs::Answer::Yes) == UserDialogs::Answer::Yes);
    if (overwrite && SaveData(*name, block))
        dialogs.information(*name + QStringLiteral("\r\n\r\n") + m_texts.messages.saveConfirmation,
                            title);
    m_userSaveOpen = false;
}

void DeviceFiles::AutoSave(const Bytes& block, double serial) {
    const QString folder = AutoSaveFolder();
    // The user's data folder may not exist yet; beside the program only AutoSave is made.
    QDir().mkpath(QFileInfo(folder).path());
    const QDate today = m_services.clock->now().date();
    SaveData(QDir(folder).filePath(ko3::AutoSaveFileName(serial, today)), block);
}

#include "moc_devicefiles.cpp"
