// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptrenderer.h"

#include "report.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace printsrv {

QStringList formatNames()
{
    return {QStringLiteral("text"), QStringLiteral("html"), QStringLiteral("page"), QStringLiteral("document")};
}

ReceiptRenderer::ReceiptRenderer(const Formatter &formatter, EFormat format, int width)
    : m_formatter(formatter)
    , m_format(format)
    , m_width(width)
{
}

QString ReceiptRenderer::formatName() const
{
    return formatNames().at(static_cast<int>(m_format));
}

QString ReceiptRenderer::toText(const PrinterDocument &receipt) const
{
    switch (m_format) {
    case EFormat::Html:
        return m_formatter->toHtml(receipt, false);
    case EFormat::Page:
        return m_formatter->toHtmlDocument(receipt, false);
    default:
        return m_formatter->toPlainText(receipt, m_width);
    }
}

TextPrinterDocument ReceiptRenderer::toDocument(const PrinterDocument &receipt) const
{
    TextPrinterDocument document = m_formatter->toTextPrinterDocument(receipt);
    document.setSymbolsPerLine(m_width);
    return document;
}

QJsonValue ReceiptRenderer::toJson(const PrinterDocument &receipt) const
{
    if (m_format == EFormat::Document) {
        return QJsonObject::fromVariantMap(toDocument(receipt).toMap());
    }
    return toText(receipt);
}

QByteArray ReceiptRenderer::toBytes(const PrinterDocument &receipt) const
{
    if (m_format == EFormat::Document) {
        return QJsonDocument(toJson(receipt).toObject()).toJson(QJsonDocument::Compact) + '\n';
    }
    return toText(receipt).toUtf8() + '\n';
}

bool ReceiptRenderer::saveDocument(const PrinterDocument &receipt, const QString &path) const
{
    const TextPrinterDocument document = toDocument(receipt);
    return !hasMemoryFailed() && document.saveToFile(path);
}

} // namespace printsrv
