// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SAMPLEVALUES_H
#define PRINTSRV_SAMPLEVALUES_H

#include <printerdocument.h>

#include <QMap>
#include <QVariant>

namespace printsrv {

/** What a template makes of an attribute. */
struct AttributeUse
{
    QString format; /**< Of its first tag; of one with a decimal point, when there is any. */
    bool isInSum = false;
    QVariant given; /**< A value of it in a receipt; its type counts more than the format. */
};

/** The attributes of a template. */
using AttributeUses = QMap<QString, AttributeUse>;

/** True for the format of a date or a time. */
bool isDateFormat(const QString &format);

/** What values lint makes up. */
enum class ESample {
    Short, /**< The shortest that are neither empty nor zero. */
    Empty, /**< None at all. */
    Long, /**< Texts of 64 characters with marks that are escaped, such an entry, large amounts. */
    Negative, /**< Large amounts below zero. */
};

/** A copy with values for all attributes of @p uses, and with entries unless they are to be empty. */
PrinterDocument sampleReceipt(const AttributeUses &uses, ESample sample);

} // namespace printsrv

#endif
