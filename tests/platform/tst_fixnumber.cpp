// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <fixnumber.h>

#include <QLocale>
#include <QRandomGenerator>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr int LargestPlaces = 9;

uint scaleOf(int places)
{
    uint scale = 1;
    for (int i = 0; i < places; ++i) {
        scale *= 10;
    }
    return scale;
}

// The digits of a magnitude that 64 bits cannot hold become those of the nearest one that they can.
QString saturated(const QString &digits, bool isNegative)
{
    const QString largest = isNegative ? QStringLiteral("9223372036854775808") : QStringLiteral("9223372036854775807");
    const bool isLarger = digits.size() > largest.size() || (digits.size() == largest.size() && digits > largest);
    return isLarger ? largest : digits;
}

QString incremented(QString digits)
{
    int at = digits.size() - 1;
    for (; at >= 0 && digits.at(at) == QLatin1Char('9'); --at) {
        digits[at] = QLatin1Char('0');
    }
    if (at < 0) {
        return QLatin1Char('1') + digits;
    }
    digits[at] = QChar(digits.at(at).unicode() + 1);
    return digits;
}

// Rounds a number in fixed notation on its characters alone, as one does on paper: the reference for FixNumber.
QString roundedOnPaper(QString text, int places)
{
    const bool isNegative = text.startsWith(QLatin1Char('-'));
    text.remove(QLatin1Char('-'));
    const QString integer = text.section(QLatin1Char('.'), 0, 0);
    const QString fraction = text.section(QLatin1Char('.'), 1, 1).leftJustified(places + 1, QLatin1Char('0'));
    QString digits = integer + fraction.left(places);
    if (fraction.at(places) >= QLatin1Char('5')) {
        digits = incremented(digits);
    }
    while (digits.size() > 1 && digits.startsWith(QLatin1Char('0'))) {
        digits.remove(0, 1);
    }
    digits = saturated(digits, isNegative).rightJustified(places + 1, QLatin1Char('0'));
    const bool isZero = digits.count(QLatin1Char('0')) == digits.size();
    const QString sign = isNegative && !isZero ? QStringLiteral("-") : QString();
    const QString point = places > 0 ? QStringLiteral(".") : QString();
    return sign + digits.left(digits.size() - places) + point + digits.right(places);
}

QString text(const FixNumber &number)
{
    return number.toString(QLatin1Char('.'), QChar());
}

double randomAmount(QRandomGenerator &random)
{
    const int digits = random.bounded(1, 16); // up to 15 digits survive the way through a double
    const auto limit = static_cast<quint64>(std::pow(10.0, digits));
    const QString integer = QString::number(random.generate64() % limit);
    const QString sign = random.bounded(2) == 0 ? QString() : QStringLiteral("-");
    return (sign + integer + QLatin1Char('e') + QString::number(-random.bounded(0, 13))).toDouble();
}

double randomDouble(QRandomGenerator &random)
{
    const quint64 bits = random.generate64();
    double number = 0;
    std::memcpy(&number, &bits, sizeof(number));
    return std::isfinite(number) ? number : 0;
}

} // namespace

class TestFixNumber : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void rounds_data();
    void rounds();
    void agreesWithPaper_data();
    void agreesWithPaper();
    void saturates_data();
    void saturates();
    void groups_data();
    void groups();
};

void TestFixNumber::rounds_data()
{
    QTest::addColumn<uint>("scale");
    QTest::addColumn<double>("number");
    QTest::addColumn<qint64>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("not 1.00") << 100U << 1.005 << qint64{101} << "1.01";
    QTest::newRow("not 0.28") << 100U << 0.285 << qint64{29} << "0.29";
    QTest::newRow("half away from zero") << 1U << -2.5 << qint64{-3} << "-3";
    QTest::newRow("just below the half") << 1U << 2.4999999999999996 << qint64{2} << "2";
    QTest::newRow("scale 0 is scale 1") << 0U << 7.5 << qint64{8} << "8";
    QTest::newRow("sign below one") << 100U << -0.5 << qint64{-50} << "-0.50";
    QTest::newRow("no sign of zero") << 100U << -0.004 << qint64{0} << "0.00";
    QTest::newRow("negative zero") << 10U << -0.0 << qint64{0} << "0.0";
    QTest::newRow("carry over the point") << 100U << 9.995 << qint64{1000} << "10.00";
    QTest::newRow("zeros behind the point") << 1000000000U << 3e-9 << qint64{3} << "0.000000003";
    QTest::newRow("half of the last place") << 1000000000U << 5e-10 << qint64{1} << "0.000000001";
    QTest::newRow("denormal") << 1000000000U << 5e-324 << qint64{0} << "0.000000000";
    QTest::newRow("no power of ten") << 99U << 1.26 << qint64{13} << "1.3";
    QTest::newRow("NaN") << 100U << std::numeric_limits<double>::quiet_NaN() << qint64{0} << "0.00";
}

void TestFixNumber::rounds()
{
    QFETCH(uint, scale);
    QFETCH(double, number);
    QFETCH(QString, expected);
    const FixNumber fixNumber(scale, number);
    QTEST(fixNumber.value(), "value");
    QCOMPARE(text(fixNumber), expected);
}

void TestFixNumber::agreesWithPaper_data()
{
    QTest::addColumn<int>("places");
    for (int places = 0; places <= LargestPlaces; ++places) {
        QTest::addRow("%d places", places) << places;
    }
}

void TestFixNumber::agreesWithPaper()
{
    QFETCH(int, places);
    QRandomGenerator random(static_cast<quint32>(2021 + places));
    for (int i = 0; i < 20000; ++i) {
        const double number = i % 4 == 0 ? randomDouble(random) : randomAmount(random);
        const QString onPaper = roundedOnPaper(QString::number(number, 'f', QLocale::FloatingPointShortest), places);
        const FixNumber fixNumber(scaleOf(places), number);
        QCOMPARE(text(fixNumber), onPaper);
        QCOMPARE(QString::number(fixNumber.value()).toLongLong(),
                 QString(onPaper).remove(QLatin1Char('.')).toLongLong());
    }
}

void TestFixNumber::saturates_data()
{
    constexpr qint64 largest = std::numeric_limits<qint64>::max();
    constexpr qint64 smallest = std::numeric_limits<qint64>::min();
    QTest::addColumn<uint>("scale");
    QTest::addColumn<double>("number");
    QTest::addColumn<qint64>("value");

    QTest::newRow("infinity") << 1U << std::numeric_limits<double>::infinity() << largest;
    QTest::newRow("negative infinity") << 100U << -std::numeric_limits<double>::infinity() << smallest;
    QTest::newRow("2^63 on paper") << 1U << 9223372036854775807.0 << largest; // its shortest text ends in ...776000
    QTest::newRow("-2^63 on paper") << 1U << -9223372036854775808.0 << smallest;
    QTest::newRow("largest double") << 1000000000U << std::numeric_limits<double>::max() << largest;
    QTest::newRow("too large by its scale") << 1000U << -9223372036854775.81 << smallest;
    QTest::newRow("still fits") << 100U << 92233720368547740.0 << qint64{9223372036854774000};
}

void TestFixNumber::saturates()
{
    QFETCH(uint, scale);
    QFETCH(double, number);
    QTEST(FixNumber(scale, number).value(), "value");
}

void TestFixNumber::groups_data()
{
    QTest::addColumn<uint>("scale");
    QTest::addColumn<double>("number");
    QTest::addColumn<QChar>("point");
    QTest::addColumn<QChar>("separator");
    QTest::addColumn<QString>("expected");

    QTest::newRow("three digits") << 100U << 123.0 << QChar(u'.') << QChar(u' ') << "123.00";
    QTest::newRow("four digits") << 100U << -1234.5 << QChar(u',') << QChar(u'.') << "-1.234,50";
    QTest::newRow("whole groups") << 1U << 123456.0 << QChar(u'.') << QChar(u'\'') << "123'456";
    QTest::newRow("longest") << 10U << -1e300 << QChar(u'.') << QChar(u',') << "-922,337,203,685,477,580.8";
    QTest::newRow("no point") << 100U << 1.5 << QChar() << QChar() << "150";
}

void TestFixNumber::groups()
{
    QFETCH(uint, scale);
    QFETCH(double, number);
    QFETCH(QChar, point);
    QFETCH(QChar, separator);
    QTEST(FixNumber(scale, number).toString(point, separator), "expected");
}

QTEST_GUILESS_MAIN(TestFixNumber)
#include "tst_fixnumber.moc"
