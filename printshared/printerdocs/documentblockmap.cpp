// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "documentblock.h"

// The form of a block in maps and document files.

namespace {

const QLatin1String TypeKey("type");
const QLatin1String ImageKey("img");
const QLatin1String TextKey("txt");
const QLatin1String FontKey("fnt");
const QLatin1String FormatKey("fmt");
const QLatin1String LineSpacingKey("ls");
const QLatin1String AlignmentKey("align");
const QLatin1String BarcodeKey("bar");
const QLatin1String BarcodeTypeKey("bt");
const QLatin1String QrCodeKey("qr");

QStringList toBase64(const QList<QByteArray> &lines)
{
    QStringList result;
    result.reserve(lines.size());
    for (const QByteArray &line : lines) {
        result.append(QString::fromLatin1(line.toBase64()));
    }
    return result;
}

QList<QByteArray> fromBase64(const QStringList &lines)
{
    QList<QByteArray> result;
    result.reserve(lines.size());
    for (const QString &line : lines) {
        result.append(QByteArray::fromBase64(line.toLatin1()));
    }
    return result;
}

QVariantList toVariants(const QList<int> &numbers)
{
    QVariantList result;
    result.reserve(numbers.size());
    for (const int number : numbers) {
        result.append(number);
    }
    return result;
}

QList<int> toNumbers(const QVariantList &variants)
{
    QList<int> result;
    result.reserve(variants.size());
    for (const QVariant &variant : variants) {
        result.append(variant.toInt());
    }
    return result;
}

} // namespace

void DocumentBlock::setMap(const QMap<QString, QVariant> &map)
{
    m_type = static_cast<EBlockType>(map.value(TypeKey).toInt());
    m_text.clear();
    m_img = MonochromeImage();
    switch (m_type) {
    case BarcodeBlock:
        m_barCodeType = static_cast<EBarcodeType>(map.value(BarcodeTypeKey).toInt());
        m_text.append(map.value(BarcodeKey).toString());
        break;
    case ImageBlock:
        m_img.setMap(map.value(ImageKey).toMap());
        break;
    case QrCodeBlock:
        m_text.append(map.value(QrCodeKey).toString());
        break;
    case TextBlock:
        m_alignment = static_cast<ETextAlignment>(map.value(AlignmentKey).toInt());
        m_text = map.value(TextKey).toStringList();
        m_font = fromBase64(map.value(FontKey).toStringList());
        m_format = fromBase64(map.value(FormatKey).toStringList());
        m_lineSpacing = toNumbers(map.value(LineSpacingKey).toList());
        break;
    }
}

QMap<QString, QVariant> DocumentBlock::toMap() const
{
    QMap<QString, QVariant> map{{TypeKey, int(m_type)}};
    if (isImage()) {
        map.insert(ImageKey, m_img.toMap());
    } else if (isText()) {
        map.insert(TextKey, m_text);
        map.insert(FontKey, toBase64(m_font));
        map.insert(FormatKey, toBase64(m_format));
        map.insert(LineSpacingKey, toVariants(m_lineSpacing));
        map.insert(AlignmentKey, int(m_alignment));
    } else if (isBarcode()) {
        map.insert(BarcodeKey, m_text.first());
        map.insert(BarcodeTypeKey, int(m_barCodeType));
    } else if (isQrCode()) {
        map.insert(QrCodeKey, m_text.first());
    }
    return map;
}
