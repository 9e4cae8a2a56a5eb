// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "textprinterdocument.h"

#include "guardedfile.h"
#include "printerdocslog.h"

#include <QJsonDocument>

#include <new>

// The form of a document in maps and files.

using printsrv::printerDocsLog;

namespace {

const QLatin1String BlocksKey("blocks");
const QLatin1String CharImagesKey("cis");
const QLatin1String CharImagePrefix("ci_");
const QLatin1String PrevTicketActionKey("pta");
const QLatin1String CurrentTicketActionKey("cta");
const QLatin1String RetractionTimeoutKey("rtout");
const QLatin1String LoopPolicyKey("loop");
const QLatin1String SymbolsPerLineKey("spl");
const QLatin1String DoInitKey("init");

using CharImages = QMultiMap<signed char, MonochromeImage>;

QVariantMap toVariants(const CharImages &images)
{
    QVariantMap map;
    // Contract: of several images of one code the last one visited stays.
    for (auto image = images.cbegin(); image != images.cend(); ++image) {
        map.insert(CharImagePrefix + QString::number(image.key()), image->toMap());
    }
    return map;
}

CharImages toCharImages(const QVariantMap &map)
{
    CharImages images;
    for (auto image = map.cbegin(); image != map.cend(); ++image) {
        // Contract: a negative number is none here and reads as 0.
        const uint code = image.key().midRef(CharImagePrefix.size()).toUInt();
        images.insert(static_cast<signed char>(code), MonochromeImage(image->toMap()));
    }
    return images;
}

QVariantList toVariants(const QList<DocumentBlock> &blocks)
{
    QVariantList list;
    list.reserve(blocks.size());
    for (const DocumentBlock &block : blocks) {
        list.append(block.toMap());
    }
    return list;
}

QList<DocumentBlock> toBlocks(const QVariantList &list)
{
    QList<DocumentBlock> blocks;
    blocks.reserve(list.size());
    for (const QVariant &block : list) {
        blocks.append(DocumentBlock(block.toMap()));
    }
    return blocks;
}

template<typename Flag>
QFlags<Flag> toFlags(int bits)
{
    return QFlags<Flag>(QFlag(bits));
}

} // namespace

TextPrinterDocument::TextPrinterDocument(const QMap<QString, QVariant> &map)
{
    setMap(map);
}

void TextPrinterDocument::setMap(const QMap<QString, QVariant> &map)
{
    m_blocks = toBlocks(map.value(BlocksKey).toList());
    m_charImages = toCharImages(map.value(CharImagesKey).toMap());
    m_prevTicketAction = toFlags<EPrinterTicketAction>(map.value(PrevTicketActionKey).toInt());
    m_currentTicketAction = toFlags<EPrinterTicketAction>(map.value(CurrentTicketActionKey).toInt());
    m_retractionTimeout = map.value(RetractionTimeoutKey).toInt();
    m_loopPolicy = toFlags<EPaperLoopFlag>(static_cast<int>(map.value(LoopPolicyKey).toUInt()));
    m_symbolsPerLine = map.value(SymbolsPerLineKey).toInt();
    m_doInit = map.value(DoInitKey).toBool();
}

QMap<QString, QVariant> TextPrinterDocument::toMap() const
{
    return {
        {BlocksKey, toVariants(m_blocks)},
        {CharImagesKey, toVariants(m_charImages)},
        {PrevTicketActionKey, int(m_prevTicketAction)},
        {CurrentTicketActionKey, int(m_currentTicketAction)},
        {RetractionTimeoutKey, m_retractionTimeout},
        {LoopPolicyKey, static_cast<uint>(int(m_loopPolicy))},
        {SymbolsPerLineKey, m_symbolsPerLine},
        {DoInitKey, m_doInit},
    };
}

bool TextPrinterDocument::saveToFile(const QString &path) const
{
    if (path.isEmpty()) {
        return false;
    }
    try {
        return printsrv::guardedfile::save(path, QJsonDocument::fromVariant(toMap()).toJson(QJsonDocument::Compact));
    } catch (const std::bad_alloc &) {
        qCCritical(printerDocsLog) << "Cannot write" << path << "for want of memory";
        return false;
    }
}

bool TextPrinterDocument::loadFromFile(const QString &path)
{
    QByteArray bytes;
    try {
        if (path.isEmpty() || !printsrv::guardedfile::load(path, bytes)) {
            return false;
        }
        QJsonParseError error;
        const QJsonDocument json = QJsonDocument::fromJson(bytes, &error);
        *this = TextPrinterDocument(json.toVariant().toMap());
        if (error.error != QJsonParseError::NoError) {
            // Contract: the document is reset all the same.
            qCWarning(printerDocsLog) << "Document file" << path << "offset" << error.offset << error.errorString();
        }
        return error.error == QJsonParseError::NoError;
    } catch (const std::bad_alloc &) {
        qCCritical(printerDocsLog) << "Cannot read" << path << "for want of memory";
        return false;
    }
}

void TextPrinterDocument::removeFile(const QString &path)
{
    if (!path.isEmpty()) {
        printsrv::guardedfile::remove(path);
    }
}
