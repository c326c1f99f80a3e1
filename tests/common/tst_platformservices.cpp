#include "common/platformservices.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

class TestPlatformServices : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void settingsSurviveAReopen();
    void missingValueReadsAsNothing();
    void launcherFindsOnlyWhatIsOnThePath();

private:
    static std::unique_ptr<QSettingsStore> storeAt(const QString& path) {
        return std::make_unique<QSettingsStore>(
            std::make_unique<QSettings>(path, QSettings::IniFormat));
    }
    QTemporaryDir m_dir;
};

void TestPlatformServices::settingsSurviveAReopen() {
    const QString path = m_dir.filePath(QStringLiteral("Kompa3.ini"));
    {
        auto store = storeAt(path);
        store->write(QStringLiteral("Language"), QStringLiteral("2"));
        store->write(QStringLiteral("Port"), QStringLiteral("0"));
        store->write(QStringLiteral("Temperature"), QStringLiteral("-1"));
    }
    QVERIFY(QFile::exists(path));
    const auto reopened = storeAt(path);
    QCOMPARE(reopened->read(QStringLiteral("Language")),
             std::optional<QString>(QStringLiteral("2")));
    QCOMPARE(reopened->read(QStringLiteral("Port")), std::optional<QString>(QStringLiteral("0")));
    QCOMPARE(reopened->read(QStringLiteral("Temperature")),
             std::optional<QString>(QStringLiteral("-1")));
}

void TestPlatformServices::missingValueReadsAsNothing() {
    const auto store = storeAt(m_dir.filePath(QStringLiteral("empty.ini")));
    QCOMPARE(store->read(QStringLiteral("Version")), std::nullopt);
}

void TestPlatformServices::launcherFindsOnlyWhatIsOnThePath() {
    const QtProcessLauncher launcher;
    const QString sh = launcher.findExecutable(QStringLiteral("sh"));
    QVERIFY(!sh.isEmpty());
    QVERIFY(QFileInfo(sh).isAbsolute());
    QVERIFY(launcher.findExecutable(QStringLiteral("no-such-program-mq27")).isEmpty());
    QtProcessLauncher starter;
    QVERIFY(!starter.startDetached(QStringLiteral("/no/such/program-mq27"), {}));
}

QTEST_GUILESS_MAIN(TestPlatformServices)
#include "tst_platformservices.moc"
