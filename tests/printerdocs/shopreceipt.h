// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SHOPRECEIPT_H
#define PRINTSRV_SHOPRECEIPT_H

#include <printerdocument.h>
#include <printerdocumentformatter.h>

/** Receipts of one shop, numbered: each is another one, and the same number gives the same receipt. */
namespace shop {

inline QString receiptTemplate()
{
    return QStringLiteral("<C><B><W2>CORNER SHOP\n<C>12 Harbour Street\nReceipt <DOCNO><S><MOMENT,dd/mm/yyyy hh:nn>\n"
                          "Cashier <CASHIER>[<S>Till <TILL,00>]\n<ENTRIES>\n<B:><F2>TOTAL<S><TOTAL,0.00><:B><F1>\n"
                          "[Coupon <COUPON,0.00>]\nVAT<S><VAT_A+VAT_B,0.00>\n<C><U>Thank you! <#3> <65>");
}

inline PrinterDocument receipt(int number)
{
    constexpr int MostEntries = 40;
    QStringList entries;
    for (int i = 0; i <= number % MostEntries; ++i) {
        entries.append(QStringLiteral("%1=%2.50")
                           .arg(PrinterDocumentFormatter::escapeValue(QStringLiteral("Ham <s> [x]")))
                           .arg(i));
    }
    PrinterDocument document;
    document.setEntries(entries.join(QLatin1Char('\n')));
    document.setIsCopy(number % 2 == 0);
    document.setAttributes({{QStringLiteral("DOCNO"), number},
                            {QStringLiteral("MOMENT"), QDateTime::fromSecsSinceEpoch(number)},
                            {QStringLiteral("CASHIER"), QStringLiteral("Ann O'Neil")},
                            {QStringLiteral("TILL"), number % 4},
                            {QStringLiteral("TOTAL"), number / 100.0},
                            {QStringLiteral("COUPON"), number % 3},
                            {QStringLiteral("VAT_A"), number / 7.0},
                            {QStringLiteral("VAT_B"), number / 3.0}});
    return document;
}

} // namespace shop

#endif
