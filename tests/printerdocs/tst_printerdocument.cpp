// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerdocument.h"
#include "testfixture.h"

#include <QDate>
#include <QDebug>

namespace {

PrinterDocument receipt()
{
    PrinterDocument document;
    document.setIsCopy(true);
    document.setEntries(QStringLiteral("Milk=1.00"));
    document.setAttributes({{QStringLiteral("TOTAL"), 1.0}});
    return document;
}

QVariant text(const char *value)
{
    return QString::fromUtf8(value);
}

} // namespace

class tst_PrinterDocument : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void attributeValue_data();
    void attributeValue();
    void missingAttribute();
    void alwaysTrue();
    void equality_data();
    void equality();
    void debugHidesValues();
};

void tst_PrinterDocument::attributeValue_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QVariant>("expected");

    QTest::newRow("integer") << text("123") << QVariant(123LL);
    QTest::newRow("negative") << text("-5") << QVariant(-5LL);
    QTest::newRow("typesetters' minus") << text("\u22125") << QVariant(-5LL);
    QTest::newRow("leading zeros") << text("007") << QVariant(7LL);
    QTest::newRow("18 digits") << text("999999999999999999") << QVariant(999999999999999999LL);
    QTest::newRow("19 digits") << text("1234567890123456789") << text("1234567890123456789");
    QTest::newRow("19 digits, small") << text("0000000000000000001") << text("0000000000000000001");
    QTest::newRow("19 characters with sign") << text("-123456789012345678") << text("-123456789012345678");
    QTest::newRow("point") << text("12.50") << QVariant(12.5);
    QTest::newRow("comma") << text("12,50") << QVariant(12.5);
    QTest::newRow("15 characters") << text("1234567890123.5") << QVariant(1234567890123.5);
    QTest::newRow("16 characters") << text("12345678901234.5") << text("12345678901234.5");
    QTest::newRow("17 characters") << text("12.50000000000000") << text("12.50000000000000");
    QTest::newRow("15 characters, comma") << text("1234567890123,5") << QVariant(1234567890123.5);
    QTest::newRow("16 characters, comma") << text("12345678901234,5") << text("12345678901234,5");
    QTest::newRow("exponent") << text("1e3") << QVariant(1000.0);
    QTest::newRow("two commas") << text("1,234,567") << text("1,234,567");
    QTest::newRow("hexadecimal") << text("0x10") << text("0x10");
    QTest::newRow("word") << text("Milk") << text("Milk");
    QTest::newRow("empty") << text("") << text("");
    QTest::newRow("int") << QVariant(5) << QVariant(5);
    QTest::newRow("bool") << QVariant(true) << QVariant(true);
    QTest::newRow("date") << QVariant(QDate(2024, 3, 5)) << QVariant(QDate(2024, 3, 5));
    QTest::newRow("bytes are no text") << QVariant(QByteArray("5")) << QVariant(QByteArray("5"));
}

void tst_PrinterDocument::attributeValue()
{
    QFETCH(QVariant, stored);
    QFETCH(QVariant, expected);
    PrinterDocument document;
    document.setAttributes({{QStringLiteral("NAME"), stored}});

    const QVariant value = document.attributeValue(QStringLiteral("NAME"));

    QCOMPARE(value.type(), expected.type());
    QCOMPARE(value, expected);
}

void tst_PrinterDocument::missingAttribute()
{
    const QVariant value = receipt().attributeValue(QStringLiteral("total")); // names are case-sensitive
    QCOMPARE(value.type(), QVariant::String);
    QCOMPARE(value.toString(), QString());
}

void tst_PrinterDocument::alwaysTrue()
{
    const PrinterDocument document = receipt();
    QVERIFY(document.hasAttribute(QStringLiteral("NONE"))); // Contract: true for any name
    QVERIFY(document.removeFiscalAttrs()); // Contract: without effect
    QCOMPARE(document, receipt());
}

void tst_PrinterDocument::equality_data()
{
    QTest::addColumn<PrinterDocument>("changed");

    PrinterDocument document = receipt();
    document.setIsCopy(false);
    QTest::newRow("copy flag") << document;
    document = receipt();
    document.setEntries(QStringLiteral("Milk=1.01"));
    QTest::newRow("entries") << document;
    document = receipt();
    document.setAttributes({{QStringLiteral("TOTAL"), 2.0}});
    QTest::newRow("attribute's value") << document;
    document.setAttributes({{QStringLiteral("SUMM"), 1.0}});
    QTest::newRow("attribute's name") << document;
    QTest::newRow("default") << PrinterDocument();
}

void tst_PrinterDocument::equality()
{
    QFETCH(PrinterDocument, changed);
    PrinterDocument copy = changed;

    QVERIFY(copy == changed);
    QVERIFY(!(copy != changed));
    QVERIFY(changed != receipt());
    QVERIFY(!(changed == receipt()));
    const PrinterDocument moved = std::move(copy);
    QVERIFY(moved == changed);
}

void tst_PrinterDocument::debugHidesValues()
{
    PrinterDocument document;
    document.setAttributes({{QStringLiteral("CARD"), QStringLiteral("4000123412341234")}});
    document.setEntries(QStringLiteral("Medicine=9.99"));
    QString written;
    QDebug(&written) << document;
    QVERIFY2(written.contains(QStringLiteral("CARD")), qPrintable(written));
    QVERIFY2(!written.contains(QStringLiteral("4000123412341234")), qPrintable(written));
    QVERIFY2(!written.contains(QStringLiteral("Medicine")), qPrintable(written));
}

QTEST_GUILESS_MAIN(tst_PrinterDocument)
#include "tst_printerdocument.moc"
