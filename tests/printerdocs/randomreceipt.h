// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RANDOMRECEIPT_H
#define PRINTSRV_RANDOMRECEIPT_H

#include "printerdocument.h"

#include <QRandomGenerator>
#include <QStringList>

/** A template, the document that fills it, and how it is printed. */
struct Receipt
{
    QStringList lines;
    QString entries;
    QVariantMap attributes;
    bool isCopy = false;
    int width = 0;
    int charactersMode = 0;

    PrinterDocument document() const;
    /** All of it as text, to write when a test fails. */
    QString toString() const;
};

/**
 * Makes receipts of words and tags, whole and broken ones, nested and side by side. Few of them have values that name
 * themselves. The same seed gives the same receipt.
 */
class ReceiptMaker
{
public:
    explicit ReceiptMaker(quint32 seed);
    Receipt receipt();

private:
    bool oneIn(int count);
    QString oneOf(const QStringList &all);
    QString line(int most);
    QString text(int most);
    QVariant value(int index);
    QString textValue(int index);

    QRandomGenerator m_random;
    bool m_isCyclic = false;
};

#endif
