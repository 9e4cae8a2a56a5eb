// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <printservicestate.h>

#include <limits>

namespace {

QVariantMap filledMap()
{
    return {{QStringLiteral("serviceState"), 2},
            {QStringLiteral("deviceState"), 3},
            {QStringLiteral("deviceErrorCode"), qint64{4294967295}},
            {QStringLiteral("deviceNativeCode"), qint64{17}},
            {QStringLiteral("deviceErrorMsg"), QStringLiteral("cover open")},
            {QStringLiteral("tapeAvailable"), false}};
}

} // namespace

class TestPrintServiceState : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void writesMaps();
    void readsMaps();
    void keepsWhatIsMissing_data();
    void keepsWhatIsMissing();
    void cutsNumbers_data();
    void cutsNumbers();
};

void TestPrintServiceState::writesMaps()
{
    const QVariantMap map = PrintServiceState().toMap();
    const QVariantMap expected{
        {QStringLiteral("serviceState"), 255},          {QStringLiteral("deviceState"), 255},
        {QStringLiteral("deviceErrorCode"), qint64{0}}, {QStringLiteral("deviceNativeCode"), qint64{0}},
        {QStringLiteral("deviceErrorMsg"), QString()},  {QStringLiteral("tapeAvailable"), true}};
    QCOMPARE(map, expected);
    for (auto entry = expected.begin(); entry != expected.end(); ++entry) {
        QCOMPARE(map.value(entry.key()).userType(), entry->userType());
    }
}

void TestPrintServiceState::readsMaps()
{
    const PrintServiceState state(filledMap());
    QCOMPARE(state.serviceState(), PrintServiceState::ServicePrinting);
    QCOMPARE(state.deviceState(), PrintServiceState::DeviceCritical);
    QCOMPARE(state.deviceErrorCode(), std::numeric_limits<unsigned int>::max());
    QCOMPARE(state.toMap(), filledMap());
}

void TestPrintServiceState::keepsWhatIsMissing_data()
{
    QTest::addColumn<QString>("key");
    const QStringList keys = filledMap().keys();
    for (const QString &key : keys) {
        QTest::newRow(qPrintable(key)) << key;
    }
}

void TestPrintServiceState::keepsWhatIsMissing()
{
    QFETCH(QString, key);
    PrintServiceState state(filledMap());
    PrintServiceState changed = state;
    changed.setMap({{key, PrintServiceState().toMap().value(key)}, {QStringLiteral("other"), 1}});
    QVERIFY(changed != state);
    changed.setMap({{key, filledMap().value(key)}});
    QVERIFY(changed == state);
}

void TestPrintServiceState::cutsNumbers_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("expected");
    QTest::newRow("17 bits") << QVariant(0x10001) << 1;
    QTest::newRow("no name") << QVariant(77) << 77;
    QTest::newRow("text") << QVariant(QStringLiteral("2")) << 2;
    QTest::newRow("no number") << QVariant(QStringLiteral("two")) << 0;
    QTest::newRow("JSON's double") << QVariant(3.0) << 3;
}

void TestPrintServiceState::cutsNumbers()
{
    QFETCH(QVariant, value);
    const PrintServiceState state({{QStringLiteral("serviceState"), value}, {QStringLiteral("deviceState"), value}});
    QTEST(int(state.serviceState()), "expected");
    QTEST(int(state.deviceState()), "expected");
}

QTEST_GUILESS_MAIN(TestPrintServiceState)
#include "tst_printservicestate.moc"
