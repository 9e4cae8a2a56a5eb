// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RECEIPTRENDERER_H
#define PRINTSRV_RECEIPTRENDERER_H

#include "templatefile.h"

#include <printerdocument.h>
#include <textprinterdocument.h>

#include <QJsonValue>

namespace printsrv {

/** What a receipt becomes. */
enum class EFormat {
    Text, /**< Lines of text of the printer's width. */
    Html, /**< An HTML fragment. */
    Page, /**< A whole HTML page. */
    Document, /**< A document for a printer driver. */
};

/** The names of the formats, in the order of EFormat: values of --format and keys of the stream's answers. */
QStringList formatNames();

/** One template in one format, for any number of receipts. */
class ReceiptRenderer
{
public:
    ReceiptRenderer(const Formatter &formatter, EFormat format, int width);

    /** The format's name. */
    QString formatName() const;

    /** The receipt as a JSON value: a text, or for a document its object. */
    QJsonValue toJson(const PrinterDocument &receipt) const;

    /** The receipt as the bytes of a file, in UTF-8, with a line end at its end. */
    QByteArray toBytes(const PrinterDocument &receipt) const;

    /** The document as a guarded document file with its backup. */
    [[nodiscard]] bool saveDocument(const PrinterDocument &receipt, const QString &path) const;

    /** The document for a printer driver. */
    TextPrinterDocument toDocument(const PrinterDocument &receipt) const;

private:
    QString toText(const PrinterDocument &receipt) const;

    Formatter m_formatter;
    EFormat m_format;
    int m_width;
};

} // namespace printsrv

#endif
