// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "samplevalues.h"

#include <printerdocumentformatter.h>

#include <QDateTime>

#include <algorithm>

namespace printsrv {

namespace {

constexpr double LargeAmount = 12345678.90;
constexpr qlonglong LargeCount = 1234567890;
constexpr int LongText = 64;

template<typename Number>
QVariant numberOf(ESample sample, Number large)
{
    if (sample == ESample::Short) {
        return Number(1);
    }
    return sample == ESample::Negative ? -large : large;
}

QString longText()
{
    return QStringLiteral("Long <name>, with [marks] = ").leftJustified(LongText, QLatin1Char('W'));
}

/** What kind of value an attribute has. */
enum class EKind {
    Text,
    Whole,
    Decimal,
    Date,
    Time,
    DateTime,
};

EKind kindByFormat(const QString &format)
{
    if (isDateFormat(format)) {
        return EKind::DateTime;
    }
    if (format.contains(QLatin1Char('.'))) {
        return EKind::Decimal;
    }
    return format.contains(QLatin1Char('0')) ? EKind::Whole : EKind::Text;
}

EKind kindOf(const AttributeUse &use)
{
    if (use.isInSum) {
        return EKind::Decimal;
    }
    switch (use.given.userType()) {
    case QMetaType::UnknownType:
        return kindByFormat(use.format);
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return EKind::Whole;
    case QMetaType::Double:
        return EKind::Decimal;
    case QMetaType::QDate:
        return EKind::Date;
    case QMetaType::QTime:
        return EKind::Time;
    case QMetaType::QDateTime:
        return EKind::DateTime;
    default:
        return EKind::Text;
    }
}

QVariant valueOf(EKind kind, ESample sample)
{
    const QDate date(2024, 12, 31);
    const QTime time(23, 59, 58);
    if (sample == ESample::Empty) {
        return QString();
    }
    switch (kind) {
    case EKind::Whole:
        return numberOf(sample, LargeCount);
    case EKind::Decimal:
        return numberOf(sample, LargeAmount);
    case EKind::Date:
        return date;
    case EKind::Time:
        return time;
    case EKind::DateTime:
        return QDateTime(date, time, Qt::UTC);
    case EKind::Text:
        break;
    }
    return sample == ESample::Long ? PrinterDocumentFormatter::escapeValue(longText()) : QStringLiteral("x");
}

QString entriesOf(ESample sample)
{
    if (sample == ESample::Empty) {
        return {};
    }
    const auto place = PrinterDocumentFormatter::EValuePlace::Entry;
    return sample == ESample::Long
        ? PrinterDocumentFormatter::escapeValue(longText(), place) + QStringLiteral("=12345678.90")
        : QStringLiteral("x\tx");
}

} // namespace

bool isDateFormat(const QString &format)
{
    return std::any_of(format.cbegin(), format.cend(), [](QChar c) { return QStringLiteral("dmyhns").contains(c); });
}

PrinterDocument sampleReceipt(const AttributeUses &uses, ESample sample)
{
    QVariantMap attributes;
    for (auto use = uses.cbegin(); use != uses.cend(); ++use) {
        attributes.insert(use.key(), valueOf(kindOf(*use), sample));
    }
    PrinterDocument document;
    document.setIsCopy(true);
    document.setAttributes(attributes);
    document.setEntries(entriesOf(sample));
    return document;
}

} // namespace printsrv
