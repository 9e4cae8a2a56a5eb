// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RECEIPTWORKLOAD_H
#define PRINTSRV_RECEIPTWORKLOAD_H

#include <printerdocument.h>

#include <QStringList>
#include <QVector>

/** Generated shop receipts of about 60 lines and 48 columns, the same ones in every run. */
namespace workload {

constexpr int Width = 48;
constexpr int EntryCount = 20;

/** The texts of a receipt in one language. */
struct Texts
{
    QString shop;
    QString address;
    QString phone;
    QString receipt;
    QString cashier;
    QString terminal;
    QString shift;
    QString subtotal;
    QString conditional[6];
    QString total;
    QString cash;
    QString change;
    QString vat;
    QString shiftOpened;
    QString returnUntil;
    QStringList farewell;
    QStringList goods;
    QStringList cashiers;
    QString ruler;
};

/** One line of goods. */
struct Entry
{
    QString name;
    QString price;
};

/** The data of one receipt, for the library as a document and for the hard-coded way as the same attributes. */
struct Receipt
{
    PrinterDocument document;
    QVariantMap attributes;
    QVector<Entry> entries;
};

/** Names of the amounts of the conditional lines, which vanish when they are zero. */
extern const char *const ConditionalAmounts[6];

/** "en" or "ru". */
Texts textsOf(const QString &language);

/** The template that the library fills. */
QString templateOf(const Texts &texts);

/** @p count receipts, by a fixed seed. */
QVector<Receipt> receiptsOf(const Texts &texts, int count);

} // namespace workload

#endif
