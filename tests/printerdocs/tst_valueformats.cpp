// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerdocument.h"
#include "printerdocumentformatter.h"
#include "testfixture.h"

#include <limits>

class tst_ValueFormats : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void intToString_data();
    void intToString();
    void floatToString_data();
    void floatToString();
    void dates_data();
    void dates();
    void nameToVal_data();
    void nameToVal();
    void sums_data();
    void sums();
};

void tst_ValueFormats::intToString_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<qint64>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("padded") << "0000" << qint64(12) << "0012";
    QTest::newRow("never cut") << "0000" << qint64(123456) << "123456";
    QTest::newRow("sign in front") << "000" << qint64(-7) << "-007";
    QTest::newRow("zero") << "000" << qint64(0) << "000";
    QTest::newRow("empty format") << "" << qint64(-12) << "-12";
    QTest::newRow("pattern starts at its zero") << "#0" << qint64(5) << "5";
    QTest::newRow("only the length counts") << "#0x#" << qint64(5) << "005";
    QTest::newRow("Contract: without a zero the whole format") << "xyz" << qint64(5) << "005";
    QTest::newRow("smallest") << "" << std::numeric_limits<qint64>::min() << "-9223372036854775808";
    QTest::newRow("largest") << "0" << std::numeric_limits<qint64>::max() << "9223372036854775807";
}

void tst_ValueFormats::intToString()
{
    QFETCH(QString, format);
    QFETCH(qint64, value);
    QTEST(PrinterDocumentFormatter().intToString(format, value), "expected");
}

void tst_ValueFormats::floatToString_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("empty format") << "" << 3.5 << "3.50";
    QTest::newRow("three places") << "0.000" << 3.5 << "3.500";
    QTest::newRow("padded") << "000.00" << 5.25 << "005.25";
    QTest::newRow("never cut") << "0.00" << 1234.5 << "1234.50";
    QTest::newRow("negative") << "00.0" << -3.25 << "-03.3";
    QTest::newRow("half away from zero") << "0.00" << 1.005 << "1.01";
    QTest::newRow("carry") << "0.00" << 0.999 << "1.00";
    QTest::newRow("whole number") << "0" << 3.5 << "4";
    QTest::newRow("whole number, negative") << "000" << -2.5 << "-003";
    QTest::newRow("comma is no point") << "0,00" << 3.2 << "0003";
    QTest::newRow("pattern without zeros") << "##.##" << 7.5 << "07.50";
    QTest::newRow("pattern from its zero") << "#0.##" << 7.5 << "7.50";
    QTest::newRow("no integer pattern") << ".00" << 0.5 << "0.50";
    QTest::newRow("second point") << "0.0.000" << 1.26 << "1.3";
    QTest::newRow("fixed notation") << "0." << 1234.5 << "1234.500000";
    QTest::newRow("point alone") << "." << -0.5 << "-0.500000";
    QTest::newRow("general notation") << "0.0E" << 1234.5 << "1234.5";
    QTest::newRow("general notation, large") << "0.E" << 12345678.0 << "1.23457e+07";
    QTest::newRow("small e is a place") << "0.e" << 1.25 << "1.3";
    QTest::newRow("Contract: loses its sign") << "0.00" << -0.5 << "0.50";
    QTest::newRow("rounds to -1") << "0.00" << -0.999 << "-1.00";
    QTest::newRow("above 32 bits") << "0.00" << 3000000000.5 << "3000000000.50";
    QTest::newRow("places beyond nine") << "0.000000000000" << 0.123456789 << "0.123456789000";
    QTest::newRow("too large") << "0.00" << 1e300 << "92233720368547758.07";
    QTest::newRow("no number") << "0.00" << std::numeric_limits<double>::quiet_NaN() << "0.00";
}

void tst_ValueFormats::floatToString()
{
    QFETCH(QString, format);
    QFETCH(double, value);
    QTEST(PrinterDocumentFormatter().floatToString(format, value), "expected");
}

void tst_ValueFormats::dates_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("expected");

    const QDate date(2024, 3, 5);
    const QTime time(14, 7, 9);
    const QDateTime both(date, time);
    addRow("date", QVariant(date), "dd.mm.yyyy", "05.03.2024");
    addRow("date, slashes", QVariant(date), "dd/mm/yy", "05/03/24");
    addRow("date, M", QVariant(date), "yyyy-MM-dd", "2024-03-05");
    addRow("date, default", QVariant(date), "", "05.03.24");
    addRow("date, invalid", QVariant(QDate()), "dd.mm.yyyy", "");
    addRow("date, unknown letters", QVariant(date), "dd!q", "05!q");
    addRow("time", QVariant(time), "hh:nn:ss", "14:07:09");
    addRow("time, default", QVariant(time), "", "14:07");
    addRow("time, Contract: m is a month", QVariant(time), "hh:mm", "14:MM");
    addRow("time, invalid", QVariant(QTime()), "hh:nn", "");
    addRow("both", QVariant(both), "dd.mm.yyyy hh:nn", "05.03.2024 14:07");
    addRow("both, default", QVariant(both), "", "05.03.24 14:07");
    addRow("both, invalid", QVariant(QDateTime()), "", "");
}

void tst_ValueFormats::dates()
{
    QFETCH(QVariant, value);
    QFETCH(QString, format);
    QFETCH(QString, expected);
    const PrinterDocumentFormatter formatter;

    PrinterDocument document;
    document.setAttributes({{QStringLiteral("DATE"), value}});
    QString given = format;
    QCOMPARE(formatter.nameToVal(QStringLiteral("DATE"), document, given), expected);

    if (value.type() == QVariant::Date) {
        QCOMPARE(formatter.dateToString(format, value.toDate()), expected);
    } else if (value.type() == QVariant::Time) {
        QCOMPARE(formatter.timeToString(format, value.toTime()), expected);
    } else {
        QCOMPARE(formatter.dtToString(format, value.toDateTime()), expected);
    }
}

void tst_ValueFormats::nameToVal_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("expected");

    addRow("int", QVariant(7), "000", "007");
    addRow("unsigned", QVariant(4000000000U), "", "4000000000");
    addRow("64 bits", QVariant(-5000000000LL), "0", "-5000000000");
    addRow("unsigned 64 bits", QVariant(quint64(1) << 63), "", "9223372036854775807");
    addRow("double", QVariant(1.25), "0.0", "1.3");
    addRow("double, default format", QVariant(2.0), "", "2.00");
    addRow("text of an integer", QVariant(QStringLiteral("5")), "000", "005");
    addRow("text of a decimal", QVariant(QStringLiteral("12,5")), "0.00", "12.50");
    addRow("long number stays text", QVariant(QStringLiteral("0012345678901234567")), "0", "0012345678901234567");
    addRow("text ignores the format", QVariant(QStringLiteral("Milk")), "0.00", "Milk");
    addRow("bool", QVariant(true), "000", "true");
    addRow("no value", QVariant(), "000", "");
}

void tst_ValueFormats::nameToVal()
{
    QFETCH(QVariant, value);
    QFETCH(QString, format);
    PrinterDocument document;
    document.setAttributes({{QStringLiteral("NAME"), value}});
    QTEST(PrinterDocumentFormatter().nameToVal(QStringLiteral("NAME"), document, format), "expected");
    QCOMPARE(PrinterDocumentFormatter().nameToVal(QStringLiteral("OTHER"), document, format), QString());
}

void tst_ValueFormats::sums_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("format");
    QTest::addColumn<bool>("isSum");
    QTest::addColumn<QString>("expected");

    addRow("no sum", "INT", "0.00", false, "INT");
    addRow("empty", "", "0.00", false, "");
    addRow("two", "INT+REAL", "0.00", true, "3.50");
    addRow("three", "INT+REAL+LONG", "0.0", true, "13.5");
    addRow("default format", "INT+INT", "", true, "2.00");
    addRow("whole", "INT+REAL", "000", true, "004");
    addRow("itself", "REAL+REAL", "0.0", true, "5.0");
    addRow("texts of numbers", "TEXT+COMMA", "0.00", true, "5.75");
    addRow("long text of a number", "INT+LONGTEXT", "0.00", true, "1.25");
    addRow("words add 0", "INT+WORD", "0.00", true, "1.00");
    addRow("missing adds 0", "INT+NONE", "0.00", true, "1.00");
    addRow("Contract: unsigned, bool and date add 0", "INT+UINT+BOOL+DATE", "0.00", true, "1.00");
    addRow("empty part", "INT+", "0.00", true, "1.00");
    addRow("plus alone", "+", "0.00", true, "0.00");
    addRow("blanks belong to the name", "INT + REAL", "0.00", true, "0.00");
}

void tst_ValueFormats::sums()
{
    QFETCH(QString, expression);
    QFETCH(QString, format);
    PrinterDocument document;
    document.setAttributes({{QStringLiteral("INT"), 1},
                            {QStringLiteral("REAL"), 2.5},
                            {QStringLiteral("LONG"), 10LL},
                            {QStringLiteral("TEXT"), QStringLiteral("2")},
                            {QStringLiteral("COMMA"), QStringLiteral("3,75")},
                            {QStringLiteral("LONGTEXT"), QStringLiteral("0.250000000000000000")},
                            {QStringLiteral("WORD"), QStringLiteral("Milk")},
                            {QStringLiteral("UINT"), 5U},
                            {QStringLiteral("BOOL"), true},
                            {QStringLiteral("DATE"), QDate(2024, 3, 5)}});
    QTEST(PrinterDocumentFormatter().summAttributes(expression, document, format), "isSum");
    QTEST(expression, "expected");
}

QTEST_GUILESS_MAIN(tst_ValueFormats)
#include "tst_valueformats.moc"
