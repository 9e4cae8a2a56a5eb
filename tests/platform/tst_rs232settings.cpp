// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <rs232settings.h>

namespace {

QVariantMap descriptor(const QString &group, const QString &key, const QVariant &value)
{
    return {{QStringLiteral("group"), group}, {QStringLiteral("key"), key}, {QStringLiteral("value"), value}};
}

QVariantList filledList()
{
    const QString section = QStringLiteral("AV_268");
    return {descriptor(section, QStringLiteral("portName"), QStringLiteral("ttyS3")),
            descriptor(section, QStringLiteral("baudRate"), 115200),
            descriptor(section, QStringLiteral("dataBits"), 7),
            descriptor(section, QStringLiteral("parity"), 2),
            descriptor(section, QStringLiteral("stopBits"), 3),
            descriptor(section, QStringLiteral("flowControl"), 1)};
}

RS232Settings filledSettings()
{
    RS232Settings settings(QStringLiteral("AV_268"));
    settings.setPortName(QStringLiteral("ttyS3"));
    settings.setBaudRate(QSerialPort::Baud115200);
    settings.setDataBits(QSerialPort::Data7);
    settings.setParity(QSerialPort::EvenParity);
    settings.setStopBits(QSerialPort::OneAndHalfStop);
    settings.setFlowControl(QSerialPort::HardwareControl);
    return settings;
}

} // namespace

class TestRs232Settings : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void listsAllParameters();
    void readsItsOwnList();
    void takesOrRefuses_data();
    void takesOrRefuses();
    void comparesEveryField();
};

void TestRs232Settings::listsAllParameters()
{
    const QVariantList list = filledSettings().toList();
    QCOMPARE(list, filledList());
    QCOMPARE(list.first().toMap().value(QStringLiteral("value")).userType(), int(QMetaType::QString));
    for (int i = 1; i < list.size(); ++i) {
        QCOMPARE(list.at(i).toMap().value(QStringLiteral("value")).userType(), int(QMetaType::Int));
    }
}

void TestRs232Settings::readsItsOwnList()
{
    RS232Settings settings(QStringLiteral("AV_268"));
    const QVariantList list = filledList();
    for (const QVariant &element : list) {
        QVERIFY(settings.setValue(element.toMap()));
    }
    QCOMPARE(settings, filledSettings());
}

void TestRs232Settings::takesOrRefuses_data()
{
    QTest::addColumn<QVariantMap>("change");
    QTest::addColumn<bool>("isOurs");
    QTest::addColumn<bool>("isRefused");

    const auto row = [](const char *key, const char *value) {
        const QVariantMap map
            = descriptor(QStringLiteral("AV_268"), QString::fromLatin1(key), QString::fromLatin1(value));
        QTest::addRow("%s %s", key, value) << map << true << true;
    };
    row("baudRate", "0");
    row("baudRate", "-1");
    row("baudRate", "fast");
    row("baudRate", "4294967296");
    row("dataBits", "9");
    row("dataBits", "");
    row("parity", "1"); // Qt's numbers: 0, 2, 3, 4, 5
    row("parity", "-1");
    row("parity", "none");
    row("stopBits", "0");
    row("flowControl", "3");
    row("flowControl", "-1");
    QTest::newRow("other group") << descriptor(QStringLiteral("PNG"), QStringLiteral("parity"), 3) << false << false;
    QTest::newRow("other key") << descriptor(QStringLiteral("AV_268"), QStringLiteral("codec"), 3) << false << false;
    QTest::newRow("case of the key") << descriptor(QStringLiteral("AV_268"), QStringLiteral("PARITY"), 3) << false
                                     << false;
    QTest::newRow("no group") << QVariantMap{{QStringLiteral("key"), QStringLiteral("parity")}} << false << false;
}

void TestRs232Settings::takesOrRefuses()
{
    QFETCH(QVariantMap, change);
    QFETCH(bool, isRefused);
    if (isRefused) {
        expectWarning(QStringLiteral("Serial parameter .* of section \"AV_268\" cannot be"));
    }
    RS232Settings settings = filledSettings();
    QTEST(settings.setValue(change), "isOurs");
    QCOMPARE(settings, filledSettings());
}

void TestRs232Settings::comparesEveryField()
{
    const QVariantList changed = RS232Settings(QStringLiteral("AV_268")).toList();
    for (const QVariant &element : changed) {
        RS232Settings settings = filledSettings();
        settings.setValue(element.toMap());
        QVERIFY2(settings != filledSettings(), qPrintable(element.toMap().value(QStringLiteral("key")).toString()));
    }
    RS232Settings otherSection = filledSettings();
    otherSection.setSection(QStringLiteral("PNG"));
    QVERIFY(otherSection != filledSettings());
}

QTEST_GUILESS_MAIN(TestRs232Settings)
#include "tst_rs232settings.moc"
