// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include <printsrvlib/printerdocument.h>
#include <printsrvlib/printerdocumentformatter.h>

#include <QTextStream>

int main()
{
    PrinterDocument receipt;
    receipt.setAttributes({{QStringLiteral("TOTAL"), 12.5}});
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(QStringLiteral("<C>CORNER SHOP\nTotal<S><TOTAL,0.00>"));
    QTextStream(stdout) << formatter.toPlainText(receipt, 24) << '\n';
}
