// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "documentblock.h"

#include "characterformat.h"
#include "documentblockhtml.h"
#include "linelayout.h"
#include "memoryguard.h"

#include <limits>

namespace {

constexpr int MostEmptyLines = 1000000;
constexpr int MostSpacesBefore = 16;

// For each line as many bytes of the value as it has characters.
QList<QByteArray> filledBytes(const QStringList &lines, uchar value)
{
    QList<QByteArray> result;
    result.reserve(lines.size());
    for (const QString &line : lines) {
        result.append(QByteArray(line.size(), static_cast<char>(value)));
    }
    return result;
}

template<typename T>
QList<T> repeated(int count, const T &value)
{
    QList<T> result;
    result.reserve(count);
    for (int i = 0; i < count; ++i) {
        result.append(value);
    }
    return result;
}

} // namespace

DocumentBlock::DocumentBlock(const QMap<QString, QVariant> &map)
{
    setMap(map);
}

DocumentBlock DocumentBlock::emptyBlock(int count, ETextAlignment align, int spacing)
{
    DocumentBlock block;
    if (count <= 0 || count > MostEmptyLines) {
        return block;
    }
    const QByteArray noBytes("");
    block.m_text = repeated(count, QString());
    block.m_font = repeated(count, noBytes);
    block.m_format = block.m_font;
    block.m_lineSpacing = repeated(count, spacing);
    block.m_alignment = align;
    return block;
}

// NOLINTNEXTLINE(readability-function-size): the six parameters are the contract's.
DocumentBlock DocumentBlock::createSimpleBlock(const QStringList &lines, ETextAlignment align, uchar font, uchar format,
                                               int spacing, int spacesBefore)
{
    DocumentBlock block;
    block.setText(lines);
    block.setAlignment(align);
    block.setFont(font);
    block.setFormat(format);
    block.setLineSpacing(spacing);
    block.setSpacesBefore(spacesBefore);
    block.setType(TextBlock);
    return block;
}

DocumentBlock::EBlockType DocumentBlock::type() const
{
    return m_type;
}

void DocumentBlock::setType(const EBlockType &type)
{
    m_type = type;
}

DocumentBlock::EBarcodeType DocumentBlock::barCodeType() const
{
    return m_barCodeType;
}

void DocumentBlock::setBarCodeType(const EBarcodeType &barCodeType)
{
    m_barCodeType = barCodeType;
    if (barCodeType != NoBarcode) {
        m_type = BarcodeBlock;
    }
}

QStringList DocumentBlock::text() const
{
    return m_text;
}

void DocumentBlock::setText(const QStringList &text)
{
    m_text = text;
}

QList<QByteArray> DocumentBlock::font() const
{
    return m_font;
}

void DocumentBlock::setFont(const QList<QByteArray> &font)
{
    m_font = font;
}

void DocumentBlock::setFont(uchar font)
{
    m_font = filledBytes(m_text, font);
}

QList<QByteArray> DocumentBlock::format() const
{
    return m_format;
}

void DocumentBlock::setFormat(const QList<QByteArray> &format)
{
    m_format = format;
}

void DocumentBlock::setFormat(uchar format)
{
    m_format = filledBytes(m_text, format);
}

ETextAlignment DocumentBlock::alignment() const
{
    return m_alignment;
}

void DocumentBlock::setAlignment(const ETextAlignment &alignment)
{
    m_alignment = alignment;
}

QList<int> DocumentBlock::lineSpacing() const
{
    return m_lineSpacing;
}

void DocumentBlock::setLineSpacing(const QList<int> &lineSpacing)
{
    m_lineSpacing = lineSpacing;
}

void DocumentBlock::setLineSpacing(int lineSpacing)
{
    m_lineSpacing = repeated(m_text.size(), lineSpacing);
}

MonochromeImage DocumentBlock::img() const
{
    return m_img;
}

void DocumentBlock::setImg(const MonochromeImage &img)
{
    m_img = img;
    m_type = ImageBlock;
}

bool DocumentBlock::isText() const
{
    const int lines = m_text.size();
    return m_type == TextBlock && lines > 0 && m_font.size() == lines && m_format.size() == lines
        && m_lineSpacing.size() == lines;
}

bool DocumentBlock::isImage() const
{
    return m_type == ImageBlock && m_img.isValid();
}

bool DocumentBlock::isBarcode() const
{
    return m_type == BarcodeBlock && !m_text.isEmpty() && m_barCodeType != NoBarcode;
}

bool DocumentBlock::isQrCode() const
{
    return m_type == QrCodeBlock && !m_text.isEmpty();
}

bool DocumentBlock::isValid() const
{
    return isImage() || isText();
}

void DocumentBlock::setCode(EBlockType type, const QByteArray &data)
{
    m_text = QStringList(QString::fromLatin1(data.toBase64()));
    m_type = type;
}

void DocumentBlock::setBarCode(const QByteArray &data, EBarcodeType barCodeType)
{
    setBarCode(data);
    m_barCodeType = barCodeType;
}

void DocumentBlock::setBarCode(const QByteArray &data)
{
    setCode(BarcodeBlock, data);
}

QByteArray DocumentBlock::barcode() const
{
    return m_text.isEmpty() ? QByteArray() : QByteArray::fromBase64(m_text.first().toLatin1());
}

void DocumentBlock::setQrCode(const QByteArray &data)
{
    setCode(QrCodeBlock, data);
}

QByteArray DocumentBlock::qrCode() const
{
    return barcode();
}

int DocumentBlock::prepareFont(char format, char font) const
{
    return printsrv::widthFactor(static_cast<uchar>(format), static_cast<uchar>(font));
}

int DocumentBlock::symbolsCount() const
{
    if (m_type != TextBlock) {
        return 0;
    }
    qint64 count = 0;
    for (const QString &line : m_text) {
        count += line.size();
    }
    return static_cast<int>(qMin<qint64>(count, std::numeric_limits<int>::max()));
}

bool DocumentBlock::append(const DocumentBlock &other)
{
    if (!isText() || !other.isText() || m_alignment != other.m_alignment) {
        return false;
    }
    m_text += other.m_text;
    m_font += other.m_font;
    m_format += other.m_format;
    m_lineSpacing += other.m_lineSpacing;
    return true;
}

QStringList DocumentBlock::toStringList(int width)
{
    if (!isText()) {
        return QStringList();
    }
    return printsrv::madeOrEmpty("lines of a block", [&] {
        QStringList result;
        result.reserve(m_text.size());
        for (const QString &line : qAsConst(m_text)) {
            QString laidOut;
            printsrv::appendLaidOutLine(laidOut, line, m_alignment, width);
            result.append(laidOut);
        }
        return result;
    });
}

void DocumentBlock::setSpacesBefore(int count)
{
    if (count < 1 || count > MostSpacesBefore) {
        return;
    }
    const QString blanks(count, QLatin1Char(' '));
    const QByteArray zeros(count, '\0');
    for (int i = 0; i < m_text.size(); ++i) {
        m_text[i].prepend(blanks);
        if (i < m_font.size()) {
            m_font[i].prepend(zeros);
        }
        if (i < m_format.size()) {
            m_format[i].prepend(zeros);
        }
    }
}

void DocumentBlock::toLower()
{
    // Contract: the Base64 text of a barcode or QR code is no exception.
    for (QString &line : m_text) {
        line = line.toLower();
    }
}

void DocumentBlock::toUpper()
{
    for (QString &line : m_text) {
        line = line.toUpper();
    }
}

QString DocumentBlock::toHtml(bool unused, const SpecialCharacters &symbols, bool table, int leftCellPercent) const
{
    Q_UNUSED(unused)
    return printsrv::blockHtml(
        *this, symbols, table ? printsrv::EHtmlForm::TableRow : printsrv::EHtmlForm::Preformatted, leftCellPercent);
}

bool DocumentBlock::operator==(const DocumentBlock &other) const
{
    return m_type == other.m_type && m_barCodeType == other.m_barCodeType && m_text == other.m_text
        && m_font == other.m_font && m_format == other.m_format && m_alignment == other.m_alignment
        && m_lineSpacing == other.m_lineSpacing && m_img == other.m_img;
}

bool DocumentBlock::operator!=(const DocumentBlock &other) const
{
    return !(*this == other);
}

QDebug operator<<(QDebug debug, const DocumentBlock &block)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "DocumentBlock(type " << int(block.type()) << ", alignment " << int(block.alignment()) << ", "
                    << block.text().size() << " lines, " << block.img() << ')';
    return debug;
}
