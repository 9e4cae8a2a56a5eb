// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "valueformat.h"

#include "printerdocument.h"

#include <fixnumber.h>

#include <charconv>
#include <iterator>
#include <limits>

namespace printsrv {

namespace {

// FixNumber's scale is a 32-bit power of ten; further places are zeros.
constexpr int MaxFractionDigits = 9;

// Room for any number without padding, so that its text is put together in one piece.
constexpr int UsualLength = 24;

unsigned int scaleOf(int fractionDigits)
{
    unsigned int scale = 1;
    for (int digit = 0; digit < qMin(fractionDigits, MaxFractionDigits); ++digit) {
        scale *= 10;
    }
    return scale;
}

/** Appends the digits of @p number, with zeros in front up to @p length digits. */
void appendDigits(QString &out, quint64 number, int length)
{
    char digits[std::numeric_limits<quint64>::digits10 + 1];
    const char *const end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    const int count = int(end - digits);
    if (count < length) {
        out += QString(length - count, QLatin1Char('0'));
    }
    out += QLatin1String(digits, count);
}

void appendInteger(QString &out, QStringView format, qint64 value)
{
    if (value < 0) {
        out += QLatin1Char('-');
    }
    const auto magnitude = value < 0 ? 0 - static_cast<quint64>(value) : static_cast<quint64>(value);
    const auto pattern = format.mid(qMax<qsizetype>(0, format.indexOf(QLatin1Char('0'))));
    appendDigits(out, magnitude, int(pattern.size()));
}

QString fixedPointText(QStringView integerFormat, int fractionDigits, double value)
{
    const auto scale = qint64(scaleOf(fractionDigits));
    const qint64 scaled = FixNumber(uint(scale), value).value();
    QString text;
    text.reserve(UsualLength);
    // Contract: the integer part is a number of its own, which has no sign when it is 0.
    appendInteger(text, integerFormat, scaled / scale);
    text += QLatin1Char('.');
    appendDigits(text, quint64(qAbs(scaled % scale)), qMin(fractionDigits, MaxFractionDigits));
    if (fractionDigits > MaxFractionDigits) {
        text += QString(fractionDigits - MaxFractionDigits, QLatin1Char('0'));
    }
    return text;
}

/** A template's letters in Qt's: "m" is the month there, "n" the minute. */
QString qtDateFormat(QString format, QLatin1String defaultFormat)
{
    if (format.isEmpty()) {
        return defaultFormat;
    }
    return format.replace(QLatin1Char('m'), QLatin1Char('M')).replace(QLatin1Char('n'), QLatin1Char('m'));
}

double numberToAdd(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
    case QMetaType::QString:
        return value.toDouble();
    default:
        return 0;
    }
}

} // namespace

QString integerText(const QString &format, qint64 value)
{
    QString text;
    text.reserve(UsualLength);
    appendInteger(text, format, value);
    return text;
}

QString decimalText(const QString &format, double value)
{
    const QStringView pattern = format.isEmpty() ? QStringView(u"0.00") : QStringView(format);
    const auto point = pattern.indexOf(QLatin1Char('.'));
    if (point < 0) {
        return integerText(format, FixNumber(0, value).value());
    }
    const QStringView afterPoint = pattern.mid(point + 1);
    const auto secondPoint = afterPoint.indexOf(QLatin1Char('.'));
    const QStringView fraction = secondPoint < 0 ? afterPoint : afterPoint.left(secondPoint);
    if (fraction.isEmpty()) {
        return QString::number(value, 'f', 6);
    }
    if (fraction.contains(QLatin1Char('E'))) {
        return QString::number(value, 'g', 6);
    }
    return fixedPointText(pattern.left(point), int(fraction.size()), value);
}

QString dateText(const QString &format, const QDate &date)
{
    return date.toString(qtDateFormat(format, QLatin1String("dd.MM.yy")));
}

QString timeText(const QString &format, const QTime &time)
{
    return time.toString(qtDateFormat(format, QLatin1String("hh:mm")));
}

QString dateTimeText(const QString &format, const QDateTime &dateTime)
{
    return dateTime.toString(qtDateFormat(format, QLatin1String("dd.MM.yy hh:mm")));
}

QString valueText(const QString &format, const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return integerText(format, value.toLongLong());
    case QMetaType::ULongLong:
        return integerText(format,
                           static_cast<qint64>(qMin<quint64>(value.toULongLong(), std::numeric_limits<qint64>::max())));
    case QMetaType::Double:
        return decimalText(format, value.toDouble());
    case QMetaType::QDate:
        return dateText(format, value.toDate());
    case QMetaType::QTime:
        return timeText(format, value.toTime());
    case QMetaType::QDateTime:
        return dateTimeText(format, value.toDateTime());
    default:
        return value.toString();
    }
}

double attributeSum(const QString &expression, const PrinterDocument &document)
{
    double sum = 0;
    const QStringList names = expression.split(QLatin1Char('+'));
    for (const QString &name : names) {
        sum += numberToAdd(document.attributeValue(name));
    }
    return sum;
}

} // namespace printsrv
