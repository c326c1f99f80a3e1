#include "common/platformservices.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

class TestPlatformServices : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // A setting is on disk as soon as it is written, so that a crash does not lose it; one
    // never written reads as nothing, not as an empty text.
    void settingsAreWrittenThroughAtOnce() {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Kompa3.ini"));
        QSettingsStore store(std::make_unique<QSettings>(path, QSettings::IniFormat));
        QCOMPARE(store.read(QStringLiteral("Language")), std::nullopt);

        store.write(QStringLiteral("Language"), QStringLiteral("2"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY2(file.readAll().contains("Language=2"), qPrintable(path));
        QCOMPARE(store.read(QStringLiteral("Language")),
                 std::optional<QString>(QStringLiteral("2")));
    }
};

QTEST_GUILESS_MAIN(TestPlatformServices)
#include "tst_platformservices.moc"
