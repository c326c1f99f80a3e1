#include "common/platformservices.h"

#include <QProcess>
#include <QSettings>
#include <QStandardPaths>

QSettingsStore::QSettingsStore()
    : QSettingsStore(
          std::make_unique<QSettings>(QStringLiteral("Halvorn"), QStringLiteral("Kompa3"))) {}

QSettingsStore::QSettingsStore(std::unique_ptr<QSettings> settings)
    : m_settings(std::move(settings)) {}

QSettingsStore::~QSettingsStore() = default;

std::optional<QString> QSettingsStore::read(const QString& name) const {
    if (!m_settings->contains(name)) return std::nullopt;
    return m_settings->value(name).toString();
}

void QSettingsStore::write(const QString& name, const QString& value) {
    m_settings->setValue(name, value);
    m_settings->sync();
}

std::optional<QString> MemorySettings::read(const QString& name) const {
    const auto it = values.constFind(name);
    if (it == values.constEnd()) return std::nullopt;
    return *it;
}

QDateTime SystemClock::now() const {
    return QDateTime::currentDateTime();
}

bool QtProcessLauncher::startDetached(const QString& program, const QStringList& arguments) {
    return QProcess::startDetached(program, arguments);
}

QString QtProcessLauncher::findExecutable(const QString& name) const {
    return QStandardPaths::findExecutable(name);
}
