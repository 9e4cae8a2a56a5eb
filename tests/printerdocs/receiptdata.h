// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RECEIPTDATA_H
#define PRINTSRV_RECEIPTDATA_H

#include "printerdocument.h"

#include <QStringList>

/** The lines of @p text, which are parted by "|"; no lines for the null pointer. */
inline QStringList lines(const char *text)
{
    return text == nullptr ? QStringList() : QString::fromUtf8(text).split(QLatin1Char('|'));
}

inline QVariantMap attributes()
{
    return {{QStringLiteral("TOTAL"), 12.5},
            {QStringLiteral("COUNT"), 3},
            {QStringLiteral("ZERO"), 0},
            {QStringLiteral("ZEROTEXT"), QStringLiteral("0.00")},
            {QStringLiteral("TINY"), 1e-13},
            {QStringLiteral("EMPTY"), QString()},
            {QStringLiteral("NAME"), QStringLiteral("Milk")},
            {QStringLiteral("NAME2"), QStringLiteral("<NAME>")},
            {QStringLiteral("BOLD"), QStringLiteral("<B>Milk")},
            {QStringLiteral("BRACKET"), QStringLiteral("]")},
            {QStringLiteral("BRACKET2"), QStringLiteral("[")},
            {QStringLiteral("TWOLINES"), QStringLiteral("a\nb")},
            {QStringLiteral("XLINE"), QStringLiteral("<X>")},
            {QStringLiteral("CARD"), QStringLiteral("1234567890123456789")}};
}

inline PrinterDocument documentWith(const QString &entries, bool isCopy = false)
{
    PrinterDocument document;
    document.setAttributes(attributes());
    document.setEntries(entries);
    document.setIsCopy(isCopy);
    return document;
}

#endif
