// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptreference.h"

#include <fixnumber.h>

#include <QDateTime>

#include <cmath>

namespace {

using namespace reference;

constexpr int MaxSubstitutions = 10000;
constexpr int MaxLineLength = 1048576;
constexpr int MaxExpansions = 1000;
constexpr int MaxValueLength = 16777216;

// Values

QVariant attributeValue(const QVariantMap &attributes, const QString &name)
{
    if (!attributes.contains(name)) {
        return QString();
    }
    const QVariant stored = attributes.value(name);
    if (stored.type() != QVariant::String) {
        return stored;
    }
    const QString text = stored.toString();
    bool isNumber = false;
    const qint64 integer = text.toLongLong(&isNumber, 10);
    if (isNumber && text.size() <= 18) {
        return integer;
    }
    double decimal = text.toDouble(&isNumber);
    if (isNumber && text.size() <= 15) {
        return decimal;
    }
    decimal = QString(text).replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&isNumber);
    return isNumber && text.size() <= 15 ? QVariant(decimal) : stored;
}

QString fixedPointToString(const QString &integerPattern, int places, double value)
{
    const int carried = std::min(places, 9);
    uint scale = 1;
    for (int i = 0; i < carried; ++i) {
        scale *= 10;
    }
    const QStringList parts = FixNumber(scale, value).toString(QLatin1Char('.'), QChar()).split(QLatin1Char('.'));
    const QString fraction = parts.at(1).leftJustified(places, QLatin1Char('0'));
    return intToString(integerPattern, parts.at(0).toLongLong()) + QLatin1Char('.') + fraction;
}

QString dateFormat(QString format, const QString &whenEmpty)
{
    format.replace(QLatin1Char('m'), QLatin1Char('M'));
    format.replace(QLatin1Char('n'), QLatin1Char('m'));
    return format.isEmpty() ? whenEmpty : format;
}

double summand(const QVariant &value)
{
    switch (static_cast<QMetaType::Type>(value.type())) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return value.toDouble();
    case QMetaType::QString:
        return value.toString().toDouble(); // 0 when it is no number
    default:
        return 0;
    }
}

double sumOf(const QStringList &names, const QVariantMap &attributes)
{
    double sum = 0;
    for (const QString &name : names) {
        sum += summand(attributeValue(attributes, name));
    }
    return sum;
}

QString variantToString(const QString &format, const QVariant &value)
{
    switch (static_cast<QMetaType::Type>(value.type())) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return intToString(format, value.toLongLong());
    case QMetaType::ULongLong:
        return intToString(format, static_cast<qint64>(qMin(value.toULongLong(), quint64(INT64_MAX))));
    case QMetaType::Double:
        return floatToString(format, value.toDouble());
    case QMetaType::QDate:
        return value.toDate().toString(dateFormat(format, QStringLiteral("dd.MM.yy")));
    case QMetaType::QTime:
        return value.toTime().toString(dateFormat(format, QStringLiteral("hh:mm")));
    case QMetaType::QDateTime:
        return value.toDateTime().toString(dateFormat(format, QStringLiteral("dd.MM.yy hh:mm")));
    default:
        return value.toString();
    }
}

// Preparing

void addCopyMark(QStringList &lines, bool isCopy)
{
    for (int i = 0; isCopy && i < lines.size(); ++i) {
        if (lines.at(i).contains(QStringLiteral("<DOCNO>"), Qt::CaseInsensitive)) {
            lines.insert(i + 1, QStringLiteral("<C>CHECK_COPY"));
            return;
        }
    }
}

void unpackEntries(PreparedLines &prepared, QString entries)
{
    const QString tag = QStringLiteral("<ENTRIES>");
    const QStringList parts = entries.replace(QLatin1Char('='), QStringLiteral("<S>")).split(QLatin1Char('\t'));
    int expansions = 0;
    for (int i = 0; i < prepared.lines.size(); ++i) {
        const int at = prepared.lines.at(i).indexOf(tag, 0, Qt::CaseInsensitive);
        if (at < 0) {
            continue;
        }
        if (expansions == MaxExpansions) {
            ++prepared.warnings;
            return;
        }
        ++expansions;
        const QString line = prepared.lines.takeAt(i);
        QStringList inserted = parts;
        inserted.first().prepend(line.left(at));
        inserted.last().append(line.mid(at + tag.size()));
        for (int k = 0; k < inserted.size(); ++k) {
            prepared.lines.insert(i + k, inserted.at(k));
        }
    }
}

void removeSymbolLines(QStringList &lines)
{
    for (int i = lines.size() - 1; i >= 0; --i) {
        const QString line = lines.at(i).trimmed();
        if (line.startsWith(QStringLiteral("<SPECSYMBOLS=")) && line.endsWith(QLatin1Char('>'))) {
            lines.removeAt(i);
        }
    }
}

void substituteAll(PreparedLines &prepared, const QVariantMap &attributes)
{
    QStringList kept;
    int valueLength = 0;
    for (const QString &line : qAsConst(prepared.lines)) {
        const QString filled = substitute(line, attributes, valueLength, prepared.warnings);
        if (line.isEmpty() || !filled.isEmpty()) {
            kept.append(filled);
        }
    }
    prepared.lines = kept;
}

/** Removes from @p start to the end of the next @p end behind it, until one of them is missing. */
bool removeParts(QString &text, const QString &start, const QString &end)
{
    bool isRemoved = false;
    for (;;) {
        const int from = text.indexOf(start);
        const int to = from < 0 ? -1 : text.indexOf(end, from);
        if (to < 0) {
            return isRemoved;
        }
        text.remove(from, to + end.size() - from);
        isRemoved = true;
    }
}

void removeXParts(QStringList &lines)
{
    if (!lines.isEmpty()) {
        QString text = lines.join(QLatin1Char('\n'));
        removeParts(text, QStringLiteral("<X:>"), QStringLiteral("<:X>"));
        lines = text.split(QLatin1Char('\n'));
    }
}

void removeImagesAndXLines(QStringList &lines)
{
    for (int i = lines.size() - 1; i >= 0; --i) {
        const bool hadImage = removeParts(lines[i], QStringLiteral("<I>"), QStringLiteral("</I>"));
        if (hadImage && lines.at(i).isEmpty()) {
            lines.removeAt(i);
        } else if (lines.at(i).contains(QStringLiteral("<X>"))) {
            lines[i].clear();
        }
    }
}

int scanL(const QString &line, int from)
{
    int depth = 0;
    for (int i = std::min(from, line.size() - 1); i >= 0; --i) {
        if (line.at(i) == QLatin1Char(']')) {
            ++depth;
        } else if (line.at(i) == QLatin1Char('[') && depth-- == 0) {
            return i;
        }
    }
    return -1;
}

int scanR(const QString &line, int from)
{
    int depth = 0;
    for (int i = std::max(from, 0); i < line.size(); ++i) {
        if (line.at(i) == QLatin1Char('[')) {
            ++depth;
        } else if (line.at(i) == QLatin1Char(']') && depth-- == 0) {
            return i;
        }
    }
    return -1;
}

void removeGroupIfZero(int pos, QString &line, const QString &value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (isNumber ? std::fabs(number) > 1e-12 : !value.isEmpty()) {
        return;
    }
    const int start = scanL(line, pos - 1);
    const int end = scanR(line, pos);
    if (start >= 0 && end >= 0) {
        line.remove(start, end + 1 - start);
    }
}

} // namespace

namespace reference {

QString intToString(const QString &format, qint64 value)
{
    const QString pattern = format.contains(QLatin1Char('0')) ? format.mid(format.indexOf(QLatin1Char('0'))) : format;
    QString digits = QString::number(value);
    const bool isNegative = digits.startsWith(QLatin1Char('-'));
    if (isNegative) {
        digits.remove(0, 1);
    }
    digits = digits.rightJustified(pattern.size(), QLatin1Char('0'));
    return isNegative ? QLatin1Char('-') + digits : digits;
}

QString floatToString(const QString &format, double value)
{
    const QStringList patterns = (format.isEmpty() ? QStringLiteral("0.00") : format).split(QLatin1Char('.'));
    if (patterns.size() == 1) {
        return intToString(format, FixNumber(0, value).value());
    }
    if (patterns.at(1).isEmpty()) {
        return QString::number(value, 'f', 6);
    }
    if (patterns.at(1).contains(QLatin1Char('E'))) {
        return QString::number(value, 'g', 6);
    }
    return fixedPointToString(patterns.at(0), patterns.at(1).size(), value);
}

QString valueText(const QString &name, const QString &format, const QVariantMap &attributes)
{
    const QStringList names = name.split(QLatin1Char('+'));
    return names.size() > 1 ? floatToString(format, sumOf(names, attributes))
                            : variantToString(format, attributeValue(attributes, name));
}

QString substitute(QString line, const QVariantMap &attributes, int &valueLength, int &warnings)
{
    int substitutions = 0;
    for (int pos = 0; pos < line.size() && valueLength <= MaxValueLength;) {
        const int start = line.indexOf(QLatin1Char('<'), pos);
        const int end = start < 0 ? -1 : line.indexOf(QLatin1Char('>'), start);
        if (end < 0) {
            break;
        }
        if (end - start <= 4) {
            pos = end + 1;
            continue;
        }
        const QString tag = line.mid(start + 1, end - start - 1);
        const int comma = tag.indexOf(QLatin1Char(','));
        const QString format = comma < 0 ? QString() : tag.mid(comma + 1);
        const QString value = valueText(tag.left(comma), format, attributes);
        const int lengthAfter = line.size() - (end + 1 - start) + value.size();
        if (substitutions == MaxSubstitutions || lengthAfter > MaxLineLength) {
            ++warnings;
            break;
        }
        valueLength += value.size();
        if (valueLength > MaxValueLength) {
            ++warnings;
            break;
        }
        ++substitutions;
        line.replace(start, end + 1 - start, value);
        removeGroupIfZero(start, line, value);
        pos = start;
    }
    return line;
}

PreparedLines prepare(const QStringList &templateLines, const PrinterDocument &document)
{
    PreparedLines prepared{templateLines};
    addCopyMark(prepared.lines, document.isCopy());
    unpackEntries(prepared, document.entries());
    removeSymbolLines(prepared.lines);
    substituteAll(prepared, document.attributes());
    removeXParts(prepared.lines);
    removeImagesAndXLines(prepared.lines);
    return prepared;
}

} // namespace reference
