// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_VALUEFORMAT_H
#define PRINTSRV_VALUEFORMAT_H

#include <QDateTime>
#include <QString>

class PrinterDocument;
class QVariant;

/** How a value becomes the text that takes the place of its tag; PrinterDocumentFormatter tells the rules. */
namespace printsrv {

QString integerText(const QString &format, qint64 value);
QString decimalText(const QString &format, double value);
QString dateText(const QString &format, const QDate &date);
QString timeText(const QString &format, const QTime &time);
QString dateTimeText(const QString &format, const QDateTime &dateTime);

/** The text of @p value by the format of its type; a type without a format of its own gives its plain text. */
QString valueText(const QString &format, const QVariant &value);

/** Sums the attributes that @p expression names, parted by "+"; what is no number adds 0. */
double attributeSum(const QString &expression, const PrinterDocument &document);

} // namespace printsrv

#endif
