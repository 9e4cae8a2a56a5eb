// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include <receiptdata.h>

#include "support.h"
#include "targets.h"

#include <printerdocumentformatter.h>

void fuzz::receiptData(const QByteArray &input)
{
    const LogCount log;
    const printsrv::Outcome<PrinterDocument> data = printsrv::readReceipt(input);
    if (!data) {
        require(!data.failure().text.isEmpty(), "a refusal says why");
        return;
    }
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(QStringLiteral("<DOCNO>\n[<TOTAL,0.00><S><MOMENT,dd.mm.yyyy hh:nn>]\n<ENTRIES>"));
    formatter.toPlainText(*data, 42);
}
