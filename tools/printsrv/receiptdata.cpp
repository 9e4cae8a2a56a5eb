// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptdata.h"

#include "jsontext.h"

#include <printerdocumentformatter.h>

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>

#include <cmath>

namespace printsrv {

namespace {

using EValuePlace = PrinterDocumentFormatter::EValuePlace;

QDateTime toDateTime(const QString &text)
{
    return QDateTime::fromString(text, Qt::ISODate);
}

Failure unclear(const QString &name, const QString &text)
{
    return {QStringLiteral("%1: %2").arg(name, text)};
}

Outcome<QVariant> number(const QString &name, const QString &literal)
{
    bool isNumber = false;
    if (const qlonglong whole = literal.toLongLong(&isNumber); isNumber) {
        return QVariant(whole);
    }
    if (const qulonglong whole = literal.toULongLong(&isNumber); isNumber) {
        return QVariant(whole);
    }
    const double decimal = literal.toDouble(&isNumber);
    const bool isWhole
        = !literal.contains(QLatin1Char('.')) && !literal.contains(QLatin1Char('e'), Qt::CaseInsensitive);
    if (!isNumber || isWhole || !std::isfinite(decimal)) {
        return unclear(name, QStringLiteral("%1 is too large for a number, put it in quotes").arg(literal));
    }
    return QVariant(decimal);
}

// {"date": …} and its like.
Outcome<QVariant> typedValue(const QString &name, const QJsonObject &object)
{
    const QString kind = object.size() == 1 ? object.begin().key() : QString();
    const JsonScalar scalar(object.begin().value());
    if (kind == QLatin1String("text") && scalar.isText()) {
        return QVariant(PrinterDocumentFormatter::escapeValue(scalar.text(), EValuePlace::Attribute));
    }
    QVariant value;
    if (kind == QLatin1String("date")) {
        value = QDate::fromString(scalar.text(), Qt::ISODate);
    } else if (kind == QLatin1String("time")) {
        value = QTime::fromString(scalar.text(), Qt::ISODate);
    } else if (kind == QLatin1String("dateTime")) {
        value = toDateTime(scalar.text());
    }
    const bool isValid = value.toDate().isValid() || value.toTime().isValid();
    if (!isValid) {
        return unclear(name,
                       QStringLiteral("an object here is {\"date\": \"2024-03-05\"}, {\"time\": \"14:07\"}, "
                                      "{\"dateTime\": \"2024-03-05T14:07\"} or {\"text\": \"printed as it is\"}"));
    }
    return value;
}

Outcome<QVariant> attribute(const QString &name, const QJsonValue &value)
{
    if (value.isNull()) {
        return QVariant(QString());
    }
    if (value.isBool()) {
        return value.toVariant();
    }
    if (value.isObject()) {
        return typedValue(name, value.toObject());
    }
    const JsonScalar scalar(value);
    if (scalar.isNumber()) {
        return number(name, scalar.text());
    }
    if (scalar.isText()) {
        return QVariant(scalar.text());
    }
    return unclear(name, QStringLiteral("a list is no value, give a number or a text"));
}

// Two texts that stand as they are at the left and the right margin.
Outcome<QString> columns(const QJsonArray &parts)
{
    QStringList texts;
    for (const QJsonValue &part : parts) {
        const JsonScalar scalar(part);
        if (!scalar.isText()) {
            break;
        }
        texts.append(PrinterDocumentFormatter::escapeValue(scalar.text(), EValuePlace::Entry));
    }
    if (texts.size() != parts.size() || texts.isEmpty() || texts.size() > 2) {
        return Failure{QStringLiteral("entries: a list in the list is one or two texts, left and right")};
    }
    return texts.join(QLatin1Char('='));
}

Outcome<QString> entryLine(const QJsonValue &value, int number)
{
    if (value.isArray()) {
        return columns(value.toArray());
    }
    const JsonScalar scalar(value);
    if (!scalar.isText()) {
        return Failure{QStringLiteral("entries: line %1 is no text").arg(number)};
    }
    return scalar.text();
}

Outcome<QStringList> entryList(const QJsonValue &value)
{
    if (!value.isArray()) {
        return Failure{QStringLiteral("entries: give a text or a list of lines")};
    }
    QStringList lines;
    const QJsonArray array = value.toArray();
    for (const QJsonValue &line : array) {
        const Outcome<QString> text = entryLine(line, lines.size() + 1);
        if (!text) {
            return text.failure();
        }
        lines.append(*text);
    }
    return lines;
}

std::optional<Failure> setEntries(ReceiptData &data, const QJsonValue &value)
{
    const JsonScalar scalar(value);
    if (scalar.isText()) {
        data.receipt.setEntries(scalar.text());
        return {};
    }
    const Outcome<QStringList> list = entryList(value);
    if (!list) {
        return list.failure();
    }
    data.receipt.setEntries(list->join(QLatin1Char('\t')));
    data.entryList = *list;
    return {};
}

Outcome<QVariantMap> attributes(const QJsonValue &value)
{
    if (!value.isObject()) {
        return Failure{QStringLiteral("attributes: give an object of names and values")};
    }
    QVariantMap map;
    const QJsonObject object = value.toObject();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        const Outcome<QVariant> read = attribute(QStringLiteral("attributes, ") + entry.key(), entry.value());
        if (!read) {
            return read.failure();
        }
        map.insert(entry.key(), *read);
    }
    return map;
}

// Nothing when the member was taken over.
std::optional<Failure> setMember(ReceiptData &data, const QString &key, const QJsonValue &value)
{
    if (key == QLatin1String("copy") && value.isBool()) {
        data.receipt.setIsCopy(value.toBool());
        return {};
    }
    if (key == QLatin1String("entries")) {
        return setEntries(data, value);
    }
    if (key == QLatin1String("attributes")) {
        const Outcome<QVariantMap> map = attributes(value);
        data.receipt.setAttributes(map ? *map : QVariantMap());
        return map ? std::optional<Failure>() : map.failure();
    }
    if (key == QLatin1String("copy")) {
        return Failure{QStringLiteral("copy: give true or false")};
    }
    return Failure{QStringLiteral("'%1' is not known, the data has copy, entries and attributes").arg(key)};
}

} // namespace

Outcome<ReceiptData> readReceiptData(const QByteArray &json)
{
    const Outcome<QJsonObject> object = parseJsonObject(json);
    if (!object) {
        return object.failure();
    }
    ReceiptData data;
    for (auto member = object->begin(); member != object->end(); ++member) {
        if (const auto failure = setMember(data, member.key(), member.value())) {
            return *failure;
        }
    }
    return data;
}

Outcome<PrinterDocument> readReceipt(const QByteArray &json)
{
    const Outcome<ReceiptData> data = readReceiptData(json);
    return data ? Outcome<PrinterDocument>(data->receipt) : data.failure();
}

} // namespace printsrv
