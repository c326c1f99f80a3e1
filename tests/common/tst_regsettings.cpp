#include "common/regsettings.h"
#include "support/fakes.h"

#include <QtTest>

class TestRegSettings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void defaultsOnAnEmptyStore() {
        MemorySettings store;
        const RegSettings settings(store);
        QCOMPARE(settings.GetLanguage(), 0);
        QCOMPARE(settings.GetPort(), -1);
        QCOMPARE(settings.GetTemperature(), 1);
        QCOMPARE(settings.GetSmoke(), 1);
        QCOMPARE(settings.GetVersion(), QStringLiteral("0"));
        QVERIFY(store.values.isEmpty());
    }

    void leadingNumber_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("number");
        QTest::newRow("trailing text") << "12abc" << 12;
        QTest::newRow("not a number") << "x" << 0;
        QTest::newRow("plus sign") << "+7" << 7;
        QTest::newRow("leading blanks") << "  4" << 4;
        QTest::newRow("sign alone") << "-" << 0;
        QTest::newRow("half to even, down") << "2.5" << 2;
        QTest::newRow("half to even, up") << "3.5" << 4;
        QTest::newRow("negative fraction") << "-1.7" << -2;
        QTest::newRow("blank inside ends it") << "1 2" << 1;
        QTest::newRow("non-ASCII digit ends it") << QStringLiteral("1\u0663") << 1;
        QTest::newRow("too small") << u'-' + QString(400, u'9') << std::numeric_limits<int>::min();
        QTest::newRow("beyond int") << "99999999999" << std::numeric_limits<int>::max();
    }
    void leadingNumber() {
        QFETCH(QString, text);
        QTEST(RegSettings::LeadingNumber(text), "number");
    }

    // A number outside the setting's 16 bits reads as its default.
    void storedTextIsReadByItsLeadingNumber() {
        MemorySettings store;
        store.values = {
            {"Language", "2 (English)"}, {"Port", "70000"}, {"Temperature", "2.4"}, {"Smoke", "x"}};
        RegSettings settings(store);
        QCOMPARE(settings.GetLanguage(), 2);
        QCOMPARE(settings.GetPort(), -1);
        QCOMPARE(settings.GetTemperature(), 2);
        QCOMPARE(settings.GetSmoke(), 0);

        settings.SetPort(0);
        settings.SetTemperature(-2);
        QCOMPARE(store.values.value("Port"), "0");
        QCOMPARE(store.values.value("Temperature"), "-2");
        store.values["Version"] = "30105";
        QCOMPARE(settings.GetVersion(), QStringLiteral("30105"));
    }
};

QTEST_GUILESS_MAIN(TestRegSettings)
#include "tst_regsettings.moc"
