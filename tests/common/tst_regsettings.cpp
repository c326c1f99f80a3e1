#include "common/regsettings.h"
#include "support/fakes.h"

#include <QtTest>

class TestRegSettings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void defaultsOnAnEmptyStore();
    void leadingNumber_data();
    void leadingNumber();
    void storedTextIsReadByItsLeadingNumber();
    void outOfRangeNumberReadsAsDefault();
    void settersWritePlainDecimalText();
    void versionIsTextAsStored();
};

void TestRegSettings::defaultsOnAnEmptyStore() {
    MemorySettings store;
    const RegSettings settings(store);
    QCOMPARE(settings.GetLanguage(), 0);
    QCOMPARE(settings.GetPort(), -1);
    QCOMPARE(settings.GetTemperature(), 1);
    QCOMPARE(settings.GetSmoke(), 1);
    QCOMPARE(settings.GetVersion(), QStringLiteral("0"));
    QVERIFY(store.values.isEmpty());
}

void TestRegSettings::leadingNumber_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::newRow("plain") << "3" << 3;
    QTest::newRow("trailing text") << "12abc" << 12;
    QTest::newRow("not a number") << "x" << 0;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("negative") << "-1" << -1;
    QTest::newRow("plus sign") << "+7" << 7;
    QTest::newRow("leading blanks") << "  4" << 4;
    QTest::newRow("sign alone") << "-" << 0;
    QTest::newRow("fraction rounds up") << "2.6" << 3;
    QTest::newRow("half to even, down") << "2.5" << 2;
    QTest::newRow("half to even, up") << "3.5" << 4;
    QTest::newRow("negative fraction") << "-1.7" << -2;
    QTest::newRow("point alone") << "." << 0;
    QTest::newRow("blank inside ends it") << "1 2" << 1;
    QTest::newRow("non-ASCII digit ends it") << QStringLiteral("1\u0663") << 1;
    QTest::newRow("too large") << QString(400, u'9') << std::numeric_limits<int>::max();
    QTest::newRow("too small") << u'-' + QString(400, u'9') << std::numeric_limits<int>::min();
    QTest::newRow("beyond int") << "99999999999" << std::numeric_limits<int>::max();
}

void TestRegSettings::leadingNumber() {
    QFETCH(QString, text);
    QFETCH(int, number);
    QCOMPARE(RegSettings::LeadingNumber(text), number);
}

void TestRegSettings::storedTextIsReadByItsLeadingNumber() {
    MemorySettings store;
    store.values = {
        {"Language", "2 (English)"}, {"Port", "x"}, {"Temperature", "2.4"}, {"Smoke", "3"}};
    const RegSettings settings(store);
    QCOMPARE(settings.GetLanguage(), 2);
    QCOMPARE(settings.GetPort(), 0);
    QCOMPARE(settings.GetTemperature(), 2);
    QCOMPARE(settings.GetSmoke(), 3);
}

void TestRegSettings::outOfRangeNumberReadsAsDefault() {
    MemorySettings store;
    store.values = {{"Port", "70000"}, {"Temperature", "-40000"}, {"Language", "32767"}};
    const RegSettings settings(store);
    QCOMPARE(settings.GetPort(), -1);
    QCOMPARE(settings.GetTemperature(), 1);
    QCOMPARE(settings.GetLanguage(), 32767);
}

void TestRegSettings::settersWritePlainDecimalText() {
    MemorySettings store;
    RegSettings settings(store);
    settings.SetLanguage(3);
    settings.SetPort(0);
    settings.SetTemperature(-2);
    settings.SetSmoke(17);
    const QHash<QString, QString> expected = {
        {"Language", "3"}, {"Port", "0"}, {"Temperature", "-2"}, {"Smoke", "17"}};
    QCOMPARE(store.values, expected);
    QCOMPARE(settings.GetTemperature(), -2);
}

void TestRegSettings::versionIsTextAsStored() {
    MemorySettings store;
    store.values["Version"] = "30105";
    QCOMPARE(RegSettings(store).GetVersion(), QStringLiteral("30105"));
    store.values["Version"] = "";
    QCOMPARE(RegSettings(store).GetVersion(), QString());
}

QTEST_GUILESS_MAIN(TestRegSettings)
#include "tst_regsettings.moc"
